import QtQuick
import QtQuick.Layouts

// The panel that opens from the menu-bar item, or a window of its own where there is no menu bar.
Window {
    id: dropdown

    required property var model
    property bool isPopover: false
    readonly property var sections: ["Hero", "Graph", "Stats", "Session", "Controls", "Menu"].map(name => `Dropdown${name}.qml`)
    // Each section is a document, which the toolkit's thread reads while the sections before it are
    // being made.
    readonly property var ahead: sections.map(file => Qt.createComponent(file, Component.Asynchronous))

    title: model.content.title
    width: 88 * Theme.unit
    // On a low screen the panel scrolls.
    height: Math.min(Math.ceil(page.implicitHeight), Screen.desktopAvailableHeight - Theme.huge)
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height
    color: Theme.window

    Shortcut {
        enabled: dropdown.isPopover
        sequences: [StandardKey.Cancel]
        onActivated: dropdown.close()
    }

    ScrollPage {
        id: page

        anchors.fill: parent
        spacing: Theme.roomy

        Repeater {
            model: dropdown.sections

            Loader {
                required property string modelData

                Layout.fillWidth: true
                visible: item?.isNeeded !== false
                Component.onCompleted: setSource(modelData, { model: dropdown.model })
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: dropdown.isPopover
        color: "transparent"
        border.color: Theme.line
    }
}
