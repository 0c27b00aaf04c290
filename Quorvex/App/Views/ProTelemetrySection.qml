import QtQuick
import QtQuick.Layouts

// The privileged helper tool: what is known of it, and what can be done about it.
Card {
    id: card

    required property var model
    required property var defaults
    readonly property var content: model.content

    heading: content.groupTitle

    RowLayout {
        spacing: Theme.medium

        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.tiny

            TextLine {
                Layout.fillWidth: true
                text: card.content.title
            }
            SelectableText {
                Layout.fillWidth: true
                text: card.content.detail
                tone: "secondary"
            }
        }
        SettingSwitch {
            Layout.alignment: Qt.AlignTop
            entry: card.content.enabledSwitch
            defaults: card.defaults
            enabled: card.content.canSwitch
        }
    }
    RowLayout {
        spacing: Theme.medium

        MenuButton {
            entry: card.content.installButton
            enabled: card.content.canInstall
            onClicked: card.model.install()
        }
        MenuButton {
            entry: card.content.refreshButton
            enabled: card.content.canRefresh
            onClicked: card.model.refreshStatus()
        }
        Figures {
            Layout.fillWidth: true
            text: card.content.lastSample ?? ""
            font: Theme.caption
            tone: "secondary"
            alignRight: true
        }
    }
    SelectableText {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.content.message?.text ?? ""
        tone: card.content.message?.color ?? "secondary"
    }
}
