#include <gtest/gtest.h>

#include <set>
#include <unordered_set>

#include "UUID.h"

namespace quorvex {
namespace {

constexpr const char* upper = "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0";

TEST(UUIDTests, TextIsUpperCaseWithHyphens) {
  const UUID id{UUID::Bytes{0x0F, 0x1E, 0x2D, 0x3C, 0x4B, 0x5A, 0x49, 0x78, 0x87, 0x96, 0xA5, 0xB4,
                            0xC3, 0xD2, 0xE1, 0xF0}};
  EXPECT_EQ(id.text(), upper);
}

TEST(UUIDTests, BothCasesAreRead) {
  ASSERT_TRUE(UUID::fromText(upper));
  EXPECT_EQ(UUID::fromText(upper)->text(), upper);
  EXPECT_EQ(UUID::fromText("0f1e2d3c-4b5a-4978-8796-a5b4c3d2e1f0"), UUID::fromText(upper));
}

TEST(UUIDTests, OtherTextsAreNone) {
  for (const char* text :
       {"", "1", "0F1E2D3C4B5A49788796A5B4C3D2E1F0", "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F",
        "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F00", "{F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F}",
        "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1FG", "0F1E2D3C 4B5A 4978 8796 A5B4C3D2E1F0",
        " F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0", "0F1E2D3-C4B5A-4978-8796-A5B4C3D2E1F0"}) {
    EXPECT_EQ(UUID::fromText(text), std::nullopt) << text;
  }
}

TEST(UUIDTests, RandomOnesDifferAndSayTheirVersion) {
  std::set<UUID> ids;
  std::unordered_set<UUID> hashed;
  for (int i = 0; i < 1000; ++i) {
    const UUID id = UUID::random();
    ids.insert(id);
    hashed.insert(id);
    EXPECT_EQ(id.text()[14], '4');
    EXPECT_NE(std::string{"89AB"}.find(id.text()[19]), std::string::npos);
    EXPECT_EQ(UUID::fromText(id.text()), id);
  }
  EXPECT_EQ(ids.size(), 1000U);
  EXPECT_EQ(hashed.size(), 1000U);
}

}  // namespace
}  // namespace quorvex
