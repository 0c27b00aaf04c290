import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import QtQuick.Window

// A page that scrolls when it is longer than its window.
Flickable {
    id: page

    default property alias body: column.data
    property alias spacing: column.spacing

    implicitHeight: column.implicitHeight + 2 * Theme.large
    contentHeight: column.height + 2 * Theme.large
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    Accessible.role: Accessible.Pane

    // The keyboard's place is always in sight.
    function reveal(item) {
        const top = item.mapToItem(page.contentItem, 0, 0).y - Theme.large
        const bottom = top + item.height + 2 * Theme.large
        contentY = Math.max(0, Math.min(top, Math.max(contentY, bottom - height)))
    }

    Connections {
        target: page.Window.window
        function onActiveFocusItemChanged() {
            for (let item = page.Window.activeFocusItem; item; item = item.parent) {
                if (item.parent === page.contentItem || item.parent === column) {
                    page.reveal(page.Window.activeFocusItem)
                    return
                }
            }
        }
    }

    T.ScrollBar.vertical: ScrollBar {}

    ColumnLayout {
        id: column

        x: Theme.large
        y: Theme.large
        width: page.width - 2 * Theme.large
        spacing: Theme.large
    }
}
