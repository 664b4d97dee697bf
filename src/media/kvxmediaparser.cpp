#include "kvxmediaparser.h"

#include "frame/message.hpp"
#include "media/media_tables.hpp"

namespace Kovra {

namespace {

using namespace media;

bool readHostList(TiXmlElement const* element, List const& list, _KVMediaInfo& out) {
  if (element == nullptr) return false;
  HostTree const tree(element);
  return readList(list, tree.root(), out, Watch());
}

bool readHostEntry(TiXmlElement const* element, List const& list, _KVMediaInfo& out) {
  if (element == nullptr) return false;
  HostTree const tree(element);
  return readAppended(list, tree.root(), out, Watch());
}

template <class Entry>
void freeEntries(std::vector<Entry*> const* entries) {
  if (entries == nullptr) return;
  for (Entry const* const entry : *entries) delete entry;
}

}  // namespace

// The life of a record.

_KVMediaInfo* GetKVMedia() {
  return new _KVMediaInfo{};
}

void BuildKVMedia(_KVMediaInfo* media) {
  if (media == nullptr) return;
  // All four or none: what was made before memory ran out must not be lost.
  auto cards = std::make_unique<std::vector<_CardInfo*>>();
  auto films = std::make_unique<std::vector<_MediaRibbonInfo*>>();
  auto ribbons = std::make_unique<std::vector<_MediaRibbonInfo*>>();
  auto laminates = std::make_unique<std::vector<_MediaRibbonInfo*>>();
  *media = {cards.release(), films.release(), ribbons.release(), laminates.release()};
}

void DestroyKVMedia(_KVMediaInfo* media) {
  if (media == nullptr) return;
  freeEntries(media->cards);
  freeEntries(media->films);
  freeEntries(media->ribbons);
  freeEntries(media->laminates);
  delete media->cards;
  delete media->films;
  delete media->ribbons;
  delete media->laminates;
  delete media;
}

// The reader.

KVXMediaParser::KVXMediaParser() = default;
KVXMediaParser::~KVXMediaParser() = default;

bool KVXMediaParser::GetMedia(char const& text, int, _KVMediaInfo& out) {
  // Hosts look at the lists alone: the result is false whatever happened.
  static_cast<void>(readNarrowReply(&text, mediaRoots, catalogue, out));
  return false;
}

bool KVXMediaParser::parseMedia(TiXmlElement* root, _KVMediaInfo& out) {
  return walk(root, catalogue, out);
}

bool KVXMediaParser::getCardsInfo(TiXmlElement* cards, _KVMediaInfo& out) {
  return readHostList(cards, cardList, out);
}

bool KVXMediaParser::getFilmsInfo(TiXmlElement* films, _KVMediaInfo& out) {
  return readHostList(films, filmList, out);
}

bool KVXMediaParser::getRibbonsInfo(TiXmlElement* ribbons, _KVMediaInfo& out) {
  return readHostList(ribbons, laminateList, out);
}

bool KVXMediaParser::getLaminatesInfo(TiXmlElement* laminates, _KVMediaInfo& out) {
  return readHostList(laminates, laminateList, out);
}

bool KVXMediaParser::getCardInfo(TiXmlElement* element, _KVMediaInfo& out) {
  return readHostEntry(element, cardList, out);
}

bool KVXMediaParser::getFilmInfo(TiXmlElement* film, _KVMediaInfo& out) {
  return readHostEntry(film, filmList, out);
}

bool KVXMediaParser::getRibbonInfo(TiXmlElement* element, _KVMediaInfo& out) {
  return readHostEntry(element, ribbonList, out);
}

bool KVXMediaParser::getLaminateInfo(TiXmlElement* laminate, _KVMediaInfo& out) {
  return readHostEntry(laminate, laminateList, out);
}

bool KVXMediaParser::getCardInformation(TiXmlElement* element, _CardInfo& out) {
  return walk(element, information, out);
}

bool KVXMediaParser::getTransferTemp(TiXmlElement* temps, _TransferTempInfo& out) {
  return walk(temps, transferTemps, out);
}

bool KVXMediaParser::getTransferSpeed(TiXmlElement* speeds, _TransferSpeedInfo& out) {
  return walk(speeds, transferSpeeds, out);
}

bool KVXMediaParser::getLaminationAdjustments(TiXmlElement* element,
                                              _LaminationAdjustmentsNew& out) {
  return walk(element, adjustments, out);
}

}  // namespace Kovra
