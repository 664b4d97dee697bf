#include "kvxhelper.h"

#include <array>
#include <cstdio>
#include <memory>

#include "frame/convert.hpp"
#include "frame/kvxhelper_words.hpp"
#include "frame/print.hpp"

namespace Kovra {

char szRibbonName[32] = {};

}  // namespace Kovra

namespace {

using namespace Kovra::frame;

/// The value of the element's first child node, whatever that is: of an element that stands first
/// the name, of a comment its text. Null when there is no child (or no element).
char const* textOf(TiXmlElement const* element) {
  TiXmlNode const* const child = element != nullptr ? element->FirstChild() : nullptr;
  return child != nullptr ? child->Value() : nullptr;
}

/// The value of an attribute, or null.
char const* attributeOf(TiXmlElement const* element, char const* name) {
  return element != nullptr && name != nullptr ? element->Attribute(name) : nullptr;
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

bool addNumber(TiXmlElement* parent, char const* name, NumberText const& text) {
  if (parent == nullptr || name == nullptr) return false;
  return addValued(parent, name, text.data());
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

/// Adds a setting with its bounds as attributes.
bool addBounded(TiXmlElement* parent, char const* name, NumberText const& min,
                NumberText const& max, NumberText const& value) {
  if (parent == nullptr || name == nullptr) return false;
  return addValued(parent, name, value.data(), [&](TiXmlElement& element) {
    element.SetAttribute("min", min.data());
    element.SetAttribute("max", max.data());
  });
}

}  // namespace

KVXHelper::KVXHelper() = default;
KVXHelper::~KVXHelper() = default;

// Reading an attribute.

bool KVXHelper::GetString(TiXmlElement* el, char* attr, char* out, int len) {
  return out != nullptr && convertText(attributeOf(el, attr), out, len);
}

bool KVXHelper::GetNumberFromAttr(TiXmlElement* el, char* attr, int& out) {
  return convertBound(attributeOf(el, attr), out);
}

bool KVXHelper::GetNumberFromAttr(TiXmlElement* el, char* attr, float& out) {
  return convertBound(attributeOf(el, attr), out);
}

bool KVXHelper::GetInt(TiXmlElement* el, char* attr, int& out) {
  return GetNumberFromAttr(el, attr, out);
}

bool KVXHelper::GetShort(TiXmlElement* el, char* attr, unsigned short& out) {
  std::array<char, 32> text{};
  if (!GetString(el, attr, text.data(), static_cast<int>(text.size()))) return false;
  // A text that is no number counts as read and stores nothing: hosts rely on it.
  static_cast<void>(std::sscanf(text.data(), "%hu", &out));
  return true;
}

bool KVXHelper::GetBool(TiXmlElement* el, char* attr, char& out) {
  return convertFlag(attributeOf(el, attr), out);
}

bool KVXHelper::GetIP(TiXmlElement*, char*, unsigned long&) {
  return false;
}

// Reading an element's text.

bool KVXHelper::GetString(TiXmlElement* el, char& out, int len) {
  return convertText(textOf(el), &out, len);
}

bool KVXHelper::GetBool(TiXmlElement* el, char& out) {
  return convertFlag(textOf(el), out);
}

bool KVXHelper::GetBool(TiXmlElement* el, bool& out) {
  return convertFlag(textOf(el), out);
}

bool KVXHelper::GetNumber(TiXmlElement* el, int& out, bool) {
  return convertNumber(textOf(el), out);
}

bool KVXHelper::GetNumber(TiXmlElement* el, unsigned short& out, bool) {
  return convertNumber(textOf(el), out);
}

bool KVXHelper::GetNumber(TiXmlElement* el, unsigned long& out, bool) {
  return convertNumber(textOf(el), out);
}

bool KVXHelper::GetNumber(TiXmlElement* el, unsigned int& out, bool) {
  return convertNumber(textOf(el), out);
}

bool KVXHelper::GetNumber(TiXmlElement* el, long& out, bool) {
  return convertNumber(textOf(el), out);
}

bool KVXHelper::GetNumber(TiXmlElement* el, float& out, bool) {
  return convertNumber(textOf(el), out);
}

bool KVXHelper::GetPhysicalAddress(TiXmlElement* el, unsigned char* out) {
  return out != nullptr && convertAddress(textOf(el), out);
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
  return addNumber(parent, name, printWhole(value));
}

bool KVXHelper::AddTagFloat(TiXmlElement* parent, char* name, float value) {
  return addNumber(parent, name, printDecimals(value, 4));
}

bool KVXHelper::AddTagDouble(TiXmlElement* parent, char* name, double value) {
  return addNumber(parent, name, printDouble(value));
}

bool KVXHelper::AddTagUnsigned(TiXmlElement* parent, char* name, unsigned int value) {
  return addNumber(parent, name, printWhole(value));
}

bool KVXHelper::AddTagLong(TiXmlElement* parent, char* name, long value) {
  return addNumber(parent, name, printWhole(value));
}

bool KVXHelper::AddTagBool(TiXmlElement* parent, char* name, long flag) {
  return AddTagString(parent, name, flag != 0 ? "yes" : "no");
}

bool KVXHelper::AddTagPhysicalAddress(TiXmlElement* parent, char* name,
                                      unsigned char const* address) {
  if (parent == nullptr || name == nullptr || address == nullptr) return false;
  return addNumber(parent, name, printAddress(address));
}

bool KVXHelper::AddTagMinMaxVal(TiXmlElement* parent, char* name, Kovra::_MinMaxVal const& v) {
  return addBounded(parent, name, printWhole(v.min), printWhole(v.max), printWhole(v.val));
}

bool KVXHelper::AddTagMinMaxVal(TiXmlElement* parent, char* name, Kovra::_MinMaxValFloat const& v) {
  return addBounded(parent, name, printDecimals(v.min, 2), printDecimals(v.max, 2),
                    printDecimals(v.val, 4));
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
