/// @file
/// Conversions of an element's text, or of an attribute's value, into a value: as KVXHelper makes
/// them for hosts, and as every reading makes them. Each answers false for a null text, with
/// nothing stored.

#ifndef KOVRA_FRAME_CONVERT_HPP
#define KOVRA_FRAME_CONVERT_HPP

#include <cstddef>

namespace Kovra::frame {

/// Decimal numbers as strtol() and strtod() read them in the process's locale, in as many low bits
/// as the target has. A text that is no number gives 0.
bool convertNumber(char const* text, int& out);
bool convertNumber(char const* text, unsigned short& out);
bool convertNumber(char const* text, unsigned int& out);
bool convertNumber(char const* text, long& out);
bool convertNumber(char const* text, float& out);
/// The printer's counters are 16 bits wide for every host, though the target is not.
bool convertNumber(char const* text, unsigned long& out);

/// A hexadecimal number with a mandatory "0x", as sscanf() reads "0x%x" from the first 31
/// characters. A text without it counts as read and stores nothing.
bool convertHexadecimal(char const* text, unsigned int& out);

/// A bound in an attribute, as sscanf() reads it: false, with nothing stored, also for a text that
/// begins with no number.
bool convertBound(char const* text, int& out);
bool convertBound(char const* text, float& out);

/// 1 for "enabled" and "yes", 0 for anything else.
bool convertFlag(char const* text, char& out);
/// The same, and false without a text, too: deliberately this form always stores.
bool convertFlag(char const* text, bool& out);

/// As much of the text as fits before a terminator; false, too, when not even that does.
bool convertText(char const* text, char* out, int capacity);

/// Six hexadecimal bytes with colons between them. Those that the text lacks are 0.
bool convertAddress(char const* text, unsigned char* out);

}  // namespace Kovra::frame

#endif
