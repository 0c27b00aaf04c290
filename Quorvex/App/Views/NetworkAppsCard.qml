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
            spacing: 0
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            RowLayout {
                spacing: Theme.medium

                TextLine {
                    Layout.fillWidth: true
                    text: app.modelData.name
                }
                Repeater {
                    model: [
                        { symbol: card.apps?.inSymbol ?? "", text: app.modelData.inText },
                        { symbol: card.apps?.outSymbol ?? "", text: app.modelData.outText }
                    ]

                    RowLayout {
                        id: side

                        required property var modelData

                        Layout.fillWidth: false
                        Layout.preferredWidth: 22 * Theme.unit
                        spacing: Theme.small

                        SymbolIcon {
                            implicitWidth: Theme.roomy
                            name: side.modelData.symbol
                        }
                        Figures {
                            Layout.fillWidth: true
                            text: side.modelData.text
                            alignRight: true
                        }
                    }
                }
            }
            TextLine {
                Layout.fillWidth: true
                text: app.modelData.peakText
                font: Theme.caption
                tone: "secondary"
            }
        }
    }
}
