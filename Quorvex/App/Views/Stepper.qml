import QtQuick
import QtQuick.Layouts

// A value that moves in steps, both in words and in steps of its owner's choice.
Item {
    id: control

    property string description: ""
    property string text: ""
    property bool canDecrease: true
    property bool canIncrease: true

    signal decreased()
    signal increased()

    implicitHeight: Theme.controlHeight
    implicitWidth: row.implicitWidth
    activeFocusOnTab: true
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
            Accessible.ignored: true
        }
        Rectangle {
            implicitWidth: 52
            implicitHeight: 22
            radius: 6
            color: Theme.control

            FocusRing { target: control }
            StepArrow {
                anchors.left: parent.left
                symbol: "minus"
                enabled: control.canDecrease
                onClicked: control.decreased()
            }
            Rectangle {
                anchors.centerIn: parent
                width: 1
                height: 12
                color: Theme.controlPressed
            }
            StepArrow {
                anchors.right: parent.right
                symbol: "plus"
                enabled: control.canIncrease
                onClicked: control.increased()
            }
        }
    }
}
