#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "AnyRecord.h"
#include "PowerSessionCoders.h"
#include "ProTelemetrySnapshot.h"
#include "ProcessActivityDTO.h"
#include "SystemPowerStateDTO.h"

// Whatever record is written is read back the same, from each table.

namespace quorvex {
namespace {

using samples::any;

template <typename Value>
void checkRoundTrip() {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(rc::check([&] {
    const Value value = any<Value>();
    for (const auto& encoder :
         {PowerSessionCoders::encoder(), PowerSessionCoders::prettyEncoder()}) {
      const auto json = encoder.encode(value);
      RC_ASSERT(json.hasValue());
      const auto read = decoder.template decode<Value>(*json);
      RC_ASSERT(read.hasValue());
      RC_ASSERT(*read == value);
      RC_ASSERT(*encoder.encode(*read) == *json);
    }
  }));
}

TEST(RecordRoundTripTests, SystemPowerStates) {
  checkRoundTrip<SystemPowerStateDTO>();
}
TEST(RecordRoundTripTests, Batteries) {
  checkRoundTrip<BatteryInfoDTO>();
}
TEST(RecordRoundTripTests, PowerMetrics) {
  checkRoundTrip<PowerMetricsDTO>();
}
TEST(RecordRoundTripTests, ThermalStates) {
  checkRoundTrip<ThermalInfoDTO>();
}
TEST(RecordRoundTripTests, Fans) {
  checkRoundTrip<FanInfoDTO>();
}
TEST(RecordRoundTripTests, Networks) {
  checkRoundTrip<NetworkSnapshotDTO>();
}
TEST(RecordRoundTripTests, ProcessActivities) {
  checkRoundTrip<std::vector<ProcessActivityDTO>>();
}
TEST(RecordRoundTripTests, PrivilegedSnapshots) {
  checkRoundTrip<ProTelemetrySnapshot>();
}
TEST(RecordRoundTripTests, TemperatureReplies) {
  checkRoundTrip<std::vector<TemperatureSensor>>();
}

TEST(RecordRoundTripTests, ARecordUsedAgainReadsLikeANewOne) {
  auto decoder = PowerSessionCoders::decoder();
  SystemPowerStateDTO used;
  EXPECT_TRUE(rc::check([&] {
    const auto value = any<SystemPowerStateDTO>();
    RC_ASSERT(decoder.decodeInto(used, *PowerSessionCoders::encoder().encode(value)));
    RC_ASSERT(used == value);
  }));
}

TEST(RecordRoundTripTests, AnyTextIsReadOrRefusedButNeverBreaksTheReader) {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(rc::check([&] {
    std::string json = *PowerSessionCoders::encoder().encode(any<SystemPowerStateDTO>());
    const auto changes = *rc::gen::inRange(1, 4);
    for (int i = 0; i < changes && !json.empty(); ++i) {
      const auto at = *rc::gen::inRange<std::size_t>(0, json.size());
      json[at] = *rc::gen::elementOf(std::string{"{}[]\",:0 \\tn"});
    }
    const auto read = decoder.decode<SystemPowerStateDTO>(json);
    // What is accepted can be written and read again.
    if (read) {
      const auto again = PowerSessionCoders::encoder().encode(*read);
      RC_ASSERT(again.hasValue());
      RC_ASSERT(decoder.decode<SystemPowerStateDTO>(*again).hasValue());
    }
  }));
}

}  // namespace
}  // namespace quorvex
