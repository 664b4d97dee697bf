// Media status: ribbon, transfer film and laminates.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "kvxstatusparser.h"
#include "support/findings.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::element;
using test::ExpectedWords;
using test::expectNeedsChildren;
using test::filled;
using test::MemberCase;
using test::same;
using test::StatusReply;
using test::Tree;
using test::untouched;

template <std::size_t N>
void setText(char (&out)[N], std::string const& text) {
  std::snprintf(out, N, "%s", text.c_str());
}

/// The record as a host has it that cleared its descriptions, to have the panels alone.
MediaStatus withoutDescriptions() {
  auto media = filled<MediaStatus>();
  media.ribbon.description[0] = '\0';
  media.film.description[0] = '\0';
  return media;
}

StatusReply<MediaStatus> const mediaStatus{"get_media_status", &KVXStatusParser::ParseMediaStatus,
                                           &KVXStatusParser::parseMediaStatus};

StatusReply<MediaStatus> const clearedMediaStatus{
    "get_media_status", &KVXStatusParser::ParseMediaStatus, &KVXStatusParser::parseMediaStatus,
    withoutDescriptions()};

std::string sequence(std::vector<std::string> const& panels) {
  std::string all;
  for (std::string const& panel : panels) all += element("panel", panel);
  return element("sequence", all);
}

std::string ribbon(std::string const& children) {
  return element("ribbon", children);
}

// ---- Members -----------------------------------------------------------------------------------

constexpr MemberCase<MediaStatus> members[] = {
    {"ribbon", "type", "1", [](auto& media) { media.ribbon.type = 1; }},
    {"ribbon", "description", "KdO",
     [](auto& media) {
       setText(media.ribbon.description, "KdO");
       media.ribbon.code = 261;
     }},
    {"ribbon", "oem_country", "DE", [](auto& media) { setText(media.ribbon.oem_country, "DE"); }},
    {"ribbon", "initial_size", "500", [](auto& media) { media.ribbon.initial_size = 500; }},
    {"ribbon", "panels_remaining", "-2", [](auto& media) { media.ribbon.remaining = -2; }},
    {"ribbon", "ribbon_remaining", "3", [](auto& media) { media.ribbon.remaining = 3; }},
    {"ribbon", "part_number", "R-7", [](auto& media) { setText(media.ribbon.part_number, "R-7"); }},
    {"ribbon", "diam_ribbon_payout", "31.5", [](auto& media) { media.ribbon.diam_payout = 31.5F; }},
    {"ribbon", "diam_ribbon_takeup", "2.25", [](auto& media) { media.ribbon.diam_takeup = 2.25F; }},
    {"film", "type", "4", [](auto& media) { media.film.type = 4; }},
    {"film", "description", "Silver",
     [](auto& media) {
       setText(media.film.description, "Silver");
       media.film.code = 268;
     }},
    {"film", "oem_country", "FR", [](auto& media) { setText(media.film.oem_country, "FR"); }},
    {"film", "initial_size", "1000", [](auto& media) { media.film.initial_size = 1000; }},
    {"film", "panels_remaining", "5", [](auto& media) { media.film.remaining = 5; }},
    {"film", "diam_ribbon_payout", "40.75", [](auto& media) { media.film.diam_payout = 40.75F; }},
    {"film", "diam_ribbon_takeup", "1.5", [](auto& media) { media.film.diam_takeup = 1.5F; }},
    {"top_laminate", "type", "3", [](auto& media) { media.top_laminate.code = 3; }},
    {"top_laminate", "description", "Clear",
     [](auto& media) { setText(media.top_laminate.description, "Clear"); }},
    {"top_laminate", "oem_country", "IT",
     [](auto& media) { setText(media.top_laminate.oem_country, "IT"); }},
    {"top_laminate", "initial_size", "250",
     [](auto& media) { media.top_laminate.initial_size = 250; }},
    {"top_laminate", "panels_remaining", "6",
     [](auto& media) { media.top_laminate.remaining = 6; }},
    {"bottom_laminate", "type", "-7", [](auto& media) { media.bottom_laminate.code = -7; }},
    {"bottom_laminate", "description", "Hologram",
     [](auto& media) { setText(media.bottom_laminate.description, "Hologram"); }},
    {"bottom_laminate", "oem_country", "ES",
     [](auto& media) { setText(media.bottom_laminate.oem_country, "ES"); }},
    {"bottom_laminate", "initial_size", "251",
     [](auto& media) { media.bottom_laminate.initial_size = 251; }},
    {"bottom_laminate", "panels_remaining", "8",
     [](auto& media) { media.bottom_laminate.remaining = 8; }},
};

TEST(MediaStatus, ReadsEachElementIntoItsMemberAndNoOther) {
  mediaStatus.expectMembers(members);
}

std::string const wholeReply = R"(<?xml version="1.0" encoding="UTF-8" ?>
<get_media_status>
    <ribbon>
        <type>2</type>
        <sequence>
            <panel>y</panel>
            <panel>m</panel>
            <panel>c</panel>
            <panel>k</panel>
            <panel>o</panel>
        </sequence>
        <oem_country>EU</oem_country>
        <initial_size>500</initial_size>
        <ribbon_remaining>437</ribbon_remaining>
        <part_number>KV-RB-0500-YMCKO</part_number>
        <diam_ribbon_payout>38.25</diam_ribbon_payout>
        <diam_ribbon_takeup>21.5</diam_ribbon_takeup>
    </ribbon>
    <film>
        <type>5</type>
        <description>Hologram</description>
        <oem_country>EU</oem_country>
        <initial_size>1000</initial_size>
        <panels_remaining>120</panels_remaining>
        <diam_ribbon_payout>24.125</diam_ribbon_payout>
        <diam_ribbon_takeup>40.5</diam_ribbon_takeup>
    </film>
    <top_laminate>
        <type>3</type>
        <description>Clear 1.0 mil</description>
        <oem_country>US</oem_country>
        <initial_size>250</initial_size>
        <panels_remaining>199</panels_remaining>
    </top_laminate>
    <bottom_laminate>
        <type>4</type>
        <description>Clear 0.6 mil</description>
        <oem_country>JP</oem_country>
        <initial_size>300</initial_size>
        <panels_remaining>1</panels_remaining>
    </bottom_laminate>
</get_media_status>
)";

void setLaminate(_MediaStatusInfo& laminate, int type, char const* description, char const* country,
                 int size, int remaining) {
  laminate.code = type;
  setText(laminate.description, description);
  setText(laminate.oem_country, country);
  laminate.initial_size = size;
  laminate.remaining = remaining;
}

TEST(MediaStatus, ReadsEveryMemberOfAWholeReply) {
  clearedMediaStatus.expectWideEntry(wholeReply, [](MediaStatus& media) {
    media.ribbon.type = 2;
    media.ribbon.code = 256;
    setText(media.ribbon.description, "ymcko");
    setText(media.ribbon.part_number, "KV-RB-0500-YMCKO");
    setText(media.ribbon.oem_country, "EU");
    media.ribbon.initial_size = 500;
    media.ribbon.remaining = 437;
    media.ribbon.diam_payout = 38.25F;
    media.ribbon.diam_takeup = 21.5F;
    media.film.type = 5;
    media.film.code = 271;
    setText(media.film.description, "Hologram");
    setText(media.film.oem_country, "EU");
    media.film.initial_size = 1000;
    media.film.remaining = 120;
    media.film.diam_payout = 24.125F;
    media.film.diam_takeup = 40.5F;
    setLaminate(media.top_laminate, 3, "Clear 1.0 mil", "US", 250, 199);
    setLaminate(media.bottom_laminate, 4, "Clear 0.6 mil", "JP", 300, 1);
  });
}

TEST(MediaStatus, SkipsWhatAConsumableDoesNotHave) {
  for (char const* const name : {"ribbon_remaining", "part_number", "sequence", "code", "remaining",
                                 "diam_payout", "diam_takeup", "reserved"}) {
    mediaStatus.expectSkipped(element("film", element(name, "1")));
  }
  mediaStatus.expectSkipped(element("film", sequence({"k", "o"})));
  for (char const* const laminate : {"top_laminate", "bottom_laminate"}) {
    for (char const* const name : {"ribbon_remaining", "part_number", "sequence", "code",
                                   "diam_ribbon_payout", "diam_ribbon_takeup", "reserved"}) {
      mediaStatus.expectSkipped(element(laminate, element(name, "1")));
    }
    mediaStatus.expectSkipped(element(laminate, sequence({"k", "o"})));
  }
  for (char const* const name : {"code", "remaining", "diam_payout", "panel", "reserved"}) {
    mediaStatus.expectSkipped(ribbon(element(name, "1")));
  }
  for (char const* const name : {"type", "description", "sequence", "reserved", "laminate"}) {
    mediaStatus.expectSkipped(element(name, "1"));
  }
}

TEST(MediaStatus, TextsFitUpToTheirLastCharacterAndLongerOnesAreCut) {
  std::string const thirtyOne = "abcdefghijklmnopqrstuvwxyz01234";
  std::string const seven = "COUNTRY";
  for (std::string const behind : {"", "+", "+ and so on for quite a while: far too long"}) {
    mediaStatus.expectRead(ribbon(element("part_number", thirtyOne + behind)),
                           [&](auto& media) { setText(media.ribbon.part_number, thirtyOne); });
    for (char const* const name : {"ribbon", "film"}) {
      auto const outcome =
          mediaStatus.parsedChildren(element(name, element("description", thirtyOne + behind)));
      auto expected = filled<MediaStatus>();
      auto& one = std::string(name) == "film" ? expected.film : expected.ribbon;
      setText(one.description, thirtyOne);
      one.code = 263;
      EXPECT_TRUE(same(outcome.record, expected)) << name;
    }
    mediaStatus.expectRead(
        element("top_laminate", element("description", thirtyOne + behind)),
        [&](auto& media) { setText(media.top_laminate.description, thirtyOne); });
    mediaStatus.expectRead(element("bottom_laminate", element("oem_country", seven + behind)),
                           [&](auto& media) { setText(media.bottom_laminate.oem_country, seven); });
    mediaStatus.expectRead(ribbon(element("oem_country", seven + behind)),
                           [&](auto& media) { setText(media.ribbon.oem_country, seven); });
    mediaStatus.expectRead(element("film", element("oem_country", seven + behind)),
                           [&](auto& media) { setText(media.film.oem_country, seven); });
  }
}

TEST(MediaStatus, NumbersThatAreNoneReadAsZero) {
  for (char const* const name : {"type", "initial_size", "panels_remaining", "ribbon_remaining"}) {
    EXPECT_TRUE(same(mediaStatus.parsedChildren(ribbon(element(name, "many"))).record,
                     mediaStatus.parsedChildren(ribbon(element(name, "0"))).record));
  }
  mediaStatus.expectRead(ribbon(element("diam_ribbon_payout", "wide")),
                         [](auto& media) { media.ribbon.diam_payout = 0; });
  mediaStatus.expectRead(ribbon(element("diam_ribbon_takeup", " -1.5e1mm")),
                         [](auto& media) { media.ribbon.diam_takeup = -15; });
}

// ---- A ribbon's kind by its name ---------------------------------------------------------------

using MediaStatusInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, MediaStatusInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(MediaStatusInCommaLocale, ReadsDiametersWithCommas) {
  mediaStatus.expectRead(element("ribbon", element("diam_ribbon_payout", "31,5")),
                         [](auto& media) { media.ribbon.diam_payout = 31.5F; });
  mediaStatus.expectRead(element("film", element("diam_ribbon_takeup", "2.25")),
                         [](auto& media) { media.film.diam_takeup = 2; });
}

TEST(MediaStatus, DescriptionOfRibbonAndFilmGivesTheCodeOfItsName) {
  ExpectedWords::Row const rows[] = {
      {"YMCKO", 256},   {"YMCKOK", 257},       {"1/2 YMCKO", 258}, {"1/2 YMCKOKO", 259},
      {"YMCPKO", 260},  {"KdO", 261},          {"KrO", 262},       {"Black", 263},
      {"White", 264},   {"Red", 265},          {"Blue", 266},      {"Gold", 267},
      {"Silver", 268},  {"YMCKLL", 269},       {"SrDYMCKO", 270},  {"Hologram", 271},
      {"ymcko", 256},   {"HOLOGRAM", 271},     {"kDo", 261},       {"Unknown Ribbon", 263},
      {"ymckoo", 263},  {"holo overlay", 263}, {"o", 263},         {"ko", 263},
      {"sdymcko", 263}, {"YMCKO ribbon", 263}, {"ymcoviko", 263},
  };
  for (auto const& [name, code] : rows) {
    mediaStatus.expectRead(ribbon(element("description", name)),
                           [&, expected = code, text = name](auto& media) {
                             setText(media.ribbon.description, text);
                             media.ribbon.code = expected;
                           });
    mediaStatus.expectRead(element("film", element("description", name)),
                           [&, expected = code, text = name](auto& media) {
                             setText(media.film.description, text);
                             media.film.code = expected;
                           });
  }
}

TEST(MediaStatus, DescriptionOfALaminateGivesNoCode) {
  for (char const* const name : {"Hologram", "YMCKO", "anything"}) {
    mediaStatus.expectRead(element("top_laminate", element("description", name)),
                           [&](auto& media) { setText(media.top_laminate.description, name); });
  }
}

TEST(MediaStatus, EmptyDescriptionLeavesTextAndCode) {
  for (char const* const name : {"ribbon", "film"}) {
    mediaStatus.expectSkipped(element(name, "<description/>"));
    mediaStatus.expectSkipped(element(name, "<description></description>"));
  }
}

// ---- A ribbon's kind by its panels -------------------------------------------------------------

struct SequenceCase {
  std::vector<std::string> panels;
  char const* description;
  int code;
};

TEST(MediaStatus, PanelsAreJoinedAndGiveTheCodeOfTheDescription) {
  SequenceCase const cases[] = {
      {{"y", "m", "c", "k", "o"}, "ymcko", 256},
      {{"Y", "M", "C", "K", "O"}, "YMCKO", 256},
      {{"ymcko"}, "ymcko", 256},
      {{"y", "m", "c", "k", "o", "k"}, "ymckok", 257},
      {{"1/2 y", "mc", "ko"}, "1/2 ymcko", 258},
      {{"1/2 ymc", "kok", "o"}, "1/2 ymckoko", 259},
      {{"y", "m", "c", "p", "k", "o"}, "ymcpko", 260},
      {{"y", "m", "c", "o", "vi", "k", "o"}, "ymcoviko", 260},
      {{"kd", "o"}, "kdo", 261},
      {{"k", "o"}, "ko", 262},
      {{"kr", "o"}, "kro", 262},
      {{"black"}, "black", 263},
      {{"black mono"}, "black mono", 263},
      {{"white"}, "white", 264},
      {{"red"}, "red", 265},
      {{"blue"}, "blue", 266},
      {{"gold"}, "gold", 267},
      {{"silver"}, "silver", 268},
      {{"y", "m", "c", "k", "l", "l"}, "ymckll", 269},
      {{"sd", "y", "m", "c", "k", "o"}, "sdymcko", 270},
      {{"o"}, "o", 271},
      {{"Hologram"}, "Hologram", 271},
      {{"holo overlay"}, "holo overlay", 271},
      {{"y", "m", "c", "k", "o", "o"}, "ymckoo", 272},
      {{"x", "y", "z"}, "xyz", 263},
      {{"SrDYMCKO"}, "SrDYMCKO", 263},
  };
  for (auto const& [panels, description, code] : cases) {
    clearedMediaStatus.expectRead(ribbon(sequence(panels)),
                                  [text = description, value = code](MediaStatus& media) {
                                    setText(media.ribbon.description, text);
                                    media.ribbon.code = value;
                                  });
  }
}

/// A record whose ribbon the host described before.
StatusReply<MediaStatus> describedAs(char const* description) {
  StatusReply<MediaStatus> reply = mediaStatus;
  setText(reply.start.ribbon.description, description);
  return reply;
}

TEST(MediaStatus, PanelsAreAppendedToWhatTheDescriptionHolds) {
  describedAs("ym").expectRead(ribbon(sequence({"c", "k", "o"})), [](MediaStatus& media) {
    setText(media.ribbon.description, "ymcko");
    media.ribbon.code = 256;
  });
  describedAs("old ").expectRead(ribbon(sequence({"k", "o"})), [](MediaStatus& media) {
    setText(media.ribbon.description, "old ko");
    media.ribbon.code = 263;
  });
}

TEST(MediaStatus, PanelsAreAppendedToADescriptionOfTheSameReply) {
  mediaStatus.expectRead(ribbon("<description>Kr</description>" + sequence({"o"})),
                         [](MediaStatus& media) {
                           setText(media.ribbon.description, "Kro");
                           media.ribbon.code = 262;
                         });
}

TEST(MediaStatus, LaterDescriptionReplacesThePanelsAndTheirCode) {
  clearedMediaStatus.expectRead(ribbon(sequence({"k", "o"}) + "<description>Gold</description>"),
                                [](MediaStatus& media) {
                                  setText(media.ribbon.description, "Gold");
                                  media.ribbon.code = 267;
                                });
}

TEST(MediaStatus, SecondSequenceIsAppendedToTheFirst) {
  clearedMediaStatus.expectRead(ribbon(sequence({"y", "m"}) + sequence({"c", "k", "o"})),
                                [](MediaStatus& media) {
                                  setText(media.ribbon.description, "ymcko");
                                  media.ribbon.code = 256;
                                });
}

TEST(MediaStatus, CodeStaysWhenTheLastPanelIsEmpty) {
  clearedMediaStatus.expect(false,
                            ribbon("<sequence><panel>k</panel><panel>o</panel><panel/></sequence>"),
                            [](MediaStatus& media) { setText(media.ribbon.description, "ko"); });
  clearedMediaStatus.expect(false, ribbon("<sequence><panel/></sequence>"), [](MediaStatus&) {});
}

TEST(MediaStatus, EmptyPanelBeforeTheLastAddsNothing) {
  clearedMediaStatus.expectRead(
      ribbon("<sequence><panel/><panel>k</panel><panel></panel><panel>o</panel></sequence>"),
      [](MediaStatus& media) {
        setText(media.ribbon.description, "ko");
        media.ribbon.code = 262;
      });
}

TEST(MediaStatus, SequenceTakesPanelsOnly) {
  clearedMediaStatus.expectRead(
      ribbon("<sequence>y<colour>m</colour><panel>k</panel><Panel>c</Panel><!-- c -->"
             "<panel>o</panel><panels><panel>l</panel></panels><other/></sequence>"),
      [](MediaStatus& media) {
        setText(media.ribbon.description, "ko");
        media.ribbon.code = 262;
      });
  for (char const* const nothing :
       {"", "ko", "<Panel>k</Panel>", "<panels><panel>k</panel></panels>"}) {
    clearedMediaStatus.expect(false, ribbon(element("sequence", nothing)), [](MediaStatus&) {});
  }
}

TEST(MediaStatus, PanelsFillTheDescriptionUpToItsTerminator) {
  std::string const thirty(30, 'x');
  struct {
    std::vector<std::string> panels;
    std::string description;
  } const cases[] = {
      {{thirty, "y"}, thirty + "y"},
      {{thirty, "yz"}, thirty + "y"},
      {{thirty, "y", "z"}, thirty + "y"},
      {{thirty, "y", "z", "", "k"}, thirty + "y"},
      {{thirty + "yz"}, thirty + "y"},
      {{thirty + thirty + thirty, thirty}, std::string(31, 'x')},
      {std::vector<std::string>(100, "k"), std::string(31, 'k')},
  };
  for (auto const& [panels, description] : cases) {
    clearedMediaStatus.expectRead(ribbon(sequence(panels)), [&, &text = description](auto& media) {
      setText(media.ribbon.description, text);
      media.ribbon.code = 263;
    });
  }
}

TEST(MediaStatus, DescriptionWithoutTerminatorIsKeptAsFarAsATerminatorLeavesRoom) {
  // Every byte of this record, the terminator's place among them, is the sentinel.
  mediaStatus.expectRead(ribbon(sequence({"k", "o"})), [](MediaStatus& media) {
    media.ribbon.description[31] = '\0';
    media.ribbon.code = 263;
  });
  mediaStatus.expectSkipped(ribbon("<sequence><panel/></sequence>"));
}

// ---- getRibbonDescription by itself ------------------------------------------------------------

/// A description between bytes that are none of its own.
struct GuardedDescription {
  std::array<char, 16> before;
  char text[32];
  std::array<char, 16> behind;
};

GuardedDescription described(char const* text) {
  auto guarded = filled<GuardedDescription>();
  setText(guarded.text, text);
  return guarded;
}

TEST(RibbonDescription, AppendsPanelsWithinItsThirtyTwoCharacters) {
  struct {
    std::string before;
    std::vector<std::string> panels;
    std::string after;
  } const cases[] = {{"", {"k", "o"}, "ko"},
                     {"y", {"m", "c"}, "ymc"},
                     {std::string(31, 'a'), {"k", "o"}, std::string(31, 'a')},
                     {std::string(30, 'a'), {"k", "o"}, std::string(30, 'a') + "k"},
                     {"", std::vector<std::string>(1000, "ymc"), "ymcymcymcymcymcymcymcymcymcymcy"},
                     {"", {std::string(5000, 'k')}, std::string(31, 'k')}};
  for (auto const& [before, panels, after] : cases) {
    GuardedDescription guarded = described(before.c_str());
    Tree tree(sequence(panels));
    EXPECT_TRUE(KVXStatusParser().getRibbonDescription(tree.root(), guarded.text));
    EXPECT_STREQ(guarded.text, after.c_str());
    EXPECT_TRUE(untouched(guarded.before));
    EXPECT_TRUE(untouched(guarded.behind));
  }
}

TEST(RibbonDescription, LeavesTheCharactersBehindItsTerminator) {
  GuardedDescription guarded = described("k");
  GuardedDescription expected = guarded;
  setText(expected.text, "ko");
  EXPECT_TRUE(
      KVXStatusParser().getRibbonDescription(Tree("<s><panel>o</panel></s>").root(), guarded.text));
  EXPECT_TRUE(same(guarded, expected));
}

TEST(RibbonDescription, ReadsAnUnterminatedDescriptionOnlyToItsEnd) {
  auto guarded = filled<GuardedDescription>();
  EXPECT_TRUE(
      KVXStatusParser().getRibbonDescription(Tree("<s><panel>o</panel></s>").root(), guarded.text));
  auto expected = filled<GuardedDescription>();
  expected.text[31] = '\0';
  EXPECT_TRUE(same(guarded, expected));
}

TEST(RibbonDescription, ResultIsThatOfTheLastPanel) {
  struct {
    char const* children;
    bool result;
    char const* description;
  } const cases[] = {{"<panel>k</panel><panel/>", false, "k"},
                     {"<panel/><panel>k</panel>", true, "k"},
                     {"<panel>k</panel><other/>", true, "k"},
                     {"<panel/><other>k</other>", false, ""},
                     {"<panel><![CDATA[]]></panel>", true, ""},
                     {"<other>k</other>", false, ""},
                     {"text", false, ""}};
  for (auto const& [children, result, description] : cases) {
    GuardedDescription guarded = described("");
    Tree tree(element("sequence", children));
    EXPECT_EQ(KVXStatusParser().getRibbonDescription(tree.root(), guarded.text), result)
        << children;
    EXPECT_STREQ(guarded.text, description) << children;
  }
}

TEST(RibbonDescription, FailsWithoutASequenceOrADescription) {
  auto const start = filled<GuardedDescription>();
  expectNeedsChildren(start, [](TiXmlElement* nothing, GuardedDescription& record) {
    return KVXStatusParser().getRibbonDescription(nothing, record.text);
  });
  EXPECT_FALSE(
      KVXStatusParser().getRibbonDescription(Tree("<s><panel>o</panel></s>").root(), nullptr));
}

// ---- The walk ----------------------------------------------------------------------------------

TEST(MediaStatus, ResultIsThatOfTheLastKnownElement) {
  std::string const good = "<type>1</type>";
  struct {
    std::string children;
    bool result;
  } const cases[] = {
      {ribbon(good + "<part_number/>"), false},
      {ribbon("<part_number/>" + good), true},
      {ribbon(good + "<other/>") + "<other/>", true},
      {ribbon(good) + "<film/>", false},
      {"<film/>" + ribbon(good), true},
      {ribbon(good) + "<top_laminate><other>1</other></top_laminate>", false},
      {ribbon(good) + "<bottom_laminate>text</bottom_laminate><unknown/>", false},
      {ribbon(good + "<sequence/>"), false},
      {ribbon("<sequence/>" + good), true},
  };
  for (auto const& [children, result] : cases) {
    mediaStatus.expect(result, children, [](MediaStatus& media) { media.ribbon.type = 1; });
  }
}

TEST(MediaStatus, TakesTheLaterOfTwoElements) {
  mediaStatus.expectRead(
      ribbon("<panels_remaining>1</panels_remaining><ribbon_remaining>2</ribbon_remaining>"),
      [](MediaStatus& media) { media.ribbon.remaining = 2; });
  mediaStatus.expectRead(
      ribbon("<ribbon_remaining>1</ribbon_remaining><panels_remaining>2</panels_remaining>"),
      [](MediaStatus& media) { media.ribbon.remaining = 2; });
  mediaStatus.expectRead(ribbon("<type>1</type>") + ribbon("<type>2</type>"),
                         [](MediaStatus& media) { media.ribbon.type = 2; });
}

TEST(MediaStatus, FillsOnlyTheConsumablesThatTheReplyNames) {
  mediaStatus.expect(true, element("bottom_laminate", "<type>4</type>"),
                     [](MediaStatus& media) { media.bottom_laminate.code = 4; });
  mediaStatus.expect(false, element("bottom_laminate", "<type>4</type><description/>"),
                     [](MediaStatus& media) { media.bottom_laminate.code = 4; });
}

TEST(MediaStatus, FailsUntouchedWithoutAnyKnownElement) {
  for (char const* const children :
       {"", " ", "text", "<!-- a -->", "<ribbons><type>1</type></ribbons>",
        "<Ribbon><type>1</type></Ribbon>", "<laminate><type>1</type></laminate>"}) {
    mediaStatus.expectSkipped(children);
  }
}

TEST(MediaStatus, ReadsItsConsumablesByThemselves) {
  KVXStatusParser parser;
  auto media = filled<MediaStatus>();
  auto expected = media;
  Tree tree("<any><type>9</type><ribbon_remaining>8</ribbon_remaining></any>");
  EXPECT_TRUE(parser.getRibbonStatus(tree.root(), media));
  expected.ribbon.type = 9;
  expected.ribbon.remaining = 8;
  EXPECT_TRUE(same(media, expected));
  EXPECT_TRUE(parser.getInTMStatus(tree.root(), media));
  expected.film.type = 9;
  EXPECT_TRUE(same(media, expected));
  EXPECT_TRUE(parser.getLaminateStatus(tree.root(), media.bottom_laminate));
  expected.bottom_laminate.code = 9;
  EXPECT_TRUE(same(media, expected));
}

TEST(MediaStatus, ElementReadersNeedChildren) {
  for (auto const reader : {&KVXStatusParser::parseMediaStatus, &KVXStatusParser::getRibbonStatus,
                            &KVXStatusParser::getInTMStatus}) {
    expectNeedsChildren(filled<MediaStatus>(), [&](TiXmlElement* nothing, MediaStatus& record) {
      return (KVXStatusParser().*reader)(nothing, record);
    });
  }
  expectNeedsChildren(filled<_MediaStatusInfo>(),
                      [](TiXmlElement* nothing, _MediaStatusInfo& record) {
                        return KVXStatusParser().getLaminateStatus(nothing, record);
                      });
}

// ---- Decoded -----------------------------------------------------------------------------------

TEST(MediaStatus, IsDecodedWithTheRibbonsCodeAndItsDescription) {
  std::string const reply = element("get_media_status", ribbon(sequence({"k", "o"})));
  Decoding const decoding = decode(reply);
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].message(), "media-status");
  EXPECT_EQ(readings[0].record().at("ribbon"),
            Value::object({{"description", "ko"}, {"code", Value::keyword(262, "ko")}}));
  EXPECT_TRUE(decoding.notes().empty());
}

TEST(MediaStatus, IsDecodedWithANoteOnEveryPanelThatCouldNotBeUsed) {
  std::string const reply = element(
      "get_media_status", "\n" + ribbon("<sequence>\n<panel/>\n<panel>" + std::string(40, 'x') +
                                        "</panel>\n<paint>y</paint></sequence>"));
  std::vector<Note> const notes = decode(reply).notes();
  ASSERT_EQ(notes.size(), 4U);
  EXPECT_EQ(test::kindOf(notes[0]), "unknown_word");
  EXPECT_EQ(notes[0].element(), "sequence");
  EXPECT_EQ(notes[0].found(), std::string(31, 'x'));
  EXPECT_EQ(test::kindOf(notes[1]), "empty_element");
  EXPECT_EQ(notes[1].element(), "panel");
  EXPECT_EQ(test::kindOf(notes[2]), "cut_text");
  EXPECT_EQ(notes[2].found(), std::string(40, 'x'));
  EXPECT_EQ(notes[2].kept(), std::string(31, 'x'));
  EXPECT_EQ(test::kindOf(notes[3]), "unknown_element");
  EXPECT_EQ(notes[3].element(), "paint");
}

TEST(MediaStatus, IsDecodedWithANoteOnADescriptionThatNamesNoRibbon) {
  std::string const reply =
      element("get_media_status", ribbon("<description>Unknown Ribbon</description>"));
  Decoding const decoding = decode(reply);
  std::vector<Note> const notes = decoding.notes();
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(test::kindOf(notes[0]), "unknown_word");
  EXPECT_EQ(notes[0].element(), "description");
  EXPECT_EQ(notes[0].found(), "Unknown Ribbon");
  Reading const reading = decoding.readings().at(0);
  Value const& code = reading.record().at("ribbon.code");
  EXPECT_EQ(code.code(), 263);
  EXPECT_FALSE(code.isKnown());
  Decoding const noDescription =
      decode(element("get_media_status", ribbon("<type>1</type><description/>")));
  ASSERT_EQ(noDescription.notes().size(), 1U);
  EXPECT_EQ(test::kindOf(noDescription.notes()[0]), "empty_element");
  EXPECT_EQ(noDescription.readings().at(0).record().at("ribbon").size(), 1U);
}

TEST(KVXStatusParser, HasEveryOperationOnMediaWithItsSignature) {
  using P = KVXStatusParser;
  [[maybe_unused]] bool (P::*const entry)(wchar_t const&, int, MediaStatus&) = &P::ParseMediaStatus;
  [[maybe_unused]] bool (P::*const readers[])(TiXmlElement*, MediaStatus&) = {
      &P::parseMediaStatus, &P::getRibbonStatus, &P::getInTMStatus};
  [[maybe_unused]] bool (P::*const laminate)(TiXmlElement*, _MediaStatusInfo&) =
      &P::getLaminateStatus;
  bool (P::*const panels)(TiXmlElement*, char*) = &P::getRibbonDescription;
  char description[32] = "k";
  EXPECT_TRUE((P().*panels)(Tree("<s><panel>o</panel></s>").root(), description));
  EXPECT_STREQ(description, "ko");
}

}  // namespace
}  // namespace Kovra
