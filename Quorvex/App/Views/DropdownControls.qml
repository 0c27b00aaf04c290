import QtQuick
import QtQuick.Layouts

// How often the machine is read, and how gently.
ColumnLayout {
    id: panel

    required property var controls
    required property var commands
    required property var defaults
    readonly property var interval: controls.refreshInterval
    readonly property var lowImpact: controls.lowImpactMode

    spacing: 4

    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.medium

        PushButton {
            text: panel.controls.refresh.title
            symbol: panel.controls.refresh.symbol
            help: panel.controls.refresh.help
            description: panel.controls.refresh.accessibilityLabel
            onClicked: panel.commands.refresh()
        }
        Item { Layout.fillWidth: true }
        IntervalStepper {
            interval: panel.interval
            commands: panel.commands
        }
    }
    SwitchRow {
        Layout.fillWidth: true
        text: panel.lowImpact.title
        symbol: panel.lowImpact.symbol
        checked: panel.lowImpact.isOn
        onToggled: panel.defaults.lowImpactMode = checked
    }
    Badge {
        visible: !!panel.controls.lowPowerMode
        text: panel.controls.lowPowerMode?.text ?? ""
        symbol: panel.controls.lowPowerMode?.symbol ?? ""
        tone: panel.controls.lowPowerMode?.color ?? "secondary"
        help: panel.controls.lowPowerMode?.help ?? ""
    }
    WarningLine {
        Layout.fillWidth: true
        warning: panel.controls.warning
    }
}
