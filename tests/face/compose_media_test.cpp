// The media catalogue through the face: decoded, and its cards composed from values.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kovra.hpp"
#include "support/findings.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

char const catalogue[] = R"(<media>
  <cards>
    <card>
      <information>
        <type>1</type><description>PVC</description><coercivity>high</coercivity>
        <mag_stripe>yes</mag_stripe><contact_encode>no</contact_encode>
      </information>
      <transfer_temps><top_single min="1" max="9">5</top_single></transfer_temps>
    </card>
    <card/>
    <card><information><type>2</type></information></card>
  </cards>
  <films><film><description>Clear</description></film></films>
  <ribbons><ribbon><description>lost</description></ribbon>
    <laminate><description>Globe</description></laminate></ribbons>
</media>
)";

Value catalogueRecord() {
  Decoding const decoding = decode(catalogue);
  EXPECT_TRUE(static_cast<bool>(decoding)) << decoding.refusal().message();
  return decoding.readings().at(0).record();
}

TEST(DecodeMedia, ShowsWhatTheListsHold) {
  Decoding const decoding = decode(catalogue);
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U) << decoding.refusal().message();
  EXPECT_EQ(readings[0].message(), "media");
  EXPECT_FALSE(readings[0].result()) << "that of the entry";
  Value const& record = readings[0].record();
  Value const& cards = record.at("cards");
  ASSERT_EQ(cards.size(), 3U);
  Value const& card = cards.items()[0];
  EXPECT_EQ(card.at("type").asInteger(), 1);
  EXPECT_EQ(card.at("coercivity").word(), "high");
  EXPECT_EQ(card.at("cardFeatures"),
            Value::object({{"mag_stripe", true}, {"contact_encode", false}}))
      << "and what was not said is not shown";
  EXPECT_EQ(card.at("transfer_temps.top_single"), Value::object({{"val", 5}}))
      << "bounds are not read";
  EXPECT_EQ(cards.items()[1], Value::object());
  EXPECT_EQ(record.find("ribbons"), nullptr);
  ASSERT_EQ(record.at("laminates").size(), 1U);
  EXPECT_EQ(record.at("laminates[0].description").asText(), "Globe");
  EXPECT_EQ(test::notesOf(decoding.notes()),
            "<top_single>: attribute min=\"1\" is not read\n"
            "<top_single>: attribute max=\"9\" is not read\n"
            "<ribbon>: unknown element, skipped\n");
}

Value choices(bool allTypes, bool withoutTransfer) {
  return test::withZeros(
      Value::object({{"all-types", allTypes}, {"without-transfer", withoutTransfer}}));
}

std::string composed(Value const& record, Value const& choices) {
  Composition const composition = compose("media", record, choices);
  EXPECT_TRUE(static_cast<bool>(composition)) << test::problemsOf(composition);
  return composition.text();
}

std::size_t count(std::string const& text, std::string const& piece) {
  std::size_t found = 0;
  for (std::size_t at = text.find(piece); at != text.npos; at = text.find(piece, at + 1)) ++found;
  return found;
}

TEST(ComposeMedia, WritesCardsByTheChoice) {
  Value const record = catalogueRecord();
  std::string const common = composed(record, choices(false, false));
  EXPECT_EQ(count(common, "<card>"), 2U) << "of the types 1 and 0";
  EXPECT_EQ(count(common, "<transfer_temps>"), 2U);
  EXPECT_EQ(count(common, "<top_single min=\"0\" max=\"0\">5</top_single>"), 1U);
  EXPECT_EQ(count(common, "<coercivity>high</coercivity>"), 1U);
  EXPECT_EQ(count(common, "Clear") + count(common, "Globe"), 0U);
  EXPECT_EQ(count(composed(record, choices(true, false)), "<card>"), 3U);
  std::string const without = composed(record, choices(true, true));
  EXPECT_EQ(count(without, "<transfer_temps>") + count(without, "<transfer_speeds>"), 0U);
  EXPECT_EQ(count(without, "<laminator_adjustments>"), 3U);
}

TEST(ComposeMedia, WritesAnEmptyListWithoutCards) {
  std::string const empty =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<media>\n    <cards />\n</media>\n";
  EXPECT_EQ(composed(Value::object(), test::withZeros()), empty);
  EXPECT_EQ(composed(Value::object({{"cards", Value::list()}}), {}), empty);
}

TEST(ComposeMedia, WritesAnEntryThatIsNothingAsAClearedCard) {
  Value record = catalogueRecord();
  record.set("cards", Value::list({Value()}));
  std::string const text = composed(record, test::withZeros());
  EXPECT_EQ(count(text, "<card>"), 1U);
  EXPECT_EQ(count(text, "<type>0</type>"), 1U);
}

TEST(ComposeMedia, WritesWhatACardLeavesOutAsZeros) {
  Value const record = Value::object({{"cards", Value::list({Value::object({{"type", 1}})})}});
  std::string const text = composed(record, {});
  EXPECT_EQ(count(text, "<type>1</type>"), 1U);
  EXPECT_EQ(count(text, "<top_single min=\"0\" max=\"0\">0</top_single>"), 1U);
  EXPECT_EQ(composed(record, test::withZeros()), text);
}

/// The catalogue's record with one value changed: the only problem with it.
void expectRefused(std::string const& path, std::string const& found, Value const& record) {
  Composition const composition = compose("media", record, test::withZeros());
  EXPECT_FALSE(composition);
  EXPECT_EQ(composition.text(), "");
  ASSERT_EQ(composition.problems().size(), 1U) << test::problemsOf(composition);
  Problem const problem = composition.problems()[0];
  EXPECT_EQ(problem.path(), path);
  EXPECT_EQ(problem.found(), found);
  EXPECT_NE(problem.expected(), "");
}

struct Misfit {
  char const* path;
  Value value;
  char const* found;
};

TEST(ComposeMedia, TellsWhatDoesNotFit) {
  Misfit const cases[] = {
      {"cards", Value::object(), "an object"},
      {"cards[2].type", 9999999999, "9999999999"},
      {"cards[0].transfer_temps.top_single.val", true, "true"},
      {"cards[0].cardFeatures.mag_stripe", 1, "1"},
      {"films[0].description", std::string(64, 'x'), "a text of 64 bytes"},
      {"other", 1, "an unknown key"},
  };
  for (auto const& [path, value, found] : cases) {
    Value record = catalogueRecord();
    record.set(path, value);
    expectRefused(path, found, record);
  }
  expectRefused("", "a list", Value::list());
}

TEST(ComposeMedia, TellsAllThatDoesNotFitInTheOrderOfTheRecord) {
  Value record = catalogueRecord();
  record.set("cards[2].type", 9999999999);
  record.set("cards[0].cardFeatures.mag_stripe", 1);
  record.set("films[0].description", 7);
  EXPECT_EQ(test::pathsOf(compose("media", record, test::withZeros())),
            "cards[0].cardFeatures.mag_stripe cards[2].type films[0].description ");
}

}  // namespace
}  // namespace Kovra
