#include "DarwinTest.h"
#include "MacEnergyLibrary.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* firstPath = "/usr/lib/libIOReport.dylib";

class MacEnergyLibraryTests : public DarwinTest {
 protected:
  MacEnergyLibraryTests() { fake().libraries = {firstPath}; }

  std::unique_ptr<EnergyEntryPoints> opened() {
    auto entryPoints = port.open();
    calls();
    return entryPoints;
  }
  /// The delta of two samples of all channels.
  static PlatformObject deltaOf(EnergyEntryPoints& library) {
    const PlatformObject channels = library.copyChannelsInGroup("Energy Model", std::nullopt);
    const EnergySubscription subscription = library.createSubscription(channels);
    const PlatformObject first =
        library.createSamples(subscription.subscription, subscription.channels);
    const PlatformObject second =
        library.createSamples(subscription.subscription, subscription.channels);
    return library.createSamplesDelta(first, second);
  }
  static void withoutOptionalSymbols() {
    fake().missingSymbols = {"IOReportChannelGetCount", "IOReportChannelGetChannelEntry"};
  }

  MacEnergyLibrary port{loader};
};

TEST_F(MacEnergyLibraryTests, PathsAreTriedInTheirOrder) {
  fake().libraries = {};
  EXPECT_EQ(port.open(), nullptr);
  EXPECT_THAT(
      calls(),
      ElementsAre("open /usr/lib/libIOReport.dylib lazy",
                  "open /System/Library/PrivateFrameworks/IOReport.framework/IOReport lazy",
                  "open /System/Library/PrivateFrameworks/IOReport.framework/Versions/A/IOReport "
                  "lazy",
                  "open libIOReport.dylib lazy", "open IOReport lazy"));
}

TEST_F(MacEnergyLibraryTests, FirstPathThatOpensEndsTheSearch) {
  fake().libraries = {"libIOReport.dylib", "IOReport"};
  EXPECT_NE(port.open(), nullptr);
  EXPECT_EQ(calls().at(3), "open libIOReport.dylib lazy");
  EXPECT_EQ(fake().openCount("library"), 0) << "closed with its entry points";
}

TEST_F(MacEnergyLibraryTests, SymbolsAreLookedUpInTheirOrderRequiredOnesFirst) {
  const auto library = port.open();
  EXPECT_THAT(
      calls(),
      ElementsAre("open /usr/lib/libIOReport.dylib lazy", "symbol IOReportCopyChannelsInGroup",
                  "symbol IOReportCreateSubscription", "symbol IOReportCreateSamples",
                  "symbol IOReportCreateSamplesDelta", "symbol IOReportChannelGetGroup",
                  "symbol IOReportChannelGetChannelName", "symbol IOReportSimpleGetIntegerValue",
                  "symbol IOReportChannelGetCount", "symbol IOReportChannelGetChannelEntry"));
}

TEST_F(MacEnergyLibraryTests, EveryMissingRequiredSymbolClosesTheLibraryAtOnce) {
  const std::vector<std::string> required{
      "IOReportCopyChannelsInGroup",  "IOReportCreateSubscription", "IOReportCreateSamples",
      "IOReportCreateSamplesDelta",   "IOReportChannelGetGroup",    "IOReportChannelGetChannelName",
      "IOReportSimpleGetIntegerValue"};
  fake().libraries = {firstPath, "IOReport"};
  for (const std::string& symbol : required) {
    fake().missingSymbols = {symbol};
    EXPECT_EQ(port.open(), nullptr) << symbol;
    const auto made = calls();
    EXPECT_EQ(made.at(made.size() - 2), "symbol " + symbol) << "nothing is looked up after it";
    EXPECT_EQ(made.back(), "close");
  }
}

TEST_F(MacEnergyLibraryTests, MissingOptionalSymbolsAreNoError) {
  for (const char* symbol : {"IOReportChannelGetCount", "IOReportChannelGetChannelEntry"}) {
    fake().missingSymbols = {symbol};
    EXPECT_NE(port.open(), nullptr) << symbol;
  }
}

TEST_F(MacEnergyLibraryTests, ChannelsOfADeltaAreEnumerated) {
  fake().delta = channelList({{"CPU Energy", 320'000'000}, {"GPU Energy", -5}, {std::nullopt, 7}});
  const auto library = opened();
  const PlatformObject delta = deltaOf(*library);
  ASSERT_EQ(library->channelCount(delta), 3);
  EXPECT_EQ(library->channelName(library->channelEntry(delta, 0)), "CPU Energy");
  EXPECT_EQ(library->channelGroup(library->channelEntry(delta, 0)), "Energy Model");
  EXPECT_EQ(library->simpleIntegerValue(library->channelEntry(delta, 0), 0), 320'000'000);
  EXPECT_EQ(library->simpleIntegerValue(library->channelEntry(delta, 1), 0), -5);
  EXPECT_EQ(library->channelName(library->channelEntry(delta, 2)), std::nullopt);
}

TEST_F(MacEnergyLibraryTests, CallsAreMadeInTheirOrderWithTheGroupsName) {
  fake().delta = channelList({});
  const auto library = opened();
  static_cast<void>(deltaOf(*library));
  EXPECT_THAT(calls(), ElementsAre("IOReportCopyChannelsInGroup Energy Model (null)",
                                   "IOReportCreateSubscription", "IOReportCreateSamples",
                                   "IOReportCreateSamples", "IOReportCreateSamplesDelta"));
}

TEST_F(MacEnergyLibraryTests, SubgroupIsPassedOnWhenItIsGiven) {
  const auto library = opened();
  static_cast<void>(library->copyChannelsInGroup("Group", "Sub"));
  EXPECT_THAT(calls(), ElementsAre("IOReportCopyChannelsInGroup Group Sub"));
}

TEST_F(MacEnergyLibraryTests, EachFailureIsNull) {
  const auto library = opened();
  const PlatformObject object = library->copyChannelsInGroup("Energy Model", std::nullopt);
  ASSERT_NE(object, nullptr);
  fake().channelsInGroup = nothing();
  EXPECT_EQ(library->copyChannelsInGroup("Energy Model", std::nullopt), nullptr);
  fake().samples = nothing();
  EXPECT_EQ(library->createSamples(object, object), nullptr);
  fake().delta = nothing();
  EXPECT_EQ(library->createSamplesDelta(object, object), nullptr);
}

TEST_F(MacEnergyLibraryTests, HalfASubscriptionIsReleased) {
  const auto library = opened();
  const PlatformObject channels = library->copyChannelsInGroup("Energy Model", std::nullopt);
  fake().subscribedChannels = nothing();
  EnergySubscription half = library->createSubscription(channels);
  EXPECT_NE(half.subscription, nullptr);
  EXPECT_EQ(half.channels, nullptr);
  fake().subscribedChannels = other();
  fake().subscription = nothing();
  half = library->createSubscription(channels);
  EXPECT_EQ(half.subscription, nullptr);
  EXPECT_NE(half.channels, nullptr);
}

TEST_F(MacEnergyLibraryTests, WithoutOptionalSymbolsTheChannelArrayIsWalked) {
  withoutOptionalSymbols();
  fake().delta = channelList({{"CPU Energy", 1}, {"DRAM0", 2}});
  const auto library = opened();
  const PlatformObject delta = deltaOf(*library);
  calls();
  ASSERT_EQ(library->channelCount(delta), 2);
  EXPECT_EQ(library->channelName(library->channelEntry(delta, 1)), "DRAM0");
  EXPECT_EQ(library->channelEntry(delta, -1), nullptr);
  EXPECT_EQ(library->channelEntry(delta, 2), nullptr);
  EXPECT_THAT(calls(), IsEmpty()) << "the functions that are missing are not called";
}

TEST_F(MacEnergyLibraryTests, OptionalSymbolsGoBeforeTheArray) {
  fake().delta = channelList({{"CPU Energy", 1}});
  const auto library = opened();
  const PlatformObject delta = deltaOf(*library);
  calls();
  EXPECT_EQ(library->channelCount(delta), 1);
  EXPECT_NE(library->channelEntry(delta, 0), nullptr);
  EXPECT_THAT(calls(), ElementsAre("IOReportChannelGetCount", "IOReportChannelGetChannelEntry"));
}

TEST_F(MacEnergyLibraryTests, EachOptionalSymbolIsReplacedByItself) {
  fake().delta = channelList({{"CPU Energy", 1}, {"DRAM0", 2}});
  for (const char* symbol : {"IOReportChannelGetCount", "IOReportChannelGetChannelEntry"}) {
    fake().missingSymbols = {symbol};
    const auto library = opened();
    const PlatformObject delta = deltaOf(*library);
    calls();
    EXPECT_EQ(library->channelCount(delta), 2) << symbol;
    EXPECT_EQ(library->channelName(library->channelEntry(delta, 1)), "DRAM0") << symbol;
    EXPECT_THAT(calls(), ::testing::SizeIs(1)) << "the one that is there";
  }
}

TEST_F(MacEnergyLibraryTests, DictionaryWithoutAChannelArrayHasNoChannels) {
  withoutOptionalSymbols();
  const auto library = opened();
  for (const Make& delta :
       {dictionary(Entries{}), dictionary(Entries{{"IOReportChannels", text(u"none")}})}) {
    fake().delta = delta;
    const PlatformObject object = deltaOf(*library);
    EXPECT_EQ(library->channelCount(object), 0);
    EXPECT_EQ(library->channelEntry(object, 0), nullptr);
  }
}

TEST_F(MacEnergyLibraryTests, NameThatIsNoStringIsNone) {
  fake().delta = dictionary(
      Entries{{"IOReportChannels",
               array({other({number(std::int64_t{1}), boolean(true), number(std::int64_t{2})})})}});
  const auto library = opened();
  const PlatformObject delta = deltaOf(*library);
  EXPECT_EQ(library->channelName(library->channelEntry(delta, 0)), std::nullopt);
  EXPECT_EQ(library->channelGroup(library->channelEntry(delta, 0)), std::nullopt);
}

}  // namespace
}  // namespace quorvex::darwin
