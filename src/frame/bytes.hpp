/// @file
/// The loops over a text's bytes in which a scan spends its time: each as it reads plainly, and in
/// blocks of 16 bytes where the processor has them. Both give the same; a test compares them.

#ifndef KOVRA_FRAME_BYTES_HPP
#define KOVRA_FRAME_BYTES_HPP

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Kovra::frame {

/// How many bytes behind a text have to be readable for those who read blocks.
inline constexpr std::size_t blockSize = 16;

/// How often a text has the marks that nodes and attributes are made with.
struct Marks {
  std::size_t opening = 0;  ///< `<`
  std::size_t closing = 0;  ///< `>`
  std::size_t equals = 0;   ///< `=`

  bool operator==(Marks const&) const = default;
};

namespace plain {

/// What a name may go on with. TinyXML asks the locale for letters only below 127, where all
/// locales agree; from DEL on, every byte is a letter to it.
inline constexpr auto isInName = [] {
  std::array<bool, 256> in{};
  for (std::size_t byte = 0; byte < in.size(); ++byte) {
    bool const letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
    bool const digit = byte >= '0' && byte <= '9';
    bool const sign = byte == '_' || byte == '-' || byte == '.' || byte == ':';
    in[byte] = letter || digit || sign || byte >= 127;
  }
  return in;
}();

inline char* endOfName(char* p) {
  while (isInName[static_cast<unsigned char>(*p)]) ++p;
  return p;
}

inline char* findStop(char* p, char stop, signed char least) {
  while (static_cast<signed char>(*p) >= least && *p != stop && *p != '&') ++p;
  return p;
}

inline bool sameBytes(char const* a, char const* b, std::size_t length) {
  return std::memcmp(a, b, length) == 0;
}

inline bool isBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

inline char* endOfBlanks(char* p) {
  while (isBlank(*p)) ++p;
  return p;
}

inline Marks countMarks(std::string_view text) {
  Marks marks;
  for (char const byte : text) {
    marks.opening += byte == '<';
    marks.closing += byte == '>';
    marks.equals += byte == '=';
  }
  return marks;
}

inline std::size_t narrowAscii(wchar_t const* text, std::size_t length, char* out) {
  std::size_t done = 0;
  for (; done < length && text[done] >= 0 && text[done] <= 0x7F; ++done) {
    out[done] = static_cast<char>(text[done]);
  }
  return done;
}

inline std::size_t widenAscii(char const* text, std::size_t length, wchar_t* out) {
  std::size_t done = 0;
  for (; done < length && static_cast<signed char>(text[done]) >= 0; ++done) {
    out[done] = text[done];
  }
  return done;
}

}  // namespace plain

#if defined(__SSE2__)

namespace blocks {

static_assert(sizeof(wchar_t) == 4);

inline __m128i load(void const* p) {
  return _mm_loadu_si128(static_cast<__m128i const*>(p));
}
inline __m128i all(char byte) {
  return _mm_set1_epi8(byte);
}
inline __m128i between(__m128i bytes, char first, char last) {
  return _mm_and_si128(_mm_cmpgt_epi8(bytes, all(static_cast<char>(first - 1))),
                       _mm_cmplt_epi8(bytes, all(static_cast<char>(last + 1))));
}
/// The first of 16 bytes whose bit is set.
inline char* firstOf(unsigned bits, char* p) {
  return p + std::countr_zero(bits);
}

inline char* endOfName(char* p) {
  for (;; p += blockSize) {
    __m128i const bytes = load(p);
    __m128i const letter = between(_mm_or_si128(bytes, all(0x20)), 'a', 'z');
    __m128i const other =
        _mm_andnot_si128(_mm_cmpeq_epi8(bytes, all('/')), between(bytes, '-', ':'));
    __m128i const rest =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, all('_')), _mm_cmpeq_epi8(bytes, all(127)));
    __m128i const ascii = _mm_or_si128(_mm_or_si128(letter, other), rest);
    // The highest bit of a byte beyond ASCII is set by itself.
    auto const in = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(ascii, bytes)));
    if (in != 0xFFFF) return firstOf(~in, p);
  }
}

inline char* findStop(char* p, char stop, signed char least) {
  for (;; p += blockSize) {
    __m128i const bytes = load(p);
    __m128i const marks =
        _mm_or_si128(_mm_cmpeq_epi8(bytes, all(stop)), _mm_cmpeq_epi8(bytes, all('&')));
    __m128i const low = _mm_cmplt_epi8(bytes, all(static_cast<char>(least)));
    auto const bits = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(marks, low)));
    if (bits != 0) return firstOf(bits, p);
  }
}

inline char* endOfBlanks(char* p) {
  for (;; p += blockSize) {
    __m128i const bytes = load(p);
    __m128i const blank = _mm_or_si128(_mm_cmpeq_epi8(bytes, all(' ')), between(bytes, '\t', '\r'));
    auto const in = static_cast<unsigned>(_mm_movemask_epi8(blank));
    if (in != 0xFFFF) return firstOf(~in, p);
  }
}

inline bool sameBytes(char const* a, char const* b, std::size_t length) {
  for (; length > blockSize; a += blockSize, b += blockSize, length -= blockSize) {
    if (_mm_movemask_epi8(_mm_cmpeq_epi8(load(a), load(b))) != 0xFFFF) return false;
  }
  auto const same = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(load(a), load(b))));
  return (~same & ((1U << length) - 1)) == 0;
}

/// Counts in 16 places at once. A place holds 255 at the most, so the sums are taken before.
class Counter {
 public:
  explicit Counter(char wanted) : wanted_(all(wanted)) {}

  void look(__m128i bytes) { places_ = _mm_sub_epi8(places_, _mm_cmpeq_epi8(bytes, wanted_)); }
  std::size_t take() {
    __m128i const halves = _mm_sad_epu8(std::exchange(places_, _mm_setzero_si128()), all(0));
    __m128i const sum = _mm_add_epi64(halves, _mm_unpackhi_epi64(halves, halves));
    return static_cast<std::size_t>(_mm_cvtsi128_si32(sum));
  }

 private:
  __m128i wanted_;
  __m128i places_ = _mm_setzero_si128();
};

inline Marks countMarks(std::string_view text) {
  constexpr std::size_t most = 255;
  Counter opening('<'), closing('>'), equals('=');
  std::size_t const rest = text.size() % blockSize;
  Marks marks = plain::countMarks(text.substr(text.size() - rest));
  char const* p = text.data();
  for (std::size_t blocks = text.size() / blockSize; blocks > 0;) {
    std::size_t const now = std::min(blocks, most);
    blocks -= now;
    for (char const* const end = p + now * blockSize; p != end; p += blockSize) {
      __m128i const bytes = load(p);
      opening.look(bytes);
      closing.look(bytes);
      equals.look(bytes);
    }
    marks.opening += opening.take();
    marks.closing += closing.take();
    marks.equals += equals.take();
  }
  return marks;
}

/// Narrows 16 characters, or tells that not all of them are ASCII.
inline bool narrowBlock(wchar_t const* from, char* out) {
  __m128i const a = load(from), b = load(from + 4), c = load(from + 8), d = load(from + 12);
  __m128i const seen = _mm_or_si128(_mm_or_si128(a, b), _mm_or_si128(c, d));
  __m128i const beyond = _mm_and_si128(seen, _mm_set1_epi32(~0x7F));
  if (_mm_movemask_epi8(_mm_cmpeq_epi32(beyond, _mm_setzero_si128())) != 0xFFFF) return false;
  __m128i const narrow = _mm_packus_epi16(_mm_packs_epi32(a, b), _mm_packs_epi32(c, d));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(out), narrow);
  return true;
}

inline std::size_t narrowAscii(wchar_t const* text, std::size_t length, char* out) {
  std::size_t done = 0;
  while (done + blockSize <= length && narrowBlock(text + done, out + done)) done += blockSize;
  // The last block may overlap the one before it.
  bool const overlaps = done > 0 && done < length && done + blockSize > length;
  if (overlaps && narrowBlock(text + length - blockSize, out + length - blockSize)) return length;
  return done + plain::narrowAscii(text + done, length - done, out + done);
}

/// Widens 16 characters, or tells that not all of them are ASCII.
inline bool widenBlock(char const* from, wchar_t* out) {
  __m128i const bytes = load(from), zero = _mm_setzero_si128();
  if (_mm_movemask_epi8(bytes) != 0) return false;
  __m128i const low = _mm_unpacklo_epi8(bytes, zero), high = _mm_unpackhi_epi8(bytes, zero);
  __m128i const wide[] = {_mm_unpacklo_epi16(low, zero), _mm_unpackhi_epi16(low, zero),
                          _mm_unpacklo_epi16(high, zero), _mm_unpackhi_epi16(high, zero)};
  std::memcpy(out, wide, sizeof wide);
  return true;
}

inline std::size_t widenAscii(char const* text, std::size_t length, wchar_t* out) {
  std::size_t done = 0;
  while (done + blockSize <= length && widenBlock(text + done, out + done)) done += blockSize;
  return done + plain::widenAscii(text + done, length - done, out + done);
}

}  // namespace blocks

namespace fastest = blocks;

#else

namespace fastest = plain;

#endif

/// The first byte from `p` on that cannot be in a name.
inline char* endOfName(char* p) {
  return fastest::endOfName(p);
}

/// The first byte from `p` on that is `stop`, an ampersand, or less than `least`, as bytes beyond
/// ASCII are.
inline char* findStop(char* p, char stop, signed char least) {
  return fastest::findStop(p, stop, least);
}

/// The first byte from `p` on that is no white space, as far as ASCII goes.
inline char* endOfBlanks(char* p) {
  return fastest::endOfBlanks(p);
}

/// Are the bytes the same? Behind both have to be those of a whole block.
inline bool sameBytes(char const* a, char const* b, std::size_t length) {
  return fastest::sameBytes(a, b, length);
}

inline Marks countMarks(std::string_view text) {
  return fastest::countMarks(text);
}

namespace detail {

template <class Word>
bool sameWord(char const* a, char const* b) {
  Word left = 0, right = 0;
  std::memcpy(&left, a, sizeof left);
  std::memcpy(&right, b, sizeof right);
  return left == right;
}

/// Of as many bytes as a word has, or up to twice as many: the second word overlaps the first.
template <class Word>
bool sameEnds(char const* a, char const* b, std::size_t length) {
  std::size_t const last = length - sizeof(Word);
  return sameWord<Word>(a, b) && sameWord<Word>(a + last, b + last);
}

}  // namespace detail

/// Are they the same, whatever may be read behind them? Names are short, so a call would cost more
/// than the comparison.
inline bool sameText(std::string_view a, std::string_view b) {
  std::size_t const length = a.size();
  if (length != b.size()) return false;
  if (length > 16) return std::memcmp(a.data(), b.data(), length) == 0;
  if (length >= 8) return detail::sameEnds<std::uint64_t>(a.data(), b.data(), length);
  if (length >= 4) return detail::sameEnds<std::uint32_t>(a.data(), b.data(), length);
  if (length >= 2) return detail::sameEnds<std::uint16_t>(a.data(), b.data(), length);
  return length == 0 || a[0] == b[0];
}

/// Narrows the characters that are the same in every locale, up to the first other, and tells how
/// many those were.
inline std::size_t narrowAscii(wchar_t const* text, std::size_t length, char* out) {
  return fastest::narrowAscii(text, length, out);
}

/// The same the other way round.
inline std::size_t widenAscii(char const* text, std::size_t length, wchar_t* out) {
  return fastest::widenAscii(text, length, out);
}

}  // namespace Kovra::frame

#endif
