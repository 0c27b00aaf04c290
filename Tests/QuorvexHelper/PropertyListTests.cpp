#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "PropertyList.h"

namespace quorvex {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string plist(const std::string& value) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
         "<plist version=\"1.0\">" +
         value + "</plist>\n";
}

PropertyListValue parsed(const std::string& value) {
  auto result = parsePropertyList(plist(value));
  EXPECT_TRUE(result) << result.error().description;
  return result ? *std::move(result) : PropertyListValue{};
}

std::string problem(const std::string& xml) {
  const auto result = parsePropertyList(xml);
  return result ? "parsed" : result.error().description;
}

std::string nested(int depth) {
  std::string opening;
  std::string closing;
  for (int i = 0; i < depth; ++i) {
    opening.append("<array>");
    closing.append("</array>");
  }
  return opening + "<true/>" + closing;
}

TEST(PropertyList, ReadsEachTypeOfValue) {
  const auto root = parsed(
      "<dict><key>i</key><integer>-7</integer><key>r</key><real>2.5</real>"
      "<key>s</key><string>a &lt;b&gt; &amp; &#xfc;</string>"
      "<key>d</key><date>2026-01-31T09:30:05Z</date>"
      "<key>a</key><array><integer>1</integer><integer>2</integer></array>"
      "<key>t</key><true/><key>f</key><false/><key>x</key><data>AAAA</data></dict>");
  EXPECT_EQ(root.find("i")->integer(), -7);
  EXPECT_EQ(root.find("i")->number(), -7.0);
  EXPECT_EQ(root.find("r")->number(), 2.5);
  EXPECT_EQ(root.find("r")->integer(), std::nullopt);
  EXPECT_EQ(*root.find("s")->string(), "a <b> & ü");
  EXPECT_EQ(root.find("d")->date(), parseISO8601("2026-01-31T09:30:05Z"));
  EXPECT_THAT(root.find("a")->items(), SizeIs(2));
  EXPECT_EQ(root.find("t")->number(), std::nullopt);
  EXPECT_EQ(root.find("x")->string(), nullptr);
  EXPECT_EQ(root.find("missing"), nullptr);
}

TEST(PropertyList, AskingAValueForAnotherTypeGivesNothing) {
  const auto text = parsed("<string>7</string>");
  EXPECT_EQ(text.integer(), std::nullopt);
  EXPECT_EQ(text.number(), std::nullopt);
  EXPECT_EQ(text.date(), std::nullopt);
  EXPECT_EQ(text.find("a"), nullptr);
  EXPECT_THAT(text.items(), IsEmpty());
}

TEST(PropertyList, CountersBeyondSignedNumbersAreStillNumbers) {
  EXPECT_EQ(parsed("<integer>9223372036854775807</integer>").integer(), 9223372036854775807);
  EXPECT_EQ(parsed("<integer>18446744073709551615</integer>").number(), 18446744073709551615.0);
  EXPECT_EQ(parsed("<integer>18446744073709551615</integer>").integer(), std::nullopt);
}

TEST(PropertyList, NumbersThatAreNoNumbersAreNothing) {
  for (const char* value :
       {"<integer></integer>", "<integer>1.5</integer>", "<integer>x</integer>",
        "<integer>99999999999999999999</integer>", "<real></real>", "<real>nan</real>",
        "<real>inf</real>", "<real>1e999</real>", "<real>1 2</real>", "<date>soon</date>"}) {
    EXPECT_EQ(parsed(value).number(), std::nullopt) << value;
    EXPECT_EQ(parsed(value).date(), std::nullopt) << value;
  }
}

TEST(PropertyList, BlanksAroundNumbersAreAllowed) {
  EXPECT_EQ(parsed("<integer> 5\n</integer>").integer(), 5);
  EXPECT_EQ(parsed("<real>\t1e3 </real>").number(), 1000.0);
}

TEST(PropertyList, FirstOfTwoEqualKeysCounts) {
  EXPECT_EQ(parsed("<dict><key>a</key><integer>1</integer><key>a</key><integer>2</integer></dict>")
                .find("a")
                ->integer(),
            1);
}

TEST(PropertyList, ShapesThatAreNoPropertyListAreRefused) {
  EXPECT_EQ(problem("<html/>"), "line 1: not a property list");
  EXPECT_EQ(problem("<plist><dict><integer>1</integer></dict></plist>"),
            "line 1: a value without a key");
  EXPECT_EQ(problem("<plist>\n<dict><key>a</key></dict></plist>"), "line 2: a key without a value");
  EXPECT_EQ(problem("<plist><dict><key>a</key><key>b</key></dict></plist>"),
            "line 1: a key out of place");
  EXPECT_EQ(problem("<plist><array><key>a</key></array></plist>"), "line 1: a key out of place");
  EXPECT_EQ(problem("<plist><key>a</key></plist>"), "line 1: a key out of place");
  EXPECT_EQ(problem("<plist><table/></plist>"), "line 1: an unknown element");
  EXPECT_EQ(problem("<plist><string><true/></string></plist>"),
            "line 1: an element inside a plain value");
  EXPECT_EQ(problem("<plist><true/><true/></plist>"), "line 1: more than one value");
  EXPECT_EQ(problem("<plist><array>text</array></plist>"), "line 1: text outside a value");
  EXPECT_EQ(problem("<plist/>"), "line 1: no value");
}

TEST(PropertyList, TextThatIsNotWellFormedXMLIsRefused) {
  EXPECT_THAT(problem(""), HasSubstr("line 1: "));
  EXPECT_THAT(problem("garbage"), HasSubstr("line 1: "));
  EXPECT_THAT(problem("{\"json\": true}"), HasSubstr("line 1: "));
  EXPECT_THAT(problem("<plist><true/>"), HasSubstr("line 1: "));
  EXPECT_THAT(problem("<plist>\n<true></plist>"), HasSubstr("line 2: "));
  EXPECT_THAT(problem("<plist><string>\xff</string></plist>"), HasSubstr("line 1: "));
  EXPECT_THAT(problem("<plist><string>&#0;</string></plist>"), HasSubstr("line 1: "));
  EXPECT_THAT(problem("<plist><true/></plist><plist><true/></plist>"), HasSubstr("line 1: "));
}

TEST(PropertyList, DeclaredEntitiesAreRefused) {
  EXPECT_EQ(problem("<!DOCTYPE plist [<!ENTITY a \"b\">]><plist><string>&a;</string></plist>"),
            "line 1: an entity declaration");
  EXPECT_EQ(problem("<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>"
                    "<plist><string>&a;</string></plist>"),
            "line 1: an entity declaration");
  EXPECT_EQ(problem("<!DOCTYPE plist [<!ENTITY % a SYSTEM \"file:///etc/passwd\"> %a;]>"
                    "<plist><true/></plist>"),
            "line 1: an entity declaration");
}

TEST(PropertyList, EntitiesOfAnUnreadDocumentTypeAreRefused) {
  EXPECT_EQ(problem("<!DOCTYPE plist SYSTEM \"file:///etc/passwd\">\n"
                    "<plist><string>&a;</string></plist>"),
            "line 2: an unknown entity");
}

TEST(PropertyList, DepthIsBounded) {
  EXPECT_EQ(problem(plist(nested(deepestPropertyList))), "parsed");
  EXPECT_THAT(problem(plist(nested(deepestPropertyList + 1))), HasSubstr("nested too deeply"));
  std::string endless;
  for (int i = 0; i < 200'000; ++i) {
    endless += "<array>";
  }
  EXPECT_THAT(problem("<plist>" + endless), HasSubstr("nested too deeply"));
}

TEST(PropertyList, NumberOfValuesIsBounded) {
  std::string items;
  // The array itself is the last value.
  for (std::size_t i = 0; i < mostPropertyListValues - 1; ++i) {
    items += "<true/>";
  }
  EXPECT_EQ(problem("<plist><array>" + items + "</array></plist>"), "parsed");
  EXPECT_EQ(problem("<plist><array>" + items + "<true/></array></plist>"),
            "line 1: too many values");
}

}  // namespace
}  // namespace quorvex
