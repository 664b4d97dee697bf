/// @file
/// Lists: elements whose children of one name are the entries of an array.

#ifndef KOVRA_FRAME_TYPED_LISTS_HPP
#define KOVRA_FRAME_TYPED_LISTS_HPP

#include <tinyxml.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

#include "frame/member.hpp"
#include "frame/observer.hpp"
#include "frame/typed/kinds.hpp"
#include "frame/typed/rows.hpp"
#include "frame/typed/walk.hpp"

namespace Kovra::frame::typed {

// Lists.

/// A setting's parts as members, for those who compose; on the wire they are no elements.
template <class Setting>
inline constexpr Table settingParts = {
    number<&Setting::min>("min"),
    number<&Setting::max>("max"),
    number<&Setting::val>("val"),
};

/// A setting with bounds: attributes "min" and "max", and the value as text. A bound that is absent
/// stays as it was. The value is put up to "min" and then down to "max", also when there is no
/// text: a setting without bounds in a cleared record reads as 0, and crossed bounds as "max".
/// Printers always send the bounds, and hosts rely on values within them. The result is that of the
/// text.
template <auto M>
struct BoundedReading {
  using Setting = typename Member<M>::Type;

  template <class Record>
  static bool read(Element element, Record& record, Watch const& watch) {
    Setting& setting = record.*M;
    auto const before = setting.val;
    bool const min = convertBound(element.attribute("min"), setting.min);
    bool const max = convertBound(element.attribute("max"), setting.max);
    bool const read = convertNumber(element.text(), setting.val);
    auto const sent = setting.val;
    if (setting.val < setting.min) setting.val = setting.min;
    if (setting.val > setting.max) setting.val = setting.max;
    remark(watch, [&](Observer& observer) {
      observer.within(Member<M>::name(), [&] {
        reportBound(observer, element, "min", min, setting.min);
        reportBound(observer, element, "max", max, setting.max);
        reportValue(observer, element, read, setting.val, sent, before);
        return read;
      });
    });
    return read;
  }

  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record, Circumstances,
                    bool) {
    return KVXHelper::AddTagMinMaxVal(&parent, element, record.*M);
  }

  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != Member<M>::name()) return Assigned::notMine;
    return assignAll(settingParts<Setting>, record.*M, value, problem);
  }

  static void keys(Keys& keys) { detail::keyOf<M>(keys); }
  static void outline(Outline& outline) { outline.insert({"min", "max"}); }

 private:
  template <class Number>
  static void reportBound(Observer& observer, Element element, char const* name, bool read,
                          Number bound) {
    if (read) {
      observer.member(name, shown(bound));
    } else {
      observer.noAttribute(element, name);
    }
  }

  template <class Number>
  static void reportValue(Observer& observer, Element element, bool read, Number value, Number sent,
                          Number before) {
    if (!read) observer.emptyElement(element);
    if (!read && value != before) observer.member("val", shown(value));
    if (read) NumberKind::report(observer, "val", element, value);
    // Of a whole number the line above has told.
    if (std::is_floating_point_v<Number> && read && value != sent) {
      observer.changedNumber(element, printed(static_cast<double>(value)));
    }
  }

  static std::string printed(double value) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%g", value);
    return text.data();
  }
};

template <auto M>
constexpr auto bounded(std::string_view element) {
  return reading<typename Member<M>::Record, BoundedReading<M>>(element);
}

/// One of several flags that share a member; `Bits` has the bit of each element. They are shown and
/// assigned as an object with a member for each. A flag that is not set clears its bit, an empty
/// element leaves it.
template <auto M, Vocabulary const& Bits>
struct BitReading {
  template <class Record>
  static bool read(Element element, Record& record, Watch const& watch) {
    char flag = 0;
    bool const read = convertFlag(element.text(), flag);
    if (read) put(record.*M, Bits.codeOf(element.name().data()), flag != 0);
    remark(watch, [&](Observer& observer) {
      if (!read) observer.emptyElement(element);
      observer.within(Member<M>::name(), [&] {
        if (read) reportSwitch(observer, element.name(), element, flag != 0);
        return read;
      });
    });
    return read;
  }

  template <class Record>
  static bool write(TiXmlElement& parent, char const* element, Record const& record, Circumstances,
                    bool) {
    return KVXHelper::AddTagBool(&parent, element, (record.*M & Bits.codeOf(element)) != 0);
  }

  template <class Record>
  static Assigned assign(Record& record, std::string_view member, Value const& value,
                         Problem& problem) {
    if (member != Member<M>::name()) return Assigned::notMine;
    if (value.kind != Value::Kind::record) return fail(problem, described(value), "an object");
    for (Kovra::Member const& flag : value.members) {
      Assigned const result = assignBit(record.*M, flag, problem);
      if (result == Assigned::failed) {
        prefix(problem, flag.name);
        return result;
      }
    }
    return Assigned::done;
  }

  static void keys(Keys& keys) { detail::keyOf<M>(keys); }
  static void outline(Outline& outline) {
    for (Word const& word : switches.words) outline.emplace(word.text);
  }

 private:
  template <class Set>
  static void put(Set& set, int bit, bool flag) {
    set = static_cast<Set>(flag ? set | bit : set & ~bit);
  }

  template <class Set>
  static Assigned assignBit(Set& set, Kovra::Member const& member, Problem& problem) {
    Word const* const word = Bits.find(member.name);
    if (word == nullptr) return fail(problem, "an unknown key", "one of: " + listed(Bits));
    bool flag = false;
    Assigned const result = assignFlag(flag, member.value, problem);
    if (result == Assigned::done) put(set, word->code, flag);
    return result;
  }
};

template <auto M, Vocabulary const& Bits>
constexpr auto bitFlag(std::string_view element) {
  return reading<typename Member<M>::Record, BitReading<M, Bits>>(element);
}

/// How many child elements there are, whatever their names.
inline std::size_t countChildren(Element element) {
  std::size_t count = 0;
  for (Element child = element.firstChild(); child; child = child.nextSibling()) ++count;
  return count;
}

namespace detail {
template <class Record, std::size_t N>
Record recordOf(Table<Record, N> const&);
}  // namespace detail

/// Visits the children named `element`, the entries of a list, in their order; others are skipped.
/// The result is that of the last one visited; false when there was none.
template <class Visit>
bool walkEntries(Element parent, std::string_view element, Watch const& watch, Visit visit) {
  return walkChildren(parent, [&](Element child, bool result) {
    bool const isEntry = child.name() == element;
    remark(watch, [&](Observer& observer) {
      isEntry ? observer.knownElement(child) : observer.unknownElement(child);
    });
    return isEntry ? visit(child, result) : result;
  });
}

/// An entry that is a record, whose members are the children of its element.
template <auto const& Table>
struct RecordEntry {
  using Entry = decltype(detail::recordOf(Table));

  static bool read(Element element, Entry& entry, Watch const& watch, std::string_view list,
                   std::size_t index) {
    return watch.entry(list, index, [&] { return walk(element, Table, entry, watch); });
  }
  static bool write(TiXmlElement& list, char const* element, Entry const& entry,
                    Circumstances circumstances) {
    return writeBelow(list, element, Table, entry, circumstances);
  }
  static Assigned assign(Entry& entry, Value const& value, Problem& problem) {
    return assignAll(Table, entry, value, problem);
  }
  static void outline(Outline& outline) { outlineOf(Table, outline); }
};

/// The entries of the list `M`: the children `Item`, each read by `Each`, RecordEntry or a
/// struct like it.
template <auto M, Fixed Item, class Each>
struct EntriesBy {
  using Entry = typename Each::Entry;

  /// Reads the children in order into `room`, from its first entry on. Children of other names are
  /// skipped, and so are those for which there is no room. The result is that of the last entry
  /// read; false when there was none.
  static bool read(Element parent, std::span<Entry> room, Watch const& watch) {
    remark(watch, [](Observer& observer) { observer.list(memberName<M>); });
    std::size_t next = 0;
    return walkEntries(parent, Item, watch, [&](Element child, bool result) {
      if (next == room.size()) {
        remark(watch, [&](Observer& observer) { observer.surplusEntry(child, room.size()); });
        return result;
      }
      std::size_t const index = next++;
      return Each::read(child, room[index], watch, memberName<M>, index);
    });
  }

  static void outline(Outline& outline) {
    outline.emplace(std::string_view(Item));
    Each::outline(outline);
  }
};

/// The entries of the list `M`: the children `Item`, each read with `Table`.
template <auto M, Fixed Item, auto const& Table>
struct EntriesOf : EntriesBy<M, Item, RecordEntry<Table>> {};

}  // namespace Kovra::frame::typed

#endif
