// Samples of every message that is read: what they tell, and how they are read.

#include "sample.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <kovra.hpp>
#include <set>
#include <string>
#include <vector>

namespace Kovra::tool {
namespace {

constexpr std::uint64_t seeds = 200;

template <class Visit>
void eachReply(Visit const& visit) {
  for (Message const& message : messages()) {
    if (message.isRead()) visit(message);
  }
}

std::string nameOf(Message const& message, std::uint64_t seed) {
  return message.name() + " of seed " + std::to_string(seed);
}

/// What no reply tells, or not each time. One that is told all the same fails.
std::set<std::string> const untold = {
    "capabilities.internalEncoder.contact_station",
    "configuration.film.ribbonNameCode",
    "configuration.ribbon.ribbonNameCode",
    "job-list.count",  // a host asks with it
    "media.ribbons",
    "secure-action-directive.model",
    "secure-action-directive.nonce",
    "secure-action-directive.serial",
    "secure-action-request.action",
    "secure-action-request.model",
    "secure-action-request.nonce",
    "secure-action-request.serial",
};

/// Of a list the first entry that is there; null where none is.
Value const* lookInto(Value const& value) {
  if (!value.isList()) return &value;
  for (Value const& item : value.items()) {
    if (!item.isNothing()) return &item;
  }
  return nullptr;
}

/// The paths of the members that the record lacks.
void missing(std::vector<MemberDescription> const& members, Value const& record,
             std::string const& path, std::set<std::string>& paths) {
  for (MemberDescription const& member : members) {
    std::string const own = path + '.' + member.name();
    Value const* const value = record.find(member.name());
    Value const* const inner = value != nullptr ? lookInto(*value) : nullptr;
    if (inner == nullptr) {
      paths.insert(own);
    } else {
      missing(member.members(), *inner, own, paths);
    }
  }
}

TEST(Samples, TellEveryMemberWithoutANote) {
  std::set<std::string> everMissing;
  eachReply([&](Message const& message) {
    for (std::uint64_t seed = 0; seed < seeds; ++seed) {
      Sample const sample = sampleOf(message, seed, {});
      Decoding const decoding = decode(sample.text, message.name());
      ASSERT_TRUE(static_cast<bool>(decoding)) << nameOf(message, seed) << sample.text;
      ASSERT_TRUE(decoding.notes().empty())
          << nameOf(message, seed) << ": " << decoding.notes().front().message();
      Value const& record = decoding.readings().front().record();
      std::set<std::string> paths;
      missing(message.members(), record, message.name(), paths);
      for (std::string const& path : paths) {
        ASSERT_EQ(untold.count(path), 1U) << nameOf(message, seed) << ": " << path;
      }
      everMissing.insert(paths.begin(), paths.end());
    }
  });
  EXPECT_EQ(untold, everMissing);
}

TEST(Samples, AreDecodedWithoutANoteAlsoByTheirRootAlone) {
  eachReply([](Message const& message) {
    for (std::uint64_t seed = 0; seed < 20; ++seed) {
      Decoding const decoding = decode(sampleOf(message, seed, {}).text);
      ASSERT_TRUE(static_cast<bool>(decoding)) << nameOf(message, seed);
      EXPECT_TRUE(decoding.notes().empty())
          << nameOf(message, seed) << ": " << decoding.notes().front().message();
    }
  });
}

/// Some lists give an entry a place by what it says, and leave others empty. Paths count entries
/// as they come.
Value withoutGaps(Value value) {
  Value compact = value.isList() ? Value::list() : value;
  for (Value& item : value.items()) {
    if (!item.isNothing()) compact.append(withoutGaps(item));
  }
  for (Member& member : compact.members()) member.value() = withoutGaps(member.value());
  return compact;
}

TEST(Samples, TellThePathsThatTheySayTheyDo) {
  eachReply([](Message const& message) {
    Sample const sample = sampleOf(message, 7, {});
    Decoding const decoding = decode(sample.text, message.name());
    ASSERT_TRUE(static_cast<bool>(decoding)) << message.name();
    Value const record = withoutGaps(decoding.readings().front().record());
    for (std::string const& path : sample.told) {
      bool const isFlagOfSome = path.find("Levels.") != path.npos;  // those that are not named
      EXPECT_TRUE(record.findAt(path) != nullptr || isFlagOfSome) << message.name() << ": " << path;
    }
  });
}

TEST(Samples, ThatAreOddAreReadAndTellNotes) {
  SampleOptions const odd{{}, true};
  std::set<std::string> kinds;
  eachReply([&](Message const& message) {
    for (std::uint64_t seed = 0; seed < seeds; ++seed) {
      Sample const sample = sampleOf(message, seed, odd);
      Decoding const decoding = decode(sample.text, message.name());
      ASSERT_TRUE(static_cast<bool>(decoding))
          << nameOf(message, seed) << ": " << decoding.refusal().message() << '\n'
          << sample.text;
      for (Note const& note : decoding.notes()) kinds.insert(note.id());
    }
  });
  for (char const* const kind :
       {"K101", "K102", "K103", "K104", "K107", "K110", "K111", "K112", "K113", "K115", "K116"}) {
    EXPECT_EQ(kinds.count(kind), 1U) << kind;
  }
}

TEST(Samples, AreTheSameForASeedAndOthersForAnother) {
  eachReply([](Message const& message) {
    for (bool const isOdd : {false, true}) {
      SampleOptions const options{{}, isOdd};
      std::set<std::string> texts;
      for (std::uint64_t seed = 0; seed < 20; ++seed) {
        std::string const text = sampleOf(message, seed, options).text;
        EXPECT_EQ(text, sampleOf(message, seed, options).text);
        texts.insert(text);
      }
      bool const hasMembers = !sampleOf(message, 0, {}).told.empty();
      EXPECT_TRUE(texts.size() > 5 || !hasMembers) << message.name() << ": " << texts.size();
    }
  });
}

/// Each member that a sample tells, set to what another one says.
TEST(Samples, SayWhatIsAskedFor) {
  eachReply([](Message const& message) {
    Value const other = withoutGaps(
        decode(sampleOf(message, 2, {}).text, message.name()).readings().front().record());
    for (std::string const& path : sampleOf(message, 1, {}).told) {
      Value const* const value = other.findAt(path);
      if (value == nullptr || !(value->isText() || value->isWhole() || value->isKeyword()))
        continue;
      if (value->isHexadecimal()) continue;  // written otherwise than it is shown
      std::string const said = value->isText()      ? std::string(value->asText())
                               : value->isKeyword() ? std::string(value->word())
                                                    : value->toJson();
      for (bool const isOdd : {false, true}) {
        std::string const text = sampleOf(message, 1, {{{path, said}}, isOdd}).text;
        Decoding const decoding = decode(text, message.name());
        ASSERT_TRUE(static_cast<bool>(decoding)) << message.name() << ": " << path;
        Value const record = withoutGaps(decoding.readings().front().record());
        Value const* const found = record.findAt(path);
        ASSERT_TRUE(found != nullptr) << message.name() << ": " << path << '\n' << text;
        EXPECT_TRUE(*found == *value) << message.name() << ": " << path << '\n' << text;
      }
    }
  });
}

/// The numbers are those of the generator's authors, so that every build makes the same replies.
TEST(Samples, ComeFromTheSameNumbersEverywhere) {
  Random random(1234567);
  EXPECT_EQ(random.next(), 6457827717110365317U);
  EXPECT_EQ(random.next(), 3203168211198807973U);
}

}  // namespace
}  // namespace Kovra::tool
