#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "SMCPort.h"

namespace quorvex::testing {

/// An SMC that exists only here. Keys are at most four characters; a key that was never set fails
/// with an error of the kernel. Not guarded: the port promises nothing to overlapping callers.
class FakeSMC final : public SMCPort {
 public:
  static constexpr int keyMissing = 0x2C;
  static constexpr int badConnection = 0x10;

  /// Sets a key; `dataSize` is what its key info claims, the number of bytes when left out.
  void set(const std::string& key, const std::string& type, std::vector<std::uint8_t> bytes,
           std::optional<std::uint32_t> dataSize = std::nullopt) {
    const auto size = dataSize.value_or(static_cast<std::uint32_t>(bytes.size()));
    keys_.insert_or_assign(code(key), Value{code(type), std::move(bytes), size});
  }
  /// Sets a key of type "flt ", little-endian.
  void setFloat(const std::string& key, float value) { set(key, "flt ", littleEndian(value)); }
  void remove(const std::string& key) { keys_.erase(code(key)); }

  /// Whether open() gives a connection.
  void setAvailable(bool available) { available_ = available; }
  /// Makes the open connections useless, as sleep does; connections opened later work.
  void makeConnectionsStale() { stale_ = open_; }
  /// Lets the read of a key's bytes fail although its key info can be had.
  void failBytes(const std::string& key) { failingBytes_.insert(code(key)); }

  /// Every call in order: "open", "open failed", "close {n}", "info {key}", "bytes {key}".
  [[nodiscard]] const std::vector<std::string>& log() const { return log_; }
  [[nodiscard]] std::int64_t count(std::string_view entry) const {
    return std::ranges::count(log_, entry);
  }
  void clearLog() { log_.clear(); }
  /// The input records of every call, in order.
  [[nodiscard]] const std::vector<SMCKeyRecord>& inputs() const { return inputs_; }
  [[nodiscard]] std::size_t openConnections() const { return open_.size(); }

  [[nodiscard]] static std::vector<std::uint8_t> littleEndian(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    return {static_cast<std::uint8_t>(bits), static_cast<std::uint8_t>(bits >> 8U),
            static_cast<std::uint8_t>(bits >> 16U), static_cast<std::uint8_t>(bits >> 24U)};
  }

  std::optional<Connection> open() override {
    if (!available_) {
      log_.emplace_back("open failed");
      return std::nullopt;
    }
    log_.emplace_back("open");
    open_.insert(++lastConnection_);
    return lastConnection_;
  }
  void close(Connection connection) override {
    log_.push_back("close " + std::to_string(connection));
    open_.erase(connection);
  }
  int call(Connection connection, const SMCKeyRecord& input, SMCKeyRecord& output) override {
    inputs_.push_back(input);
    const bool wantsInfo = input.command == SMCKeyRecord::readKeyInfoCommand;
    log_.push_back((wantsInfo ? "info " : "bytes ") + text(input.key));
    if (!open_.contains(connection) || stale_.contains(connection)) {
      return badConnection;
    }
    const auto found = keys_.find(input.key);
    if (found == keys_.end() || (!wantsInfo && failingBytes_.contains(input.key))) {
      return keyMissing;
    }
    const Value& value = found->second;
    if (wantsInfo) {
      output.dataSize = value.dataSize;
      output.dataType = value.type;
    } else {
      std::copy_n(value.bytes.begin(), std::min(value.bytes.size(), output.bytes.size()),
                  output.bytes.begin());
    }
    // Neither of these two means anything to a reader.
    output.result = 0x84;
    output.status = 1;
    return 0;
  }

 private:
  struct Value {
    std::uint32_t type = 0;
    std::vector<std::uint8_t> bytes;
    std::uint32_t dataSize = 0;
  };

  static std::uint32_t code(std::string_view key) {
    std::uint32_t result = 0;
    for (std::size_t index = 0; index < 4; ++index) {
      result = result << 8U | (index < key.size() ? static_cast<std::uint8_t>(key[index]) : 0U);
    }
    return result;
  }
  static std::string text(std::uint32_t code) {
    return {static_cast<char>(code >> 24U), static_cast<char>(code >> 16U),
            static_cast<char>(code >> 8U), static_cast<char>(code)};
  }

  std::map<std::uint32_t, Value> keys_;
  std::set<std::uint32_t> failingBytes_;
  bool available_ = true;
  Connection lastConnection_ = 0;
  std::set<Connection> open_;
  std::set<Connection> stale_;
  std::vector<std::string> log_;
  std::vector<SMCKeyRecord> inputs_;
};

}  // namespace quorvex::testing
