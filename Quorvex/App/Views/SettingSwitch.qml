import QtQuick

// A switch over one of the user's settings, with all that a rule says of it.
SwitchRow {
    required property var entry
    required property var defaults

    text: entry.title
    symbol: entry.symbol
    checked: entry.isOn
    onToggled: checked => defaults[entry.key] = checked
}
