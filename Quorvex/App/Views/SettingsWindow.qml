import QtQuick

// The settings in a window of their own.
Window {
    id: window

    required property var model
    // As high as the settings are, where the screen has the room.
    readonly property real wantedHeight: Math.min(view.implicitHeight, Screen.desktopAvailableHeight * 0.9)
    property real givenHeight: 0

    title: model.content.title
    width: 110 * Theme.unit
    minimumWidth: 90 * Theme.unit
    minimumHeight: 80 * Theme.unit
    color: Theme.window
    onWantedHeightChanged: fit()
    Component.onCompleted: fit()

    // Until the user chooses a height.
    function fit() {
        if (givenHeight === 0 || height === givenHeight) {
            height = Math.max(minimumHeight, Math.ceil(wantedHeight))
            givenHeight = height
        }
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
