import QtQuick
import QtQuick.Layouts

// A value that moves in steps, both in words and in steps of its owner's choice. The keyboard's
// arrows step too; assistive technology may also set `value` itself.
Item {
    id: control

    property string description: ""
    property string text: ""
    property real value: 0
    property real minimumValue: 0
    property real maximumValue: 0
    property real stepSize: 1
    property bool canDecrease: true
    property bool canIncrease: true
    property string decreaseSymbol: ""
    property string decreaseLabel: ""
    property string increaseSymbol: ""
    property string increaseLabel: ""

    property Item ring: null

    signal decreased()
    signal increased()

    implicitHeight: Theme.controlHeight
    implicitWidth: row.implicitWidth
    activeFocusOnTab: true
    onActiveFocusChanged: if (activeFocus && !ring) ring = OnDemand.mark(control, arrows)
    Accessible.role: Accessible.SpinBox
    Accessible.name: description
    Accessible.description: text
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onIncreaseAction: if (canIncrease) increased()
    Accessible.onDecreaseAction: if (canDecrease) decreased()
    Keys.onUpPressed: if (canIncrease) increased()
    Keys.onDownPressed: if (canDecrease) decreased()

    RowLayout {
        id: row

        anchors.fill: parent
        spacing: Theme.medium

        Figures {
            Layout.fillWidth: true
            text: control.text
            alignRight: true
        }
        Rectangle {
            id: arrows

            implicitWidth: 13 * Theme.unit
            implicitHeight: 6 * Theme.unit
            radius: Theme.gap
            color: Theme.control

            StepArrow {
                anchors.left: parent.left
                symbol: control.decreaseSymbol
                description: control.decreaseLabel
                enabled: control.canDecrease
                onStepped: control.decreased()
            }
            Rectangle {
                anchors.centerIn: parent
                width: 1
                height: Theme.roomy
                color: Theme.controlPressed
            }
            StepArrow {
                anchors.right: parent.right
                symbol: control.increaseSymbol
                description: control.increaseLabel
                enabled: control.canIncrease
                onStepped: control.increased()
            }
        }
    }
}
