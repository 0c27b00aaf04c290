import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// A setting that is on or off: its name at the left, the switch at the right.
T.AbstractButton {
    id: control

    property string symbol: ""
    property string help: ""
    property bool isSmall: false
    property var tip: null
    property Item ring: null

    checkable: true
    implicitHeight: isSmall ? 5 * Theme.unit : Theme.controlHeight
    implicitWidth: row.implicitWidth
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    onHoveredChanged: if (hovered && help !== "" && !tip) tip = OnDemand.explain(control, control)
    onVisualFocusChanged: if (visualFocus && !ring) ring = OnDemand.mark(control, track)
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.description: help
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: press()
    Accessible.onPressAction: press()

    function press() {
        if (enabled) {
            toggle()
            toggled()
        }
    }

    contentItem: RowLayout {
        id: row

        spacing: control.isSmall ? Theme.gap : Theme.medium

        SymbolIcon {
            visible: control.symbol !== ""
            implicitWidth: control.isSmall ? 12 : 16
            name: control.symbol
        }
        Text {
            Layout.fillWidth: true
            text: control.text
            font: control.isSmall ? Theme.caption : Theme.body
            color: Theme.primary
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
        Rectangle {
            id: track

            implicitWidth: control.isSmall ? 7 * Theme.unit : 9 * Theme.unit
            implicitHeight: control.isSmall ? 4 * Theme.unit : 5 * Theme.unit
            radius: height / 2
            color: control.checked ? Theme.accent : Theme.controlPressed

            Rectangle {
                x: control.checked ? parent.width - width - 2 : 2
                y: 2
                width: parent.height - 4
                height: width
                radius: width / 2
                color: "#ffffff"

                Behavior on x { NumberAnimation { duration: 120; easing.type: Easing.OutCubic } }
            }
        }
    }
}
