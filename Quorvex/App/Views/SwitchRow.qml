import QtQuick
import QtQuick.Layouts

// A setting that is on or off: its name at the left, the switch at the right.
Pressable {
    id: control

    property string symbol: ""
    property bool isSmall: false
    // What is shown. Its owner sets it, also in answer to `toggled`.
    property bool checked: false

    signal toggled(bool checked)

    implicitHeight: isSmall ? 5 * Theme.unit : Theme.controlHeight
    implicitWidth: row.implicitWidth
    frame: track
    onClicked: toggled(!checked)
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.onToggleAction: press()

    RowLayout {
        id: row

        anchors.fill: parent
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
