import QtQuick
import QtQuick.Layouts

// The battery's charge and its figures.
Card {
    id: card

    property var gauge
    required property var rows

    RowLayout {
        spacing: Theme.medium

        SymbolIcon {
            implicitWidth: 22
            name: card.gauge?.symbol ?? ""
            tone: "primary"
        }
        TextLine {
            Layout.fillWidth: true
            text: card.gauge?.title ?? ""
            font: Theme.bodyStrong
            Accessible.role: Accessible.Heading
        }
        Figures {
            text: card.gauge?.percentText ?? ""
            font: Theme.bodyStrong
        }
    }
    PowerBar {
        Layout.fillWidth: true
        fraction: card.gauge?.fraction ?? 0
        tone: card.gauge?.color ?? "green"
        description: card.gauge?.accessibilityText ?? ""
    }
    Repeater {
        model: card.rows

        ColumnLayout {
            id: row

            required property string label
            required property string value
            required property string symbol
            required property string color
            required property bool isBadge
            required property string help

            Layout.fillWidth: true
            spacing: 0

            Badge {
                visible: row.isBadge
                text: row.isBadge ? row.label : ""
                symbol: row.symbol
                tone: row.color
                help: row.help
            }
            ValueRow {
                Layout.fillWidth: true
                visible: !row.isBadge
                label: row.isBadge ? "" : row.label
                value: row.value
                tone: row.color
                help: row.help
            }
        }
    }
}
