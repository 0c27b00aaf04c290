#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "CanonicalNumber.h"
#include "CanonicalReader.h"

namespace quorvex {
namespace {

std::string written(double number) {
  std::array<char, 32> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr};
}

/// As it stands within a document.
std::size_t canonicalLength(std::string text) {
  text.append(",").append(CanonicalReader::padding, '\0');
  return canonicalNumberLength(text.data());
}

bool isCanonical(const std::string& number) {
  return canonicalLength(number) == number.size();
}

/// Numbers of the sizes that measurements have, with all the digits that arithmetic leaves, and any
/// other.
class Numbers {
 public:
  double next() {
    const auto whole =
        static_cast<double>(static_cast<std::int64_t>(random_() % 2'000'001) - 1'000'000);
    switch (random_() % 5) {
      case 0:
        return whole / 1000.0;
      case 1:
        return whole / std::pow(10.0, static_cast<double>(random_() % 9)) / 7.0;
      case 2:
        return static_cast<double>(static_cast<float>(whole / 977.0));
      case 3:
        return std::nextafter(whole / 10.0, 1e9);
      default: {
        const std::uint64_t bits = random_();
        double number = 0.0;
        std::memcpy(&number, &bits, sizeof number);
        return std::isfinite(number) ? number : 0.0;
      }
    }
  }
  std::uint64_t below(std::uint64_t limit) { return random_() % limit; }

 private:
  std::mt19937_64 random_{20'260'131};
};

constexpr int repetitions = 300'000;

TEST(CanonicalNumber, EveryNumberThatIsWrittenIsCanonical) {
  Numbers numbers;
  for (int i = 0; i < repetitions; ++i) {
    const std::string text = written(numbers.next());
    ASSERT_EQ(canonicalLength(text), text.size()) << text;
  }
}

TEST(CanonicalNumber, ATextIsCanonicalExactlyWhenItsNumberIsWrittenLikeThat) {
  Numbers numbers;
  int alike = 0;
  for (int i = 0; i < repetitions; ++i) {
    std::string text = written(numbers.next());
    // Other digits at the end, or more of them, mean a neighbour or the same float in more words.
    const std::uint64_t change = numbers.below(4);
    if (change == 0) {
      text.back() = static_cast<char>('0' + numbers.below(10));
    } else if (change == 1) {
      text.push_back(static_cast<char>('0' + numbers.below(10)));
    } else if (change == 2 && text.size() > 3) {
      text.pop_back();
    }
    const double number = std::strtod(text.c_str(), nullptr);
    if (!std::isfinite(number) || text.back() == '.') {
      continue;
    }
    const bool isWrittenAlike = written(number) == text;
    alike += isWrittenAlike ? 1 : 0;
    ASSERT_EQ(isCanonical(text), isWrittenAlike) << text;
  }
  // Both answers came often.
  EXPECT_GT(alike, repetitions / 4);
  EXPECT_LT(alike, repetitions * 3 / 4);
}

TEST(CanonicalNumber, NeighboursOfPowersOfTwoAreToldApart) {
  // Below a power of two floats lie twice as close as above it.
  for (int exponent = -12; exponent < 52; ++exponent) {
    const double power = std::ldexp(1.0, exponent);
    for (const double number : {std::nextafter(power, 0.0), power, std::nextafter(power, 1e300)}) {
      const std::string text = written(number);
      EXPECT_TRUE(isCanonical(text)) << text;
      for (const char digit : std::string{"0123456789"}) {
        std::string other = text;
        other.back() = digit;
        EXPECT_EQ(isCanonical(other), written(std::strtod(other.c_str(), nullptr)) == other)
            << other;
      }
    }
  }
}

TEST(CanonicalNumber, EndsWhereTheNumberEnds) {
  EXPECT_EQ(canonicalLength("12.5,"), 4U);
  EXPECT_EQ(canonicalLength("0}"), 1U);
  EXPECT_EQ(canonicalLength("15.600000000000001]"), 18U);
  EXPECT_EQ(canonicalLength("1e+05,"), 5U);
}

TEST(CanonicalNumber, LengthIsZeroForWhatIsNone) {
  for (const char* text : {"", "-", ".", ".5", "5.", "-.5", "e5", "null", "\"5\"", "+5", "05",
                           "1e+05e", "1e999", "NaN", "inf", "-inf"}) {
    EXPECT_EQ(canonicalLength(text), 0U) << text;
  }
}

}  // namespace
}  // namespace quorvex
