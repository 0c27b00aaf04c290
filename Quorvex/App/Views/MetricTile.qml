import QtQuick
import QtQuick.Layouts

// One figure with its name above and its context below.
Card {
    id: tile

    property string label: ""
    property string value: ""
    property string detail: ""

    padding: Theme.roomy
    spacing: Theme.tiny

    TextLine {
        Layout.fillWidth: true
        text: tile.label
        font: Theme.caption
        tone: "secondary"
    }
    Figures {
        Layout.fillWidth: true
        text: tile.value
        font: Theme.headline
    }
    TextLine {
        Layout.fillWidth: true
        Layout.fillHeight: true
        text: tile.detail
        wrapMode: Text.Wrap
        font: Theme.caption
        tone: "secondary"
    }
}
