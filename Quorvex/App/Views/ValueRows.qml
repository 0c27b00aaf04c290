import QtQuick
import QtQuick.Layouts

// Labels with their values, one below the other.
ColumnLayout {
    id: list

    property var rows

    Layout.fillWidth: true
    visible: (rows?.count ?? 0) > 0
    spacing: Theme.gap

    Repeater {
        model: list.rows

        ValueRow {
            required label
            required value
            required property string color

            Layout.fillWidth: true
            tone: color
        }
    }
}
