import QtQuick
import QtQuick.Layouts

// The list of recorded sessions beside the report of the selected one; in a narrow window the list
// stands above it.
Item {
    id: view

    required property var model
    readonly property var content: model.content
    readonly property bool isWide: width >= 170 * Theme.unit
    readonly property real listHeight: Math.max(height * 0.4, 42 * Theme.unit)

    GridLayout {
        anchors.fill: parent
        columns: view.isWide ? 2 : 1
        columnSpacing: 0
        rowSpacing: 0

        SessionList {
            Layout.fillHeight: true
            Layout.fillWidth: !view.isWide
            Layout.preferredWidth: 72 * Theme.unit
            Layout.minimumWidth: view.isWide ? 72 * Theme.unit : 0
            Layout.preferredHeight: view.isWide ? view.height : view.listHeight
            Layout.maximumHeight: view.isWide ? Infinity : view.listHeight
            hasEdge: view.isWide
            model: view.model
        }
        Rectangle {
            Layout.fillWidth: true
            visible: !view.isWide
            implicitHeight: 1
            color: Theme.line
        }
        SessionDetail {
            Layout.fillWidth: true
            Layout.fillHeight: true
            model: view.model
        }
    }
}
