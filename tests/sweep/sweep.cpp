// Every public operation, with its n-th allocation failing for every n, alone and from there on:
// nothing is lost, what the host has is as it was or complete up to a piece, and the next call is
// right. The only argument is the list of the library's exports, of which none may be left out.

#include <cxxabi.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/allocations.hpp"
#include "support/streams.hpp"
#include "sweep/operation.hpp"

namespace Kovra::sweep {
namespace {

using test::Allocations;
using test::Lasting;

using Sweep = test::HeapTest;

/// What main is given, and what it prints: the output of a test belongs to the library.
std::string exportsPath;  // NOLINT
std::string figuresTold;  // NOLINT

// ---- One run ---------------------------------------------------------------------------------

/// What is seen of a call during which allocations failed.
struct Outcome {
  bool failed = false;  ///< did one of them?
  bool threw = false;
  long result = 0;
  Contents left;
  std::size_t lost = 0;  ///< blocks
};

Outcome outcomeOf(Operation const& operation, std::size_t failing, Lasting lasting) {
  Outcome outcome;
  std::unique_ptr<Trial> trial = operation.start();
  Allocations allocations(failing, lasting);
  try {
    outcome.result = trial->call();
  } catch (std::bad_alloc const&) {
    outcome.threw = true;
  }
  outcome.failed = allocations.made() >= failing;
  allocations.failNoMore();
  {
    test::Unwatched const own;
    outcome.left = trial->contents();
  }
  trial.reset();
  outcome.lost = allocations.reclaim();
  return outcome;
}

// ---- All of them -----------------------------------------------------------------------------

struct Figures {
  std::size_t failing = 0;  ///< runs in which an allocation failed
  std::size_t losing = 0;   ///< of them, those that left blocks
};

/// What is right, and what there is before.
struct Expected {
  Contents before;
  Contents after;
  long result = 0;
};

Expected expectedOf(Operation const& operation) {
  Expected expected;
  auto const trial = operation.start();
  expected.before = trial->contents();
  expected.result = trial->call();
  expected.after = trial->contents();
  return expected;
}

bool isBeginning(std::string const& part, std::string const& whole) {
  return whole.compare(0, part.size(), part) == 0;
}

/// After a call that failed: nothing was changed, or pieces are there that are whole.
void expectHarmless(Outcome const& outcome, Expected const& expected) {
  if (!outcome.threw && outcome.result == expected.result) {
    EXPECT_TRUE(outcome.left == expected.after) << "the call says that it did all";
    return;
  }
  EXPECT_TRUE(outcome.left.whole == expected.before.whole) << "something is half done";
  EXPECT_TRUE(isBeginning(outcome.left.grown, expected.after.grown)) << "a piece is not whole";
}

void expectRight(Operation const& operation, Expected const& expected) {
  Expected const next = expectedOf(operation);
  EXPECT_EQ(next.result, expected.result) << "of the next call";
  EXPECT_TRUE(next.after == expected.after) << "of the next call";
}

void sweep(Operation const& operation, Lasting lasting, Figures& figures) {
  Expected const expected = expectedOf(operation);
  for (std::size_t failing = 1;; ++failing) {
    SCOPED_TRACE(operation.name + ", allocation " + std::to_string(failing) +
                 (lasting == Lasting::once ? "" : " and later ones"));
    Outcome const outcome = outcomeOf(operation, failing, lasting);
    EXPECT_EQ(outcome.lost, 0U);
    if (!outcome.failed) {
      EXPECT_FALSE(outcome.threw);
      EXPECT_EQ(outcome.result, expected.result);
      EXPECT_TRUE(outcome.left == expected.after);
      return;
    }
    ++figures.failing;
    if (outcome.lost > 0) ++figures.losing;
    expectHarmless(outcome, expected);
    expectRight(operation, expected);
  }
}

void sweepAll(char const* what, std::vector<Operation> (*operationsOf)()) {
  test::RibbonLines const taken;
  std::vector<Operation> const operations = operationsOf();
  Figures figures;
  for (Operation const& operation : operations) {
    for (Lasting const lasting : {Lasting::once, Lasting::fromThereOn}) {
      sweep(operation, lasting, figures);
    }
  }
  figuresTold += std::string(what) + ": " + std::to_string(operations.size()) + " operations, " +
                 std::to_string(figures.failing) + " failing runs, " +
                 std::to_string(figures.losing) + " left blocks\n";
  EXPECT_GT(figures.failing, operations.size());
}

TEST_F(Sweep, LosesNothingInReading) {
  sweepAll("reading", readingOperations);
}

TEST_F(Sweep, LosesNothingInWriting) {
  sweepAll("writing", writingOperations);
}

TEST_F(Sweep, LosesNothingInTheFace) {
  sweepAll("face", faceOperations);
}

// ---- Nothing is left out ---------------------------------------------------------------------

std::string demangled(std::string const& symbol) {
  std::unique_ptr<char, void (*)(void*)> const name(
      abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr), std::free);
  return name != nullptr ? name.get() : symbol;
}

/// The name without parameters and marks of an ABI.
std::string nameOf(std::string const& function) {
  std::string name = function.substr(0, function.find('('));
  constexpr std::string_view mark = "[abi:cxx11]";
  if (std::size_t const at = name.find(mark); at != name.npos) name.erase(at, mark.size());
  return name;
}

/// What is no operation: tables of the compiler, and data.
bool isOperation(std::string const& name) {
  for (std::string_view const other : {"vtable for ", "VTT for ", "typeinfo ", "guard variable "}) {
    if (name.compare(0, other.size(), other) == 0) return false;
  }
  return name != "Kovra::szRibbonName";
}

/// What belongs to the life of an object: each trial has such lives.
bool isOfALife(std::string const& name) {
  std::size_t const at = name.rfind("::");
  if (at == name.npos) return false;
  std::string const function = name.substr(at + 2);
  std::string const scope = name.substr(0, at);
  std::string const type = scope.substr(scope.rfind(':') + 1);
  return function == type || function == '~' + type || function == "operator=";
}

/// How many functions of each name the library shows.
std::map<std::string, std::size_t> exported() {
  std::set<std::string> functions;
  std::ifstream file(exportsPath);
  for (std::string symbol; std::getline(file, symbol);) functions.insert(demangled(symbol));
  std::map<std::string, std::size_t> counts;
  for (std::string const& function : functions) {
    if (isOperation(function)) ++counts[nameOf(function)];
  }
  return counts;
}

TEST_F(Sweep, LeavesOutNoOperationThatHostsSee) {
  test::RibbonLines const taken;
  std::map<std::string, std::size_t> swept;
  for (auto const& operations : {readingOperations(), writingOperations(), faceOperations()}) {
    for (Operation const& operation : operations) ++swept[operation.name];
  }
  auto const shown = exported();
  EXPECT_GT(shown.size(), 300U) << "this is not the list of exports: " << exportsPath;
  for (auto const& [name, count] : shown) {
    if (isOfALife(name)) continue;
    EXPECT_GE(swept[name], count) << name << " is not swept";
  }
  for (auto const& [name, count] : swept)
    EXPECT_EQ(shown.count(name), 1U) << name << " is not there";
}

}  // namespace
}  // namespace Kovra::sweep

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) {
    std::fprintf(stderr, "usage: kovra_sweep EXPORTS\n");
    return 2;
  }
  Kovra::sweep::exportsPath = argv[1];
  int const status = RUN_ALL_TESTS();
  std::fputs(Kovra::sweep::figuresTold.c_str(), stdout);
  return status;
}
