import QtQuick

// A word of state on a ground of its own colour.
Rectangle {
    id: badge

    property string text: ""
    property string symbol: ""
    property string tone: "secondary"
    property string help: ""

    implicitWidth: row.implicitWidth + 4 * Theme.unit
    implicitHeight: 20
    radius: height / 2
    color: Theme.tinted(Theme.named[tone], 0.15)
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: help

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 4

        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            visible: badge.symbol !== ""
            name: badge.symbol
            implicitWidth: 12
            tone: badge.tone
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: badge.text
            font: Theme.captionStrong
            color: Theme.named[badge.tone]
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    HelpTip { text: badge.help }
}
