import QtQuick
import QtQuick.Layouts

// Opens the app at login. The switch always shows the true status.
ColumnLayout {
    id: control

    required property var model
    property bool isSmall: false
    // Whether caption and failure stand below the switch; else they are for the surroundings.
    property bool showsMessages: true
    readonly property var content: model.content

    spacing: Theme.small

    SwitchRow {
        Layout.fillWidth: true
        isSmall: control.isSmall
        text: control.content.title
        symbol: control.content.symbol
        help: control.content.help
        checked: control.content.isEnabled
        onToggled: checked => control.model.setEnabled(checked)
    }
    TextLine {
        Layout.fillWidth: true
        visible: control.showsMessages && text !== ""
        text: control.content.caption ?? ""
        font: Theme.caption
        tone: "secondary"
        wrapMode: Text.Wrap
    }
    TextLine {
        Layout.fillWidth: true
        visible: control.showsMessages && text !== ""
        text: control.content.errorMessage?.text ?? ""
        font: Theme.caption
        tone: control.content.errorMessage?.color ?? "red"
        wrapMode: Text.Wrap
    }
}
