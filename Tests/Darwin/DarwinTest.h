#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "FakeDarwin.h"
#include "FakeLoader.h"

namespace quorvex::darwin {

/// A test on a Darwin that begins with nothing asked. At its end nothing may be left over: no
/// object that was not released, no pool and no handle but libraries that are meant to stay, and no
/// fault.
class DarwinTest : public ::testing::Test {
 public:
  DarwinTest() : objectsBefore_(liveObjectCount()) { reset(); }
  DarwinTest(const DarwinTest&) = delete;
  DarwinTest& operator=(const DarwinTest&) = delete;
  ~DarwinTest() override {
    EXPECT_THAT(fake().faults, ::testing::IsEmpty());
    EXPECT_EQ(fake().pools, 0);
    for (const auto& [kind, count] : fake().open) {
      EXPECT_EQ(count, kind == "library" ? librariesThatStay : 0) << kind;
    }
    // The answers themselves own none, but may share constants with the program.
    EXPECT_EQ(liveObjectCount(), objectsBefore_) << "objects that nobody released";
    EXPECT_EQ(constantRetains(), 2) << "constants keep their own retain each";
  }

 protected:
  /// Calls since the last look, in their order.
  static std::vector<std::string> calls() { return std::exchange(fake().calls, {}); }

  FakeLoader loader;
  std::int64_t librariesThatStay = 0;

 private:
  static std::int64_t constantRetains() {
    return cast<BooleanObject>(kCFBooleanTrue)->references +
           cast<BooleanObject>(kCFBooleanFalse)->references;
  }

  std::size_t objectsBefore_;
};

/// Named entries of a dictionary.
using Entries = std::vector<std::pair<std::string, Make>>;

}  // namespace quorvex::darwin
