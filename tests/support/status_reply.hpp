/// @file
/// A reply of KVXStatusParser by both of its ways in, and the promises that hold for every one.

#ifndef KOVRA_TESTS_SUPPORT_STATUS_REPLY_HPP
#define KOVRA_TESTS_SUPPORT_STATUS_REPLY_HPP

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <string>

#include "kvxstatusparser.h"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"
#include "support/words.hpp"

namespace Kovra::test {

inline std::string element(std::string const& name, std::string const& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

/// One element of a reply, the path of the elements around it without the root, and its effect.
template <class Record>
struct MemberCase {
  char const* within;  ///< empty when it is a child of the root
  char const* name;
  char const* text;
  void (*set)(Record&);

  /// An element in the place of this one.
  std::string placed(std::string const& other) const {
    return *within != '\0' ? element(within, other) : other;
  }
  /// The element with another name or text, with what stands around it.
  std::string wrapped(std::string const& otherName, std::string const& otherText) const {
    return placed(element(otherName, otherText));
  }
};

/// What reading into a record full of sentinels gave.
template <class Record>
struct Outcome {
  bool result;
  Record record;
};

/// A test of another class, or of an entry of another form, names a parser of its own.
template <class Record, class Parser = KVXStatusParser>
struct StatusReply {
  std::string root;
  bool (Parser::*entry)(wchar_t const&, int, Record&);
  bool (Parser::*reader)(TiXmlElement*, Record&);
  Record start = filled<Record>();

  /// By the wide entry, from a buffer of exactly the text's size.
  Outcome<Record> parsed(std::wstring const& text, int length) const {
    Outcome<Record> outcome{false, start};
    auto const buffer = unterminated(text);
    outcome.result = (Parser().*entry)(*buffer.get(), length, outcome.record);
    return outcome;
  }
  Outcome<Record> parsed(std::string const& text) const {
    return parsed(wide(text), static_cast<int>(text.size()));
  }

  /// A root with these children, by both ways in.
  Outcome<Record> parsedChildren(std::string const& children) const {
    std::string const xml = element(root, children);
    Outcome<Record> const outcome = parsed(xml);
    Outcome<Record> direct{false, start};
    direct.result = (Parser().*reader)(Tree(xml).root(), direct.record);
    EXPECT_EQ(outcome.result, direct.result) << children;
    EXPECT_TRUE(same(outcome.record, direct.record)) << children;
    return outcome;
  }

  /// Expects that `children` give `result` and change just what `change` changes.
  template <class Change>
  void expect(bool result, std::string const& children, Change change) const {
    Record expected = start;
    change(expected);
    Outcome<Record> const outcome = parsedChildren(children);
    EXPECT_EQ(outcome.result, result) << children;
    EXPECT_TRUE(same(outcome.record, expected)) << children;
  }
  template <class Change>
  void expectRead(std::string const& children, Change change) const {
    expect(true, children, change);
  }
  void expectSkipped(std::string const& children) const {
    expect(false, children, [](Record&) {});
  }

  void expectRefused(Outcome<Record> const& outcome, std::string const& what) const {
    EXPECT_FALSE(outcome.result) << what;
    EXPECT_TRUE(same(outcome.record, start)) << what;
  }

  /// Each element fills its member and no other, by its exact name, and leaves it when it is empty.
  template <std::size_t N>
  void expectMembers(MemberCase<Record> const (&cases)[N]) const {
    for (MemberCase<Record> const& one : cases) {
      std::string const name = one.name;
      expectRead(one.wrapped(name, one.text), one.set);
      expectSkipped(one.wrapped(name, ""));
      expectSkipped(one.placed("<" + name + "/>"));
      std::string const changed = name == upper(name) ? lower(name) : upper(name);
      for (std::string const& other :
           {changed, name + "s", name.substr(0, name.size() - 1), "x:" + name}) {
        expectSkipped(one.wrapped(other, one.text));
      }
    }
  }

  /// A whole reply gives what `set` sets, in every locale; cut anywhere, with another root, with no
  /// length, or harmful, it gives nothing and touches nothing.
  template <class Set>
  void expectWideEntry(std::string const& whole, Set set) const {
    expectWhole(whole, set);
    for (int const length : {0, -1, INT_MIN}) {
      expectRefused(parsed(wide(whole), length), std::to_string(length));
    }
    std::size_t const end = whole.rfind('>');
    for (std::size_t size = 1; size <= end; ++size) {
      expectRefused(parsed(whole.substr(0, size)), "cut at " + std::to_string(size));
    }
    expectRefused(parsed(wide(whole), static_cast<int>(end)), "a length that cuts the text");
    expectRefusedAround(whole.substr(whole.find("<" + root)));
  }

 private:
  template <class Set>
  void expectWhole(std::string const& whole, Set set) const {
    Record expected = start;
    set(expected);
    for (char const* const locale : locales) {
      LocaleGuard const guard(locale);
      Outcome<Record> const outcome = parsed(whole);
      EXPECT_TRUE(outcome.result) << locale;
      EXPECT_TRUE(same(outcome.record, expected)) << locale;
      EXPECT_TRUE(parsed(wide(whole) + L'\0', INT_MAX).result) << "up to its terminator";
    }
  }

  /// `reply` is the root element alone.
  void expectRefusedAround(std::string const& reply) const {
    std::string const children = reply.substr(root.size() + 2, reply.rfind("</") - root.size() - 2);
    expectRefused(parsed(element("get_other", children)), "another root");
    expectRefused(parsed(element(upper(root), children)), "the root in upper case");
    expectRefused(parsed(element("a", reply)), "the root is no root");
    expectRefused(parsed(element(root, children) + "<open>"), "malformed behind the root");
    expectRefused(parsed(element(root, children + "<a b c/>")), "malformed within the root");
    std::string deep;
    std::string end;
    std::string crowded = "<a";
    for (int i = 0; i < 128; ++i) deep += "<a>", end += "</a>";
    for (int i = 0; i < 257; ++i) crowded += " a" + std::to_string(i) + "='1'";
    expectRefused(parsed(element(root, children + deep + end)), "129 elements deep");
    expectRefused(parsed(element(root, children + crowded + "/>")), "257 attributes");
  }
};

/// Expects that an element reader fails, and touches nothing, without an element or children.
template <class Record, class Read>
void expectNeedsChildren(Record const& start, Read read) {
  TiXmlElement childless("any");
  for (TiXmlElement* const nothing : {static_cast<TiXmlElement*>(nullptr), &childless}) {
    Record record = start;
    EXPECT_FALSE(read(nothing, record));
    EXPECT_TRUE(same(record, start));
  }
}

}  // namespace Kovra::test

#endif
