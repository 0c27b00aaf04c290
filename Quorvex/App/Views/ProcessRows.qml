import QtQuick
import QtQuick.Layouts

// Processes with their figures.
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
            required property var figures
            required property string accessibilityText

            spacing: Theme.medium
            Accessible.role: Accessible.Grouping
            Accessible.name: accessibilityText

            TextLine {
                Layout.fillWidth: true
                text: row.name
                wrapMode: Text.Wrap
            }
            Repeater {
                model: row.figures.length

                Figures {
                    required property int index

                    Layout.preferredWidth: Math.max(16 * Theme.unit, implicitWidth)
                    text: row.figures[index] ?? ""
                    tone: "secondary"
                    alignRight: true
                }
            }
        }
    }
}
