import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

// The searchable list of sessions. It is one place for the keyboard, in which the arrow keys choose.
Rectangle {
    id: pane

    required property var model
    property bool hasEdge: true
    readonly property var content: model.content

    color: Theme.card

    ColumnLayout {
        anchors.fill: parent
        anchors.topMargin: Theme.large
        spacing: Theme.medium

        RowLayout {
            Layout.leftMargin: Theme.large
            Layout.rightMargin: Theme.large
            spacing: Theme.medium

            TextEntry {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                symbol: "magnifyingglass"
                placeholderText: pane.content.searchPrompt
                text: pane.model.searchText
                onTextChanged: pane.model.searchText = text
            }
            MenuButton {
                entry: pane.content.refreshButton
                onClicked: pane.model.refreshSessions()
            }
        }
        TextLine {
            Layout.fillWidth: true
            Layout.leftMargin: Theme.large
            Layout.rightMargin: Theme.large
            text: pane.content.countText
            font: Theme.caption
            tone: "secondary"
        }
        T.Control {
            id: chooser

            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: list.count > 0
            focusPolicy: Qt.TabFocus
            Accessible.role: Accessible.List
            Accessible.name: pane.content.countText
            Keys.onUpPressed: pane.model.selectNeighbour(-1)
            Keys.onDownPressed: pane.model.selectNeighbour(1)
            Keys.onPressed: event => {
                const steps = ({ [Qt.Key_Home]: -list.count, [Qt.Key_End]: list.count, [Qt.Key_PageUp]: -5, [Qt.Key_PageDown]: 5 })[event.key]
                if (steps !== undefined) {
                    pane.model.selectNeighbour(steps)
                    event.accepted = true
                }
            }

            contentItem: ListView {
                id: list

                clip: true
                boundsBehavior: Flickable.StopAtBounds
                keyNavigationEnabled: false
                highlightMoveDuration: 0
                model: pane.model.list("sessions")
                currentIndex: pane.content.selectedRow

                ScrollBar { page: list }

                delegate: SessionListRow {
                    width: ListView.view.width
                    keyboardPlace: chooser
                    onClicked: {
                        chooser.forceActiveFocus(Qt.MouseFocusReason)
                        pane.model.select(id)
                    }
                }
            }
        }
        EmptyState {
            Layout.fillWidth: true
            Layout.margins: Theme.large
            visible: !!pane.content.emptyList
            symbol: pane.content.emptyList?.symbol ?? ""
            title: pane.content.emptyList?.title ?? ""
            detail: pane.content.emptyList?.message ?? ""
        }
        Item {
            Layout.fillHeight: true
            visible: list.count === 0
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
