import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// One choice of a few. `options` are maps of `title`, and `symbol`, `help` and
// `accessibilityLabel` where they have them.
FocusScope {
    id: control

    property var options: []
    property int current: 0
    property string description: ""

    signal chosen(int index)

    function choose(index) {
        if (index >= 0 && index < options.length) {
            segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason)
            chosen(index)
        }
    }

    implicitWidth: row.implicitWidth + Theme.small
    implicitHeight: Theme.controlHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: description

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius
        color: Theme.control
    }
    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: Theme.tiny
        spacing: 0

        Repeater {
            id: segments

            // By number: new words and another choice leave the segments, and the keyboard, in place.
            model: control.options.length

            T.RadioButton {
                id: segment

                required property int index
                readonly property string help: entry.help ?? ""
                property var tip: null
                property Item ring: null
                readonly property var entry: control.options[index] ?? ({ title: "" })
                readonly property bool isCurrent: index === control.current

                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                Layout.minimumWidth: implicitWidth
                implicitWidth: content.implicitWidth + 6 * Theme.unit
                // One place for the keyboard, in which the arrow keys choose.
                focusPolicy: isCurrent ? Qt.StrongFocus : Qt.ClickFocus
                hoverEnabled: true
                onHoveredChanged: if (hovered && help !== "" && !tip) tip = OnDemand.explain(segment, segment)
                onVisualFocusChanged: if (visualFocus && !ring) ring = OnDemand.mark(segment, background)
                Accessible.name: entry.accessibilityLabel ?? entry.title
                Accessible.description: help
                Accessible.onPressAction: control.chosen(index)
                Accessible.onToggleAction: control.chosen(index)
                autoExclusive: false
                checked: isCurrent
                onToggled: checked = Qt.binding(() => isCurrent)
                onClicked: control.chosen(index)
                Keys.onLeftPressed: control.choose(index - 1)
                Keys.onRightPressed: control.choose(index + 1)

                contentItem: Item {
                    Row {
                        id: content

                        anchors.centerIn: parent
                        spacing: Theme.gap

                        SymbolIcon {
                            anchors.verticalCenter: parent.verticalCenter
                            visible: (segment.entry.symbol ?? "") !== ""
                            name: segment.entry.symbol ?? ""
                            implicitWidth: 14
                            tone: segment.isCurrent ? "primary" : "secondary"
                        }
                        Text {
                            anchors.verticalCenter: parent.verticalCenter
                            visible: text !== ""
                            text: segment.entry.title
                            font: segment.isCurrent ? Theme.bodyStrong : Theme.body
                            color: segment.isCurrent ? Theme.primary : Theme.secondary
                            textFormat: Text.PlainText
                            Accessible.ignored: true
                        }
                    }
                }
                background: Rectangle {
                    radius: Theme.gap
                    color: segment.isCurrent ? Theme.card : "transparent"
                    border.width: segment.isCurrent ? 1 : 0
                    border.color: Theme.line
                }
            }
        }
    }
}
