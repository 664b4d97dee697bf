/// @file
/// Any bytes at all as a document of the secure-action exchange: no entry of KVXSecAction reads
/// beyond the text or writes beyond its record, whatever the record held before; and what the
/// writer makes of the keys that were read is read as the same keys.

#include <algorithm>
#include <clocale>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>

#include "kvxsecactionparser.h"
#include "kvxsetsecactions.h"

using namespace Kovra;

namespace {

// A record and the bytes around it.
template <class Record>
struct Guarded {
  unsigned char before[64];
  Record record;
  unsigned char behind[64];
};

// Records that are cleared, and of texts without end.
constexpr unsigned char patterns[] = {0x00, 0x7F, 0xA5};

template <class Record, class Read>
void drive(Read read) {
  for (unsigned char const pattern : patterns) {
    Guarded<Record> guarded;
    std::memset(static_cast<void*>(&guarded), pattern, sizeof guarded);
    read(guarded.record);
    auto const intact = [&](unsigned char byte) { return byte == pattern; };
    if (!std::all_of(std::begin(guarded.before), std::end(guarded.before), intact)) std::abort();
    if (!std::all_of(std::begin(guarded.behind), std::end(guarded.behind), intact)) std::abort();
  }
}

bool isPrintable(char const* text) {
  return std::all_of(text, text + std::strlen(text), [](char c) { return c > ' ' && c < 0x7F; });
}

// Blanks may be condensed on the way, and what is no ASCII depends on the locale.
void expectSameKeys(_tagSecKeys& keys) {
  char const* const texts[] = {keys.data_encryption_key, keys.host_authentication_key,
                               keys.printer_lock_key};
  if (!std::all_of(std::begin(texts), std::end(texts), isPrintable)) return;
  auto const out = std::make_unique<wchar_t[]>(8192);
  if (!KVXSetSecActions().SetSecureActionXML(keys, out.get(), 8192)) std::abort();
  _tagSecKeys again{};
  KVXSecAction().ParseSecurityKeys(out[0], 8192, again);
  if (std::strcmp(again.data_encryption_key, keys.data_encryption_key) != 0 ||
      std::strcmp(again.host_authentication_key, keys.host_authentication_key) != 0 ||
      std::strcmp(again.printer_lock_key, keys.printer_lock_key) != 0) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::setlocale(LC_CTYPE, "");  // so that LC_ALL chooses which characters narrow
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  if (size == 0) return 0;
  std::unique_ptr<wchar_t[]> const text(new wchar_t[size]);
  std::copy_n(data, size, text.get());
  KVXSecAction reader;
  drive<char[32]>(
      [&](char(&out)[32]) { reader.GetNonceValue(text[0], static_cast<int>(size), out); });
  drive<_tagHostDHKeys>([&](auto& out) { reader.ParseHostDHKeyValues(text[0], size, out); });
  drive<long>([&](long& out) { reader.ParsePrinterDHKeyValues(text[0], size, out); });
  drive<_tagSecReqXML>([&](auto& out) { reader.ParseSecureRequestValues(&text[0], size, out); });
  drive<_tagSecDirecXML>([&](auto& out) { reader.ParseSecureDirectiveValues(text[0], size, out); });
  drive<_tagSecKeys>([&](auto& out) { reader.ParseSecurityKeys(text[0], size, out); });
  drive<_tagSecSetKeys>([&](auto& out) { reader.ParseSetSecurityKeys(text[0], size, out); });
  drive<_tagSecSetKeys>([&](auto& out) { reader.ParseGetSecureActionRequest(text[0], size, out); });

  _tagSecKeys keys{};
  if (reader.ParseSecurityKeys(text[0], size, keys)) expectSameKeys(keys);
  return 0;
}
