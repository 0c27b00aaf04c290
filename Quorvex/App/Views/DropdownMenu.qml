import QtQuick
import QtQuick.Layouts

// The ways out of the dropdown.
ColumnLayout {
    id: panel

    required property var model
    readonly property var menu: model.content.menu
    readonly property var commands: model.commands

    spacing: Theme.medium

    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 1
        color: Theme.line
    }
    MenuButton {
        Layout.fillWidth: true
        isProminent: true
        entry: panel.menu.openDashboard
        onClicked: panel.commands.openDashboard()
    }
    RowLayout {
        spacing: Theme.medium

        MenuButton {
            Layout.fillWidth: true
            entry: panel.menu.copyJSONReport
            onClicked: panel.commands.copyJSONReport()
        }
        MenuButton {
            entry: panel.menu.settings
            onClicked: panel.commands.openSettings()
        }
        MenuButton {
            Layout.fillWidth: true
            entry: panel.menu.quit
            onClicked: panel.commands.quit()
        }
    }
}
