import QtQuick

// A thin bar at the right of a page that is longer than its window.
Loader {
    required property Flickable page

    parent: page
    anchors.top: parent.top
    anchors.bottom: parent.bottom
    anchors.right: parent.right
    width: 10
    active: page.height > 0 && page.contentHeight > page.height
    Component.onCompleted: setSource("ScrollThumb.qml", { page: page })
}
