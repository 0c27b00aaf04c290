#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <optional>
#include <string>
#include <string_view>

#include "CFReference.h"
#include "Dictionary.h"

/// Core Foundation objects as the program's own values, and back. A null object is an object of no
/// wanted type. Nothing is retained. Any thread.
namespace quorvex::cf {

/// The text of a string; none for every other object. A character that UTF-8 cannot carry becomes
/// "?".
[[nodiscard]] std::optional<std::string> text(CFTypeRef object);

/// An integer that fits a signed 64-bit integer is an integer, every other number a float; a
/// Boolean is no number. Nested dictionaries are converted too; all other types, and a nested
/// dictionary with a key that is no string, are values of some other type.
[[nodiscard]] DictionaryValue value(CFTypeRef object);

/// None for every object but a dictionary whose keys are all strings.
[[nodiscard]] std::optional<Dictionary> dictionary(CFTypeRef object);

/// A string from UTF-8; empty when the bytes are no UTF-8.
[[nodiscard]] CFReference<CFStringRef> makeString(std::string_view text);

}  // namespace quorvex::cf
