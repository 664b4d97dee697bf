// What can be said of every message that is written.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "face/catalogue.hpp"
#include "face/compose.hpp"
#include "frame/output.hpp"
#include "support/allocations.hpp"
#include "support/generated.hpp"
#include "support/printed.hpp"
#include "support/streams.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using namespace frame;

constexpr std::uint32_t seeds = 20;

std::vector<MessageRow const*> requests() {
  std::vector<MessageRow const*> all;
  for (MessageRow const& message : catalogue()) {
    if (message.composing != nullptr) all.push_back(&message);
  }
  return all;
}

Assigned fill(MessageRow const& message, AnyRecord const& record, Value const& value,
              Problems& problems) {
  Composing const& composing = *message.composing;
  return composing.assign != nullptr ? composing.assign(record.memory(), value, problems)
                                     : assignRows(message.rows, record.get(), value, problems);
}

/// The circumstances that the members of the value say.
Circumstances sorted(MessageRow const& message, Value const& value) {
  Circumstances circumstances = 0;
  Problems problems;
  if (message.composing->sort != nullptr) message.composing->sort(value, circumstances, problems);
  return circumstances;
}

/// The document as the classic writers make it: a tree, printed by TinyXML.
std::string byTree(MessageRow const& message, void const* record, std::vector<long> const& chosen,
                   Circumstances circumstances) {
  TiXmlDocument document;
  TreeSink sink(*beginDocument(document, message.composing->root));
  bool const isWritten = message.composing->write(sink, record, chosen, circumstances);
  return isWritten ? test::printedByTinyxml(document) : "";
}

std::string byText(MessageRow const& message, void const* record, std::vector<long> const& chosen,
                   Circumstances circumstances) {
  std::string text;
  Problems problems;
  composeRecord(message, record, chosen, circumstances, nullptr, text, problems);
  return text;
}

TEST(EveryRequest, IsTheSameAsATextAndAsATree) {
  for (MessageRow const* const message : requests()) {
    std::set<std::string> documents;
    for (std::uint32_t seed = 0; seed < seeds; ++seed) {
      Value const value = test::Generator(seed).record(message->rows);
      AnyRecord const record(*message->record);
      Problems problems;
      ASSERT_NE(fill(*message, record, value, problems), Assigned::failed)
          << message->name << ", seed " << seed << ": " << problems.all().front().path;
      for (std::vector<long> const& chosen : test::choicesOf(*message)) {
        Circumstances const circumstances = sorted(*message, value);
        std::string const text = byText(*message, record.get(), chosen, circumstances);
        EXPECT_EQ(text, byTree(*message, record.get(), chosen, circumstances))
            << message->name << ", seed " << seed;
        documents.insert(text);
      }
    }
    EXPECT_GT(documents.size(), 1U) << message->name << " is one document, whatever it is given";
  }
}

TEST(EveryRequest, OfARecordOfZerosIsTheSameAsATextAndAsATree) {
  for (MessageRow const* const message : requests()) {
    AnyRecord const record(*message->record);
    for (std::vector<long> const& chosen : test::choicesOf(*message)) {
      EXPECT_EQ(byText(*message, record.get(), chosen, ~Circumstances{}),
                byTree(*message, record.get(), chosen, ~Circumstances{}))
          << message->name;
    }
  }
}

TEST(EveryRequest, IsFoundByItsNameAndItsCommand) {
  std::set<std::string_view> commands;
  for (MessageRow const* const message : requests()) {
    EXPECT_EQ(findRequest(message->name), message);
    EXPECT_EQ(findRequest(message->composing->command), message);
    EXPECT_TRUE(commands.insert(message->composing->command).second) << message->name;
    EXPECT_FALSE(message->composing->title.empty()) << message->name;
    std::string_view const reply = message->composing->recordOf;
    EXPECT_TRUE(reply.empty() || findReply(reply) != nullptr) << message->name;
  }
  EXPECT_EQ(findRequest("general-status"), nullptr);
  EXPECT_EQ(findRequest(""), nullptr);
}

/// A help lists words; those of the vocabulary, and none is forgotten there.
TEST(EveryRequest, TellsTheWordsOfItsMembersAndChoices) {
  auto const expectAll = [](Vocabulary const& words, std::string_view title) {
    for (Word const& word : words.words) {
      EXPECT_NE(title.find(word.text), title.npos) << word.text << " in: " << title;
    }
  };
  std::size_t told = 0;
  for (MessageRow const* const message : requests()) {
    for (ChoiceRow const& choice : message->composing->choices) {
      if (choice.form == ChoiceRow::Form::word) expectAll(*choice.words, choice.title);
    }
    for (MemberTitle const& title : message->composing->commandMembers) {
      auto const row = std::find_if(message->rows.begin(), message->rows.end(),
                                    [&](Row const& known) { return known.member == title.member; });
      ASSERT_NE(row, message->rows.end()) << message->name << ": " << title.member;
      if (row->kind->shape != Shape::keyword) continue;
      expectAll(*static_cast<Keywords const*>(row->with)->read, title.title);
      ++told;
    }
  }
  EXPECT_GT(told, 5U);
}

TEST(EveryRequest, NeedsTheMembersThatAreRequired) {
  for (MessageRow const* const message : requests()) {
    for (std::string_view const name : message->composing->required) {
      Value value = Value::object();
      for (std::string_view const other : message->composing->required) {
        if (other == name) continue;
        Value const generated = test::Generator(1).record(message->rows);
        Value const* const member = generated.find(other);
        ASSERT_NE(member, nullptr) << message->name << ": " << other;
        value.add(other, *member);
      }
      // Nor does the choice that members are zero make up for one.
      for (Value const& choices : {Value(), test::withZeros()}) {
        Composition const composition = compose(message->name, value, choices);
        EXPECT_FALSE(composition) << message->name << " without " << name;
        EXPECT_EQ(composition.text(), "") << message->name;
        ASSERT_FALSE(composition.problems().empty()) << message->name;
        EXPECT_NE(composition.problems()[0].expected(), "") << message->name;
      }
    }
  }
}

void expectProblemAt(std::string const& path, Composition const& composition) {
  EXPECT_FALSE(composition) << composition.text();
  EXPECT_EQ(composition.text(), "");
  std::vector<Problem> const problems = composition.problems();
  EXPECT_TRUE(std::any_of(problems.begin(), problems.end(),
                          [&](Problem const& problem) { return problem.path() == path; }))
      << path << " is not among:\n"
      << test::problemsOf(composition);
}

TEST(EveryRequest, RefusesChoicesAndMembersThatItDoesNotHave) {
  for (MessageRow const* const message : requests()) {
    std::string_view const name = message->name;
    expectProblemAt("no such choice",
                    compose(name, Value::object(), Value::object({{"no such choice", 1}})));
    expectProblemAt("", compose(name, Value::object(), 1));
    expectProblemAt("no such member", compose(name, Value::object({{"no such member", 1}})));
    expectProblemAt("", compose(name, 1));
  }
}

TEST(EveryRequest, PrintsNothingOnStandardOutputOrError) {
  test::CaughtStream out(STDOUT_FILENO);
  test::CaughtStream error(STDERR_FILENO);
  for (MessageRow const* const message : requests()) {
    static_cast<void>(compose(message->name, test::Generator(7).record(message->rows)));
  }
  std::string const said = error.release();
  EXPECT_EQ(out.release() + said, "");
}

using EveryRequestWithoutMemory = test::HeapTest;

TEST_F(EveryRequestWithoutMemory, LosesNothing) {
  for (MessageRow const* const message : requests()) {
    Value const value = test::Generator(3).record(message->rows);
    AnyRecord const record(*message->record);
    Problems problems;
    fill(*message, record, value, problems);
    std::vector<long> const chosen = test::choicesOf(*message).back();
    bool threw = true;
    for (std::size_t failing = 1; threw; ++failing) {
      test::Allocations allocations(failing);
      threw = false;
      try {
        AnyRecord const another(*message->record);
        Problems unused;
        fill(*message, another, value, unused);
        std::string text;
        composeRecord(*message, another.get(), chosen, 0, nullptr, text, unused);
      } catch (std::bad_alloc const&) {
        threw = true;
      }
      EXPECT_EQ(allocations.reclaim(), 0U) << message->name << ", allocation " << failing;
    }
    std::string const text = byText(*message, record.get(), chosen, 0);
    EXPECT_EQ(text, byTree(*message, record.get(), chosen, 0)) << message->name;
  }
}

}  // namespace
}  // namespace Kovra
