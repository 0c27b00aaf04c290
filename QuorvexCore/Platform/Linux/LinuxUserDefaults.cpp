#include "LinuxUserDefaults.h"

#include <fmt/format.h>
#include <simdjson.h>
#include <unistd.h>

#include <fstream>
#include <system_error>
#include <utility>

#include "JSONWriter.h"
#include "SystemTree.h"

namespace quorvex {

namespace {

std::optional<UserDefaultsValue> storedValue(const simdjson::dom::element& element) {
  if (bool flag = false; element.get(flag) == simdjson::SUCCESS) {
    return flag;
  }
  if (std::int64_t integer = 0; element.is_int64() && element.get(integer) == simdjson::SUCCESS) {
    return integer;
  }
  if (double number = 0; element.get(number) == simdjson::SUCCESS) {
    return number;
  }
  if (std::string_view text; element.get(text) == simdjson::SUCCESS) {
    return std::string{text};
  }
  return std::nullopt;
}

}  // namespace

LinuxUserDefaults::LinuxUserDefaults(const std::string& configurationFolder)
    : file_(std::filesystem::path{configurationFolder} / "quorvex" / "defaults.json") {}

std::optional<UserDefaultsValue> LinuxUserDefaults::value(const std::string& key) {
  const std::scoped_lock lock{mutex_};
  Values values = read();
  const auto found = values.find(key);
  return found != values.end() ? std::optional{std::move(found->second)} : std::nullopt;
}

void LinuxUserDefaults::setValue(const std::string& key, const UserDefaultsValue& value) {
  const std::scoped_lock lock{mutex_};
  Values values = read();
  values.insert_or_assign(key, value);
  write(values);
}

void LinuxUserDefaults::removeValue(const std::string& key) {
  const std::scoped_lock lock{mutex_};
  Values values = read();
  if (values.erase(key) != 0) {
    write(values);
  }
}

LinuxUserDefaults::Values LinuxUserDefaults::read() const {
  Values values;
  const auto text = system_tree::readFile(file_.string());
  simdjson::dom::parser parser;
  simdjson::dom::object object;
  if (!text || parser.parse(*text).get(object) != simdjson::SUCCESS) {
    return values;
  }
  for (const auto& [key, element] : object) {
    if (auto value = storedValue(element)) {
      values.insert_or_assign(std::string{key}, *std::move(value));
    }
  }
  return values;
}

void LinuxUserDefaults::write(const Values& values) const {
  JSONWriter json{JSONWriter::Style::pretty};
  json.beginObject();
  for (const auto& [key, value] : values) {
    json.key(key);
    std::visit([&](const auto& stored) { json.value(stored); }, value);
  }
  json.endObject();
  if (!json.isValid()) {
    return;
  }
  std::error_code error;
  std::filesystem::create_directories(file_.parent_path(), error);
  // Readers see the old file or the new one, never half of one.
  std::filesystem::path fresh = file_;
  fresh += fmt::format(".{}", getpid());
  std::ofstream stream{fresh, std::ios::binary | std::ios::trunc};
  stream << json.text() << '\n';
  stream.close();
  if (stream) {
    std::filesystem::rename(fresh, file_, error);
  }
  if (!stream || error) {
    std::filesystem::remove(fresh, error);
  }
}

}  // namespace quorvex
