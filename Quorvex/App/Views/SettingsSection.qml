import QtQuick
import QtQuick.Layouts

// Settings that belong together: a title above the card, an explanation below it.
ColumnLayout {
    id: section

    default property alias body: card.body
    property string title: ""
    property string footer: ""

    Layout.fillWidth: true
    spacing: 6

    TextLine {
        Layout.leftMargin: 2
        text: section.title
        font: Theme.bodyStrong
        Accessible.role: Accessible.Heading
    }
    Card {
        id: card

        Layout.fillWidth: true
        padding: 3 * Theme.unit
        spacing: 4
    }
    TextLine {
        Layout.fillWidth: true
        Layout.leftMargin: 2
        visible: text !== ""
        text: section.footer
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
}
