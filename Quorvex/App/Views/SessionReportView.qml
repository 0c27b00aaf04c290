import QtQuick
import QtQuick.Layouts

// One session's report as a stack of cards.
ScrollPage {
    id: page

    required property var report
    readonly property var content: report.content
    readonly property string sessionID: report.sessionID

    signal exportRequested()
    signal deleteRequested()

    spacing: Theme.roomy
    description: content.header?.title ?? ""
    // Another session is read from its beginning.
    onSessionIDChanged: contentY = 0

    ReportHeader {
        Layout.fillWidth: true
        header: page.content.header
        onExportRequested: page.exportRequested()
        onDeleteRequested: page.deleteRequested()
    }
    StoryCard {
        Layout.fillWidth: true
        story: page.content.story
    }
    ThermalSummaryCard {
        Layout.fillWidth: true
        thermal: page.content.thermal
    }
    SamplingConfidenceCard {
        Layout.fillWidth: true
        sampling: page.content.sampling
    }
    AnalysisFlagsCard {
        Layout.fillWidth: true
        flags: page.content.flags
    }
    Card {
        Layout.fillWidth: true
        visible: strip.bars.length > 0

        PhaseStrip {
            id: strip

            Layout.fillWidth: true
            strip: page.content.strip
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columns: width >= 100 * Theme.unit ? 3 : 2
        columnSpacing: Theme.roomy
        rowSpacing: Theme.roomy

        Repeater {
            model: page.content.tiles

            MetricTile {
                required property var modelData
                required property int index

                // The odd one out fills the last row.
                Layout.columnSpan: index % 2 === 0 && index === page.content.tiles.length - 1 && parent.columns === 2 ? 2 : 1
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 1
                label: modelData.label
                value: modelData.value
                detail: modelData.detail
                description: modelData.accessibilityText
            }
        }
    }
    GridLayout {
        Layout.fillWidth: true
        columns: width >= 120 * Theme.unit ? 2 : 1
        columnSpacing: Theme.roomy
        rowSpacing: Theme.roomy

        Repeater {
            model: page.content.traces

            TraceChart {
                required property var modelData
                required property int index

                Layout.fillWidth: true
                Layout.preferredWidth: 1
                plot: modelData
                readoutAt: (position, steps) => page.report.readout(index, position, steps)
            }
        }
    }
    PhaseTable {
        Layout.fillWidth: true
        table: page.content.phases
    }
    NetworkAppsCard {
        Layout.fillWidth: true
        apps: page.content.networkApps
    }
    LabelledCard {
        Layout.fillWidth: true
        visible: !!page.content.families
        heading: page.content.families?.heading ?? ""
        rows: page.content.families?.rows ?? []
        caption: page.content.families?.caption ?? ""
    }
    LabelledCard {
        Layout.fillWidth: true
        heading: page.content.contributors.heading
        rows: page.content.contributors.rows
        caption: page.content.contributors.aggregateLine ?? page.content.contributors.emptyText
    }
    TelemetryNotesCard {
        Layout.fillWidth: true
        notes: page.content.notes
    }
}
