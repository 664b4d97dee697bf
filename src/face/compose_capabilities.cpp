#include "caps/caps_room.hpp"
#include "frame/output.hpp"
#include "kovra.hpp"
#include "kvxsetcaps.h"

namespace Kovra {

namespace {

int modeOf(CapabilitiesChoice::Part part) {
  switch (part) {
    case CapabilitiesChoice::Part::all:
      return 0;
    case CapabilitiesChoice::Part::magEncoder:
      return 1;
    case CapabilitiesChoice::Part::internalEncoder:
      return 2;
  }
  return 0;
}

}  // namespace

Composition composeCapabilities(Value const& record, CapabilitiesChoice const& choice) {
  Composition composition;
  caps::Room room;
  if (room.assign(record, composition.problem) == frame::Assigned::failed) return composition;
  KVXSetCaps document;
  document.directToCard = choice.directToCard;
  TiXmlElement* const root = frame::beginDocument(document, caps::capabilitiesRoots[0]);
  document.addCapabilities(root, room.record(), modeOf(choice.part));
  composition.text = frame::printNarrow(document);
  composition.composed = true;
  return composition;
}

}  // namespace Kovra
