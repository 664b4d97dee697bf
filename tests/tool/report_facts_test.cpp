#include "report_facts.hpp"

#include <gtest/gtest.h>

#include <kovra.hpp>
#include <string>
#include <vector>

namespace Kovra::tool {

namespace {

std::string nameOf(Need need) {
  return need == Need::now       ? "now"
         : need == Need::soon    ? "soon"
         : need == Need::unknown ? "unknown"
                                 : "none";
}

/// "now Head open: 1", "soon Door: low x2"
std::vector<std::string> signsOf(Value const& record) {
  std::vector<std::string> all;
  for (Sign const& sign : factsOf("some-message", record).signs) {
    all.push_back(nameOf(sign.need) + ' ' + sign.what + ": " + sign.said +
                  (sign.count > 1 ? " x" + std::to_string(sign.count) : ""));
  }
  return all;
}

using Texts = std::vector<std::string>;

TEST(Facts, TroublesAreNumbersFlagsAndTextsThatAreNeitherZeroNorNo) {
  EXPECT_EQ(signsOf(Value::object({{"alarms", 2}, {"tricolor_error", 7U}, {"fault", 0.5}})),
            (Texts{"now Alarms: 2", "now Tricolor error: 7", "now Fault: 0.5"}));
  EXPECT_EQ(signsOf(Value::object({{"door_open", true}, {"out_of_cards", "yes"}})),
            (Texts{"now Door open: yes", "now Out of cards: yes"}));
  EXPECT_EQ(signsOf(Value::object({{"warning", 3}, {"ribbonLow", true}})),
            (Texts{"soon Warning: 3", "soon Ribbon low: yes"}));
  EXPECT_EQ(signsOf(Value::object({{"alarms", 0}, {"error", 0.0}, {"door_open", false}})), Texts{});
  EXPECT_EQ(
      signsOf(Value::object({{"a_jam", "No"}, {"b_jam", "none"}, {"c_jam", ""}, {"d_jam", "OFF"}})),
      Texts{});
}

TEST(Facts, CountersChoicesAndPartsOfWordsAreNoTroubles) {
  EXPECT_EQ(signsOf(Value::object({{"num_jobs_done_error", 3},
                                   {"error_count", 3},
                                   {"total_jams", 3},
                                   {"low", true},
                                   {"open", true},
                                   {"empty", true},
                                   {"opener", 1},
                                   {"flipper_ready_out", 1},
                                   {"errors", 1},
                                   {"error_control", Value::keyword(1, "high")}})),
            Texts{});
}

TEST(Facts, BitsAreToldByTheirNumbers) {
  auto const saidOf = [](std::string const& alarms) {
    Decoding const decoding =
        decode("<get_general_status><alarms>" + alarms + "</alarms></get_general_status>");
    std::string said;
    for (Sign const& sign : factsOf("general-status", decoding.readings().at(0).record()).signs) {
      said += sign.said;
    }
    return said;
  };
  EXPECT_EQ(saidOf("0x1"), "bit 0 (0x1)");
  EXPECT_EQ(saidOf("0x80000000"), "bit 31 (0x80000000)");
  EXPECT_EQ(saidOf("0x19"), "bits 0, 3, 4 (0x19)");
  EXPECT_EQ(saidOf("0x0"), "");
}

TEST(Facts, NamesAreWordsInAnySpelling) {
  for (char const* const name :
       {"ribbon_low", "ribbon-low", "ribbon low", "ribbonLow", "RibbonLow", "__ribbon__low__"}) {
    EXPECT_EQ(signsOf(Value::object({{name, 1}})), (Texts{"soon Ribbon low: 1"})) << name;
  }
  EXPECT_EQ(signsOf(Value::object({{"ribbon2Low", 1}})), (Texts{"soon Ribbon2 low: 1"}));
  EXPECT_EQ(signsOf(Value::object({{"2_error", 1}})), (Texts{"now 2 error: 1"}));
  for (char const* const name : {"", "_", "- ", "RIBBONLOW", "ribbonlow"}) {
    EXPECT_EQ(signsOf(Value::object({{name, 1}})), Texts{}) << name;
  }
}

TEST(Facts, WordsOfStatesTell) {
  EXPECT_EQ(signsOf(Value::object({{"printer_state", Value::keyword(7, "offline")},
                                   {"feeder_state", "cards_low"},
                                   {"laminator_state", Value::keyword(3, "ready")},
                                   {"cam_state", "raised"},
                                   {"security", Value::keyword(0, "open")},
                                   {"mag_state", Value::unknownKeyword(-1, "Jammed_badly")},
                                   {"web_state", Value::unknownKeyword(-1, "resting")}})),
            (Texts{"now Printer state: offline", "soon Feeder state: cards low",
                   "now Mag state: Jammed badly", "unknown Web state: unknown word \"resting\""}));
}

TEST(Facts, StatesAreKeywordsInWords) {
  Facts const facts =
      factsOf("radio-status", Value::object({{"state", Value::keyword(3, "not_in_use")},
                                             {"cam_state", "raised"},
                                             {"encoder", Value::object({{
                                                             "status",
                                                             Value::keyword(1, ""),
                                                         }})}}));
  ASSERT_EQ(facts.states.size(), 2U);
  EXPECT_EQ(facts.states[0].what, "Radio status");
  EXPECT_EQ(facts.states[0].said, "not in use");
  EXPECT_EQ(facts.states[1].what, "Encoder status");
  EXPECT_EQ(facts.states[1].said, "(empty)");
}

TEST(Facts, WhatListsTellCanWaitAndIsToldOnce) {
  Value const failed = Value::object({{"print_state", Value::keyword(8, "done_error")}});
  Value const unknown = Value::object({{"print_state", Value::unknownKeyword(0, "new")}});
  Facts const facts =
      factsOf("jobs", Value::object({{"jobs", Value::list({failed, Value(), failed, unknown})}}));
  ASSERT_EQ(facts.signs.size(), 1U);
  EXPECT_EQ(facts.signs[0].need, Need::soon);
  EXPECT_EQ(facts.signs[0].count, 2U);
  EXPECT_TRUE(facts.states.empty());
}

TEST(Facts, SecretsAreNotLookedAt) {
  Value error = "hush";
  error.markSecret();
  Value serial = "hush";
  serial.markSecret();
  Value left = 3;
  left.markSecret();
  Facts const facts = factsOf(
      "m", Value::object({{"error", error}, {"serial_number", serial}, {"remaining", left}}));
  EXPECT_TRUE(facts.signs.empty());
  EXPECT_TRUE(facts.levels.empty());
  EXPECT_EQ(facts.serial, "");
  EXPECT_FALSE(facts.isJudged);
}

TEST(Facts, ThePrinterIsTheOneOfTheWholeRecord) {
  Value const record = Value::object({{"printer_serial", 0U},
                                      {"serial_number", "S-17"},
                                      {"printer_model", "HX"},
                                      {"laminator_serial", 5},
                                      {"inner", Value::object({{"model", "other"}})}});
  EXPECT_EQ(factsOf("m", record).serial, "S-17");
  EXPECT_EQ(factsOf("m", record).model, "HX");
  EXPECT_EQ(factsOf("m", Value::object({{"printer_serial", 12U}})).serial, "12");
}

TEST(Facts, ThePrintersNamesAreTextsAndWholeNumbersAlone) {
  Value const record = Value::object({{"printer_serial", 0.5},
                                      {"serial_number", Value::list({"S-17"})},
                                      {"printer_model", Value::keyword(1, "HX")}});
  EXPECT_EQ(factsOf("m", record).serial, "");
  EXPECT_EQ(factsOf("m", record).model, "");
}

Level levelOf(Value const& record) {
  std::vector<Level> const levels = factsOf("m", record).levels;
  return levels.size() == 1 ? levels[0] : Level();
}

TEST(Levels, AreWhatRemainsOfAWhole) {
  Level const level = levelOf(
      Value::object({{"film", Value::object({{"capacity", 200}, {"panels_remaining", 50}})}}));
  EXPECT_EQ(level.what, "Film");
  EXPECT_EQ(level.said, "50 of 200");
  EXPECT_TRUE(level.hasBar());
  EXPECT_EQ(level.share(), 0.25);
  EXPECT_EQ(level.low, 20);
  EXPECT_EQ(signOf(level).need, Need::none);
}

TEST(Levels, AreOfAHundredWhereTheyAreShares) {
  EXPECT_EQ(levelOf(Value::object({{"ink_level", 7}})).said, "7 %");
  EXPECT_EQ(levelOf(Value::object({{"ink_percent", 7}})).share(), 0.07);
  EXPECT_EQ(levelOf(Value::object({{"ink_level", 101}})).said, "");
  EXPECT_EQ(levelOf(Value::object({{"ink_level", -1}})).said, "");
}

TEST(Levels, NeedSomebodyWhereLittleIsLeft) {
  auto const signOfFilm = [](Value const& whole, Value const& left) {
    return signOf(levelOf(Value::object({{"initial_size", whole}, {"remaining", left}})));
  };
  EXPECT_EQ(signOfFilm(100, 11).need, Need::none);
  EXPECT_EQ(signOfFilm(100, 10).need, Need::soon);
  EXPECT_EQ(signOfFilm(100, 10).said, "10 of 100: low");
  EXPECT_EQ(signOfFilm(100, 0).need, Need::now);
  EXPECT_EQ(signOfFilm(100, 0).said, "0 of 100: empty");
  // Nothing is loaded; more than there can be; less than nothing.
  EXPECT_EQ(signOfFilm(0, 0).need, Need::none);
  EXPECT_EQ(signOfFilm(5, 4294967295U).need, Need::none);
  EXPECT_EQ(signOfFilm(100, -1).need, Need::none);
  // The whole is not told.
  EXPECT_EQ(signOf(levelOf(Value::object({{"remaining", 0}}))).need, Need::now);
  EXPECT_EQ(signOf(levelOf(Value::object({{"remaining", 1}}))).need, Need::none);
}

TEST(Levels, WithoutABarAreFull) {
  Level level;
  level.left = 3;
  EXPECT_FALSE(level.hasBar());
  EXPECT_EQ(level.share(), 1);
  level.scale = 6;
  EXPECT_EQ(level.share(), 0.5);
  level.left = 7;
  EXPECT_FALSE(level.hasBar());
  level.left = -7;
  EXPECT_EQ(level.share(), 0);
}

Value setting(int value) {
  return Value::object({{"min", 0}, {"max", 9}, {"val", value}});
}

TEST(Levels, AreLowAtATenthOfAnIntervalWithoutForewarning) {
  Facts const settings =
      factsOf("m", Value::object({{"service", Value::object({{"next_service", setting(400)}})}}));
  Level level = levelOf(Value::object({{"hours_until_service", 41}}));
  complete(level, settings.intervals);
  EXPECT_EQ(signOf(level).need, Need::none);
  level.left = 40;
  EXPECT_EQ(signOf(level).need, Need::soon);
}

TEST(Levels, OfAWholeThatIsNoNumberHaveNone) {
  for (Value const& whole : {Value("200"), Value(true), Value()}) {
    Level const level = levelOf(Value::object({{"capacity", whole}, {"remaining", 5}}));
    EXPECT_EQ(level.said, "5");
    EXPECT_FALSE(level.hasBar());
  }
}

TEST(Levels, CountDownWithinTheIntervalOfTheSettings) {
  Facts const settings =
      factsOf("m", Value::object({{"service", Value::object({{"pre_warning", setting(30)},
                                                             {"next_service", setting(400)},
                                                             {"other", 5}})}}));
  ASSERT_EQ(settings.intervals.size(), 1U);
  Level level = levelOf(Value::object({{"hours_until_service", 30}}));
  EXPECT_EQ(level.until, "service");
  complete(level, settings.intervals);
  EXPECT_EQ(level.said, "30 of 400");
  EXPECT_EQ(signOf(level).said, "30 of 400: due soon");
  level = levelOf(Value::object({{"hours_until_rest", 101}}));
  complete(level, settings.intervals);
  EXPECT_EQ(level.said, "101");
  EXPECT_EQ(signOf(level).need, Need::none);
  level.left = 100;
  EXPECT_EQ(signOf(level).need, Need::soon);
  level.left = 0;
  EXPECT_EQ(signOf(level).said, "101: due");
  level.left = -1;
  EXPECT_EQ(signOf(level).said, "101: overdue");
}

TEST(Signs, OfAReadingHaveThePathsOfTheirMembersAndComeInTheirOrder) {
  Value const record = Value::object(
      {{"warning", 1},
       {"ribbon", Value::object({{"initial_size", 500}, {"remaining", 0}})},
       {"jobs", Value::list({Value::object({{"error", 4}}), Value::object({{"error", 0}}),
                             Value::object({{"error", 4}})})},
       {"cards_until_cleaning", 0}});
  std::vector<std::string> all;
  for (Sign const& sign : signsOf(factsOf("some-message", record))) {
    std::string line = nameOf(sign.need) + ' ' + sign.said + ':';
    for (std::string const& path : sign.paths) line += ' ' + path;
    all.push_back(line);
  }
  EXPECT_EQ(all, (Texts{"now 0 of 500: empty: ribbon.remaining", "now 0: due: cards_until_cleaning",
                        "soon 1: warning", "soon 4: jobs[0].error jobs[2].error"}));
}

}  // namespace

}  // namespace Kovra::tool
