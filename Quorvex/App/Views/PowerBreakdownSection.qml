import QtQuick
import QtQuick.Layouts

// The best single wattage, how it splits into components, and how far to trust it.
Card {
    id: card

    required property var live
    required property var content
    readonly property var breakdown: content.breakdown

    description: breakdown.accessibilityText

    RowLayout {
        spacing: Theme.large

        Figures {
            text: card.breakdown.total.text
            font: Theme.headline
            tone: card.breakdown.total.color
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.tiny

            TextLine {
                Layout.fillWidth: true
                text: card.breakdown.title
                font: Theme.bodyStrong
            }
            TextLine {
                Layout.fillWidth: true
                text: card.breakdown.summary
                font: Theme.caption
                tone: "secondary"
                wrapMode: Text.Wrap
            }
        }
    }
    PowerBar {
        Layout.fillWidth: true
        visible: !!card.breakdown.bar
        label: card.breakdown.bar?.label ?? ""
        value: card.breakdown.bar?.value ?? ""
        fraction: card.breakdown.bar?.fraction ?? 0
        tone: card.breakdown.bar?.tint ?? "green"
        description: card.breakdown.bar?.accessibilityText ?? ""
    }
    Sparkline {
        Layout.fillWidth: true
        visible: !!card.breakdown.history
        label: card.breakdown.history?.label ?? ""
        description: card.breakdown.history?.accessibilityLabel ?? ""
        series: card.breakdown.history?.lines ?? []
    }
    Repeater {
        model: card.live.list("components")

        PowerBar {
            required label
            required value
            required fraction
            required property string tint
            required property string accessibilityText

            Layout.fillWidth: true
            tone: tint
            description: accessibilityText
        }
    }
    RowLayout {
        visible: card.breakdown.unavailableText !== ""
        spacing: Theme.gap

        SymbolIcon {
            implicitWidth: 14
            name: card.breakdown.unavailableSymbol
        }
        TextLine {
            Layout.fillWidth: true
            text: card.breakdown.unavailableText
            tone: "secondary"
            wrapMode: Text.Wrap
        }
    }
    Loader {
        Layout.fillWidth: true
        active: !!card.content.advanced
        visible: active
        sourceComponent: AdvancedMetricsSection {
            live: card.live
            metrics: card.content.advanced ?? null
        }
    }
}
