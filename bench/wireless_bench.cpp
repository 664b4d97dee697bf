// Lists of access points against a bare TinyXML parse of the same narrow text and readers by hand,
// what memory they take, and how their time grows: `entry_us`, the time for one access point, stays
// the same from list to list.

#include <cstring>
#include <memory>
#include <vector>

#include "kvxstatusparser.h"
#include "readers/sides.hpp"
#include "support/bench_support.hpp"

namespace {

using namespace kovra_bench;

/// What a printer hears in a building full of access points.
std::string accessPoints(int count) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<AccessPoints>\n";
  for (int i = 0; i < count; ++i) {
    text += "  <AccessPoint>\n    <SSID>floor-" + std::to_string(i % 40) +
            "</SSID>\n    <BSSID>00:1a:2b:3c:4d:5e</BSSID>\n    <Selected>false</Selected>\n"
            "    <Channel>" +
            std::to_string(1 + i % 13) +
            "</Channel>\n    <Privacy>1</Privacy>\n    <SignalStrength>-61</SignalStrength>\n"
            "    <Infrastructure>true</Infrastructure>\n    <Security>wpa2</Security>\n"
            "    <Encryption>ccmp</Encryption>\n    <MaxDataRate>54</MaxDataRate>\n"
            "  </AccessPoint>\n";
  }
  return text + "</AccessPoints>\n";
}

/// A reply of so many access points, and a host's record with room for them.
struct Reply {
  explicit Reply(int count)
      : narrow(accessPoints(count)),
        text(widened(narrow)),
        room(static_cast<std::size_t>(count)),
        record{room.data(), 0} {}
  Reply(Reply const&) = delete;
  Reply& operator=(Reply const&) = delete;

  void read() {
    Kovra::KVXStatusParser parser;
    benchmark::DoNotOptimize(
        parser.ParseAccessPoints(text.front(), static_cast<int>(text.size()), record));
  }

  bool read(Reader const& reader) { return reader.accessPoints(text, record); }

  bool holdsTheSameAs(Reply const& other) const {
    return record.count == other.record.count &&
           std::memcmp(room.data(), other.room.data(), room.size() * sizeof room.front()) == 0;
  }

  std::string const narrow;
  std::wstring const text;
  std::vector<Kovra::_tagAccessPoint> room;
  Kovra::_tagAccessPoints record;
};

/// The other ways to read the reply, which is read into the record of `theirs`.
Sides otherReaders(Reply& theirs) {
  auto const expected = std::make_unique<Reply>(static_cast<int>(theirs.room.size()));
  expected->read();
  auto const read = [&](Reader const& reader) { return theirs.read(reader); };
  auto const same = [&](Reader const& reader) {
    std::memset(theirs.room.data(), 0, theirs.room.size() * sizeof theirs.room.front());
    return read(reader) && theirs.holdsTheSameAs(*expected);
  };
  return againstOtherReaders(theirs.narrow, read, same);
}

int registeredList(int count) {
  return registered("access_points_" + std::to_string(count), [count](benchmark::State& state) {
    Reply reply(count);
    compare(state, [&] { reply.read(); }, {bareParse(reply.narrow)});
    state.counters["entry_us"] = state.counters["kovra_us"] / count;
  });
}

int const lists[] = {registeredList(10), registeredList(100), registeredList(1000),
                     registeredList(10000)};

int const building = registered("access_points_200", [](benchmark::State& state) {
  Reply reply(200);
  compare(
      state, [&] { reply.read(); }, otherReaders(reply));
});

/// Ten million bytes of access points, and what reading them takes of the memory.
int const memory = registered("access_points_10MB", [](benchmark::State& state) {
  std::size_t const one = accessPoints(1000).size() / 1000;
  Reply reply(static_cast<int>(10'000'000 / one));
  auto const read = [&] { reply.read(); };
  Sides const others = otherReaders(reply);
  compare(state, read, others);
  reportMemory(state, reply.narrow.size(), read, others);
});

/// One list of 100,000 against a hundred lists of 1,000: 1 where the time for an access point stays
/// the same.
int const growth = registered("access_points_growth", [](benchmark::State& state) {
  Reply longest(100'000);
  Reply shorter(1'000);
  compare(state, [&] { longest.read(); }, {{"in_hundred_lists", [&] {
                                              for (int i = 0; i < 100; ++i) shorter.read();
                                            }}});
});

}  // namespace
