import QtQuick
import QtQuick.Layouts

// The session's name and time, what it ran on, and what can be done with it.
Card {
    id: card

    required property var header

    signal exportRequested()
    signal deleteRequested()

    RowLayout {
        spacing: Theme.medium

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            TextLine {
                Layout.fillWidth: true
                text: card.header.title
                font: Theme.headline
                wrapMode: Text.Wrap
                maximumLineCount: 2
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
        MenuButton {
            Layout.alignment: Qt.AlignTop
            entry: card.header.exportButton
            onClicked: card.exportRequested()
        }
        MenuButton {
            Layout.alignment: Qt.AlignTop
            entry: card.header.deleteButton
            onClicked: card.deleteRequested()
        }
    }
    PhaseStrip {
        Layout.fillWidth: true
        strip: card.header.strip
    }
}
