import QtQuick
import QtQuick.Layouts

// The apps that stood out on the network.
Card {
    id: card

    property var apps

    visible: !!apps
    heading: apps?.heading ?? ""

    Repeater {
        model: card.apps?.rows ?? []

        ColumnLayout {
            id: app

            required property var modelData

            Layout.fillWidth: true
            spacing: 1
            Accessible.role: Accessible.StaticText
            Accessible.name: modelData.accessibilityText

            RowLayout {
                spacing: Theme.medium

                TextLine {
                    Layout.fillWidth: true
                    text: app.modelData.name
                    Accessible.ignored: true
                }
                SymbolIcon { implicitWidth: 11; name: card.apps?.inSymbol ?? "" }
                Figures {
                    text: app.modelData.inText
                    Accessible.ignored: true
                }
                SymbolIcon { implicitWidth: 11; name: card.apps?.outSymbol ?? "" }
                Figures {
                    text: app.modelData.outText
                    Accessible.ignored: true
                }
            }
            TextLine {
                Layout.fillWidth: true
                text: app.modelData.peakText
                font: Theme.caption
                tone: "secondary"
                Accessible.ignored: true
            }
        }
    }
}
