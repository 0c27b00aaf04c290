import QtQuick
import QtQuick.Layouts

// Starts and stops measurement sessions, and shows the running one.
Card {
    id: section

    required property var model
    readonly property var content: model.session.content

    heading: content.title

    Loader {
        Layout.fillWidth: true
        active: !!section.content.card
        visible: active
        sourceComponent: SessionCard { card: section.content.card }
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: section.content.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
    RowLayout {
        spacing: Theme.medium

        TextEntry {
            id: name

            Layout.fillWidth: true
            placeholderText: section.content.namePrompt
            enabled: !section.content.isRecording
            onAccepted: startStop.clicked()
        }
        MenuButton {
            id: startStop

            entry: section.content.startStopButton
            isProminent: !section.content.isRecording
            onClicked: {
                if (section.content.isRecording) {
                    section.model.commands.stopSession()
                } else {
                    section.model.commands.startSession(name.text)
                    name.clear()
                }
            }
        }
        MenuButton {
            entry: section.content.historyButton
            onClicked: section.model.viewHistory()
        }
    }
    TextLine {
        Layout.fillWidth: true
        text: section.content.note
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: section.content.error?.text ?? ""
        font: Theme.caption
        tone: section.content.error?.color ?? "orange"
        wrapMode: Text.Wrap
    }
}
