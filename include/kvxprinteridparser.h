/// @file
/// The reader of a printer's identity.

#ifndef KVXPRINTERIDPARSER_H
#define KVXPRINTERIDPARSER_H

#include "kovra_base.h"
#include "kvxprinterrecords.h"

namespace Kovra {

/// Reads a printer's identity into a record. The object is itself a document, which is empty after
/// a reading; its Error() and the like tell what was wrong with a malformed text. Any number of
/// threads may read, each with an object of its own.
class KOVRA_EXPORT KVXPrinterIDParser : public TiXmlDocument {
 public:
  KVXPrinterIDParser();
  ~KVXPrinterIDParser() override;

  /// Reads an identity, root "printer_id". @p text is terminated; @p len is not looked at. The
  /// result is that of parsePrinterInfo; false, with the record untouched, for a null text, for one
  /// that is malformed or could harm the parser (elements nested deeper than 128, more than 256
  /// attributes on one element), and for another root.
  bool ParsePrinterInfo(char const* text, int len, KVPrinterInfo& out);

  /// Reads the children of an identity; those that it does not know are skipped, and members whose
  /// element is missing stay as they were. A serial number that is no number leaves its member,
  /// too, but counts as read. The result is whether the last known child could be read; false when
  /// there was none, or no root.
  bool parsePrinterInfo(TiXmlElement* root, KVPrinterInfo& out);
};

}  // namespace Kovra

#endif
