import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// The searchable list of sessions.
Rectangle {
    id: pane

    required property var model
    property bool hasEdge: true
    readonly property var content: model.content

    color: Theme.card

    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: 3 * Theme.unit
        spacing: Theme.medium

        RowLayout {
            Layout.leftMargin: 3 * Theme.unit
            Layout.rightMargin: 3 * Theme.unit
            spacing: Theme.medium

            TextEntry {
                Layout.fillWidth: true
                symbol: "magnifyingglass"
                placeholderText: pane.content.searchPrompt
                text: pane.model.searchText
                onTextEdited: pane.model.searchText = text
            }
            MenuButton {
                entry: pane.content.refreshButton
                onClicked: pane.model.refreshSessions()
            }
        }
        TextLine {
            Layout.leftMargin: 3 * Theme.unit
            text: pane.content.countText
            font: Theme.caption
            tone: "secondary"
        }
        ListView {
            id: list

            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: count > 0
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            model: pane.model.list("sessions")
            Accessible.role: Accessible.List
            Accessible.name: pane.content.countText

            T.ScrollBar.vertical: ScrollBar {}

            delegate: SessionListRow {
                width: ListView.view.width
                onClicked: pane.model.select(id)
            }
        }
        EmptyState {
            Layout.fillWidth: true
            Layout.fillHeight: !list.visible
            Layout.margins: Theme.large
            visible: !!pane.content.emptyList
            symbol: pane.content.emptyList?.symbol ?? ""
            title: pane.content.emptyList?.title ?? ""
            detail: pane.content.emptyList?.message ?? ""
        }
        Item {
            Layout.fillHeight: true
            visible: !list.visible
        }
    }
    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        visible: pane.hasEdge
        color: Theme.line
    }
}
