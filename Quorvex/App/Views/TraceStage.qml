import QtQuick
import Quorvex.Items

// The lines of a trace with their scale at the left, and a mark that the pointer or the arrow keys
// move along them.
Item {
    id: area

    required property var plot
    // Gives what the trace says at a place, 0 to 1 from left to right, or some steps after it.
    required property var readoutAt
    readonly property bool isEmpty: plot.lines.length === 0
    // What is told now: what the trace says under the pointer, or else where the keyboard stands.
    readonly property var readout: isEmpty ? null
        : hover.hovered ? readoutAt(stage.positionAt(hover.point.position.x), 0)
        : stage.activeFocus ? mark : null
    property var mark: null

    // Equal for charts that stand one above the other, unless a value needs more.
    readonly property real gutter: Math.max(15 * Theme.unit, top.implicitWidth, bottom.implicitWidth) + Theme.medium

    onPlotChanged: mark = null
    implicitHeight: 24 * Theme.unit

    Figures {
        id: top

        width: area.gutter - Theme.medium
        text: area.plot.topText
        font: Theme.caption
        tone: "secondary"
        alignRight: true
    }
    Figures {
        id: bottom

        anchors.bottom: parent.bottom
        width: area.gutter - Theme.medium
        text: area.plot.bottomText
        font: Theme.caption
        tone: "secondary"
        alignRight: true
    }
    Repeater {
        model: 3

        Rectangle {
            required property int index

            x: area.gutter
            y: Math.round(index * (area.height - 1) / 2)
            width: area.width - area.gutter
            height: 1
            visible: !area.isEmpty
            color: Theme.line
            opacity: index === 2 ? 1 : 0.6
        }
    }
    Item {
        id: stage

        // The lines keep half their width from the edges.
        readonly property real edge: chart.lineWidth

        function positionAt(x) {
            return (x - edge) / (width - 2 * edge)
        }
        function xOf(position) {
            return edge + position * (width - 2 * edge)
        }
        function yOf(level) {
            return edge + (1 - level) * (height - 2 * edge)
        }

        x: area.gutter
        width: area.width - area.gutter
        height: area.height
        activeFocusOnTab: !area.isEmpty
        Accessible.role: Accessible.Graphic
        Accessible.name: area.plot.accessibilityText
        Accessible.description: area.readout?.text ?? ""
        Accessible.focusable: !area.isEmpty
        onActiveFocusChanged: if (activeFocus && !area.mark) area.mark = area.readoutAt(1, 0)
        Keys.onLeftPressed: area.mark = area.readoutAt(area.mark?.position ?? 1, -1)
        Keys.onRightPressed: area.mark = area.readoutAt(area.mark?.position ?? 0, 1)

        ChartItem {
            id: chart

            anchors.fill: parent
            series: area.plot.lines
            colors: Theme.named
            isFilled: area.plot.lines.length === 1
        }
        HoverHandler { id: hover }
        FocusRing { target: stage }
        Rectangle {
            x: Math.round(stage.xOf(area.readout?.position ?? 0))
            width: 1
            height: parent.height
            visible: !!area.readout
            color: Theme.secondary
        }
        Repeater {
            model: area.readout?.heights ?? []

            Rectangle {
                required property real modelData

                x: stage.xOf(area.readout?.position ?? 0) - width / 2
                y: stage.yOf(modelData) - height / 2
                width: 7
                height: 7
                radius: 4
                color: Theme.primary
                border.color: Theme.card
            }
        }
    }
    TextLine {
        anchors.centerIn: parent
        text: area.plot.emptyText
        tone: "secondary"
    }
}
