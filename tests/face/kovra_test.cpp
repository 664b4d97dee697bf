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
