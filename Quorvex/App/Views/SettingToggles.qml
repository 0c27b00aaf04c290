import QtQuick
import QtQuick.Layouts

// A switch for each of a list of settings.
ColumnLayout {
    id: list

    required property var toggles
    required property var defaults

    Layout.fillWidth: true
    spacing: 0

    Repeater {
        model: list.toggles

        SwitchRow {
            required property string key
            required property string title
            required property bool isOn

            Layout.fillWidth: true
            text: title
            checked: isOn
            onToggled: checked => list.defaults[key] = checked
        }
    }
}
