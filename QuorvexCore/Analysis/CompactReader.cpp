#include "CompactReader.h"

#include <simdjson.h>

#include <algorithm>

namespace quorvex {

namespace {

constexpr std::uint64_t inEachByte(std::uint64_t byte) {
  return byte * 0x0101010101010101U;
}

std::uint64_t eightBytes(const char* at) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  // The first byte in the lowest place, so that the lowest mark belongs to the first hit.
  if constexpr (std::endian::native == std::endian::big) {
    bytes = __builtin_bswap64(bytes);
  }
  return bytes;
}

constexpr std::uint64_t highBits = inEachByte(0x80);

std::size_t firstMarkedByte(std::uint64_t marks) {
  return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

/// The first byte at or behind `at` that is no decimal digit.
const char* digitsEnd(const char* at) {
  while (true) {
    const std::uint64_t bytes = eightBytes(at);
    // A byte above '9' or below '0' sets its highest bit. Carries run only into later bytes.
    const std::uint64_t marks =
        ((bytes + inEachByte(0x7F - '9')) | (bytes - inEachByte('0'))) & highBits;
    if (marks != 0) {
      return at + firstMarkedByte(marks);
    }
    at += sizeof bytes;
  }
}

/// The first byte at or behind `at` that is a quote, a backslash, a control character or not ASCII.
const char* plainTextEnd(const char* at) {
  while (true) {
    const std::uint64_t bytes = eightBytes(at);
    const std::uint64_t quotes = bytes ^ inEachByte('"');
    const std::uint64_t backslashes = bytes ^ inEachByte('\\');
    // Subtraction borrows from a byte below the limit into later bytes only.
    const std::uint64_t marks =
        (((quotes - inEachByte(1)) & ~quotes) | ((backslashes - inEachByte(1)) & ~backslashes) |
         (bytes - inEachByte(0x20)) | bytes) &
        highBits;
    if (marks != 0) {
      return at + firstMarkedByte(marks);
    }
    at += sizeof bytes;
  }
}

/// What the escape of one letter stands for; 0 for those that are left to the general reader.
constexpr char unescapedLetter(char letter) {
  switch (letter) {
    case '"':
    case '\\':
    case '/':
      return letter;
    case 'b':
      return '\b';
    case 'f':
      return '\f';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    case 't':
      return '\t';
    default:
      return '\0';
  }
}

/// Digits that always fit 64 bits.
constexpr std::ptrdiff_t mostDigits = 18;
/// A number of so many characters without exponent is finite.
constexpr std::ptrdiff_t longestNumber = 300;

constexpr std::array<std::uint64_t, 9> powersOfTen{
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

/// The value of eight digits, the first in the lowest byte, each byte 0 to 9: neighbours are joined
/// to pairs, pairs to fours, fours to eight.
constexpr std::uint64_t eightDigits(std::uint64_t digits) {
  digits = (digits * 10 + (digits >> 8U)) & 0x00FF00FF00FF00FFU;
  digits = (digits * 100 + (digits >> 16U)) & 0x0000FFFF0000FFFFU;
  return (digits * 10'000 + (digits >> 32U)) & 0xFFFFFFFFU;
}

/// `value` with the digits from `from` to `to` behind its own. Reads up to seven bytes more.
std::uint64_t digitsValue(const char* from, const char* to, std::uint64_t value) {
  while (from < to) {
    const auto count = std::min<std::size_t>(8, static_cast<std::size_t>(to - from));
    const std::uint64_t digits = (eightBytes(from) & inEachByte(0x0F)) << (8 * (8 - count));
    value = value * powersOfTen[count] + eightDigits(digits);
    from += count;
  }
  return value;
}

/// The parser's own way with numbers, so that what it refuses is refused.
bool parseNumber(const char* at, double& number) {
  return simdjson::builtin::numberparsing::parse_double(reinterpret_cast<const std::uint8_t*>(at))
             .get(number) == simdjson::SUCCESS;
}

}  // namespace

/// Where the parts of a number stand.
struct CompactReader::NumberParts {
  explicit NumberParts(const char* at);

  const char* whole = nullptr;
  const char* wholeEnd = nullptr;
  const char* fraction = nullptr;
  const char* fractionEnd = nullptr;
  const char* end = nullptr;  ///< null when it is no number
};

inline CompactReader::NumberParts::NumberParts(const char* at) {
  whole = at + (*at == '-' ? 1 : 0);
  wholeEnd = *whole == '0' ? whole + 1 : digitsEnd(whole);
  fraction = wholeEnd;
  fractionEnd = wholeEnd;
  if (wholeEnd == whole) {
    return;
  }
  if (*wholeEnd == '.') {
    ++fraction;
    fractionEnd = digitsEnd(fraction);
    if (fractionEnd == fraction) {
      return;
    }
  }
  if (*fractionEnd != 'e' && *fractionEnd != 'E') {
    end = fractionEnd;
    return;
  }
  const char* exponent = fractionEnd + 1;
  exponent += *exponent == '-' || *exponent == '+' ? 1 : 0;
  end = digitsEnd(exponent);
  end = end == exponent ? nullptr : end;
}

bool CompactReader::isAtEnd() const {
  return at_ == end_ && (!hasNonASCII_ ||
                         simdjson::validate_utf8(begin_, static_cast<std::size_t>(end_ - begin_)));
}

bool CompactReader::read(bool& flag) {
  constexpr std::string_view yes = "true";
  constexpr std::string_view no = "false";
  flag = std::memcmp(at_, yes.data(), yes.size()) == 0;
  if (!flag && std::memcmp(at_, no.data(), no.size()) != 0) {
    return false;
  }
  at_ += flag ? yes.size() : no.size();
  return true;
}

bool CompactReader::read(double& number) {
  return readNumber(NumberParts{at_}, number);
}

bool CompactReader::raise(std::optional<double>& largest) {
  const NumberParts parts{at_};
  if (parts.end == nullptr) {
    return false;
  }
  const auto wholeDigits = static_cast<std::size_t>(parts.wholeEnd - parts.whole);
  if (largest && parts.whole == at_ && parts.end == parts.fractionEnd && wholeDigits < 8 &&
      parts.end - at_ <= longestNumber) {
    // What is smaller already before its decimal point needs no conversion.
    const std::uint64_t whole = digitsValue(parts.whole, parts.wholeEnd, 0);
    if (static_cast<double>(whole + 1) <= *largest) {
      at_ = parts.end;
      return true;
    }
  }
  double number = 0.0;
  if (!readNumber(parts, number)) {
    return false;
  }
  largest = largest ? std::max(*largest, number) : number;
  return true;
}

inline bool CompactReader::readNumber(const NumberParts& parts, double& number) {
  if (parts.end == nullptr) {
    return false;
  }
  const char* const start = std::exchange(at_, parts.end);
  const std::ptrdiff_t places = parts.fractionEnd - parts.fraction;
  const std::ptrdiff_t digits = places + (parts.wholeEnd - parts.whole);
  if (parts.end != parts.fractionEnd || digits > mostDigits) {
    return parseNumber(start, number);
  }
  const std::uint64_t mantissa =
      digitsValue(parts.fraction, parts.fractionEnd, digitsValue(parts.whole, parts.wholeEnd, 0));
  return simdjson::builtin::numberparsing::compute_float_64(-places, mantissa, *start == '-',
                                                            number) ||
         parseNumber(start, number);
}

bool CompactReader::checkNumber() {
  const NumberParts parts{at_};
  if (parts.end == nullptr) {
    return false;
  }
  const char* const start = std::exchange(at_, parts.end);
  double dropped = 0.0;
  return (parts.end == parts.fractionEnd && parts.end - start <= longestNumber) ||
         parseNumber(start, dropped);
}

bool CompactReader::readDigits(std::uint64_t& value) {
  const char* const end = digitsEnd(at_);
  const std::ptrdiff_t count = end - at_;
  if (count == 0 || count > mostDigits || (*at_ == '0' && count > 1)) {
    return false;
  }
  value = digitsValue(at_, end, 0);
  at_ = end;
  return true;
}

bool CompactReader::passText(const char*& start, bool& hasEscapes) {
  if (!take('"')) {
    return false;
  }
  start = at_;
  const char* stop = plainTextEnd(start);
  while (*stop != '"') {
    if (static_cast<unsigned char>(*stop) >= 0x80) {
      hasNonASCII_ = true;
      stop = plainTextEnd(stop + 1);
    } else if (*stop == '\\' && unescapedLetter(stop[1]) != '\0') {
      hasEscapes = true;
      stop = plainTextEnd(stop + 2);
    } else {
      return false;
    }
  }
  at_ = stop + 1;
  return true;
}

bool CompactReader::read(std::string_view& text) {
  const char* start = nullptr;
  bool hasEscapes = false;
  if (!passText(start, hasEscapes)) {
    return false;
  }
  text = {start, static_cast<std::size_t>(at_ - 1 - start)};
  if (hasEscapes) {
    unescaped_.clear();
    for (std::size_t i = 0; i < text.size(); ++i) {
      unescaped_.push_back(text[i] == '\\' ? unescapedLetter(text[++i]) : text[i]);
    }
    text = unescaped_;
  }
  return true;
}

bool CompactReader::read(Date& date) {
  std::string_view text;
  if (!read(text)) {
    return false;
  }
  const auto parsed = parseISO8601(text);
  date = parsed.value_or(date);
  return parsed.has_value();
}

}  // namespace quorvex
