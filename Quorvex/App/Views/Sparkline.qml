import QtQuick
import QtQuick.Layouts
import Quorvex.Items

// A small graph without axes: a caption above, the lines below, or a text while there are none.
ColumnLayout {
    id: graph

    property var series: []
    property string label: ""
    property string caption: ""
    property string emptyText: ""
    // Names the graph to screen readers.
    property string description: label
    property real graphHeight: 48

    spacing: Theme.small

    RowLayout {
        Layout.fillWidth: true
        visible: graph.label !== "" || graph.caption !== ""

        TextLine {
            Layout.fillWidth: true
            text: graph.label
            font: Theme.caption
            tone: "secondary"
        }
        Figures {
            text: graph.caption
            font: Theme.caption
            tone: "secondary"
        }
    }
    Item {
        Layout.fillWidth: true
        Layout.preferredHeight: graph.graphHeight

        ChartItem {
            anchors.fill: parent
            visible: graph.series.length > 0
            series: graph.series
            colors: Theme.named
            Accessible.role: Accessible.Graphic
            Accessible.name: graph.description
        }
        TextLine {
            anchors.centerIn: parent
            visible: graph.series.length === 0
            text: graph.emptyText
            tone: "secondary"
        }
    }
}
