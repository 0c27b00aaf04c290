#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "Objects.h"

namespace quorvex::darwin {

/// What the Darwin that the tests run on answers, and what was asked of it. The functions that
/// adapters call are defined over the one instance of it; a test sets answers before it calls and
/// looks at the log after. One thread.
struct FakeDarwin {
  FakeDarwin();
  FakeDarwin(const FakeDarwin&) = delete;
  FakeDarwin& operator=(const FakeDarwin&) = delete;
  ~FakeDarwin() = default;

  /// The calls in their order, with what matters of their arguments.
  std::vector<std::string> calls;
  bool isLogging = true;  ///< off for long runs
  /// Uses of dead objects and handles, releases too many, temporaries outside of any pool.
  std::vector<std::string> faults;
  /// Handles that are open: services, connections, tokens, libraries.
  std::map<std::string, std::int64_t> open;
  std::int64_t pools = 0;  ///< autorelease pools that are open

  // Battery.
  bool hasBatteryService = true;
  int propertiesResult = 0;
  Make properties = nothing();
  bool hasPowerSnapshot = true;
  bool hasPowerList = true;
  std::vector<Make> powerSources;  ///< a source's description; null for none

  // SMC.
  bool hasSMCService = true;
  int connectionResult = 0;
  std::function<int(const void* input, void* output)> smcCall;

  // Loader.
  std::set<std::string> libraries;       ///< paths that can be loaded; "" is the process itself
  std::set<std::string> missingSymbols;  ///< of those that libraries have

  // IOReport.
  Make channelsInGroup = other();
  Make subscription = other();
  Make subscribedChannels = other();
  Make samples = other();
  Make delta = nothing();

  // HID event system.
  bool hasHIDClient = true;
  struct HIDService {
    Make product = nothing();
    std::optional<double> value;  ///< none: no event
  };
  std::optional<std::vector<HIDService>> hidServices = std::vector<HIDService>{};

  // Notifications.
  std::uint32_t registerStatus = 0;
  std::uint32_t stateStatus = 0;
  std::uint64_t pressure = 0;

  // Objective-C.
  bool hasProcessInfo = true;
  std::int64_t thermalState = 0;
  bool isLowPowerModeEnabled = false;
  bool hasLoginItems = true;
  std::int64_t loginItemStatus = 0;
  std::optional<std::string> loginItemError;
  bool isErrorDescribed = true;  ///< else the error object has no description

  // Kernel. Each gives what the call returns.
  std::function<int(void* buffer, std::size_t* size)> readInterfaceList;
  std::function<std::optional<std::string>(unsigned index)> interfaceName;
  std::function<int(void* buffer, int size)> listProcesses;
  std::function<int(int pid, void* record)> processUsage;
  std::function<int(int pid, char* buffer, std::uint32_t size)> processName;

  // Preferences.
  std::map<std::string, Make> preferences;

  // Clocks, in nanoseconds. A sleep moves both; without a test's own functions they stand still
  // between sleeps.
  std::uint64_t elapsed = 0;
  std::function<std::uint64_t()> wallClock;
  std::function<std::uint64_t()> continuousClock;
  std::function<void(std::uint64_t nanoseconds)> sleep;
  bool hasQueues = true;
  int processEventError = 0;  ///< the error number of watching a process; 0: it is watched
  int interruptedWaits = 0;   ///< that many waits for a timer end at once, by a signal

  // Directories.
  std::vector<std::string> applicationSupport;

  void note(const std::string& call);
  void fault(const std::string& what);
  void opened(const std::string& kind) { ++open[kind]; }
  /// A close of what is not open is a fault.
  void closed(const std::string& kind) {
    if (open[kind]-- <= 0) {
      fault("closed without being open: " + kind);
    }
  }
  [[nodiscard]] std::int64_t openCount(const std::string& kind) const {
    const auto found = open.find(kind);
    return found != open.end() ? found->second : 0;
  }
};

/// The one instance. `reset` puts a new one in its place.
[[nodiscard]] FakeDarwin& fake();
void reset();

/// Gives an object to the innermost autorelease pool.
[[nodiscard]] CFTypeRef autoreleased(CFTypeRef object);

/// A sample or delta with channels; a channel's name may be null.
struct Channel {
  std::optional<std::string> name;
  std::int64_t value = 0;
  std::optional<std::string> group = "Energy Model";
};
[[nodiscard]] Make channelList(std::vector<Channel> channels);

}  // namespace quorvex::darwin
