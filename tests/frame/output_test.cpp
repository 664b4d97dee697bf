#include "frame/output.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <csignal>
#include <cstring>
#include <cwchar>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "kvxhelper.h"
#include "support/folder.hpp"
#include "support/locale.hpp"
#include "support/printed.hpp"
#include "support/records.hpp"
#include "support/wide.hpp"

namespace Kovra::frame {
namespace {

using test::contentsOf;
using test::exists;
using test::filled;
using test::LocaleGuard;
using test::modeOf;
using test::TemporaryFolder;
using test::untouched;
using test::wide;
using test::writeFile;

/// A document with a bit of everything that writers write.
void compose(TiXmlDocument& document) {
  TiXmlElement* const root = beginDocument(document, "configuration");
  KVXHelper::AddTagString(root, "name", "a<b>&\"c'");
  TiXmlElement* const group = KVXHelper::AddTag(root, "group");
  KVXHelper::AddTagMinMaxVal(group, "speed", _MinMaxVal{1, 9, 5});
  KVXHelper::AddTag(group, "empty");
  KVXHelper::AddTagAttrib(root, "version", 2);
}

constexpr char const* composed =
    R"(<?xml version="1.0" encoding="UTF-8" ?>
<configuration version="2">
    <name>a&lt;b&gt;&amp;&quot;c&apos;</name>
    <group>
        <speed min="1" max="9">5</speed>
        <empty />
    </group>
</configuration>
)";

/// The document `<r>text</r>`.
class Document {
 public:
  explicit Document(char const* text) {
    document_.LinkEndChild(new TiXmlElement("r"));
    document_.RootElement()->LinkEndChild(new TiXmlText(text));
  }

  operator TiXmlDocument const&() const { return document_; }

 private:
  TiXmlDocument document_;
};

// ---- Beginning a document --------------------------------------------------------------------

TEST(BeginDocument, LinksADeclarationAndTheRoot) {
  TiXmlDocument document;
  TiXmlElement* const root = beginDocument(document, "media");
  ASSERT_EQ(root, document.RootElement());
  EXPECT_STREQ(root->Value(), "media");
  EXPECT_TRUE(root->NoChildren());
  TiXmlDeclaration const* const declaration = document.FirstChild()->ToDeclaration();
  ASSERT_NE(declaration, nullptr);
  EXPECT_STREQ(declaration->Version(), "1.0");
  EXPECT_STREQ(declaration->Encoding(), "UTF-8");
  EXPECT_STREQ(declaration->Standalone(), "");
  EXPECT_EQ(declaration->NextSibling(), root);
  EXPECT_EQ(root->NextSibling(), nullptr);
}

TEST(BeginDocument, LinksAFurtherPairBehindAnEarlierOne) {
  TiXmlDocument document;
  beginDocument(document, "first");
  beginDocument(document, "second");
  std::array<wchar_t, 256> out{};
  EXPECT_TRUE(printWide(document, out.data(), 256));
  EXPECT_EQ(std::wstring(out.data()),
            L"<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<first />\n"
            L"<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<second />\n");
}

// ---- Wide output -----------------------------------------------------------------------------

TEST(PrintWide, PrintsTheWholeDocumentByteForByte) {
  TiXmlDocument document;
  compose(document);
  std::array<wchar_t, 1024> out{};
  EXPECT_TRUE(printWide(document, out.data(), 1024));
  EXPECT_EQ(std::wstring(out.data()), wide(composed));
}

/// What the library prints of a document, whole.
std::string narrow(TiXmlDocument const& document) {
  std::vector<char> out(1 << 20);
  EXPECT_TRUE(printNarrow(document, out.data(), static_cast<int>(out.size())));
  return out.data();
}

TEST(PrintNarrow, PrintsWhateverAHostPutsIntoADocumentAsTinyxmlDoes) {
  for (char const* const xml : {"<r/>",
                                "<r></r>",
                                "<?xml version='1.0' encoding='UTF-8' ?><r/>",
                                "<?xml version='1.1' encoding='UTF-8' ?><r/>",
                                "<?xml version='1.0'?><r>text</r>",
                                "<?xml version='1.0' encoding='UTF-8' standalone='yes'?><r/>",
                                "<r>a<b/></r>",
                                "<r><b/>a</r>",
                                "<r>a<b/>c<d>e</d></r>",
                                "<r><![CDATA[a<b]]></r>",
                                "<r><!-- c --></r>",
                                "<r><a/><!-- c --><b/></r>",
                                "<r><a>1</a><a/><a>2</a></r>",
                                "<r><?pi x?></r>",
                                "<!-- first --><r/><!-- last -->",
                                "<r/><s>t</s>",
                                "text",
                                "<r a='&quot;' b=\"&apos;\" "
                                "c='&lt;&gt;&amp;&#x41;&#10;'>&quot;&apos;&lt;&gt;&amp;&#10;</r>",
                                "<a><b><c><d>e</d></c></b><f/></a>",
                                "<!DOCTYPE r><r/>"}) {
    TiXmlDocument document;
    document.Parse(xml);
    EXPECT_EQ(narrow(document), test::printedByTinyxml(document)) << xml;
  }
  EXPECT_EQ(narrow(TiXmlDocument()), "");
}

TEST(PrintNarrow, PrintsTextsThatNoParserMakesAsTinyxmlDoes) {
  for (std::string const& text :
       {std::string(), std::string("&#x;"), std::string("&#x41;b&#x<"), std::string("&#x"),
        std::string("a&#xb"), std::string("&#"), std::string("&#x41<;>"), std::string("\1\x1f\t"),
        std::string("\x7f\xff\xC3\xA9"), std::string(40000, 'a'), std::string(20000, '<')}) {
    TiXmlDocument document;
    TiXmlElement* const root = beginDocument(document, "r");
    root->SetAttribute("a", text.c_str());
    root->SetAttribute("b", (text + '"').c_str());
    root->LinkEndChild(new TiXmlElement("empty"));
    root->LinkEndChild(new TiXmlElement("e"))->LinkEndChild(new TiXmlText(text.c_str()));
    EXPECT_EQ(narrow(document), test::printedByTinyxml(document)) << text.substr(0, 20);
  }
  TiXmlDocument document;
  TiXmlElement* const root = beginDocument(document, "r");
  root->SetAttribute("a", std::string("a\0b", 3));
  root->LinkEndChild(new TiXmlElement("t"))->LinkEndChild(new TiXmlText(std::string("a\0b", 3)));
  // The buffer of a host ends at the first zero byte.
  EXPECT_EQ(narrow(document), test::printedByTinyxml(document).c_str());
}

using Out = std::array<wchar_t, 64>;

/// The sentinel with `text` in front, terminated or not.
Out holding(std::wstring const& text, bool terminated) {
  Out out = filled<Out>();
  std::copy(text.begin(), text.end(), out.begin());
  if (terminated) out[text.size()] = L'\0';
  return out;
}

struct Printed {
  bool result;
  Out out;
};

Printed printedInto(TiXmlDocument const& document, int length) {
  Printed outcome{false, filled<Out>()};
  outcome.result = printWide(document, outcome.out.data(), length);
  return outcome;
}

TEST(PrintWide, WritesATerminatorWhereThereIsRoomAndNothingBehind) {
  Document const document("12345");
  std::wstring const text = L"<r>12345</r>\n";
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    for (int length = 1; length <= 20; ++length) {
      auto const [result, out] = printedInto(document, length);
      auto const room = static_cast<std::size_t>(length);
      EXPECT_TRUE(result) << length;
      EXPECT_TRUE(test::same(out, holding(text.substr(0, room), room > text.size()))) << length;
    }
  }
}

TEST(PrintWide, StaysWithinABufferOfExactlyItsLength) {
  std::wstring const text = L"<r>12345</r>\n";
  for (std::size_t length = 1; length <= text.size() + 1; ++length) {
    std::unique_ptr<wchar_t[]> const exact(new wchar_t[length]);
    EXPECT_TRUE(printWide(Document("12345"), exact.get(), static_cast<int>(length)));
    EXPECT_EQ(std::wcsncmp(exact.get(), text.c_str(), length), 0) << length;
  }
}

TEST(PrintWide, WritesNothingForALengthBelowOneAndSucceeds) {
  for (int const length : {0, -1, INT_MIN}) {
    auto const [result, out] = printedInto(Document("12345"), length);
    EXPECT_TRUE(result) << length;
    EXPECT_TRUE(untouched(out)) << length;
  }
}

TEST(PrintWide, FailsWithoutABuffer) {
  EXPECT_FALSE(printWide(Document("12345"), nullptr, 64));
  EXPECT_FALSE(printWide(Document("12345"), nullptr, 0));
}

TEST(PrintWide, ConvertsInTheLocaleOfTheProcess) {
  LocaleGuard const guard("C.UTF-8");
  auto const [result, out] = printedInto(Document("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), 64);
  EXPECT_TRUE(result);
  EXPECT_TRUE(test::same(out, holding(L"<r>\u00E9\u20AC\U0001F600</r>\n", true)));
}

TEST(PrintWide, EndsWhereACharacterCannotBeConvertedAndSucceeds) {
  struct {
    char const* locale;
    char const* text;
    wchar_t const* written;
  } const cases[] = {
      {"C", "ab\xC3\xA9yz", L"<r>ab"},         {"C", "\xC3\xA9", L"<r>"},
      {"C.UTF-8", "ab\xFFyz", L"<r>ab"},       {"C.UTF-8", "\xC3\xA9\xFF", L"<r>\u00E9"},
      {"C.UTF-8", "ab\xC3yz", L"<r>ab"},        // the second byte is missing
      {"C.UTF-8", "ab\xED\xA0\x80", L"<r>ab"},  // half of a pair
      {"C.UTF-8", "ab\xF0\x9F", L"<r>ab"}};
  for (auto const& [locale, text, written] : cases) {
    LocaleGuard const guard(locale);
    Document const document(text);
    auto const stop = static_cast<int>(std::wcslen(written));
    for (int const length : {64, stop + 1}) {
      auto const [result, out] = printedInto(document, length);
      EXPECT_TRUE(result) << locale << text;
      EXPECT_TRUE(test::same(out, holding(written, true))) << locale << text;
    }
    auto const [result, out] = printedInto(document, stop);  // no room for the terminator
    EXPECT_TRUE(result) << locale << text;
    EXPECT_TRUE(test::same(out, holding(written, false))) << locale << text;
  }
}

// ---- Narrow output ---------------------------------------------------------------------------

TEST(PrintNarrow, PrintsTheWholeDocumentByteForByte) {
  TiXmlDocument document;
  compose(document);
  std::array<char, 1024> out{};
  EXPECT_TRUE(printNarrow(document, out.data(), 1024));
  EXPECT_STREQ(out.data(), composed);
}

TEST(PrintNarrow, CopiesNoPartOfADocumentThatDoesNotFit) {
  std::string const text = "<r>12345</r>\n";
  auto const size = static_cast<int>(text.size());
  for (int length = 1; length <= size + 5; ++length) {
    auto out = filled<std::array<char, 64>>();
    auto expected = out;
    bool const fits = length > size;
    std::strcpy(expected.data(), fits ? text.c_str() : "");
    EXPECT_EQ(printNarrow(Document("12345"), out.data(), length), fits) << length;
    EXPECT_TRUE(test::same(out, expected)) << length;
  }
}

TEST(PrintNarrow, FailsUntouchedWithoutRoom) {
  for (int const length : {0, -1, INT_MIN}) {
    auto out = filled<std::array<char, 64>>();
    EXPECT_FALSE(printNarrow(Document("12345"), out.data(), length)) << length;
    EXPECT_TRUE(untouched(out)) << length;
  }
  EXPECT_FALSE(printNarrow(Document("12345"), nullptr, 64));
}

TEST(PrintNarrow, CopiesBytesInAnyLocale) {
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    EXPECT_EQ(narrow(Document("\xC3\xA9\xFF")), "<r>\xC3\xA9\xFF</r>\n") << locale;
  }
}

// ---- A file that the host names --------------------------------------------------------------

TEST(SaveTo, WritesTheDocument) {
  TemporaryFolder const folder;
  TiXmlDocument document;
  compose(document);
  EXPECT_TRUE(saveTo(document, folder.file("copy").c_str()));
  EXPECT_EQ(contentsOf(folder.file("copy")), composed);
}

TEST(SaveTo, FailsWithoutAPathOrWhereNoFileCanBe) {
  TemporaryFolder const folder;
  EXPECT_FALSE(saveTo(Document("x"), nullptr));
  EXPECT_FALSE(saveTo(Document("x"), folder.path().c_str()));
  EXPECT_FALSE(saveTo(Document("x"), folder.file("missing/copy").c_str()));
}

// ---- The debugging copy ----------------------------------------------------------------------

/// A folder in which debugging copies are wanted at `copy`, and something else stands at `other`.
class DebugCopy : public testing::Test {
 protected:
  [[maybe_unused]] static constexpr char const* secret = "not to be lost";

  DebugCopy() { compose(document_); }

  /// Whatever becomes of a copy, nothing that it was made of stays behind.
  void TearDown() override {
    for (auto const& entry : std::filesystem::directory_iterator(folder.path())) {
      std::string const path = entry.path().string();
      EXPECT_TRUE(path == copy || path == other || path == folder.file("saved")) << path;
    }
  }

  void save() { saveDebugCopy(document_, copy.c_str()); }

  /// What TinyXML itself saves.
  std::string saved() {
    EXPECT_TRUE(document_.SaveFile(folder.file("saved").c_str()));
    return contentsOf(folder.file("saved"));
  }

  TemporaryFolder const folder;
  std::string const copy = folder.file("copy");
  std::string const other = folder.file("other");

 private:
  TiXmlDocument document_;
};

#if KOVRA_DEBUG_COPIES

TEST_F(DebugCopy, HoldsWhatTinyXmlSaves) {
  save();
  EXPECT_EQ(contentsOf(copy), saved());
  EXPECT_EQ(contentsOf(copy), composed);
}

TEST_F(DebugCopy, IsReadableByItsUserOnlyWhateverTheUmask) {
  for (mode_t const mask : {0000U, 0022U, 0077U, 0777U}) {
    mode_t const earlier = ::umask(mask);
    save();
    ::umask(earlier);
    EXPECT_EQ(modeOf(copy), 0600U) << mask;
    EXPECT_EQ(contentsOf(copy), composed) << mask;
    std::filesystem::remove(copy);
  }
}

TEST_F(DebugCopy, ReplacesAnEarlierOneWholeAndClosesItToOthers) {
  for (std::string const& earlier : {std::string(10000, 'x'), std::string()}) {
    writeFile(copy, earlier);
    ASSERT_EQ(::chmod(copy.c_str(), 0644), 0);
    save();
    EXPECT_EQ(contentsOf(copy), composed);
    EXPECT_EQ(modeOf(copy), 0600U);
  }
}

TEST_F(DebugCopy, LeavesTheEarlierOneToWhoeverHasItOpen) {
  writeFile(copy, secret);
  ASSERT_EQ(::chmod(copy.c_str(), 0644), 0);
  std::ifstream reader(copy);
  save();
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(reader), {}), secret);
  EXPECT_EQ(contentsOf(copy), composed);
}

TEST_F(DebugCopy, DoesNotFollowASymbolicLink) {
  writeFile(other, secret);
  ASSERT_EQ(::chmod(other.c_str(), 0644), 0);
  std::filesystem::create_symlink(other, copy);
  save();
  EXPECT_EQ(contentsOf(other), secret);
  EXPECT_EQ(modeOf(other), 0644U);
  EXPECT_TRUE(std::filesystem::is_symlink(copy));
}

TEST_F(DebugCopy, CreatesNothingBehindADanglingLink) {
  std::filesystem::create_symlink(other, copy);
  save();
  EXPECT_FALSE(exists(other));
  EXPECT_TRUE(std::filesystem::is_symlink(copy));
}

TEST_F(DebugCopy, IsNotWrittenIntoAFileWithASecondName) {
  writeFile(other, secret);
  ASSERT_EQ(::chmod(other.c_str(), 0644), 0);
  std::filesystem::create_hard_link(other, copy);
  save();
  EXPECT_EQ(contentsOf(other), secret);
  EXPECT_EQ(modeOf(other), 0644U);
}

TEST_F(DebugCopy, DoesNotWaitForTheReaderOfAPipe) {
  ASSERT_EQ(::mkfifo(copy.c_str(), 0644), 0);
  save();
  EXPECT_TRUE(std::filesystem::is_fifo(copy));
  EXPECT_EQ(modeOf(copy), 0644U);
}

TEST_F(DebugCopy, IsNotWrittenIntoAPipe) {
  ASSERT_EQ(::mkfifo(copy.c_str(), 0644), 0);
  int const reader = ::open(copy.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  save();
  char byte = 0;
  EXPECT_LE(::read(reader, &byte, 1), 0);
  EXPECT_EQ(modeOf(copy), 0644U);
  ::close(reader);
}

TEST_F(DebugCopy, LeavesAFolderAlone) {
  ASSERT_EQ(::mkdir(copy.c_str(), 0755), 0);
  ASSERT_EQ(::chmod(copy.c_str(), 0755), 0);
  save();
  EXPECT_TRUE(std::filesystem::is_directory(copy));
  EXPECT_TRUE(std::filesystem::is_empty(copy));
  EXPECT_EQ(modeOf(copy), 0755U);
}

TEST_F(DebugCopy, LeavesADeviceAlone) {
  std::filesystem::create_symlink("/dev/null", copy);
  save();
  EXPECT_TRUE(std::filesystem::is_symlink(copy));
}

TEST_F(DebugCopy, IsGivenUpQuietlyWhereNoFileCanBe) {
  std::string const missing = folder.file("missing/copy");
  saveDebugCopy(TiXmlDocument(), missing.c_str());
  EXPECT_FALSE(exists(missing));
}

/// Another user for the time of a test, where the process may be that.
class OtherUser {
 public:
  static constexpr uid_t nobody = 65534;
  OtherUser() { EXPECT_EQ(::seteuid(nobody), 0); }
  ~OtherUser() { EXPECT_EQ(::seteuid(0), 0); }
  OtherUser(OtherUser const&) = delete;
  OtherUser& operator=(OtherUser const&) = delete;
};

TEST_F(DebugCopy, IsGivenUpQuietlyInAFolderWithoutLeaveToWrite) {
  std::unique_ptr<OtherUser> user;
  if (::geteuid() == 0) {
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    user = std::make_unique<OtherUser>();  // nothing keeps the superuser from writing
  } else {
    ASSERT_EQ(::chmod(folder.path().c_str(), 0500), 0);
  }
  save();
  user.reset();
  ASSERT_EQ(::chmod(folder.path().c_str(), 0700), 0);
  EXPECT_FALSE(exists(copy));
}

TEST_F(DebugCopy, IsNotWrittenIntoAFileOfAnotherUser) {
  if (::geteuid() != 0) GTEST_SKIP() << "only the superuser can make a file of another user";
  writeFile(copy, secret);
  ASSERT_EQ(::chmod(copy.c_str(), 0666), 0);
  ASSERT_EQ(::chown(copy.c_str(), OtherUser::nobody, OtherUser::nobody), 0);
  save();
  EXPECT_EQ(contentsOf(copy), secret);
  EXPECT_EQ(modeOf(copy), 0666U);
}

/// A text of one letter, longer than any buffer between it and its file.
std::string longText(char letter) {
  return std::string(50000, letter);
}

/// Runs `act` in a process of its own, in which no file may grow beyond `limit` bytes, and expects
/// that it goes well.
void expectWellWithLimit(rlim_t limit, std::function<bool()> const& act) {
  pid_t const child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    rlimit const sizes{limit, limit};
    ::_exit(::setrlimit(RLIMIT_FSIZE, &sizes) == 0 && act() ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_FALSE(WIFSIGNALED(status)) << "ended by signal " << WTERMSIG(status);
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

// As on a full disk: the first text does not fit when the file is closed, the second one earlier.
TEST_F(DebugCopy, LeavesTheEarlierOneWhereThereIsNoRoom) {
  for (std::string const& text : {std::string("short"), longText('x')}) {
    for (rlim_t const limit : {0U, 1U, 10U}) {
      writeFile(copy, secret);
      expectWellWithLimit(limit, [&] {
        saveDebugCopy(Document(text.c_str()), copy.c_str());
        return true;
      });
      EXPECT_EQ(contentsOf(copy), secret) << limit;
      std::filesystem::remove(copy);
      expectWellWithLimit(limit, [&] {
        saveDebugCopy(Document(text.c_str()), copy.c_str());
        return true;
      });
      EXPECT_FALSE(exists(copy)) << limit;
    }
  }
  expectWellWithLimit(60000, [&] {
    saveDebugCopy(Document(longText('x').c_str()), copy.c_str());
    return true;
  });
  EXPECT_EQ(contentsOf(copy), "<r>" + longText('x') + "</r>\n") << "there is room";
}

volatile sig_atomic_t signalsSeen = 0;
void seeSignal(int) {
  signalsSeen = signalsSeen + 1;
}

bool isPending(int signal) {
  sigset_t pending;
  return ::sigpending(&pending) == 0 && ::sigismember(&pending, signal) == 1;
}

bool isBlocked(int signal) {
  sigset_t blocked;
  return ::pthread_sigmask(SIG_BLOCK, nullptr, &blocked) == 0 &&
         ::sigismember(&blocked, signal) == 1;
}

TEST_F(DebugCopy, LeavesTheSignalsOfTheHostAlone) {
  expectWellWithLimit(1, [&] {
    ::signal(SIGXFSZ, seeSignal);
    save();
    bool const unseen = signalsSeen == 0 && !isPending(SIGXFSZ) && !isBlocked(SIGXFSZ);
    ::raise(SIGXFSZ);
    return unseen && signalsSeen == 1;
  });
  // A host that has put the signal off finds its own one, and no other.
  for (bool const raised : {false, true}) {
    expectWellWithLimit(1, [&] {
      sigset_t ours;
      ::sigemptyset(&ours);
      ::sigaddset(&ours, SIGXFSZ);
      ::pthread_sigmask(SIG_BLOCK, &ours, nullptr);
      if (raised) ::raise(SIGXFSZ);
      save();
      return isPending(SIGXFSZ) == raised && isBlocked(SIGXFSZ);
    });
  }
}

/// Saves texts of the given letter again and again.
void saveOften(char letter, char const* path) {
  Document const document(longText(letter).c_str());
  for (int i = 0; i < 50; ++i) saveDebugCopy(document, path);
}

constexpr char letters[] = {'a', 'b', 'c', 'd'};

testing::AssertionResult isWholeCopy(std::string const& text) {
  for (char const letter : letters) {
    if (text == "<r>" + longText(letter) + "</r>\n") return testing::AssertionSuccess();
  }
  return testing::AssertionFailure() << text.size() << " bytes, " << text.substr(0, 10) << "...";
}

TEST_F(DebugCopy, OfSeveralProcessesIsThatOfOne) {
  saveOften(letters[0], copy.c_str());
  std::vector<pid_t> children;
  for (char const letter : letters) {
    children.push_back(::fork());
    if (children.back() == 0) {
      saveOften(letter, copy.c_str());
      ::_exit(0);
    }
  }
  for (pid_t const child : children) {
    int status = 0;
    while (::waitpid(child, &status, WNOHANG) == 0) EXPECT_TRUE(isWholeCopy(contentsOf(copy)));
    EXPECT_EQ(status, 0);
  }
  EXPECT_TRUE(isWholeCopy(contentsOf(copy)));
}

using ThreadsDebugCopy = DebugCopy;

TEST_F(ThreadsDebugCopy, OfSeveralThreadsIsThatOfOne) {
  saveOften(letters[0], copy.c_str());
  std::vector<std::thread> threads;
  for (char const letter : letters) {
    threads.emplace_back([letter, this] { saveOften(letter, copy.c_str()); });
  }
  for (int i = 0; i < 50; ++i) EXPECT_TRUE(isWholeCopy(contentsOf(copy)));
  for (std::thread& thread : threads) thread.join();
  EXPECT_TRUE(isWholeCopy(contentsOf(copy)));
  EXPECT_EQ(modeOf(copy), 0600U);
}

TEST_F(DebugCopy, IsWrittenForHostsThatClosedTheirInput) {
  int const input = ::dup(0);
  ASSERT_GE(input, 0);
  ::close(0);
  save();
  ::dup2(input, 0);
  ::close(input);
  EXPECT_EQ(contentsOf(copy), saved());
}

TEST_F(DebugCopy, LeavesNoFileOpen) {
  auto const openFiles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  auto const before = openFiles();
  save();                                                 // written
  saveDebugCopy(TiXmlDocument(), folder.path().c_str());  // refused by the system
  std::filesystem::create_hard_link(copy, other);
  save();  // refused by us
  EXPECT_EQ(openFiles(), before);
}

#else

TEST_F(DebugCopy, IsNotWrittenWhenItIsSwitchedOff) {
  save();
  EXPECT_FALSE(exists(copy));
}

#endif

}  // namespace
}  // namespace Kovra::frame
