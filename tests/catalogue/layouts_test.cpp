// Where the members of all records stand: hosts are compiled with these layouts. The file beside
// this holds them as the tables tell, and no byte of a record is without a row.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "face/catalogue.hpp"
#include "frame/lists.hpp"
#include "support/golden.hpp"

namespace Kovra {
namespace {

using namespace frame;

char const* nameOf(Shape shape) {
  switch (shape) {
    case Shape::odd:
      return "odd";
    case Shape::flag:
      return "flag";
    case Shape::integer:
      return "integer";
    case Shape::natural:
    case Shape::hexadecimal:
      return "natural";
    case Shape::real:
      return "real";
    case Shape::text:
    case Shape::secret:
    case Shape::word:
      return "text";
    case Shape::keyword:
      return "keyword";
    case Shape::bits:
      return "bits";
    case Shape::address:
      return "address";
    case Shape::ipv4:
      return "ipv4";
    case Shape::setting:
      return "setting";
    case Shape::record:
      return "record";
    case Shape::group:
      return "group";
    case Shape::list:
      return "list";
  }
  return "";
}

/// A member: where it stands and how long it is.
struct Placed {
  std::size_t offset;
  std::size_t size;
  std::string line;
};

/// Members by their paths. Rows only compute places in the record, so any memory will do for one.
class Layout {
 public:
  explicit Layout(Rows rows) { add(rows, memory_.data(), ""); }

  std::map<std::string, Placed> const& members() const { return members_; }

 private:
  void add(Rows rows, void* record, std::string const& path) {
    for (Row const& row : rows) {
      void* const place = row.place(record);
      std::string const inner = row.member.empty() ? path : path + std::string(row.member);
      bool const isWhole = !row.member.empty() && rowsBelow(row).empty();
      if (isWhole && row.place != &frame::detail::itself) place_(row, place, inner);
      bool const isNested = row.kind->shape == Shape::record;
      add(rowsBelow(row), place, isNested ? inner + '.' : path);
    }
  }

  void place_(Row const& row, void* place, std::string const& path) {
    auto const offset = static_cast<std::size_t>(static_cast<std::byte*>(place) - memory_.data());
    members_[path] = {
        offset, row.size,
        std::to_string(offset) + ' ' + std::to_string(row.size) + ' ' + nameOf(row.kind->shape)};
    if (row.kind->shape != Shape::list) return;
    auto const& entries = *static_cast<Entries const*>(row.with);
    if (entries.codes != nullptr) return;
    Layout const entry(entries.rows);
    for (auto const& [name, member] : entry.members()) {
      members_[path + "[]." + name] = {0, 0, member.line};
    }
  }

  std::vector<std::byte> memory_ = std::vector<std::byte>(1U << 16U);
  std::map<std::string, Placed> members_;
};

std::string printed() {
  std::ostringstream out;
  for (MessageRow const& message : catalogue()) {
    out << message.name << '\n';
    Layout const layout(message.rows);
    for (auto const& [path, member] : layout.members()) {
      out << "  " << path << ' ' << member.line << '\n';
    }
  }
  return out.str();
}

TEST(Layouts, AreThoseThatHostsAreCompiledWith) {
  test::expectGolden(printed(), "layouts.txt");
}

/// Bytes that no row fills, and why. An entry that no longer applies fails.
struct Unfilled {
  char const* message;
  std::size_t offset;
  std::size_t size;
  char const* why;
};
constexpr Unfilled unfilled[] = {
    {"media-status", 140, 32, "a film has no part number"},
    {"media-status", 236, 32, "a laminate has no part number"},
    {"media-status", 284, 12, "a laminate has no rolls, and its type goes elsewhere"},
    {"media-status", 332, 32, "a laminate has no part number"},
    {"media-status", 380, 8, "a laminate has no rolls"},
    {"access-points", 12, 12, "the room around the record"},
    {"service-history", 16, 8, "the room around the record"},
    {"passkey", 0, 384, "the record is that of a change of keys"},
    {"passkey", 448, 64, "the record is that of a change of keys"},
    {"printer-id", 214, 32, "a spare member, neither read nor written"},
    {"capabilities", 0, 64, "arrays of the host with their counts"},
    {"capabilities", 88, 64, "arrays of the host with their counts"},
    {"capabilities", 213, 19, "an array of the host with its count"},
    {"capabilities", 240, 144, "the room around the record"},
    {"media", 0, 8, "the room around the record"},
};

TEST(Layouts, LeaveNoMemberWithoutARow) {
  std::size_t applied = 0;
  for (MessageRow const& message : catalogue()) {
    // The record of a command is no host's.
    if (message.composing != nullptr && !message.composing->commandMembers.empty()) continue;
    std::vector<bool> filled(message.record->size);
    std::map<std::string, Placed> const members = Layout(message.rows).members();
    for (auto const& [path, member] : members) {
      for (std::size_t i = 0; i < member.size; ++i) filled.at(member.offset + i) = true;
    }
    // What is left is padding: less than a word, before a word or at the end.
    for (std::size_t begin = 0; begin < filled.size();) {
      std::size_t end = begin;
      while (end < filled.size() && filled[end] == filled[begin]) ++end;
      bool const isPadding = end - begin < 8 && (end % 2 == 0);
      bool const isKnown =
          std::any_of(std::begin(unfilled), std::end(unfilled), [&](auto const& u) {
            return u.message == message.name && u.offset == begin && u.offset + u.size == end;
          });
      applied += isKnown && !filled[begin] ? 1 : 0;
      EXPECT_TRUE(filled[begin] || isPadding || isKnown)
          << message.name << ": no row fills the bytes from " << begin << " to " << end;
      begin = end;
    }
  }
  EXPECT_EQ(applied, std::size(unfilled));
}

}  // namespace
}  // namespace Kovra
