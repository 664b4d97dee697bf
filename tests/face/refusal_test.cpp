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
  return decode(text.data(), text.size(), as);
}

/// "LINE:COLUMN: sentence"
std::string told(Decoding const& decoding) {
  return std::to_string(decoding.place.line) + ':' + std::to_string(decoding.place.column) + ": " +
         decoding.description();
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
           Refused{"", "1:1: malformed: found no markup; expected an XML document"},
           {"text <a/>", "1:1: malformed: found no markup; expected an XML document"},
           {"\xEF\xBB\xBF<\xEF\xBB\xBF>",
            "1:4: malformed: found a tag without a name; expected an element's name"},
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
    EXPECT_EQ(decoding.description(),
              "malformed: found " + decoding.found + "; expected " + decoding.expected);
    EXPECT_EQ(decoding.status, Decoding::Status::malformed) << refused.told;
    EXPECT_EQ(decoding.root, "") << refused.told;
    EXPECT_TRUE(decoding.readings.empty() && decoding.notes.empty()) << refused.told;
  }
}

TEST(Refusal, OfAHostileTextTellsTheBound) {
  Decoding const deep = decoded(repeated("<a>", 129) + repeated("</a>", 129));
  EXPECT_EQ(deep.status, Decoding::Status::hostile);
  EXPECT_EQ(told(deep),
            "1:385: refused: found an element more than 128 deep; expected at most 128 nested "
            "elements");
  Decoding const wide = decoded("<r>\n" + withAttributes(257) + "</r>");
  EXPECT_EQ(wide.status, Decoding::Status::hostile);
  EXPECT_EQ(wide.place.line, 2);
  EXPECT_EQ(wide.description(),
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
           {"<a>\n\r", "3:1"},
           {"<a>\r\r\n\n", "4:1"},
           {"<a>\r.", "2:2"},
           {"<a>\r\n.", "2:2"},
           {"<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "1:7"},
       }) {
    EXPECT_EQ(told(decoded(refused.text)),
              refused.told +
                  ": malformed: found the end of the text in <a>, opened at line 1; expected </a>");
  }
  // The end is where the host says, whatever stands behind it.
  EXPECT_EQ(decode("<a>\r\n", 4).place.line, 2);
  EXPECT_EQ(told(decoded("<a>\r\0"s)), "2:1: malformed: found a NUL byte; expected text");
  EXPECT_EQ(told(decoded("<a>\r\n\0"s)), "2:1: malformed: found a NUL byte; expected text");
}

TEST(Refusal, OfAnUnknownRootTellsItsPlace) {
  Decoding const unknown = decoded("<?xml version='1.0'?>\n<!-- x -->\n  <other/>");
  EXPECT_EQ(unknown.status, Decoding::Status::unknownRoot);
  EXPECT_EQ(unknown.root, "other");
  EXPECT_EQ(told(unknown),
            "3:3: found root element <other>; expected the root element of a reply that Kovra "
            "reads");
  EXPECT_EQ(told(decoded("<other/>", "job-status")),
            "1:1: found root element <other>; expected <get_job_status>");
  EXPECT_EQ(decoded("<other/>", "job-status").status, Decoding::Status::unknownRoot);
  Decoding const none = decoded("<!-- x -->");
  EXPECT_EQ(none.status, Decoding::Status::unknownRoot);
  EXPECT_EQ(none.root, "");
  EXPECT_EQ(told(none),
            "0:0: found no root element; expected the root element of a reply that Kovra reads");
  EXPECT_EQ(told(decoded("<!-- x -->", "job-status")),
            "0:0: found no root element; expected <get_job_status>");
  EXPECT_EQ(told(decoded("<other/>", "capabilities")),
            "1:1: found root element <other>; expected one of: <capabilities>, "
            "<get_capabilities>");
}

TEST(Refusal, OfTheRootOfAnotherReplyNamesThoseThatWouldBeRight) {
  Decoding const wrong = decoded("<get_general_status/>", "job-list");
  EXPECT_EQ(wrong.status, Decoding::Status::wrongRoot);
  EXPECT_EQ(wrong.root, "get_general_status");
  EXPECT_EQ(told(wrong), "1:1: found root element <get_general_status>; expected <get_job_list>");
  EXPECT_EQ(told(decoded("<get_general_status/>", "configuration")),
            "1:1: found root element <get_general_status>; expected one of: <configuration>, "
            "<set_configuration>");
}

TEST(Refusal, OfAnUnknownNameListsAllNames) {
  std::string names;
  for (Document const& document : documents()) {
    names += (names.empty() ? "" : ", ") + document.name;
  }
  Decoding const unknown = decoded("<get_general_status/>", "general");
  EXPECT_EQ(unknown.status, Decoding::Status::unknownName);
  EXPECT_EQ(told(unknown), "0:0: unknown document \"general\"; expected one of: " + names);
  EXPECT_EQ(unknown.found + unknown.root, "\"general\"");
}

// Whatever else is wrong: first the name, then what no XML can hold, then the XML.
TEST(Refusal, TellsTheFirstThingThatIsWrong) {
  EXPECT_EQ(decoded("<a\0"s, "general").status, Decoding::Status::unknownName);
  EXPECT_EQ(told(decoded("<a b\n<\0"s)), "2:2: malformed: found a NUL byte; expected text");
  EXPECT_EQ(decoded("<other", "job-list").status, Decoding::Status::malformed);
}

TEST(Refusal, OfNothingIsOne) {
  EXPECT_EQ(told(decode(nullptr, 0)), "1:1: malformed: found no markup; expected an XML document");
  EXPECT_EQ(decode(nullptr, 5).status, Decoding::Status::malformed);
  EXPECT_EQ(Decoding().status, Decoding::Status::malformed) << "born refused";
}

// No test has so much memory; the scanner's own tests see that it says so.
TEST(Refusal, OfATextThatIsTooLongTellsTheLimit) {
  frame::Scan scan;
  scan.fault = frame::Fault::tooLong;
  Decoding const refused = refuseText("<a/>", scan);
  EXPECT_EQ(refused.status, Decoding::Status::hostile);
  EXPECT_EQ(refused.description(),
            "refused: found a text of more than 2147483647 bytes; expected a reply");
}

TEST(Refusal, OfNoFaultHasNoWords) {
  for (frame::Fault const fault : {frame::Fault::none, static_cast<frame::Fault>(99)}) {
    frame::Scan scan;
    scan.fault = fault;
    Decoding const refused = refuseText("<a/>", scan);
    EXPECT_EQ(refused.found + refused.expected, "");
  }
}

TEST(Refusal, OfAStatusThatIsNoneHasNoSentence) {
  Decoding decoding;
  decoding.found = decoding.expected = "x";
  decoding.status = static_cast<Decoding::Status>(99);
  EXPECT_EQ(decoding.description(), "");
}

}  // namespace
}  // namespace Kovra
