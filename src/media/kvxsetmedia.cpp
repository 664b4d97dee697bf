#include "kvxsetmedia.h"

#include "frame/output.hpp"
#include "media/media_tables.hpp"

namespace Kovra {

namespace {

using namespace media;

template <class Record, std::size_t N>
bool writeInto(TiXmlElement* element, char const* name, Table<Record, N> const& table,
               Record const& record, Circumstances circumstances = 0) {
  return element != nullptr && writeBelow(*element, name, table, record, circumstances);
}

}  // namespace

KVXSetMedia::KVXSetMedia() = default;
KVXSetMedia::~KVXSetMedia() = default;

bool KVXSetMedia::SetMedia(_KVMediaInfo& media, wchar_t* out, int outLen, char allTypes,
                           bool omit) {
  omitTransfer = omit;
  root = beginDocument(*this, mediaRoots[0]);
  addMedia(media, allTypes);  // without a card the document is printed all the same
  return saveJob(out, outLen);
}

bool KVXSetMedia::saveJob(wchar_t* out, int outLen) {
  return printWide(*this, out, outLen);
}

bool KVXSetMedia::saveJob(char* path) {
  return saveTo(*this, path);
}

bool KVXSetMedia::addMedia(_KVMediaInfo& media, char allTypes) {
  if (root == nullptr) return false;
  TreeSink sink(*root);
  return writeCards(sink, media, allTypes == 1, omitTransfer);
}

bool KVXSetMedia::addCardInfo(TiXmlElement* cards, _CardInfo info) {
  return writeInto(cards, cardList.item.data(), card, info,
                   omitTransfer ? 0 : Circumstances{withTransfer});
}

bool KVXSetMedia::addCardInformation(TiXmlElement* element, _CardInfo const& info) {
  return writeInto(element, informationName, information, info);
}

bool KVXSetMedia::addTransferTemps(TiXmlElement* element, _TransferTempInfo const& temps) {
  return writeInto(element, transferTempsName, transferTemps, temps);
}

bool KVXSetMedia::addTransferSpeeds(TiXmlElement* element, _TransferSpeedInfo const& speeds) {
  return writeInto(element, transferSpeedsName, transferSpeeds, speeds);
}

bool KVXSetMedia::addLaminationAdjustments(TiXmlElement* element,
                                           _LaminationAdjustmentsNew const& settings) {
  return writeInto(element, adjustmentsName, adjustments, settings);
}

}  // namespace Kovra
