import QtQuick
import QtQuick.Layouts

// How far the samples cover the session's time.
Card {
    id: card

    required property var sampling

    RowLayout {
        TextLine {
            Layout.fillWidth: true
            text: card.sampling.heading
            font: Theme.bodyStrong
            Accessible.role: Accessible.Heading
        }
        Badge {
            text: card.sampling.badge.text
            symbol: card.sampling.badge.symbol
            tone: card.sampling.badge.color
            help: card.sampling.badge.help
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columns: width >= 90 * Theme.unit ? 4 : 2
        rowSpacing: Theme.medium

        Repeater {
            model: card.sampling.rows

            SmallFigure {
                required property var modelData

                entry: modelData
            }
        }
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.sampling.gapSentence ?? ""
        wrapMode: Text.Wrap
    }
    Repeater {
        model: card.sampling.windows

        RowLayout {
            id: span

            required property var modelData

            spacing: Theme.large
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.accessibilityText

            Figures {
                Layout.fillWidth: true
                text: span.modelData.timeRange
                Accessible.ignored: true
            }
            Figures {
                text: span.modelData.samplesText
                tone: "secondary"
                Accessible.ignored: true
            }
            TextLine {
                text: span.modelData.confidence.text
                tone: span.modelData.confidence.color
                Accessible.ignored: true
            }
        }
    }
}
