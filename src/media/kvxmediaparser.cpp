#include "kvxmediaparser.h"

#include "frame/typed/reply.hpp"
#include "media/media_replies.hpp"
#include "media/media_tables.hpp"

namespace Kovra {

namespace {

using namespace media;

using MediaReading = TableReading<catalogue>;

/// The result is that of the entry, which hosts do not look at.
bool decodeMedia(Element root, Observer& observer) {
  OwnedMedia const media = makeMedia();
  MediaReading::read(root, *media, observer);
  return false;
}

constexpr ReplyReader replies[] = {
    {"media", "cards, films and laminates that the printer knows", mediaRoots, decodeMedia,
     MediaReading::outline},
};

template <class List>
bool readEntry(TiXmlElement* entry, _KVMediaInfo& media) {
  if (entry == nullptr) return false;
  Watch const nobody;
  HostTree const tree(entry);
  return List::readEntry(tree.root(), media, nobody);
}

template <class Entry>
void freeEntries(std::vector<Entry*> const* entries) {
  if (entries == nullptr) return;
  for (Entry const* const entry : *entries) delete entry;
}

}  // namespace

std::span<frame::ReplyReader const> mediaReplies() {
  return replies;
}

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

void media::Destroy::operator()(_KVMediaInfo* record) const {
  DestroyKVMedia(record);
}

OwnedMedia media::makeMedia() {
  OwnedMedia record(GetKVMedia());
  BuildKVMedia(record.get());
  return record;
}

// The reader.

KVXMediaParser::KVXMediaParser() = default;
KVXMediaParser::~KVXMediaParser() = default;

bool KVXMediaParser::GetMedia(char const& text, int, _KVMediaInfo& media) {
  // Hosts look at the lists alone: the result is false whatever happened.
  static_cast<void>(readNarrowReply<MediaReading>(&text, mediaRoots, media));
  return false;
}

bool KVXMediaParser::parseMedia(TiXmlElement* root, _KVMediaInfo& media) {
  return walk(root, catalogue, media);
}

bool KVXMediaParser::getCardsInfo(TiXmlElement* cards, _KVMediaInfo& media) {
  return readHost<Cards>(cards, media);
}

bool KVXMediaParser::getFilmsInfo(TiXmlElement* films, _KVMediaInfo& media) {
  return readHost<Films>(films, media);
}

bool KVXMediaParser::getRibbonsInfo(TiXmlElement* ribbons, _KVMediaInfo& media) {
  return readHost<Laminates>(ribbons, media);
}

bool KVXMediaParser::getLaminatesInfo(TiXmlElement* laminates, _KVMediaInfo& media) {
  return readHost<Laminates>(laminates, media);
}

bool KVXMediaParser::getCardInfo(TiXmlElement* element, _KVMediaInfo& media) {
  return readEntry<Cards>(element, media);
}

bool KVXMediaParser::getFilmInfo(TiXmlElement* film, _KVMediaInfo& media) {
  return readEntry<Films>(film, media);
}

bool KVXMediaParser::getRibbonInfo(TiXmlElement* element, _KVMediaInfo& media) {
  return readEntry<Ribbons>(element, media);
}

bool KVXMediaParser::getLaminateInfo(TiXmlElement* laminate, _KVMediaInfo& media) {
  return readEntry<Laminates>(laminate, media);
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
