// Capabilities through the face: decoded with lists of any size, and composed from values.

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>

#include "caps/capabilities.hpp"
#include "kovra.hpp"

namespace Kovra {
namespace {

using test::element;

/// Values as a person would write them.
Value number(long value) {
  Value one;
  one.kind = Value::Kind::integer;
  one.integer = value;
  return one;
}
Value text(std::string const& value) {
  Value one;
  one.kind = Value::Kind::text;
  one.text = value;
  return one;
}
Value flag(bool value) {
  Value one;
  one.kind = Value::Kind::flag;
  one.flag = value;
  return one;
}
Value list(std::initializer_list<Value> items) {
  Value one;
  one.kind = Value::Kind::list;
  one.items = items;
  return one;
}
Value record(std::initializer_list<std::pair<char const*, Value>> members) {
  Value one;
  one.kind = Value::Kind::record;
  for (auto const& [name, value] : members) {
    Member& member = one.members.emplace_back();
    member.name = name;
    member.value = value;
  }
  return one;
}

/// The record and the notes of a reply that has only one reading.
struct Decoded {
  Value record;
  std::string notes;
};

Decoded decoded(std::string const& children) {
  std::string const xml = element("capabilities", children);
  Decoding const decoding = decode(xml.data(), xml.size());
  EXPECT_EQ(decoding.status, Decoding::Status::decoded) << decoding.description();
  Decoded result;
  if (decoding.readings.size() != 1) {
    ADD_FAILURE() << decoding.readings.size() << " readings";
    return result;
  }
  EXPECT_EQ(decoding.readings[0].document, "capabilities");
  EXPECT_FALSE(decoding.readings[0].result) << "that of the entry";
  result.record = decoding.readings[0].record;
  for (Note const& note : decoding.notes) result.notes += note.description() + '\n';
  return result;
}

std::string namesIn(Value const& value) {
  std::string names;
  for (Member const& member : value.members) names += member.name + ' ';
  return names;
}

TEST(DecodeCapabilities, ShowsAllEntriesOfLists) {
  std::string fonts;
  for (int i = 0; i < 100; ++i) fonts += element("font", element("name", std::to_string(i)));
  Value const& found = decoded(element("fonts", fonts) + "<barcodes/>").record;
  EXPECT_EQ(namesIn(found), "fonts barcodes ") << "no counts";
  Value const* const all = found.find("fonts");
  ASSERT_EQ(all->items.size(), 100U);
  for (std::size_t i = 0; i < 100; ++i) {
    EXPECT_EQ(all->items[i].find("name")->text, std::to_string(i));
    EXPECT_EQ(namesIn(all->items[i]), "name ") << "and only what was said";
  }
  EXPECT_EQ(found.find("barcodes")->kind, Value::Kind::list);
  EXPECT_TRUE(found.find("barcodes")->items.empty());
}

TEST(DecodeCapabilities, ShowsOnlyWhatWasStored) {
  Decoded const found = decoded(
      "<device_ports><device_port><port_id>1</port_id></device_port>"
      "<device_port><port_id>2</port_id></device_port></device_ports>");
  Value const* const ports = found.record.find("devicePorts");
  ASSERT_EQ(ports->items.size(), 1U);
  EXPECT_EQ(ports->items[0].find("port_id"), nullptr) << "members have the record's names";
  EXPECT_EQ(ports->items[0].find("portId")->integer, 2);
  EXPECT_EQ(found.notes, "<device_port>: more than 1 entries, skipped\n");
}

TEST(DecodeCapabilities, MeasuresRepeatedListsTogether) {
  std::string const two = element("barcodes", "<barcode>a</barcode><barcode>b</barcode>");
  std::string const three = element("barcodes", "<barcode>c</barcode><other/><barcode>d</barcode>");
  for (std::string const& children : {two + three, two + three + two + three}) {
    Decoded const found = decoded(children);
    Value const* const all = found.record.find("barcodes");
    ASSERT_EQ(all->items.size(), 2U);
    EXPECT_EQ(all->items[0].find("name")->text, "c");
    EXPECT_EQ(all->items[1].find("name")->text, "d");
    EXPECT_NE(found.notes.find("<other>: unknown element, skipped\n"), std::string::npos);
  }
}

TEST(DecodeCapabilities, ShowsFormatsAsKeywordsAndEmptyOnesAsNothing) {
  Decoded const found = decoded(element("graphic_formats",
                                        "<graphic_format>tga</graphic_format><graphic_format/>"
                                        "<graphic_format>png</graphic_format>"));
  Value const* const formats = found.record.find("graphicFormats");
  ASSERT_EQ(formats->items.size(), 3U);
  EXPECT_EQ(formats->items[0].kind, Value::Kind::keyword);
  EXPECT_EQ(formats->items[0].integer, 8);
  EXPECT_EQ(formats->items[0].text, "tga");
  EXPECT_TRUE(formats->items[0].known);
  EXPECT_EQ(formats->items[1].kind, Value::Kind::nothing);
  EXPECT_EQ(formats->items[2].integer, -1);
  EXPECT_EQ(formats->items[2].text, "png");
  EXPECT_FALSE(formats->items[2].known);
  EXPECT_EQ(found.notes,
            "<graphic_format>: empty, not read\n"
            "<graphic_format>: unknown word \"png\"; one of: bmp, jpeg, tga, tiff, raw\n");
}

TEST(DecodeCapabilities, ShowsWhatKeywordsWithoutTextStored) {
  Decoded const found = decoded(
      "<print_system>direct</print_system><print_system/>"
      "<laminator>present</laminator><laminator></laminator>");
  Value const* const system = found.record.find("printSystem");
  ASSERT_NE(system, nullptr);
  EXPECT_EQ(system->kind, Value::Kind::keyword);
  EXPECT_EQ(system->integer, -1);
  EXPECT_EQ(system->text, "");
  EXPECT_FALSE(system->known);
  Value const* const laminator = found.record.find("laminatorPresent");
  ASSERT_NE(laminator, nullptr);
  EXPECT_EQ(laminator->kind, Value::Kind::flag);
  EXPECT_FALSE(laminator->flag);
  EXPECT_EQ(found.notes, "<print_system>: empty, not read\n<laminator>: empty, not read\n");
}

TEST(DecodeCapabilities, ShowsSharpeningLevelsByTheirWords) {
  std::string const levels =
      "<image_sharpening_level>low</image_sharpening_level>"
      "<image_sharpening_level>Off</image_sharpening_level>"
      "<image_sharpening_level/>";
  Decoded const found = decoded(element("image_sharpening_levels", levels));
  Value const* const shown = found.record.find("imageSharpeningLevels");
  EXPECT_EQ(namesIn(*shown), "low ");
  EXPECT_TRUE(shown->find("low")->flag);
  EXPECT_EQ(found.notes,
            "<image_sharpening_level>: unknown word \"Off\"; one of: off, normal, high, low\n"
            "<image_sharpening_level>: empty, not read\n");
}

TEST(DecodeCapabilities, ShowsTheLaminatorAsAFlagAndTellsOfOtherWords) {
  Decoded const present = decoded("<laminator>present</laminator>");
  EXPECT_TRUE(present.record.find("laminatorPresent")->flag);
  EXPECT_EQ(present.notes, "");
  Decoded const other = decoded("<laminator>yes</laminator>");
  EXPECT_FALSE(other.record.find("laminatorPresent")->flag);
  EXPECT_EQ(other.notes, "<laminator>: unknown word \"yes\"; one of: present, notpresent\n");
}

TEST(DecodeCapabilities, RefusesToMakeRoomForMoreThanAnyPrinterHas) {
  std::string const templates = element("templates", [] {
    std::string many;
    for (int i = 0; i < 70000; ++i) many += "<t/>";
    return many;
  }());
  std::string const xml = element("capabilities", templates);
  EXPECT_THROW(decode(xml.data(), xml.size()), std::bad_alloc);
}

// ---- Composing -------------------------------------------------------------------------------

std::string composed(Value const& value, CapabilitiesChoice const& choice = {}) {
  Composition const composition = composeCapabilities(value, choice);
  EXPECT_TRUE(composition.composed) << composition.problem.description();
  return composition.text;
}

CapabilitiesChoice only(CapabilitiesChoice::Part part) {
  CapabilitiesChoice choice;
  choice.part = part;
  return choice;
}

TEST(ComposeCapabilities, WritesListsOfAnySize) {
  Value const ports = list({record({{"portId", number(1)}, {"type", text("serial")}}),
                            record({{"portId", number(2)}, {"type", number(0)}})});
  std::string const document = composed(record({
      {"hostPorts", ports},
      {"devicePorts", ports},
      {"graphicFormats", list({text("raw"), number(1), Value()})},
      {"barcodes", list({record({{"name", text("qr")}})})},
      {"imageSharpeningLevels", record({{"low", flag(true)}, {"off", flag(true)}})},
  }));
  for (char const* const piece :
       {"    <host_ports>\n        <host_port>\n            <port_id>1</port_id>\n"
        "            <type>serial</type>\n        </host_port>\n        <host_port>\n"
        "            <port_id>2</port_id>\n            <type>usb_2_0</type>\n",
        "    <device_ports>\n        <device_port>\n            <port_id>1</port_id>\n",
        "        <graphic_format>raw</graphic_format>\n"
        "        <graphic_format>bmp</graphic_format>\n"
        "        <graphic_format></graphic_format>\n",
        "        <barcode>qr</barcode>\n",
        "        <image_sharpening_level>off</image_sharpening_level>\n"
        "        <image_sharpening_level>low</image_sharpening_level>\n"}) {
    EXPECT_NE(document.find(piece), std::string::npos) << piece << "is not in\n" << document;
  }
  EXPECT_EQ(document.find("software_interfaces"), std::string::npos);
}

TEST(ComposeCapabilities, WritesOnePartAlone) {
  char const head[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<capabilities>\n";
  Value const value = record({{"magEncoderType", text("aamva")},
                              {"internalEncoder", record({{"comms_channel", text("usb")},
                                                          {"contact_encoding", flag(true)},
                                                          {"contact_station", flag(true)}})}});
  EXPECT_EQ(composed(value, only(CapabilitiesChoice::Part::magEncoder)),
            std::string(head) + "    <mag_encoder>aamva</mag_encoder>\n</capabilities>\n");
  EXPECT_EQ(composed(value, only(CapabilitiesChoice::Part::internalEncoder)),
            std::string(head) +
                "    <contact_station>yes</contact_station>\n"
                "    <internal_encoder>\n"
                "        <comms_channel>usb_2_0</comms_channel>\n"
                "        <contact_encoding>yes</contact_encoding>\n"
                "    </internal_encoder>\n</capabilities>\n");
}

TEST(ComposeCapabilities, WritesAllForAPartThatIsNone) {
  Value const value = record({{"magEncoderType", text("aamva")}});
  EXPECT_EQ(composed(value, only(static_cast<CapabilitiesChoice::Part>(99))), composed(value));
}

TEST(ComposeCapabilities, TakesThePrintSystemFromTheChoice) {
  Value const value = record({{"printSystem", text("direct")}});
  CapabilitiesChoice choice;
  EXPECT_NE(composed(value, choice).find(">retransfer<"), std::string::npos);
  choice.directToCard = true;
  EXPECT_NE(composed(value, choice).find(">direct_to_card<"), std::string::npos);
}

TEST(ComposeCapabilities, TakesWhatDecodeShows) {
  std::string const children =
      "<host_ports><host_port><port_id>1</port_id><type>wifi_enet_802_11g</type></host_port>"
      "</host_ports>"
      "<image_sharpening_levels><image_sharpening_level>off</image_sharpening_level>"
      "</image_sharpening_levels>"
      "<security><encryption_algorithm>rot13</encryption_algorithm></security>"
      "<graphic_formats><graphic_format/></graphic_formats>"
      "<mag_stripe>front</mag_stripe><laminator>present</laminator>"
      "<internal_encoder><contactless_encoder>felica</contactless_encoder></internal_encoder>";
  std::string const document = composed(decoded(children).record);
  EXPECT_NE(document.find("<port_id>1</port_id>"), std::string::npos);
  EXPECT_NE(document.find("<laminator>present</laminator>"), std::string::npos);
}

struct Refusal {
  Value value;
  char const* path;
  char const* found;
};

TEST(ComposeCapabilities, TellsWhatDoesNotFit) {
  Refusal const cases[] = {
      {number(1), "", "1"},
      {record({{"fontz", number(1)}}), "fontz", "an unknown key"},
      {record({{"hostPortCount", number(1)}}), "hostPortCount", "an unknown key"},
      {record({{"ramSize", text("big")}}), "ramSize", "\"big\""},
      {record({{"flashSize", flag(true)}}), "flashSize", "true"},
      {record({{"printType", text("3_side")}}), "printType", "\"3_side\""},
      {record({{"security", record({{"passkeyProtection", number(1)}})}}),
       "security.passkeyProtection", "1"},
      {record({{"internalEncoder", number(1)}}), "internalEncoder", "1"},
      {record({{"imageSharpeningLevels", record({{"medium", flag(true)}})}}),
       "imageSharpeningLevels.medium", "an unknown key"},
      {record({{"fonts", record({})}}), "fonts", "an object"},
      {record({{"fonts", list({record({}), record({{"style", number(1L << 40)}})})}}),
       "fonts[1].style", "1099511627776"},
      {record({{"fonts", list({record({{"name", text(std::string(64, 'x'))}})})}}), "fonts[0].name",
       "a text of 64 bytes"},
      {record({{"graphicFormats", list({number(1), text("png")})}}), "graphicFormats[1]",
       "\"png\""},
      {record({{"barcodes", list({text("qr")})}}), "barcodes[0]", "\"qr\""},
  };
  for (auto const& [value, path, found] : cases) {
    Composition const composition = composeCapabilities(value);
    EXPECT_FALSE(composition.composed) << path;
    EXPECT_EQ(composition.text, "") << path;
    EXPECT_EQ(composition.problem.path, path);
    EXPECT_EQ(composition.problem.found, found);
    EXPECT_NE(composition.problem.expected, "") << path;
  }
}

}  // namespace
}  // namespace Kovra
