import QtQuick
import QtQuick.Layouts

// Says calmly that there is nothing here yet, and why.
ColumnLayout {
    id: empty

    property string symbol: ""
    property string title: ""
    property string detail: ""

    spacing: Theme.medium

    SymbolIcon {
        Layout.alignment: Qt.AlignHCenter
        implicitWidth: 40
        visible: empty.symbol !== ""
        name: empty.symbol
    }
    TextLine {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        visible: text !== ""
        text: empty.title
        font: Theme.title
        wrapMode: Text.Wrap
    }
    TextLine {
        Layout.fillWidth: true
        horizontalAlignment: Text.AlignHCenter
        visible: text !== ""
        text: empty.detail
        tone: "secondary"
        wrapMode: Text.Wrap
    }
}
