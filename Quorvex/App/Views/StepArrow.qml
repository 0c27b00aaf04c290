import QtQuick
import QtQuick.Templates as T

// Half of a stepper. The keyboard has the stepper itself.
T.AbstractButton {
    property string symbol: ""
    property string description: ""

    width: parent.width / 2
    height: parent.height
    autoRepeat: true
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    opacity: enabled ? 1 : 0.35
    Accessible.role: Accessible.Button
    Accessible.name: description
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Item {
        SymbolIcon {
            anchors.centerIn: parent
            name: parent.parent.symbol
            implicitWidth: 12
            tone: "primary"
        }
    }
    background: Rectangle {
        radius: Theme.gap
        color: parent.down ? Theme.controlPressed : parent.hovered ? Theme.controlHover : "transparent"
    }
}
