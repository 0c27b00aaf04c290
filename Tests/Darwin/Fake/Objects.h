#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// Core Foundation objects of the Darwin that the tests run on. Each counts its retains; an object
/// without any is destroyed, and a later use of it is written down as a fault.
namespace quorvex::darwin {

struct Object {
  explicit Object(CFTypeID typeID);
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object();

  CFTypeID type;
  std::int64_t references = 1;
};

enum Type : CFTypeID {
  stringType = 1,
  numberType,
  booleanType,
  arrayType,
  dictionaryType,
  otherType  ///< data, dates, and everything that has no functions of its own
};

/// Code units of UTF-16, as every string's interface counts them.
struct String final : Object {
  explicit String(std::u16string units) : Object(stringType), text(std::move(units)) {}
  std::u16string text;
};

struct Number final : Object {
  using Value = std::variant<std::int64_t, std::uint64_t, double>;
  explicit Number(Value number) : Object(numberType), value(number) {}
  Value value;
};

struct BooleanObject final : Object {
  explicit BooleanObject(bool value) : Object(booleanType), flag(value) {}
  bool flag;
};

/// Owns a retain of each element; an element may be null.
struct Array final : Object {
  explicit Array(std::vector<CFTypeRef> owned) : Object(arrayType), elements(std::move(owned)) {}
  ~Array() override;
  std::vector<CFTypeRef> elements;
};

/// Owns a retain of each key and value.
struct DictionaryObject final : Object {
  using Entries = std::vector<std::pair<CFTypeRef, CFTypeRef>>;
  explicit DictionaryObject(Entries owned) : Object(dictionaryType), entries(std::move(owned)) {}
  ~DictionaryObject() override;
  Entries entries;
};

/// Something with functions elsewhere; what it owns is released with it.
struct OtherObject final : Object {
  explicit OtherObject(std::vector<CFTypeRef> owned = {})
      : Object(otherType), children(std::move(owned)) {}
  ~OtherObject() override;
  std::vector<CFTypeRef> children;
};

/// Makes a new object with one retain, for whoever asks; may make null.
using Make = std::function<CFTypeRef()>;

[[nodiscard]] Make nothing();
[[nodiscard]] Make text(std::u16string units);
[[nodiscard]] Make text(const std::string& utf8);
[[nodiscard]] Make number(Number::Value value);
[[nodiscard]] Make boolean(bool flag);
[[nodiscard]] Make array(std::vector<Make> elements);
[[nodiscard]] Make dictionary(std::vector<std::pair<Make, Make>> entries);
[[nodiscard]] Make dictionary(std::vector<std::pair<std::string, Make>> entries);
/// A data object, a date: nothing that the program knows.
[[nodiscard]] Make other(std::vector<Make> children = {});

/// The object behind a reference, of the given class. A dead or null reference, and one of another
/// type, is a fault and gives null.
template <typename Class>
[[nodiscard]] Class* cast(CFTypeRef reference);
[[nodiscard]] Object* liveObject(CFTypeRef reference, const char* user);
[[nodiscard]] std::size_t liveObjectCount();

/// A string's text in UTF-8.
[[nodiscard]] std::string utf8(CFTypeRef string);

/// UTF-8 with `lossByte` for each unit that has no character; and UTF-16 of valid UTF-8.
[[nodiscard]] std::string utf8FromUnits(const std::u16string& units, char lossByte);
[[nodiscard]] std::u16string unitsFromUTF8(const std::string& text);

}  // namespace quorvex::darwin
