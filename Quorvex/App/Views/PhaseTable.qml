import QtQuick
import QtQuick.Layouts

// The phases one by one, their figures in columns that are the same in every row.
Card {
    id: card

    property var table

    visible: !!table
    heading: table?.heading ?? ""
    spacing: Theme.roomy

    Repeater {
        model: card.table?.rows ?? []

        GridLayout {
            id: row

            required property var modelData
            readonly property bool isWide: width >= 110 * Theme.unit

            Layout.fillWidth: true
            columns: isWide ? 2 : 1
            rowSpacing: Theme.small
            columnSpacing: Theme.large
            Accessible.role: Accessible.Grouping
            Accessible.name: modelData.accessibilityText

            RowLayout {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                spacing: Theme.medium

                Rectangle {
                    Layout.alignment: Qt.AlignTop
                    Layout.topMargin: Theme.small
                    implicitWidth: Theme.medium
                    implicitHeight: Theme.medium
                    radius: Theme.small
                    color: Theme.named[row.modelData.dotColor]
                }
                ColumnLayout {
                    spacing: 0

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
                            Layout.fillWidth: true
                            text: row.modelData.duration
                            font: Theme.caption
                            tone: "secondary"
                        }
                    }
                }
            }
            RowLayout {
                Layout.fillWidth: !row.isWide
                Layout.preferredWidth: 60 * Theme.unit
                Layout.leftMargin: row.isWide ? 0 : 4 * Theme.unit
                spacing: Theme.medium

                Repeater {
                    model: row.modelData.values

                    SmallFigure {
                        required property var modelData

                        entry: modelData
                        alignRight: row.isWide
                    }
                }
            }
        }
    }
}
