// Nothing of a reply is lost without a word: what the readings hold and what the notes tell is the
// whole of it. Tried with every sample, and with every sample changed everywhere.

#include "support/whole_reply.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "kovra.hpp"

namespace Kovra {
namespace {

namespace fs = std::filesystem;

struct Sample {
  std::string name;
  std::string text;
};

/// In UTF-8, since a place in another encoding means nothing to the second opinion.
bool isUtf8(Decoding const& decoding, std::string const& text) {
  auto const notes = decoding.notes();
  bool const isReplaced =
      std::any_of(notes.begin(), notes.end(), [](Note const& note) { return note.id() == "K106"; });
  bool const isAscii = std::all_of(text.begin(), text.end(),
                                   [](char c) { return static_cast<signed char>(c) >= 0; });
  return isAscii || (!isReplaced && text.find("8859") == text.npos);
}

std::vector<Sample> samples() {
  std::vector<Sample> all;
  for (fs::directory_entry const& entry : fs::recursive_directory_iterator(KOVRA_SAMPLES_DIR)) {
    std::string const name = entry.path().filename();
    if (entry.path().extension() != ".xml" || name.find(".bad.") != name.npos) continue;
    std::ifstream file(entry.path());
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!isUtf8(decode(text), text)) continue;
    all.push_back({fs::relative(entry.path(), KOVRA_SAMPLES_DIR), std::move(text)});
  }
  std::sort(all.begin(), all.end(),
            [](Sample const& a, Sample const& b) { return a.name < b.name; });
  return all;
}

/// A piece of a text, and of an element more: where its content is.
struct Piece {
  std::size_t begin;
  std::size_t end;
};
struct Place : Piece {
  Piece content;  ///< empty for one without an end tag
  std::size_t nameEnd;
  std::string name;
  bool isRoot;
};

/// A text's elements in their order, the values of attributes and the texts.
struct Outlined {
  std::vector<Place> elements;
  std::vector<Piece> values;
  std::vector<Piece> texts;
};

constexpr char blanks[] = " \t\r\n";

class Outliner {
 public:
  explicit Outliner(std::string const& text) : text_(text) {
    for (std::size_t at = text_.find('<'); at != text_.npos; at = text_.find('<', at))
      at = node(at);
  }
  Outlined const& outlined() const { return outlined_; }

 private:
  bool isAt(std::size_t at, char const* mark) const {
    return text_.compare(at, std::char_traits<char>::length(mark), mark) == 0;
  }

  /// From a `<` to what stands behind the text that follows the tag.
  std::size_t node(std::size_t at) {
    if (isAt(at, "<!--")) return text_.find("-->", at) + 3;
    if (isAt(at, "<![CDATA[")) {
      std::size_t const end = text_.find("]]>", at);
      if (end > at + 9) outlined_.texts.push_back({at + 9, end});
      return end + 3;
    }
    std::size_t const end = endOfTag(at);
    if (isAt(at, "</")) {
      Place& place = outlined_.elements[open_.back()];
      place.content.end = at;
      place.end = end;
      open_.pop_back();
    } else if (!isAt(at, "<?") && !isAt(at, "<!")) {
      tag(at, end);
    }
    text(end);
    return end;
  }

  std::size_t endOfTag(std::size_t at) {
    char quote = '\0';
    for (; at < text_.size(); ++at) {
      if (quote == '\0' && text_[at] == '>') return at + 1;
      if (quote != '\0' && text_[at] == quote) {
        quote = '\0';
      } else if (quote == '\0' && (text_[at] == '"' || text_[at] == '\'')) {
        quote = text_[at];
      }
    }
    return at;
  }

  void tag(std::size_t at, std::size_t end) {
    std::size_t const nameEnd = text_.find_first_of(" \t\r\n/>", at);
    outlined_.elements.push_back(
        {{at, end}, {end, end}, nameEnd, text_.substr(at + 1, nameEnd - at - 1), open_.empty()});
    if (text_[end - 2] != '/') open_.push_back(outlined_.elements.size() - 1);
    for (std::size_t open = text_.find('=', nameEnd); open < end; open = text_.find('=', open)) {
      open = text_.find_first_of("\"'", open);
      std::size_t const close = text_.find(text_[open], open + 1);
      outlined_.values.push_back({open + 1, close});
      open = close;
    }
  }

  void text(std::size_t at) {
    std::size_t const next = std::min(text_.find('<', at), text_.size());
    std::size_t const begin = text_.find_first_not_of(blanks, at);
    if (open_.empty() || begin >= next) return;
    outlined_.texts.push_back({begin, text_.find_last_not_of(blanks, next - 1) + 1});
  }

  std::string const& text_;
  Outlined outlined_;
  std::vector<std::size_t> open_;
};

/// How many places of a sample are changed.
constexpr std::size_t many = 20;

Outlined outlineOf(std::string const& text) {
  return Outliner(text).outlined();
}

std::string replaced(std::string text, Piece piece, std::string const& by) {
  return text.replace(piece.begin, piece.end - piece.begin, by);
}

/// Long samples are changed here and there: always at the same places.
template <class Any>
std::vector<Any> someOf(std::vector<Any> const& all, std::size_t most) {
  std::vector<Any> some;
  std::mt19937 random(20);
  std::sample(all.begin(), all.end(), std::back_inserter(some), most, random);
  return some;
}

void expectNothingLost(std::string const& text, std::string const& what) {
  Decoding const decoding = decode(text);
  if (!decoding) return;
  for (std::string const& lost : test::lostOf(text, decoding)) {
    ADD_FAILURE() << what << " loses " << lost;
  }
}

TEST(TheWholeReply, IsInTheReadingsAndTheNotes) {
  std::set<std::string> used;
  for (Sample const& sample : samples()) {
    Decoding const decoding = decode(sample.text);
    ASSERT_TRUE(static_cast<bool>(decoding)) << sample.name;
    for (std::string const& lost : test::lostOf(sample.text, decoding, &used)) {
      ADD_FAILURE() << sample.name << " loses " << lost;
    }
  }
  for (test::OtherForm const& form : test::otherForms) {
    EXPECT_EQ(used.count(form.element), 1U) << form.element << ": " << form.why;
  }
}

/// The checker itself: what it finds lost between a text and the decoding of another one.
TEST(TheWholeReply, IsMissedWhereSomethingIsLost) {
  auto const lost = [](std::string const& text, std::string const& decoded) {
    std::string const begin = "<get_general_status>";
    std::string const end = "</get_general_status>";
    return test::lostOf(begin + text + end, decode(begin + decoded + end));
  };
  using Lost = std::vector<std::string>;
  std::string const error = "<error>5</error>";
  EXPECT_EQ(lost(error, error), Lost{});
  EXPECT_EQ(lost(error, "<error>6</error>"), Lost{"/get_general_status/error: 5"});
  EXPECT_EQ(lost(error + "<warning>5</warning>", error), Lost{"/get_general_status/warning: 5"})
      << "one leaf accounts for one text";
  EXPECT_EQ(lost("<error a='b'>5</error>", error), Lost{"/get_general_status/error@a: b"});
  EXPECT_EQ(lost("<error>5<b/>6</error>", error + "<error/>"),
            Lost{"/get_general_status/error: 6"});
  EXPECT_EQ(lost("<alarms>0x1A</alarms>", "<alarms>0x01a</alarms>"), Lost{}) << "the same number";
  EXPECT_EQ(lost("<printer_state>idle</printer_state>", "<printer_state>busy</printer_state>"),
            Lost{})
      << "a note tells of the element, whatever it says";
}

TEST(TheWholeReply, IsNotMissedWhereBlanksStandBehindANumber) {
  std::string const contrast = "<configuration><lcd_contrast min='1 ' max='9\n'>5</lcd_contrast>";
  std::string const text = contrast + "</configuration>";
  EXPECT_EQ(test::lostOf(text, decode(text)), std::vector<std::string>{});
  std::string const other = "<configuration><lcd_contrast min='1x' max='9'>5</lcd_contrast>";
  EXPECT_EQ(test::lostOf(other + "</configuration>", decode(text)),
            std::vector<std::string>{"/configuration/lcd_contrast@min: 1x"});
}

TEST(TheWholeReply, EndsBeforeAFurtherDocument) {
  std::string const first = "<get_free_ram><bytes_free>five</bytes_free></get_free_ram>";
  std::string const second = "<get_free_ram><bytes_free>six</bytes_free></get_free_ram>";
  EXPECT_EQ(test::lostOf(first + second, decode(first + second)), std::vector<std::string>{});
  EXPECT_TRUE(test::showsChange(decode(first + second), first + second, first + first))
      << "a note passes over it";
  EXPECT_EQ(test::lostOf(first + second, decode(first)),
            std::vector<std::string>{"/get_free_ram/bytes_free: six"});
}

/// Other texts in the place of one: another number or word, and the same with something behind.
std::vector<std::string> others(std::string const& text) {
  std::string other = "qzx";
  if (std::isdigit(static_cast<unsigned char>(text.back())) != 0) {
    other = text;
    other.back() = other.back() == '9' ? '8' : static_cast<char>(other.back() + 1);
  }
  return {other, text + "x", text + " x"};
}

void expectChangeShown(Sample const& sample, Decoding const& before, Piece piece) {
  for (std::string const& other :
       others(sample.text.substr(piece.begin, piece.end - piece.begin))) {
    std::string const changed = replaced(sample.text, piece, other);
    std::string const what =
        sample.name + " with \"" + other + "\" at " + std::to_string(piece.begin);
    EXPECT_TRUE(test::showsChange(before, sample.text, changed)) << what;
    expectNothingLost(changed, what);
  }
}

TEST(TheWholeReply, ShowsEachChangeOfAText) {
  for (Sample const& sample : samples()) {
    Decoding const before = decode(sample.text);
    for (Piece const& piece : someOf(outlineOf(sample.text).texts, many)) {
      expectChangeShown(sample, before, piece);
    }
  }
}

TEST(TheWholeReply, ShowsEachChangeOfAnAttribute) {
  for (Sample const& sample : samples()) {
    Decoding const before = decode(sample.text);
    for (Piece const& piece : someOf(outlineOf(sample.text).values, many)) {
      if (piece.begin < piece.end) expectChangeShown(sample, before, piece);
    }
  }
}

/// Those that are neither skipped nor overwritten with all in them: of what is put there nothing
/// more is told.
std::vector<Place> reachedElements(std::string const& text) {
  test::SecondOpinion const opinion(text);
  test::Told const told(decode(text), opinion);
  std::vector<Place> const all = outlineOf(text).elements;
  EXPECT_EQ(opinion.elements().size(), all.size());
  std::vector<Place> reached;
  auto place = all.begin();
  for (auto const& [spot, element] : opinion.elements()) {
    if (!told.isPassedOver(element)) reached.push_back(*place);
    ++place;
  }
  return reached;
}

/// What is put in shows, and nothing else is lost by it.
void expectShown(Sample const& sample, std::string const& before, std::string const& changed,
                 std::string const& what) {
  EXPECT_TRUE(test::everythingOf(decode(changed)) != before) << sample.name << " with " << what;
  expectNothingLost(changed, sample.name + " with " + what);
}

TEST(TheWholeReply, TellsOfWhatIsPutIntoAnElement) {
  for (Sample const& sample : samples()) {
    std::string const before = test::everythingOf(decode(sample.text));
    for (Place const& place : someOf(reachedElements(sample.text), many)) {
      std::string text = sample.text;
      text.insert(place.nameEnd, " zz=\"zz\"");
      expectShown(sample, before, text, "an attribute of " + place.name);
      if (place.content.begin == place.content.end) continue;
      for (char const* const more : {"<zz/>", "<zz>zz</zz>", "<![CDATA[zz]]>"}) {
        text = sample.text;
        text.insert(place.content.begin, more);
        expectShown(sample, before, text, more + (" at the begin of " + place.name));
        text = sample.text;
        text.insert(place.content.end, more);
        expectShown(sample, before, text, more + (" at the end of " + place.name));
      }
    }
  }
}

/// An element that says nothing changes nothing when it comes again.
bool saysSomething(std::string const& element) {
  test::SecondOpinion const opinion(element);
  return !opinion.said().empty();
}

TEST(TheWholeReply, TellsOfAnElementThatComesAgain) {
  for (Sample const& sample : samples()) {
    std::string const before = test::everythingOf(decode(sample.text));
    for (Place const& place : someOf(reachedElements(sample.text), many)) {
      if (place.isRoot) continue;
      std::string const element = sample.text.substr(place.begin, place.end - place.begin);
      std::string text = sample.text;
      text.insert(place.end, element);
      if (!saysSomething(element)) {
        expectNothingLost(text, sample.name + " with a second " + place.name);
      } else {
        expectShown(sample, before, text, "a second " + place.name);
      }
    }
  }
}

/// An empty one overwrites nothing, or that is told.
TEST(TheWholeReply, TellsOfAnElementThatComesAgainEmpty) {
  for (Sample const& sample : samples()) {
    for (Place const& place : someOf(reachedElements(sample.text), many)) {
      if (place.isRoot) continue;
      std::string text = sample.text;
      text.insert(place.end, '<' + place.name + "/>");
      expectNothingLost(text, sample.name + " with a second, empty " + place.name);
    }
  }
}

/// A comment is nothing by itself, but it may part a text.
TEST(TheWholeReply, TellsOfATextThatACommentParts) {
  for (Sample const& sample : samples()) {
    std::string const before = test::everythingOf(decode(sample.text));
    for (Piece const& piece : someOf(outlineOf(sample.text).texts, many)) {
      for (std::size_t const at : {piece.begin, (piece.begin + piece.end) / 2, piece.end}) {
        if (sample.text.compare(piece.end, 3, "]]>") == 0) continue;
        std::string text = sample.text;
        text.insert(at, "<!-- -->");
        expectNothingLost(text, sample.name + " with a comment at " + std::to_string(at));
      }
    }
  }
}

}  // namespace
}  // namespace Kovra
