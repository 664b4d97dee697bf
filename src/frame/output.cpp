#include "frame/output.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <memory>
#include <string>

#include "frame/wipe.hpp"

namespace Kovra::frame {

namespace {

/// Ends `out` behind the characters of `text` that the locale can convert.
void terminateAtBadCharacter(std::string const& text, wchar_t* out, std::size_t length) {
  std::mbstate_t state{};
  char const* next = text.c_str();
  char const* const end = next + text.size();
  for (std::size_t converted = 0; converted < length; ++converted) {
    std::size_t const step =
        std::mbrtowc(out + converted, next, static_cast<std::size_t>(end - next), &state);
    if (step == 0 || step > static_cast<std::size_t>(end - next)) {
      out[converted] = L'\0';
      return;
    }
    next += step;
  }
}

void convertWide(std::string const& text, wchar_t* out, std::size_t length) {
  std::size_t const converted = std::mbstowcs(out, text.c_str(), length);
  if (converted == static_cast<std::size_t>(-1)) terminateAtBadCharacter(text, out, length);
}

/// The one form in which documents are printed; lines end with TinyXML's default, "\n".
bool print(TiXmlPrinter& printer, TiXmlDocument const& document) {
  printer.SetIndent(printIndent);
  return document.Accept(&printer);
}

bool printWide(TiXmlPrinter& printer, TiXmlDocument const& document, wchar_t* out, int length) {
  if (out == nullptr || !print(printer, document)) return false;
  if (length > 0) convertWide(printer.Str(), out, static_cast<std::size_t>(length));
  return true;
}

/// A host that gets half a command would send it.
bool copyWhole(std::string const& text, char* out, int length) {
  if (length < 1) return false;
  bool const fits = text.size() < static_cast<std::size_t>(length);
  std::memcpy(out, fits ? text.c_str() : "", fits ? text.size() + 1 : 1);
  return fits;
}

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Is the open file a regular one of the calling user, and reachable by one name only?
bool isOursAlone(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
         status.st_uid == ::geteuid() && status.st_nlink == 1;
}

/// Opens `path` for a debugging copy. Nothing of an existing file is changed before it is known to
/// be ours: a link planted under a name in a shared folder must not give it away or have it
/// emptied.
[[maybe_unused]] File openDebugCopy(char const* path) {
  int const descriptor =
      ::open(path, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0600);
  if (descriptor < 0) return nullptr;
  if (isOursAlone(descriptor) && ::fchmod(descriptor, 0600) == 0 &&
      ::ftruncate(descriptor, 0) == 0) {
    if (std::FILE* const file = ::fdopen(descriptor, "w")) return File(file);
  }
  ::close(descriptor);
  return nullptr;
}

}  // namespace

TiXmlElement* beginDocument(TiXmlDocument& document, char const* root) {
  // Both are made before either is linked: where memory ends, the document stays as it was.
  auto declaration = std::make_unique<TiXmlDeclaration>("1.0", "UTF-8", "");
  auto element = std::make_unique<TiXmlElement>(root);
  document.LinkEndChild(declaration.release());
  return document.LinkEndChild(element.release())->ToElement();
}

bool printWide(TiXmlDocument const& document, wchar_t* out, int length) {
  TiXmlPrinter printer;
  return printWide(printer, document, out, length);
}

bool printSecretWide(TiXmlDocument const& document, wchar_t* out, int length) {
  SecretPrinter printer(document);
  return printWide(printer, document, out, length);
}

bool printNarrow(TiXmlDocument const& document, char* out, int length) {
  TiXmlPrinter printer;
  return out != nullptr && print(printer, document) && copyWhole(printer.Str(), out, length);
}

std::string printNarrow(TiXmlDocument const& document) {
  SecretPrinter printer(document);
  return print(printer, document) ? printer.Str() : std::string();
}

void saveDebugCopy(TiXmlDocument const& document, char const* path) {
#if KOVRA_DEBUG_COPIES
  // The copy is a courtesy: whether it could be written changes nothing for the host.
  if (File const file = openDebugCopy(path)) static_cast<void>(document.SaveFile(file.get()));
#else
  static_cast<void>(document);
  static_cast<void>(path);
#endif
}

bool saveTo(TiXmlDocument const& document, char const* path) {
  if (path == nullptr) return false;
  File const file(std::fopen(path, "w"));
  return file != nullptr && document.SaveFile(file.get());
}

}  // namespace Kovra::frame
