#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace quorvex::testing {

/// A recorded output of powermetrics.
inline std::string powermetricsSample(const std::string& name) {
  std::ifstream file{std::string{QUORVEX_POWERMETRICS_SAMPLES} + "/" + name, std::ios::binary};
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{}};
}

}  // namespace quorvex::testing
