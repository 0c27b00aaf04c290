import QtQuick
import QtQuick.Layouts

// The last readings of one kind, and the choice of the kind.
Card {
    id: card

    required property var model
    readonly property var content: model.content
    readonly property var graph: content.graph
    readonly property var used: content.dataUsed

    padding: Theme.roomy

    SegmentedControl {
        Layout.fillWidth: true
        description: card.content.selector.accessibilityLabel
        options: card.content.selector.buttons
        current: card.content.selectedGraph
        onChosen: index => card.model.defaults.menuGraphMode = options[index].mode
    }
    Sparkline {
        Layout.fillWidth: true
        series: card.graph.sparkline.lines
        label: card.graph.label
        description: card.graph.sparkline.accessibilityLabel
        caption: card.graph.caption ?? ""
        emptyText: card.graph.sparkline.emptyText
        graphHeight: 56
    }
    RowLayout {
        Layout.fillWidth: true
        visible: !!card.used
        spacing: Theme.large

        Repeater {
            model: ["in", "out"]

            RowLayout {
                required property string modelData
                readonly property var direction: card.used ? card.used[modelData] : undefined

                spacing: Theme.gap
                Accessible.role: Accessible.Grouping
                Accessible.name: direction?.accessibilityText ?? ""
                Accessible.description: card.used?.help ?? ""

                SymbolIcon {
                    implicitWidth: 14
                    name: parent.direction?.symbol ?? ""
                    tone: parent.direction?.color ?? "secondary"
                }
                Figures {
                    text: parent.direction?.text ?? ""
                    font: Theme.caption
                    tone: "secondary"
                }
                HelpTip { help: card.used?.help ?? "" }
            }
        }
        Item { Layout.fillWidth: true }
    }
}
