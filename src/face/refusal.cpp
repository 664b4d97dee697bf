#include "face/refusal.hpp"

#include <algorithm>

#include "face/catalogue.hpp"
#include "face/survey.hpp"

namespace Kovra {

namespace {

using frame::Fault;
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
std::string quoted(std::string_view name) {
  return '"' + std::string(name) + '"';
}

/// A fault in words. In them %f stands for what was found, %e for the name of the open element, %o
/// for that element and where it was opened, %n for the limit.
struct FaultWords {
  Fault fault;
  std::string_view found;
  std::string_view expected;
  std::size_t limit = 0;
};

constexpr FaultWords faultWords[] = {
    {Fault::none, "", ""},
    {Fault::tooLong, "a text of more than %n bytes", "a reply", frame::Tree::longestText},
    {Fault::tooDeep, "an element more than %n deep", "at most %n nested elements", frame::maxDepth},
    {Fault::tooManyAttributes, "more than %n attributes%o", "at most %n", frame::maxAttributes},
    {Fault::empty, "text before the document", "an XML document"},
    {Fault::noElementName, "a tag without a name", "an element's name"},
    {Fault::noAttributeName, "no name%o", R"(an attribute, "/>" or ">")"},
    {Fault::noEqualsSign, R"(attribute "%f" without a value)", R"("=")"},
    {Fault::strayQuote, R"(a stray quote in the value of attribute "%f")",
     "a value in quotes, or one without any"},
    {Fault::repeatedAttribute, R"(attribute "%f" for the second time%o)", "each attribute once"},
    {Fault::badReference, R"("&#" without a character's number)", R"(a reference such as "&#38;")"},
    {Fault::brokenEmptyTag, R"("/" in the tag%o)", R"("/>")"},
    {Fault::wrongEndTag, "</%f>%o", "</%e>"},
    {Fault::brokenEndTag, R"(no ">" behind "</%f")", "</%f>"},
    {Fault::brokenDeclaration, "a broken declaration%o",
     R"("<?xml version=...?>" before the root)"},
    {Fault::endsInTag, "the end of the text inside a tag%o", R"(">")"},
    {Fault::endsInQuotes, R"(the end of the text inside the value of attribute "%f"%o)",
     "the closing quote"},
    {Fault::endsInMarkup, R"(the end of the text behind "%f"%o)", "its end"},
    {Fault::endsInElement, "the end of the text%o", "</%e>"},
};

/// Each fault has its words, at its place.
consteval bool areInOrder() {
  std::size_t place = 0;
  for (FaultWords const& words : faultWords) {
    if (static_cast<std::size_t>(words.fault) != place++) return false;
  }
  return place == static_cast<std::size_t>(Fault::endsInElement) + 1;
}
static_assert(areInOrder());

bool mayEndName(char letter) {
  return std::string_view(" \t\r\n/><").find(letter) != std::string_view::npos;
}

/// Where the last tag with that name begins; of several, `<key` is none of `<keyword`.
std::size_t lastTag(std::string_view text, std::string const& begin) {
  std::size_t at = text.rfind(begin);
  while (at != text.npos) {
    std::size_t const behind = at + begin.size();
    if (behind == text.size() || mayEndName(text[behind])) return at;
    if (at == 0) return text.npos;
    at = text.rfind(begin, at - 1);
  }
  return at;
}

/// Is a secret open at the end of this text, so that names behind it may be pieces of the secret?
bool endsInSecret(std::string_view text) {
  auto const isOpen = [&](std::string_view name) {
    std::size_t const begin = lastTag(text, '<' + std::string(name));
    if (begin == text.npos) return false;
    std::string_view const tail = text.substr(begin);
    bool const isEmpty = tail.substr(0, tail.find('>')).back() == '/';
    return !isEmpty && lastTag(tail, "</" + std::string(name)) == tail.npos;
  };
  return std::any_of(secretElements().begin(), secretElements().end(), isOpen);
}

/// What a fault says, without names that may be pieces of a secret. Elements of replies are none,
/// and neither is an attribute that stands twice in the tag of the secret itself.
frame::Scan withoutSecrets(frame::Scan scan, std::string_view before) {
  if (!endsInSecret(before)) return scan;
  bool const isOfTag =
      scan.fault == Fault::repeatedAttribute && secretElements().contains(scan.openElement);
  if (!isOfTag && !isElement(scan.found)) scan.found = "...";
  if (!isElement(scan.openElement)) scan.openElement = "...";
  return scan;
}

/// `open` says where the open element was opened.
Wording wordingOf(frame::Scan const& scan, std::string const& open) {
  FaultWords const& words = faultWords[static_cast<std::size_t>(scan.fault)];
  auto const filled = [&](std::string_view form) {
    std::string text;
    for (std::size_t mark; (mark = form.find('%')) != form.npos; form.remove_prefix(mark + 2)) {
      text += form.substr(0, mark);
      char const what = form[mark + 1];
      if (what == 'f') text += scan.found;
      if (what == 'e') text += scan.openElement;
      if (what == 'o') text += open;
      if (what == 'n') text += std::to_string(words.limit);
    }
    return text.append(form);
  };
  return {filled(words.found), filled(words.expected)};
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
  scan.fault = Fault::tooLong;
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
  if (scan.fault == Fault::empty) return refuseTextBefore(source, scan);
  std::size_t const at = source.skipped() + scan.offset;
  std::size_t behind = at + std::min<std::size_t>(1, source.whole().size() - at);
  while (behind < source.whole().size() &&
         (static_cast<unsigned char>(source.whole()[behind]) & 0xC0U) == 0x80) {
    ++behind;
  }
  frame::Scan const shown = withoutSecrets(scan, source.whole().substr(0, at));
  return refusalAt(source, at, behind, kindOf(scan.fault),
                   wordingOf(shown, openElement(source, shown)));
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
