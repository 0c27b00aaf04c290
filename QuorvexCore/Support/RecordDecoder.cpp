#include "RecordDecoder.h"

#include "RecordDecoding.h"

namespace quorvex {

RecordDecoder::RecordDecoder() : state_(std::make_unique<State>()) {}
RecordDecoder::RecordDecoder(RecordDecoder&&) noexcept = default;
RecordDecoder& RecordDecoder::operator=(RecordDecoder&&) noexcept = default;
RecordDecoder::~RecordDecoder() = default;

DecodingError RecordDecoder::error() const {
  return {state_->problem()};
}

std::string RecordDecoder::State::problem() const {
  std::string result = "$";
  // The parser does not tell where exactly a text stops being JSON.
  if (words_ != notJSON) {
    result.append(path_);
  }
  return result.append(": ").append(words_);
}

bool RecordDecoder::State::fail(std::string_view words) {
  words_ = words;
  return false;
}

bool RecordDecoder::State::failIn(std::string_view key) {
  std::string path = ".";
  path.append(key).append(path_);
  path_ = std::move(path);
  return false;
}

bool RecordDecoder::State::failIn(std::size_t index) {
  std::string path = "[";
  path.append(std::to_string(index)).append("]").append(path_);
  path_ = std::move(path);
  return false;
}

bool RecordDecoder::State::failMissing(std::string_view key) {
  words_ = "missing";
  return failIn(key);
}

bool RecordDecoder::State::readText(JSON json, std::string_view& text) {
  std::string_view token = json.raw_json_token();
  if (token.empty() || token.front() != '"') {
    return fail("not a string");
  }
  while (token.back() == ' ' || token.back() == '\n' || token.back() == '\r' ||
         token.back() == '\t') {
    token.remove_suffix(1);
  }
  if (token.size() < 2 || token.back() != '"') {
    return fail(notJSON);
  }
  token = token.substr(1, token.size() - 2);
  if (token.find('\\') != std::string_view::npos) {
    return json.get_string().get(text) == simdjson::SUCCESS || fail(notJSON);
  }
  simdjson::ondemand::raw_json_string passed;
  if (json.get_raw_json_string().get(passed) != simdjson::SUCCESS) {
    return fail(notJSON);
  }
  text = token;
  return true;
}

bool RecordDecoder::State::skip(JSON json, int depth) {
  if (depth > deepestUnknown) {
    return fail("nested too deeply");
  }
  simdjson::ondemand::json_type type{};
  if (json.type().get(type) != simdjson::SUCCESS) {
    return fail(notJSON);
  }
  switch (type) {
    case simdjson::ondemand::json_type::object: {
      simdjson::ondemand::object object;
      if (json.get_object().get(object) != simdjson::SUCCESS) {
        return fail(notJSON);
      }
      for (auto field : object) {
        std::string_view key;
        if (field.unescaped_key().get(key) != simdjson::SUCCESS ||
            !skip(field.value().value_unsafe(), depth + 1)) {
          return words_.empty() ? fail(notJSON) : false;
        }
      }
      return true;
    }
    case simdjson::ondemand::json_type::array: {
      simdjson::ondemand::array array;
      if (json.get_array().get(array) != simdjson::SUCCESS) {
        return fail(notJSON);
      }
      for (auto item : array) {
        if (item.error() != simdjson::SUCCESS) {
          return fail(notJSON);
        }
        if (!skip(item.value_unsafe(), depth + 1)) {
          return false;
        }
      }
      return true;
    }
    case simdjson::ondemand::json_type::string: {
      std::string_view text;
      return readText(json, text);
    }
    case simdjson::ondemand::json_type::number: {
      double number = 0.0;
      return json.get_double().get(number) == simdjson::SUCCESS || fail(notJSON);
    }
    case simdjson::ondemand::json_type::boolean: {
      bool flag = false;
      return json.get_bool().get(flag) == simdjson::SUCCESS || fail(notJSON);
    }
    case simdjson::ondemand::json_type::null:
      return isNull(json) || fail(notJSON);
  }
  return fail(notJSON);
}

}  // namespace quorvex
