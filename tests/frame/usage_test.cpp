#include "frame/usage.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "frame/field.hpp"
#include "frame/sample.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

using Texts = std::vector<std::string>;

TEST(Usage, BeginsWithNothingUsed) {
  for (std::size_t const count :
       {std::size_t{0}, std::size_t{3}, std::size_t{512}, std::size_t{2000}}) {
    Usage const usage(count, count);
    ASSERT_EQ(usage.nodes().size(), count);
    ASSERT_EQ(usage.attributes().size(), count);
    auto const isUnused = [](Usage::State state) { return state == Usage::unused; };
    EXPECT_TRUE(std::all_of(usage.nodes().begin(), usage.nodes().end(), isUnused)) << count;
    EXPECT_TRUE(std::all_of(usage.attributes().begin(), usage.attributes().end(), isUnused))
        << count;
  }
}

TEST(Usage, TellsNodesAndAttributesApart) {
  for (std::uint32_t const count : {3U, 2000U}) {
    Usage usage(count, count);
    usage.useNode(count - 1);
    usage.useAttribute(0);
    usage.tell(1);
    EXPECT_EQ(usage.nodes()[count - 1], Usage::used);
    EXPECT_EQ(usage.nodes()[0], Usage::unused);
    EXPECT_EQ(usage.nodes()[1], Usage::told);
    EXPECT_EQ(usage.attributes()[0], Usage::used);
    EXPECT_EQ(std::count(usage.attributes().begin(), usage.attributes().end(), Usage::used), 1);
  }
}

TEST(Usage, KnowsWhatIsUsedAndNotToBeTold) {
  Usage usage(2, 0);
  usage.useNode(0);
  usage.hideNode(0);
  usage.hideNode(1);
  usage.useNode(0);
  EXPECT_EQ(usage.nodes()[0], Usage::hidden);
  EXPECT_EQ(usage.nodes()[1], Usage::hidden);
}

TEST(Usage, KeepsWhatIsToldHoweverItIsUsed) {
  Usage usage(2, 0);
  usage.tell(0);
  usage.useNode(0);
  usage.useNode(1);
  usage.tell(1);
  EXPECT_EQ(usage.nodes()[0], Usage::told);
  EXPECT_EQ(usage.nodes()[1], Usage::told);
}

TEST(UsageOfAReading, LeavesUnknownElementsAtEveryDepth) {
  Watched const outcome(
      "<other>1</other><whole>1</whole><inner><depth>1</depth><odd/></inner>"
      "<group><grouped>1</grouped><strange><whole>1</whole></strange></group>");
  EXPECT_EQ(outcome.elements(Usage::unused), (Texts{"other", "odd", "strange", "whole"}));
  EXPECT_EQ(outcome.elements(Usage::used), (Texts{"whole", "inner", "depth", "group", "grouped"}));
  EXPECT_EQ(outcome.elements(Usage::told), Texts{});
}

TEST(UsageOfAReading, IsNoneOfElementsThatOnlyAnotherTableKnows) {
  Watched const outcome("<depth>1</depth><inner><whole>1</whole></inner>");
  EXPECT_EQ(outcome.elements(Usage::unused), (Texts{"depth", "whole"}));
}

/// The texts of a reading that are in that state.
Texts texts(Watched const& outcome, Usage::State state) {
  Texts all;
  for (std::uint32_t i = 0; i < outcome.tree().nodes().size(); ++i) {
    if (outcome.tree().node(i).kind == NodeKind::element) continue;
    if (outcome.usage().nodes()[i] != state) continue;
    all.emplace_back(outcome.tree().view(outcome.tree().node(i).value));
  }
  return all;
}

TEST(UsageOfAReading, LeavesTextsThatNoRowReads) {
  Watched const outcome(
      "<whole>1</whole>stray<other>2</other><sensor at='5'>3</sensor>"
      "<inner>within<depth>4</depth></inner><word>twin<b/>behind</word>");
  EXPECT_EQ(texts(outcome, Usage::unused), (Texts{"stray", "2", "3", "within", "behind"}));
  EXPECT_EQ(texts(outcome, Usage::used), (Texts{"1", "4", "twin"}));
}

TEST(UsageOfAReading, LeavesAttributesThatNoRowReads) {
  Watched const outcome(
      "<whole unit='m'>1</whole><sensor at='5' to='6'/><level max='9' min='1' step='2'>5</level>"
      "<other at='5'/>");
  Texts unused;
  for (std::uint32_t i = 0; i < outcome.tree().attributeCount(); ++i) {
    if (outcome.usage().attributes()[i] == Usage::used) continue;
    unused.emplace_back(outcome.tree().view(outcome.tree().attribute(i).name));
  }
  EXPECT_EQ(unused, (Texts{"unit", "to", "step", "at"}));
}

TEST(UsageOfAReading, IsToldOfSurplusEntries) {
  Scanned scanned("<list><item/><other/><item/><item><depth>1</depth></item></list>");
  Usage usage(scanned.tree().nodes().size(), scanned.tree().attributeCount());
  scanned.tree().watch(&usage);
  Value shown;
  Observer observer(scanned.tree(), shown);
  List list{};
  Element const root = firstElement(scanned.tree());
  readEntriesOf<&List::items>(root, items, {list.items, 2}, observer);
  Texts states;
  for (Element child = root.firstChild(); child; child = child.nextSibling()) {
    Usage::State const state = usage.nodes()[child.index()];
    states.emplace_back(state == Usage::told ? "told" : state == Usage::used ? "used" : "unused");
  }
  EXPECT_EQ(states, (Texts{"used", "unused", "used", "told"}));
}

TEST(UsageOfAReading, IsNotedOnlyOfATreeThatIsWatched) {
  Scanned scanned("<sample><whole>1</whole></sample>");
  Usage usage(scanned.tree().nodes().size(), 0);
  Sample record{};
  EXPECT_TRUE(walk(firstElement(scanned.tree()), table, record, Watch()));
  scanned.tree().watch(&usage);
  scanned.tree().watch(nullptr);
  EXPECT_TRUE(walk(firstElement(scanned.tree()), table, record, Watch()));
  EXPECT_EQ(std::count(usage.nodes().begin(), usage.nodes().end(), Usage::unused), 3);
}

}  // namespace
}  // namespace Kovra::frame
