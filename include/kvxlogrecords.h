/// @file
/// The records of the printer's logs. The host owns them; a reader fills members in place and
/// leaves those alone whose element the reply lacks. All codes are the printer's.

#ifndef KVXLOGRECORDS_H
#define KVXLOGRECORDS_H

namespace Kovra {

/// One service event: an element "service".
struct _tagLogServiceValues {
  int number;      ///< 'number', sequence number
  int code;        ///< 'code'
  int year;        ///< 'year'
  int month;       ///< 'month'
  int day;         ///< never read, since the reply has no day: keeps the host's value
  int card_count;  ///< 'card_count', the card counter at the event
};

/// The service history: root "get_log_service_history". A host reads the reply twice: with a null
/// array, which tells it the count; then with an array of at least that many entries.
struct _tagLogServiceXML {
  int count;                      ///< asked for with a null array, else the array's room
  _tagLogServiceValues* entries;  ///< the host's array, or null to ask for the count
};

/// One cleaning: an element "cleaning". Root "get_log_cleaning_history" has up to 32 of them.
struct _tagCleaningLogEntry {
  int number;  ///< 'number'
  int cards;   ///< 'cards', the card count that the printer reports for the cleaning
  int type;    ///< 'type'
};

}  // namespace Kovra

#endif
