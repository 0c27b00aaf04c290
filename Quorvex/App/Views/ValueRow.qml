import QtQuick
import QtQuick.Layouts

// What is measured at the left, its value at the right; a long value wraps in the room it has.
RowLayout {
    id: row

    property string label: ""
    property string value: ""
    property string tone: "primary"
    property string help: ""
    readonly property bool isLong: value.length > 28

    spacing: Theme.large

    TextLine {
        Layout.fillWidth: !row.isLong
        Layout.alignment: Qt.AlignTop
        text: row.label
        tone: "secondary"
        Accessible.description: row.help

        HelpTip { help: row.help }
    }
    Figures {
        Layout.alignment: Qt.AlignTop | Qt.AlignRight
        visible: !row.isLong
        text: row.isLong ? "" : row.value
        tone: row.tone
    }
    TextLine {
        Layout.fillWidth: true
        visible: row.isLong
        horizontalAlignment: Text.AlignRight
        text: row.isLong ? row.value : ""
        tone: row.tone
        wrapMode: Text.Wrap
    }
}
