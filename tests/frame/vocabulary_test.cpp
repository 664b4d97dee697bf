#include "frame/vocabulary.hpp"

#include <gtest/gtest.h>

#include <iterator>
#include <string>

#include "kvxhelper.h"
#include "support/words.hpp"

namespace Kovra {
namespace {

using frame::everyWordIsReachable;
using frame::Match;
using frame::Vocabulary;
using frame::Word;
using test::expectWords;
using test::Rule;

// The tables that the families share, written down once more from the printer's vocabulary.

TEST(Keywords, RibbonNames) {
  expectWords({Rule::anyCase,
               263,
               {{"YMCKO", 256},
                {"YMCKOK", 257},
                {"1/2 YMCKO", 258},
                {"1/2 YMCKOKO", 259},
                {"YMCPKO", 260},
                {"KdO", 261},
                {"KrO", 262},
                {"Black", 263},
                {"White", 264},
                {"Red", 265},
                {"Blue", 266},
                {"Gold", 267},
                {"Silver", 268},
                {"YMCKLL", 269},
                {"SrDYMCKO", 270},
                {"Hologram", 271}}},
              [](char* word) { return KVXHelper::RibbonNameToInt(word); });
}

TEST(Keywords, RibbonNamesAreWholeWordsInAnyCase) {
  EXPECT_EQ(KVXHelper::RibbonNameToInt("ymcko"), 256);
  EXPECT_EQ(KVXHelper::RibbonNameToInt("YmCkO"), 256);
  EXPECT_EQ(KVXHelper::RibbonNameToInt("Ymcko Ribbon"), 263);
}

TEST(Keywords, RibbonNamesLackWhatOnlyDescriptionsKnow) {
  for (char const* const word : {"ymckoo", "ko", "o", "holo overlay", "ymcoviko", "sdymcko"}) {
    EXPECT_EQ(KVXHelper::RibbonNameToInt(word), 263) << word;
  }
}

TEST(Keywords, RibbonDescriptions) {
  expectWords({Rule::anyCase,
               263,
               {{"black mono", 263},  {"black", 263},     {"white", 264},        {"red", 265},
                {"blue", 266},        {"gold", 267},      {"silver", 268},       {"ymcko", 256},
                {"ymckok", 257},      {"1/2 ymcko", 258}, {"kdo", 261},          {"kro", 262},
                {"ko", 262},          {"Hologram", 271},  {"holo overlay", 271}, {"o", 271},
                {"1/2 ymckoko", 259}, {"ymckoo", 272},    {"ymcoviko", 260},     {"ymcpko", 260},
                {"sdymcko", 270},     {"ymckll", 269}}},
              [](char* word) { return KVXHelper::RibbonDescriptionToInt(word); });
}

TEST(Keywords, RibbonDescriptionsAreWholeWordsInAnyCase) {
  EXPECT_EQ(KVXHelper::RibbonDescriptionToInt("HOLO OVERLAY"), 271);
  EXPECT_EQ(KVXHelper::RibbonDescriptionToInt("ymckoo"), 272);
  EXPECT_EQ(KVXHelper::RibbonDescriptionToInt("srdymcko"), 263);
  EXPECT_EQ(KVXHelper::RibbonDescriptionToInt(""), 263);
}

TEST(Keywords, RibbonTypes) {
  expectWords({Rule::exact, -1, {{"dye_sub", 0}}},
              [](char* word) { return KVXHelper::RibbonTypeToInt(word); });
}

TEST(Keywords, SmartFeeders) {
  expectWords(
      {Rule::substring,
       -1,
       {{"contact", 0}, {"iclass", 1}, {"mifare", 2}, {"prox", 3}, {"uhf", 4}, {"legic", 5}}},
      [](char* word) { return KVXHelper::FeederSmartToInt(word); });
}

TEST(Keywords, SmartFeederIsTheFirstOfTheTableThatTheTextHolds) {
  EXPECT_EQ(KVXHelper::FeederSmartToInt("mifare_desfire"), 2);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("contactless"), 0);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("contact_smart"), 0);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("legic uhf prox mifare iclass contact"), 0);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("legic uhf prox mifare iclass"), 1);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("legic uhf prox mifare"), 2);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("legic uhf prox"), 3);
  EXPECT_EQ(KVXHelper::FeederSmartToInt("legic uhf"), 4);
  EXPECT_EQ(KVXHelper::FeederSmartToInt(""), -1);
}

TEST(Keywords, FeederTypes) {
  expectWords({Rule::substring, -1, {{"pvc", 1}, {"composite", 0}}},
              [](char* word) { return KVXHelper::FeederTypeToInt(word); });
}

TEST(Keywords, FeederTypeOfATextWithBothWordsIsPvc) {
  EXPECT_EQ(KVXHelper::FeederTypeToInt("composite pvc"), 1);
  EXPECT_EQ(KVXHelper::FeederTypeToInt("pvc composite"), 1);
}

TEST(Keywords, Coercivities) {
  expectWords({Rule::exact, 0, {{"low", 1}, {"high", 2}}},
              [](char* word) { return KVXHelper::CoercivityToInt(word); });
  EXPECT_EQ(KVXHelper::CoercivityToInt("Low"), 0);
}

TEST(Keywords, CoercivityWordsStandAtTheirCodes) {
  static_assert(std::is_same_v<decltype(COERCIVITYTYPES), char const* const[3]>);
  EXPECT_STREQ(COERCIVITYTYPES[0], "none");
  EXPECT_STREQ(COERCIVITYTYPES[1], "low");
  EXPECT_STREQ(COERCIVITYTYPES[2], "high");
  for (int code = 0; code < 3; ++code) {
    EXPECT_EQ(KVXHelper::CoercivityToInt(COERCIVITYTYPES[code]), code);
  }
}

TEST(Keywords, Laminations) {
  expectWords({Rule::exact, 0, {{"2_side", 2}, {"1_side", 1}}},
              [](char* word) { return KVXHelper::LaminationTypeToInt(word); });
}

TEST(Keywords, CommunicationChannels) {
  expectWords({Rule::exact, 0, {{"serial", 1}, {"usb", 2}}},
              [](char* word) { return KVXHelper::CommsChannelToInt(word); });
}

TEST(Keywords, ContactlessEncoders) {
  expectWords({Rule::exact, 0, {{"mifare", 1}, {"felica", 2}, {"uhf", 3}, {"hf", 4}, {"lf", 5}}},
              [](char* word) { return KVXHelper::ContactlessEncToInt(word); });
}

TEST(Keywords, Panels) {
  expectWords({Rule::exact, -1, {{"yellow_panel", 0}, {"magenta_panel", 1}, {"cyan_panel", 2}}},
              [](char* word) { return KVXHelper::PanelToInt(word); });
  EXPECT_EQ(KVXHelper::PanelToInt("yellow"), -1);
}

TEST(Keywords, LaminatorWidths) {
  expectWords({Rule::exact, -1, {{"full", 0}, {"mag", 1}, {"signature", 2}}},
              [](char* word) { return KVXHelper::LaminatorWidthToInt(word); });
}

TEST(Keywords, LaminatorRegistrations) {
  expectWords({Rule::exact, -1, {{"none", 0}, {"hologram", 1}, {"contact", 2}}},
              [](char* word) { return KVXHelper::LaminatorRegistrationToInt(word); });
}

// Vocabularies themselves, with words of the test's own.

constexpr Word aliased[] = {{"single", 1}, {"dual", 2}, {"twin", 2}};
constexpr Vocabulary exact{aliased, Match::exact, -1};
constexpr Vocabulary anyCase{aliased, Match::anyCase, -2};
constexpr Vocabulary substring{aliased, Match::substring, -3};

TEST(Vocabulary, WritesTheFirstWordOfACode) {
  EXPECT_EQ(exact.codeOf("twin"), 2);
  EXPECT_EQ(exact.wordOf(2), "dual");
  EXPECT_EQ(exact.wordOf(1), "single");
}

TEST(Vocabulary, HasNoWordForACodeOutsideTheTable) {
  EXPECT_TRUE(exact.wordOf(3).empty());
  EXPECT_TRUE(exact.wordOf(-1).empty());
}

TEST(Vocabulary, ComparesByItsOwnRule) {
  EXPECT_EQ(exact.codeOf("DUAL"), -1);
  EXPECT_EQ(anyCase.codeOf("DUAL"), 2);
  EXPECT_EQ(anyCase.codeOf("dual "), -2);
  EXPECT_EQ(substring.codeOf("a dual feeder"), 2);
  EXPECT_EQ(substring.codeOf("a DUAL feeder"), -3);
}

TEST(Vocabulary, FindsTheRowAndNotOnlyTheCode) {
  EXPECT_EQ(exact.find("twin"), &aliased[2]);
  EXPECT_EQ(exact.find("triple"), nullptr);
  EXPECT_EQ(exact.find(nullptr), nullptr);
  EXPECT_EQ(substring.find("twin or dual"), &aliased[1]);
}

TEST(Vocabulary, ProofNoticesAWordThatNoTextReaches) {
  static constexpr Word twice[] = {{"on", 1}, {"on", 2}};
  static constexpr Word twoCases[] = {{"on", 1}, {"ON", 2}};
  static constexpr Word within[] = {{"on", 1}, {"upon", 2}};
  static constexpr Word around[] = {{"upon", 1}, {"on", 2}};
  static constexpr Word empty[] = {{"", 1}};
  for (Match const match : {Match::exact, Match::anyCase, Match::substring}) {
    EXPECT_FALSE(everyWordIsReachable({twice, match, 0}));
    EXPECT_FALSE(everyWordIsReachable({empty, match, 0}));
    EXPECT_TRUE(everyWordIsReachable({around, match, 0}));
    EXPECT_TRUE(everyWordIsReachable({aliased, match, 0}));
    EXPECT_EQ(everyWordIsReachable({twoCases, match, 0}), match != Match::anyCase);
    EXPECT_EQ(everyWordIsReachable({within, match, 0}), match != Match::substring);
  }
}

}  // namespace
}  // namespace Kovra
