import QtQuick
import QtQuick.Layouts

// Two rows of figures: the machine at a glance, and below it the temperatures that matter most.
Card {
    id: card

    required property var model
    readonly property var cells: model.list("stats")
    readonly property var highlights: model.list("highlights")
    readonly property bool isNeeded: cells.count + highlights.count > 0

    padding: Theme.roomy

    RowLayout {
        Layout.fillWidth: true
        visible: card.cells.count > 0
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
                // The speeds of many fans take more than one line.
                readonly property bool isLong: text.length > 14

                Layout.fillWidth: true
                Layout.alignment: Qt.AlignTop
                Layout.preferredWidth: Math.max(14 * Theme.unit, number.implicitWidth, captionText.implicitWidth)
                spacing: Theme.tiny
                Accessible.role: Accessible.Grouping
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
                    visible: !cell.isLong
                    text: cell.isLong ? "" : cell.text
                    font: Theme.bodyStrong
                    tone: cell.color
                }
                Loader {
                    Layout.fillWidth: true
                    Layout.minimumWidth: 24 * Theme.unit
                    active: cell.isLong
                    visible: active
                    sourceComponent: TextLine {
                        horizontalAlignment: Text.AlignHCenter
                        text: cell.text
                        font: Theme.bodyStrong
                        tone: cell.color
                        wrapMode: Text.Wrap
                    }
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
                }
                HelpTip { help: cell.help }
            }
        }
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 1
        visible: card.cells.count > 0 && card.highlights.count > 0
        color: Theme.line
    }
    RowLayout {
        Layout.fillWidth: true
        visible: card.highlights.count > 0
        spacing: Theme.small

        Repeater {
            model: card.highlights

            ColumnLayout {
                id: highlight

                required property string label
                required property string value
                required property string color

                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.alignment: Qt.AlignTop
                spacing: 0

                Figures {
                    Layout.alignment: Qt.AlignHCenter
                    text: highlight.value
                    tone: highlight.color
                }
                TextLine {
                    Layout.fillWidth: true
                    horizontalAlignment: Text.AlignHCenter
                    text: highlight.label
                    font: Theme.caption
                    tone: "secondary"
                    wrapMode: Text.Wrap
                    maximumLineCount: 2
                }
            }
        }
    }
}
