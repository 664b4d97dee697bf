// What messages() tells of the members of records.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "kovra.hpp"

using namespace Kovra;

namespace {

Message messageOf(std::string const& name) {
  std::vector<Message> const all = messages();
  auto const found = std::find_if(all.begin(), all.end(),
                                  [&](Message const& message) { return message.name() == name; });
  if (found == all.end()) throw std::invalid_argument(name);
  return *found;
}

MemberDescription memberAt(std::vector<MemberDescription> const& members, std::string const& path) {
  std::size_t const point = path.find('.');
  std::string const name = path.substr(0, point);
  for (MemberDescription const& member : members) {
    if (member.name() != name) continue;
    return point == path.npos ? member : memberAt(member.members(), path.substr(point + 1));
  }
  throw std::invalid_argument(path);
}

template <class Visit>
void eachMember(std::vector<MemberDescription> const& members, std::string const& path,
                Visit const& visit) {
  for (MemberDescription const& member : members) {
    visit(path + member.name(), member);
    eachMember(member.members(), path + member.name() + '.', visit);
  }
}

template <class Visit>
void eachMember(Visit const& visit) {
  for (Message const& message : messages()) {
    eachMember(message.members(), message.name() + ": ", visit);
  }
}

TEST(Members, HaveANameAndAKind) {
  eachMember([](std::string const& path, MemberDescription const& member) {
    EXPECT_FALSE(member.name().empty()) << path;
    EXPECT_NE(Value::Kind::nothing, member.kind()) << path;
  });
}

TEST(Members, AreToldOnce) {
  for (Message const& message : messages()) {
    std::set<std::string> names;
    for (MemberDescription const& member : message.members()) {
      EXPECT_TRUE(names.insert(member.name()).second) << message.name() << ": " << member.name();
    }
  }
}

TEST(Members, OfKeywordsHaveWordsAndOthersHaveNone) {
  eachMember([](std::string const& path, MemberDescription const& member) {
    bool const isKeyword = member.kind() == Value::Kind::keyword;
    EXPECT_TRUE(!isKeyword || !member.words().empty()) << path;
    bool const isNumber =
        member.kind() == Value::Kind::integer || member.kind() == Value::Kind::real;
    EXPECT_TRUE(!isNumber || member.words().empty()) << path;
  });
}

TEST(Members, ThatAreSecretsAreThoseOfTheMessage) {
  for (Message const& message : messages()) {
    std::set<std::string> found;
    eachMember(message.members(), "",
               [&](std::string const& path, MemberDescription const& member) {
                 if (member.isSecret()) found.insert(path);
               });
    std::vector<std::string> const expected = message.secrets();
    EXPECT_EQ(std::set<std::string>(expected.begin(), expected.end()), found) << message.name();
  }
}

TEST(Members, AreThoseThatARecordMayHave) {
  for (Message const& message : messages()) {
    std::string const schema = Kovra::schema(message.name());
    for (MemberDescription const& member : message.members()) {
      EXPECT_NE(schema.npos, schema.find('"' + member.name() + '"'))
          << message.name() << ": " << member.name();
    }
  }
}

TEST(Members, TellTheirElements) {
  std::vector<MemberDescription> const jobs = messageOf("job-list").members();
  EXPECT_EQ(std::vector<std::string>{"job"}, memberAt(jobs, "jobs").elements());
  EXPECT_EQ(Value::Kind::list, memberAt(jobs, "jobs").kind());
  EXPECT_EQ(std::vector<std::string>{"uuid"}, memberAt(jobs, "jobs.uuid").elements());
  EXPECT_GT(memberAt(jobs, "jobs.uuid").mostBytes(), 36U);
}

TEST(Members, TellTheirWordsWithCodes) {
  std::vector<MemberDescription> const status = messageOf("general-status").members();
  std::vector<Keyword> const words = memberAt(status, "printer_state").words();
  auto const offline = std::find_if(words.begin(), words.end(),
                                    [](Keyword const& word) { return word.word() == "offline"; });
  ASSERT_NE(words.end(), offline);
  EXPECT_EQ(7, offline->code());
}

TEST(Members, TellAllNamesByWhichRepliesSayThem) {
  using Names = std::vector<std::string>;
  auto const configuration = messageOf("configuration").members();
  EXPECT_EQ((Names{"dhcp", "disabled", "enabled", "no", "yes"}),
            memberAt(configuration, "ethernet.dhcp").vocabulary());
  EXPECT_EQ((Names{"lcd_contrast", "max", "min"}),
            memberAt(configuration, "lcd_contrast").vocabulary());
  auto const levels = memberAt(messageOf("capabilities").members(), "imageSharpeningLevels");
  // Each level is a flag, too, so the words of flags are among them.
  EXPECT_EQ((Names{"disabled", "enabled", "high", "image_sharpening_level",
                   "image_sharpening_levels", "low", "no", "normal", "off", "yes"}),
            levels.vocabulary());
  std::vector<std::string> const all = vocabulary();
  for (Message const& message : messages()) {
    if (!message.isRead()) continue;
    for (MemberDescription const& member : message.members()) {
      Names const names = member.vocabulary();
      EXPECT_TRUE(std::includes(all.begin(), all.end(), names.begin(), names.end()))
          << message.name() << ": " << member.name();
    }
  }
}

TEST(Members, OfEveryKindHaveANameForIt) {
  EXPECT_EQ("nothing", nameOf(Value::Kind::nothing));
  EXPECT_EQ("flag", nameOf(Value::Kind::flag));
  EXPECT_EQ("integer", nameOf(Value::Kind::integer));
  EXPECT_EQ("natural", nameOf(Value::Kind::natural));
  EXPECT_EQ("real", nameOf(Value::Kind::real));
  EXPECT_EQ("text", nameOf(Value::Kind::text));
  EXPECT_EQ("keyword", nameOf(Value::Kind::keyword));
  EXPECT_EQ("list", nameOf(Value::Kind::list));
  EXPECT_EQ("record", nameOf(Value::Kind::record));
}

TEST(Members, OfEveryFormHaveANameForIt) {
  using Form = MemberDescription::Form;
  EXPECT_EQ("plain", nameOf(Form::plain));
  EXPECT_EQ("setting", nameOf(Form::setting));
  EXPECT_EQ("ipv4", nameOf(Form::ipv4));
  EXPECT_EQ("hardware_address", nameOf(Form::hardwareAddress));
  EXPECT_EQ("hexadecimal", nameOf(Form::hexadecimal));
  EXPECT_EQ("", nameOf(static_cast<Form>(99)));
}

TEST(Choices, OfEveryFormHaveANameForIt) {
  EXPECT_EQ("flag", nameOf(Choice::Form::flag));
  EXPECT_EQ("word", nameOf(Choice::Form::word));
  EXPECT_EQ("words", nameOf(Choice::Form::words));
  EXPECT_EQ("number", nameOf(Choice::Form::number));
  EXPECT_EQ("", nameOf(static_cast<Choice::Form>(99)));
}

TEST(Members, TellTheirForm) {
  using Form = MemberDescription::Form;
  std::vector<MemberDescription> const settings = messageOf("configuration").members();
  EXPECT_EQ(Form::ipv4, memberAt(settings, "wireless.ip_address").form());
  EXPECT_EQ(0U, memberAt(settings, "wireless.ip_address").mostBytes());
  EXPECT_EQ(Form::plain, memberAt(settings, "wireless.ssid").form());
  EXPECT_TRUE(memberAt(settings, "wireless.key").isSecret());
}

// Elements of replies.

ElementDescription elementAt(ElementDescription const& around, std::string const& path) {
  std::size_t const slash = path.find('/');
  std::string const name = path.substr(0, slash);
  for (ElementDescription const& element : around.elements()) {
    if (element.name() != name) continue;
    return slash == path.npos ? element : elementAt(element, path.substr(slash + 1));
  }
  throw std::invalid_argument(path);
}

std::vector<std::string> membersOf(ElementDescription const& element) {
  std::vector<std::string> names;
  for (MemberDescription const& member : element.members()) names.push_back(member.name());
  return names;
}

std::vector<std::string> wordsOf(ElementDescription const& element) {
  std::vector<std::string> words;
  for (Keyword const& word : element.words()) words.push_back(word.word());
  return words;
}

using Names = std::vector<std::string>;

TEST(Elements, TellMembers) {
  ElementDescription const root = messageOf("configuration").root();
  EXPECT_EQ("configuration", root.name());
  EXPECT_EQ(Names(), membersOf(root));
  EXPECT_EQ(Names{"wireless"}, membersOf(elementAt(root, "wireless")));
  EXPECT_EQ(Names{"ssid"}, membersOf(elementAt(root, "wireless/ssid")));
  EXPECT_EQ(Names(), membersOf(elementAt(root, "media_info"))) << "it only holds others";
  EXPECT_EQ(Names{"ribbon"}, membersOf(elementAt(root, "media_info/ribbon")));
  EXPECT_EQ(Names{"cleaning"}, membersOf(elementAt(root, "cleaning")));
  EXPECT_EQ(Names{"cleaning"}, membersOf(elementAt(root, "cleaning_thresholds")));
  EXPECT_EQ("", messageOf("device-control-motor").root().name()) << "it is not read";
}

TEST(Elements, ThatAreOnlyWrittenAreNone) {
  ElementDescription const root = messageOf("configuration").root();
  EXPECT_THROW(elementAt(root, "ethernet/ssid"), std::invalid_argument);
}

TEST(Elements, TellTheirWords) {
  ElementDescription const status = messageOf("general-status").root();
  EXPECT_EQ((Names{"locked", "unlocked"}), wordsOf(elementAt(status, "printer_lock")));
  EXPECT_EQ(1, elementAt(status, "printer_lock").words().front().code());
  EXPECT_EQ(Names(), wordsOf(elementAt(status, "error")));
  ElementDescription const settings = messageOf("configuration").root();
  EXPECT_EQ((Names{"enabled", "disabled"}), wordsOf(elementAt(settings, "wireless/dhcp")));
  EXPECT_EQ((Names{"enabled", "yes", "disabled", "no"}),
            wordsOf(elementAt(settings, "cards/card/information/mag_stripe")));
}

TEST(Elements, TellTheirAttributes) {
  ElementDescription const settings = messageOf("configuration").root();
  EXPECT_EQ((Names{"max", "min"}), elementAt(settings, "lcd_contrast").attributes());
  EXPECT_EQ(Names(), elementAt(settings, "feeder_mode").attributes());
  ElementDescription const media = messageOf("media").root();
  EXPECT_EQ(Names(), elementAt(media, "cards/card/transfer_temps/top_single").attributes())
      << "only the value is read";
  ElementDescription const sensors = messageOf("sensor-information").root();
  EXPECT_EQ(Names{"adc_value"},
            elementAt(sensors, "web_media/ribbon/ribbon_sync_detection").attributes());
}

TEST(Elements, TellHowOftenTheyMayCome) {
  EXPECT_EQ(1U, messageOf("general-status").root().elements().front().mostTimes());
  EXPECT_EQ(128U, elementAt(messageOf("job-list").root(), "job").mostTimes());
  EXPECT_EQ(0U, elementAt(messageOf("access-points").root(), "AccessPoint").mostTimes());
  ElementDescription const capabilities = messageOf("capabilities").root();
  EXPECT_EQ(1U, elementAt(capabilities, "device_ports/device_port").mostTimes());
  EXPECT_EQ(2U, elementAt(messageOf("configuration").root(), "internal_encoder/contactless_encoder")
                    .mostTimes());
}

TEST(Elements, WithoutANameAreTheTextAround) {
  ElementDescription const barcode =
      elementAt(messageOf("capabilities").root(), "barcodes/barcode");
  EXPECT_EQ(Names{"barcodes"}, membersOf(barcode));
  EXPECT_EQ(Names{"name"}, membersOf(elementAt(barcode, "")));
  ElementDescription const directive = messageOf("secure-action-directive").root();
  EXPECT_EQ("", directive.elements().front().name()) << "a text counts where it stands in front";
  EXPECT_EQ(Names{"nonce"}, membersOf(messageOf("nonce").root())) << "the root's own text";
}

TEST(Elements, OfNothingAreSafeToAskFor) {
  ElementDescription const none;
  EXPECT_EQ("", none.name());
  EXPECT_TRUE(none.members().empty() && none.words().empty() && none.attributes().empty());
  EXPECT_TRUE(none.elements().empty());
  EXPECT_EQ(1U, none.mostTimes());
}

TEST(Members, OfNothingAreSafeToAskFor) {
  EXPECT_TRUE(MemberDescription().vocabulary().empty());
  MemberDescription const none;
  EXPECT_EQ("", none.name());
  EXPECT_EQ(Value::Kind::nothing, none.kind());
  EXPECT_EQ(MemberDescription::Form::plain, none.form());
  EXPECT_FALSE(none.isSecret());
  EXPECT_TRUE(none.elements().empty() && none.words().empty() && none.members().empty());
  EXPECT_EQ(0U, none.mostBytes());
}

}  // namespace
