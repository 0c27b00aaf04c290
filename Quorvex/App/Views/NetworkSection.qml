import QtQuick
import QtQuick.Layouts

// What goes in and out, and through what.
Card {
    id: card

    required property var live
    readonly property var section: live.content.network

    heading: section.title

    RowLayout {
        spacing: Theme.large

        RateFigure { rate: card.section.download }
        RateFigure { rate: card.section.upload }
    }
    Sparkline {
        Layout.fillWidth: true
        label: card.section.throughput.label
        description: card.section.throughput.accessibilityLabel
        series: card.section.throughput.lines
        emptyText: card.section.throughput.emptyText
    }
    RowLayout {
        spacing: Theme.medium

        TextLine {
            text: card.section.totalLabel
            tone: "secondary"
        }
        TextLine {
            Layout.fillWidth: true
            text: card.section.totalNote
            font: Theme.caption
            tone: "secondary"
        }
        RateFigure { rate: card.section.totalIn; isSmall: true }
        RateFigure { rate: card.section.totalOut; isSmall: true }
    }
    Heading { text: card.section.topProcessesTitle }
    NetworkRows { rows: card.live.list("topProcesses") }
    Heading { text: card.section.interfacesTitle }
    NetworkRows { rows: card.live.list("interfaces") }
}
