/// @file
/// The reader of the printer's logs.

#ifndef KVXLOGPARSER_H
#define KVXLOGPARSER_H

#include "kovra_base.h"
#include "kvxlogrecords.h"

namespace Kovra {

/// Reads the service history and the cleaning history. It holds no state: any number of threads may
/// read different records at once.
///
/// The entries (Parse...) take a reply as wide text: a reference to its first character and its
/// length in characters, which is also the most bytes that its narrow form may have in the
/// process's character set (LC_CTYPE); a longer text is cut, and a cut one is refused. A host whose
/// text is terminated passes `reply.size() * MB_CUR_MAX`, and calls setlocale(LC_CTYPE, ""), not
/// LC_ALL, which may make the points in numbers commas. They return false, with the record
/// untouched, for a length of 0, for a text that is not well-formed or that could harm the parser
/// (elements nested deeper than 128, more than 256 attributes on one element), and for another
/// root.
///
/// The element readers take an element of the host's own tree; for a null element they return false
/// and touch nothing.
class KOVRA_EXPORT KVXLogParser {
 public:
  KVXLogParser();
  ~KVXLogParser();

  /// Reads the service history, root "get_log_service_history". The result is that of
  /// parseServiceHistoryValues.
  bool ParseLogServiceXML(wchar_t const& text, unsigned long len, _tagLogServiceXML& out);

  /// With a null array, stores the number of child elements, whatever their names, in `count` and
  /// returns true. Otherwise reads the children "service" into the array's first entries, at most
  /// `count` of them, and leaves `count` as it is; the result is that of the last entry read, false
  /// when there was none.
  bool parseServiceHistoryValues(TiXmlElement* root, _tagLogServiceXML& out);

  /// Reads the numbers below one "service". The result is whether the last known one has a text;
  /// false when none is known.
  bool getServiceValues(TiXmlElement* service, _tagLogServiceValues& out);

  /// Reads the cleaning history, root "get_log_cleaning_history". The result is that of
  /// getCleaningLogValues.
  bool ParseCleaningLog(wchar_t const& text, unsigned long len, _tagCleaningLogEntry (&out)[32]);

  /// Reads the first 32 children "cleaning" into the array's first entries; further ones are
  /// skipped, and entries behind the last one read stay as they are. The result is that of the last
  /// entry read, false when there was none.
  bool getCleaningLogValues(TiXmlElement* root, _tagCleaningLogEntry (&out)[32]);

  /// Reads the numbers below one "cleaning". The result is whether the last known one has a text;
  /// false when none is known.
  bool getCleaningLogEntry(TiXmlElement* cleaning, _tagCleaningLogEntry& out);
};

}  // namespace Kovra

#endif
