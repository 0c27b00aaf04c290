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

    implicitWidth: row.implicitWidth + 4
    implicitHeight: Theme.controlHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: description

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: Theme.control
    }
    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: 2
        spacing: 0

        Repeater {
            model: control.options

            T.RadioButton {
                id: segment

                required property int index
                required property var modelData
                readonly property bool isCurrent: index === control.current

                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                Layout.minimumWidth: implicitWidth
                implicitWidth: content.implicitWidth + 6 * Theme.unit
                focusPolicy: Qt.StrongFocus
                Accessible.name: modelData.accessibilityLabel ?? modelData.title
                Accessible.description: modelData.help ?? ""
                Accessible.onPressAction: control.chosen(index)
                Accessible.onToggleAction: control.chosen(index)
                autoExclusive: false
                checked: isCurrent
                onToggled: checked = Qt.binding(() => isCurrent)
                onClicked: control.chosen(index)
                Keys.onLeftPressed: control.chosen(Math.max(0, control.current - 1))
                Keys.onRightPressed: control.chosen(Math.min(control.options.length - 1, control.current + 1))

                contentItem: Item {
                    Row {
                        id: content

                        anchors.centerIn: parent
                        spacing: 5

                        SymbolIcon {
                            anchors.verticalCenter: parent.verticalCenter
                            visible: (segment.modelData.symbol ?? "") !== ""
                            name: segment.modelData.symbol ?? ""
                            implicitWidth: 13
                            tone: segment.isCurrent ? "primary" : "secondary"
                        }
                        Text {
                            anchors.verticalCenter: parent.verticalCenter
                            visible: text !== ""
                            text: segment.modelData.title
                            font: segment.isCurrent ? Theme.bodyStrong : Theme.body
                            color: segment.isCurrent ? Theme.primary : Theme.secondary
                            textFormat: Text.PlainText
                            Accessible.ignored: true
                        }
                    }
                }
                background: Rectangle {
                    radius: 5
                    color: segment.isCurrent ? Theme.card : "transparent"
                    border.width: segment.isCurrent ? 1 : 0
                    border.color: Theme.line

                    FocusRing { target: segment }
                }

                HelpTip { text: segment.modelData.help ?? "" }
            }
        }
    }
}
