#include "kovra.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "face/catalogue.hpp"

namespace Kovra {
namespace {

Decoding decoded(std::string const& text, std::string const& as = {}) {
  Decoding decoding = decode(text.data(), text.size(), as);
  EXPECT_EQ(decoding.status, Decoding::Status::decoded) << decoding.description();
  EXPECT_EQ(decoding.description(), "decoded");
  return decoding;
}

/// "document true" for each reading.
std::vector<std::string> readingsOf(std::string const& text, std::string const& as = {}) {
  std::vector<std::string> all;
  for (Reading const& reading : decoded(text, as).readings) {
    all.push_back(reading.document + (reading.result ? " true" : " false"));
  }
  return all;
}

/// "LINE:COLUMN sentence" for each note.
std::vector<std::string> notesOf(std::string const& text) {
  std::vector<std::string> all;
  for (Note const& note : decoded(text).notes) {
    all.push_back(std::to_string(note.place.line) + ':' + std::to_string(note.place.column) + ' ' +
                  note.description());
  }
  return all;
}

using Texts = std::vector<std::string>;

TEST(Documents, AreTheCatalogue) {
  std::vector<Document> const all = documents();
  ASSERT_EQ(all.size(), replies().size());
  std::set<std::string> names;
  for (Document const& document : all) {
    EXPECT_TRUE(names.insert(document.name).second) << document.name;
    EXPECT_FALSE(document.title.empty()) << document.name;
    EXPECT_FALSE(document.roots.empty()) << document.name;
    frame::MessageRow const* const reply = findReply(document.name);
    ASSERT_NE(reply, nullptr) << document.name;
    EXPECT_EQ(reply->title, document.title);
    EXPECT_EQ(Texts(reply->roots.begin(), reply->roots.end()), document.roots);
  }
  EXPECT_EQ(findReply("nothing"), nullptr);
  EXPECT_EQ(findReply(""), nullptr);
}

TEST(Vocabulary, IsSortedAndHasRootsElementsAndKeywords) {
  std::vector<std::string> const words = vocabulary();
  EXPECT_TRUE(std::is_sorted(words.begin(), words.end()));
  EXPECT_EQ(std::adjacent_find(words.begin(), words.end()), words.end());
  for (char const* const word : {"get_general_status", "printer_state", "printing_heating",
                                 "set_configuration", "min", "mag_stripe"}) {
    EXPECT_TRUE(std::binary_search(words.begin(), words.end(), word)) << word;
  }
}

TEST(Decode, TellsRootReadingsAndResult) {
  Decoding const decoding = decoded("<get_general_status><error>5</error></get_general_status>");
  EXPECT_EQ(decoding.root, "get_general_status");
  ASSERT_EQ(decoding.readings.size(), 1U);
  EXPECT_EQ(decoding.readings[0].document, "general-status");
  EXPECT_TRUE(decoding.readings[0].result);
  EXPECT_EQ(decoding.readings[0].record.find("error")->integer, 5);
  EXPECT_TRUE(decoding.notes.empty());
}

TEST(Decode, LeavesOutReadersThatRecogniseNothing) {
  std::string const cards = "<total_cards_done>5</total_cards_done>";
  std::string const cleaning =
      "<total_cards_until_next_cleaning>5</total_cards_until_next_cleaning>";
  auto const count = [](std::string const& children) {
    return "<get_count>" + children + "</get_count>";
  };
  EXPECT_EQ(readingsOf(count(cards)), Texts{"card-count true"});
  EXPECT_EQ(readingsOf(count(cleaning)), Texts{"cards-until-cleaning true"});
  EXPECT_EQ(readingsOf(count(cards + cleaning)),
            (Texts{"card-count true", "cards-until-cleaning true"}));
  EXPECT_EQ(readingsOf(count("")), (Texts{"card-count false", "cards-until-cleaning false"}))
      << "all where none does";
  EXPECT_EQ(readingsOf(count(cards), "cards-until-cleaning"), Texts{"cards-until-cleaning false"});
}

TEST(Decode, TakesOnlyTheBytesThatItIsGiven) {
  std::string const text = "<get_count/>rest";
  EXPECT_EQ(decode(text.data(), text.size() - 4).status, Decoding::Status::decoded);
  EXPECT_EQ(decode(text.data(), text.size() - 5).status, Decoding::Status::malformed);
}

TEST(Notes, StandInTheOrderOfTheirPlacesWhicheverReaderHasThem) {
  EXPECT_EQ(notesOf("<keys>\n<set><new_passkey/></set>\n<printer_lock_key/><other/></keys>"),
            (Texts{"2:6 <new_passkey>: empty, not read", "3:1 <printer_lock_key>: empty, not read",
                   "3:20 <other>: unknown element, skipped"}));
}

TEST(Notes, OfOnePlaceStandInTheOrderInWhichTheyWereMade) {
  // So many that sorting them would show.
  std::string text = "<configuration>\n";
  Texts expected;
  for (int line = 2; line < 52; ++line) {
    text += "<lcd_contrast/>\n";
    std::string const place = std::to_string(line) + ":1 <lcd_contrast>: ";
    expected.push_back(place + "no number in attribute \"min, max\", not read");
    expected.push_back(place + "empty, not read");
  }
  EXPECT_EQ(notesOf(text + "</configuration>"), expected);
}

TEST(Notes, OfAnElementAreToldOnceForAllReaders) {
  EXPECT_EQ(notesOf("<get_count><other/></get_count>"),
            Texts{"1:12 <other>: unknown element, skipped"});
  EXPECT_EQ(notesOf("<get_count><total_cards_done/></get_count>"),
            Texts{"1:12 <total_cards_done>: empty, not read"})
      << "known to one of them";
}

TEST(Notes, BeyondAThousandAreCounted) {
  std::string children;
  for (int i = 0; i < 1003; ++i) children += "<other/>";
  std::vector<Note> const notes =
      decoded("<get_general_status>" + children + "</get_general_status>").notes;
  ASSERT_EQ(notes.size(), 1001U);
  EXPECT_EQ(notes.back().kind, Note::Kind::unlisted);
  EXPECT_EQ(notes.back().description(), "3 more notes");
  EXPECT_EQ(notes.back().place.line, 0);
}

Note note(Note::Kind kind, std::string const& found, std::string const& kept,
          std::vector<std::string> const& expected) {
  Note made;
  made.kind = kind;
  made.element = "e";
  made.found = found;
  made.kept = kept;
  made.expected = expected;
  return made;
}

TEST(Notes, HaveWordsForEveryKindAndNoneForSecrets) {
  using Kind = Note::Kind;
  EXPECT_EQ(note(Kind::unknownElement, "", "", {}).description(), "<e>: unknown element, skipped");
  EXPECT_EQ(note(Kind::unknownWord, "x", "", {"a", "b"}).description(),
            "<e>: unknown word \"x\"; one of: a, b");
  EXPECT_EQ(note(Kind::unknownWord, "", "", {"a", "b"}).description(),
            "<e>: unknown word; one of: a, b");
  EXPECT_EQ(note(Kind::notANumber, "x", "", {"a number"}).description(),
            "<e>: \"x\" is not a number");
  EXPECT_EQ(note(Kind::notANumber, "", "", {"a number"}).description(),
            "<e>: the text is not a number");
  EXPECT_EQ(note(Kind::changedNumber, "70000", "4464", {}).description(),
            "<e>: \"70000\" does not fit, kept as 4464");
  EXPECT_EQ(note(Kind::changedNumber, "", "", {}).description(), "<e>: the text does not fit");
  EXPECT_EQ(note(Kind::cutText, "longer", "long", {}).description(),
            "<e>: text too long, cut to \"long\"");
  EXPECT_EQ(note(Kind::cutText, "", "", {}).description(), "<e>: text too long");
  EXPECT_EQ(note(Kind::emptyElement, "", "", {}).description(), "<e>: empty, not read");
  EXPECT_EQ(note(Kind::noAttribute, "", "", {"min", "max"}).description(),
            "<e>: no number in attribute \"min, max\", not read");
  EXPECT_EQ(note(Kind::surplusEntry, "", "16", {}).description(),
            "<e>: more than 16 entries, skipped");
  EXPECT_EQ(note(Kind::unlisted, "", "7", {}).description(), "7 more notes");
  EXPECT_EQ(note(static_cast<Kind>(99), "x", "y", {"z"}).description(), "");
}

TEST(Problems, AreOneSentenceWithThePathInFront) {
  Problem problem;
  problem.found = "this";
  problem.expected = "that";
  EXPECT_EQ(problem.description(), "found this; expected that");
  problem.path = "a[1].b";
  EXPECT_EQ(problem.description(), "a[1].b: found this; expected that");
}

}  // namespace
}  // namespace Kovra
