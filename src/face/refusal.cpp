#include "face/refusal.hpp"

#include <algorithm>

#include "face/catalogue.hpp"

namespace Kovra {

namespace {

/// What would be right, and what stands there instead; Decoding::description() makes a sentence
/// of the two.
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

/// Characters before `offset`, counted as TinyXML counts: "\r\n" is one line end, and in UTF-8 the
/// bytes that continue a character are not counted.
Place placeOf(std::string_view text, std::size_t offset) {
  Place place;
  place.line = 1;
  place.column = 1;
  for (std::size_t i = 0; i < std::min(offset, text.size()); ++i) {
    bool const lineEnd =
        text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'));
    bool const continues = (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    if (lineEnd) {
      ++place.line;
      place.column = 1;
    } else if (!continues && text[i] != '\r') {
      ++place.column;
    }
  }
  return place;
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
      return {"no markup", "an XML document"};
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

/// " in <name>, opened at line 3", for the element that is open at the fault.
std::string openElement(std::string_view text, frame::Scan const& scan) {
  if (scan.openElement.empty()) return {};
  return " in " + tag(scan.openElement) + ", opened at line " +
         std::to_string(placeOf(text, scan.openAt).line);
}

std::string joined(std::vector<std::string> const& words) {
  std::string list;
  for (std::string const& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

std::string rootsOf(std::string const& as) {
  frame::MessageRow const* const reply = findReply(as);
  if (reply == nullptr) return "the root element of a reply that Kovra reads";
  std::vector<std::string> roots;
  for (char const* const root : reply->roots) roots.push_back(tag(root));
  return (roots.size() > 1 ? "one of: " : "") + joined(roots);
}

}  // namespace

Decoding refuseName(std::string const& as) {
  Decoding refused;
  refused.status = Decoding::Status::unknownName;
  refused.found = quoted(as);
  std::vector<std::string> names;
  for (frame::MessageRow const& reply : replies()) names.emplace_back(reply.name);
  refused.expected = "one of: " + joined(names);
  return refused;
}

Decoding refuseNul(std::string_view text, std::size_t offset) {
  Decoding refused;
  refused.place = placeOf(text, offset);
  refused.found = "a NUL byte";
  refused.expected = "text";
  return refused;
}

Decoding refuseText(std::string_view text, frame::Scan const& scan) {
  Decoding refused;
  refused.status = isHostile(scan.fault) ? Decoding::Status::hostile : Decoding::Status::malformed;
  refused.place = placeOf(text, scan.offset);
  Wording wording = wordingOf(scan, openElement(text, scan));
  refused.found = std::move(wording.found);
  refused.expected = std::move(wording.expected);
  return refused;
}

Decoding refuseRoot(frame::Tree const& tree, frame::Places& places, std::string const& as) {
  Decoding refused;
  refused.status = Decoding::Status::unknownRoot;
  refused.expected = rootsOf(as);
  frame::Element const root = frame::firstElement(tree);
  if (!root) {
    refused.found = "no root element";
    return refused;
  }
  bool const otherReply =
      !as.empty() &&
      std::any_of(replies().begin(), replies().end(), [&](frame::MessageRow const& reply) {
        return std::find(reply.roots.begin(), reply.roots.end(), root.name()) != reply.roots.end();
      });
  if (otherReply) refused.status = Decoding::Status::wrongRoot;
  refused.root = root.name();
  refused.found = "root element " + tag(refused.root);
  refused.place = places.of(root.offset());
  return refused;
}

std::string Decoding::description() const {
  switch (status) {
    case Status::decoded:
      return "decoded";
    case Status::malformed:
      return "malformed: found " + found + "; expected " + expected;
    case Status::hostile:
      return "refused: found " + found + "; expected " + expected;
    case Status::unknownRoot:
    case Status::wrongRoot:
      return "found " + found + "; expected " + expected;
    case Status::unknownName:
      return "unknown document " + found + "; expected " + expected;
  }
  return {};
}

std::string Problem::description() const {
  return (path.empty() ? "" : path + ": ") + "found " + found + "; expected " + expected;
}

std::string Note::description() const {
  std::string const subject = tag(element) + ": ";
  std::string const text =
      found.empty() ? "the text" : quoted(found);  // that of a secret is not told
  switch (kind) {
    case Kind::unknownElement:
      return subject + "unknown element, skipped";
    case Kind::unknownWord:
      return subject + "unknown word" + (found.empty() ? "" : ' ' + text) +
             "; one of: " + joined(expected);
    case Kind::notANumber:
      return subject + text + " is not " + joined(expected);
    case Kind::changedNumber:
      return subject + text + " does not fit" + (kept.empty() ? "" : ", kept as " + kept);
    case Kind::cutText:
      return subject + "text too long" + (kept.empty() ? "" : ", cut to " + quoted(kept));
    case Kind::emptyElement:
      return subject + "empty, not read";
    case Kind::noAttribute:
      return subject + "no number in attribute " + quoted(joined(expected)) + ", not read";
    case Kind::unlisted:
      return kept + " more notes";
    case Kind::surplusEntry:
      return subject + "more than " + kept + " entries, skipped";
  }
  return {};
}

}  // namespace Kovra
