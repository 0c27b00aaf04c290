import QtQuick
import QtQuick.Layouts

// The panel that opens from the menu-bar item, or a window of its own where there is no menu bar.
Window {
    id: dropdown

    required property var model
    property bool isPopover: false
    readonly property var content: model.content

    title: content.title
    width: 88 * Theme.unit
    // On a low screen the panel scrolls.
    height: Math.min(Math.ceil(page.implicitHeight), Screen.desktopAvailableHeight - Theme.huge)
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

    ScrollPage {
        id: page

        anchors.fill: parent
        spacing: Theme.roomy

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
            highlights: dropdown.model.list("highlights")
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
