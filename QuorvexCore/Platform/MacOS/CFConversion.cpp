#include "CFConversion.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace quorvex::cf {

namespace {

/// Stands for a character that cannot be encoded.
constexpr UInt8 unknownCharacter = '?';

DictionaryValue number(CFNumberRef object) {
  std::int64_t integer = 0;
  if (CFNumberIsFloatType(object) == 0 &&
      CFNumberGetValue(object, kCFNumberSInt64Type, &integer) != 0) {
    return integer;
  }
  double real = 0;
  CFNumberGetValue(object, kCFNumberFloat64Type, &real);
  return real;
}

}  // namespace

std::optional<std::string> text(CFTypeRef object) {
  if (object == nullptr || CFGetTypeID(object) != CFStringGetTypeID()) {
    return std::nullopt;
  }
  const auto string = static_cast<CFStringRef>(object);
  const CFRange whole{0, CFStringGetLength(string)};
  CFIndex size = 0;
  CFStringGetBytes(string, whole, kCFStringEncodingUTF8, unknownCharacter, 0, nullptr, 0, &size);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  CFStringGetBytes(string, whole, kCFStringEncodingUTF8, unknownCharacter, 0,
                   reinterpret_cast<UInt8*>(bytes.data()), size, &size);
  return bytes;
}

DictionaryValue value(CFTypeRef object) {
  if (object == nullptr) {
    return {};
  }
  const CFTypeID type = CFGetTypeID(object);
  if (type == CFBooleanGetTypeID()) {
    return CFBooleanGetValue(static_cast<CFBooleanRef>(object)) != 0;
  }
  if (type == CFNumberGetTypeID()) {
    return number(static_cast<CFNumberRef>(object));
  }
  if (type == CFStringGetTypeID()) {
    return *text(object);
  }
  if (auto nested = dictionary(object)) {
    return *std::move(nested);
  }
  return {};
}

std::optional<Dictionary> dictionary(CFTypeRef object) {
  if (object == nullptr || CFGetTypeID(object) != CFDictionaryGetTypeID()) {
    return std::nullopt;
  }
  const auto source = static_cast<CFDictionaryRef>(object);
  const auto count = static_cast<std::size_t>(CFDictionaryGetCount(source));
  std::vector<const void*> keys(count);
  std::vector<const void*> values(count);
  CFDictionaryGetKeysAndValues(source, keys.data(), values.data());
  Dictionary result;
  for (std::size_t i = 0; i < count; ++i) {
    auto key = text(keys[i]);
    if (!key) {
      return std::nullopt;
    }
    result.insert_or_assign(*std::move(key), value(values[i]));
  }
  return result;
}

CFReference<CFStringRef> makeString(std::string_view text) {
  return CFReference<CFStringRef>{
      CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text.data()),
                              static_cast<CFIndex>(text.size()), kCFStringEncodingUTF8, 0)};
}

}  // namespace quorvex::cf
