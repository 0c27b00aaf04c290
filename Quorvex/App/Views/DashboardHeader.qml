import QtQuick
import QtQuick.Layouts

// What holds for both tabs: which one is seen, and how figures are shown.
Rectangle {
    id: header

    required property var content
    required property var model

    implicitWidth: column.implicitWidth + 2 * Theme.large
    implicitHeight: column.implicitHeight + 2 * Theme.large
    color: Theme.card

    ColumnLayout {
        id: column

        x: Theme.large
        y: Theme.large
        width: parent.width - 2 * Theme.large
        spacing: Theme.roomy

        RowLayout {
            spacing: Theme.medium

            TextLine {
                Layout.fillWidth: true
                text: header.content.title
                font: Theme.headline
                Accessible.role: Accessible.Heading
            }
            Figures {
                text: header.content.timeText
                font: Theme.caption
                tone: "secondary"
            }
            MenuButton {
                entry: header.content.copyReport
                onClicked: header.model.commands.copyJSONReportOfNow()
            }
        }
        RowLayout {
            spacing: Theme.large

            Picker {
                Layout.fillWidth: false
                picker: header.content.tabs
                onChosen: index => header.model.tab = index
            }
            Item { Layout.fillWidth: true }
            Picker {
                Layout.fillWidth: false
                picker: header.content.temperatureUnits
                onChosen: index => header.model.defaults.useFahrenheit = index === 1
            }
        }
        RowLayout {
            spacing: Theme.large

            SettingSwitch {
                isSmall: true
                entry: header.content.temperatureHighlights
                defaults: header.model.defaults
            }
            SettingSwitch {
                isSmall: true
                entry: header.content.advancedMetrics
                defaults: header.model.defaults
            }
            Item { Layout.fillWidth: true }
            LaunchAtLoginToggle {
                Layout.fillWidth: false
                isSmall: true
                showsMessages: false
                model: header.model.launchAtLogin
            }
        }
        TextLine {
            Layout.fillWidth: true
            Layout.preferredWidth: 1
            visible: text !== ""
            text: header.model.launchAtLogin.content.errorMessage?.text ?? ""
            font: Theme.caption
            tone: header.model.launchAtLogin.content.errorMessage?.color ?? "red"
            wrapMode: Text.Wrap
        }
    }
}
