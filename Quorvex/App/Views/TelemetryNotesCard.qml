import QtQuick
import QtQuick.Layouts

// What each channel means and how far to trust it.
Card {
    id: card

    required property var notes

    heading: notes.heading
    spacing: Theme.roomy

    Repeater {
        model: card.notes.notes

        ColumnLayout {
            id: note

            required property var modelData

            Layout.fillWidth: true
            spacing: Theme.tiny
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            Flow {
                Layout.fillWidth: true
                spacing: Theme.medium

                TextLine {
                    height: trust.height
                    verticalAlignment: Text.AlignVCenter
                    text: note.modelData.channel
                    font: Theme.bodyStrong
                }
                Badge {
                    id: trust

                    text: note.modelData.trustLevel
                }
            }
            TextLine {
                Layout.fillWidth: true
                text: note.modelData.meaning
                wrapMode: Text.Wrap
            }
            TextLine {
                Layout.fillWidth: true
                text: note.modelData.caution
                font: Theme.caption
                tone: "secondary"
                wrapMode: Text.Wrap
            }
        }
    }
}
