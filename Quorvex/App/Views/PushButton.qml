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

    readonly property string shownTone: isProminent ? "" : tone

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
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Item {
        Row {
            id: row

            anchors.centerIn: parent
            spacing: 6

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
        radius: 6
        color: button.isProminent
            ? (button.down ? Qt.darker(Theme.accent, 1.15) : Theme.accent)
            : button.down ? Theme.controlPressed : button.hovered ? Theme.controlHover : Theme.control

        FocusRing { target: button }
    }

    HelpTip { text: button.help }
}
