import QtQuick
import QtQuick.Layouts

// Settings that belong together: a title above the card, an explanation below it.
ColumnLayout {
    id: section

    default property alias body: card.body
    property string title: ""
    property string footer: ""

    Layout.fillWidth: true
    spacing: Theme.gap

    TextLine {
        Layout.leftMargin: Theme.tiny
        text: section.title
        font: Theme.bodyStrong
        Accessible.role: Accessible.Heading
    }
    Card {
        id: card

        Layout.fillWidth: true
        padding: Theme.roomy
        spacing: Theme.small
    }
    TextLine {
        Layout.fillWidth: true
        Layout.leftMargin: Theme.tiny
        visible: text !== ""
        text: section.footer
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
}
