import QtQuick

// A switch over one of the user's settings, with all that a rule says of it.
SwitchRow {
    required property var toggle
    required property var defaults

    text: toggle.title
    symbol: toggle.symbol
    checked: toggle.isOn
    onToggled: defaults[toggle.key] = checked
}
