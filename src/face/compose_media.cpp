#include "frame/output.hpp"
#include "kovra.hpp"
#include "kvxsetmedia.h"
#include "media/media_tables.hpp"

namespace Kovra {

Composition composeMedia(Value const& record, MediaChoice const& choice) {
  Composition composition;
  media::OwnedMedia const media = media::makeMedia();
  if (frame::typed::assignAll(media::catalogue, *media, record, composition.problem) ==
      frame::Assigned::failed) {
    return composition;
  }
  KVXSetMedia document;
  document.omitTransfer = choice.withoutTransfer;
  document.root = frame::beginDocument(document, media::mediaRoots[0]);
  document.addMedia(*media, choice.allTypes ? 1 : 0);
  composition.text = frame::printNarrow(document);
  composition.composed = true;
  return composition;
}

}  // namespace Kovra
