#include "kvxgetein.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::element;
using test::expectNeedsChildren;
using test::filled;
using test::MemberCase;
using test::same;
using test::StatusReply;
using test::Tree;

/// The tracks are read from narrow text. What the entry is told of its length is wrong on purpose.
struct TrackParser : KVXGetEIN {
  bool entry(wchar_t const& text, int len, __GETTRACK& out) {
    return GetMagneticTracks(*test::narrowed(text, len).get(), 1, out);
  }
};

StatusReply<__GETTRACK, TrackParser> const tracks{"data", &TrackParser::entry,
                                                  &TrackParser::parseMag};

constexpr MemberCase<__GETTRACK> trackMembers[] = {
    {"mag", "track1", "%B4711^MEIER/ANNA^2811?",
     [](auto& record) { std::strcpy(record.track1, "%B4711^MEIER/ANNA^2811?"); }},
    {"mag", "track2", ";4711=2811?",
     [](auto& record) { std::strcpy(record.track2, ";4711=2811?"); }},
    {"mag", "track3", ";0099?", [](auto& record) { std::strcpy(record.track3, ";0099?"); }},
};

std::string mag(std::string const& children) {
  return element("mag", children);
}

TEST(MagneticTracks, ReadsEachElementIntoItsMember) {
  tracks.expectMembers(trackMembers);
}

TEST(MagneticTracks, ReadsAWholeReplyAndRefusesWhatIsNone) {
  std::string children;
  for (auto const& member : trackMembers) children += element(member.name, member.text) + "\n";
  tracks.expectWideEntry("<?xml version='1.0'?>\n" + element("data", mag(children)),
                         [](auto& record) {
                           for (auto const& member : trackMembers) member.set(record);
                         });
}

TEST(MagneticTracks, DoesNotUseTheLengthItIsGiven) {
  std::string const reply = element("data", mag(element("track2", ";1?")));
  auto expected = filled<__GETTRACK>();
  std::strcpy(expected.track2, ";1?");
  for (int const length : {0, -1, 1, 10, INT_MAX, INT_MIN}) {
    auto record = filled<__GETTRACK>();
    EXPECT_TRUE(KVXGetEIN().GetMagneticTracks(*reply.c_str(), length, record)) << length;
    EXPECT_TRUE(same(record, expected)) << length;
  }
}

TEST(MagneticTracks, CutsATrackThatIsTooLongAndLeavesWhatLiesBehind) {
  for (std::size_t const length : {1U, 254U, 255U, 256U, 5000U}) {
    std::string const sent(length, '7');
    std::string const kept(std::min<std::size_t>(length, 255), '7');
    tracks.expectRead(mag(element("track1", sent)),
                      [&](auto& record) { std::strcpy(record.track1, kept.c_str()); });
    tracks.expectRead(mag(element("track2", sent)),
                      [&](auto& record) { std::strcpy(record.track2, kept.c_str()); });
    tracks.expectRead(mag(element("track3", sent)),
                      [&](auto& record) { std::strcpy(record.track3, kept.c_str()); });
  }
}

TEST(MagneticTracks, CopiesBytesThatNoLocaleKnows) {
  std::string const bytes = "\x01\xC3\xFF\x7F\xE9";
  std::string const reply = element("data", mag(element("track3", bytes)));
  auto record = filled<__GETTRACK>();
  auto expected = record;
  std::strcpy(expected.track3, bytes.c_str());
  EXPECT_TRUE(KVXGetEIN().GetMagneticTracks(*reply.c_str(), 0, record));
  EXPECT_TRUE(same(record, expected));
}

TEST(MagneticTracks, ALaterStripeOverwritesTheTracksThatItNames) {
  tracks.expectRead(mag(element("track1", "first") + element("track2", "first")) +
                        mag(element("track2", "second") + element("track3", "second")),
                    [](auto& record) {
                      std::strcpy(record.track1, "first");
                      std::strcpy(record.track2, "first");
                      std::strcpy(record.track2, "second");
                      std::strcpy(record.track3, "second");
                    });
}

TEST(MagneticTracks, ResultIsThatOfTheLastKnownElement) {
  auto const one = [](auto& record) { std::strcpy(record.track1, "1"); };
  std::string const track = element("track1", "1");
  tracks.expect(false, mag(track + "<track3/>"), one);
  tracks.expect(false, mag(track + "<track3></track3><unknown>1</unknown>"), one);
  tracks.expect(true, mag("<track3/>" + track + "<unknown/>"), one);
  tracks.expect(false, mag(track) + "<mag/>", one);
  tracks.expect(false, mag(track) + mag("<unknown>1</unknown>"), one);
  tracks.expect(true, "<mag/>" + mag(track) + "<chip>1</chip>", one);
  tracks.expectSkipped(track);
  tracks.expectSkipped("<chip>1</chip>");
  tracks.expectSkipped("");
}

TEST(MagneticTracks, ReadersNeedChildren) {
  auto const start = filled<__GETTRACK>();
  expectNeedsChildren(start, [](TiXmlElement* root, __GETTRACK& record) {
    return KVXGetEIN().parseMag(root, record);
  });
  expectNeedsChildren(start, [](TiXmlElement* stripe, __GETTRACK& record) {
    return KVXGetEIN().parseTrack(stripe, record);
  });
}

TEST(MagneticTracks, ElementReaderDoesNotAskForTheNameOfItsElement) {
  auto record = filled<__GETTRACK>();
  auto expected = record;
  std::strcpy(expected.track2, "2");
  Tree tree("<any><track2>2</track2></any>");
  EXPECT_TRUE(KVXGetEIN().parseTrack(tree.root(), record));
  EXPECT_TRUE(same(record, expected));
}

TEST(MagneticTracks, AreSecretsAndStandInNoNote) {
  std::string const data = ";4711=2811?";
  std::string const xml = element(
      "data", mag(element("track1", data) + element("track2", data + std::string(300, '0')) +
                  element("track3", "") + element("track4", data)));
  Decoding const decoding = decode(xml);
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U) << decoding.refusal().message();
  ASSERT_EQ(readings[0].record().size(), 2U);
  for (auto const& [name, track] : readings[0].record().members()) {
    EXPECT_TRUE(track.isSecret()) << name;
    EXPECT_EQ(track.asText().substr(0, data.size()), data) << name;
  }
  std::vector<Note> const notes = decoding.notes();
  ASSERT_EQ(notes.size(), 3U) << "cut, empty, unknown";
  for (Note const& note : notes) {
    EXPECT_EQ(note.found() + note.kept(), "");
    EXPECT_EQ(note.message().find("4711"), std::string::npos) << note.message();
  }
}

TEST(KVXGetEIN, HasEveryOperationWithItsSignature) {
  using P = KVXGetEIN;
  bool (P::*const entry)(char const&, int, __GETTRACK&) = &P::GetMagneticTracks;
  [[maybe_unused]] bool (P::*const a)(TiXmlElement*, __GETTRACK&) = &P::parseMag;
  [[maybe_unused]] bool (P::*const b)(TiXmlElement*, __GETTRACK&) = &P::parseTrack;
  auto record = filled<__GETTRACK>();
  EXPECT_FALSE((P().*entry)('\0', 0, record));
  EXPECT_TRUE(test::untouched(record));
}

}  // namespace
}  // namespace Kovra
