import QtQuick
import QtQuick.Layouts

// Starts a measurement session, or shows the running one.
Card {
    id: card

    required property var model
    readonly property var session: model.content.session
    readonly property var commands: model.commands

    padding: Theme.roomy
    description: session.accessibilityText

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.medium

        SymbolIcon {
            visible: name !== ""
            name: card.session.labelSymbol
            tone: card.session.isRecording ? "red" : "secondary"
        }
        TextLine {
            Layout.fillWidth: !card.session.isRecording
            text: card.session.label
            font: Theme.bodyStrong
            visible: text !== ""
        }
        Figures {
            visible: card.session.isRecording
            text: card.session.elapsed
        }
        Item {
            Layout.fillWidth: card.session.isRecording
        }
        PushButton {
            text: card.session.button.title
            symbol: card.session.button.symbol
            help: card.session.button.help
            description: card.session.button.accessibilityLabel
            onClicked: card.session.isRecording ? card.commands.stopSession() : card.commands.startSession("")
        }
    }
    RowLayout {
        visible: card.session.figures.length > 0
        spacing: Theme.large

        Repeater {
            model: card.session.figures.length

            Figures {
                required property int index

                text: card.session.figures[index] ?? ""
                font: Theme.caption
                tone: "secondary"
            }
        }
    }
}
