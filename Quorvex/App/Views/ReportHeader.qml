import QtQuick
import QtQuick.Layouts

// The session's name and time, what it ran on, and what can be done with it.
Card {
    id: card

    required property var header

    signal exportRequested()
    signal deleteRequested()

    GridLayout {
        Layout.fillWidth: true
        columns: width >= 96 * Theme.unit ? 2 : 1
        columnSpacing: Theme.medium
        rowSpacing: Theme.medium

        ColumnLayout {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            spacing: Theme.tiny

            TextLine {
                Layout.fillWidth: true
                text: card.header.title
                font: Theme.headline
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
            }
            TextLine {
                Layout.fillWidth: true
                text: card.header.startText
                tone: "secondary"
            }
            TextLine {
                Layout.fillWidth: true
                text: card.header.detail
                tone: "secondary"
            }
        }
        RowLayout {
            Layout.fillWidth: false
            Layout.alignment: Qt.AlignTop | Qt.AlignLeft
            spacing: Theme.medium

            MenuButton {
                entry: card.header.exportButton
                onClicked: card.exportRequested()
            }
            MenuButton {
                entry: card.header.deleteButton
                onClicked: card.deleteRequested()
            }
        }
    }
    PhaseStrip {
        Layout.fillWidth: true
        strip: card.header.strip
    }
}
