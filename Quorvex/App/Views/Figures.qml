import QtQuick
import Quorvex.Items

// A live value whose digits keep their places.
FiguresItem {
    property string tone: "primary"

    font: Theme.body
    color: Theme.named[tone]
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.ignored: text === ""
}
