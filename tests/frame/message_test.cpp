#include "frame/message.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "frame/sample.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

constexpr char const* roots[] = {"sample"};
constexpr MessageRow message = reply("sample", "a test's own", roots, table);

TEST(Message, IsReadIntoARecordOfZeros) {
  Reply const text("<sample><odd/></sample>", 23);
  Value shown;
  Observer observer(text.tree(), shown);
  AnyRecord const record(*message.record);
  EXPECT_TRUE(message.read(message, text.root(roots), record.memory(), observer));
  EXPECT_EQ(shown, Value::object({{"odd", 1}}));
  Sample expected{};
  expected.odd = 1;
  EXPECT_TRUE(same(*static_cast<Sample const*>(record.get()), expected));
}

TEST(Message, TellsTheWordsOfItsDocumentAndItsRoots) {
  Outline told;
  Outline expected{"sample"};
  outlineOf(message, told);
  outlineOf(table, expected);
  EXPECT_EQ(told, expected);
  outlineOf(withWords(message, shades), told);
  outlineWords(shades, expected);
  EXPECT_EQ(told, expected);
}

TEST(Message, IsReadWithAnotherTableThanItShows) {
  constexpr MessageRow other = reply("sample", "", roots, table, &readWith<groupTable>);
  std::string const sample = "<sample><whole>5</whole><grouped>6</grouped></sample>";
  Reply const text(sample.data(), sample.size());
  Sample record{};
  EXPECT_TRUE(other.read(other, text.root(roots), &record, Watch()));
  EXPECT_EQ(record.whole, 0);
  EXPECT_EQ(record.grouped, 6);
}

struct Text {
  char text[4];
};
constexpr Table ownText = {text<&Text::text>("sample")};

TEST(Message, MayBeTheTextOfItsRoot) {
  constexpr MessageRow own = reply("text", "", roots, ownText, &readAsText);
  Reply const text("<sample>abcdef</sample>", 23);
  Text record{};
  EXPECT_TRUE(own.read(own, text.root(roots), &record, Watch()));
  EXPECT_STREQ(record.text, "abc");
}

TEST(AnyRecord, IsWipedInTheEnd) {
  alignas(Text) unsigned char memory[sizeof(Text)];
  recordType<Text>.make(memory);
  EXPECT_EQ(std::count(std::begin(memory), std::end(memory), 0), 4) << "made of zeros";
  std::fill(std::begin(memory), std::end(memory), 0xA5);
  recordType<Text>.destroy(memory);
  EXPECT_EQ(std::count(std::begin(memory), std::end(memory), 0), 4);
}

struct Counted {
  static inline int living = 0;
  Counted() { ++living; }
  ~Counted() { --living; }
  Text record{{'a'}};
};

TEST(AnyRecord, LivesInItsRoom) {
  {
    AnyRecord const record(roomType<Counted>);
    EXPECT_EQ(Counted::living, 1);
    EXPECT_EQ(static_cast<Text*>(record.get())->text[0], 'a');
    EXPECT_EQ(&static_cast<Counted*>(record.memory())->record, record.get());
  }
  EXPECT_EQ(Counted::living, 0);
}

TEST(ReadReply, ReadsTheRootWithItsTable) {
  std::wstring const text = L"<sample><whole>5</whole></sample>";
  auto expected = filled<Sample>();
  expected.whole = 5;
  auto wide = filled<Sample>();
  EXPECT_TRUE(readReply(*text.c_str(), static_cast<int>(text.size()), roots, table, wide));
  EXPECT_TRUE(same(wide, expected));
  auto narrow = filled<Sample>();
  EXPECT_TRUE(readNarrowReply("<sample><whole>5</whole></sample>", roots, table, narrow));
  EXPECT_TRUE(same(narrow, expected));
}

TEST(ReadReply, TouchesNothingOfARefusedReply) {
  auto record = filled<Sample>();
  EXPECT_FALSE(readReply(*L"<sample><whole>5", 16UL, roots, table, record));
  EXPECT_FALSE(readReply(*L"<sample><whole>5</whole></sample>", 0UL, roots, table, record));
  EXPECT_FALSE(readReply(*L"<sample><whole>5</whole></sample>", -1, roots, table, record));
  EXPECT_FALSE(readNarrowReply("<other><whole>5</whole></other>", roots, table, record));
  EXPECT_FALSE(readNarrowReply(nullptr, roots, table, record));
  EXPECT_TRUE(untouched(record));
}

constexpr auto wholeRow = number<&Sample::whole>("whole");
constexpr auto readWhole = &readHostMember<&Sample::whole, wholeRow>;

TEST(ReadHost, ReadsAMemberThatTheHostHasAlone) {
  test::Tree tree("<whole>7</whole>");
  int alone = 1;
  EXPECT_TRUE(readWhole(tree.root(), alone));
  EXPECT_EQ(alone, 7);
  EXPECT_FALSE(readWhole(nullptr, alone));
  EXPECT_EQ(alone, 7);
}

}  // namespace
}  // namespace Kovra::frame
