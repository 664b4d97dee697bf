// What the library asks of the heap, and what it leaves when the heap has nothing more to give.

#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <filesystem>
#include <functional>
#include <iterator>
#include <new>
#include <string>

#include "frame/entry.hpp"
#include "frame/output.hpp"
#include "kvxhelper.h"
#include "kvxstatusparser.h"
#include "support/allocations.hpp"
#include "support/folder.hpp"
#include "support/general_status.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::Allocations;
using test::filled;
using test::printed;
using test::TextElement;
using test::Tree;
using test::untouched;
using test::wide;

std::size_t allocationsOf(std::function<void()> const& call) {
  Allocations const allocations;
  call();
  return allocations.made();
}

/// What is left of a call during which one allocation failed.
struct Remains {
  bool threw;
  std::size_t blocks;
};

/// Lets allocation number `failing` of `call` fail.
Remains failingAt(std::size_t failing, std::function<void()> const& call) {
  Allocations const allocations(failing);
  try {
    call();
  } catch (std::bad_alloc const&) {
    return {true, allocations.alive()};
  }
  return {false, allocations.alive()};
}

/// The same for a call that loses blocks, which are given back here.
Remains losingAt(std::size_t failing, std::function<void()> const& call) {
  Allocations allocations(failing);
  try {
    call();
  } catch (std::bad_alloc const&) {
    return {true, allocations.reclaim()};
  }
  return {false, allocations.reclaim()};
}

using AllocationWatch = test::HeapTest;
using HeapUse = test::HeapTest;
using NoMemory = test::HeapTest;
using DebugCopyWithoutMemory = test::HeapTest;

// A name and a text too long for std::string to keep them without the heap.
constexpr char const* longName = "a_name_that_needs_a_place_of_its_own";
constexpr char const* longText = "a text that needs a place of its own on the heap";

TEST_F(AllocationWatch, CountsFailsAndGivesBack) {
  auto const two = [] {
    auto* volatile first = new int(1);
    auto* volatile second = new int(2);
    delete first;
    delete second;
  };
  EXPECT_EQ(allocationsOf(two), 2U);
  EXPECT_FALSE(losingAt(3, two).threw);
  EXPECT_EQ(losingAt(3, two).blocks, 0U);
  EXPECT_TRUE(losingAt(2, two).threw);
  EXPECT_EQ(losingAt(2, two).blocks, 1U);  // `first`, which this call loses
}

// ---- How much ---------------------------------------------------------------------------------

std::wstring const wideReply = wide(test::generalStatusReply);

bool parseStatus(KVGeneralStatus& record) {
  return KVXStatusParser().ParseStatus(*wideReply.c_str(), static_cast<int>(wideReply.size()),
                                       record);
}

TEST_F(HeapUse, OfTheWideEntryIsNone) {
  KVGeneralStatus record;
  EXPECT_EQ(allocationsOf([&] { parseStatus(record); }), 0U);
}

TEST_F(HeapUse, OfReadingElementsIsNone) {
  Tree tree(test::generalStatusReply);
  KVGeneralStatus record;
  bool result = false;
  EXPECT_EQ(allocationsOf([&] { result = KVXStatusParser().parseStatus(tree.root(), record); }),
            0U);
  EXPECT_TRUE(result);
}

TEST_F(HeapUse, OfReadingSingleValuesIsNone) {
  TextElement text(longText);
  TiXmlElement* const element = text.get();
  element->SetAttribute(longName, longText);
  element->SetAttribute("number", 5);
  int results = 0;
  EXPECT_EQ(allocationsOf([&] {
              std::array<char, 64> buffer{};
              char flag = 0;
              bool boolean = false;
              int whole = 0;
              unsigned short narrow = 0;
              unsigned long counter = 0;
              unsigned int natural = 0;
              long large = 0;
              float real = 0;
              std::array<unsigned char, 6> address{};
              results += KVXHelper::GetString(element, longName, buffer.data(), 64);
              results += KVXHelper::GetString(element, buffer[0], 64);
              results += KVXHelper::GetBool(element, longName, flag);
              results += KVXHelper::GetBool(element, flag);
              results += KVXHelper::GetBool(element, boolean);
              results += KVXHelper::GetNumberFromAttr(element, "number", whole);
              results += KVXHelper::GetNumberFromAttr(element, "number", real);
              results += KVXHelper::GetInt(element, "number", whole);
              results += KVXHelper::GetShort(element, longName, narrow);
              results += KVXHelper::GetNumber(element, whole, false);
              results += KVXHelper::GetNumber(element, narrow, false);
              results += KVXHelper::GetNumber(element, counter, false);
              results += KVXHelper::GetNumber(element, natural, false);
              results += KVXHelper::GetNumber(element, large, false);
              results += KVXHelper::GetNumber(element, real, false);
              results += KVXHelper::GetPhysicalAddress(element, address.data());
            }),
            0U);
  EXPECT_EQ(results, 16);
}

TEST_F(HeapUse, OfARefusedLengthIsNone) {
  KVGeneralStatus record;
  EXPECT_EQ(allocationsOf([&] { KVXStatusParser().ParseStatus(*L"<a/>", 0, record); }), 0U);
}

// ---- When there is no more: writing ----------------------------------------------------------

/// Lets each allocation of `change` fail in turn. The exception must leave the document as it was,
/// and nothing may be lost.
void expectAllOrNothing(char const* what, std::function<void(TiXmlDocument&)> const& change) {
  bool threw = true;
  for (std::size_t failing = 1; threw; ++failing) {
    TiXmlDocument document;
    document.LinkEndChild(new TiXmlElement("p"));
    KVXHelper::AddTagString(document.RootElement(), "earlier", "value");
    KVXHelper::AddTagAttrib(document.RootElement(), "present", "before");
    std::string const before = printed(document);

    Remains const remains = failingAt(failing, [&] { change(document); });
    threw = remains.threw;
    if (threw) {
      EXPECT_EQ(printed(document), before) << what << ", allocation " << failing;
      EXPECT_EQ(remains.blocks, 0U) << what << ", allocation " << failing;
    } else {
      EXPECT_GT(failing, 1U) << what << " asked for nothing";
      EXPECT_NE(printed(document), before) << what;
    }
  }
}

TEST_F(NoMemory, LeavesTheTreeAsItWasWhenAChildCannotBeAdded) {
  unsigned char const address[6] = {};
  struct {
    char const* what;
    std::function<void(TiXmlElement*)> add;
  } const cases[] = {
      {"AddTag", [](auto* p) { KVXHelper::AddTag(p, longName); }},
      {"AddTagString", [](auto* p) { KVXHelper::AddTagString(p, longName, longText); }},
      {"AddTagNumber", [](auto* p) { KVXHelper::AddTagNumber(p, longName, 1); }},
      {"AddTagFloat", [](auto* p) { KVXHelper::AddTagFloat(p, longName, 1e30F); }},
      {"AddTagDouble", [](auto* p) { KVXHelper::AddTagDouble(p, longName, 1e30); }},
      {"AddTagUnsigned", [](auto* p) { KVXHelper::AddTagUnsigned(p, longName, 1); }},
      {"AddTagLong", [](auto* p) { KVXHelper::AddTagLong(p, longName, LONG_MIN); }},
      {"AddTagBool", [](auto* p) { KVXHelper::AddTagBool(p, longName, 1); }},
      {"AddTagPhysicalAddress",
       [&](auto* p) { KVXHelper::AddTagPhysicalAddress(p, longName, address); }},
      {"AddTagMinMaxVal",
       [](auto* p) {
         KVXHelper::AddTagMinMaxVal(p, longName, _MinMaxVal{1, 2, 3});
       }},
      {"AddTagMinMaxVal of floats",
       [](auto* p) {
         KVXHelper::AddTagMinMaxVal(p, longName, _MinMaxValFloat{1e30F, 1e30F, 1});
       }},
  };
  for (auto const& one : cases) {
    expectAllOrNothing(one.what, [&](TiXmlDocument& document) { one.add(document.RootElement()); });
  }
}

TEST_F(NoMemory, LeavesTheTreeAsItWasWhenAnAttributeCannotBeSet) {
  struct {
    char const* what;
    std::function<void(TiXmlElement*)> set;
  } const cases[] = {
      {"a new text", [](auto* p) { KVXHelper::AddTagAttrib(p, longName, longText); }},
      {"a new number", [](auto* p) { KVXHelper::AddTagAttrib(p, longName, 1); }},
      {"another text", [](auto* p) { KVXHelper::AddTagAttrib(p, "present", longText); }},
  };
  for (auto const& one : cases) {
    expectAllOrNothing(one.what, [&](TiXmlDocument& document) { one.set(document.RootElement()); });
  }
}

TEST_F(NoMemory, LeavesTheDocumentAsItWasWhenItCannotBeBegun) {
  expectAllOrNothing("beginDocument",
                     [](TiXmlDocument& document) { frame::beginDocument(document, longName); });
}

/// A document that takes more than a string's own room to print.
TiXmlDocument const& longDocument() {
  static TiXmlDocument const document = [] {
    TiXmlDocument composed;
    TiXmlElement* const root = frame::beginDocument(composed, longName);
    KVXHelper::AddTagString(root, longName, longText);
    KVXHelper::AddTagAttrib(root, longName, longText);
    return composed;
  }();
  return document;
}

/// Lets each allocation of `save` fail in turn: nothing may be lost, and no file stay open.
void expectNothingLost(char const* what, std::function<void()> const& save) {
  auto const openFiles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  static_cast<void>(longDocument());
  auto const before = openFiles();
  bool threw = true;
  for (std::size_t failing = 1; threw; ++failing) {
    Remains const remains = failingAt(failing, save);
    threw = remains.threw;
    EXPECT_EQ(remains.blocks, 0U) << what << ", allocation " << failing;
    EXPECT_EQ(openFiles(), before) << what << ", allocation " << failing;
    EXPECT_TRUE(threw || failing > 1) << what << " asked for nothing";
  }
}

TEST_F(NoMemory, LosesNothingWhenADocumentCannotBePrinted) {
  std::array<wchar_t, 1024> out{};
  std::array<char, 1024> narrow{};
  // One that asks for memory because it is long, and one that TinyXML prints itself.
  TiXmlDocument large;
  KVXHelper::AddTagString(frame::beginDocument(large, "r"), "e", std::string(40000, 'x').c_str());
  TiXmlDocument odd = longDocument();
  odd.LinkEndChild(new TiXmlComment(longText));
  for (TiXmlDocument const* const document : {&large, &odd}) {
    expectNothingLost("printWide", [&] { frame::printWide(*document, out.data(), 1024); });
    expectNothingLost("printNarrow", [&] { frame::printNarrow(*document, narrow.data(), 1024); });
  }
}

TEST_F(NoMemory, LosesNothingWhenADocumentCannotBeSaved) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("saved");
  expectNothingLost("saveTo", [&] { frame::saveTo(longDocument(), path.c_str()); });
}

#if KOVRA_DEBUG_COPIES
TEST_F(DebugCopyWithoutMemory, LosesNothing) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("copy");
  expectNothingLost("saveDebugCopy", [&] { frame::saveDebugCopy(longDocument(), path.c_str()); });
}

TEST_F(DebugCopyWithoutMemory, StaysTheEarlierOneAndLeavesNothingBeside) {
  test::TemporaryFolder const folder;
  std::string const path = folder.file("copy");
  test::writeFile(path, "earlier");
  static_cast<void>(longDocument());
  bool threw = true;
  for (std::size_t failing = 1; threw; ++failing) {
    threw = failingAt(failing, [&] { frame::saveDebugCopy(longDocument(), path.c_str()); }).threw;
    EXPECT_EQ(test::contentsOf(path) == "earlier", threw) << failing;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << failing;
  }
}
#endif

}  // namespace
}  // namespace Kovra
