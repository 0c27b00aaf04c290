import QtQuick

// A word of state on a ground of its own colour.
Rectangle {
    id: badge

    property string text: ""
    property string symbol: ""
    property string tone: "secondary"
    property string help: ""

    // What is not the word: its margins, and the symbol.
    readonly property real frame: 2 * Theme.medium + (symbol !== "" ? icon.width + row.spacing : 0)

    implicitWidth: Math.ceil(label.implicitWidth) + frame
    implicitHeight: Math.max(5 * Theme.unit, label.contentHeight + Theme.small)
    radius: 10
    color: Theme.tinted(Theme.named[tone], 0.15)
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: help

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.small

        SymbolIcon {
            id: icon

            anchors.verticalCenter: parent.verticalCenter
            visible: badge.symbol !== ""
            name: badge.symbol
            implicitWidth: 12
            tone: badge.tone
        }
        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            // Wraps where the badge is given less room than it asks for.
            width: Math.max(0, badge.width - badge.frame)
            wrapMode: Text.Wrap
            text: badge.text
            font: Theme.captionStrong
            color: Theme.named[badge.tone]
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    HelpTip { help: badge.help }
}
