import QtQuick
import QtQuick.Layouts

// What speaks against taking the figures at their face.
Card {
    id: card

    property var flags
    readonly property var overhead: flags?.overhead ?? null

    visible: !!flags
    heading: flags?.heading ?? ""

    RowLayout {
        visible: !!card.overhead
        spacing: Theme.large

        TextLine {
            Layout.fillWidth: true
            text: card.overhead?.text.text ?? ""
            tone: card.overhead?.text.color ?? "orange"
        }
        Figures {
            text: card.overhead?.fractionText ?? ""
            tone: card.overhead?.text.color ?? "orange"
        }
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.overhead?.note ?? ""
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
    Repeater {
        model: card.flags?.checks ?? []

        ColumnLayout {
            id: check

            required property var modelData

            Layout.fillWidth: true
            spacing: 0
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            RowLayout {
                spacing: Theme.large

                TextLine {
                    Layout.fillWidth: true
                    text: check.modelData.code
                    font: Theme.bodyStrong
                    wrapMode: Text.Wrap
                    tone: check.modelData.color
                }
                Figures {
                    Layout.alignment: Qt.AlignTop
                    text: check.modelData.samplesText
                    font: Theme.caption
                    tone: "secondary"
                }
            }
            TextLine {
                Layout.fillWidth: true
                text: check.modelData.message
                wrapMode: Text.Wrap
            }
        }
    }
}
