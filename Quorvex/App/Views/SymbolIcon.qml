import QtQuick
import Quorvex.Items

// A symbol in the tone of what it stands for. It is a picture with `description`, or beside a text
// that says the same and then silent.
SymbolItem {
    property string tone: "secondary"
    property string description: ""

    implicitWidth: 4 * Theme.unit
    implicitHeight: implicitWidth
    color: Theme.symbols[tone]
    Accessible.role: Accessible.Graphic
    Accessible.name: description
    Accessible.ignored: description === ""
}
