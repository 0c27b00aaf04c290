#pragma once

#include <QPointer>
#include <QString>
#include <map>
#include <optional>

#include "LiveModel.h"
#include "QuorvexApp.h"
#include "SessionReader.h"
#include "TracePlot.h"

namespace quorvex {

/// The report of one session, read on a worker. While it is read, `isLoading` says so and the
/// content is empty; else it is the rules' report, with `traces` made for pointing at. Main thread.
class ReportModel : public LiveModel {
  Q_OBJECT
  Q_PROPERTY(bool isLoading READ isLoading NOTIFY loadingChanged)
  Q_PROPERTY(bool hasReport READ hasReport NOTIFY contentChanged)
  /// What stands in its place when it could not be read; empty otherwise.
  Q_PROPERTY(QVariantMap failure READ failure NOTIFY failureChanged)
  /// Whose report it is; empty without one.
  Q_PROPERTY(QString sessionID READ sessionID NOTIFY contentChanged)

 public:
  using SessionPointer = SessionReader::SessionPointer;

  /// The app outlives the model.
  explicit ReportModel(QuorvexApp& app, QObject* parent = nullptr);

  /// Shows the session's report; nothing for null. The report of a session that has ended is read
  /// once; that of an active one each time.
  void setSession(SessionPointer session);

  [[nodiscard]] bool isLoading() const { return isLoading_; }
  [[nodiscard]] bool hasReport() const { return report_.has_value(); }
  [[nodiscard]] QVariantMap failure() const;
  [[nodiscard]] const std::optional<PowerSessionReport>& report() const { return report_; }
  [[nodiscard]] QString sessionID() const;

  /// What stands at a place of a trace, 0 to 1 from left to right, or `steps` values after it:
  /// `position`, `text`, and `heights` of its lines. Empty without values.
  Q_INVOKABLE QVariantMap readout(int trace, double position, int steps = 0) const;

 signals:
  void loadingChanged();
  void failureChanged();

 protected:
  QVariantMap makeContent() override;

 private:
  static asio::awaitable<void> load(SessionReader reader, QPointer<ReportModel> self,
                                    SessionPointer session, int request);
  void show(std::optional<PowerSessionReport> report);
  void setLoading(bool isLoading);
  void setFailed(bool hasFailed);

  QuorvexApp* app_;
  SessionReader reader_;
  SessionPointer session_;
  std::optional<PowerSessionReport> report_;
  std::map<UUID, PowerSessionReport> finished_;  ///< reports that do not change any more
  std::vector<TracePlot> traces_;
  int requests_ = 0;  ///< what an earlier one still reads is not shown any more
  bool isLoading_ = false;
  bool hasFailed_ = false;
};

}  // namespace quorvex
