// What the library is measured against: readers that a host would write by hand over another
// parser, from the same texts into the same records. Each library has a file of its own here.

#ifndef KOVRA_BENCH_READERS_HPP
#define KOVRA_BENCH_READERS_HPP

#include <cstddef>
#include <string_view>

#include "kvxmediarecords.h"
#include "kvxstatusrecords.h"
#include "kvxwirelessrecords.h"

namespace kovra_bench {

/// One element of a configuration that holds a value.
struct Setting {
  char text[64];  ///< the text where it is no number
  double value;   ///< otherwise the number
  double min;     ///< the attribute's number
  double max;
};

/// All of them, in document order.
struct Settings {
  std::size_t count;
  Setting entries[512];
};

/// The readers over one library. Wide texts are converted in the process's locale, as the library's
/// entries do it; texts that an entry takes narrow are narrow here too. All are false, and say
/// nothing of the record, for a text that is not well-formed or has another root.
struct Reader {
  char const* library;
  bool (*generalStatus)(std::wstring_view text, Kovra::KVGeneralStatus& out);
  bool (*accessPoints)(std::wstring_view text, Kovra::_tagAccessPoints& out);
  /// The list of cards; its entries belong to the record.
  bool (*cards)(std::string_view text, Kovra::_KVMediaInfo& out);
  /// Not a full reading, which would take a thousand lines: a walk that looks at every element and
  /// converts all that a full one would convert, but compares no name.
  bool (*configuration)(std::string_view text, Settings& out);
};

extern Reader const readerOverTinyxml;
extern Reader const readerOverPugixml;
extern Reader const readerOverTinyxml2;
extern Reader const readerOverExpat;
extern Reader const readerOverLibxml2;

inline constexpr Reader const* readersByHand[] = {&readerOverTinyxml, &readerOverPugixml,
                                                  &readerOverTinyxml2, &readerOverExpat,
                                                  &readerOverLibxml2};

}  // namespace kovra_bench

#endif
