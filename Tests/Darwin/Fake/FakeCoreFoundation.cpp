#include <CoreFoundation/CoreFoundation.h>

#include <algorithm>
#include <cstring>
#include <limits>

#include "FakeDarwin.h"
#include "Objects.h"

using quorvex::darwin::Array;
using quorvex::darwin::BooleanObject;
using quorvex::darwin::cast;
using quorvex::darwin::DictionaryObject;
using quorvex::darwin::fake;
using quorvex::darwin::liveObject;
using quorvex::darwin::Number;
using quorvex::darwin::Object;
using quorvex::darwin::String;

namespace {

template <typename Reference>
Reference reference(Object* object) {
  return reinterpret_cast<Reference>(object);
}

CFBooleanRef constantBoolean(bool flag) {
  // Never destroyed: constants have no retains to lose.
  return reference<CFBooleanRef>(new BooleanObject{flag});
}

double realOf(const Number::Value& value) {
  return std::visit([](auto stored) { return static_cast<double>(stored); }, value);
}

/// Whether the number fits exactly.
bool integerOf(const Number::Value& value, std::int64_t& integer) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    integer = *whole;
    return true;
  }
  if (const auto* natural = std::get_if<std::uint64_t>(&value)) {
    integer = static_cast<std::int64_t>(*natural);
    return *natural <= std::uint64_t{std::numeric_limits<std::int64_t>::max()};
  }
  const double real = std::get<double>(value);
  integer = static_cast<std::int64_t>(real);
  return static_cast<double>(integer) == real;
}

}  // namespace

struct CFDictionaryKeyCallBacks {};
struct CFDictionaryValueCallBacks {};

extern "C" {

const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = constantBoolean(true);
const CFBooleanRef kCFBooleanFalse = constantBoolean(false);
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks{};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks{};
const CFStringRef kCFPreferencesCurrentApplication =
    reference<CFStringRef>(new String{u"kCFPreferencesCurrentApplication"});

void CFRelease(CFTypeRef reference) {
  Object* object = liveObject(reference, "CFRelease");
  if (object != nullptr && --object->references == 0) {
    delete object;
  }
}

CFTypeRef CFRetain(CFTypeRef reference) {
  if (Object* object = liveObject(reference, "CFRetain")) {
    ++object->references;
  }
  return reference;
}

CFTypeID CFGetTypeID(CFTypeRef reference) {
  const Object* object = liveObject(reference, "CFGetTypeID");
  return object != nullptr ? object->type : 0;
}

CFTypeID CFStringGetTypeID() {
  return quorvex::darwin::stringType;
}

CFIndex CFStringGetLength(CFStringRef string) {
  return static_cast<CFIndex>(cast<String>(string)->text.size());
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding,
                         UInt8 lossByte, Boolean isExternalRepresentation, UInt8* buffer,
                         CFIndex maxBufferLength, CFIndex* usedBufferLength) {
  if (encoding != kCFStringEncodingUTF8 || isExternalRepresentation != 0 || lossByte == 0) {
    fake().fault("CFStringGetBytes was asked for more than it knows");
  }
  const std::u16string units = cast<String>(string)->text.substr(
      static_cast<std::size_t>(range.location), static_cast<std::size_t>(range.length));
  const std::string bytes = quorvex::darwin::utf8FromUnits(units, static_cast<char>(lossByte));
  if (buffer != nullptr) {
    if (static_cast<CFIndex>(bytes.size()) > maxBufferLength) {
      fake().fault("CFStringGetBytes has no room");
    }
    std::memcpy(buffer, bytes.data(),
                std::min(bytes.size(), static_cast<std::size_t>(maxBufferLength)));
  }
  *usedBufferLength = static_cast<CFIndex>(bytes.size());
  return range.length;
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding,
                                    Boolean /*isExternalRepresentation*/) {
  const std::string text{reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count)};
  const std::u16string units = quorvex::darwin::unitsFromUTF8(text);
  const bool isValid =
      encoding == kCFStringEncodingUTF8 && quorvex::darwin::utf8FromUnits(units, '\xFF') == text;
  return isValid ? reference<CFStringRef>(new String{units}) : nullptr;
}

CFTypeID CFNumberGetTypeID() {
  return quorvex::darwin::numberType;
}

Boolean CFNumberIsFloatType(CFNumberRef number) {
  return std::holds_alternative<double>(cast<Number>(number)->value) ? 1 : 0;
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
  const Number::Value& stored = cast<Number>(number)->value;
  if (type == kCFNumberFloat64Type) {
    const double real = realOf(stored);
    std::memcpy(value, &real, sizeof real);
    return 1;
  }
  std::int64_t integer = 0;
  const bool isExact = integerOf(stored, integer);
  if (type == kCFNumberSInt32Type) {
    const auto narrow = static_cast<std::int32_t>(integer);
    std::memcpy(value, &narrow, sizeof narrow);
    return isExact && narrow == integer ? 1 : 0;
  }
  std::memcpy(value, &integer, sizeof integer);
  return isExact ? 1 : 0;
}

CFNumberRef CFNumberCreate(CFAllocatorRef /*allocator*/, CFNumberType type, const void* value) {
  if (type == kCFNumberFloat64Type) {
    return reference<CFNumberRef>(new Number{*static_cast<const double*>(value)});
  }
  const std::int64_t integer = type == kCFNumberSInt32Type
                                   ? *static_cast<const std::int32_t*>(value)
                                   : *static_cast<const std::int64_t*>(value);
  return reference<CFNumberRef>(new Number{integer});
}

CFTypeID CFBooleanGetTypeID() {
  return quorvex::darwin::booleanType;
}

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
  return cast<BooleanObject>(boolean)->flag ? 1 : 0;
}

CFTypeID CFArrayGetTypeID() {
  return quorvex::darwin::arrayType;
}

CFIndex CFArrayGetCount(CFArrayRef array) {
  return static_cast<CFIndex>(cast<Array>(array)->elements.size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
  return cast<Array>(array)->elements.at(static_cast<std::size_t>(index));
}

CFTypeID CFDictionaryGetTypeID() {
  return quorvex::darwin::dictionaryType;
}

CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary) {
  return static_cast<CFIndex>(cast<DictionaryObject>(dictionary)->entries.size());
}

void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys,
                                  const void** values) {
  for (const auto& [key, value] : cast<DictionaryObject>(dictionary)->entries) {
    *keys++ = key;
    *values++ = value;
  }
}

const void* CFDictionaryGetValue(CFDictionaryRef dictionary, const void* wanted) {
  const std::string name = quorvex::darwin::utf8(wanted);
  for (const auto& [key, value] : cast<DictionaryObject>(dictionary)->entries) {
    if (CFGetTypeID(key) == CFStringGetTypeID() && quorvex::darwin::utf8(key) == name) {
      return value;
    }
  }
  return nullptr;
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef /*allocator*/, const void** keys,
                                   const void** values, CFIndex count,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
  if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks ||
      valueCallBacks != &kCFTypeDictionaryValueCallBacks) {
    fake().fault("a dictionary that does not retain what is in it");
  }
  DictionaryObject::Entries entries;
  for (CFIndex i = 0; i < count; ++i) {
    entries.emplace_back(CFRetain(keys[i]), CFRetain(values[i]));
  }
  return reference<CFDictionaryRef>(new DictionaryObject{std::move(entries)});
}

CFTypeRef CFPreferencesCopyAppValue(CFStringRef key, CFStringRef application) {
  fake().note("CFPreferencesCopyAppValue " + quorvex::darwin::utf8(key) + " " +
              quorvex::darwin::utf8(application));
  const auto found = fake().preferences.find(quorvex::darwin::utf8(key));
  return found != fake().preferences.end() ? found->second() : nullptr;
}

void CFPreferencesSetAppValue(CFStringRef key, CFTypeRef value, CFStringRef application) {
  const std::string name = quorvex::darwin::utf8(key);
  fake().note("CFPreferencesSetAppValue " + name + " " + quorvex::darwin::utf8(application));
  if (value == nullptr) {
    fake().preferences.erase(name);
  } else if (CFGetTypeID(value) == CFBooleanGetTypeID()) {
    fake().preferences[name] = quorvex::darwin::boolean(cast<BooleanObject>(value)->flag);
  } else if (CFGetTypeID(value) == CFNumberGetTypeID()) {
    fake().preferences[name] = quorvex::darwin::number(cast<Number>(value)->value);
  } else {
    fake().preferences[name] = quorvex::darwin::text(cast<String>(value)->text);
  }
}

Boolean CFPreferencesAppSynchronize(CFStringRef application) {
  fake().note("CFPreferencesAppSynchronize " + quorvex::darwin::utf8(application));
  return 1;
}

}  // extern "C"
