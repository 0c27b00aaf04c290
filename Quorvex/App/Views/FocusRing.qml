import QtQuick

// Shows where the keyboard is.
Rectangle {
    required property Item target

    anchors.fill: parent
    anchors.margins: -Theme.tiny
    visible: target.visualFocus === undefined ? target.activeFocus : target.visualFocus
    color: "transparent"
    radius: (parent.radius ?? 0) + Theme.tiny
    border.width: 2
    border.color: Theme.accent
}
