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
        implicitHeight: 8
        Accessible.role: Accessible.Graphic
        Accessible.name: phases.strip?.accessibilityText ?? ""

        Row {
            anchors.fill: parent
            spacing: 2

            Repeater {
                model: phases.bars

                Rectangle {
                    required property var modelData

                    width: Math.max(2, modelData.fraction * (track.width - 2 * (phases.bars.length - 1)))
                    height: track.height
                    radius: 3
                    color: Theme.named[modelData.color]
                }
            }
        }
    }
    Flow {
        Layout.fillWidth: true
        visible: phases.strip?.showsLegend ?? false
        spacing: 3 * Theme.unit

        Repeater {
            model: phases.bars

            Row {
                id: entry

                required property var modelData

                spacing: 5
                Accessible.role: Accessible.StaticText
                Accessible.name: modelData.accessibilityText

                Rectangle {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 8
                    height: 8
                    radius: 4
                    color: Theme.named[entry.modelData.color]
                }
                TextLine {
                    text: entry.modelData.label
                    font: Theme.caption
                    Accessible.ignored: true
                }
                Figures {
                    text: entry.modelData.durationText
                    font: Theme.caption
                    tone: "secondary"
                    Accessible.ignored: true
                }
            }
        }
    }
}
