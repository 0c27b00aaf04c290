import QtQuick
import QtQuick.Layouts

// The one large number, and beside it what puts it into place.
RowLayout {
    id: hero

    required property var model
    readonly property var content: model.content
    readonly property var lines: model.list("heroLines")
    readonly property var context: content.context

    spacing: Theme.medium

    ColumnLayout {
        Layout.fillWidth: true
        Layout.preferredHeight: 16 * Theme.unit
        spacing: Theme.tiny

        Repeater {
            model: hero.lines

            RowLayout {
                id: line

                required property string symbol
                required property string symbolColor
                required property string number
                required property string unit
                required property string color
                required property bool isStatus
                required property string accessibilityText
                readonly property bool isLarge: hero.lines.count === 1 && !isStatus

                Layout.fillWidth: true
                spacing: Theme.gap
                Accessible.role: Accessible.Grouping
                Accessible.name: accessibilityText

                SymbolIcon {
                    implicitWidth: line.isLarge ? 26 : 18
                    name: line.symbol
                    tone: line.symbolColor
                }
                Figures {
                    Layout.alignment: Qt.AlignBaseline
                    text: line.number
                    font: line.isLarge ? Theme.hero : Theme.headline
                    tone: line.color
                }
                TextLine {
                    Layout.alignment: Qt.AlignBaseline
                    visible: text !== ""
                    text: line.unit
                    font: Theme.headline
                    tone: "secondary"
                }
                Item { Layout.fillWidth: true }
            }
        }
        Item { Layout.fillHeight: true }
    }
    ColumnLayout {
        Layout.alignment: Qt.AlignRight
        spacing: Theme.small

        OptionalBadge {
            Layout.alignment: Qt.AlignRight
            entry: hero.context.adapterPill
        }
        OptionalBadge {
            Layout.alignment: Qt.AlignRight
            entry: hero.content.hero.stateLabel
        }
        TextLine {
            Layout.alignment: Qt.AlignRight
            Layout.maximumWidth: 36 * Theme.unit
            visible: text !== ""
            text: hero.content.hero.sourceLabel
            font: Theme.caption
            tone: "secondary"
        }
        Repeater {
            model: hero.context.components.length

            Figures {
                required property int index

                Layout.alignment: Qt.AlignRight
                text: hero.context.components[index] ?? ""
                font: Theme.caption
                tone: "secondary"
            }
        }
        Figures {
            Layout.alignment: Qt.AlignRight
            visible: !!hero.context.text
            text: hero.context.text?.text ?? ""
            font: Theme.caption
            tone: hero.context.text?.color ?? "secondary"
        }
    }
}
