import QtQuick

// The report of the selected session, a calm sign that it is being read, why it cannot be, or the
// invitation to choose one.
Item {
    id: pane

    required property var model
    readonly property var failure: model.report.failure.title ? model.report.failure : null
    readonly property var empty: model.content.emptyDetail ?? failure

    EmptyState {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Theme.large, 70 * Theme.unit)
        visible: !!pane.empty
        symbol: pane.empty?.symbol ?? ""
        title: pane.empty?.title ?? ""
        detail: pane.empty?.message ?? ""
    }
    BusyDots {
        anchors.centerIn: parent
        running: pane.model.report.isLoading && !pane.model.report.hasReport && !pane.empty
    }
    Loader {
        anchors.fill: parent
        active: pane.model.report.hasReport && !pane.empty
        sourceComponent: SessionReportView {
            report: pane.model.report
            onExportRequested: pane.model.exportSelected()
            onDeleteRequested: pane.model.deleteSelected()
        }
    }
}
