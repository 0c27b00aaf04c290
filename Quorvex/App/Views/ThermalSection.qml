import QtQuick
import QtQuick.Layouts

// How hot the machine is, by its own word, its sensors and its fans.
Card {
    id: card

    required property var live
    readonly property var section: live.content.thermal

    RowLayout {
        spacing: Theme.medium

        TextLine {
            Layout.fillWidth: true
            text: card.section.title
            font: Theme.bodyStrong
            Accessible.role: Accessible.Heading
        }
        Badge {
            text: card.section.thermalBadge.text
            symbol: card.section.thermalBadge.symbol
            tone: card.section.thermalBadge.color
            help: card.section.thermalBadge.help
        }
    }
    ValueRows { rows: card.live.list("thermalRows") }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 1
        visible: (highlights.rows?.count ?? 0) > 0
        color: Theme.line
    }
    ValueRows {
        id: highlights

        rows: card.live.list("highlights")
    }
    TextLine {
        Layout.fillWidth: true
        visible: text !== ""
        text: card.section.note ?? ""
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
    Heading {
        visible: (sensors.rows?.count ?? 0) > 0
        text: card.section.sensorsTitle
    }
    ValueRows {
        id: sensors

        rows: card.live.list("sensors")
    }
    TextLine {
        visible: text !== ""
        text: card.section.moreText ?? ""
        font: Theme.caption
        tone: "secondary"
    }
    TextLine {
        visible: text !== ""
        text: card.section.curationText ?? ""
        font: Theme.caption
        tone: "secondary"
    }
    Heading { text: card.section.fans.title }
    FanRows { rows: card.live.list("fans") }
    TextLine {
        visible: text !== ""
        text: card.section.fans.emptyText
        tone: "secondary"
    }
}
