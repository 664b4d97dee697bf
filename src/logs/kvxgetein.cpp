#include "kvxgetein.h"

#include "frame/typed/reply.hpp"
#include "frame/typed/secret.hpp"
#include "logs/logs_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

/// Whoever has a track has the card.
constexpr Table tracks = {
    secretText<&__GETTRACK::track1>("track1"),
    secretText<&__GETTRACK::track2>("track2"),
    secretText<&__GETTRACK::track3>("track3"),
};

constexpr Table stripe = {
    group<__GETTRACK, tracks>("mag"),
};

constexpr char const* stripeRoots[] = {"data"};

using StripeReading = TableReading<stripe>;

constexpr ReplyReader replies[] = {
    secretReader<__GETTRACK, StripeReading>("magnetic-tracks", "tracks read from a magnetic stripe",
                                            stripeRoots),
};

}  // namespace

std::span<frame::ReplyReader const> magneticTrackReplies() {
  return replies;
}

KVXGetEIN::KVXGetEIN() = default;
KVXGetEIN::~KVXGetEIN() = default;

bool KVXGetEIN::GetMagneticTracks(char const& text, int, __GETTRACK& out) {
  return readNarrowReply<StripeReading>(&text, stripeRoots, out);
}

bool KVXGetEIN::parseMag(TiXmlElement* root, __GETTRACK& out) {
  return walk(root, stripe, out);
}

bool KVXGetEIN::parseTrack(TiXmlElement* mag, __GETTRACK& out) {
  return walk(mag, tracks, out);
}

}  // namespace Kovra
