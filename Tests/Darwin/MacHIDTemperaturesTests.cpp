#include "DarwinTest.h"
#include "MacHIDTemperatures.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

const std::vector<std::string>& symbols() {
  static const std::vector<std::string> names{
      "IOHIDEventSystemClientCreate",       "IOHIDEventSystemClientSetMatching",
      "IOHIDEventSystemClientCopyServices", "IOHIDServiceClientCopyProperty",
      "IOHIDServiceClientCopyEvent",        "IOHIDEventGetFloatValue"};
  return names;
}

class MacHIDTemperaturesTests : public DarwinTest {
 protected:
  MacHIDTemperaturesTests() { fake().libraries = {""}; }

  MacHIDTemperatures port{loader};
};

TEST_F(MacHIDTemperaturesTests, ClientIsMadeOnceAllSymbolsAreFoundAndMatchesTemperatureSensors) {
  librariesThatStay = 1;
  const auto client = port.open();
  ASSERT_NE(client, nullptr);
  EXPECT_THAT(calls(), ElementsAre("open (process) now", "symbol " + symbols()[0],
                                   "symbol " + symbols()[1], "symbol " + symbols()[2],
                                   "symbol " + symbols()[3], "symbol " + symbols()[4],
                                   "symbol " + symbols()[5], "IOHIDEventSystemClientCreate",
                                   "IOHIDEventSystemClientSetMatching 65280 5"));
}

TEST_F(MacHIDTemperaturesTests, ProcessWithoutASymbolScopeHasNoClient) {
  fake().libraries = {};
  EXPECT_EQ(port.open(), nullptr);
  EXPECT_THAT(calls(), ElementsAre("open (process) now"));
}

TEST_F(MacHIDTemperaturesTests, EveryMissingSymbolClosesTheHandleAtOnce) {
  for (const std::string& symbol : symbols()) {
    fake().missingSymbols = {symbol};
    EXPECT_EQ(port.open(), nullptr) << symbol;
    const auto made = calls();
    EXPECT_EQ(made.at(made.size() - 2), "symbol " + symbol) << "nothing is looked up after it";
    EXPECT_EQ(made.back(), "close");
  }
}

TEST_F(MacHIDTemperaturesTests, RefusedClientClosesTheHandle) {
  fake().hasHIDClient = false;
  EXPECT_EQ(port.open(), nullptr);
  EXPECT_EQ(calls().back(), "close");
}

TEST_F(MacHIDTemperaturesTests, FailedAttemptIsRepeatedFromTheStart) {
  librariesThatStay = 1;
  fake().hasHIDClient = false;
  EXPECT_EQ(port.open(), nullptr);
  fake().hasHIDClient = true;
  EXPECT_NE(port.open(), nullptr);
}

TEST_F(MacHIDTemperaturesTests, ServicesComeInTheirOrderWithOneEventEach) {
  librariesThatStay = 1;
  fake().hidServices = {{text(u"PMU tdie1"), 45.5}, {text(u"NAND CH0 temp"), 30.25}};
  const auto client = port.open();
  calls();
  const auto services = client->copyServices();
  ASSERT_TRUE(services);
  ASSERT_EQ(services->size(), 2U);
  EXPECT_EQ(services->at(0).product, "PMU tdie1");
  EXPECT_EQ(services->at(0).value, 45.5);
  EXPECT_EQ(services->at(1).product, "NAND CH0 temp");
  EXPECT_EQ(services->at(1).value, 30.25);
  EXPECT_THAT(
      calls(),
      ElementsAre("IOHIDEventSystemClientCopyServices", "IOHIDServiceClientCopyProperty Product",
                  "IOHIDServiceClientCopyEvent 15 0 0", "IOHIDEventGetFloatValue 983040",
                  "IOHIDServiceClientCopyProperty Product", "IOHIDServiceClientCopyEvent 15 0 0",
                  "IOHIDEventGetFloatValue 983040"));
}

TEST_F(MacHIDTemperaturesTests, ProductThatIsMissingOrNoStringIsNone) {
  librariesThatStay = 1;
  fake().hidServices = {{nothing(), 40.0}, {number(std::int64_t{5}), 41.0}, {array({}), 42.0}};
  const auto services = port.open()->copyServices();
  ASSERT_TRUE(services);
  for (const auto& service : *services) {
    EXPECT_EQ(service.product, std::nullopt);
    EXPECT_TRUE(service.value);
  }
}

TEST_F(MacHIDTemperaturesTests, ServiceWithoutAnEventHasNoValue) {
  librariesThatStay = 1;
  fake().hidServices = {{text(u"Silent"), std::nullopt}};
  const auto client = port.open();
  calls();
  const auto services = client->copyServices();
  ASSERT_TRUE(services);
  EXPECT_EQ(services->at(0).value, std::nullopt);
  EXPECT_THAT(calls(), Not(::testing::Contains("IOHIDEventGetFloatValue 983040")));
}

TEST_F(MacHIDTemperaturesTests, ListThatCannotBeCopiedIsNoneAndAnEmptyOneEmpty) {
  librariesThatStay = 1;
  const auto client = port.open();
  EXPECT_THAT(client->copyServices(), ::testing::Optional(IsEmpty()));
  fake().hidServices = std::nullopt;
  EXPECT_EQ(client->copyServices(), std::nullopt);
}

}  // namespace
}  // namespace quorvex::darwin
