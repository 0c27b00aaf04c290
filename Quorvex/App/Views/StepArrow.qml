import QtQuick
import QtQuick.Templates as T

// Half of a stepper, for the pointer: the keyboard and screen readers have the stepper itself.
T.AbstractButton {
    property string symbol: ""

    width: 26
    height: 22
    autoRepeat: true
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.35
    Accessible.ignored: true

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: parent.parent.symbol
            implicitWidth: 11
            tone: "primary"
        }
    }
    background: Rectangle {
        radius: 6
        color: parent.down ? Theme.controlPressed : parent.hovered ? Theme.controlHover : "transparent"
    }
}
