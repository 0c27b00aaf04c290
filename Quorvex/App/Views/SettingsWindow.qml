import QtQuick
import QtQuick.Window

// The settings in a window of their own.
Window {
    id: window

    required property var model

    title: model.content.title
    minimumWidth: 90 * Theme.unit
    minimumHeight: 80 * Theme.unit
    color: Theme.window
    // Once: afterwards the size is the user's.
    Component.onCompleted: {
        width = 110 * Theme.unit
        height = Math.min(view.implicitHeight, Screen.desktopAvailableHeight * 0.9)
    }

    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: window.close()
    }

    SettingsView {
        id: view

        anchors.fill: parent
        model: window.model
    }
}
