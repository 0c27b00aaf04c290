import QtQuick

// A small text that can be selected and copied.
TextEdit {
    property string tone: "primary"

    font: Theme.caption
    color: Theme.named[tone]
    selectionColor: Theme.accent
    selectedTextColor: Theme.accentText
    wrapMode: Text.Wrap
    readOnly: true
    selectByMouse: true
    activeFocusOnTab: text !== ""
    textFormat: TextEdit.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""

    FocusRing { target: parent }
}
