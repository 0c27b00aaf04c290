#include "SystemTree.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <memory>
#include <system_error>

#include "FileDescriptor.h"

namespace quorvex::system_tree {

namespace {

std::string_view withoutBlanks(std::string_view text) {
  constexpr std::string_view blanks = " \t\n\v\f\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <typename Number>
std::optional<Number> parseNumber(std::string_view text) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc{} || stop != end) {
    return std::nullopt;
  }
  return number;
}

}  // namespace

std::optional<std::string> readFile(const std::string& path) {
  const FileDescriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC)};
  if (!file) {
    return std::nullopt;
  }
  std::string text;
  std::array<char, 4096> chunk;
  while (true) {
    const ssize_t count = read(file.get(), chunk.data(), chunk.size());
    if (count == 0) {
      return text;
    }
    if (count > 0) {
      text.append(chunk.data(), static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return std::nullopt;
    }
  }
}

std::optional<std::string> readWord(const std::string& path) {
  const std::optional<std::string> text = readFile(path);
  const std::string_view word = text ? withoutBlanks(*text) : std::string_view{};
  return word.empty() ? std::nullopt : std::optional{std::string{word}};
}

std::optional<std::int64_t> readInteger(const std::string& path) {
  const std::optional<std::string> word = readWord(path);
  return word ? parseInteger(*word) : std::nullopt;
}

std::optional<std::uint64_t> readCounter(const std::string& path) {
  const std::optional<std::string> word = readWord(path);
  return word ? parseCounter(*word) : std::nullopt;
}

std::optional<std::int64_t> parseInteger(std::string_view text) {
  return parseNumber<std::int64_t>(text);
}

std::optional<std::uint64_t> parseCounter(std::string_view text) {
  return parseNumber<std::uint64_t>(text);
}

std::optional<std::string> linkTarget(const std::string& path) {
  std::error_code error;
  const std::filesystem::path target = std::filesystem::read_symlink(path, error);
  return error ? std::nullopt : std::optional{target.string()};
}

std::optional<std::vector<std::string>> listFolder(const std::string& path) {
  struct Closer {
    void operator()(DIR* folder) const { closedir(folder); }
  };
  const std::unique_ptr<DIR, Closer> folder{opendir(path.c_str())};
  if (!folder) {
    return std::nullopt;
  }
  std::vector<std::string> names;
  while (const dirent* entry = readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") {
      names.emplace_back(name);
    }
  }
  std::ranges::sort(names, [](const std::string& left, const std::string& right) {
    return left.size() != right.size() ? left.size() < right.size() : left < right;
  });
  return names;
}

std::vector<std::string> folderNames(const std::string& path) {
  return listFolder(path).value_or(std::vector<std::string>{});
}

}  // namespace quorvex::system_tree
