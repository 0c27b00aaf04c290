import QtQuick
import QtQuick.Layouts
import QtQuick.Window

// The panel that opens from the menu-bar item, or a window of its own where there is no menu bar.
Window {
    id: dropdown

    required property var model
    property bool isPopover: false
    readonly property var content: model.content

    title: content.title
    width: 88 * Theme.unit
    height: page.implicitHeight + 2 * page.anchors.margins
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Theme.window
    flags: isPopover ? Qt.Tool | Qt.FramelessWindowHint | Qt.WindowStaysOnTopHint : Qt.Window

    Shortcut {
        enabled: dropdown.isPopover
        sequences: [StandardKey.Cancel]
        onActivated: dropdown.close()
    }

    ColumnLayout {
        id: page

        anchors.fill: parent
        anchors.margins: Theme.large
        spacing: 3 * Theme.unit

        DropdownHero {
            Layout.fillWidth: true
            content: dropdown.content
            lines: dropdown.model.list("heroLines")
        }
        DropdownGraph {
            Layout.fillWidth: true
            content: dropdown.content
            onChosen: mode => dropdown.model.defaults.menuGraphMode = mode
        }
        DropdownStats {
            Layout.fillWidth: true
            cells: dropdown.model.list("stats")
        }
        DropdownSession {
            Layout.fillWidth: true
            session: dropdown.content.session
            commands: dropdown.model.commands
        }
        DropdownControls {
            Layout.fillWidth: true
            controls: dropdown.content.controls
            commands: dropdown.model.commands
            defaults: dropdown.model.defaults
        }
        DropdownMenu {
            Layout.fillWidth: true
            menu: dropdown.content.menu
            commands: dropdown.model.commands
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: dropdown.isPopover
        color: "transparent"
        border.color: Theme.line
    }
}
