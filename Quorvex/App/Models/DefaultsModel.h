#pragma once

#include <QObject>
#include <QString>

#include "UserDefaults.h"

namespace quorvex {

/// The user's settings with their types and defaults, observed. A write that changes nothing is
/// none; every other one is stored at once and told. Main thread.
class DefaultsModel : public QObject {
  Q_OBJECT
  /// Seconds between polls, as stored.
  Q_PROPERTY(double refreshInterval READ refreshInterval WRITE setRefreshInterval NOTIFY
                 refreshIntervalChanged)
  Q_PROPERTY(bool showBattery READ showBattery WRITE setShowBattery NOTIFY changed)
  Q_PROPERTY(bool showPower READ showPower WRITE setShowPower NOTIFY changed)
  Q_PROPERTY(bool showThermal READ showThermal WRITE setShowThermal NOTIFY changed)
  Q_PROPERTY(bool showFans READ showFans WRITE setShowFans NOTIFY changed)
  Q_PROPERTY(bool showSensors READ showSensors WRITE setShowSensors NOTIFY changed)
  Q_PROPERTY(bool showNetwork READ showNetwork WRITE setShowNetwork NOTIFY changed)
  Q_PROPERTY(bool useFahrenheit READ useFahrenheit WRITE setUseFahrenheit NOTIFY changed)
  Q_PROPERTY(bool showTemperatureHighlights READ showTemperatureHighlights WRITE
                 setShowTemperatureHighlights NOTIFY changed)
  Q_PROPERTY(
      bool lowImpactMode READ lowImpactMode WRITE setLowImpactMode NOTIFY lowImpactModeChanged)
  Q_PROPERTY(bool showAdvancedMetrics READ showAdvancedMetrics WRITE setShowAdvancedMetrics NOTIFY
                 showAdvancedMetricsChanged)
  Q_PROPERTY(bool proTelemetryEnabled READ proTelemetryEnabled WRITE setProTelemetryEnabled NOTIFY
                 proTelemetryEnabledChanged)
  Q_PROPERTY(QString menuGraphMode READ menuGraphMode WRITE setMenuGraphMode NOTIFY changed)

 public:
  /// `defaults` outlives the model.
  explicit DefaultsModel(UserDefaults& defaults, QObject* parent = nullptr);

  /// 2.0 when the key is missing or holds no number.
  [[nodiscard]] double refreshInterval() const;
  [[nodiscard]] bool showBattery() const { return defaults_->boolean("showBattery", true); }
  [[nodiscard]] bool showPower() const { return defaults_->boolean("showPower", true); }
  [[nodiscard]] bool showThermal() const { return defaults_->boolean("showThermal", true); }
  [[nodiscard]] bool showFans() const { return defaults_->boolean("showFans", true); }
  [[nodiscard]] bool showSensors() const { return defaults_->boolean("showSensors", true); }
  [[nodiscard]] bool showNetwork() const { return defaults_->boolean("showNetwork", true); }
  [[nodiscard]] bool useFahrenheit() const { return defaults_->boolean("useFahrenheit", false); }
  [[nodiscard]] bool showTemperatureHighlights() const {
    return defaults_->boolean("showTemperatureHighlights", true);
  }
  [[nodiscard]] bool lowImpactMode() const { return defaults_->boolean("lowImpactMode", false); }
  [[nodiscard]] bool showAdvancedMetrics() const {
    return defaults_->boolean("showAdvancedMetrics", false);
  }
  [[nodiscard]] bool proTelemetryEnabled() const {
    return defaults_->boolean("proTelemetryEnabled", false);
  }
  [[nodiscard]] QString menuGraphMode() const;

  void setRefreshInterval(double seconds);
  void setShowBattery(bool value) { setBoolean("showBattery", value, showBattery()); }
  void setShowPower(bool value) { setBoolean("showPower", value, showPower()); }
  void setShowThermal(bool value) { setBoolean("showThermal", value, showThermal()); }
  void setShowFans(bool value) { setBoolean("showFans", value, showFans()); }
  void setShowSensors(bool value) { setBoolean("showSensors", value, showSensors()); }
  void setShowNetwork(bool value) { setBoolean("showNetwork", value, showNetwork()); }
  void setUseFahrenheit(bool value) { setBoolean("useFahrenheit", value, useFahrenheit()); }
  void setShowTemperatureHighlights(bool value) {
    setBoolean("showTemperatureHighlights", value, showTemperatureHighlights());
  }
  void setLowImpactMode(bool value);
  void setShowAdvancedMetrics(bool value);
  void setProTelemetryEnabled(bool value);
  void setMenuGraphMode(const QString& rawValue);

 signals:
  /// After every change, of whatever key, and after the key's own signal.
  void changed();
  void refreshIntervalChanged();
  void lowImpactModeChanged();
  void showAdvancedMetricsChanged();
  void proTelemetryEnabledChanged();

 private:
  using Signal = void (DefaultsModel::*)();
  void setBoolean(const char* key, bool value, bool present, Signal signal = nullptr);

  UserDefaults* defaults_;
};

}  // namespace quorvex
