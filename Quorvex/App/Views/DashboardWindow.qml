import QtQuick
import QtQuick.Layouts

// Where measurements are started and looked at: a header over the two tabs.
Window {
    id: window

    required property var model
    readonly property var content: model.content
    readonly property bool isLive: model.tab === 0

    title: content.title
    // As much as the header needs in the font that is there.
    minimumWidth: Math.ceil(Math.max(100 * Theme.unit, header.implicitWidth))
    minimumHeight: 120 * Theme.unit
    color: Theme.window
    // Once: afterwards the size is the user's.
    Component.onCompleted: {
        width = content.width
        height = content.height
    }

    Shortcut {
        sequences: [StandardKey.Close]
        onActivated: window.close()
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        DashboardHeader {
            id: header

            Layout.fillWidth: true
            content: window.content
            model: window.model
        }
        Rectangle {
            Layout.fillWidth: true
            implicitHeight: 1
            color: Theme.line
        }
        Loader {
            Layout.fillWidth: true
            Layout.fillHeight: true
            active: window.isLive
            visible: active
            sourceComponent: LiveTab { model: window.model }
        }
        Loader {
            Layout.fillWidth: true
            Layout.fillHeight: true
            active: !window.isLive
            visible: active
            sourceComponent: SessionHistoryView { model: window.model.history }
        }
    }
}
