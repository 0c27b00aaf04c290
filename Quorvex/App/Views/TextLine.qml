import QtQuick

// A text of the type scale. What it says is all that a screen reader needs.
Text {
    property string tone: "primary"

    font: Theme.body
    color: Theme.named[tone]
    elide: Text.ElideRight
    renderType: Text.QtRendering
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
