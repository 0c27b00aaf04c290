import QtQuick
import QtQuick.Layouts

// The course of one figure over the session: its name and value above, its time below.
Card {
    id: card

    required property var plot
    // Gives what the trace says at a place, 0 to 1 from left to right, or some steps after it.
    required property var readoutAt
    readonly property bool isEmpty: plot.lines.length === 0
    readonly property var readout: stage.readout

    padding: Theme.roomy
    spacing: Theme.small
    description: plot.title

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
    TraceStage {
        id: stage

        Layout.fillWidth: true
        plot: card.plot
        readoutAt: card.readoutAt
    }
    RowLayout {
        Layout.leftMargin: stage.gutter
        visible: !card.isEmpty
        spacing: Theme.medium

        Figures {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            text: card.plot.startText
            font: Theme.caption
            tone: "secondary"
        }
        Repeater {
            model: card.plot.lines.length > 1 ? card.plot.lines : []

            Row {
                id: key

                required property var modelData

                spacing: Theme.small

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Theme.medium
                    height: Theme.medium
                    radius: Theme.small
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
            Layout.preferredWidth: 1
            text: card.plot.endText
            font: Theme.caption
            tone: "secondary"
            alignRight: true
        }
    }
}
