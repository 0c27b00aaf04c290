import QtQuick
import QtQuick.Layouts

// How often the machine is read, and how gently.
ColumnLayout {
    id: panel

    required property var model
    readonly property var controls: model.content.controls
    readonly property var commands: model.commands
    readonly property var defaults: model.defaults
    readonly property var interval: controls.refreshInterval
    readonly property var lowImpact: controls.lowImpactMode

    spacing: Theme.small

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
        onToggled: checked => panel.defaults.lowImpactMode = checked
    }
    OptionalBadge { entry: panel.controls.lowPowerMode }
    Loader {
        Layout.fillWidth: true
        active: !!panel.controls.warning
        visible: active
        sourceComponent: WarningLine { warning: panel.controls.warning }
    }
}
