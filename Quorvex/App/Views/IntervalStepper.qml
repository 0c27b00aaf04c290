import QtQuick

// Steps through the refresh intervals.
Stepper {
    id: stepper

    required property var interval
    required property var commands

    description: interval.accessibilityLabel
    text: interval.valueText
    canDecrease: interval.canDecrease
    canIncrease: interval.canIncrease
    onDecreased: commands.applyRefreshInterval(interval.decreased)
    onIncreased: commands.applyRefreshInterval(interval.increased)
}
