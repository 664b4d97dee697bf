// The media catalogue through the face: decoded, and its cards composed from values.

#include <gtest/gtest.h>

#include <string>

#include "kovra.hpp"

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

Reading decodedCatalogue(std::string* notes = nullptr) {
  Decoding const decoding = decode(catalogue, sizeof catalogue - 1);
  EXPECT_EQ(decoding.status, Decoding::Status::decoded) << decoding.description();
  EXPECT_EQ(decoding.readings.size(), 1U);
  for (Note const& note : decoding.notes) {
    if (notes != nullptr) *notes += note.description() + '\n';
  }
  return decoding.readings.empty() ? Reading() : decoding.readings.front();
}

TEST(DecodeMedia, ShowsWhatTheListsHold) {
  std::string notes;
  Reading const reading = decodedCatalogue(&notes);
  EXPECT_EQ(reading.document, "media");
  EXPECT_FALSE(reading.result) << "that of the entry";
  Value const* const cards = reading.record.find("cards");
  ASSERT_NE(cards, nullptr);
  ASSERT_EQ(cards->items.size(), 3U);
  Value const& card = cards->items[0];
  EXPECT_EQ(card.find("type")->integer, 1);
  EXPECT_EQ(card.find("coercivity")->text, "high");
  ASSERT_NE(card.find("cardFeatures"), nullptr);
  EXPECT_TRUE(card.find("cardFeatures")->find("mag_stripe")->flag);
  EXPECT_FALSE(card.find("cardFeatures")->find("contact_encode")->flag);
  EXPECT_EQ(card.find("cardFeatures")->find("non_contact_encode"), nullptr) << "was not said";
  Value const* const setting = card.find("transfer_temps")->find("top_single");
  ASSERT_NE(setting, nullptr);
  EXPECT_EQ(setting->find("val")->integer, 5);
  EXPECT_EQ(setting->find("min"), nullptr) << "is not read";
  EXPECT_TRUE(cards->items[1].members.empty());
  EXPECT_EQ(reading.record.find("ribbons"), nullptr);
  ASSERT_EQ(reading.record.find("laminates")->items.size(), 1U);
  EXPECT_EQ(reading.record.find("laminates")->items[0].find("description")->text, "Globe");
  EXPECT_EQ(notes, "<ribbon>: unknown element, skipped\n");
}

std::string composed(MediaChoice const& choice) {
  Composition const composition = composeMedia(decodedCatalogue().record, choice);
  EXPECT_TRUE(composition.composed) << composition.problem.description();
  return composition.text;
}

std::size_t count(std::string const& text, std::string const& piece) {
  std::size_t found = 0;
  for (std::size_t at = text.find(piece); at != text.npos; at = text.find(piece, at + 1)) ++found;
  return found;
}

TEST(ComposeMedia, WritesCardsByTheChoice) {
  MediaChoice choice;
  std::string const common = composed(choice);
  EXPECT_EQ(count(common, "<card>"), 2U) << "of the types 1 and 0";
  EXPECT_EQ(count(common, "<transfer_temps>"), 2U);
  EXPECT_EQ(count(common, "<top_single min=\"0\" max=\"0\">5</top_single>"), 1U);
  EXPECT_EQ(count(common, "<coercivity>high</coercivity>"), 1U);
  EXPECT_EQ(count(common, "Clear") + count(common, "Globe"), 0U);
  choice.allTypes = true;
  EXPECT_EQ(count(composed(choice), "<card>"), 3U);
  choice.withoutTransfer = true;
  std::string const without = composed(choice);
  EXPECT_EQ(count(without, "<transfer_temps>") + count(without, "<transfer_speeds>"), 0U);
  EXPECT_EQ(count(without, "<laminator_adjustments>"), 3U);
}

TEST(ComposeMedia, WritesAnEmptyListWithoutCards) {
  Value empty;
  empty.kind = Value::Kind::record;
  Composition const composition = composeMedia(empty);
  EXPECT_TRUE(composition.composed);
  EXPECT_EQ(composition.text,
            "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<media>\n    <cards />\n</media>\n");
}

TEST(ComposeMedia, WritesAnEntryThatIsNothingAsAClearedCard) {
  Value record = decodedCatalogue().record;
  record.members.front().value.items.assign(1, Value());
  Composition const composition = composeMedia(record);
  EXPECT_TRUE(composition.composed) << composition.problem.description();
  EXPECT_EQ(count(composition.text, "<card>"), 1U);
  EXPECT_EQ(count(composition.text, "<type>0</type>"), 1U);
}

/// The catalogue's record with one value changed.
void expectRefused(std::string const& path, std::string const& found,
                   void (*change)(Value& record)) {
  Value record = decodedCatalogue().record;
  change(record);
  Composition const composition = composeMedia(record);
  EXPECT_FALSE(composition.composed);
  EXPECT_EQ(composition.text, "");
  EXPECT_EQ(composition.problem.path, path);
  EXPECT_EQ(composition.problem.found, found);
  EXPECT_NE(composition.problem.expected, "");
}

Value& inner(Value& value, std::string const& name) {
  for (Member& member : value.members) {
    if (member.name == name) return member.value;
  }
  ADD_FAILURE() << "no " << name;
  return value;
}

TEST(ComposeMedia, TellsWhatDoesNotFit) {
  expectRefused("", "a list", [](Value& record) { record.kind = Value::Kind::list; });
  expectRefused("cards", "an object",
                [](Value& record) { inner(record, "cards").kind = Value::Kind::record; });
  expectRefused("cards[2].type", "9999999999", [](Value& record) {
    inner(inner(record, "cards").items[2], "type").integer = 9999999999;
  });
  expectRefused("cards[0].transfer_temps.top_single.val", "true", [](Value& record) {
    Value& value =
        inner(inner(inner(inner(record, "cards").items[0], "transfer_temps"), "top_single"), "val");
    value.kind = Value::Kind::flag;
    value.flag = true;
  });
  expectRefused("cards[0].cardFeatures.mag_stripe", "1", [](Value& record) {
    Value& value = inner(inner(inner(record, "cards").items[0], "cardFeatures"), "mag_stripe");
    value.kind = Value::Kind::integer;
    value.integer = 1;
  });
  expectRefused("films[0].description", "a text of 64 bytes", [](Value& record) {
    inner(inner(record, "films").items[0], "description").text = std::string(64, 'x');
  });
  expectRefused("other", "an unknown key", [](Value& record) { record.members[0].name = "other"; });
}

}  // namespace
}  // namespace Kovra
