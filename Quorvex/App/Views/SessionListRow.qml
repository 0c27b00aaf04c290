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
    // What has the keyboard for all rows.
    property Item keyboardPlace: null

    leftPadding: Theme.large
    rightPadding: Theme.large
    topPadding: Theme.medium
    bottomPadding: Theme.medium
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.name: accessibilityText
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.onPressAction: clicked()

    contentItem: ColumnLayout {
        spacing: Theme.small

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
            Layout.minimumHeight: 7 * Theme.unit
            spacing: Theme.medium

            Repeater {
                // In their places before they are known: what appears later moves nothing.
                model: 3

                ColumnLayout {
                    id: figure

                    required property int index
                    readonly property var entry: row.values[index] ?? null

                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    spacing: 0

                    Figures {
                        Layout.fillWidth: true
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
            anchors.margins: Theme.tiny
            target: row.keyboardPlace ?? row
            visible: row.isSelected && (row.keyboardPlace?.visualFocus ?? false)
        }
    }
}
