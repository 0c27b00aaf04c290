import QtQuick
import QtQuick.Layouts

// Fans between their limits.
ColumnLayout {
    id: list

    property var rows

    Layout.fillWidth: true
    visible: (rows?.count ?? 0) > 0
    spacing: Theme.roomy

    Repeater {
        model: list.rows

        ColumnLayout {
            id: fan

            required property string name
            required property string currentText
            required property string minText
            required property string maxText
            required property real fraction
            required property string accessibilityText

            Layout.fillWidth: true
            spacing: Theme.small

            PowerBar {
                Layout.fillWidth: true
                label: fan.name
                value: fan.currentText
                fraction: fan.fraction
                tone: "blue"
                description: fan.accessibilityText
            }
            RowLayout {
                TextLine {
                    Layout.fillWidth: true
                    text: fan.minText
                    font: Theme.caption
                    tone: "secondary"
                }
                TextLine {
                    text: fan.maxText
                    font: Theme.caption
                    tone: "secondary"
                }
            }
        }
    }
}
