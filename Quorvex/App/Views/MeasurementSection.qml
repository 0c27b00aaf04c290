import QtQuick
import QtQuick.Layouts

// Starts and stops measurement sessions, and shows the running one.
Card {
    id: section

    required property var model
    readonly property var session: model.session
    readonly property var content: session.content

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
    GridLayout {
        Layout.fillWidth: true
        columns: width >= 96 * Theme.unit ? 3 : 2
        columnSpacing: Theme.medium
        rowSpacing: Theme.medium

        TextEntry {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            Layout.columnSpan: parent.columns === 2 ? 2 : 1
            placeholderText: section.content.namePrompt
            text: section.session.sessionName
            onTextChanged: section.session.sessionName = text
            onAccepted: if (!section.content.isRecording) section.model.startSession()
        }
        MenuButton {
            Layout.fillWidth: parent.columns === 2
            entry: section.content.startStopButton
            isProminent: !section.content.isRecording
            onClicked: section.content.isRecording ? section.model.stopSession() : section.model.startSession()
        }
        MenuButton {
            Layout.fillWidth: parent.columns === 2
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
