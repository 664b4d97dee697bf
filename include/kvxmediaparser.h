/// @file
/// The reader of a printer's media catalogue, and the life of its record.

#ifndef KVXMEDIAPARSER_H
#define KVXMEDIAPARSER_H

#include "kovra_base.h"
#include "kvxhelper.h"
#include "kvxmediarecords.h"

namespace Kovra {

/// A new record without lists, for BuildKVMedia. The host owns it until DestroyKVMedia.
KOVRA_EXPORT _KVMediaInfo* GetKVMedia();

/// Gives the record four new, empty lists. Lists that it had are not freed: this is called once for
/// each record. When memory runs out the record stays as it was. A null record is left alone.
KOVRA_EXPORT void BuildKVMedia(_KVMediaInfo* media);

/// Frees all entries, the lists and the record, which may be null or without lists.
KOVRA_EXPORT void DestroyKVMedia(_KVMediaInfo* media);

/// Reads media catalogues into records. It holds no state: any number of threads may read different
/// records at once.
///
/// Readings only append: a second one adds its entries behind the first one's. A list that the
/// record lacks takes no entries. When memory runs out the exception passes through; the entries
/// that were complete stay, the one in the making is freed, and the record can be used and
/// destroyed as before.
///
/// Decimals have the point of LC_NUMERIC, which is a comma under some locales while the printer's
/// is not: a host calls setlocale(LC_CTYPE, ""), not LC_ALL.
///
/// The readers of elements visit the children in order, read those that they know, by exact name,
/// and skip the others. Their result is whether the last known child could be read: false after an
/// empty one, though earlier members were filled, and false when there was none, or for a null
/// element.
class KOVRA_EXPORT KVXMediaParser {
 public:
  KVXMediaParser();
  ~KVXMediaParser();

  /// Reads a media catalogue, root "media", with parseMedia. @p text is the first character of a
  /// terminated narrow text; @p len is not used.
  ///
  /// Deliberately the result is always false, also after a complete reading: the lists alone tell
  /// what was read. Nothing is appended for a text that is not well-formed or that could harm the
  /// parser (elements nested deeper than 128, more than 256 attributes on one element), and for
  /// another root.
  bool GetMedia(char const& text, int len, _KVMediaInfo& media);

  /// Reads the children "cards", "films", "ribbons" and "laminates" of the root.
  bool parseMedia(TiXmlElement* root, _KVMediaInfo& media);

  /// @name Lists
  /// Each reads the children that it names; its result is that of the last of them.
  /// @{
  /// Children "card", with getCardInfo.
  bool getCardsInfo(TiXmlElement* cards, _KVMediaInfo& media);
  /// Children "film", with getFilmInfo.
  bool getFilmsInfo(TiXmlElement* films, _KVMediaInfo& media);
  /// Deliberately the same as getLaminatesInfo: children "ribbon" are skipped, and children
  /// "laminate" become laminates.
  bool getRibbonsInfo(TiXmlElement* ribbons, _KVMediaInfo& media);
  /// Children "laminate", with getLaminateInfo.
  bool getLaminatesInfo(TiXmlElement* laminates, _KVMediaInfo& media);
  /// @}

  /// @name Entries
  /// Each appends one entry, cleared before it is read, also for an element without children (then
  /// the result is false). For a null element, or when the record lacks the list, nothing is
  /// appended.
  /// @{
  bool getCardInfo(TiXmlElement* card, _KVMediaInfo& media);
  bool getFilmInfo(TiXmlElement* film, _KVMediaInfo& media);
  /// Appends to `ribbons`, as no reading of a catalogue does.
  bool getRibbonInfo(TiXmlElement* ribbon, _KVMediaInfo& media);
  bool getLaminateInfo(TiXmlElement* laminate, _KVMediaInfo& media);
  /// @}

  /// @name Parts of a card
  /// Of a bounded setting only the value is read, from the element's text; its bounds stay.
  /// @{
  /// Each of "mag_stripe", "contact_encode" and "non_contact_encode" changes only its own bit.
  /// An empty "coercivity" stores 0, as an unknown word does, and counts as not read.
  bool getCardInformation(TiXmlElement* information, _CardInfo& card);
  bool getTransferTemp(TiXmlElement* temps, _TransferTempInfo& out);
  bool getTransferSpeed(TiXmlElement* speeds, _TransferSpeedInfo& out);
  bool getLaminationAdjustments(TiXmlElement* adjustments, _LaminationAdjustmentsNew& out);
  /// @}
};

}  // namespace Kovra

#endif
