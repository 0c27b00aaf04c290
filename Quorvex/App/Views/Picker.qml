import QtQuick
import QtQuick.Layouts

// A choice among a few words, with its name before it.
RowLayout {
    id: row

    required property var picker

    signal chosen(int index)

    spacing: Theme.medium

    TextLine {
        text: row.picker.label
        font: Theme.caption
        tone: "secondary"
    }
    SegmentedControl {
        description: row.picker.accessibilityLabel
        options: row.picker.options.map(title => ({ title: title }))
        current: row.picker.selected
        onChosen: index => row.chosen(index)
    }
}
