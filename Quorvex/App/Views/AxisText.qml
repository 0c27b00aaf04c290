import QtQuick

// A value of a scale, readable over the lines.
Rectangle {
    property alias text: label.text

    width: label.implicitWidth + 4
    height: label.implicitHeight
    visible: text !== ""
    radius: 3
    color: Theme.tinted(Theme.card, 0.8)

    Figures {
        id: label

        x: 2
        font: Theme.caption
        tone: "secondary"
    }
}
