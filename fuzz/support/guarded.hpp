/// @file
/// What the targets of the readers share: texts in buffers of exactly their size, and records that
/// hold a pattern, between guard bytes that no reader may touch.

#ifndef KOVRA_FUZZ_SUPPORT_GUARDED_HPP
#define KOVRA_FUZZ_SUPPORT_GUARDED_HPP

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <type_traits>

namespace kovra_fuzz {

/// A record of negative counts; one of huge counts and texts without end; a cleared one.
inline constexpr unsigned char patterns[] = {0xA5, 0x7F, 0x00};

inline void require(bool held) {
  if (!held) std::abort();
}

/// The input as wide characters, one for each byte.
struct WideText {
  WideText(std::uint8_t const* data, std::size_t size)
      : characters(new wchar_t[size]), length(static_cast<int>(size)) {
    std::copy_n(data, size, characters.get());
  }

  std::unique_ptr<wchar_t[]> characters;
  int length;
};

/// The input as narrow text with a terminator.
inline std::unique_ptr<char[]> narrowText(std::uint8_t const* data, std::size_t size) {
  std::unique_ptr<char[]> text(new char[size + 1]);
  std::copy_n(data, size, text.get());
  text[size] = '\0';
  return text;
}

/// `count` entries full of a pattern, and guard bytes around them.
template <class Entry>
class Guarded {
 public:
  static_assert(std::is_trivially_copyable_v<Entry>);

  Guarded(std::size_t count, unsigned char pattern)
      : size_(count * sizeof(Entry)),
        pattern_(pattern),
        bytes_(new unsigned char[guardSize() + size_ + guardSize()]) {
    std::memset(bytes_.get(), pattern, guardSize() + size_ + guardSize());
  }

  Entry* entries() { return reinterpret_cast<Entry*>(bytes_.get() + guardSize()); }

  /// Are the guard bytes as they were?
  bool isIntact() const {
    return holdsPattern(0, guardSize()) && holdsPattern(guardSize() + size_, guardSize());
  }
  /// Are the entries as they were?
  bool isUntouched() const { return holdsPattern(guardSize(), size_); }

 private:
  bool holdsPattern(std::size_t start, std::size_t size) const {
    return std::all_of(bytes_.get() + start, bytes_.get() + start + size,
                       [&](unsigned char byte) { return byte == pattern_; });
  }

  /// A multiple of every alignment.
  static constexpr std::size_t guardSize() { return 64; }

  std::size_t size_;
  unsigned char pattern_;
  std::unique_ptr<unsigned char[]> bytes_;
};

/// Calls `read` with a record of every pattern; one that leaves the first record untouched is taken
/// for that of another reply, and time is better spent than on asking it again.
template <class Record, class Read>
void drive(Read read) {
  for (unsigned char const pattern : patterns) {
    Guarded<Record> record(1, pattern);
    read(*record.entries());
    require(record.isIntact());
    if (record.isUntouched()) return;
  }
}

/// The same for a wide entry.
template <class Parser, class Length, class Record>
void drive(bool (Parser::*entry)(wchar_t const&, Length, Record&), WideText const& text) {
  drive<Record>([&](Record& record) {
    (Parser().*entry)(*text.characters.get(), static_cast<Length>(text.length), record);
  });
}

}  // namespace kovra_fuzz

#endif
