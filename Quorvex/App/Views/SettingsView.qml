import QtQuick
import QtQuick.Layouts

// Everything that the user can set.
ScrollPage {
    id: page

    required property var model
    readonly property var content: model.content

    SettingsSection {
        title: page.content.refresh.title
        footer: page.content.refresh.footer

        RowLayout {
            TextLine {
                Layout.fillWidth: true
                text: page.content.refresh.stepper.label
            }
            IntervalStepper {
                interval: page.content.refresh.stepper
                description: page.content.refresh.stepper.label
                commands: page.model.commands
            }
        }
    }
    SettingsSection {
        title: page.content.sampling.title

        SwitchRow {
            Layout.fillWidth: true
            text: page.content.sampling.lowImpactMode.title
            checked: page.content.sampling.lowImpactMode.isOn
            onToggled: checked => page.model.defaults.lowImpactMode = checked
        }
        TextLine {
            Layout.fillWidth: true
            text: page.content.sampling.lowImpactMode.caption
            font: Theme.caption
            tone: "secondary"
            wrapMode: Text.Wrap
        }
        WarningLine {
            Layout.fillWidth: true
            warning: page.content.sampling.warning
        }
    }
    SettingsSection {
        title: page.content.launch.title

        LaunchAtLoginToggle {
            Layout.fillWidth: true
            model: page.model.launchAtLogin
        }
    }
    SettingsSection {
        title: page.content.dashboardSections.title

        SettingToggles {
            toggles: page.model.list("dashboardToggles")
            defaults: page.model.defaults
        }
    }
    SettingsSection {
        title: page.content.display.title

        SettingToggles {
            toggles: page.model.list("displayToggles")
            defaults: page.model.defaults
        }
    }
}
