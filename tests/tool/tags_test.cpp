// The tags of a reply as places in its bytes.

#include "tags.hpp"

#include <gtest/gtest.h>

#include <kovra.hpp>
#include <string>
#include <string_view>

#include "sample.hpp"

namespace Kovra::tool {

namespace {

/// Writes down what it sees, and whether the places go forward.
class Scribe : public TagVisitor {
 public:
  explicit Scribe(std::string_view text) : text_(text) {}

  void open(Span name) override { write("<", name); }
  void attribute(Span name, Span value, bool isQuoted) override {
    write("@", name);
    write(isQuoted ? "=" : "~", value);
  }
  void close() override { seen += '/'; }
  void text(Span text) override { write("'", text); }
  void data(Span data) override { write("[", data); }
  void other(Span other) override { write("!", other); }

  std::string seen;

 private:
  void write(char const* sign, Span span) {
    EXPECT_LE(end_, span.begin);
    EXPECT_LE(span.begin, span.end);
    EXPECT_LE(span.end, text_.size());
    end_ = span.end;
    seen += sign + std::string(span.of(text_));
  }

  std::string_view text_;
  std::size_t end_ = 0;
};

std::string seenIn(std::string_view text) {
  Scribe scribe(text);
  readTags(text, scribe);
  return scribe.seen;
}

TEST(Tags, StandWhereTheyStand) {
  EXPECT_EQ(seenIn("<a b='c' d=\"e\">f<g/></a>"), "<a@b=c@d=e'f<g//");
  EXPECT_EQ(seenIn("\xef\xbb\xbf<a> </a>\n"), "<a' /'\n");
  EXPECT_EQ(seenIn("<a b = c d=e/>"), "<a@b~c@d~e/");
  EXPECT_EQ(seenIn(""), "");
}

TEST(Tags, AreNoneInOtherMarkup) {
  EXPECT_EQ(seenIn("<a><!-- <b> --><![CDATA[<c>]]><?d <e>?></a>"), "<a! <b> [<c>!?d <e'?>/");
  EXPECT_EQ(seenIn("<?xml version='>'?><a/>"), "! version='>'?<a/");
  EXPECT_EQ(seenIn("<!DOCTYPE a><a/>"), "!!DOCTYPE a<a/");
}

TEST(Tags, AreReadWithTheOdditiesOfTheLibrary) {
  EXPECT_EQ(seenIn("<a>&#x<b>;</a>"), "<a'&#x<b>;/");
  EXPECT_EQ(seenIn("<a b='&#';'/>"), "<a@b=&#';/");
  // Without a name behind the bracket it goes on to the next one.
  EXPECT_EQ(seenIn("< a></a >"), "! a!/a ");
}

TEST(Tags, HaveBlanksOfEveryKindBetweenTheirPieces) {
  for (std::string const blank :
       {" ", "\t", "\n", "\v", "\f", "\r", "\xEF\xBB\xBF", "\xEF\xBF\xBE", "\xEF\xBF\xBF"}) {
    EXPECT_EQ(seenIn("<a " + blank + "b=" + blank + "'c'" + blank + "/>"), "<a@b=c/") << blank;
  }
  for (char const* const none : {"\x08", "\x0E", "\xEF\xBF\xBD", "\xEF\xBB\xBE"}) {
    EXPECT_THROW(seenIn("<a " + std::string(none) + "/>"), TagError) << none;
  }
}

TEST(Tags, HaveNamesOfLettersDigitsAndSomeMarks) {
  for (std::string const name : {"a0", "a9", "A-.:_", "_Z", "z\xC3\xA4", "\x7F"}) {
    EXPECT_EQ(seenIn("<" + name + "/>"), "<" + name + "/");
  }
  for (char const* const mark : {"/", ";", "@", "[", "`", "{"}) {
    EXPECT_THROW(seenIn("<a" + std::string(mark)), TagError) << mark;
  }
}

TEST(Tags, DeclarationsAreKnownInEitherCase) {
  EXPECT_EQ(seenIn("<?XML VERSION='>'?><a/>"), "! VERSION='>'?<a/");
  EXPECT_EQ(seenIn("<?xMl Encoding='>' standalone=x?><a/>"), "! Encoding='>' standalone=x?<a/");
  EXPECT_EQ(seenIn("<?xm1 version='>'?><a/>"), "!?xm1 version='\'\'?><a/");
  EXPECT_EQ(seenIn("<?xml versio='>'?><a/>"), "! versio='\'\'?><a/");
  EXPECT_EQ(seenIn("<?xml version"), "! version");
}

TEST(Tags, ThatAreBrokenAreTold) {
  for (std::string_view const text : {"<a>",         "<a",
                                      "<a b",        "<a b=",
                                      "<a b='",      "<a b=c",
                                      "<a b='c'",    "<a/",
                                      "<a></b>",     "<a></a",
                                      "<a><!-- ",    "<a><![CDATA[",
                                      "<a>&#",       "<a>&#x",
                                      "<a b='&#'/>", "<a b=c\"d/>",
                                      "<a b=c'd/>",  "<a =''/>",
                                      "<a b c=''/>", "<a/ >",
                                      "<a></a/>",    "<a><?xml version='1.0'"}) {
    EXPECT_THROW(seenIn(text), TagError) << text;
  }
}

TEST(Tags, MayEndAnywhereOutsideOfAllElements) {
  EXPECT_EQ(seenIn("<a/><!-- x"), "<a/! x");
  EXPECT_EQ(seenIn("<a/>text<"), "<a/'text!");
  EXPECT_EQ(seenIn("</a>"), "!/a");
}

/// Whatever is cut off, what is told lies in what is left.
TEST(Tags, OfEveryBeginningLieWithinIt) {
  for (Message const& message : messages()) {
    if (!message.isRead()) continue;
    std::string const text = sampleOf(message, 1, {}).text.substr(0, 1500);
    for (std::size_t length = 0; length < text.size(); ++length) {
      std::string const beginning = text.substr(0, length);
      try {
        seenIn(beginning);
      } catch (TagError const& error) {
        ASSERT_LE(error.offset(), length);
      }
    }
  }
}

}  // namespace

}  // namespace Kovra::tool
