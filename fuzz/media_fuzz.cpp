/// @file
/// Any bytes at all as a media catalogue: a record lives through several readings, what it holds
/// can be written, and what the face shows can be composed.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include "kovra.hpp"
#include "kvxsetmedia.h"
#include "support/guarded.hpp"

using namespace Kovra;
using namespace kovra_fuzz;

namespace {

std::size_t entriesOf(_KVMediaInfo const& media) {
  return media.cards->size() + media.films->size() + media.laminates->size();
}

void drive(char const& text, int length) {
  _KVMediaInfo* const media = GetKVMedia();
  BuildKVMedia(media);
  require(!KVXMediaParser().GetMedia(text, length, *media));
  std::size_t const once = entriesOf(*media);
  require(!KVXMediaParser().GetMedia(text, length, *media));
  require(entriesOf(*media) == 2 * once && media->ribbons->empty());
  wchar_t out[64];
  require(KVXSetMedia().SetMedia(*media, out, 64, 1, false));
  DestroyKVMedia(media);

  _KVMediaInfo* const unbuilt = GetKVMedia();
  require(!KVXMediaParser().GetMedia(text, length, *unbuilt));
  DestroyKVMedia(unbuilt);
}

// A text that was cut within a letter takes the markup behind it for the letter's rest.
bool isAscii(std::string const& text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isDecoded(std::string const& text) {
  return decode(text.data(), text.size(), "media").status == Decoding::Status::decoded;
}

void compose(std::uint8_t const* data, std::size_t size) {
  Decoding const decoding = decode(reinterpret_cast<char const*>(data), size, "media");
  for (Reading const& reading : decoding.readings) {
    Composition const whole = composeMedia(reading.record);
    require(whole.composed);
    require(!isAscii(whole.text) || isDecoded(whole.text));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  drive(*narrowText(data, size).get(), static_cast<int>(size));
  compose(data, size);
  return 0;
}
