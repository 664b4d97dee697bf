#include "kovra.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "face/catalogue.hpp"
#include "support/findings.hpp"

namespace Kovra {
namespace {

Decoding decoded(std::string const& text, std::string const& as = {}) {
  Decoding const decoding = decode(text, as);
  EXPECT_TRUE(static_cast<bool>(decoding)) << decoding.refusal().message();
  EXPECT_FALSE(decoding.refusal());
  EXPECT_EQ(decoding.refusal().message(), "");
  return decoding;
}

/// "message true" for each reading.
std::vector<std::string> readingsOf(std::string const& text, std::string const& as = {}) {
  std::vector<std::string> all;
  for (Reading const& reading : decoded(text, as).readings()) {
    all.push_back(reading.message() + (reading.result() ? " true" : " false"));
  }
  return all;
}

using Texts = std::vector<std::string>;

TEST(Messages, AreTheCatalogue) {
  std::vector<Message> const all = messages();
  ASSERT_EQ(all.size(), catalogue().size());
  std::set<std::string> names;
  for (std::size_t i = 0; i < all.size(); ++i) {
    Message const& message = all[i];
    frame::MessageRow const& row = catalogue()[i];
    EXPECT_EQ(message.name(), row.name);
    EXPECT_EQ(message.title(), row.title);
    EXPECT_FALSE(message.title().empty()) << message.name();
    EXPECT_EQ(message.roots(), Texts(row.roots.begin(), row.roots.end()));
    EXPECT_TRUE(names.insert(message.name()).second) << message.name();
    EXPECT_TRUE(message.isRead() || message.isWritten()) << message.name();
    EXPECT_EQ(message.isWritten(), row.composing != nullptr) << message.name();
  }
}

TEST(Messages, ThatAreReadHaveARootAndAreFoundByTheirNames) {
  std::size_t read = 0;
  for (Message const& message : messages()) {
    if (!message.isRead()) {
      EXPECT_EQ(findReply(message.name()), nullptr) << message.name();
      continue;
    }
    ++read;
    EXPECT_FALSE(message.roots().empty()) << message.name();
    ASSERT_NE(findReply(message.name()), nullptr) << message.name();
    EXPECT_EQ(findReply(message.name())->title, message.title());
  }
  EXPECT_EQ(read, replies().size());
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
  EXPECT_EQ(decoding.root(), "get_general_status");
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].message(), "general-status");
  EXPECT_TRUE(readings[0].result());
  EXPECT_EQ(readings[0].record(), Value::object({{"error", 5}}));
  EXPECT_TRUE(decoding.notes().empty());
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

TEST(Decode, TellsTheRootOfTheFirstReaderThatRecognisesSomething) {
  Decoding const decoding = decoded(
      "<get_free_ram/><get_free_flash><bytes_free>5</bytes_free></"
      "get_free_flash><get_cleaning_status/>");
  EXPECT_EQ(decoding.root(), "get_free_flash");
}

TEST(Decode, MakesRoomForEveryServiceEvent) {
  Decoding const decoding = decoded(
      "<get_log_service_history><service><number>1</number></service>"
      "<service><number>2</number></service></get_log_service_history>");
  ASSERT_EQ(decoding.readings().size(), 1U);
  Value const record = decoding.readings()[0].record();
  EXPECT_EQ(record.at("count"), 2);
  EXPECT_EQ(record.at("entries[1].number"), 2);
  EXPECT_TRUE(decoding.notes().empty());
}

TEST(Decode, TakesOnlyTheBytesThatItIsGiven) {
  std::string_view const text = "<get_count/>rest";
  Decoding const whole = decode(text.substr(0, text.size() - 4));
  EXPECT_TRUE(static_cast<bool>(whole));
  EXPECT_EQ(test::notesOf(whole.notes()), "<get_count>: empty, not read\n");
  EXPECT_FALSE(decode(text.substr(0, text.size() - 5)));
}

TEST(Results, AreBornRefusedAndEmpty) {
  Decoding const decoding;
  EXPECT_FALSE(decoding);
  EXPECT_TRUE(decoding.readings().empty());
  EXPECT_TRUE(decoding.notes().empty());
  EXPECT_FALSE(decoding.refusal());
  EXPECT_EQ(decoding.root(), "");
  Reading const reading;
  EXPECT_EQ(reading.message(), "");
  EXPECT_FALSE(reading.result());
  EXPECT_TRUE(reading.record().empty());
  Composition const composition;
  EXPECT_FALSE(composition);
  EXPECT_EQ(composition.text(), "");
  EXPECT_TRUE(composition.problems().empty());
  Problem const problem;
  EXPECT_EQ(problem.path() + problem.found() + problem.expected(), "");
}

TEST(Results, HoldWhatTheyShowWithoutTheResultThatTheyComeFrom) {
  Reading reading;
  {
    Decoding const decoding = decoded("<get_general_status><error>5</error></get_general_status>");
    reading = decoding.readings().at(0);
  }
  Reading const copy = reading;
  reading = Reading();
  EXPECT_EQ(copy.record(), Value::object({{"error", 5}}));
}

TEST(Results, FindingsAreAssigned) {
  Refusal const refusal = decode("<a>").refusal();
  Refusal const other = decode("").refusal();
  ASSERT_NE(refusal.message(), other.message());
  Refusal finding = other;
  finding = refusal;
  EXPECT_EQ(finding.message(), refusal.message());
  finding = Refusal(other);
  EXPECT_EQ(finding.message(), other.message());
  finding = Refusal();
  EXPECT_EQ(finding.message(), "");
}

TEST(Problems, AreOneSentenceWithThePathInFront) {
  std::vector<Problem> const whole = compose("passkey", 5).problems();
  ASSERT_EQ(whole.size(), 1U);
  EXPECT_EQ(whole[0].path(), "");
  EXPECT_EQ(whole[0].message(), "found " + whole[0].found() + "; expected " + whole[0].expected());
  std::vector<Problem> const member =
      compose("passkey", Value::object({{"current_passkey", 5}})).problems();
  ASSERT_EQ(member.size(), 1U);
  EXPECT_EQ(member[0].path(), "current_passkey");
  EXPECT_EQ(member[0].message(),
            "current_passkey: found " + member[0].found() + "; expected " + member[0].expected());
}

TEST(Compose, KnowsNoOtherNames) {
  for (char const* const name : {"", "general-status", "no-such-message"}) {
    Composition const composition = compose(name, Value::object());
    EXPECT_FALSE(composition) << name;
    ASSERT_EQ(composition.problems().size(), 1U) << name;
    EXPECT_EQ(
        composition.problems()[0].message(),
        "found \"" + std::string(name) + "\"; expected the name of a document that is composed");
  }
}

}  // namespace
}  // namespace Kovra
