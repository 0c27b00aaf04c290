#pragma once

#include <QTimer>

#include "AppCommands.h"
#include "LiveModel.h"
#include "QuorvexApp.h"

namespace quorvex {

/// What the dropdown shows: the hero number with its context, the graph, the row of figures, the
/// session's and the engine's controls. `content` has them under `hero`, `context`, `selector`
/// (with its place, `selectedGraph`), `graph`, `dataUsed`, `session`, `controls` and `menu`; the
/// lists are `heroLines`, `stats` and `highlights`. Main thread.
class DropdownModel : public LiveModel {
  Q_OBJECT
  Q_PROPERTY(quorvex::AppCommands* commands READ commands CONSTANT)
  Q_PROPERTY(quorvex::DefaultsModel* defaults READ defaults CONSTANT)

 public:
  /// The app and its commands outlive the model. An engine that rests is started.
  DropdownModel(QuorvexApp& app, AppCommands& commands, QObject* parent = nullptr);

  [[nodiscard]] AppCommands* commands() const { return commands_; }
  [[nodiscard]] DefaultsModel* defaults() const { return &app_->defaults(); }

 protected:
  QVariantMap makeContent() override;

 private:
  QVariantMap sessionContent();
  /// The elapsed time of a recording moves on by itself.
  void updateClock();

  QuorvexApp* app_;
  AppCommands* commands_;
  QTimer second_;
};

}  // namespace quorvex
