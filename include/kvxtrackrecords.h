/// @file
/// The record of a magnetic-stripe read.

#ifndef KVXTRACKRECORDS_H
#define KVXTRACKRECORDS_H

namespace Kovra {

/// What stands on a card's magnetic stripe, in the printer's encoding of the characters: the
/// children of "mag" in root "data". A track holds at most 255 characters; what is longer is cut.
/// The host owns it and clears it before reading.
struct __GETTRACK {
  char track1[256];  ///< 'track1'
  char track2[256];  ///< 'track2'
  char track3[256];  ///< 'track3'
};

}  // namespace Kovra

#endif
