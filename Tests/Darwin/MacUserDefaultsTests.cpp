#include <limits>

#include "DarwinTest.h"
#include "MacUserDefaults.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacUserDefaultsTests : public DarwinTest {
 protected:
  MacUserDefaults port;
};

TEST_F(MacUserDefaultsTests, ValuesKeepTheirTypes) {
  fake().preferences = {{"refreshInterval", number(2.5)},
                        {"count", number(std::int64_t{3})},
                        {"showBattery", boolean(false)},
                        {"menuGraphMode", text(u"power")}};
  EXPECT_EQ(port.value("refreshInterval"), UserDefaultsValue{2.5});
  EXPECT_EQ(port.value("count"), UserDefaultsValue{std::int64_t{3}});
  EXPECT_EQ(port.value("showBattery"), UserDefaultsValue{false});
  EXPECT_EQ(port.value("menuGraphMode"), UserDefaultsValue{std::string{"power"}});
}

TEST_F(MacUserDefaultsTests, MissingKeyAndAnotherTypeAreNone) {
  fake().preferences = {{"list", array({})}, {"nested", dictionary(Entries{})}};
  EXPECT_EQ(port.value("missing"), std::nullopt);
  EXPECT_EQ(port.value("list"), std::nullopt);
  EXPECT_EQ(port.value("nested"), std::nullopt);
}

TEST_F(MacUserDefaultsTests, WrittenValuesComeBackAsTheyWere) {
  const std::vector<UserDefaultsValue> values{true, false, std::numeric_limits<std::int64_t>::min(),
                                              2.0, std::string{"Gr\u00f6\u00dfe"}};
  for (const UserDefaultsValue& value : values) {
    port.setValue("key", value);
    EXPECT_EQ(port.value("key"), value);
  }
}

TEST_F(MacUserDefaultsTests, EveryWriteIsMadeDurable) {
  port.setValue("key", true);
  EXPECT_THAT(calls(), ElementsAre("CFPreferencesSetAppValue key kCFPreferencesCurrentApplication",
                                   "CFPreferencesAppSynchronize kCFPreferencesCurrentApplication"));
}

TEST_F(MacUserDefaultsTests, RemovedValueIsGone) {
  port.setValue("key", true);
  port.removeValue("key");
  EXPECT_EQ(port.value("key"), std::nullopt);
  EXPECT_THAT(fake().preferences, IsEmpty());
}

TEST_F(MacUserDefaultsTests, TextThatIsNoUTF8IsNeitherKeyNorValue) {
  port.setValue("\xFF", true);
  port.setValue("key", std::string{"\xFF"});
  EXPECT_EQ(port.value("\xFF"), std::nullopt);
  EXPECT_THAT(fake().preferences, IsEmpty());
}

TEST_F(MacUserDefaultsTests, BooleanReadsTakeNumbersForWhetherTheyAreNot0) {
  fake().preferences = {{"yes", boolean(true)},
                        {"one", number(std::int64_t{1})},
                        {"zero", number(0.0)},
                        {"text", text(u"YES")}};
  EXPECT_TRUE(port.boolean("yes", false));
  EXPECT_TRUE(port.boolean("one", false));
  EXPECT_FALSE(port.boolean("zero", true));
  EXPECT_TRUE(port.boolean("text", true));
  EXPECT_FALSE(port.boolean("missing", false));
}

TEST_F(MacUserDefaultsTests, NumberReadsTakeNothingButNumbers) {
  fake().preferences = {{"whole", number(std::int64_t{3})},
                        {"half", number(0.5)},
                        {"flag", boolean(true)},
                        {"text", text(u"2.0")}};
  EXPECT_EQ(port.number("whole"), 3.0);
  EXPECT_EQ(port.number("half"), 0.5);
  EXPECT_EQ(port.number("flag"), std::nullopt);
  EXPECT_EQ(port.number("text"), std::nullopt);
  EXPECT_EQ(port.text("text"), "2.0");
  EXPECT_EQ(port.text("whole"), std::nullopt);
}

}  // namespace
}  // namespace quorvex::darwin
