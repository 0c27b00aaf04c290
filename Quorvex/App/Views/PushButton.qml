import QtQuick
import QtQuick.Templates as T

// A button with a text, a symbol, or both; `isProminent` for the one action that matters most.
T.AbstractButton {
    id: button

    property string symbol: ""
    property bool isProminent: false
    property string tone: "primary"
    property string help: ""
    // The name of a button without a text.
    property string description: ""

    property var tip: null
    property Item ring: null

    implicitHeight: Theme.controlHeight
    implicitWidth: Math.max(implicitHeight, row.implicitWidth + leftPadding + rightPadding)
    leftPadding: text === "" ? 0 : 3 * Theme.unit
    rightPadding: leftPadding
    opacity: enabled ? 1 : 0.45
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text !== "" ? text : description
    Accessible.description: help
    Accessible.onPressAction: if (enabled) clicked()
    onHoveredChanged: if (hovered && help !== "" && !tip) tip = OnDemand.explain(button, button)
    onVisualFocusChanged: if (visualFocus && !ring) ring = OnDemand.mark(button, background)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: Theme.gap

            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                visible: button.symbol !== ""
                name: button.symbol
                implicitWidth: 14
                color: button.isProminent ? Theme.accentText : Theme.named[button.tone]
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                visible: text !== ""
                text: button.text
                font: button.isProminent ? Theme.bodyStrong : Theme.body
                color: button.isProminent ? Theme.accentText : Theme.named[button.tone]
                textFormat: Text.PlainText
                Accessible.ignored: true
            }
        }
    }
    background: Rectangle {
        radius: Theme.gap
        color: button.isProminent
            ? (button.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent)
            : button.down ? Theme.controlPressed : button.hovered ? Theme.controlHover : Theme.control
    }
}
