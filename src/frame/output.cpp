#include "frame/output.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <cwchar>
#include <memory>
#include <string>
#include <string_view>

#include "frame/bytes.hpp"
#include "frame/wipe.hpp"

namespace Kovra::frame {

namespace {

/// Ends `out` behind the characters of `text` that the locale can convert.
void terminateAtBadCharacter(std::string_view text, wchar_t* out, std::size_t length) {
  std::mbstate_t state{};
  for (std::size_t converted = 0; converted < length; ++converted) {
    std::size_t const step = std::mbrtowc(out + converted, text.data(), text.size(), &state);
    if (step == 0 || step > text.size()) {
      out[converted] = L'\0';
      return;
    }
    text.remove_prefix(step);
  }
}

/// Converts `text`, behind which stands a zero byte, as mbstowcs() does. Most of a document is
/// ASCII.
void convertWide(std::string_view text, wchar_t* out, std::size_t length) {
  std::size_t const ascii = widenAscii(text.data(), std::min(text.size(), length), out);
  text.remove_prefix(ascii);
  out += ascii;
  length -= ascii;
  if (length == 0) return;
  std::size_t const converted = std::mbstowcs(out, text.data(), length);
  if (converted == static_cast<std::size_t>(-1)) terminateAtBadCharacter(text, out, length);
}

/// The one form in which documents are printed; lines end with TinyXML's default, "\n".
bool print(TiXmlPrinter& printer, TiXmlDocument const& document) {
  printer.SetIndent(printIndent);
  return document.Accept(&printer);
}

bool printWide(TiXmlPrinter& printer, TiXmlDocument const& document, wchar_t* out, int length) {
  if (out == nullptr || !print(printer, document)) return false;
  if (length > 0) convertWide(printer.CStr(), out, static_cast<std::size_t>(length));
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

#if KOVRA_DEBUG_COPIES

/// Is there nothing at `path`, or a regular file of the calling user that has no other name? A link
/// planted under a name in a shared folder must not be given away or replaced.
bool mayReplace(char const* path) {
  struct stat status {};
  if (::lstat(path, &status) != 0) return errno == ENOENT;
  return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1;
}

/// While this lives, a file that grows beyond the process's limit does not end the host: the
/// calling thread puts the signal off, and takes it back in the end unless it was the host's own.
class SizeSignalPutOff {
 public:
  SizeSignalPutOff() {
    ::sigemptyset(&signal_);
    ::sigaddset(&signal_, SIGXFSZ);
    ::pthread_sigmask(SIG_BLOCK, &signal_, &earlier_);
    sigset_t pending;
    ::sigemptyset(&pending);
    ::sigpending(&pending);
    isHosts_ = ::sigismember(&pending, SIGXFSZ) == 1;
  }
  ~SizeSignalPutOff() {
    timespec const atOnce{};
    while (!isHosts_ && ::sigtimedwait(&signal_, nullptr, &atOnce) < 0 && errno == EINTR) {
    }
    ::pthread_sigmask(SIG_SETMASK, &earlier_, nullptr);
  }
  SizeSignalPutOff(SizeSignalPutOff const&) = delete;
  SizeSignalPutOff& operator=(SizeSignalPutOff const&) = delete;

 private:
  sigset_t signal_{};
  sigset_t earlier_{};
  bool isHosts_ = false;
};

/// A new file of the calling user alone, beside `path` under a name that nothing else has. It is
/// removed in the end unless it has taken its place.
class FileBeside {
 public:
  explicit FileBeside(char const* path) : path_(path), name_(std::string(path) + ".XXXXXX") {
    int const descriptor = ::mkostemp(name_.data(), O_CLOEXEC);  // with O_EXCL and mode 0600
    if (descriptor < 0) return;
    exists_ = true;
    // Whatever the umask leaves of the mode.
    if (::fchmod(descriptor, 0600) == 0) file_.reset(::fdopen(descriptor, "w"));
    if (file_ == nullptr) ::close(descriptor);
  }
  ~FileBeside() {
    if (exists_) ::unlink(name_.c_str());
  }
  FileBeside(FileBeside const&) = delete;
  FileBeside& operator=(FileBeside const&) = delete;

  /// Null when it could not be made.
  std::FILE* get() const { return file_.get(); }

  /// Closes the file and puts it at its path, if all of it could be written.
  void takePlace() {
    if (std::fclose(file_.release()) != 0) return;
    exists_ = ::rename(name_.c_str(), path_) != 0;
  }

 private:
  char const* path_;
  std::string name_;
  bool exists_ = false;
  File file_;
};

#endif

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
  if (!mayReplace(path)) return;
  SizeSignalPutOff const putOff;
  FileBeside copy(path);
  if (copy.get() != nullptr && document.SaveFile(copy.get())) copy.takePlace();
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
