import QtQuick
import QtQuick.Layouts

// Processes with their figures.
ColumnLayout {
    id: list

    property var rows

    Layout.fillWidth: true
    visible: (rows?.count ?? 0) > 0
    spacing: 6

    Repeater {
        model: list.rows

        RowLayout {
            id: row

            required property string name
            required property var figures
            required property string accessibilityText

            spacing: Theme.large
            Accessible.role: Accessible.StaticText
            Accessible.name: accessibilityText

            TextLine {
                Layout.fillWidth: true
                text: row.name
                Accessible.ignored: true
            }
            Figures {
                text: row.figures.join("   ")
                tone: "secondary"
                Accessible.ignored: true
            }
        }
    }
}
