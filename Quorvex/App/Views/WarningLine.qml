import QtQuick
import QtQuick.Layouts

// Advice in the colour of its urgency; nothing while there is none.
RowLayout {
    id: line

    property var warning

    visible: !!warning
    spacing: Theme.gap

    SymbolIcon {
        Layout.alignment: Qt.AlignTop
        implicitWidth: 14
        name: line.warning?.symbol ?? ""
        tone: line.warning?.color ?? "orange"
    }
    TextLine {
        Layout.fillWidth: true
        text: line.warning?.text ?? ""
        font: Theme.caption
        tone: line.warning?.color ?? "orange"
        wrapMode: Text.Wrap
    }
}
