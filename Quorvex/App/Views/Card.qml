import QtQuick
import QtQuick.Layouts

// A surface that groups what belongs together, under an optional heading.
Rectangle {
    id: card

    default property alias body: column.data
    property string heading: ""
    // Names the group to screen readers; the heading does where there is none.
    property string description: heading
    property alias spacing: column.spacing
    property int padding: Theme.large

    color: Theme.card
    radius: Theme.radius
    border.color: Theme.line
    border.width: 1
    implicitWidth: column.implicitWidth + 2 * padding
    implicitHeight: column.implicitHeight + 2 * padding
    Accessible.role: Accessible.Grouping
    Accessible.name: description
    Accessible.ignored: description === ""

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: card.padding
        spacing: Theme.medium

        TextLine {
            Layout.fillWidth: true
            visible: card.heading !== ""
            text: card.heading
            font: Theme.bodyStrong
            Accessible.role: Accessible.Heading
        }
    }
}
