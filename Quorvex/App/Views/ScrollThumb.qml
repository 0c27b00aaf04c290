import QtQuick
import QtQuick.Templates as T

// A thin bar that shows where a long page stands.
T.ScrollBar {
    id: bar

    implicitWidth: 10
    padding: 2
    minimumSize: 0.08
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: Theme.secondary
        opacity: bar.pressed ? 0.8 : bar.hovered || bar.active ? 0.5 : 0.25

        Behavior on opacity { NumberAnimation { duration: 150 } }
    }
}
