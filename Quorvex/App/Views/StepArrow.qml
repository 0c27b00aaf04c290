import QtQuick

// Half of a stepper, which steps on while it is held. The keyboard has the stepper itself.
Pressable {
    id: arrow

    property string symbol: ""
    property string description: ""
    // The click that ends a long press is not one more step.
    property bool hasRepeated: false

    signal stepped()

    width: parent.width / 2
    height: parent.height
    takesFocus: false
    opacity: enabled ? 1 : 0.35
    onDownChanged: if (!down) Qt.callLater(() => { if (arrow) arrow.hasRepeated = false })
    onClicked: if (!hasRepeated) stepped()
    Accessible.name: description

    Timer {
        interval: arrow.hasRepeated ? 100 : 400
        repeat: true
        running: arrow.down && arrow.enabled
        onTriggered: {
            arrow.hasRepeated = true
            arrow.stepped()
        }
    }
    Rectangle {
        anchors.fill: parent
        radius: Theme.gap
        color: arrow.down ? Theme.controlPressed : arrow.hovered ? Theme.controlHover : "transparent"
    }
    SymbolIcon {
        anchors.centerIn: parent
        name: arrow.symbol
        implicitWidth: 12
        tone: "primary"
    }
}
