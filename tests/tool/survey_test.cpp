// Copies of replies without what tells whose they are.

#include "survey.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <kovra.hpp>
#include <string>

#include "sample.hpp"
#include "support/folder.hpp"
#include "support/redacted.hpp"

namespace Kovra::tool {

namespace {

/// The copy alone.
std::string copyOf(std::string_view text) {
  static Identities const identities({});
  std::vector<Piece> const pieces = piecesOf(text, identities);
  Pseudonyms pseudonyms;
  collect(text, pieces, pseudonyms);
  pseudonyms.makeUp();
  return redacted(text, pieces, pseudonyms).text;
}

TEST(Redaction, ChangesValuesAndNothingElse) {
  Identities const identities({});
  for (Message const& message : messages()) {
    if (!message.isRead()) continue;
    for (std::uint64_t seed = 0; seed < 5; ++seed) {
      std::string const text = sampleOf(message, seed, {}).text;
      EXPECT_EQ(test::faultOfRedaction(text, identities), "") << text;
    }
  }
}

TEST(Redaction, OfEverySampleIsWhole) {
  Identities const identities({});
  for (auto const& file : std::filesystem::recursive_directory_iterator(KOVRA_SAMPLES_DIR)) {
    if (!file.is_regular_file()) continue;
    std::string const text = test::contentsOf(file.path().string());
    if (!decode(text)) continue;
    EXPECT_EQ(test::faultOfRedaction(text, identities), "") << file.path();
  }
}

TEST(Redaction, ReplacesAValueWhereverItStands) {
  EXPECT_EQ(copyOf("<x><serial>AB12</serial><!-- AB12 --><y>AB12 AB123</y></x>AB12"),
            "<x><serial>AA01</serial><!-- AA01 --><y>AA01 AA013</y></x>AA01");
  EXPECT_EQ(copyOf("<x serial='AB12'><![CDATA[AB12]]><?p AB12?></x>"),
            "<x serial='AA01'><![CDATA[AA01]]><?p AA01?></x>");
}

TEST(Redaction, FindsValuesInReferences) {
  EXPECT_EQ(copyOf("<x><password>a&amp;b&#99;d</password><y>a&#38;bcd</y></x>"),
            "<x><password>phrase-1</password><y>phrase-1</y></x>");
}

TEST(Redaction, FindsValuesHoweverTheirLettersAreReferredTo) {
  std::string const euro = "\xe2\x82\xac";
  EXPECT_EQ(copyOf("<x><password>ab&#8364;cd</password><y>ab" + euro +
                   "cd ab&#x20AC;cd ab&#x20ac;cd ab&#x20ab;cd</y></x>"),
            "<x><password>phrase-1</password><y>phrase-1 phrase-1 phrase-1 ab&#x20ab;cd</y></x>");
  EXPECT_EQ(copyOf("<x><password>a&#128512;bc</password><y>a\xf0\x9f\x98\x80"
                   "bc</y></x>"),
            "<x><password>phrase-1</password><y>phrase-1</y></x>");
  EXPECT_EQ(
      copyOf("<x><password>&lt;&gt;&quot;&apos;&amp;</password><y z='&lt;>&quot;&#39;&'/></x>"),
      "<x><password>phrase-1</password><y z='&lt;>&quot;&#39;&'/></x>");
}

// A reference by a number reaches to the next semicolon, whatever stands between.
TEST(Redaction, WritesAnewWhatHidesAValueInAReference) {
  std::string const text =
      "<get_general_status><serial>abcdefgh</serial><y>&#x4t abcdefgh a=1 &#x41;&lt;</y>"
      "</get_general_status>";
  EXPECT_EQ(copyOf(text),
            "<get_general_status><serial>aaaaaaab</serial><y>A&lt;</y>"
            "</get_general_status>");
  EXPECT_EQ(test::faultOfRedaction(text, Identities({})), "");
}

TEST(Redaction, LeavesNamesAndTellsOfThem) {
  std::string const text = "<x><password>badge</password><badge badge=\"1\">badge</badge></x>";
  Identities const identities({});
  std::vector<Piece> const pieces = piecesOf(text, identities);
  Pseudonyms pseudonyms;
  collect(text, pieces, pseudonyms);
  pseudonyms.makeUp();
  Redacted const copy = redacted(text, pieces, pseudonyms);
  EXPECT_EQ(copy.text, "<x><password>phrase-1</password><badge badge=\"1\">phrase-1</badge></x>");
  ASSERT_EQ(copy.left.size(), 2U);
  EXPECT_EQ(copy.left[0].offset, text.find("<badge") + 1);
  EXPECT_EQ(copy.left[1].offset, text.find("badge="));
  EXPECT_EQ(copy.left[1].pseudonym, "phrase-1");
}

TEST(Redaction, KeepsEveryEncoding) {
  using namespace std::string_view_literals;
  for (std::string_view const bytes :
       {"<a>\xc3\xa4</a>"sv, "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe4</a>"sv,
        "\xff\xfe<\0a\0>\0\xe4\0=\xd8\0\xde<\0/\0a\0>\0"sv, "\0<\0a\0/\0>"sv,
        "\xfe\xff\0<\0a\0>\x20\xac\xff\xfd\0<\0/\0a\0>"sv, "<\0a\0>\0\xac\x20"sv}) {
    ReplyText const reply(bytes);
    EXPECT_EQ(reply.bytesOf(reply.text()), bytes);
  }
  EXPECT_EQ(ReplyText("\xff\xfe<\0a\0/\0>\0"sv).text(), "<a/>");
  EXPECT_EQ(ReplyText("\xfe\xff\x20\xac"sv).text(), "\xe2\x82\xac");
  EXPECT_THROW(ReplyText("\xff\xfe<\0a\0/\0>"sv), InputFailure);
  EXPECT_THROW(ReplyText("\xff\xfe\0\xd8"sv), InputFailure);
}

TEST(ReplyText, IsLatin1WhereTheDeclarationSaysSo) {
  auto const textOf = [](std::string const& before) {
    return std::string(ReplyText(before + "\xe4").text()).substr(before.size());
  };
  for (char const* const name : {"ISO-8859-1", "iso8859-1", "Latin1", "l1", "ISO-IR-100"}) {
    EXPECT_EQ(textOf(std::string(" \n<?XML encoding=\"") + name + "\"?>"), "\xc3\xa4") << name;
  }
  for (char const* const other :
       {"", " ", "<a>", "<?xml version='1.0'?>", "<?xml encoding=?>", "<?xml encoding='UTF-8'?>",
        "<?xml encoding='l1", "<!-- <?xml encoding='l1'?> -->",
        "\xef\xbb\xbf<?xml encoding='l1'?>"}) {
    EXPECT_EQ(textOf(other), "\xe4") << other;
  }
}

}  // namespace

}  // namespace Kovra::tool
