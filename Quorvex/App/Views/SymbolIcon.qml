import QtQuick
import Quorvex.Items

// A symbol in the tone of what it stands for, beside a text that says the same.
SymbolItem {
    property string tone: "secondary"

    implicitWidth: 4 * Theme.unit
    implicitHeight: implicitWidth
    color: Theme.symbols[tone]
}
