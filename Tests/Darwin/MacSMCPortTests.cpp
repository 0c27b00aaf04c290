#include <cstring>

#include "DarwinTest.h"
#include "MacSMCPort.h"
#include "SystemSMC.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

class MacSMCPortTests : public DarwinTest {
 protected:
  MacSMCPort port;
};

TEST_F(MacSMCPortTests, ConnectionIsOpenedWithItsTypeAndTheServiceReleased) {
  const auto connection = port.open();
  ASSERT_TRUE(connection);
  EXPECT_THAT(calls(), ElementsAre("IOServiceMatching AppleSMC", "IOServiceGetMatchingService",
                                   "IOServiceOpen 2", "IOObjectRelease"));
  port.close(*connection);
  EXPECT_THAT(calls(), ElementsAre("IOServiceClose"));
}

TEST_F(MacSMCPortTests, WithoutTheServiceThereIsNoConnection) {
  fake().hasSMCService = false;
  EXPECT_EQ(port.open(), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre("IOServiceMatching AppleSMC", "IOServiceGetMatchingService"));
}

TEST_F(MacSMCPortTests, RefusedConnectionIsNoneAndTheServiceIsReleased) {
  fake().connectionResult = -536870203;
  EXPECT_EQ(port.open(), std::nullopt);
  EXPECT_EQ(calls().back(), "IOObjectRelease");
}

TEST_F(MacSMCPortTests, OneCallTakes80BytesInAndOut) {
  fake().smcCall = [](const void* input, void* output) {
    SMCKeyRecord record;
    std::memcpy(&record, input, sizeof record);
    EXPECT_EQ(record.key, 0x464E756DU) << "FNum";
    record.dataSize = 1;
    record.bytes[0] = 2;
    std::memcpy(output, &record, sizeof record);
    return 0;
  };
  const auto connection = port.open();
  calls();
  SMCKeyRecord input{.key = 0x464E756D};
  input.command = SMCKeyRecord::readKeyInfoCommand;
  SMCKeyRecord output;
  EXPECT_EQ(port.call(*connection, input, output), 0);
  EXPECT_EQ(output.bytes[0], 2);
  EXPECT_EQ(output.command, SMCKeyRecord::readKeyInfoCommand);
  EXPECT_THAT(calls(), ElementsAre("IOConnectCallStructMethod 2 80 80"));
  port.close(*connection);
}

TEST_F(MacSMCPortTests, OutputIsZeroedBeforeTheCallAndTheKernelsErrorComesBack) {
  constexpr int notFound = static_cast<int>(0xE00002F0);
  fake().smcCall = [](const void* /*input*/, void* output) {
    SMCKeyRecord zeroed;
    EXPECT_EQ(std::memcmp(output, &zeroed, sizeof zeroed), 0);
    return notFound;
  };
  const auto connection = port.open();
  SMCKeyRecord output;
  output.dataSize = 7;
  EXPECT_EQ(port.call(*connection, SMCKeyRecord{}, output), notFound);
  port.close(*connection);
}

TEST_F(MacSMCPortTests, HelperToolReadsThisSMC) {
  const auto smc = systemSMC();
  const auto connection = smc->open();
  ASSERT_TRUE(connection);
  smc->close(*connection);
}

}  // namespace
}  // namespace quorvex::darwin
