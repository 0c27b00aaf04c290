#include "MachineFile.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <memory>
#include <system_error>
#include <utility>

#include "ReaderParts.h"
#include "RecordReaders.h"
#include "StrictJSON.h"

namespace quorvex {

namespace {

using std::chrono::nanoseconds;

struct FileCloser {
  void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

/// The bytes of a file; else the error number of what failed.
std::variant<std::string, int> readFile(const std::string& path) {
  const std::unique_ptr<std::FILE, FileCloser> file{std::fopen(path.c_str(), "rbe")};
  if (!file) {
    return errno;
  }
  std::string text;
  std::array<char, 65536> buffer{};
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
    text.append(buffer.data(), count);
  }
  if (std::ferror(file.get()) != 0) {
    return errno;
  }
  return text;
}

Date readStart(StrictJSON& json) {
  const std::string text = json.string();
  const auto date = parseISO8601(text);
  if (!date || !text.ends_with('Z')) {
    json.fail("must be an ISO 8601 date and time in UTC, as \"2026-01-31T09:30:05Z\"");
  }
  return *date;
}

MachineFile::Pace readPace(StrictJSON& json) {
  const std::string word = json.string();
  if (word != "real" && word != "instant") {
    json.fail("must be \"real\" or \"instant\"");
  }
  return word == "real" ? MachineFile::Pace::real : MachineFile::Pace::instant;
}

MachineFile::AtEnd readAtEnd(StrictJSON& json) {
  const std::string word = json.string();
  if (word == "repeat") {
    return MachineFile::AtEnd::repeat;
  }
  if (word == "interrupt") {
    return MachineFile::AtEnd::interrupt;
  }
  if (word != "hold") {
    json.fail("must be \"hold\", \"repeat\" or \"interrupt\"");
  }
  return MachineFile::AtEnd::hold;
}

/// Reads one file.
class MachineFileReader {
 public:
  MachineFile read(std::string_view text) {
    StrictJSON::readDocument(text, [this](std::string_view key, StrictJSON& child) {
      if (key == "name") {
        file_.name = child.string();
      } else if (key == "startedAt") {
        file_.startedAt = readStart(child);
      } else if (key == "pace") {
        file_.pace = readPace(child);
      } else if (key == "atEnd") {
        file_.atEnd = readAtEnd(child);
      } else if (key == "duration") {
        duration_ = record_readers::readSeconds(child);
      } else if (key == "frames") {
        child.forEachElement(
            [this](std::size_t index, StrictJSON& frame) { readFrame(index, frame); });
        if (!lastAt_) {
          child.fail("must have at least one frame");
        }
      } else {
        child.fail("unknown key");
      }
    });
    if (!lastAt_) {
      throw StrictJSONError{"$.frames: missing"};
    }
    file_.duration = duration_.value_or(*lastAt_);
    if (file_.atEnd == MachineFile::AtEnd::repeat && file_.duration <= nanoseconds{0}) {
      throw StrictJSONError{"$.duration: must be above 0 when \"atEnd\" is \"repeat\""};
    }
    return std::move(file_);
  }

 private:
  using Stamp = std::function<void(nanoseconds at)>;

  void readFrame(std::size_t index, StrictJSON& frame) {
    std::optional<nanoseconds> at;
    std::optional<nanoseconds> suspended;
    // `at` may stand anywhere in its object: what was read before it waits for it.
    std::vector<Stamp> stamps;
    frame.forEachField([&](std::string_view key, StrictJSON& child) {
      if (key == "at") {
        at = readAt(index, child);
      } else if (key == "suspended") {
        suspended = record_readers::readSeconds(child);
        if (*suspended <= nanoseconds{0}) {
          child.fail("must be above 0");
        }
      } else if (auto stamp = readCarried(key, child)) {
        stamps.push_back(std::move(stamp));
      } else {
        child.fail("unknown key");
      }
    });
    lastAt_ = record_readers::required(frame, "at", at);
    for (const Stamp& stamp : stamps) {
      stamp(*lastAt_);
    }
    if (suspended) {
      file_.suspensions.push_back({.at = *lastAt_, .length = *suspended});
    }
  }

  [[nodiscard]] nanoseconds readAt(std::size_t index, StrictJSON& json) const {
    const nanoseconds at = record_readers::readSeconds(json);
    if (index == 0 && at != nanoseconds{0}) {
      json.fail("must be 0 in the first frame");
    }
    if (lastAt_ && at <= *lastAt_) {
      json.fail("must be above the one of the frame before");
    }
    return at;
  }

  /// Reads a key that a frame may carry; what comes back enters it into its track. Empty for a key
  /// that no frame has.
  Stamp readCarried(std::string_view key, StrictJSON& json) {
    using namespace record_readers;
    const auto carried = [&json](auto& track, auto reader) -> Stamp {
      return [&track, value = orNull(json, reader)](nanoseconds at) mutable {
        track.append(at, std::move(value));
      };
    };
    if (key == "registry") {
      return carried(file_.registry, readDictionary);
    }
    if (key == "powerSources") {
      return carried(file_.powerSources, readPowerSources);
    }
    if (key == "energyChannels") {
      return carried(file_.energyChannels, readEnergyChannels);
    }
    if (key == "smc") {
      return carried(file_.smc, readSMCKeys);
    }
    if (key == "hid") {
      return carried(file_.hid, readHIDServices);
    }
    if (key == "thermal") {
      return carried(file_.thermal, readThermal);
    }
    if (key == "interfaces") {
      return carried(file_.interfaces, readInterfaces);
    }
    if (key == "interfaceBuffer") {
      return carried(file_.interfaceBuffer, readHex);
    }
    if (key == "nettop") {
      return carried(file_.nettop, readNettop);
    }
    if (key == "processes") {
      return carried(file_.processes, readProcesses);
    }
    if (key == "helper") {
      return carried(file_.helper, readHelper);
    }
    if (key == "osascript") {
      return carried(file_.osascript, readScript);
    }
    return nullptr;
  }

  MachineFile file_;
  std::optional<nanoseconds> duration_;
  std::optional<nanoseconds> lastAt_;  ///< of the frame before
};

}  // namespace

std::variant<MachineFile, MachineFileError> parseMachineFile(std::string_view text,
                                                             const std::string& path) {
  try {
    return MachineFileReader{}.read(text);
  } catch (const StrictJSONError& error) {
    return MachineFileError{fmt::format("{}: {}", path, error.message)};
  }
}

std::variant<MachineFile, MachineFileError> loadMachineFile(const std::string& path) {
  const auto content = readFile(path);
  if (const int* errorNumber = std::get_if<int>(&content)) {
    return MachineFileError{
        fmt::format("{}: cannot be read: {}", path, std::generic_category().message(*errorNumber))};
  }
  return parseMachineFile(std::get<std::string>(content), path);
}

}  // namespace quorvex
