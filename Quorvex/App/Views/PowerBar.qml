import QtQuick
import QtQuick.Layouts

// A component's share: its name, its value, and a bar of `fraction` (0 to 1) of the width.
ColumnLayout {
    id: bar

    property string label: ""
    property string value: ""
    property real fraction: 0
    property string tone: "green"
    property string description: ""

    spacing: Theme.small

    ValueRow {
        Layout.fillWidth: true
        visible: bar.label !== ""
        label: bar.label
        value: bar.value
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: Theme.small
        radius: Theme.tiny
        color: Theme.track
        Accessible.role: Accessible.Graphic
        Accessible.name: bar.description
        Accessible.ignored: bar.description === ""

        Rectangle {
            width: bar.fraction > 0 ? Math.max(height, parent.width * bar.fraction) : 0
            height: parent.height
            radius: Theme.tiny
            color: Theme.named[bar.tone]

            Behavior on width { NumberAnimation { duration: 200; easing.type: Easing.OutCubic } }
        }
    }
}
