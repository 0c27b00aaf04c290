#pragma once

#include <QString>
#include <cstddef>

#include "LiveModel.h"
#include "QuorvexApp.h"

namespace quorvex {

/// The part of the live tab from which sessions are started and stopped. Main thread.
class SessionSectionModel : public LiveModel {
  Q_OBJECT
  /// What the user calls the next session; kept while the other tab is seen.
  Q_PROPERTY(QString sessionName READ sessionName WRITE setSessionName NOTIFY sessionNameChanged)

 public:
  /// The app outlives the model.
  explicit SessionSectionModel(QuorvexApp& app, QObject* parent = nullptr);

  [[nodiscard]] const QString& sessionName() const { return sessionName_; }
  void setSessionName(const QString& name);
  /// How many sessions there are.
  void setSessionCount(std::size_t count);

 signals:
  void sessionNameChanged();

 protected:
  QVariantMap makeContent() override;

 private:
  QuorvexApp* app_;
  QString sessionName_;
  std::size_t sessionCount_ = 0;
};

}  // namespace quorvex
