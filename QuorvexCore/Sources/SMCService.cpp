#include "SMCService.h"

#include <fmt/format.h>

#include "SMCKeyReading.h"

namespace quorvex {

namespace {

constexpr std::int64_t mostFans = 15;

}  // namespace

SMCService::~SMCService() {
  disconnect();
}

std::vector<FanInfo> SMCService::readFans() {
  const std::scoped_lock lock{mutex_};
  if (!ensureConnected()) {
    return {};
  }
  auto fanCount = readFanCount(*connection_);
  if (!fanCount) {
    // The connection may have gone stale, over sleep for one; a fresh one gets a second try.
    if (!reconnect()) {
      return {};
    }
    fanCount = readFanCount(*connection_);
  }
  return fanCount ? buildFans(*connection_, *fanCount) : std::vector<FanInfo>{};
}

std::vector<TemperatureSensor> SMCService::readTemperatures() {
  const std::scoped_lock lock{mutex_};
  if (!ensureConnected()) {
    return {};
  }
  auto sensors = smc::collectTemperatures(*port_, *connection_);
  if (sensors.empty() && reconnect()) {
    sensors = smc::collectTemperatures(*port_, *connection_);
  }
  return sensors;
}

bool SMCService::ensureConnected() {
  if (!connection_) {
    connection_ = port_->open();
  }
  return connection_.has_value();
}

bool SMCService::reconnect() {
  disconnect();
  return ensureConnected();
}

void SMCService::disconnect() {
  if (connection_) {
    port_->close(*connection_);
    connection_.reset();
  }
}

std::optional<std::int64_t> SMCService::readRPM(Connection connection, std::string_view key) const {
  const auto value = smc::readSMCKeyTyped(*port_, connection, key);
  return value ? smc::decodeRPM(*value) : std::nullopt;
}

std::optional<std::int64_t> SMCService::readFanCount(Connection connection) const {
  // The first byte alone counts, whatever type the key claims to have.
  const auto value = smc::readSMCKeyTyped(*port_, connection, "FNum");
  return value ? std::optional<std::int64_t>{value->bytes.front()} : std::nullopt;
}

std::vector<FanInfo> SMCService::buildFans(Connection connection, std::int64_t fanCount) const {
  std::vector<FanInfo> fans;
  if (fanCount < 1 || fanCount > mostFans) {
    return fans;
  }
  fans.reserve(static_cast<std::size_t>(fanCount));
  for (std::int64_t index = 0; index < fanCount; ++index) {
    const auto speed = [&](std::string_view suffix) {
      return readRPM(connection, fmt::format("F{}{}", index, suffix)).value_or(0);
    };
    FanInfo& fan = fans.emplace_back();
    fan.id = index;
    fan.name = fmt::format("Fan {}", index);
    fan.currentRPM = speed("Ac");
    fan.minRPM = speed("Mn");
    fan.maxRPM = speed("Mx");
  }
  return fans;
}

}  // namespace quorvex
