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
#include "frame/nodes.hpp"
#include "frame/sink.hpp"
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

bool isTerminated(std::string const& text) {
  return text.find('\0') == text.npos;
}

/// Is it the declaration that beginDocument() makes?
bool isUsual(TiXmlDeclaration const& declaration) {
  return std::strcmp(declaration.Version(), "1.0") == 0 &&
         std::strcmp(declaration.Encoding(), "UTF-8") == 0 && *declaration.Standalone() == '\0';
}

/// The only child of an element, if it is a text that stands in its line.
TiXmlText const* onlyText(TiXmlElement const& element) {
  TiXmlNode const* const child = element.FirstChild();
  if (child == nullptr || child != element.LastChild()) return nullptr;
  TiXmlText const* const text = child->ToText();
  return text != nullptr && !text->CDATA() && isTerminated(text->ValueStr()) ? text : nullptr;
}

bool openElement(TiXmlElement const& element, TextSink& sink) {
  sink.open(element.Value());
  bool isUsual = isTerminated(element.ValueStr());
  visitAttributes(element, [&](TiXmlAttribute const& attribute) {
    isUsual = isUsual && isTerminated(attribute.NameTStr()) && isTerminated(attribute.ValueStr());
    sink.attribute(attribute.Name(), attribute.Value());
  });
  return isUsual;
}

/// The node after `node` in the order of the document, of which `node` was opened when `isOpened`;
/// elements that end before it are closed.
TiXmlNode const* nextNode(TiXmlNode const* node, bool isOpened, TextSink& sink) {
  if (isOpened && node->FirstChild() != nullptr) return node->FirstChild();
  if (isOpened) sink.close(node->Value());
  while (node->NextSibling() == nullptr) {
    node = node->Parent();
    if (node->ToElement() == nullptr) return nullptr;
    sink.close(node->Value());
  }
  return node->NextSibling();
}

/// Prints what writers make of documents: declarations, and elements with attributes and either one
/// text or other elements. False for any other document.
bool printUsual(TiXmlDocument const& document, TextSink& sink) {
  for (TiXmlNode const* node = document.FirstChild(); node != nullptr;) {
    TiXmlElement const* const element = node->ToElement();
    TiXmlDeclaration const* const declaration = node->ToDeclaration();
    bool const isDeclared = declaration != nullptr && node->Parent() == &document;
    if (element == nullptr && !(isDeclared && isUsual(*declaration))) return false;
    if (element == nullptr) {
      sink.declare();
      node = nextNode(node, false, sink);
    } else if (!openElement(*element, sink)) {
      return false;
    } else if (TiXmlText const* const text = onlyText(*element)) {
      sink.text(text->Value());
      sink.close(element->Value());
      node = nextNode(node, false, sink);
    } else {
      node = nextNode(node, true, sink);
    }
  }
  return true;
}

/// Hands the document's text to `take`, and wipes it. There is one form in which documents are
/// printed, TinyXML's with an indent of four blanks, where lines end with "\n"; what hosts put into
/// their documents TinyXML prints itself.
template <class Take>
bool print(TiXmlDocument const& document, Take take) {
  TextSink sink;
  if (printUsual(document, sink)) return take(sink.printed());
  SecretPrinter printer(document);
  printer.SetIndent(printIndent);
  return document.Accept(&printer) && take(std::string_view(printer.Str()));
}

/// A host that gets half a command would send it.
bool copyWhole(std::string_view text, char* out, int length) {
  if (length < 1) return false;
  bool const fits = text.size() < static_cast<std::size_t>(length);
  std::memcpy(out, fits ? text.data() : "", fits ? text.size() + 1 : 1);
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
  return out != nullptr && print(document, [&](std::string_view text) {
           if (length > 0) convertWide(text, out, static_cast<std::size_t>(length));
           return true;
         });
}

bool printNarrow(TiXmlDocument const& document, char* out, int length) {
  return out != nullptr &&
         print(document, [&](std::string_view text) { return copyWhole(text, out, length); });
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
