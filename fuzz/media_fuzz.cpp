/// @file
/// Any bytes at all as a media catalogue: a record lives through several readings, what it holds
/// can be written, and what the face shows can be composed.

#include <cstddef>
#include <cstdint>
#include <string>

#include "kovra.hpp"
#include "kvxsetmedia.h"
#include "support/composed.hpp"
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  drive(*narrowText(data, size).get(), static_cast<int>(size));
  composeAgain(data, size, "media", [](Value const& record) { return composeMedia(record); });
  return 0;
}
