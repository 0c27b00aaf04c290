import QtQuick
import QtQuick.Templates as T

// Shows which part of a long page is in sight, and moves the page by being dragged.
T.ScrollBar {
    id: bar

    required property Flickable page

    padding: 2
    minimumSize: 0.08
    orientation: Qt.Vertical
    size: page.visibleArea.heightRatio
    position: page.visibleArea.yPosition
    active: page.movingVertically || hovered || pressed
    onPositionChanged: if (pressed) page.contentY = page.originY + position * page.contentHeight
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: 6
        radius: 3
        color: Theme.secondary
        opacity: bar.pressed ? 0.8 : bar.active ? 0.5 : 0.25

        Behavior on opacity { NumberAnimation { duration: 150 } }
    }
}
