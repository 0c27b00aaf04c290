#pragma once

#include <simdjson.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace quorvex::benchmarks {

/// Gets every key and every value: the floor that decoding is measured against.
class JSONWalk {
 public:
  /// `capacity` bytes can be read behind `json.data()`, at least `simdjson::SIMDJSON_PADDING` more
  /// than it has.
  void document(std::string_view json, std::size_t capacity) {
    simdjson::ondemand::document document;
    check(parser_.iterate(json.data(), json.size(), capacity).get(document));
    simdjson::ondemand::value root;
    check(document.get_value().get(root));
    value(root);
  }

  /// The same with bytes that lie anywhere, which takes a copy.
  void document(std::string_view json) {
    if (copy_.size() < json.size() + simdjson::SIMDJSON_PADDING) {
      copy_.resize(json.size() + simdjson::SIMDJSON_PADDING);
    }
    json.copy(copy_.data(), json.size());
    document({copy_.data(), json.size()}, copy_.size());
  }

  /// Depends on everything that was got, so that nothing of it can be left out.
  [[nodiscard]] std::uint64_t sum() const { return sum_; }

 private:
  static void check(simdjson::error_code error) {
    if (error != simdjson::SUCCESS) {
      std::abort();
    }
  }

  void value(simdjson::ondemand::value json) {
    switch (json.type().value()) {
      case simdjson::ondemand::json_type::object:
        for (auto field : json.get_object()) {
          sum_ += field.unescaped_key().value().size();
          value(field.value().value());
        }
        break;
      case simdjson::ondemand::json_type::array:
        for (auto item : json.get_array()) {
          value(item.value());
        }
        break;
      case simdjson::ondemand::json_type::string:
        sum_ += json.get_string().value().size();
        break;
      case simdjson::ondemand::json_type::number:
        sum_ += static_cast<std::uint64_t>(json.get_double().value());
        break;
      case simdjson::ondemand::json_type::boolean:
        sum_ += json.get_bool().value() ? 1 : 0;
        break;
      case simdjson::ondemand::json_type::null:
        break;
    }
  }

  simdjson::ondemand::parser parser_;
  std::string copy_;
  std::uint64_t sum_ = 0;
};

}  // namespace quorvex::benchmarks
