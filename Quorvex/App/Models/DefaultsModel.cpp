#include "DefaultsModel.h"

namespace quorvex {

DefaultsModel::DefaultsModel(UserDefaults& defaults, QObject* parent)
    : QObject(parent), defaults_(&defaults) {}

double DefaultsModel::refreshInterval() const {
  constexpr double usual = 2.0;
  return defaults_->number("refreshInterval").value_or(usual);
}

QString DefaultsModel::menuGraphMode() const {
  return QString::fromStdString(defaults_->text("menuGraphMode").value_or("power"));
}

void DefaultsModel::setRefreshInterval(double seconds) {
  // Stored although it reads the same: a text under the key gives way to a number.
  if (defaults_->number("refreshInterval") == seconds) {
    return;
  }
  defaults_->setValue("refreshInterval", seconds);
  emit refreshIntervalChanged();
  emit changed();
}

void DefaultsModel::setLowImpactMode(bool value) {
  setBoolean("lowImpactMode", value, lowImpactMode(), &DefaultsModel::lowImpactModeChanged);
}

void DefaultsModel::setShowAdvancedMetrics(bool value) {
  setBoolean("showAdvancedMetrics", value, showAdvancedMetrics(),
             &DefaultsModel::showAdvancedMetricsChanged);
}

void DefaultsModel::setProTelemetryEnabled(bool value) {
  setBoolean("proTelemetryEnabled", value, proTelemetryEnabled(),
             &DefaultsModel::proTelemetryEnabledChanged);
}

void DefaultsModel::setMenuGraphMode(const QString& rawValue) {
  if (rawValue == menuGraphMode()) {
    return;
  }
  defaults_->setValue("menuGraphMode", rawValue.toStdString());
  emit changed();
}

void DefaultsModel::setBoolean(const char* key, bool value, bool present, Signal signal) {
  if (value == present) {
    return;
  }
  defaults_->setValue(key, value);
  if (signal != nullptr) {
    emit(this->*signal)();
  }
  emit changed();
}

}  // namespace quorvex
