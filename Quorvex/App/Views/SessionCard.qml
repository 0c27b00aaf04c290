import QtQuick
import QtQuick.Layouts

// The session that is being recorded.
Rectangle {
    id: panel

    property var card
    // For the moment between a session's end and this panel's.
    readonly property var shown: card ?? ({ title: "", status: "", statusColor: "primary", metrics: [], accessibilityText: "" })

    implicitHeight: column.implicitHeight + 2 * Theme.roomy
    radius: 6
    color: Theme.window
    Accessible.role: Accessible.Grouping
    Accessible.name: shown.accessibilityText

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: Theme.roomy
        spacing: Theme.medium

        RowLayout {
            spacing: Theme.medium

            TextLine {
                Layout.fillWidth: true
                text: panel.shown.title
                font: Theme.bodyStrong
            }
            Badge {
                text: panel.shown.status
                tone: panel.shown.statusColor
            }
        }
        GridLayout {
            Layout.fillWidth: true
            columns: 3
            rowSpacing: Theme.medium
            columnSpacing: Theme.medium

            Repeater {
                model: panel.shown.metrics.length

                SmallFigure {
                    required property int index

                    entry: panel.shown.metrics[index] ?? null
                }
            }
        }
        PhaseStrip {
            Layout.fillWidth: true
            visible: !!panel.shown.strip
            strip: panel.shown.strip
        }
    }
}
