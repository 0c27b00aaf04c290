import QtQuick
import QtQuick.Templates as T

// A line of text that the user writes.
T.TextField {
    id: field

    property string symbol: ""

    implicitHeight: Theme.controlHeight
    implicitWidth: 50 * Theme.unit
    leftPadding: symbol === "" ? Theme.medium : 7 * Theme.unit
    rightPadding: Theme.medium
    verticalAlignment: TextInput.AlignVCenter
    font: Theme.body
    color: Theme.primary
    placeholderTextColor: Theme.secondary
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    selectByMouse: true
    Accessible.role: Accessible.EditableText
    Accessible.name: placeholderText

    background: Rectangle {
        radius: Theme.gap
        color: Theme.field
        border.color: Theme.line

        FocusRing { target: field }

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            anchors.left: parent.left
            anchors.leftMargin: Theme.medium
            implicitWidth: 14
            visible: field.symbol !== ""
            name: field.symbol
        }
    }

    Text {
        anchors.fill: parent
        anchors.leftMargin: field.leftPadding
        anchors.rightMargin: field.rightPadding
        verticalAlignment: Text.AlignVCenter
        visible: field.length === 0 && field.preeditText === ""
        text: field.placeholderText
        font: field.font
        color: field.placeholderTextColor
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
