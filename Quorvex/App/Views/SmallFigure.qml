import QtQuick
import QtQuick.Layouts

// A figure over its name.
ColumnLayout {
    property var entry
    property bool alignRight: false

    Layout.fillWidth: true
    Layout.preferredWidth: 1
    spacing: 0

    Figures {
        Layout.fillWidth: true
        text: parent.entry?.value ?? ""
        font: Theme.bodyStrong
        tone: parent.entry?.color ?? "primary"
        alignRight: parent.alignRight
    }
    TextLine {
        Layout.fillWidth: true
        horizontalAlignment: parent.alignRight ? Text.AlignRight : Text.AlignLeft
        text: parent.entry?.label ?? ""
        font: Theme.caption
        tone: "secondary"
    }
}
