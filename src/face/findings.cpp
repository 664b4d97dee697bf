#include "face/findings.hpp"

namespace Kovra {

namespace {

using detail::FindingData;
using detail::FindingKindData;
using detail::Refused;
using frame::Fault;
using frame::Remarked;

// Examples.

template <char const* Text>
std::string example() {
  return Text;
}

std::string repeated(std::string const& piece, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += piece;
  return all;
}

std::string tooDeep() {
  return repeated("<a>", static_cast<int>(frame::maxDepth) + 1);
}
std::string withNul() {
  using namespace std::string_literals;
  return "<get_general_status>\0</get_general_status>"s;
}
std::string utf16() {
  using namespace std::string_literals;
  return "\xFF\xFE<\0a\0/\0>\0"s;
}
std::string gzip() {
  using namespace std::string_literals;
  return "\x1F\x8B\x08\0\0\0\0\0"s;
}
std::string manyJobs() {
  return "<get_job_list>" + repeated("<job/>", 129) + "</get_job_list>";
}
std::string manyElements() {
  return "<get_general_status>" + repeated("<other/>", 1001) + "</get_general_status>";
}

constexpr char empty[] = "";
constexpr char textBefore[] = "> status\n<get_general_status/>";
constexpr char cut[] = "<get_general_status><error>5</error>";
constexpr char brokenTag[] = "<get_general_status><error =></get_general_status>";
constexpr char repeatedAttribute[] = "<get_general_status a=\"1\" a=\"2\"/>";
constexpr char badReference[] = "<get_general_status><error>&#</error></get_general_status>";
constexpr char wrongEndTag[] = "<get_general_status><error>5</eror></get_general_status>";
constexpr char brokenDeclaration[] = "<get_general_status><?xml version ?></get_general_status>";
constexpr char unknownRoot[] = "<html/>";
constexpr char unknownElement[] =
    "<get_general_status><firmware>1.2</firmware></get_general_status>";
constexpr char unreadAttribute[] =
    "<get_general_status><error unit=\"none\">5</error></get_general_status>";
constexpr char unreadText[] = "<get_general_status>ok<error>5</error></get_general_status>";
constexpr char repeatedElement[] =
    "<get_general_status><error>5</error><error>6</error></get_general_status>";
constexpr char alteredText[] =
    "<get_wireless_status><ssid>Tom & Jerry</ssid></get_wireless_status>";
constexpr char replacedBytes[] = "<get_wireless_status><ssid>Caf\xE9</ssid></get_wireless_status>";
constexpr char condensedBlanks[] =
    "<get_wireless_status><ssid>My  Net</ssid></get_wireless_status>";
constexpr char textBehind[] = "<get_general_status><error>5</error></get_general_status> done";
constexpr char cutText[] =
    "<get_wireless_status><ssid>a name of more than thirty-one letters</ssid>"
    "</get_wireless_status>";
constexpr char changedNumber[] =
    "<get_general_status><param_chg_counter>70000</param_chg_counter></get_general_status>";
constexpr char notANumber[] = "<get_general_status><error>five</error></get_general_status>";
constexpr char unknownWord[] =
    "<get_general_status><printer_state>sleeping</printer_state></get_general_status>";
constexpr char otherSpelling[] = "<action>please lock_printer now</action>";
constexpr char emptyElement[] = "<get_general_status><error/></get_general_status>";
constexpr char noAttribute[] = "<configuration><lcd_contrast>5</lcd_contrast></configuration>";

constexpr auto error = Severity::error;
constexpr auto warning = Severity::warning;
constexpr auto information = Severity::information;

/// In the order of their ids. An id that is no longer used stays here, with a comment.
constexpr FindingKindData kinds[] = {
    {"K001", error, "empty", "empty text",
     "There is nothing in the text but blanks. Whoever saved the reply saved nothing: ask the "
     "printer again.",
     example<empty>},
    {"K002", error, "text_before", "text before the document",
     "The text begins with something else than XML: a prompt, the header of a message, the name of "
     "a file. The place is where that begins, and its end is where the document does. Cut it off, "
     "or choose to skip it.",
     example<textBefore>},
    {"K003", error, "gzip", "compressed file",
     "The bytes are a file that was compressed with gzip. Unpack it first.", gzip},
    {"K004", error, "utf16", "UTF-16 that is not declared",
     "The text is UTF-16, as some editors save it, and its declaration does not say so. Save it as "
     "UTF-8, or declare encoding=\"UTF-16\".",
     utf16},
    {"K005", error, "ends_early", "text that ends early",
     "The text ends in the middle of the document: a connection broke off, or a copy is not whole. "
     "Ask the printer again.",
     example<cut>},
    {"K006", error, "broken_tag", "broken tag",
     "A tag holds something else than a name and attributes with values in quotes.",
     example<brokenTag>},
    {"K007", error, "repeated_attribute", "attribute for the second time",
     "An element has two attributes of one name.", example<repeatedAttribute>},
    {"K008", error, "bad_reference", "broken reference",
     "\"&#\" stands there without a character's number and a semicolon behind it.",
     example<badReference>},
    {"K009", error, "wrong_end_tag", "wrong end tag",
     "An end tag has another name than the element that is open, or no \">\" at its end.",
     example<wrongEndTag>},
    {"K010", error, "broken_declaration", "broken declaration",
     "A declaration inside an element cannot be read. It belongs before the root.",
     example<brokenDeclaration>},
    {"K011", error, "beyond_limits", "beyond all limits",
     "The text is nested more deeply, has more attributes on one element, or is longer than any "
     "reply of a printer. It is taken for hostile and not looked into.",
     tooDeep},
    {"K012", error, "nul_byte", "NUL byte",
     "The text holds a byte of zeros, which no XML does. It is no text, or was cut from memory.",
     withNul},
    {"K013", error, "unknown_root", "unknown document",
     "The text is XML, but its root element is none of a reply that Kovra knows.",
     example<unknownRoot>},
    {"K014", error, "wrong_root", "another document than was asked for",
     "The text is a reply that Kovra knows, but not the one that was asked for.",
     example<emptyElement>, "configuration"},
    {"K015", error, "unknown_message", "unknown name of a message",
     "No message that is read has the name that was asked for.", example<emptyElement>, "status"},

    {"K101", warning, "unknown_element", "unknown element",
     "No member of the record takes this element; it and all in it was skipped. The printer's "
     "firmware may be newer than this library.",
     example<unknownElement>},
    {"K102", warning, "unread_attribute", "attribute that is not read",
     "The element is known, but this attribute of it is not.", example<unreadAttribute>},
    {"K103", warning, "unread_text", "text that is not read",
     "A text stands where only elements are read, or behind the one that is read.",
     example<unreadText>},
    {"K104", warning, "repeated_element", "element for the second time",
     "The element, or another one for the same member, stood there before; what it said then was "
     "overwritten, or merged with what it says now.",
     example<repeatedElement>},
    {"K105", warning, "altered_text", "altered text",
     "A part of a text was dropped or changed when it was decoded: an ampersand that begins no "
     "reference, or a reference to what is no character. Installed hosts rely on that. The printer "
     "ought to send \"&amp;\".",
     example<alteredText>},
    {"K106", warning, "replaced_bytes", "bytes that are no character",
     "The bytes are no character in the encoding of the text; U+FFFD stands in their place. The "
     "text may be in an encoding that it does not declare.",
     example<replacedBytes>},
    {"K107", information, "condensed_blanks", "several blanks",
     "Several blanks, or a line end, within a text became a single blank.",
     example<condensedBlanks>},
    {"K108", warning, "text_behind", "text behind the document",
     "What stands behind the document was not looked at: it may be another reply.",
     example<textBehind>},
    {"K109",
     information,
     "skipped_text",
     "text before the document was skipped",
     "It was chosen to pass over what stands before the document.",
     example<textBefore>,
     {},
     true},
    {"K110", warning, "cut_text", "text too long",
     "The text is longer than its member; the record holds what fits.", example<cutText>},
    {"K111", warning, "changed_number", "number that does not fit",
     "The member cannot hold the number, or it is beyond the bounds that were sent with it; the "
     "record holds another one.",
     example<changedNumber>},
    {"K112", warning, "not_a_number", "no number",
     "The text is no number of the form that is expected; the record holds what could be read of "
     "it.",
     example<notANumber>},
    {"K113", warning, "unknown_word", "unknown word",
     "The vocabulary lacks the word; the record holds the code of an unknown one. The printer's "
     "firmware may be newer than this library.",
     example<unknownWord>},
    {"K114", information, "other_spelling", "word in another spelling",
     "The word was taken for one of the vocabulary, which spells it otherwise.",
     example<otherSpelling>},
    {"K115", information, "empty_element", "empty element",
     "The element has no text and was not read. A keyword may be that of an unknown word since.",
     example<emptyElement>},
    {"K116", information, "no_attribute", "missing attribute",
     "The element lacks an attribute; its member was not read.", example<noAttribute>},
    {"K117", warning, "surplus_entries", "list that is full",
     "The record has room for so many entries and no more; the others were skipped. The note "
     "stands "
     "at the first of them.",
     manyJobs},
    {"K118", information, "unlisted", "more notes",
     "There are too many notes to list. The last one counts the others.", manyElements},
};

/// Where the row with that id stands.
consteval std::size_t indexOf(std::string_view id) {
  std::size_t index = 0;
  while (kinds[index].id != id) ++index;
  return index;
}

/// The notes' rows stand in the order of what is remarked.
constexpr std::size_t firstNote = indexOf("K101");
static_assert(std::size(kinds) == firstNote + static_cast<std::size_t>(Remarked::unlisted) + 1);
static_assert(std::string_view(kinds[std::size(kinds) - 1].name) == "unlisted");

}  // namespace

namespace detail {

std::span<FindingKindData const> allFindingKinds() {
  return kinds;
}

FindingKindData const& kindOf(Remarked what) {
  return kinds[firstNote + static_cast<std::size_t>(what)];
}

FindingKindData const& kindOf(Refused why) {
  switch (why) {
    case Refused::empty:
      break;
    case Refused::textBefore:
      return kinds[indexOf("K002")];
    case Refused::gzip:
      return kinds[indexOf("K003")];
    case Refused::utf16:
      return kinds[indexOf("K004")];
    case Refused::nul:
      return kinds[indexOf("K012")];
    case Refused::unknownRoot:
      return kinds[indexOf("K013")];
    case Refused::wrongRoot:
      return kinds[indexOf("K014")];
    case Refused::unknownMessage:
      return kinds[indexOf("K015")];
  }
  return kinds[indexOf("K001")];
}

FindingKindData const& kindOf(Fault fault) {
  switch (fault) {
    case Fault::none:
    case Fault::empty:
      break;
    case Fault::tooLong:
    case Fault::tooDeep:
    case Fault::tooManyAttributes:
      return kinds[indexOf("K011")];
    case Fault::noElementName:
    case Fault::noAttributeName:
    case Fault::noEqualsSign:
    case Fault::strayQuote:
    case Fault::brokenEmptyTag:
      return kinds[indexOf("K006")];
    case Fault::repeatedAttribute:
      return kinds[indexOf("K007")];
    case Fault::badReference:
      return kinds[indexOf("K008")];
    case Fault::wrongEndTag:
    case Fault::brokenEndTag:
      return kinds[indexOf("K009")];
    case Fault::brokenDeclaration:
      return kinds[indexOf("K010")];
    case Fault::endsInTag:
    case Fault::endsInQuotes:
    case Fault::endsInMarkup:
    case Fault::endsInElement:
      return kinds[indexOf("K005")];
  }
  return kindOf(Refused::textBefore);
}

}  // namespace detail

// Sentences.

namespace {

std::string quoted(std::string const& text) {
  return '"' + text + '"';
}

std::string joined(std::vector<std::string> const& words) {
  std::string list;
  for (std::string const& word : words) list += (list.empty() ? "" : ", ") + word;
  return list;
}

std::string keptAs(FindingData const& finding, char const* verb) {
  return finding.kept.empty() ? "" : verb + finding.kept;
}

/// What there is to say of an element's own text; that of a secret is not told.
std::string onText(Remarked what, FindingData const& finding) {
  bool const isTold = !finding.found.empty();
  std::string const text = isTold ? quoted(finding.found) : "the text";
  switch (what) {
    case Remarked::unknownWord:
      return "unknown word" + (isTold ? ' ' + text : "") + "; one of: " + joined(finding.expected);
    case Remarked::otherSpelling:
      return text + " is spelled otherwise" + keptAs(finding, ", taken for ");
    case Remarked::notANumber:
      return text + " is not " + joined(finding.expected);
    case Remarked::changedNumber:
      return text + " does not fit" + keptAs(finding, ", kept as ");
    case Remarked::cutText:
      return "text too long" + (finding.kept.empty() ? "" : ", cut to " + quoted(finding.kept));
    case Remarked::unreadText:
      return (isTold ? "text " + text : "a text") + " is not read";
    case Remarked::alteredText:
      if (!finding.kept.empty()) return text + " was changed" + keptAs(finding, ", kept as ");
      return (isTold ? text + " in " : "") + "the text was dropped or changed";
    case Remarked::condensedBlanks:
      return "several blanks in the text became one";
    default:
      return {};
  }
}

/// What is overwritten may be what another element said.
std::string ofRepeatedElement(FindingData const& finding) {
  std::string const said = finding.found.empty() ? "" : quoted(finding.found);
  if (finding.earlier.empty()) {
    return "for the second time" + (said.empty() ? "" : ", overwrites " + said);
  }
  std::string const earlier = '<' + finding.earlier + '>';
  return said.empty() ? "overwrites what " + earlier + " said"
                      : "overwrites " + said + " of " + earlier;
}

std::string ofElement(Remarked what, FindingData const& finding) {
  switch (what) {
    case Remarked::unknownElement:
      return "unknown element, skipped";
    case Remarked::unreadAttribute:
      return "attribute " + finding.found + " is not read";
    case Remarked::repeatedElement:
      return ofRepeatedElement(finding);
    case Remarked::textBehind:
      return "a further document, not looked at";
    case Remarked::emptyElement:
      return "empty, not read";
    case Remarked::noAttribute:
      return "no number in attribute " + quoted(joined(finding.expected)) +
             (finding.found.empty() ? "" : ", found " + quoted(finding.found)) + ", not read";
    case Remarked::surplusEntries:
      return "more than " + finding.kept + (finding.kept == "1" ? " entry" : " entries") + ", " +
             (finding.count == 1 ? "one" : std::to_string(finding.count)) + " skipped";
    default:
      return onText(what, finding);
  }
}

std::string ofText(Remarked what, FindingData const& finding) {
  switch (what) {
    case Remarked::replacedBytes:
      return "bytes that are no character, U+FFFD in their place";
    case Remarked::textBehind:
      return "text behind the document is not looked at";
    case Remarked::skippedText:
      return "text before the document was skipped";
    case Remarked::unlisted:
      return std::to_string(finding.count) + (finding.count == 1 ? " more note" : " more notes");
    default:
      return onText(what, finding);
  }
}

/// How a refusal begins: most are of texts that are no XML.
std::string_view beginningOf(FindingKindData const& kind) {
  if (&kind == &detail::kindOf(Refused::unknownMessage)) return "unknown message ";
  if (&kind == &detail::kindOf(Fault::tooDeep)) return "refused: found ";
  bool const isMalformed =
      &kind >= &detail::kindOf(Fault::endsInTag) && &kind <= &detail::kindOf(Refused::nul);
  return isMalformed ? "malformed: found " : "found ";
}

std::string refusalOf(FindingData const& finding) {
  return std::string(beginningOf(*finding.kind)) + finding.found + "; expected " +
         (finding.expected.size() > 1 ? "one of: " : "") + joined(finding.expected);
}

Remarked remarkedBy(FindingKindData const& kind) {
  return static_cast<Remarked>(static_cast<std::size_t>(&kind - kinds) - firstNote);
}

}  // namespace

std::string FindingData::sentence() const {
  if (kind == nullptr) return {};
  if (kind->severity == Severity::error) return refusalOf(*this);
  Remarked const what = remarkedBy(*kind);
  if (element.empty()) return ofText(what, *this);
  std::string const said = ofElement(what, *this);
  return '<' + element + ">: " + (said.empty() ? ofText(what, *this) : said);
}

}  // namespace Kovra
