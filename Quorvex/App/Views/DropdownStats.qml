import QtQuick
import QtQuick.Layouts

// A row of figures of equal width.
Card {
    id: card

    required property var cells

    visible: cells.count > 0
    padding: 3 * Theme.unit

    RowLayout {
        Layout.fillWidth: true
        spacing: 0

        Repeater {
            model: card.cells

            ColumnLayout {
                id: cell

                required property string symbol
                required property string text
                required property string caption
                required property string color
                required property string help
                required property string accessibilityText

                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
                Layout.preferredWidth: Math.max(14 * Theme.unit, number.implicitWidth, captionText.implicitWidth)
                spacing: 3
                Accessible.role: Accessible.StaticText
                Accessible.name: accessibilityText
                Accessible.description: help

                SymbolIcon {
                    Layout.alignment: Qt.AlignHCenter
                    implicitWidth: 18
                    name: cell.symbol
                    tone: cell.color === "primary" ? "secondary" : cell.color
                }
                Figures {
                    id: number

                    Layout.alignment: Qt.AlignHCenter
                    text: cell.text
                    font: Theme.bodyStrong
                    tone: cell.color
                    Accessible.ignored: true
                }
                TextLine {
                    id: captionText

                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    text: cell.caption
                    font: Theme.caption
                    tone: "secondary"
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                    Accessible.ignored: true
                }
                HelpTip { text: cell.help }
            }
        }
    }
}
