#include "face/refusal.hpp"

#include <algorithm>

#include "face/survey.hpp"

namespace Kovra {

namespace {

using Kovra::detail::FindingData;
using Kovra::detail::kindOf;
using Kovra::detail::Refused;
using Kovra::detail::Spot;

/// What would be right, and what stands there instead.
struct Wording {
  std::string found;
  std::string expected;
};

std::string tag(std::string_view name) {
  return '<' + std::string(name) + '>';
}
std::string endTag(std::string_view name) {
  return "</" + std::string(name) + '>';
}
std::string quoted(std::string_view name) {
  return '"' + std::string(name) + '"';
}

Wording endOfText(std::string_view where, std::string const& expected) {
  return {"the end of the text " + std::string(where), expected};
}

/// Every fault in words; the compiler names one that is forgotten.
Wording wordingOf(frame::Scan const& scan, std::string const& open) {
  using frame::Fault;
  std::string const found(scan.found);
  switch (scan.fault) {
    case Fault::none:
      return {};
    case Fault::tooLong:
      return {"a text of more than " + std::to_string(frame::Tree::longestText) + " bytes",
              "a reply"};
    case Fault::tooDeep:
      return {"an element more than " + std::to_string(frame::maxDepth) + " deep",
              "at most " + std::to_string(frame::maxDepth) + " nested elements"};
    case Fault::tooManyAttributes:
      return {"more than " + std::to_string(frame::maxAttributes) + " attributes" + open,
              "at most " + std::to_string(frame::maxAttributes)};
    case Fault::empty:
      return {"text before the document", "an XML document"};
    case Fault::noElementName:
      return {"a tag without a name", "an element's name"};
    case Fault::noAttributeName:
      return {"no name" + open, "an attribute, \"/>\" or \">\""};
    case Fault::noEqualsSign:
      return {"attribute " + quoted(found) + " without a value", "\"=\""};
    case Fault::strayQuote:
      return {"a stray quote in the value of attribute " + quoted(found),
              "a value in quotes, or one without any"};
    case Fault::repeatedAttribute:
      return {"attribute " + quoted(found) + " for the second time" + open, "each attribute once"};
    case Fault::badReference:
      return {"\"&#\" without a character's number", "a reference such as \"&#38;\""};
    case Fault::brokenEmptyTag:
      return {"\"/\" in the tag" + open, "\"/>\""};
    case Fault::wrongEndTag:
      return {endTag(found) + open, endTag(scan.openElement)};
    case Fault::brokenEndTag:
      return {"no \">\" behind \"</" + found + "\"", endTag(found)};
    case Fault::brokenDeclaration:
      return {"a broken declaration" + open, "\"<?xml version=...?>\" before the root"};
    case Fault::endsInTag:
      return endOfText("inside a tag" + open, "\">\"");
    case Fault::endsInQuotes:
      return endOfText("inside the value of attribute " + quoted(found) + open,
                       "the closing quote");
    case Fault::endsInMarkup:
      return endOfText("behind " + quoted(found) + open, "its end");
    case Fault::endsInElement:
      return {"the end of the text" + open, endTag(scan.openElement)};
  }
  return {};
}

FindingData refusalOf(detail::FindingKindData const& kind, Wording wording) {
  FindingData refused;
  refused.kind = &kind;
  refused.found = std::move(wording.found);
  refused.expected = {std::move(wording.expected)};
  return refused;
}

/// A refusal at so many bytes of the whole source.
FindingData refusalAt(Source const& source, std::size_t begin, std::size_t end,
                      detail::FindingKindData const& kind, Wording wording) {
  FindingData refused = refusalOf(kind, std::move(wording));
  std::vector<Spot> const spots = spotsOf(source, {begin, std::max(begin, end)});
  refused.begin = spots[0];
  refused.end = spots[1];
  return refused;
}

/// " in <name>, opened at line 3", for the element that is open at the fault.
std::string openElement(Source const& source, frame::Scan const& scan) {
  if (scan.openElement.empty()) return {};
  Spot const opened = spotsOf(source, {source.skipped() + scan.openAt}).front();
  return " in " + tag(scan.openElement) + ", opened at line " + std::to_string(opened.line);
}

std::vector<std::string> rootsOf(Messages const* wanted) {
  if (wanted == nullptr) return {"the root element of a reply that Kovra reads"};
  std::vector<std::string> roots;
  for (frame::MessageRow const& reply : *wanted) {
    for (char const* const root : reply.roots) {
      if (std::find(roots.begin(), roots.end(), tag(root)) == roots.end()) {
        roots.push_back(tag(root));
      }
    }
  }
  return roots;
}

bool isRootOfSome(std::string_view name) {
  return std::any_of(replies().begin(), replies().end(), [&](frame::MessageRow const& reply) {
    return std::find(reply.roots.begin(), reply.roots.end(), name) != reply.roots.end();
  });
}

/// Text stands where the first markup should: as far as the document, if there is one.
FindingData refuseTextBefore(Source const& source, frame::Scan const& scan) {
  std::size_t const begin = source.skipped() + scan.offset;
  std::size_t const document = source.whole().find('<', begin);
  bool const isThere = document != std::string_view::npos;
  Wording wording = {"no markup", "an XML document"};
  if (isThere) {
    wording.found = "text before the document, which begins at byte " +
                    std::to_string(source.offsetInBytes(document));
  }
  return refusalAt(source, begin, isThere ? document : source.whole().size(),
                   kindOf(Refused::textBefore), std::move(wording));
}

}  // namespace

FindingData refuseMessage(std::string_view name, Messages const& known) {
  std::vector<std::string> names;
  for (frame::MessageRow const& message : known) names.emplace_back(message.name);
  FindingData refused = refusalOf(kindOf(Refused::unknownMessage), {quoted(name), {}});
  refused.expected = std::move(names);
  return refused;
}

FindingData refuseLength() {
  frame::Scan scan;
  scan.fault = frame::Fault::tooLong;
  return refusalOf(kindOf(scan.fault), wordingOf(scan, {}));
}

FindingData refuseSource(Source const& source) {
  using Why = Source::Unreadable;
  std::size_t const at = source.unreadableAt();
  auto const refused = [&](Refused why, std::size_t length, Wording wording) {
    FindingData finding = refusalOf(kindOf(why), std::move(wording));
    std::vector<Spot> const spots = spotsOf(source, {at, at + length});
    finding.begin = spots[0];
    finding.end = spots[1];
    return finding;
  };
  switch (source.unreadable()) {
    case Why::no:
      break;
    case Why::empty:
      return refused(Refused::empty, source.whole().size(), {"an empty text", "an XML document"});
    case Why::gzip:
      return refused(Refused::gzip, 2, {"a file compressed with gzip", "text"});
    case Why::utf16:
      return refused(Refused::utf16, 2,
                     {"UTF-16 that is not declared", "UTF-8, or encoding=\"UTF-16\" declared"});
    case Why::nul:
      return refused(Refused::nul, 1, {"a NUL byte", "text"});
  }
  return {};
}

FindingData refuseText(Source const& source, frame::Scan const& scan) {
  if (scan.fault == frame::Fault::empty) return refuseTextBefore(source, scan);
  std::size_t const at = source.skipped() + scan.offset;
  std::size_t behind = at + std::min<std::size_t>(1, source.whole().size() - at);
  while (behind < source.whole().size() &&
         (static_cast<unsigned char>(source.whole()[behind]) & 0xC0U) == 0x80) {
    ++behind;
  }
  return refusalAt(source, at, behind, kindOf(scan.fault),
                   wordingOf(scan, openElement(source, scan)));
}

FindingData refuseRoot(Source const& source, frame::Tree const& tree, Messages const* wanted) {
  frame::Element const root = frame::firstElement(tree);
  if (!root) {
    FindingData none = refusalAt(source, source.skipped(), source.whole().size(),
                                 kindOf(Refused::unknownRoot), {"no root element", {}});
    none.expected = rootsOf(wanted);
    return none;
  }
  bool const isOther = wanted != nullptr && isRootOfSome(root.name());
  std::size_t const at = source.skipped() + root.offset();
  FindingData refused = refusalAt(source, at, at + 1 + root.name().size(),
                                  kindOf(isOther ? Refused::wrongRoot : Refused::unknownRoot),
                                  {"root element " + tag(root.name()), {}});
  refused.expected = rootsOf(wanted);
  refused.element = root.name();
  refused.path = '/' + refused.element;
  return refused;
}

}  // namespace Kovra
