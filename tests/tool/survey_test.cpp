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
        "\xff\xfe<\0a\0>\0\xe4\0=\xd8\0\xde<\0/\0a\0>\0"sv, "\0<\0a\0/\0>"sv}) {
    ReplyText const reply(bytes);
    EXPECT_EQ(reply.bytesOf(reply.text()), bytes);
  }
  EXPECT_EQ(ReplyText("\xff\xfe<\0a\0/\0>\0"sv).text(), "<a/>");
  EXPECT_THROW(ReplyText("\xff\xfe<\0a\0/\0>"sv), InputFailure);
  EXPECT_THROW(ReplyText("\xff\xfe\0\xd8"sv), InputFailure);
}

}  // namespace

}  // namespace Kovra::tool
