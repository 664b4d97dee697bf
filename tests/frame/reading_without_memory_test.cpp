// Every operation that reads, with every allocation failing in turn: nothing is lost, the record is
// as it was or as far as it had come, and the next call is right.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <cstddef>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include "kvxprinteridparser.h"
#include "support/allocations.hpp"
#include "support/reading_operations.hpp"
#include "support/streams.hpp"

namespace Kovra {
namespace {

using test::Allocations;
using test::Asks;
using test::Length;
using test::ReadingOperation;
using test::readingOperations;
using test::Trial;

/// Lets allocation number `failing` of a reading fail; did the exception reach the host?
bool throws(Trial& trial, std::size_t failing) {
  Allocations const allocations(failing);
  try {
    trial.read();
  } catch (std::bad_alloc const&) {
    return true;
  }
  return false;
}

/// How many blocks are left when the reading is over and the host has destroyed what is his.
std::size_t lostBy(std::unique_ptr<Trial> trial, std::size_t failing) {
  Allocations const allocations(failing);
  try {
    std::unique_ptr<Trial> const owned = std::move(trial);
    owned->read();
  } catch (std::bad_alloc const&) {
  }
  return allocations.alive();
}

bool isBeginning(std::string const& part, std::string const& whole) {
  return whole.compare(0, part.size(), part) == 0;
}

/// One operation on one reply, with each allocation failing. The result is how many there were.
std::size_t expectHarmless(ReadingOperation const& operation, std::string const& text,
                           Length length) {
  auto const start = [&] { return operation.startOn(text, length); };
  auto const whole = start();
  std::string const before = whole->contents();
  bool const result = whole->read();
  std::string const expected = whole->contents();

  for (std::size_t failing = 1;; ++failing) {
    SCOPED_TRACE("allocation " + std::to_string(failing));
    auto trial = start();
    bool const threw = throws(*trial, failing);
    EXPECT_EQ(lostBy(start(), failing), 0U);
    if (!threw) {
      EXPECT_EQ(trial->contents(), expected);
      return failing - 1;
    }
    std::string const left = trial->contents();
    if (operation.asks == Asks::forEntries) {
      EXPECT_TRUE(isBeginning(left, expected)) << "no entry is cut or lost";
      trial = start();
    } else {
      EXPECT_EQ(left, before);
    }
    EXPECT_EQ(trial->read(), result);
    EXPECT_EQ(trial->contents(), expected) << "the next call is right";
  }
}

using ReadingWithoutMemory = test::HeapTest;

TEST_F(ReadingWithoutMemory, LosesNothingAndLeavesTheRecordUsable) {
  test::RibbonLines const taken;
  for (ReadingOperation const& operation : readingOperations()) {
    SCOPED_TRACE(operation.name);
    std::string const text = operation.text();
    auto const trial = operation.startOn(text, Length::ofOrdinaryReplies);
    std::string const before = trial->contents();
    trial->read();
    // An exchanged request is read for its effect on the host's tree alone.
    EXPECT_EQ(trial->contents() == before, operation.sample == "security/secure-action-request");

    std::size_t const ordinary = expectHarmless(operation, text, Length::ofOrdinaryReplies);
    std::size_t const beyond = expectHarmless(operation, text, Length::beyondTheStack);
    // One block for a text beyond the stack, one for its nodes.
    std::size_t const copies = operation.element == nullptr && text.size() > 8192 ? 1 : 0;
    if (operation.asks == Asks::nothing) {
      EXPECT_EQ(ordinary, 0U);
      EXPECT_EQ(beyond, 2U);
    } else {
      EXPECT_GT(ordinary, copies);
      EXPECT_EQ(beyond - ordinary, 2U - copies);
    }
  }
}

TEST_F(ReadingWithoutMemory, LeavesTheRecordAloneWhereTheTextIsRefused) {
  for (ReadingOperation const& operation : readingOperations()) {
    if (operation.element != nullptr) continue;
    SCOPED_TRACE(operation.name);
    std::string text = operation.text();
    text.insert(text.rfind("</"), "<open>");
    auto const trial = operation.startOn(text, Length::ofOrdinaryReplies);
    std::string const before = trial->contents();
    EXPECT_FALSE(trial->read());
    EXPECT_EQ(trial->contents(), before);
    expectHarmless(operation, text, Length::beyondTheStack);
  }
}

/// What comes of a text that a reader refuses, which is itself a document.
struct Outcome {
  bool threw = false;
  std::size_t lost = 0;  ///< blocks; they are given back here
  std::string next;      ///< the error that is shown when the call is made again
};

std::string errorOf(TiXmlDocument const& document) {
  return document.ErrorDesc() + (" at " + std::to_string(document.ErrorRow()));
}

Outcome outcomeOf(char const* text, std::size_t failing) {
  Outcome outcome;
  outcome.next.reserve(100);
  KVPrinterInfo record;
  Allocations allocations(failing);
  {
    KVXPrinterIDParser parser;
    try {
      parser.ParsePrinterInfo(text, 0, record);
    } catch (std::bad_alloc const&) {
      outcome.threw = true;
    }
    if (outcome.threw) {
      parser.ParsePrinterInfo(text, 0, record);
      std::string const error = errorOf(parser);
      outcome.next.assign(error);
    }
  }
  outcome.lost = allocations.reclaim();
  return outcome;
}

// Where a text ends or breaks behind an attribute, only a parse can set the error, and TinyXML
// loses its element when there is no memory for the attribute.
TEST_F(ReadingWithoutMemory, LosesNothingWhereADocumentShowsAnError) {
  constexpr std::size_t none = 0;
  struct {
    char const* text;
    std::size_t losing;  ///< the one allocation that TinyXML cannot do without
  } const rows[] = {
      {"", none},      {" ", none},      {"<a", none},       {"<a ", none},
      {"<a b=", none}, {"<a/", none},    {"<a>", none},      {"<a> ", none},
      {"<a></", none}, {"<a></b", none}, {"<a></a", none},   {"\xEF\xBB\xBF<a", none},
      {"<a b=c", 3},   {"<a b='", 3},    {"<a b=1 b=2>", 3},
  };
  for (auto const& row : rows) {
    TiXmlDocument byTinyXml;
    byTinyXml.SetTabSize(0);
    byTinyXml.Parse(row.text);
    std::size_t failing = 0;
    bool threw = true;
    while (threw) {
      Outcome const outcome = outcomeOf(row.text, ++failing);
      threw = outcome.threw;
      EXPECT_EQ(outcome.lost, failing == row.losing ? 1U : 0U) << row.text << ' ' << failing;
      EXPECT_EQ(outcome.next, threw ? errorOf(byTinyXml) : "") << row.text << ' ' << failing;
    }
    EXPECT_GT(failing, 1U) << row.text;
  }
}

}  // namespace
}  // namespace Kovra
