import QtQuick
import QtQuick.Layouts

// How hot the session was.
Card {
    id: card

    required property var thermal

    spacing: Theme.small
    description: thermal.accessibilityText

    RowLayout {
        spacing: Theme.medium

        SymbolIcon {
            name: card.thermal.symbol
            tone: card.thermal.verdict.color
        }
        TextLine {
            Layout.fillWidth: true
            text: card.thermal.verdict.text
            font: Theme.bodyStrong
            tone: card.thermal.verdict.color
        }
        Figures {
            text: card.thermal.peakTempText
        }
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.thermal.timeAboveText
        wrapMode: Text.Wrap
    }
    TextLine {
        Layout.fillWidth: true
        text: card.thermal.pressureNote
        tone: "secondary"
        wrapMode: Text.Wrap
    }
}
