import QtQuick
import QtQuick.Layouts

// The phases one by one.
Card {
    id: card

    property var table

    visible: !!table
    heading: table?.heading ?? ""
    spacing: 3 * Theme.unit

    Repeater {
        model: card.table?.rows ?? []

        GridLayout {
            id: row

            required property var modelData

            Layout.fillWidth: true
            columns: width >= 110 * Theme.unit ? 2 : 1
            rowSpacing: 4
            columnSpacing: Theme.large
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            RowLayout {
                Layout.fillWidth: true
                spacing: Theme.medium

                Rectangle {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: 4
                    implicitWidth: 9
                    implicitHeight: 9
                    radius: 5
                    color: Theme.named[row.modelData.dotColor]
                }
                ColumnLayout {
                    spacing: 1

                    TextLine {
                        Layout.fillWidth: true
                        text: row.modelData.label
                    }
                    RowLayout {
                        spacing: Theme.medium

                        Figures {
                            text: row.modelData.timeRange
                            font: Theme.caption
                            tone: "secondary"
                        }
                        Figures {
                            text: row.modelData.duration
                            font: Theme.caption
                            tone: "secondary"
                        }
                    }
                }
            }
            RowLayout {
                Layout.fillWidth: row.columns === 1
                Layout.preferredWidth: 66 * Theme.unit
                Layout.leftMargin: row.columns === 1 ? 17 : 0
                spacing: Theme.medium

                Repeater {
                    model: row.modelData.values

                    SmallFigure {
                        required property var modelData

                        entry: modelData
                    }
                }
            }
        }
    }
}
