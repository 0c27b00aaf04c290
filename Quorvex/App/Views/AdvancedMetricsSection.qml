import QtQuick
import QtQuick.Layouts

// Where the total comes from, and which processes contribute.
ColumnLayout {
    id: section

    required property var live
    required property var metrics
    readonly property var pro: metrics?.proTelemetry ?? null

    spacing: Theme.medium

    Heading { text: section.metrics?.heading ?? "" }
    ValueRows { rows: section.live.list("advancedRows") }

    Heading { text: section.metrics?.activityHeading ?? "" }
    TextLine {
        Layout.fillWidth: true
        text: section.metrics?.activityCaption ?? ""
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
    ProcessRows { rows: section.live.list("activities") }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: section.metrics?.activityEmptyText ?? ""
        tone: "secondary"
    }

    Heading { text: section.pro?.heading ?? "" }
    ValueRows { rows: section.live.list("proRows") }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: section.pro?.error?.text ?? ""
        tone: section.pro?.error?.color ?? "orange"
        wrapMode: Text.Wrap
    }
    ProcessRows { rows: section.live.list("proProcesses") }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: section.pro?.emptyText ?? ""
        tone: "secondary"
    }
}
