import QtQuick

// Steps through the refresh intervals.
Stepper {
    id: stepper

    required property var interval
    required property var commands

    description: interval.accessibilityLabel
    text: interval.valueText
    value: interval.value
    minimumValue: interval.lowest
    maximumValue: interval.highest
    stepSize: interval.step
    canDecrease: interval.canDecrease
    canIncrease: interval.canIncrease
    decreaseSymbol: interval.decreaseSymbol
    decreaseLabel: interval.decreaseLabel
    increaseSymbol: interval.increaseSymbol
    increaseLabel: interval.increaseLabel
    onDecreased: commands.applyRefreshInterval(interval.decreased)
    onIncreased: commands.applyRefreshInterval(interval.increased)
    // A value from outside is applied, and then shown as it was applied.
    onValueChanged: {
        if (value !== interval.value) {
            commands.applyRefreshInterval(value)
            value = Qt.binding(() => stepper.interval.value)
        }
    }
}
