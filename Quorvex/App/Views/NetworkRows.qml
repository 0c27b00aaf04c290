import QtQuick
import QtQuick.Layouts

// Processes or interfaces with both rates.
ColumnLayout {
    id: list

    property var rows

    Layout.fillWidth: true
    visible: (rows?.count ?? 0) > 0
    spacing: Theme.gap

    Repeater {
        model: list.rows

        RowLayout {
            id: row

            required property string name
            required property string inText
            required property string outText
            required property string accessibilityText

            spacing: Theme.large
            Accessible.role: Accessible.Grouping
            Accessible.name: accessibilityText

            TextLine {
                Layout.fillWidth: true
                text: row.name
                tone: "secondary"
            }
            Repeater {
                model: ["arrow.down", "arrow.up"]

                RowLayout {
                    required property string modelData
                    required property int index

                    Layout.fillWidth: false
                    Layout.preferredWidth: 22 * Theme.unit
                    spacing: Theme.small

                    SymbolIcon {
                        implicitWidth: 12
                        name: parent.modelData
                    }
                    Figures {
                        Layout.fillWidth: true
                        text: parent.index === 0 ? row.inText : row.outText
                        alignRight: true
                    }
                }
            }
        }
    }
}
