import QtQuick
import QtQuick.Layouts

// A page that scrolls when it is longer than its window, by the keyboard too.
Flickable {
    id: page

    default property alias body: column.data
    property alias spacing: column.spacing
    // Names the page to screen readers.
    property string description: ""

    implicitHeight: column.implicitHeight + 2 * Theme.large
    contentHeight: column.height + 2 * Theme.large
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    activeFocusOnTab: contentHeight > height
    Accessible.role: Accessible.Pane
    Accessible.name: description
    Accessible.focusable: activeFocusOnTab
    Keys.onPressed: event => {
        const step = ({
            [Qt.Key_Up]: -10 * Theme.unit, [Qt.Key_Down]: 10 * Theme.unit,
            [Qt.Key_PageUp]: -0.9 * height, [Qt.Key_PageDown]: 0.9 * height,
            [Qt.Key_Home]: -contentHeight, [Qt.Key_End]: contentHeight
        })[event.key]
        if (step !== undefined) {
            contentY = Math.max(0, Math.min(contentY + step, contentHeight - height))
            event.accepted = true
        }
    }

    // In front of what scrolls.
    property Item ring: null
    onActiveFocusChanged: {
        if (activeFocus && !ring) {
            ring = OnDemand.mark(page, page)
            ring.anchors.margins = Theme.tiny
        }
    }

    // The keyboard's place is always in sight. What the pointer presses stays under it.
    function reveal(item) {
        const top = item.mapToItem(page.contentItem, 0, 0).y - Theme.large
        const bottom = top + item.height + 2 * Theme.large
        contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)))
    }

    Connections {
        target: page.Window.window
        function onActiveFocusItemChanged() {
            if (page.Window.activeFocusItem?.focusedByPointer) {
                return
            }
            for (let item = page.Window.activeFocusItem; item; item = item.parent) {
                if (item.parent === page.contentItem || item.parent === column) {
                    page.reveal(page.Window.activeFocusItem)
                    return
                }
            }
        }
    }

    ScrollBar { page: page }
    ColumnLayout {
        id: column

        x: Theme.large
        y: Theme.large
        width: page.width - 2 * Theme.large
        spacing: Theme.large
    }
}
