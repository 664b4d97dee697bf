/// @file
/// The writer of card definitions.

#ifndef KVXSETMEDIA_H
#define KVXSETMEDIA_H

#include "kovra_base.h"
#include "kvxhelper.h"
#include "kvxmediaparser.h"  // GetKVMedia and its companions: a host that only writes needs them, too
#include "kvxmediarecords.h"

namespace Kovra {

/// Composes a media document from the cards of a record; films, ribbons and laminates are never
/// written. The writer is itself the document, and it is never cleared: a further call appends a
/// further declaration and root, so a host takes a fresh writer for each document. One writer is
/// used by one thread at a time. The record is not changed.
///
/// Decimals are written with the point of LC_NUMERIC, which is a comma under some locales while the
/// printer takes "." alone: a host calls setlocale(LC_CTYPE, ""), not LC_ALL.
///
/// The operations that add elements (add...) take the parent and add their own element below it.
/// Their result is whether the last tag below that could be added; false for a null parent.
class KOVRA_EXPORT KVXSetMedia : public TiXmlDocument {
 public:
  TiXmlElement* root = nullptr;  ///< the root that SetMedia made last; owned by the document
  bool omitTransfer = false;     ///< the last argument of SetMedia: no transfer settings

  KVXSetMedia();
  ~KVXSetMedia() override;
  KVXSetMedia(KVXSetMedia const&) = delete;
  KVXSetMedia& operator=(KVXSetMedia const&) = delete;

  /// Links a declaration and a root "media", adds the cards with addMedia, and returns
  /// saveJob(out, outLen), whatever was added. 4096 wide characters for each card and one time more
  /// hold any document; convention 8 of kvxhelper.h says how one that was cut is seen.
  bool SetMedia(_KVMediaInfo& media, wchar_t* out, int outLen, char allTypes, bool omitTransfer);

  /// Prints the document with an indent of four blanks and converts it into @p out, at most
  /// @p outLen wide characters; the terminator is written only where there is room for it. False,
  /// with nothing written, for a null @p out. No debugging copy is left.
  bool saveJob(wchar_t* out, int outLen);

  /// Saves the document to a file; false for a null path or when it cannot be saved.
  bool saveJob(char* path);

  /// Adds "cards" below `root`, and in it the cards in their order: all of them when @p allTypes is
  /// 1, otherwise those of the types 0 and 1 only. The result is that of the last card written;
  /// false when there was none.
  bool addMedia(_KVMediaInfo& media, char allTypes);

  /// Adds a whole "card". Its transfer settings are left out when `omitTransfer` is set. The result
  /// is that of "cal_table".
  bool addCardInfo(TiXmlElement* cards, _CardInfo card);

  /// Adds "information". A coercivity that has no word is written as "none".
  bool addCardInformation(TiXmlElement* card, _CardInfo const& info);
  bool addTransferTemps(TiXmlElement* card, _TransferTempInfo const& temps);
  bool addTransferSpeeds(TiXmlElement* card, _TransferSpeedInfo const& speeds);
  bool addLaminationAdjustments(TiXmlElement* card, _LaminationAdjustmentsNew const& adjustments);

  /// The same on a path that can only be read.
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool saveJob(Text const& path) {
    return saveJob(detail::borrowed(path));
  }
};

}  // namespace Kovra

#endif
