/// @file
/// The document output: a tree in, text for the host out, and the debugging copy beside it. No
/// writer prints by itself.

#ifndef KOVRA_FRAME_OUTPUT_HPP
#define KOVRA_FRAME_OUTPUT_HPP

#include <tinyxml.h>

#include <string>

namespace Kovra::frame {

/// Links the declaration (version 1.0, encoding UTF-8) and a new root element behind whatever
/// `document` holds already, and returns the root. The document owns it.
TiXmlElement* beginDocument(TiXmlDocument& document, char const* root);

/// Prints `document` with an indent of four blanks, wipes that text (any may hold a key), and
/// converts it into `out`, at most `length` wide characters; a terminator is written only where
/// there is room for it. Where a character cannot be converted in the process's locale the output
/// ends, with a terminator if there is room. False, with `out` untouched, when `out` is null or
/// printing fails.
bool printWide(TiXmlDocument const& document, wchar_t* out, int length);

/// Prints `document` in the same way and copies it with its terminator into `out`, which takes
/// `length` characters. A document that does not fit leaves an empty text (when `length` is at
/// least 1), and the result is false. False, with `out` untouched, when `out` is null or printing
/// fails.
bool printNarrow(TiXmlDocument const& document, char* out, int length);

/// Saves `document` at `path` for people who debug a host, whole or not at all: as a new file
/// beside it, with mode 0600, that is then renamed over it. Nothing is written when anything stands
/// there but a regular file of the calling user that has no other name; an earlier copy stays when
/// the new one cannot be written, and the process's limit on the size of files never ends the host.
/// Built without KOVRA_DEBUG_COPIES it does nothing.
void saveDebugCopy(TiXmlDocument const& document, char const* path);

/// Saves `document` to a file that the host names; false for a null path or when saving fails.
bool saveTo(TiXmlDocument const& document, char const* path);

}  // namespace Kovra::frame

#endif
