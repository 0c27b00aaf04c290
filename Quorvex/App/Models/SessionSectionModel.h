#pragma once

#include <cstddef>

#include "LiveModel.h"
#include "QuorvexApp.h"

namespace quorvex {

/// The part of the live tab from which sessions are started and stopped. Main thread.
class SessionSectionModel : public LiveModel {
  Q_OBJECT

 public:
  /// The app outlives the model.
  explicit SessionSectionModel(QuorvexApp& app, QObject* parent = nullptr);

  /// How many sessions there are.
  void setSessionCount(std::size_t count);

 protected:
  QVariantMap makeContent() override;

 private:
  QuorvexApp* app_;
  std::size_t sessionCount_ = 0;
};

}  // namespace quorvex
