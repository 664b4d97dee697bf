#include "kvxhelper.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "frame/kvxhelper_words.hpp"
#include "frame/text.hpp"

namespace Kovra {

char szRibbonName[32] = {};

}  // namespace Kovra

namespace {

using Kovra::frame::copyBounded;
using Kovra::frame::textOf;

/// Room for a word such as "enabled", or for a number in an attribute.
using ShortText = std::array<char, 32>;

/// Room for the longest number that a format below can print: a double with six decimals.
using NumberText = std::array<char, 352>;

bool meansTrue(ShortText const& text) {
  return std::strcmp(text.data(), "enabled") == 0 || std::strcmp(text.data(), "yes") == 0;
}

/// Converts an element's text with `convert`; every GetNumber form is one such conversion.
template <class Number, class Convert>
bool readNumber(TiXmlElement const* el, Number& out, Convert convert) {
  char const* const text = textOf(el);
  if (text == nullptr) return false;
  out = static_cast<Number>(convert(text));
  return true;
}

/// Converts as strtol() does in base 10; false when the text begins with no number. Digits alone,
/// which is what printers send, are converted faster; blanks and plus signs before them, and what
/// no long can hold, are left to strtol() itself.
bool scanDecimal(char const* text, long& number) {
  if (std::from_chars(text, text + std::strlen(text), number).ec == std::errc{}) return true;
  char* end = nullptr;
  number = std::strtol(text, &end, 10);
  return end != text;
}

long decimal(char const* text) {
  long number = 0;
  scanDecimal(text, number);
  return number;
}

/// The value of a hexadecimal digit, or -1.
int digitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

/// Scans a hardware address in the form in which printers send it, two digits in each field: sscanf
/// would store the same, but in a list of addresses it takes a tenth of the whole reading. False,
/// with nothing stored, for any other form.
bool scanPlainAddress(char const* text, unsigned char* out) {
  std::array<unsigned char, 6> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i, text += 2) {
    if (i > 0 && *text++ != ':') return false;
    int const high = digitOf(text[0]);
    int const low = high < 0 ? -1 : digitOf(text[1]);
    if (low < 0) return false;
    bytes[i] = static_cast<unsigned char>(high * 16 + low);
  }
  std::memcpy(out, bytes.data(), bytes.size());
  return true;
}

/// Links a new element `name` with one text below `parent`; `decorate` sets its attributes.
template <class Decorate>
bool addValued(TiXmlElement* parent, char const* name, char const* text, Decorate decorate) {
  auto element = std::make_unique<TiXmlElement>(name);
  decorate(*element);
  element->LinkEndChild(new TiXmlText(text));
  parent->LinkEndChild(element.release());
  return true;
}

bool addValued(TiXmlElement* parent, char const* name, char const* text) {
  return addValued(parent, name, text, [](TiXmlElement&) {});
}

template <class Number>
NumberText printed(char const* format, Number value) {
  NumberText text;  // all that is read of it is printed first
  std::snprintf(text.data(), text.size(), format, value);
  return text;
}

/// Adds a number printed with `format`; every AddTag form for numbers is one such format.
template <class Number>
bool addNumber(TiXmlElement* parent, char const* name, char const* format, Number value) {
  if (parent == nullptr || name == nullptr) return false;
  return addValued(parent, name, printed(format, value).data());
}

/// Sets an attribute; where memory ends, the element stays as it was. TinyXML links a new attribute
/// before it has its name and value.
template <class Text>
void setAttribute(TiXmlElement& element, char const* name, Text value) {
  TiXmlAttribute const* const last = element.LastAttribute();
  try {
    element.SetAttribute(name, value);
  } catch (...) {
    TiXmlAttribute* const added = element.LastAttribute();
    if (added != last) {
      added->SetName("");
      element.RemoveAttribute("");
    }
    throw;
  }
}

/// Adds a bounded setting whose bounds and value may have formats of their own.
template <class Setting>
bool addBounded(TiXmlElement* parent, char const* name, char const* boundFormat,
                char const* valueFormat, Setting const& setting) {
  if (parent == nullptr || name == nullptr) return false;
  return addValued(parent, name, printed(valueFormat, setting.val).data(),
                   [&](TiXmlElement& element) {
                     element.SetAttribute("min", printed(boundFormat, setting.min).data());
                     element.SetAttribute("max", printed(boundFormat, setting.max).data());
                   });
}

}  // namespace

KVXHelper::KVXHelper() = default;
KVXHelper::~KVXHelper() = default;

// Reading an attribute.

bool KVXHelper::GetString(TiXmlElement* el, char* attr, char* out, int len) {
  if (el == nullptr || attr == nullptr || out == nullptr) return false;
  char const* const value = el->Attribute(attr);
  return value != nullptr && copyBounded(value, out, len);
}

bool KVXHelper::GetNumberFromAttr(TiXmlElement* el, char* attr, int& out) {
  char const* const value = el != nullptr && attr != nullptr ? el->Attribute(attr) : nullptr;
  if (value == nullptr) return false;
  // As TinyXML's own query by "%d", and much faster: configurations have hundreds of bounds.
  long number = 0;
  if (!scanDecimal(value, number)) return false;
  out = static_cast<int>(number);
  return true;
}

bool KVXHelper::GetNumberFromAttr(TiXmlElement* el, char* attr, float& out) {
  char const* const value = el != nullptr && attr != nullptr ? el->Attribute(attr) : nullptr;
  if (value == nullptr) return false;
  // Digits alone are converted as TinyXML's own query by "%lf" does it, and faster; of exponents,
  // hexadecimals and words the two ways take different ones.
  double number = 0;
  if (value[std::strspn(value, "+-.0123456789")] != '\0') {
    if (el->QueryDoubleAttribute(attr, &number) != TIXML_SUCCESS) return false;
  } else {
    char* end = nullptr;
    number = std::strtod(value, &end);
    if (end == value) return false;
  }
  out = static_cast<float>(number);
  return true;
}

bool KVXHelper::GetInt(TiXmlElement* el, char* attr, int& out) {
  return GetNumberFromAttr(el, attr, out);
}

bool KVXHelper::GetShort(TiXmlElement* el, char* attr, unsigned short& out) {
  ShortText text{};
  if (!GetString(el, attr, text.data(), static_cast<int>(text.size()))) return false;
  // A text that is no number counts as read and stores nothing: hosts rely on it.
  static_cast<void>(std::sscanf(text.data(), "%hu", &out));
  return true;
}

bool KVXHelper::GetBool(TiXmlElement* el, char* attr, char& out) {
  ShortText text{};
  if (!GetString(el, attr, text.data(), static_cast<int>(text.size()))) return false;
  out = meansTrue(text) ? 1 : 0;
  return true;
}

bool KVXHelper::GetIP(TiXmlElement*, char*, unsigned long&) {
  return false;
}

// Reading an element's text.

bool KVXHelper::GetString(TiXmlElement* el, char& out, int len) {
  char const* const text = textOf(el);
  return text != nullptr && copyBounded(text, &out, len);
}

bool KVXHelper::GetBool(TiXmlElement* el, char& out) {
  ShortText text{};
  if (!GetString(el, *text.data(), static_cast<int>(text.size()))) return false;
  out = meansTrue(text) ? 1 : 0;
  return true;
}

bool KVXHelper::GetBool(TiXmlElement* el, bool& out) {
  char flag = 0;
  bool const read = GetBool(el, flag);
  out = flag != 0;  // also when nothing was read: deliberately unlike the char form
  return read;
}

bool KVXHelper::GetNumber(TiXmlElement* el, int& out, bool) {
  return readNumber(el, out, decimal);
}

bool KVXHelper::GetNumber(TiXmlElement* el, unsigned short& out, bool) {
  return readNumber(el, out, decimal);
}

bool KVXHelper::GetNumber(TiXmlElement* el, unsigned long& out, bool) {
  // The printer's counters are 16 bits wide for every host, though the member is not.
  return readNumber(el, out, [](char const* text) { return decimal(text) & 0xFFFF; });
}

bool KVXHelper::GetNumber(TiXmlElement* el, unsigned int& out, bool) {
  return readNumber(el, out, decimal);
}

bool KVXHelper::GetNumber(TiXmlElement* el, long& out, bool) {
  return readNumber(el, out, decimal);
}

bool KVXHelper::GetNumber(TiXmlElement* el, float& out, bool) {
  return readNumber(el, out, [](char const* text) { return std::strtod(text, nullptr); });
}

bool KVXHelper::GetPhysicalAddress(TiXmlElement* el, unsigned char* out) {
  char const* const text = textOf(el);
  if (text == nullptr || out == nullptr) return false;
  if (scanPlainAddress(text, out)) return true;
  std::array<unsigned int, 6> fields{};
  // Fields that the text does not have stay 0, and a short text counts as read.
  static_cast<void>(std::sscanf(text, "%02x:%02x:%02x:%02x:%02x:%02x", &fields[0], &fields[1],
                                &fields[2], &fields[3], &fields[4], &fields[5]));
  for (std::size_t i = 0; i < fields.size(); ++i) out[i] = static_cast<unsigned char>(fields[i]);
  return true;
}

// Adding a child element.

TiXmlElement* KVXHelper::AddTag(TiXmlElement* parent, char* name) {
  if (parent == nullptr || name == nullptr) return nullptr;
  auto* const element = new TiXmlElement(name);
  parent->LinkEndChild(element);
  return element;
}

bool KVXHelper::AddTagString(TiXmlElement* parent, char* name, char const* text) {
  if (parent == nullptr || name == nullptr || text == nullptr) return false;
  return addValued(parent, name, text);
}

bool KVXHelper::AddTagNumber(TiXmlElement* parent, char* name, int value) {
  return addNumber(parent, name, "%d", value);
}

bool KVXHelper::AddTagFloat(TiXmlElement* parent, char* name, float value) {
  return addNumber(parent, name, "%.4f", static_cast<double>(value));
}

bool KVXHelper::AddTagDouble(TiXmlElement* parent, char* name, double value) {
  return addNumber(parent, name, "%lf", value);
}

bool KVXHelper::AddTagUnsigned(TiXmlElement* parent, char* name, unsigned int value) {
  return addNumber(parent, name, "%u", value);
}

bool KVXHelper::AddTagLong(TiXmlElement* parent, char* name, long value) {
  return addNumber(parent, name, "%ld", value);
}

bool KVXHelper::AddTagBool(TiXmlElement* parent, char* name, long flag) {
  return AddTagString(parent, name, flag != 0 ? "yes" : "no");
}

bool KVXHelper::AddTagPhysicalAddress(TiXmlElement* parent, char* name,
                                      unsigned char const* address) {
  if (parent == nullptr || name == nullptr || address == nullptr) return false;
  std::array<char, sizeof "00:00:00:00:00:00"> text{};
  std::snprintf(text.data(), text.size(), "%02x:%02x:%02x:%02x:%02x:%02x", address[0], address[1],
                address[2], address[3], address[4], address[5]);
  return addValued(parent, name, text.data());
}

bool KVXHelper::AddTagMinMaxVal(TiXmlElement* parent, char* name, Kovra::_MinMaxVal const& v) {
  return addBounded(parent, name, "%d", "%d", v);
}

bool KVXHelper::AddTagMinMaxVal(TiXmlElement* parent, char* name, Kovra::_MinMaxValFloat const& v) {
  return addBounded(parent, name, "%.2f", "%.4f", v);
}

// Setting an attribute.

bool KVXHelper::AddTagAttrib(TiXmlElement* element, char const* name, char const* value) {
  if (element == nullptr || name == nullptr || value == nullptr) return false;
  setAttribute(*element, name, value);
  return true;
}

bool KVXHelper::AddTagAttrib(TiXmlElement* element, char* name, int value) {
  if (element == nullptr || name == nullptr) return false;
  setAttribute(*element, name, value);
  return true;
}

// The printer's keywords as codes.

int KVXHelper::RibbonNameToInt(char* keyword) {
  return Kovra::frame::ribbonNames.codeOf(keyword);
}

int KVXHelper::RibbonDescriptionToInt(char* keyword) {
  return Kovra::frame::ribbonDescriptions.codeOf(keyword);
}

int KVXHelper::RibbonTypeToInt(char* keyword) {
  return Kovra::frame::ribbonTypes.codeOf(keyword);
}

int KVXHelper::FeederSmartToInt(char* keyword) {
  return Kovra::frame::feederSmarts.codeOf(keyword);
}

int KVXHelper::FeederTypeToInt(char* keyword) {
  return Kovra::frame::feederTypes.codeOf(keyword);
}

int KVXHelper::CoercivityToInt(char* keyword) {
  return Kovra::frame::coercivities.codeOf(keyword);
}

int KVXHelper::LaminationTypeToInt(char* keyword) {
  return Kovra::frame::laminationTypes.codeOf(keyword);
}

int KVXHelper::CommsChannelToInt(char* keyword) {
  return Kovra::frame::commsChannels.codeOf(keyword);
}

int KVXHelper::ContactlessEncToInt(char* keyword) {
  return Kovra::frame::contactlessEncoders.codeOf(keyword);
}

int KVXHelper::PanelToInt(char* keyword) {
  return Kovra::frame::panels.codeOf(keyword);
}

int KVXHelper::LaminatorWidthToInt(char* keyword) {
  return Kovra::frame::laminatorWidths.codeOf(keyword);
}

int KVXHelper::LaminatorRegistrationToInt(char* keyword) {
  return Kovra::frame::laminatorRegistrations.codeOf(keyword);
}
