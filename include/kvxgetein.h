/// @file
/// The reader of a magnetic-stripe read.

#ifndef KVXGETEIN_H
#define KVXGETEIN_H

#include "kovra_base.h"
#include "kvxtrackrecords.h"

namespace Kovra {

/// Reads the result of a magnetic-stripe read. It holds no state: any number of threads may read
/// different records at once.
///
/// The element readers take an element of the host's own tree. They visit its children in order and
/// skip those that they do not know; a repeated one is read again. Their result is that of the last
/// known child; false when there was none, or for a null element.
class KOVRA_EXPORT KVXGetEIN {
 public:
  KVXGetEIN();
  ~KVXGetEIN();

  /// Reads the tracks, root "data". The text is narrow: a reference to the first character of a
  /// terminated text. Its length is not used and may be anything. The result is that of parseMag.
  /// False, with the record untouched, for a text that is not well-formed or that could harm the
  /// parser (elements nested deeper than 128, more than 256 attributes on one element), and for
  /// another root.
  bool GetMagneticTracks(char const& text, int len, __GETTRACK& out);

  /// Reads every child "mag" with parseTrack: a later one overwrites the tracks that it names.
  bool parseMag(TiXmlElement* root, __GETTRACK& out);

  /// Reads the children "track1", "track2" and "track3". An empty track keeps its member, and gives
  /// false when it is the last.
  bool parseTrack(TiXmlElement* mag, __GETTRACK& out);
};

}  // namespace Kovra

#endif
