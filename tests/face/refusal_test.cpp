#include "face/refusal.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "face/catalogue.hpp"
#include "kovra.hpp"

namespace Kovra {
namespace {

using std::string_literals::operator""s;

Decoding decoded(std::string const& text, std::string const& as = {}) {
  return decode(text, as);
}

/// "LINE:COLUMN: sentence"
std::string told(Decoding const& decoding) {
  Refusal const refusal = decoding.refusal();
  return std::to_string(refusal.line()) + ':' + std::to_string(refusal.column()) + ": " +
         refusal.message();
}

struct Refused {
  std::string text;
  std::string told;
};

std::string repeated(std::string const& piece, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += piece;
  return all;
}

/// An element with that many attributes of different names.
std::string withAttributes(int count) {
  std::string tag = "<a";
  for (int i = 0; i < count; ++i) tag += " b" + std::to_string(i) + "='c'";
  return tag + "/>";
}

TEST(Refusal, OfAMalformedTextTellsWhatWasFoundAndWhatWouldBeRight) {
  for (Refused const& refused : {
           Refused{"\xEF\xBB\xBF<\xEF\xBB\xBF>",
                   "1:2: malformed: found a tag without a name; expected an element's name"},
           {"<a =1/>",
            "1:4: malformed: found no name in <a>, opened at line 1; expected an attribute, \"/>\" "
            "or \">\""},
           {"<a>\n <b c/></a>",
            "2:6: malformed: found attribute \"c\" without a value; expected \"=\""},
           {"<a b=c\"d/>",
            "1:7: malformed: found a stray quote in the value of attribute \"b\"; expected a value "
            "in quotes, or one without any"},
           {"<a b='1' b='2'/>",
            "1:10: malformed: found attribute \"b\" for the second time in <a>, opened at line 1; "
            "expected each attribute once"},
           {"<a>&#</a>",
            "1:4: malformed: found \"&#\" without a character's number; expected a reference such "
            "as \"&#38;\""},
           {"<a b='&#38'/>",
            "1:7: malformed: found \"&#\" without a character's number; expected a reference such "
            "as \"&#38;\""},
           {"<a /b>",
            "1:5: malformed: found \"/\" in the tag in <a>, opened at line 1; expected \"/>\""},
           {"<a>\n<b></a></b>",
            "2:4: malformed: found </a> in <b>, opened at line 2; expected </b>"},
           {"<a></>", "1:4: malformed: found </> in <a>, opened at line 1; expected </a>"},
           {"<a></a b>", "1:8: malformed: found no \">\" behind \"</a\"; expected </a>"},
           {"<a><?xml version?></a>",
            "1:17: malformed: found a broken declaration in <a>, opened at line 1; expected "
            "\"<?xml version=...?>\" before the root"},
           {"<a", "1:3: malformed: found the end of the text inside a tag; expected \">\""},
           {"<a><b",
            "1:6: malformed: found the end of the text inside a tag in <a>, opened at line 1; "
            "expected \">\""},
           {"<a>\n\n<b c=\"x",
            "3:8: malformed: found the end of the text inside the value of attribute \"c\" in <b>, "
            "opened at line 3; expected the closing quote"},
           {"<a><!-- ",
            "1:9: malformed: found the end of the text behind \"<!--\" in <a>, opened at line 1; "
            "expected its end"},
           {"<a><![CDATA[ ",
            "1:14: malformed: found the end of the text behind \"<![CDATA[\" in <a>, opened at "
            "line 1; expected its end"},
           {"<a></a",
            "1:7: malformed: found the end of the text inside a tag in <a>, opened at line 1; "
            "expected \">\""},
           {"<a>\n<!DOCTYPE",
            "2:10: malformed: found the end of the text behind \"<!\" in <a>, opened at line 1; "
            "expected its end"},
           {"<a><?x",
            "1:7: malformed: found the end of the text behind \"<?\" in <a>, opened at line 1; "
            "expected its end"},
           {"<a><?xml version='1",
            "1:20: malformed: found the end of the text behind \"<?xml\" in <a>, opened at line 1; "
            "expected its end"},
           {"<a><b></b>",
            "1:11: malformed: found the end of the text in <a>, opened at line 1; expected </a>"},
           {"<a>\0</a>"s, "1:4: malformed: found a NUL byte; expected text"},
       }) {
    Decoding const decoding = decoded(refused.text);
    EXPECT_EQ(told(decoding), refused.told);
    Refusal const refusal = decoding.refusal();
    ASSERT_EQ(refusal.expected().size(), 1U) << refused.told;
    EXPECT_EQ(refusal.message(),
              "malformed: found " + refusal.found() + "; expected " + refusal.expected()[0]);
    EXPECT_FALSE(decoding) << refused.told;
    EXPECT_TRUE(refusal) << refused.told;
    EXPECT_EQ(refusal.severity(), Severity::error) << refused.told;
    EXPECT_GE(refusal.endOffset(), refusal.offset()) << refused.told;
    EXPECT_EQ(decoding.root(), "") << refused.told;
    EXPECT_TRUE(decoding.readings().empty() && decoding.notes().empty()) << refused.told;
  }
}

TEST(Refusal, OfAHostileTextTellsTheBound) {
  Decoding const deep = decoded(repeated("<a>", 129) + repeated("</a>", 129));
  EXPECT_EQ(deep.refusal().id(), "K011");
  EXPECT_EQ(told(deep),
            "1:385: refused: found an element more than 128 deep; expected at most 128 nested "
            "elements");
  Decoding const wide = decoded("<r>\n" + withAttributes(257) + "</r>");
  EXPECT_EQ(wide.refusal().id(), "K011");
  EXPECT_EQ(wide.refusal().line(), 2);
  EXPECT_EQ(wide.refusal().message(),
            "refused: found more than 256 attributes in <a>, opened at line 2; expected at most "
            "256");
}

TEST(Refusal, TellsPlacesAsPeopleCountThem) {
  // What comes before an end of the text, and where that end is.
  for (Refused const& refused : {
           Refused{"<a>", "1:4"},
           {"<a>\t.", "1:6"},
           {"<a>\n", "2:1"},
           {"<a>\r", "2:1"},
           {"<a>\r\n", "2:1"},
           {"<a>\n\r", "2:1"},
           {"<a>\r\r\n\n", "4:1"},
           {"<a>\r.", "2:2"},
           {"<a>\r\n.", "2:2"},
           {"<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "1:7"},
           {"<a>\x80\xC3\xA9", "1:6"},
       }) {
    EXPECT_EQ(told(decoded(refused.text)),
              refused.told +
                  ": malformed: found the end of the text in <a>, opened at line 1; expected </a>");
  }
  // The end is where the host says, whatever stands behind it.
  EXPECT_EQ(decode(std::string_view("<a>\r\n", 4)).refusal().line(), 2);
  EXPECT_EQ(told(decoded("<a>\r\0"s)), "2:1: malformed: found a NUL byte; expected text");
  EXPECT_EQ(told(decoded("<a>\r\n\0"s)), "2:1: malformed: found a NUL byte; expected text");
}

TEST(Refusal, OfAnUnknownRootTellsItsPlace) {
  Decoding const unknown = decoded("<?xml version='1.0'?>\n<!-- x -->\n  <other/>");
  EXPECT_EQ(unknown.refusal().id(), "K013");
  EXPECT_EQ(unknown.root(), "other");
  EXPECT_EQ(told(unknown),
            "3:3: found root element <other>; expected the root element of a reply that Kovra "
            "reads");
  EXPECT_EQ(told(decoded("<other/>", "job-status")),
            "1:1: found root element <other>; expected <get_job_status>");
  EXPECT_EQ(decoded("<other/>", "job-status").refusal().id(), "K013");
  Decoding const none = decoded("<!-- x -->");
  EXPECT_EQ(none.refusal().id(), "K013");
  EXPECT_EQ(none.root(), "");
  EXPECT_EQ(told(none),
            "1:1: found no root element; expected the root element of a reply that Kovra reads");
  EXPECT_EQ(told(decoded("<!-- x -->", "job-status")),
            "1:1: found no root element; expected <get_job_status>");
  EXPECT_EQ(told(decoded("<other/>", "capabilities")),
            "1:1: found root element <other>; expected one of: <capabilities>, "
            "<get_capabilities>");
}

TEST(Refusal, OfTheRootOfAnotherReplyNamesThoseThatWouldBeRight) {
  Decoding const wrong = decoded("<get_general_status/>", "job-list");
  EXPECT_EQ(wrong.refusal().id(), "K014");
  EXPECT_EQ(wrong.root(), "get_general_status");
  EXPECT_EQ(told(wrong), "1:1: found root element <get_general_status>; expected <get_job_list>");
  EXPECT_EQ(told(decoded("<get_general_status/>", "configuration")),
            "1:1: found root element <get_general_status>; expected one of: <configuration>, "
            "<set_configuration>");
}

TEST(Refusal, OfAnUnknownNameListsAllNames) {
  std::string names;
  for (Message const& message : messages()) {
    if (message.isRead()) names += (names.empty() ? "" : ", ") + message.name();
  }
  Decoding const unknown = decoded("<get_general_status/>", "general");
  EXPECT_EQ(unknown.refusal().id(), "K015");
  EXPECT_EQ(told(unknown), "0:0: unknown message \"general\"; expected one of: " + names);
  EXPECT_EQ(unknown.refusal().found() + unknown.root(), "\"general\"");
}

// Whatever else is wrong: first the name, then what no XML can hold, then the XML.
TEST(Refusal, TellsTheFirstThingThatIsWrong) {
  EXPECT_EQ(decoded("<a\0"s, "general").refusal().id(), "K015");
  EXPECT_EQ(told(decoded("<a b\n<\0"s)), "2:2: malformed: found a NUL byte; expected text");
  EXPECT_EQ(decoded("<other", "job-list").refusal().id(), "K005");
}

TEST(Refusal, OfNothingIsOne) {
  for (std::string_view const nothing : {"", " ", "\r\n\t", "\xEF\xBB\xBF"}) {
    Decoding const empty = decode(nothing);
    EXPECT_EQ(empty.refusal().id(), "K001") << nothing;
    EXPECT_EQ(told(empty), "1:1: found an empty text; expected an XML document") << nothing;
  }
  EXPECT_EQ(decode(std::string_view()).refusal().id(), "K001");
  Decoding const born;
  EXPECT_FALSE(born);
  EXPECT_TRUE(born.readings().empty() && born.notes().empty());
  EXPECT_EQ(born.root() + born.refusal().id() + born.refusal().message(), "");
}

/// What a text of that encoding, with a mark in front of all of it, is decoded to: "ssid: notes".
std::string skippedTo(std::string const& text) {
  Decoding const decoding = decode(text, {}, ReadOptions().skipTextBefore());
  if (!decoding) return decoding.refusal().message();
  std::string told(decoding.readings()[0].record().at("ssid").asText());
  for (Note const& note : decoding.notes()) {
    told += "; " + note.id() + ' ' + std::to_string(note.endOffset());
  }
  return told;
}

TEST(Skipping, KnowsAByteOrderMark) {
  std::string const mark = "\xEF\xBB\xBF";
  std::string const reply = "<get_wireless_status><ssid>Caf\xC3\xA9</ssid></get_wireless_status>";
  std::string const latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
  EXPECT_EQ(skippedTo(mark + reply), "Caf\xC3\xA9");
  EXPECT_EQ(skippedTo(mark + " \n" + reply), "Caf\xC3\xA9");
  EXPECT_EQ(skippedTo(mark + "> x\n" + reply), "Caf\xC3\xA9; K109 7");
  EXPECT_EQ(skippedTo("> x\n" + mark + reply), "Caf\xC3\xA9; K109 7");
  EXPECT_EQ(skippedTo(mark + "> x\n" + latin + reply), "Caf\xC3\xA9; K109 7") << "UTF-8 it is";
  EXPECT_EQ(skippedTo("> x\n" + mark + latin + reply), "Caf\xC3\xA9; K109 7") << "and here";
  EXPECT_EQ(skippedTo("> x\n" + latin + reply), "Caf\xC3\x83\xC2\xA9; K109 4");
  std::string const wide =
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?>"
      "<get_wireless_status><ssid>Cafe</ssid></get_wireless_status>";
  for (std::string const before : {"", "> x\n"}) {
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (char const c : before + wide) {
      little += std::string{c, '\0'};
      big += std::string{'\0', c};
    }
    std::string const told = before.empty() ? "Cafe" : "Cafe; K109 10";
    EXPECT_EQ(skippedTo(little), told);
    EXPECT_EQ(skippedTo(big), told);
    EXPECT_EQ(decode(little).refusal().id(), before.empty() ? "" : "K004");
  }
}

TEST(Decode, PassesOverTextUntilANameMayBegin) {
  for (char const* const root : {"a", "z", "A", "Z", "_", "\xC3\xA4"}) {
    Decoding const decoding =
        decode(std::string("5 <0 ") + '<' + root + "/>", {}, ReadOptions().skipTextBefore());
    EXPECT_EQ(decoding.root(), root);
  }
  for (char const* const document :
       {"<?xml version='1.0'?><get_count/>", "<!-- --><get_count/>", "<!-- <a> --><get_count/>"}) {
    Decoding const decoding =
        decode(std::string("<@<[<`<{") + document, {}, ReadOptions().skipTextBefore());
    EXPECT_EQ(decoding.root(), "get_count");
  }
}

TEST(Refusal, OfTextBeforeTheDocumentTellsWhereThatBegins) {
  std::string const reply = "<get_general_status><error>5</error></get_general_status>";
  Decoding const refused = decode("printer> status\n" + reply);
  EXPECT_EQ(refused.refusal().id(), "K002");
  EXPECT_EQ(told(refused),
            "1:1: found text before the document, which begins at byte 16; expected an XML "
            "document");
  EXPECT_EQ(refused.refusal().offset(), 0U);
  EXPECT_EQ(refused.refusal().endOffset(), 16U);
  EXPECT_EQ(decode("no markup").refusal().id(), "K002");

  Decoding const skipped = decode("\nprinter> 5 < 6\n" + reply, {}, ReadOptions().skipTextBefore());
  ASSERT_TRUE(skipped) << skipped.refusal().message();
  EXPECT_EQ(skipped.readings()[0].record().at("error").asInteger(), 5);
  ASSERT_EQ(skipped.notes().size(), 1U);
  EXPECT_EQ(skipped.notes()[0].id(), "K109");
  EXPECT_EQ(skipped.notes()[0].message(), "text before the document was skipped");
  EXPECT_EQ(skipped.notes()[0].line(), 2);
  EXPECT_EQ(skipped.notes()[0].endOffset(), 16U);
  EXPECT_TRUE(decode(reply, {}, ReadOptions().skipTextBefore()).notes().empty());
  Decoding const broken = decode("x <a>\n</b>", {}, ReadOptions().skipTextBefore());
  EXPECT_EQ(told(broken), "2:1: malformed: found </b> in <a>, opened at line 1; expected </a>");
  EXPECT_EQ(broken.refusal().offset(), 6U) << "in the host's bytes";
}

TEST(Refusal, OfFilesThatAreNoTextNamesThem) {
  EXPECT_EQ(decode("\x1F\x8B\x08").refusal().id(), "K003");
  EXPECT_EQ(told(decode("\x1F\x8B\x08")), "1:1: found a file compressed with gzip; expected text");
  for (std::string const& text : {"\xFF\xFE<\0a\0/\0>\0"s, "\xFE\xFF\0<\0a\0/\0>"s, "<\0a\0/\0>\0"s,
                                  "\0<\0a\0/\0>"s, "\xFF\xFE"s}) {
    EXPECT_EQ(decode(text).refusal().id(), "K004");
  }
}

/// ASCII as UTF-16.
std::string wide(std::string_view text, bool isBig) {
  std::string bytes;
  for (char const c : text) bytes += isBig ? std::string{'\0', c} : std::string{c, '\0'};
  return bytes;
}

TEST(Encodings, AreDeclaredWhereTheTextEndsThere) {
  for (bool const isBig : {false, true}) {
    EXPECT_EQ(decode(wide("<?xml version=\"1.0\" encoding=\"UTF-16", isBig)).refusal().id(),
              "K013");
    EXPECT_EQ(decode(wide("<?xml version=\"1.0\" encoding=\"UTF-1", isBig)).refusal().id(), "K004");
  }
}

// Bytes are looked at in blocks of 64, of which this is one.
TEST(Encodings, OfABlockWithoutAscii) {
  std::string const before = "<get_wireless_status>" + std::string(37, ' ') + "<ssid>";
  ASSERT_EQ(before.size(), 64U);
  Decoding const decoding =
      decode(before + std::string(64, '\x80') + "</ssid></get_wireless_status>");
  ASSERT_TRUE(decoding);
  std::string const ssid(decoding.readings()[0].record().at("ssid").asText());
  EXPECT_EQ(ssid.substr(0, 6), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Encodings, ThatAreDeclaredAreConverted) {
  std::string const before =
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<get_wireless_status><ssid>";
  std::string const behind = "</ssid><x/></get_wireless_status>";
  for (bool const isBig : {false, true}) {
    std::string const letters = isBig ? "\0\xE9\xD8\x3D\xDE\x00"s : "\xE9\0\x3D\xD8\x00\xDE"s;
    for (std::string const& mark : {isBig ? "\xFE\xFF"s : "\xFF\xFE"s, ""s}) {
      std::string const text = mark + wide(before, isBig) + letters + wide(behind, isBig);
      Decoding const decoding = decode(text);
      ASSERT_TRUE(decoding) << decoding.refusal().message();
      EXPECT_EQ(decoding.readings()[0].record().at("ssid").asText(), "\xC3\xA9\xF0\x9F\x98\x80");
      ASSERT_EQ(decoding.notes().size(), 1U);
      Note const note = decoding.notes()[0];
      EXPECT_EQ(text.substr(note.offset(), note.endOffset() - note.offset()), wide("<x/>", isBig));
      EXPECT_EQ(note.line(), 2);
      EXPECT_EQ(note.column(), 37);
    }
  }
  std::string const half = wide(before, false) + "\x00\xD8"s + wide(behind, false);
  Decoding const decoding = decode(half);
  ASSERT_TRUE(decoding);
  EXPECT_EQ(decoding.readings()[0].record().at("ssid").asText(), "\xEF\xBF\xBD");
  EXPECT_EQ(decoding.notes()[0].id(), "K106");
}

TEST(Encodings, ReplaceHalvesOfAPairAndKeepWhatStandsBesideThem) {
  std::string const before =
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?><get_wireless_status><ssid>";
  std::string const behind = "</ssid></get_wireless_status>";
  std::string const replaced = "\xEF\xBF\xBD";
  struct Case {
    std::u16string units;
    std::string text;
  };
  Case const cases[] = {{{0xD83D, u'a'}, replaced + "a"},
                        {{0xDE00, u'a'}, replaced + "a"},
                        {{0xDFFF, u'a'}, replaced + "a"},
                        {{0xDE00, 0xD83D, 0xDE00}, replaced + "\xF0\x9F\x98\x80"},
                        {{0xD83D, 0xD83D, 0xDE00}, replaced + "\xF0\x9F\x98\x80"},
                        {{0xD83D, 0xE000}, replaced + "\xEE\x80\x80"},
                        {{0xD7FF, 0xE000}, "\xED\x9F\xBF\xEE\x80\x80"},
                        {{0xD800, 0xDC00}, "\xF0\x90\x80\x80"},
                        {{0xDBFF, 0xDFFD}, "\xF4\x8F\xBF\xBD"}};
  for (Case const& one : cases) {
    for (bool const isBig : {false, true}) {
      std::string letters;
      for (char16_t const unit : one.units) {
        char const low = static_cast<char>(unit & 0xFF);
        char const high = static_cast<char>(unit >> 8);
        letters += isBig ? std::string{high, low} : std::string{low, high};
      }
      Decoding const decoding = decode(wide(before, isBig) + letters + wide(behind, isBig));
      ASSERT_TRUE(decoding) << decoding.refusal().message();
      EXPECT_EQ(decoding.readings()[0].record().at("ssid").asText(), one.text);
    }
  }
}

TEST(Encodings, ReplaceWhatIsLeftOfALastCharacter) {
  std::string const text = wide(
      "<?xml version=\"1.0\" encoding=\"UTF-16\"?>"
      "<get_wireless_status><ssid>x</ssid></get_wireless_status>",
      false);
  for (std::string const& rest : {"\x3D"s, "\x3D\xD8"s, "\x3D\xD8\x00"s}) {
    Decoding const decoding = decode(text + rest);
    ASSERT_TRUE(decoding) << decoding.refusal().message();
    EXPECT_EQ(decoding.readings()[0].record().at("ssid").asText(), "x");
    ASSERT_EQ(decoding.notes().size(), 1U);
    EXPECT_EQ(decoding.notes()[0].message(), "text behind the document is not looked at");
    EXPECT_EQ(decoding.notes()[0].offset(), text.size());
    EXPECT_EQ(decoding.notes()[0].endOffset(), text.size() + rest.size());
  }
}

TEST(Refusal, OfANulByteTellsItsPlaceInTheHostsBytes) {
  std::string const latin =
      "<?xml version='1.0' encoding='ISO-8859-1'?><a x='\xE9\n\xE9\n\xE9\0'/>"s;
  Decoding const refused = decode(latin);
  EXPECT_EQ(refused.refusal().id(), "K012");
  EXPECT_EQ(refused.refusal().offset(), latin.find('\0'));
  EXPECT_EQ(refused.refusal().line(), 3);
  EXPECT_EQ(refused.refusal().column(), 2);
  std::string const utf16 =
      wide("<?xml version='1.0' encoding='UTF-16'?><a>\n", false) + "\0\0"s + wide("</a>", false);
  EXPECT_EQ(decode(utf16).refusal().id(), "K012");
  EXPECT_EQ(decode(utf16).refusal().offset(), 86U);
  EXPECT_EQ(decode(utf16).refusal().line(), 2);
}

// A name may be a piece of a pass phrase that holds markup.
TEST(Refusal, InsideASecretNamesNothingFromThere) {
  std::string const before = "<configuration>\n<wireless><ssid>office</ssid><key";
  for (std::string const secret :
       {" pa55w0rd</key>", ">pa55w0rd<pa55w0rd</key>", ">a</pa55w0rd</key>", ">a</pa55w0rd></key>",
        ">a<pa55w0rd pa55w0rd='c' pa55w0rd='d'/></key>", ">a<b/>c<pa55w0rd</key>",
        " a='1' pa55w0rd='x", ">a<pa55w0rd"}) {
    SCOPED_TRACE(secret);
    Decoding const decoding = decode(before + secret + "</wireless></configuration>");
    ASSERT_FALSE(decoding);
    EXPECT_EQ(decoding.toJson().find("pa55w0rd"), std::string::npos) << decoding.toJson();
    EXPECT_EQ(decoding.refusal().line(), 2);
  }
  Decoding const decoding = decode(before + ">a</pa55w0rd></key></wireless></configuration>");
  EXPECT_EQ(decoding.refusal().message(),
            "malformed: found </...> in <key>, opened at line 2; expected </key>");
}

// Whatever element of a reply it is: one of a setting, a list, an entry of a list, or within one.
TEST(Refusal, InsideASecretNamesElementsOfReplies) {
  for (std::string const name : {"wireless", "films", "film", "job", "uuid", "host_port"}) {
    SCOPED_TRACE(name);
    Decoding const decoding =
        decode("<configuration><wireless><key>pa55w0rd</" + name + "></key></wireless>");
    EXPECT_NE(decoding.refusal().message().find("found </" + name + ">"), std::string::npos)
        << decoding.refusal().message();
  }
}

TEST(Refusal, BesideASecretNamesWhatIsThere) {
  for (std::string const before : {"<key>a</key>", "<keys>", "<key>a</key ><keyword>", "<key/>"}) {
    SCOPED_TRACE(before);
    Decoding const decoding = decode("<configuration><wireless>" + before + "</ssid>");
    EXPECT_NE(decoding.refusal().message().find("found </ssid>"), std::string::npos)
        << decoding.refusal().message();
  }
}

// No test has so much memory; the scanner's own tests see that it says so.
TEST(Refusal, OfATextThatIsTooLongTellsTheLimit) {
  detail::FindingData const refused = refuseLength();
  EXPECT_STREQ(refused.kind->id, "K011");
  EXPECT_EQ(refused.sentence(),
            "refused: found a text of more than 2147483647 bytes; expected a reply");
}

}  // namespace
}  // namespace Kovra
