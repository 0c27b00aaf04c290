import QtQuick
import Quorvex.Items

// A symbol in the tone of what it stands for. Beside a text that says the same it is silent; a symbol
// that stands alone is given its name where it is used.
SymbolItem {
    property string tone: "secondary"

    implicitWidth: 4 * Theme.unit
    implicitHeight: implicitWidth
    color: Theme.symbols[tone]
}
