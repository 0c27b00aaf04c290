import QtQuick
import QtQuick.Layouts

// For how long a session ran on which power source, with a legend where it is wanted.
ColumnLayout {
    id: phases

    property var strip
    readonly property var bars: strip?.bars ?? []

    spacing: Theme.medium
    visible: bars.length > 0

    Item {
        id: track

        Layout.fillWidth: true
        implicitHeight: Theme.medium
        clip: true
        Accessible.role: Accessible.Graphic
        Accessible.name: phases.strip?.accessibilityText ?? ""

        Row {
            anchors.fill: parent
            spacing: Theme.tiny

            Repeater {
                model: phases.bars.length

                Rectangle {
                    required property int index
                    readonly property var bar: phases.bars[index]

                    width: Math.max(2, (bar?.fraction ?? 0) * (track.width - parent.spacing * (phases.bars.length - 1)))
                    height: track.height
                    radius: 3
                    color: Theme.named[bar?.color ?? "secondary"]
                }
            }
        }
    }
    Flow {
        Layout.fillWidth: true
        visible: phases.strip?.showsLegend ?? false
        spacing: Theme.roomy

        Repeater {
            model: phases.bars.length

            Row {
                id: entry

                required property int index
                readonly property var bar: phases.bars[index]

                spacing: Theme.small
                Accessible.role: Accessible.Grouping
                Accessible.name: bar?.accessibilityText ?? ""

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: Theme.medium
                    height: Theme.medium
                    radius: Theme.small
                    color: Theme.named[entry.bar?.color ?? "secondary"]
                }
                TextLine {
                    text: entry.bar?.label ?? ""
                    font: Theme.caption
                }
                Figures {
                    text: entry.bar?.durationText ?? ""
                    font: Theme.caption
                    tone: "secondary"
                }
            }
        }
    }
}
