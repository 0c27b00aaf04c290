#include "MacSMCPort.h"

#include <IOKit/IOKitLib.h>
#include <mach/mach.h>

#include <type_traits>

#include "IOKitObject.h"

namespace quorvex {

namespace {

constexpr std::uint32_t connectionType = 2;
constexpr std::uint32_t keySelector = 2;

static_assert(std::is_same_v<io_connect_t, SMCPort::Connection>);
static_assert(sizeof(SMCKeyRecord) == 80 && alignof(SMCKeyRecord) == 4);
static_assert(std::is_trivially_copyable_v<SMCKeyRecord> &&
              std::is_standard_layout_v<SMCKeyRecord>);

}  // namespace

std::optional<SMCPort::Connection> MacSMCPort::open() {
  const IOKitObject service{
      IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching("AppleSMC"))};
  if (!service) {
    return std::nullopt;
  }
  io_connect_t connection = 0;
  if (IOServiceOpen(service.get(), mach_task_self(), connectionType, &connection) != 0) {
    return std::nullopt;
  }
  return connection;
}

void MacSMCPort::close(Connection connection) {
  IOServiceClose(connection);
}

int MacSMCPort::call(Connection connection, const SMCKeyRecord& input, SMCKeyRecord& output) {
  std::size_t outputSize = sizeof output;
  output = {};
  return IOConnectCallStructMethod(connection, keySelector, &input, sizeof input, &output,
                                   &outputSize);
}

}  // namespace quorvex
