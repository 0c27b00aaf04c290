import QtQuick
import QtQuick.Layouts

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
            segments.itemAt(index).forceActiveFocus()
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

            Pressable {
                id: segment

                required property int index
                readonly property var entry: control.options[index] ?? ({ title: "" })
                readonly property bool isCurrent: index === control.current

                function step(count) {
                    focusedByPointer = false
                    control.choose(index + count)
                }

                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                Layout.minimumWidth: implicitWidth
                implicitWidth: content.implicitWidth + 6 * Theme.unit
                text: entry.title
                help: entry.help ?? ""
                frame: ground
                // One place for the keyboard, in which the arrow keys choose.
                activeFocusOnTab: isCurrent
                onClicked: control.chosen(index)
                Keys.onLeftPressed: step(-1)
                Keys.onRightPressed: step(1)
                Accessible.role: Accessible.RadioButton
                Accessible.name: entry.accessibilityLabel ?? text
                Accessible.checkable: true
                Accessible.checked: isCurrent
                Accessible.onToggleAction: press()

                Rectangle {
                    id: ground

                    anchors.fill: parent
                    radius: Theme.gap
                    color: segment.isCurrent ? Theme.card : "transparent"
                    border.width: segment.isCurrent ? 1 : 0
                    border.color: Theme.line
                }
                Row {
                    id: content

                    anchors.centerIn: parent
                    spacing: Theme.gap

                    SymbolIcon {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: name !== ""
                        name: segment.entry.symbol ?? ""
                        implicitWidth: 14
                        tone: segment.isCurrent ? "primary" : "secondary"
                    }
                    Text {
                        anchors.verticalCenter: parent.verticalCenter
                        visible: text !== ""
                        text: segment.text
                        font: segment.isCurrent ? Theme.bodyStrong : Theme.body
                        color: segment.isCurrent ? Theme.primary : Theme.secondary
                        textFormat: Text.PlainText
                        Accessible.ignored: true
                    }
                }
            }
        }
    }
}
