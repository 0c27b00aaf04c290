import QtQuick
import QtQuick.Layouts

// A rate or a count of bytes with its direction.
RowLayout {
    id: figure

    property var rate
    property bool isSmall: false

    Layout.fillWidth: !isSmall
    Layout.preferredWidth: isSmall ? implicitWidth : 1
    spacing: Theme.gap

    SymbolIcon {
        implicitWidth: figure.isSmall ? 12 : 16
        name: figure.rate.symbol
        Accessible.role: Accessible.Graphic
        Accessible.name: figure.rate.label
        Accessible.ignored: !figure.isSmall
    }
    ColumnLayout {
        Layout.fillWidth: !figure.isSmall
        spacing: 0

        Figures {
            text: figure.rate.text
            font: figure.isSmall ? Theme.body : Theme.title
        }
        TextLine {
            visible: !figure.isSmall
            text: figure.rate.label
            font: Theme.caption
            tone: "secondary"
        }
    }
}
