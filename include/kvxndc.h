/// @file
/// The reader of laminator responses.

#ifndef KVXNDC_H
#define KVXNDC_H

#include "kovra_base.h"

namespace Kovra {

/// Reads the raw response to a laminator command. It holds no state: any number of threads may read
/// at once.
class KOVRA_EXPORT KVXNDC {
 public:
  KVXNDC();
  ~KVXNDC();

  /// Copies the text of the root "lam_ndc_rsp", the laminator's own answer, into the host's buffer
  /// of 512 characters: at most 511 characters and a terminator, what lies behind is left alone.
  ///
  /// The reply is wide text: a reference to its first character and its length in characters, which
  /// is also the most bytes that its narrow form may have in the process's character set
  /// (LC_CTYPE); a longer text is cut, and a cut one is refused. A host whose text is terminated
  /// passes `reply.size() * MB_CUR_MAX`, and calls setlocale(LC_CTYPE, ""), not LC_ALL, which may
  /// make the points in numbers commas. False, with the buffer untouched, for a null buffer, for a
  /// root without text, for a length below 1, for a text that is not well-formed or that could harm
  /// the parser (elements nested deeper than 128, more than 256 attributes on one element), and for
  /// another root.
  bool GetLaminatorResponse(wchar_t const& text, int len, char* out);
};

}  // namespace Kovra

#endif
