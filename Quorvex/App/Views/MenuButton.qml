import QtQuick

// A button with all that a rule says of it.
PushButton {
    required property var entry

    text: entry.title
    symbol: entry.symbol
    help: entry.help
    description: entry.accessibilityLabel
}
