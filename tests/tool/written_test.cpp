// What documents hold of records: changes that they cannot show, and keywords that they would
// change.

#include "written.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <kovra.hpp>
#include <string>
#include <vector>

#include "record.hpp"

namespace Kovra::tool {

namespace {

Message messageNamed(std::string const& name) {
  std::vector<Message> const all = messages();
  auto const message =
      std::find_if(all.begin(), all.end(), [&](Message const& one) { return one.name() == name; });
  EXPECT_NE(message, all.end()) << name;
  return *message;
}

Value sample(std::string const& name, std::string const& message) {
  std::ifstream file(std::string(KOVRA_SAMPLES_DIR) + '/' + name);
  std::string const text{std::istreambuf_iterator<char>(file), {}};
  Decoding const decoding = decode(text, message);
  EXPECT_TRUE(decoding) << name;
  return decoding.readings().front().record();
}

Value sections(std::vector<std::string> const& words) {
  Value list = Value::list();
  for (std::string const& word : words) list.append(word);
  return Value::object({{"sections", list}});
}

/// Why a change of the record to what it is already is refused; empty where it is not.
std::string refusal(Message const& message, Value const& record, std::string const& assignment,
                    Value const& choices = Value::object()) {
  try {
    requireWritten(message, record, {editOf(message, assignment)}, choices);
  } catch (RecordFailure const& failure) {
    return failure.why();
  }
  return "";
}

std::string goodFor(MemberDescription const& member) {
  if (member.kind() == Value::Kind::flag) return "no";
  if (member.kind() == Value::Kind::keyword) return member.words().front().word();
  return "1";
}

bool isSingle(MemberDescription const& member) {
  return member.members().empty() && !member.isSecret() &&
         (member.kind() != Value::Kind::record ||
          member.form() == MemberDescription::Form::setting);
}

void addRefused(Message const& message, std::vector<MemberDescription> const& members,
                std::string const& outer, Value const& record, std::vector<std::string>& refused) {
  for (MemberDescription const& member : members) {
    bool const isList = member.kind() == Value::Kind::list;
    std::string const path = outer + member.name();
    addRefused(message, member.members(), path + (isList ? "[0]." : "."), record, refused);
    bool const isThere = record.findAt(path) != nullptr;
    if (!isThere || !isSingle(member)) continue;
    std::string const why = refusal(message, record, path + '=' + goodFor(member));
    if (!why.empty()) refused.push_back(why);
  }
}

TEST(Written, RefusesMembersThatNoSectionWrites) {
  Message const message = messageNamed("configuration");
  std::vector<std::string> refused;
  addRefused(message, message.members(), "", sample("config/full.xml", "configuration"), refused);
  std::vector<std::string> expected;
  for (char const* const path : {"wireless.country",
                                 "imaging_parameters.mfg_power_adjustments.yellow",
                                 "imaging_parameters.mfg_power_adjustments.magenta",
                                 "imaging_parameters.mfg_power_adjustments.cyan",
                                 "imaging_parameters.mfg_power_adjustments.k_resin_front",
                                 "imaging_parameters.mfg_power_adjustments.k_resin_back",
                                 "imaging_parameters.mfg_power_adjustments.k_dye",
                                 "imaging_parameters.mfg_power_adjustments.overlay",
                                 "imaging_parameters.mfg_power_adjustments.uv_front",
                                 "imaging_parameters.mfg_power_adjustments.uv_back",
                                 "imaging_parameters.mfg_power_adjustments.helper",
                                 "imaging_parameters.mfg_power_adjustments.x_resin",
                                 "imaging_parameters.mfg_power_adjustments.inhibit",
                                 "tricolor_settings.red",
                                 "tricolor_settings.green",
                                 "tricolor_settings.blue",
                                 "takeup_motor.VtoI",
                                 "bemf_potentiometer",
                                 "mech_adjustments.flipper_sensor_offset",
                                 "lamination.bottomLaminateInstalled",
                                 "internal_encoder.comms_channel",
                                 "internal_encoder.secondContactlessEncoder"}) {
    expected.push_back(std::string(path) + ": is read from the printer only; no section writes it");
  }
  EXPECT_EQ(refused, expected);
}

TEST(Written, TellsWhichWordWritesWhatWasLeftOut) {
  Message const message = messageNamed("configuration");
  Value const record = sample("config/full.xml", "configuration");
  std::string const left = ": not in the document that this record and these choices make";
  EXPECT_EQ(refusal(message, record, "wireless.ssid=x", sections({"ethernet"})),
            "wireless.ssid" + left + "; --sections wireless writes it");
  EXPECT_EQ(refusal(message, record, "wireless.ssid=x", sections({"ethernet", "wireless"})), "");
  EXPECT_EQ(refusal(message, record, "wireless.ssid=x"), "");
}

TEST(Written, LeavesDocumentsThatFailToWhoeverComposesThem) {
  Message const message = messageNamed("configuration");
  EXPECT_EQ(refusal(message, Value::object(), "wireless.ssid=x", sections({"ethernet"})), "");
}

TEST(Written, CountsOnlyTheLastOfSeveralChanges) {
  Message const message = messageNamed("configuration");
  Edit const known = editOf(message, "wireless.channel=6");
  Edit readOnly = editOf(message, "bemf_potentiometer=6");
  Value const record = sample("config/full.xml", "configuration");
  EXPECT_THROW(requireWritten(message, record, {known, readOnly, known}, Value::object()),
               RecordFailure);
  readOnly.path = known.path;
  readOnly.others.clear();  // nothing tells it from others, were it asked
  EXPECT_NO_THROW(requireWritten(message, record, {readOnly, known}, Value::object()));
}

TEST(Written, TellsProblemsThatAreThereWhateverIsChosen) {
  Message const message = messageNamed("configuration");
  Value record = sample("config/full.xml", "configuration");
  EXPECT_TRUE(problemsOfAll(message, record, Value::object()).empty());
  record.set("wireless.channel", "six");
  std::vector<Problem> const problems = problemsOfAll(message, record, Value::object());
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems[0].path(), "wireless.channel");
  EXPECT_TRUE(problemsOfAll(message, record, sections({"ethernet"})).empty());  // nothing is open
}

std::vector<std::string> pathsOf(std::vector<Misnomer> const& misnomers) {
  std::vector<std::string> paths;
  for (Misnomer const& misnomer : misnomers) paths.push_back(misnomer.path);
  return paths;
}

TEST(Misnomers, AreToldOfWhatTheDocumentHas) {
  Message const message = messageNamed("configuration");
  Value const record = Value::object(
      {{"feeder_mode", 99}, {"error_control", Value::object({{"code", 1}, {"name", "high"}})}});
  Value choices = sections({"feeder_mode"});
  choices.add("zero_missing", true);
  EXPECT_EQ(pathsOf(misnomers(message, record, choices)), std::vector<std::string>{"feeder_mode"});
  choices.set("sections", Value::list({"error_control"}));
  EXPECT_EQ(pathsOf(misnomers(message, record, choices)),
            std::vector<std::string>{"error_control"});
  choices.set("sections", Value::list({"ethernet"}));
  EXPECT_TRUE(misnomers(message, record, choices).empty());
}

TEST(Misnomers, AreNoneInRepliesWhoseWordsAreKnown) {
  EXPECT_TRUE(
      misnomers(messageNamed("capabilities"), sample("caps/full.xml", "capabilities"), {}).empty());
  EXPECT_TRUE(misnomers(messageNamed("media"), sample("media/full.xml", "media"), {}).empty());
  EXPECT_EQ(pathsOf(misnomers(messageNamed("media"), sample("media/odd.xml", "media"), {})),
            std::vector<std::string>{"cards[0].coercivity"});
}

/// The writer has no word for one of the interfaces: an empty element, which is read as such.
TEST(Misnomers, AreNoneWhereTheDocumentKeepsTheWord) {
  Message const message = messageNamed("capabilities");
  Value const record = sample("caps/full.xml", "capabilities");
  std::string const document = compose("capabilities", record).text();
  Decoding const decoding = decode(document, "capabilities");
  Value const again = decoding.readings().front().record();
  ASSERT_FALSE(again.at("hostPorts[2].type").isKnown());
  EXPECT_TRUE(misnomers(message, again, {}).empty());
  EXPECT_TRUE(misnomers(message, Value::fromJson(again.toJson()), {}).empty());
}

std::string configurationOf(Value const& record, std::string const& section) {
  return compose("configuration", record, sections({section})).text();
}

TEST(Contradictions, AreToldOfKeywordsThatFollowFromOthers) {
  Message const message = messageNamed("configuration");
  Value record = sample("config/full.xml", "configuration");
  std::vector<Misnomer> found =
      contradictions(message, record, configurationOf(record, "internal_encoder"));
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].path, "internal_encoder.comms_channel");
  EXPECT_EQ(found[0].found, "serial (1)");
  EXPECT_EQ(found[0].expected, "usb (2)");

  // However it is given.
  for (Value const& uhf : {Value(3), Value("uhf"), Value::object({{"code", 3}, {"name", "uhf"}}),
                           Value::object({{"code", 3}})}) {
    record.set("internal_encoder.contactless_encoder", uhf);
    found = contradictions(message, record, configurationOf(record, "internal_encoder"));
    ASSERT_EQ(found.size(), 2U) << uhf.toJson();
    EXPECT_EQ(found[1].path, "internal_encoder.contactless_encoder");
    EXPECT_EQ(found[1].found, "nothing");
    EXPECT_EQ(found[1].expected, "uhf (3)");
  }
}

TEST(Contradictions, AreFoundInEntriesOfLists) {
  Value const record = sample("caps/full.xml", "capabilities");
  std::string const document = compose("capabilities", record).text();
  EXPECT_EQ(pathsOf(contradictions(messageNamed("capabilities"), record, document)),
            (std::vector<std::string>{"hostPorts[2].type", "magStripeLocation",
                                      "internalEncoder.comms_channel"}));
}

// A laminate's words are written as numbers, which nobody reads again.
TEST(Contradictions, AreNoneWhereWordsAreWrittenInAWayOfTheirOwn) {
  Message const message = messageNamed("configuration");
  Value record = sample("config/full.xml", "configuration");
  record.set("lamination.topLaminateInstalled", true);
  std::string const document = configurationOf(record, "lamination");
  EXPECT_NE(document.find("<registration>"), document.npos) << document;
  EXPECT_TRUE(contradictions(message, record, document).empty());
}

TEST(Contradictions, AreNoneWhereTheDocumentSaysWhatWasMeant) {
  Message const message = messageNamed("configuration");
  Value const record = sample("config/full.xml", "configuration");
  for (char const* const section : {"feeder_mode", "error_control", "wireless", "ethernet"}) {
    std::string const document = configurationOf(record, section);
    ASSERT_FALSE(document.empty()) << section;
    EXPECT_TRUE(contradictions(message, record, document).empty()) << section;
  }
  EXPECT_TRUE(contradictions(message, record, "no document").empty());
  EXPECT_TRUE(contradictions(message, Value::object(), configurationOf(record, "internal_encoder"))
                  .empty());
}

}  // namespace

}  // namespace Kovra::tool
