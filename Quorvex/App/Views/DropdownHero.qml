import QtQuick
import QtQuick.Layouts

// The one large number, and beside it what puts it into place.
RowLayout {
    id: hero

    required property var content
    required property var lines
    readonly property var context: content.context

    spacing: Theme.medium

    ColumnLayout {
        Layout.fillWidth: true
        Layout.preferredHeight: 16 * Theme.unit
        spacing: 2

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

                spacing: 6
                Accessible.role: Accessible.StaticText
                Accessible.name: accessibilityText

                SymbolIcon {
                    implicitWidth: line.isLarge ? 26 : 18
                    name: line.symbol
                    tone: line.symbolColor
                }
                Figures {
                    id: number

                    text: line.number
                    font: line.isLarge ? Theme.hero : Theme.headline
                    tone: line.color
                    Accessible.ignored: true
                }
                TextLine {
                    Layout.alignment: Qt.AlignBaseline
                    Layout.fillWidth: true
                    visible: text !== ""
                    text: line.unit
                    font: Theme.headline
                    tone: "secondary"
                    Accessible.ignored: true
                }
            }
        }
        Item { Layout.fillHeight: true }
    }
    ColumnLayout {
        Layout.alignment: Qt.AlignRight | Qt.AlignVCenter
        spacing: 4

        Badge {
            Layout.alignment: Qt.AlignRight
            visible: !!hero.context.adapterPill
            text: hero.context.adapterPill?.label ?? ""
            symbol: hero.context.adapterPill?.symbol ?? ""
            tone: hero.context.adapterPill?.color ?? "green"
            help: hero.context.adapterPill?.help ?? ""
        }
        Badge {
            Layout.alignment: Qt.AlignRight
            visible: !!hero.content.hero.stateLabel
            text: hero.content.hero.stateLabel?.text ?? ""
            tone: hero.content.hero.stateLabel?.color ?? "secondary"
        }
        TextLine {
            Layout.alignment: Qt.AlignRight
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
