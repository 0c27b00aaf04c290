import QtQuick
import QtQuick.Layouts

// The sections of the moment; the rules say which there are.
ScrollPage {
    id: page

    required property var model
    readonly property var content: model.live.content

    description: model.content.tabs.options[0]

    function has(section) {
        return content.sections.includes(section)
    }

    ProTelemetrySection {
        Layout.fillWidth: true
        model: page.model.helper
        defaults: page.model.defaults
    }
    MeasurementSection {
        Layout.fillWidth: true
        model: page.model
    }
    Loader {
        Layout.fillWidth: true
        active: page.has("battery") && !!page.content.battery
        visible: active
        sourceComponent: BatterySection {
            gauge: page.content.battery
            rows: page.model.live.list("batteryRows")
        }
    }
    PowerBreakdownSection {
        Layout.fillWidth: true
        live: page.model.live
        content: page.content
    }
    Loader {
        Layout.fillWidth: true
        active: page.has("network")
        visible: active
        sourceComponent: NetworkSection { live: page.model.live }
    }
    ThermalSection {
        Layout.fillWidth: true
        live: page.model.live
    }
}
