import QtQuick
import QtQuick.Layouts

// A figure over its name.
ColumnLayout {
    property var entry

    Layout.fillWidth: true
    Layout.preferredWidth: 1
    spacing: 1

    Figures {
        Layout.fillWidth: true
        text: parent.entry?.value ?? ""
        font: Theme.bodyStrong
        tone: parent.entry?.color ?? "primary"
    }
    TextLine {
        Layout.fillWidth: true
        text: parent.entry?.label ?? ""
        font: Theme.caption
        tone: "secondary"
    }
}
