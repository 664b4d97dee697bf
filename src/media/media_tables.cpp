#include "media/media_tables.hpp"

namespace Kovra::media {

namespace {

List const& listIn(Row const& row) {
  return static_cast<List const&>(*static_cast<Entries const*>(row.with));
}

bool readRowOfList(Row const& row, Element element, void* place, Watch const& watch) {
  return readList(listIn(row), element, *static_cast<_KVMediaInfo*>(place), watch);
}

Assigned assignRowOfList(Row const& row, void* place, std::string_view member, Value const& value,
                         Problems& problems) {
  if (member != row.member) return Assigned::notMine;
  return assignList(listIn(row), value, problems, [&](std::size_t) {
    return listIn(row).append(*static_cast<_KVMediaInfo*>(place));
  });
}

void outlineRowOfList(Row const& row, Outline& outline) {
  outlineEntries(listIn(row), outline);
}

/// Cards of the types 0 and 1. A negative type counts as a large one.
bool isCommon(_CardInfo const& info) {
  return static_cast<unsigned int>(info.type) <= 1;
}

}  // namespace

constinit Kind const ownedListKind = {Shape::list,     readRowOfList, nullptr,
                                      assignRowOfList, nullptr,       outlineRowOfList};

bool readList(List const& list, Element element, _KVMediaInfo& media, Watch const& watch) {
  remark(watch, [&](Observer& observer) { observer.list(list.member); });
  return walkEntries(element, list.item,
                     [&](Element child, bool) { return readAppended(list, child, media, watch); });
}

bool readAppended(List const& list, Element element, _KVMediaInfo& media, Watch const& watch) {
  if (!list.isThere(media)) return false;
  std::size_t const index = list.length(media);
  return readEntry(element, list, list.append(media), list.member, index, watch);
}

namespace {

bool writeTheCards(Sink& sink, _KVMediaInfo const& media, bool allTypes, bool omitsTransfer) {
  bool result = false;
  sink.open(cardsName);
  for (std::size_t i = 0; media.cards != nullptr && i < media.cards->size(); ++i) {
    _CardInfo const* const info = (*media.cards)[i];
    if (info == nullptr || !(allTypes || isCommon(*info))) continue;
    result = writeEntry(sink, cardList, info, i, omitsTransfer ? 0 : Circumstances{withTransfer});
  }
  sink.close(cardsName);
  return result;
}

}  // namespace

bool writeCards(Sink& sink, _KVMediaInfo const& media, bool allTypes, bool omitsTransfer) {
  static constexpr auto cards = list<cardList>(cardsName);
  return writeWatched(sink, cards.row(),
                      [&] { return writeTheCards(sink, media, allTypes, omitsTransfer); });
}

}  // namespace Kovra::media
