import QtQuick
import QtQuick.Templates as T

// The text of a help tip.
T.ToolTip {
    id: popup

    required property var owner

    visible: owner.hovered && owner.help !== ""
    delay: 600
    x: 0
    y: parent.height + Theme.small
    padding: Theme.medium
    margins: Theme.medium
    implicitWidth: Math.min(content.implicitWidth + 2 * padding, 70 * Theme.unit)
    implicitHeight: content.implicitHeight + 2 * padding

    contentItem: Text {
        id: content

        text: popup.owner.help
        font: Theme.caption
        color: Theme.primary
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
    }
    background: Rectangle {
        color: Theme.card
        radius: Theme.small
        border.color: Theme.line
    }
}
