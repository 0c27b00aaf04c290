import QtQuick

// A button with a text, a symbol, or both; `isProminent` for the one action that matters most.
Pressable {
    id: button

    property string symbol: ""
    property bool isProminent: false
    // The name of a button without a text.
    property string description: ""
    readonly property color ink: isProminent ? Theme.accentText : Theme.primary

    implicitHeight: Theme.controlHeight
    implicitWidth: text === "" ? implicitHeight : Math.max(implicitHeight, row.implicitWidth + 6 * Theme.unit)
    frame: ground
    Accessible.name: text !== "" ? text : description

    Rectangle {
        id: ground

        anchors.fill: parent
        radius: Theme.gap
        color: button.isProminent
            ? (button.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent)
            : button.down ? Theme.controlPressed : button.hovered ? Theme.controlHover : Theme.control
    }
    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.gap

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: button.symbol !== ""
            name: button.symbol
            implicitWidth: 14
            color: button.ink
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: text !== ""
            text: button.text
            font: button.isProminent ? Theme.bodyStrong : Theme.body
            color: button.ink
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }
}
