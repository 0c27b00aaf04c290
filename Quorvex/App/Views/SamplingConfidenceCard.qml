import QtQuick
import QtQuick.Layouts

// How far the samples cover the session's time.
Card {
    id: card

    required property var sampling

    description: sampling.heading

    GridLayout {
        Layout.fillWidth: true
        // A badge of many flags stands below the heading.
        columns: card.sampling.badge.text.length > 30 ? 1 : 2
        columnSpacing: Theme.medium
        rowSpacing: Theme.small

        TextLine {
            Layout.fillWidth: true
            text: card.sampling.heading
            font: Theme.bodyStrong
            Accessible.role: Accessible.Heading
        }
        Badge {
            Layout.maximumWidth: parent.width
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
        columnSpacing: Theme.medium

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

            spacing: Theme.medium
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            Figures {
                Layout.fillWidth: true
                text: span.modelData.timeRange
                font: Theme.caption
            }
            Figures {
                Layout.preferredWidth: 22 * Theme.unit
                text: span.modelData.samplesText
                font: Theme.caption
                tone: "secondary"
                alignRight: true
            }
            TextLine {
                Layout.preferredWidth: 28 * Theme.unit
                horizontalAlignment: Text.AlignRight
                text: span.modelData.confidence.text
                font: Theme.caption
                tone: span.modelData.confidence.color
            }
        }
    }
}
