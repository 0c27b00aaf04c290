import QtQuick
import QtQuick.Layouts

// The name of a part within a card.
TextLine {
    Layout.fillWidth: true
    Layout.topMargin: Theme.small
    visible: text !== ""
    font: Theme.bodyStrong
    Accessible.role: Accessible.Heading
}
