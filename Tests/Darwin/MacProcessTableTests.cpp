#include <libproc.h>

#include <array>
#include <cstring>

#include "DarwinTest.h"
#include "MacProcessTable.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

class MacProcessTableTests : public DarwinTest {
 protected:
  MacProcessTable port;
};

TEST_F(MacProcessTableTests, ListIsAskedForWithTheBuffersBytes) {
  fake().listProcesses = [](void* buffer, int /*size*/) {
    const std::array<std::int32_t, 2> ids{1, 77};
    std::memcpy(buffer, ids.data(), sizeof ids);
    return static_cast<int>(sizeof ids);
  };
  std::vector<std::int32_t> ids(4096);
  EXPECT_EQ(port.listProcessIDs(ids), 8);
  EXPECT_EQ(ids[1], 77);
  EXPECT_THAT(calls(), ElementsAre("proc_listpids 1 0 16384"));
}

TEST_F(MacProcessTableTests, FailureOfTheListComesBack) {
  fake().listProcesses = [](void* /*buffer*/, int /*size*/) { return -1; };
  std::vector<std::int32_t> ids(4);
  EXPECT_EQ(port.listProcessIDs(ids), -1);
}

TEST_F(MacProcessTableTests, CountersAreTheRecordsFields) {
  fake().processUsage = [](int /*pid*/, void* buffer) {
    rusage_info_v6 record{};
    record.ri_user_time = 1;
    record.ri_system_time = 2;
    record.ri_pkg_idle_wkups = 3;
    record.ri_interrupt_wkups = 4;
    record.ri_diskio_bytesread = 5;
    record.ri_diskio_byteswritten = 6;
    record.ri_energy_nj = 7;
    std::memcpy(buffer, &record, sizeof record);
    return 0;
  };
  EXPECT_EQ(port.resources(77), (ProcessResources{.userTime = 1,
                                                  .systemTime = 2,
                                                  .idleWakeups = 3,
                                                  .interruptWakeups = 4,
                                                  .bytesRead = 5,
                                                  .bytesWritten = 6,
                                                  .energy = 7}));
  EXPECT_THAT(calls(), ElementsAre("proc_pid_rusage 77 6"));
}

TEST_F(MacProcessTableTests, RefusedCountersAreNone) {
  fake().processUsage = [](int /*pid*/, void* /*buffer*/) { return -1; };
  EXPECT_EQ(port.resources(1), std::nullopt);
}

TEST_F(MacProcessTableTests, NameIsWrittenToTheBuffer) {
  fake().processName = [](int /*pid*/, char* buffer, std::uint32_t /*size*/) {
    std::strcpy(buffer, "launchd");
    return 7;
  };
  std::array<char, 1024> name{};
  EXPECT_EQ(port.processName(1, name), 7);
  EXPECT_STREQ(name.data(), "launchd");
  EXPECT_THAT(calls(), ElementsAre("proc_name 1 1024"));
}

TEST_F(MacProcessTableTests, FailureOfTheNameComesBack) {
  fake().processName = [](int /*pid*/, char* /*buffer*/, std::uint32_t /*size*/) { return 0; };
  std::array<char, 16> name{};
  EXPECT_EQ(port.processName(1, name), 0);
}

}  // namespace
}  // namespace quorvex::darwin
