import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// One session: its title and state, and three figures as soon as they are known.
T.ItemDelegate {
    id: row

    required property string id
    required property string title
    required property var status
    required property var values
    required property bool isSelected
    required property string accessibilityText

    leftPadding: 3 * Theme.unit
    rightPadding: 3 * Theme.unit
    topPadding: Theme.medium
    bottomPadding: Theme.medium
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: accessibilityText
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()

    contentItem: ColumnLayout {
        spacing: 4

        RowLayout {
            spacing: Theme.medium

            TextLine {
                Layout.fillWidth: true
                text: row.title
                font: Theme.bodyStrong
            }
            TextLine {
                text: row.status.text
                font: Theme.caption
                tone: row.status.color
            }
        }
        RowLayout {
            Layout.preferredHeight: 30
            spacing: Theme.medium

            Repeater {
                model: row.values.length

                ColumnLayout {
                    id: figure

                    required property int index
                    readonly property var entry: row.values[index]

                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    spacing: 0

                    Figures {
                        text: figure.entry?.value ?? ""
                        font: Theme.caption
                    }
                    TextLine {
                        Layout.fillWidth: true
                        text: figure.entry?.label ?? ""
                        font: Theme.caption
                        tone: "secondary"
                    }
                }
            }
        }
    }
    background: Rectangle {
        color: row.isSelected ? Theme.tinted(Theme.accent, 0.14)
            : row.hovered ? Theme.tinted(Theme.primary, 0.05) : "transparent"

        Rectangle {
            width: 3
            height: parent.height
            visible: row.isSelected
            color: Theme.accent
        }
        FocusRing {
            anchors.margins: 2
            target: row
        }
    }
}
