/// @file
/// What an observer has to say of a reading: something that was lost or changed on the way.

#ifndef KOVRA_FRAME_REMARKS_HPP
#define KOVRA_FRAME_REMARKS_HPP

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/vocabulary.hpp"

namespace Kovra::frame {

/// What kind of thing it is. The face has a row of words for each.
enum class Remarked : std::uint8_t {
  unknownElement,   ///< no row names it: skipped with all in it
  unreadAttribute,  ///< no row reads it
  unreadText,       ///< no row reads it
  repeatedElement,  ///< what an earlier one said was overwritten
  alteredText,      ///< decoding dropped or changed a part of it
  replacedBytes,    ///< they are no character of the text's encoding
  condensedBlanks,  ///< several blanks became one
  textBehind,       ///< the document had ended
  skippedText,      ///< it stood before the document
  cutText,          ///< longer than its member
  changedNumber,    ///< its member cannot hold it
  notANumber,       ///< it is none of the expected form
  unknownWord,      ///< the vocabulary lacks it
  otherSpelling,    ///< a word, but not as the vocabulary spells it
  emptyElement,     ///< without text or children: not read
  noAttribute,      ///< without one that is read
  surplusEntries,   ///< the record's own array is full: skipped
  unlisted,         ///< there are more remarks than are kept
};

struct Remark {
  Remarked what = Remarked::unknownElement;
  std::uint32_t index = 0;            ///< of the element
  std::string found;                  ///< empty for a secret
  std::string kept;                   ///< what the record holds instead; empty for a secret
  std::string earlier;                ///< the name of the element that was overwritten, if another
  Vocabulary const* words = nullptr;  ///< what would have been right,
  std::vector<std::string> expected;  ///< or in other words
  std::size_t count = 1;
};

}  // namespace Kovra::frame

#endif
