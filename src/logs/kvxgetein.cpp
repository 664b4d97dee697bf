#include "kvxgetein.h"

#include "frame/message.hpp"
#include "logs/logs_tables.hpp"

namespace Kovra {

using namespace logs;

KVXGetEIN::KVXGetEIN() = default;
KVXGetEIN::~KVXGetEIN() = default;

bool KVXGetEIN::GetMagneticTracks(char const& text, int, __GETTRACK& out) {
  return readNarrowReply(&text, stripeRoots, stripe, out);
}

bool KVXGetEIN::parseMag(TiXmlElement* root, __GETTRACK& out) {
  return walk(root, stripe, out);
}

bool KVXGetEIN::parseTrack(TiXmlElement* mag, __GETTRACK& out) {
  return walk(mag, tracks, out);
}

}  // namespace Kovra
