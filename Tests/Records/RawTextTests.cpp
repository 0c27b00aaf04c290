#include <gtest/gtest.h>

#include <string_view>
#include <vector>

#include "BatteryInfo.h"
#include "NetworkSnapshot.h"
#include "PowerReading.h"
#include "RawEnum.h"
#include "ThermalInfo.h"

namespace quorvex {
namespace {

/// Checks that an enum's cases have exactly these texts in order, and that they read back.
template <typename Enum>
void expectTexts(const std::vector<std::string_view>& texts) {
  ASSERT_EQ(RawTexts<Enum>::values.size(), texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const auto value = static_cast<Enum>(i);
    EXPECT_EQ(rawValue(value), texts[i]);
    EXPECT_EQ(fromRawValue<Enum>(texts[i]), value);
  }
  EXPECT_EQ(fromRawValue<Enum>("no such case"), std::nullopt);
  EXPECT_EQ(fromRawValue<Enum>(""), std::nullopt);
}

TEST(RawText, CasesCarryTheirNames) {
  expectTexts<BatteryTimeRemainingKind>({"untilEmpty", "untilFull"});
  expectTexts<ThermalState>({"nominal", "fair", "serious", "critical"});
  expectTexts<NetworkAttributionSource>({"none", "nettop"});
  expectTexts<PowerReadingKind>(
      {"batteryDischarge", "batteryChargeInput", "batterySupplement", "ioReportSiliconPower"});
  expectTexts<PowerReadingConfidence>({"batteryTerminal", "ioReport"});
}

TEST(RawText, ReadingIsCaseSensitive) {
  EXPECT_EQ(fromRawValue<ThermalState>("Nominal"), std::nullopt);
}

TEST(ThermalState, LaterCasesAreWorse) {
  EXPECT_LT(ThermalState::nominal, ThermalState::fair);
  EXPECT_LT(ThermalState::fair, ThermalState::serious);
  EXPECT_LT(ThermalState::serious, ThermalState::critical);
  EXPECT_EQ(static_cast<int>(ThermalState::critical), 3);
}

}  // namespace
}  // namespace quorvex
