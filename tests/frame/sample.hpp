/// @file
/// A document of the tests' own, with a row of each kind.

#ifndef KOVRA_TESTS_FRAME_SAMPLE_HPP
#define KOVRA_TESTS_FRAME_SAMPLE_HPP

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/field.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"
#include "support/twin_trees.hpp"

namespace Kovra::test {

enum Shade : int { unknownShade = -1, pale = 1, dark = 2 };

struct Inner {
  int depth;
  char tag[4];
};

struct Sample {
  int whole;
  unsigned short narrow;
  unsigned long counter;
  unsigned int natural;
  long wide;
  float real;
  unsigned int bits;
  char text[8];
  int word;
  int known;
  int any;
  Shade shade;
  char locked;
  bool open;
  char enabled;
  bool wanted;
  unsigned char flags;
  unsigned char mac[6];
  int reading;
  _MinMaxVal level;
  _MinMaxValFloat ratio;
  Inner inner;
  int grouped;
  int odd;
};

inline constexpr frame::Word wordRows[] = {{"single", 1}, {"dual", 2}, {"twin", 2}};
inline constexpr frame::Vocabulary words{wordRows, frame::Match::exact, 9};
inline constexpr frame::Word shadeRows[] = {{"pale", pale}, {"dark", dark}};
inline constexpr frame::Vocabulary shades{shadeRows, frame::Match::anyCase, unknownShade};
inline constexpr frame::Word flagRows[] = {{"first", 1}, {"third", 4}};
inline constexpr frame::Vocabulary flagBits{flagRows, frame::Match::exact, 0};

inline constexpr frame::Table innerTable = {
    frame::number<&Inner::depth>("depth"),
    frame::text<&Inner::tag>("tag"),
};

inline constexpr frame::Table groupTable = {
    frame::number<&Sample::grouped>("grouped"),
};

/// Counts how often it was read instead of reading anything.
struct CountReadings : frame::NeverWritten, frame::NeverAssigned {
  static bool read(frame::Element, Sample& record, frame::Watch const& watch) {
    ++record.odd;
    frame::remark(watch, [&](frame::Observer& observer) { observer.member("odd", record.odd); });
    return record.odd % 2 == 1;
  }
};

inline constexpr frame::Table table = {
    frame::number<&Sample::whole>("whole"),
    frame::number<&Sample::narrow>("narrow"),
    frame::number<&Sample::counter>("counter"),
    frame::number<&Sample::natural>("natural"),
    frame::number<&Sample::wide>("wide-number"),
    frame::number<&Sample::real>("real"),
    frame::hexadecimal<&Sample::bits>("bits"),
    frame::text<&Sample::text>("text"),
    frame::keyword<&Sample::word, words>("word"),
    frame::knownKeyword<&Sample::known, words>("known"),
    frame::anyKeyword<&Sample::any, words>("any"),
    frame::keyword<&Sample::shade, shades>("shade"),
    frame::flagIf<&Sample::locked, "locked", "unlocked">("lock"),
    frame::flagUnless<&Sample::open, "closed", "open">("door"),
    frame::enabled<&Sample::enabled>("enabled"),
    frame::yesOrNo<&Sample::wanted>("wanted"),
    frame::bitFlag<&Sample::flags, flagBits>("first"),
    frame::bitFlag<&Sample::flags, flagBits>("third"),
    frame::address<&Sample::mac>("mac"),
    frame::attribute<&Sample::reading, "at">("sensor"),
    frame::bounded<&Sample::level>("level"),
    frame::bounded<&Sample::ratio>("ratio"),
    frame::nested<&Sample::inner, innerTable>("inner"),
    frame::group<Sample, groupTable>("group"),
    frame::reading<Sample, CountReadings>("odd"),
};

/// What walking over a document gave.
struct Walked {
  bool result;
  Sample record;
};

inline Walked walked(std::string const& children, Sample const& start = filled<Sample>()) {
  Tree tree("<sample>" + children + "</sample>");
  Walked outcome{false, start};
  outcome.result = walk(tree.root(), table, outcome.record);
  return outcome;
}

/// The same walk over a cleared record, observed.
class Watched {
 public:
  explicit Watched(std::string const& children)
      : scanned_("<sample>" + children + "</sample>"),
        usage_(scanned_.tree().nodes().size(), scanned_.tree().attributeCount()) {
    scanned_.tree().watch(&usage_);
    frame::Observer observer(scanned_.tree(), shown);
    Sample record{};
    result = walk(frame::firstElement(scanned_.tree()), table, record, observer);
    remarks = observer.remarks();
    unlisted = observer.unlisted();
  }

  /// The name of the element that a remark is about.
  std::string elementOf(frame::Remark const& remark) const {
    return std::string(frame::Element(scanned_.tree(), remark.index).name());
  }
  /// The names of the elements below the root that are in that state, in their order.
  std::vector<std::string> elements(frame::Usage::State state) const {
    std::vector<std::string> names;
    frame::Tree const& tree = scanned_.tree();
    for (std::uint32_t i = 1; i < tree.nodes().size(); ++i) {
      if (tree.node(i).kind != frame::NodeKind::element || usage_.nodes()[i] != state) continue;
      names.emplace_back(tree.view(tree.node(i).value));
    }
    return names;
  }
  frame::Tree const& tree() const { return scanned_.tree(); }
  frame::Usage const& usage() const { return usage_; }

  bool result = false;
  Value shown;
  std::vector<frame::Remark> remarks;
  std::size_t unlisted = 0;

 private:
  Scanned scanned_;
  frame::Usage usage_;
};

struct List {
  Inner items[2];
};

inline constexpr auto items = frame::entries<innerTable>("item");

}  // namespace Kovra::test

#endif
