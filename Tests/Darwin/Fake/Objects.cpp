#include "Objects.h"

#include <unordered_set>

#include "FakeDarwin.h"

namespace quorvex::darwin {

namespace {

std::unordered_set<CFTypeRef>& liveObjects() {
  static std::unordered_set<CFTypeRef> objects;
  return objects;
}

void releaseAll(const std::vector<CFTypeRef>& objects) {
  for (CFTypeRef object : objects) {
    if (object != nullptr) {
      CFRelease(object);
    }
  }
}

std::vector<CFTypeRef> madeBy(const std::vector<Make>& makers) {
  std::vector<CFTypeRef> objects;
  objects.reserve(makers.size());
  for (const Make& make : makers) {
    objects.push_back(make());
  }
  return objects;
}

}  // namespace

Object::Object(CFTypeID typeID) : type(typeID) {
  liveObjects().insert(this);
}

Object::~Object() {
  liveObjects().erase(this);
}

Array::~Array() {
  releaseAll(elements);
}

DictionaryObject::~DictionaryObject() {
  for (const auto& [key, value] : entries) {
    CFRelease(key);
    CFRelease(value);
  }
}

OtherObject::~OtherObject() {
  releaseAll(children);
}

Make nothing() {
  return [] { return nullptr; };
}

Make text(std::u16string units) {
  return
      [units = std::move(units)]() -> CFTypeRef { return static_cast<Object*>(new String{units}); };
}

Make text(const std::string& utf8) {
  return text(unitsFromUTF8(utf8));
}

Make number(Number::Value value) {
  return [value]() -> CFTypeRef { return static_cast<Object*>(new Number{value}); };
}

Make boolean(bool flag) {
  return [flag] { return CFRetain(flag ? kCFBooleanTrue : kCFBooleanFalse); };
}

Make array(std::vector<Make> elements) {
  return [elements = std::move(elements)]() -> CFTypeRef {
    return static_cast<Object*>(new Array{madeBy(elements)});
  };
}

Make dictionary(std::vector<std::pair<Make, Make>> entries) {
  return [entries = std::move(entries)]() -> CFTypeRef {
    DictionaryObject::Entries made;
    made.reserve(entries.size());
    for (const auto& [key, value] : entries) {
      made.emplace_back(key(), value());
    }
    return static_cast<Object*>(new DictionaryObject{std::move(made)});
  };
}

Make dictionary(std::vector<std::pair<std::string, Make>> entries) {
  std::vector<std::pair<Make, Make>> made;
  made.reserve(entries.size());
  for (auto& [key, value] : entries) {
    made.emplace_back(text(key), std::move(value));
  }
  return dictionary(std::move(made));
}

Make other(std::vector<Make> children) {
  return [children = std::move(children)]() -> CFTypeRef {
    return static_cast<Object*>(new OtherObject{madeBy(children)});
  };
}

Object* liveObject(CFTypeRef reference, const char* user) {
  if (liveObjects().count(reference) == 0) {
    fake().fault(std::string{reference != nullptr ? "dead" : "null"} + " object in " + user);
    return nullptr;
  }
  return static_cast<Object*>(const_cast<void*>(reference));
}

template <typename Class>
Class* cast(CFTypeRef reference) {
  auto* object = dynamic_cast<Class*>(liveObject(reference, "a call"));
  if (object == nullptr) {
    fake().fault("object of another type in a call");
  }
  return object;
}

template String* cast<String>(CFTypeRef);
template Number* cast<Number>(CFTypeRef);
template BooleanObject* cast<BooleanObject>(CFTypeRef);
template Array* cast<Array>(CFTypeRef);
template DictionaryObject* cast<DictionaryObject>(CFTypeRef);
template OtherObject* cast<OtherObject>(CFTypeRef);

std::size_t liveObjectCount() {
  return liveObjects().size();
}

std::string utf8(CFTypeRef string) {
  const auto* object = string != nullptr ? cast<String>(string) : nullptr;
  return object != nullptr ? utf8FromUnits(object->text, '?') : "(null)";
}

std::string utf8FromUnits(const std::u16string& units, char lossByte) {
  std::string bytes;
  const auto append = [&](std::uint32_t value) { bytes.push_back(static_cast<char>(value)); };
  for (std::size_t i = 0; i < units.size(); ++i) {
    std::uint32_t code = units[i];
    const bool isHigh = code >= 0xD800 && code < 0xDC00;
    if (isHigh && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000) {
      code = 0x10000 + ((code - 0xD800) << 10U) + (units[++i] - 0xDC00U);
    } else if (code >= 0xD800 && code < 0xE000) {
      bytes.push_back(lossByte);
      continue;
    }
    if (code < 0x80) {
      append(code);
    } else if (code < 0x800) {
      append(0xC0 | code >> 6U);
      append(0x80 | (code & 0x3FU));
    } else if (code < 0x10000) {
      append(0xE0 | code >> 12U);
      append(0x80 | (code >> 6U & 0x3FU));
      append(0x80 | (code & 0x3FU));
    } else {
      append(0xF0 | code >> 18U);
      append(0x80 | (code >> 12U & 0x3FU));
      append(0x80 | (code >> 6U & 0x3FU));
      append(0x80 | (code & 0x3FU));
    }
  }
  return bytes;
}

std::u16string unitsFromUTF8(const std::string& text) {
  std::u16string units;
  for (std::size_t i = 0; i < text.size();) {
    const auto lead = static_cast<unsigned char>(text[i]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    std::uint32_t code = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k) {
      code = code << 6U | (static_cast<unsigned char>(text[i + k]) & 0x3FU);
    }
    i += length;
    if (code >= 0x10000) {
      units.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10U)));
      units.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FFU)));
    } else {
      units.push_back(static_cast<char16_t>(code));
    }
  }
  return units;
}

}  // namespace quorvex::darwin
