import QtQuick
import QtQuick.Layouts

// A heading, rows of labels and values, and a word on them.
Card {
    id: card

    property var rows: []
    property string caption: ""

    Repeater {
        model: card.rows

        ValueRow {
            required property var modelData

            Layout.fillWidth: true
            label: modelData.label
            value: modelData.value
            tone: modelData.color
        }
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.caption
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
}
