#include "frame/reply.hpp"

#include <gtest/gtest.h>

#include <string>

#include "frame/sample.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra::frame {
namespace {

using namespace test;

constexpr char const* roots[] = {"sample"};
constexpr ReplyReader reply = reader<Sample, TableReading<table>>("sample", "a test's own", roots);

TEST(ReplyReader, DecodesIntoARecordOfZeros) {
  Reply const text("<sample><odd/></sample>", 23);
  Value record;
  Observer observer(record);
  EXPECT_TRUE(reply.decode(text.root(roots), observer));
  ASSERT_NE(record.find("odd"), nullptr);
  EXPECT_EQ(record.find("odd")->integer, 1);
}

TEST(ReplyReader, TellsTheWordsOfItsDocument) {
  Outline told;
  Outline expected;
  reply.outline(told);
  outlineOf(table, expected);
  EXPECT_EQ(told, expected);
}

TEST(ReadReply, ReadsTheRootWithItsTable) {
  using Reading = TableReading<table>;
  std::wstring const text = L"<sample><whole>5</whole></sample>";
  auto expected = filled<Sample>();
  expected.whole = 5;
  auto wide = filled<Sample>();
  EXPECT_TRUE(readReply<Reading>(*text.c_str(), static_cast<int>(text.size()), roots, wide));
  EXPECT_TRUE(same(wide, expected));
  auto narrow = filled<Sample>();
  EXPECT_TRUE(readNarrowReply<Reading>("<sample><whole>5</whole></sample>", roots, narrow));
  EXPECT_TRUE(same(narrow, expected));
}

TEST(ReadReply, TouchesNothingOfARefusedReply) {
  using Reading = TableReading<table>;
  auto record = filled<Sample>();
  EXPECT_FALSE(readReply<Reading>(*L"<sample><whole>5", 16UL, roots, record));
  EXPECT_FALSE(readReply<Reading>(*L"<sample><whole>5</whole></sample>", 0UL, roots, record));
  EXPECT_FALSE(readNarrowReply<Reading>("<other><whole>5</whole></other>", roots, record));
  EXPECT_FALSE(readNarrowReply<Reading>(nullptr, roots, record));
  EXPECT_TRUE(untouched(record));
}

}  // namespace
}  // namespace Kovra::frame
