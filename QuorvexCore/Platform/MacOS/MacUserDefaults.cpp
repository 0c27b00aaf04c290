#include "MacUserDefaults.h"

#include <CoreFoundation/CoreFoundation.h>

#include "CFConversion.h"
#include "CFReference.h"

namespace quorvex {

namespace {

/// Creates the object that stands for a value.
struct Creation {
  CFReference<CFTypeRef> operator()(bool flag) const {
    return CFReference<CFTypeRef>{CFRetain(flag ? kCFBooleanTrue : kCFBooleanFalse)};
  }
  CFReference<CFTypeRef> operator()(std::int64_t integer) const {
    return CFReference<CFTypeRef>{
        CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt64Type, &integer)};
  }
  CFReference<CFTypeRef> operator()(double number) const {
    return CFReference<CFTypeRef>{
        CFNumberCreate(kCFAllocatorDefault, kCFNumberFloat64Type, &number)};
  }
  CFReference<CFTypeRef> operator()(const std::string& text) const {
    return CFReference<CFTypeRef>{cf::makeString(text).take()};
  }
};

/// Null removes the key.
void store(const std::string& key, CFTypeRef object) {
  const auto name = cf::makeString(key);
  if (!name) {
    return;
  }
  CFPreferencesSetAppValue(name.get(), object, kCFPreferencesCurrentApplication);
  CFPreferencesAppSynchronize(kCFPreferencesCurrentApplication);
}

}  // namespace

std::optional<UserDefaultsValue> MacUserDefaults::value(const std::string& key) {
  const auto name = cf::makeString(key);
  if (!name) {
    return std::nullopt;
  }
  const CFReference<CFTypeRef> object{
      CFPreferencesCopyAppValue(name.get(), kCFPreferencesCurrentApplication)};
  const DictionaryValue stored = cf::value(object.get());
  if (const auto flag = stored.boolean()) {
    return *flag;
  }
  if (const auto* integer = stored.ifInteger()) {
    return *integer;
  }
  if (const auto* number = stored.ifFloat()) {
    return *number;
  }
  if (auto text = stored.string()) {
    return *std::move(text);
  }
  return std::nullopt;
}

void MacUserDefaults::setValue(const std::string& key, const UserDefaultsValue& value) {
  if (const auto object = std::visit(Creation{}, value)) {
    store(key, object.get());
  }
}

void MacUserDefaults::removeValue(const std::string& key) {
  store(key, nullptr);
}

}  // namespace quorvex
