import QtQuick
import QtQuick.Layouts

// The session in plain language.
Card {
    id: card

    required property var story

    spacing: Theme.roomy

    TextLine {
        Layout.fillWidth: true
        text: card.story.headline
        font: Theme.title
        wrapMode: Text.Wrap
    }
    Repeater {
        model: card.story.episodes

        ColumnLayout {
            id: episode

            required property var modelData

            Layout.fillWidth: true
            spacing: Theme.tiny
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            RowLayout {
                spacing: Theme.medium

                TextLine {
                    Layout.fillWidth: true
                    text: episode.modelData.phase
                    font: Theme.bodyStrong
                }
                Figures {
                    text: episode.modelData.timeRange
                    font: Theme.caption
                    tone: "secondary"
                }
            }
            TextLine {
                Layout.fillWidth: true
                text: episode.modelData.narrative
                wrapMode: Text.Wrap
            }
            Repeater {
                model: episode.modelData.highlights

                RowLayout {
                    required property string modelData

                    spacing: Theme.medium

                    Rectangle {
                        Layout.alignment: Qt.AlignTop
                        Layout.topMargin: 6
                        implicitWidth: Theme.small
                        implicitHeight: Theme.small
                        radius: Theme.small / 2
                        color: Theme.secondary
                    }
                    TextLine {
                        Layout.fillWidth: true
                        text: parent.modelData
                        tone: "secondary"
                        wrapMode: Text.Wrap
                    }
                }
            }
        }
    }
}
