#include "SessionReader.h"

#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include "AppVersion.h"
#include "DetachedWork.h"
#include "PowerSessionStore.h"
#include "SessionReportRules.h"

namespace quorvex {

namespace {

PowerSessionSummary summaryOf(PowerSessionStore& store, const PowerSession& session) {
  return store.summary(session);
}

PowerSessionReport reportOf(PowerSessionStore& store, const PowerSession& session) {
  // Held, so that the report need not list them again.
  const PowerSessionSamples samples = store.samples(session);
  return samples.empty() ? reportWithoutSamples(session) : store.report(session);
}

/// Runs `read` on a store of the worker's own.
template <typename Value>
std::optional<Value> readFrom(const std::filesystem::path& file, Clock& clock, const UUID& id,
                              Value (*read)(PowerSessionStore&, const PowerSession&)) {
  // Opening would make a store where there is none.
  if (std::error_code ignored; !std::filesystem::exists(file, ignored)) {
    return std::nullopt;
  }
  const auto store =
      PowerSessionStore::open({.appVersion = AppVersion::shortText, .storeURL = file}, clock);
  if (!store) {
    return std::nullopt;
  }
  const auto session = (*store)->session(id);
  if (!session || *session == nullptr) {
    return std::nullopt;
  }
  return read(**store, **session);
}

template <typename Value>
asio::awaitable<std::optional<Value>> readHere(PowerSessionStore& store,
                                               SessionReader::SessionPointer session,
                                               Value (*read)(PowerSessionStore&,
                                                             const PowerSession&)) {
  co_return read(store, *session);
}

template <typename Value>
asio::awaitable<std::optional<Value>> readDetached(QuorvexApp& app,
                                                   SessionReader::SessionPointer session,
                                                   Value (*read)(PowerSessionStore&,
                                                                 const PowerSession&)) {
  if (!app.storeFile()) {
    return readHere(app.sessionRecorder().store(), std::move(session), read);
  }
  return runDetached(app.context().workers,
                     [file = *app.storeFile(), &clock = app.machine().clock(), id = session->id(),
                      read] { return readFrom(file, clock, id, read); });
}

}  // namespace

asio::awaitable<std::optional<PowerSessionSummary>> SessionReader::summary(
    SessionPointer session) const {
  return readDetached(*app_, std::move(session), &summaryOf);
}

asio::awaitable<std::optional<PowerSessionReport>> SessionReader::report(
    SessionPointer session) const {
  return readDetached(*app_, std::move(session), &reportOf);
}

}  // namespace quorvex
