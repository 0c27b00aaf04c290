import QtQuick
import QtQuick.Layouts
import Quorvex.Items

// The course of one figure over the session: its scale at the left, its time below, and under the
// pointer what it was.
Card {
    id: card

    required property var plot
    // Gives what the trace says at a place, 0 to 1 from left to right.
    required property var readoutAt
    readonly property bool isEmpty: plot.lines.length === 0
    readonly property var readout: hover.hovered && !isEmpty ? readoutAt(hover.point.position.x / area.width) : null

    padding: 3 * Theme.unit
    spacing: 4

    RowLayout {
        spacing: Theme.medium

        TextLine {
            text: card.plot.title
            font: Theme.bodyStrong
            Accessible.role: Accessible.Heading
        }
        Figures {
            Layout.fillWidth: true
            text: card.readout?.text ?? card.plot.value
            font: Theme.caption
            tone: card.readout ? "primary" : "secondary"
            alignRight: true
        }
    }
    Item {
        id: area

        Layout.fillWidth: true
        Layout.topMargin: 2
        implicitHeight: 92

        HoverHandler { id: hover }

        Repeater {
            model: 3

            Rectangle {
                required property int index

                y: Math.round(index * (area.height - 1) / 2)
                width: area.width
                height: 1
                visible: !card.isEmpty
                color: Theme.line
                opacity: index === 2 ? 1 : 0.6
            }
        }
        ChartItem {
            anchors.fill: parent
            series: card.plot.lines
            colors: Theme.named
            isFilled: card.plot.lines.length === 1
            Accessible.role: Accessible.Graphic
            Accessible.name: card.plot.accessibilityText
        }
        AxisText { text: card.plot.topText; anchors.top: parent.top; anchors.topMargin: 2 }
        AxisText { text: card.plot.bottomText; anchors.bottom: parent.bottom; anchors.bottomMargin: 2 }
        Rectangle {
            x: (card.readout?.position ?? 0) * area.width
            width: 1
            height: parent.height
            visible: !!card.readout
            color: Theme.secondary
        }
        Repeater {
            model: card.readout?.heights ?? []

            Rectangle {
                required property real modelData

                x: card.readout.position * area.width - 3
                y: (1 - modelData) * area.height - 3
                width: 7
                height: 7
                radius: 4
                color: Theme.primary
                border.color: Theme.card
            }
        }
        TextLine {
            anchors.centerIn: parent
            text: card.plot.emptyText
            tone: "secondary"
        }
    }
    RowLayout {
        visible: !card.isEmpty

        Figures {
            Layout.fillWidth: true
            text: card.plot.startText
            font: Theme.caption
            tone: "secondary"
        }
        Repeater {
            model: card.plot.lines.length > 1 ? card.plot.lines : []

            Row {
                id: key

                required property var modelData

                spacing: 4

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 8
                    height: 8
                    radius: 4
                    color: Theme.named[key.modelData.color]
                }
                TextLine {
                    text: key.modelData.label
                    font: Theme.caption
                    tone: "secondary"
                }
            }
        }
        Figures {
            Layout.fillWidth: true
            text: card.plot.endText
            font: Theme.caption
            tone: "secondary"
            alignRight: true
        }
    }
}
