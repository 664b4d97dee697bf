#include "frame/entry.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "kvxprinteridparser.h"
#include "kvxstatusparser.h"
#include "support/general_status.hpp"
#include "support/locale.hpp"
#include "support/nasty_texts.hpp"
#include "support/records.hpp"
#include "support/white_space.hpp"
#include "support/wide.hpp"

namespace Kovra::frame {
namespace {

using test::LocaleGuard;
using test::same;
using test::unterminated;
using test::wide;

constexpr char const* oneRoot[] = {"data"};
constexpr char const* twoRoots[] = {"first", "second"};

/// What an entry found: the root's name and its first text, or that it refused.
constexpr char const* refused = "(refused)";

std::string described(Element root) {
  char const* const text = root.firstChild() ? nullptr : root.text();
  return std::string(root.name()) + ":" + (text != nullptr ? text : "");
}

template <class Length>
std::string readWideText(wchar_t const* text, Length length, Roots roots = oneRoot) {
  std::string found = refused;
  bool const result = readWide(text, length, roots, [&](Element root) {
    found = described(root);
    return true;
  });
  EXPECT_EQ(result, found != refused);
  return found;
}

std::string readWideText(std::wstring const& text, Roots roots = oneRoot) {
  return readWideText(text.c_str(), static_cast<int>(text.size()), roots);
}

std::string readNarrowText(char const* text, Roots roots = oneRoot) {
  std::string found = refused;
  bool const result = readNarrow(text, roots, [&](Element root) {
    found = described(root);
    return true;
  });
  EXPECT_EQ(result, found != refused);
  return found;
}

// ---- Roots -----------------------------------------------------------------------------------

TEST(Entry, FindsTheRootByItsExactName) {
  EXPECT_EQ(readNarrowText("<data>5</data>"), "data:5");
  for (char const* const xml :
       {"<Data>5</Data>", "<datas>5</datas>", "<dat/>", "<other><data/></other>"}) {
    EXPECT_EQ(readNarrowText(xml), refused) << xml;
    EXPECT_EQ(readWideText(wide(xml)), refused) << xml;
  }
}

TEST(Entry, PrefersTheFirstOfSeveralRootsWhateverTheirOrderInTheText) {
  EXPECT_EQ(readNarrowText("<first/>", twoRoots), "first:");
  EXPECT_EQ(readNarrowText("<second/>", twoRoots), "second:");
  EXPECT_EQ(readNarrowText("<second/><first/>", twoRoots), "first:");
  EXPECT_EQ(readNarrowText("<third/>", twoRoots), refused);
  EXPECT_EQ(readNarrowText("<first/>", Roots{}), refused);
}

TEST(Entry, FindsTheRootBehindOtherNodesOfTheTopLevel) {
  for (char const* const xml :
       {"<?xml version='1.0'?><!-- a --><!DOCTYPE data><data>5</data>", "<other/><data>5</data>",
        "\n\t <data>5</data>", "<data>5</data><data>6</data>"}) {
    EXPECT_EQ(readNarrowText(xml), "data:5") << xml;
    EXPECT_EQ(readWideText(wide(xml)), "data:5") << xml;
  }
}

TEST(Entry, ResultIsThatOfTheReading) {
  bool called = false;
  auto const fail = [&](Element) {
    called = true;
    return false;
  };
  EXPECT_FALSE(readWide(L"<data/>", 7, oneRoot, fail));
  EXPECT_TRUE(called);
  called = false;
  EXPECT_FALSE(readNarrow("<data/>", oneRoot, fail));
  EXPECT_TRUE(called);
}

// ---- What is refused and what is not ---------------------------------------------------------

TEST(Entry, RefusesMalformedTextsWhole) {
  for (char const* const xml :
       {"", " ", "text", "<", "<data", "<data>", "<data>5", "<data>5<", "<data>5</",
        "<data>5</data", "<data>5</other>", "<data a=1 a=2/>", "<data a/>", "<data a='/>",
        "<data><a></data>", "<data>5</data><data", "<data>5</data><b><c></b>", "<data>&#;x5</data",
        "<data>&#12</data>"}) {
    EXPECT_EQ(readNarrowText(xml), refused) << xml;
    EXPECT_EQ(readWideText(wide(xml)), refused) << xml;
  }
}

TEST(Entry, AcceptsWhatTinyXmlTolerates) {
  for (char const* const xml :
       {"<data>5</data>text behind", "<data>5</data><data>6</data>", "<data>5</data>\n\n",
        "<data a=1 b='2'>5</data>", "<data>5</data ><!-- open", "<data>5</data></data>",
        "<data>5</data>&"}) {
    EXPECT_EQ(readNarrowText(xml), "data:5") << xml;
    EXPECT_EQ(readWideText(wide(xml)), "data:5") << xml;
  }
  // What it makes of a bare ampersand is its own affair.
  TiXmlDocument document;
  document.Parse("<data>a & b</data>");
  std::string const byTinyXml = std::string("data:") + document.RootElement()->GetText();
  EXPECT_EQ(readNarrowText("<data>a & b</data>"), byTinyXml);
  EXPECT_EQ(readWideText(L"<data>a & b</data>"), byTinyXml);
}

// ---- The narrow entry ------------------------------------------------------------------------

TEST(NarrowEntry, RefusesANullText) {
  EXPECT_EQ(readNarrowText(nullptr), refused);
}

TEST(NarrowEntry, TakesAnyBytesInAnyLocale) {
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    EXPECT_EQ(readNarrowText("\xEF\xBB\xBF<data>5</data>"), "data:5") << locale;
    EXPECT_EQ(readNarrowText("<data>\xC3\xA9</data>"), "data:\xC3\xA9") << locale;
    EXPECT_EQ(readNarrowText("<data>\xFF</data>"), "data:\xFF") << locale;
  }
}

// TinyXML steps over as many bytes as a lead byte announces, also beyond the end of the text.
TEST(NarrowEntry, ReadsNothingBehindACutSequenceOfUtf8) {
  std::string const start = "<?xml encoding='UTF-8'?><data>";
  for (char const* const cut : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F", "\xF0\x9F\x98"}) {
    std::string const text = start + cut;
    std::unique_ptr<char[]> const exact(new char[text.size() + 1]);
    std::strcpy(exact.get(), text.c_str());
    EXPECT_EQ(readNarrowText(exact.get()), refused);
    EXPECT_EQ(readNarrowText((start + "5</data>" + cut).c_str()), "data:5");
  }
}

TEST(PrivateText, CopiesAsManyBytesAsItIsTold) {
  EXPECT_STREQ(PrivateText("abc", 3).data(), "abc");
  EXPECT_STREQ(PrivateText("abc", 2).data(), "ab");
  EXPECT_STREQ(PrivateText("", 0).data(), "");
  EXPECT_EQ(PrivateText("abc", 2).length(), 2U);
}

TEST(PrivateText, HasZerosBehindItsEnd) {
  char const zeros[padding] = {};
  for (std::size_t const length : {std::size_t{3}, PrivateText::shortText, std::size_t{100000}}) {
    std::string const text(length, 'a');
    for (char const* const locale : test::locales) {
      LocaleGuard const guard(locale);
      PrivateText narrow(text.data(), length);
      PrivateText fromWide(wide(text).data(), length);
      EXPECT_EQ(fromWide.length(), length);
      EXPECT_EQ(std::memcmp(narrow.data() + length, zeros, padding), 0);
      EXPECT_EQ(std::memcmp(fromWide.data() + length, zeros, padding), 0);
    }
  }
}

// ---- The wide entry: length ------------------------------------------------------------------

TEST(WideEntry, RefusesANullText) {
  EXPECT_EQ(readWideText<int>(nullptr, 5), refused);
}

TEST(WideEntry, RefusesALengthBelowOne) {
  for (int const length : {0, -1, INT_MIN}) {
    EXPECT_EQ(readWideText(L"<data/>", length), refused) << length;
  }
  EXPECT_EQ(readWideText(L"<data/>", 0UL), refused);
}

TEST(WideEntry, NeedsNoTerminator) {
  std::wstring const text = L"<data>5</data>";
  auto const exact = unterminated(text);
  EXPECT_EQ(readWideText(exact.get(), static_cast<int>(text.size())), "data:5");
  EXPECT_EQ(readWideText(exact.get(), text.size()), "data:5");
}

TEST(WideEntry, CutsATextThatIsLongerThanItsLength) {
  std::wstring const text = L"<data>5</data>";
  for (std::size_t length = 1; length < text.size(); ++length) {
    EXPECT_EQ(readWideText(text.c_str(), static_cast<int>(length)), refused) << length;
  }
  EXPECT_EQ(readWideText(L"<data>5</data><data", 14), "data:5");
}

TEST(WideEntry, EndsATextThatIsShorterThanItsLengthAtItsTerminator) {
  auto const exact = unterminated(std::wstring(L"<data>5</data>") + L'\0');
  for (int const length : {15, 16, 1000, INT_MAX}) {
    EXPECT_EQ(readWideText(exact.get(), length), "data:5") << length;
  }
  EXPECT_EQ(readWideText(exact.get(), ULONG_MAX), "data:5");
}

TEST(WideEntry, ReadsNothingBehindATerminator) {
  EXPECT_EQ(readWideText(std::wstring(L"<data>5</data>\0<data", 20)), "data:5");
  EXPECT_EQ(readWideText(std::wstring(L"<data>5\0</data>", 15)), refused);
}

// ---- The wide entry: character set -----------------------------------------------------------

TEST(WideEntry, EndsTheTextAtACharacterThatTheLocaleLacks) {
  std::wstring const within = L"<data>caf\u00E9</data>   ";
  std::wstring const behind = L"<data>5</data>\u00E9";
  {
    LocaleGuard const guard("C");
    EXPECT_EQ(readWideText(within), refused);
    EXPECT_EQ(readWideText(behind), "data:5");
    EXPECT_EQ(readWideText(L"\u00E9<data/>"), refused);
  }
  LocaleGuard const guard("C.UTF-8");
  EXPECT_EQ(readWideText(within), "data:caf\xC3\xA9");
  EXPECT_EQ(readWideText(behind), "data:5");
}

TEST(WideEntry, EndsTheTextAtWhatIsNoCharacter) {
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    for (unsigned const number : {0xD800U, 0xDFFFU, 0x80000000U, 0xFFFFFFFFU}) {
      std::wstring const bad(1, static_cast<wchar_t>(number));
      EXPECT_EQ(readWideText(L"<data>5</data>" + bad), "data:5") << locale << number;
      EXPECT_EQ(readWideText(L"<data>5" + bad + L"</data>          "), refused) << locale << number;
    }
  }
}

// The length counts characters, but as many bytes are all that is converted.
TEST(WideEntry, CutsATextWhoseBytesAreMoreThanItsLength) {
  LocaleGuard const guard("C.UTF-8");
  std::wstring const text = L"<data>\u00E9\u20AC\U0001F600</data>";  // 2, 3 and 4 bytes: 6 too many
  EXPECT_EQ(readWideText(text), refused);
  EXPECT_EQ(readWideText(text + L"     "), refused);
  EXPECT_EQ(readWideText(text + L"      "), "data:\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(readWideText(text.c_str(), static_cast<int>(text.size() + 6)),
            "data:\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
}

TEST(WideEntry, NeverCutsWithinACharacter) {
  LocaleGuard const guard("C.UTF-8");
  std::wstring const text = L"<data>5</data>\U0001F600";
  for (std::size_t length = 14; length <= 18; ++length) {
    PrivateText narrow(text.c_str(), length);
    EXPECT_STREQ(narrow.data(), length < 18 ? "<data>5</data>" : "<data>5</data>\xF0\x9F\x98\x80");
  }
}

// Whatever stands where: the text is that of the C library's own conversion.
TEST(WideEntry, ConvertsAsTheCLibraryDoes) {
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    for (unsigned const number : {0x7FU, 0x80U, 0xE9U, 0x20ACU, 0x1F600U, 0xD800U, 0xFFFFFFFFU}) {
      for (std::size_t place = 0; place < 50; ++place) {
        std::wstring text(50, L'x');
        text[place] = static_cast<wchar_t>(number);
        std::array<char, 64> expected{};
        static_cast<void>(std::wcstombs(expected.data(), text.c_str(), text.size()));
        auto const exact = unterminated(text);
        EXPECT_STREQ(PrivateText(exact.get(), text.size()).data(), expected.data())
            << locale << ' ' << number << " at " << place;
      }
    }
  }
}

// Long texts are measured piece by piece, and not at all before a host's length has to be doubted.
TEST(WideEntry, ConvertsLongTextsAsTheCLibraryDoes) {
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    for (std::size_t const place : {4095U, 4096U, 4097U, 8191U, 8192U, 8193U, 12287U, 12288U}) {
      for (unsigned const number : {0U, 0x7FU, 0xE9U, 0x20ACU, 0xD800U}) {
        std::wstring text(13000, L'x');
        text[place] = static_cast<wchar_t>(number);
        auto const exact = unterminated(text + L'\0');
        for (std::size_t const length : {place, place + 1, text.size(), text.size() + 1}) {
          std::vector<char> expected(length + 1);
          static_cast<void>(std::wcstombs(expected.data(), exact.get(), length));
          PrivateText narrow(exact.get(), length);
          EXPECT_STREQ(narrow.data(), expected.data()) << locale << number << " at " << place;
          EXPECT_EQ(narrow.length(), std::strlen(expected.data()));
        }
      }
    }
  }
}

// In a block of exactly its size, so that nothing behind the terminator can be looked at.
TEST(WideEntry, ConvertsLettersOfATextThatIsShorterThanItsLength) {
  LocaleGuard const guard("C.UTF-8");
  for (std::size_t const size : {0U, 10U, 3000U, 20'000U}) {
    std::wstring const text =
        L"<data>caf\u00E9</data>" + std::wstring(size, L' ') + L"<!--\u20AC-->";
    auto const exact = unterminated(text + L'\0');
    for (std::size_t const length :
         {text.size() * MB_CUR_MAX, std::size_t{INT_MAX}, ~std::size_t{0}}) {
      EXPECT_EQ(readWideText(exact.get(), length), "data:caf\xC3\xA9") << size << ' ' << length;
    }
  }
}

TEST(WideEntry, EndsALongTextAtItsTerminatorWhateverItsLength) {
  std::wstring const text = L"<data>5</data>" + std::wstring(20'000, L' ');
  auto const exact = unterminated(text + L'\0');
  std::size_t const mebibyte = std::size_t{1} << 20U;
  for (std::size_t const length : {text.size(), text.size() + 1, mebibyte, 64 * mebibyte,
                                   64 * mebibyte + 1, ~std::size_t{0}}) {
    EXPECT_EQ(readWideText(exact.get(), length), "data:5") << length;
    EXPECT_EQ(PrivateText(exact.get(), length).length(), text.size()) << length;
  }
}

TEST(WideEntry, TakesAByteOrderMarkWhenTheLocaleHasIt) {
  std::wstring const text = L"\uFEFF<data>5</data>";
  {
    LocaleGuard const guard("C");
    EXPECT_EQ(readWideText(text + L"  "), refused);
  }
  LocaleGuard const guard("C.UTF-8");
  EXPECT_EQ(readWideText(text + L"  "), "data:5");
  EXPECT_EQ(readWideText(text), refused);  // the mark's two further bytes cut the end
}

// ---- Hostile texts ---------------------------------------------------------------------------

std::string repeated(std::string const& text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

std::string nested(std::size_t depth) {
  return "<data>" + repeated("<a>", depth - 1) + repeated("</a>", depth - 1) + "</data>";
}

std::string withAttributes(std::size_t count) {
  std::string text = "<data";
  for (std::size_t i = 0; i < count; ++i) text += " a" + std::to_string(i) + "=''";
  return text + "/>";
}

/// What both entries say to a text, in both locales, when they agree.
std::string readByBoth(std::string const& text) {
  std::string const found = readNarrowText(text.c_str());
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    EXPECT_EQ(readWideText(wide(text)), found) << locale;
  }
  return found;
}

TEST(HostileTexts, AreRefusedWhereNestingIsDeeperThan128) {
  EXPECT_EQ(readByBoth(nested(128)), "data:");
  EXPECT_EQ(readByBoth(nested(129)), refused);
}

TEST(HostileTexts, AreRefusedWhereAnElementHasMoreThan256Attributes) {
  EXPECT_EQ(readByBoth(withAttributes(256)), "data:");
  EXPECT_EQ(readByBoth(withAttributes(257)), refused);
  EXPECT_EQ(readByBoth("<data>" + repeated(withAttributes(256), 3) + "</data>"), "data:");
}

TEST(HostileTexts, AreRefusedAlsoBehindTheRoot) {
  EXPECT_EQ(readByBoth("<data/>" + nested(129)), refused);
  EXPECT_EQ(readByBoth("<data/>" + withAttributes(257)), refused);
}

// An order of magnitude above what it takes, and one below what it would take TinyXML.
void expectRefusedSoon(std::string const& text) {
  auto const start = std::chrono::steady_clock::now();
  EXPECT_EQ(readByBoth(text), refused) << text.substr(0, 40);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10))
      << text.substr(0, 40);
}

TEST(HostileTexts, CostNoMoreThanTheirLengthIsWorth) {
  std::string const million(1000000, '<');
  for (std::string const& text :
       {repeated("<a>", 100000), nested(100000), "<data>" + repeated("<a>", 100000),
        withAttributes(100000), withAttributes(100000).insert(0, "<data>"), million,
        "<data>" + million, "<data " + million, "<data a='" + million,
        "<data>" + repeated("&#", 500000), "<data>" + repeated("&#1", 300000)}) {
    expectRefusedSoon(text);
  }
}

// Under the address sanitizer, a search that looks at the whole rest of the text shows here.
TEST(HostileTexts, OfManySmallNodesCostNoMoreThanTheirLengthIsWorth) {
  for (char const* const node : {"<!-->-->", "</a>", "<?a?>", "<!a>", "<![CDATA[]]>", "&#1;"}) {
    expectRefusedSoon("<data>" + repeated(node, 50000));
    expectRefusedSoon(repeated(node, 50000));
  }
}

TEST(HostileTexts, OfAMegabyteThatIsHarmlessAreRead) {
  EXPECT_EQ(readByBoth("<data>" + repeated("<a/>", 250000) + "</data>"), "data:");
  EXPECT_EQ(readByBoth("<data>5</data>" + std::string(1000000, '<')), "data:5");
  std::string const text(1000000, 'x');
  EXPECT_EQ(readByBoth("<data>" + text + "</data>"), "data:" + text);
}

// ---- Readers that are documents ----------------------------------------------------------------

/// All that a host sees of a document, also the byte order mark that it would save.
std::string shown(TiXmlDocument const& document) {
  char* saved = nullptr;
  std::size_t size = 0;
  std::FILE* const file = ::open_memstream(&saved, &size);
  document.SaveFile(file);
  std::fclose(file);
  std::string const text(saved, size);
  std::free(saved);
  return std::to_string(document.Error()) + ' ' + std::to_string(document.ErrorId()) + " (" +
         document.ErrorDesc() + ") at " + std::to_string(document.ErrorRow()) + ':' +
         std::to_string(document.ErrorCol()) + ", itself at " + std::to_string(document.Row()) +
         ':' + std::to_string(document.Column()) + ", tabs " + std::to_string(document.TabSize()) +
         ", saved as [" + text + ']';
}

/// The document that reads the text itself, and the one that TinyXML's parser fills.
struct TwoDocuments {
  TiXmlDocument reader;
  TiXmlDocument byTinyXml;

  void read(std::string const& text) {
    readAsDocument(reader, text.c_str(), oneRoot, [](Element) { return true; });
    std::string const padded = text + std::string(padding, '\0');
    byTinyXml.SetTabSize(0);
    byTinyXml.Parse(padded.c_str());
    byTinyXml.Clear();
  }
};

testing::AssertionResult looksTheSame(std::string const& text) {
  TwoDocuments fresh;
  fresh.read(text);
  TwoDocuments used;
  used.read("\xEF\xBB\xBF<a b='");
  used.read(text);
  for (TwoDocuments const* const both : {&fresh, &used}) {
    std::string const actual = shown(both->reader);
    std::string const expected = shown(both->byTinyXml);
    if (actual != expected) {
      return testing::AssertionFailure() << text << "\n  is " << actual << "\n not " << expected;
    }
  }
  return testing::AssertionSuccess();
}

TEST(DocumentEntry, ShowsTheOutcomeThatTinyXmlShows) {
  for (char const* const text : {"",
                                 " ",
                                 "\n",
                                 "text",
                                 "<",
                                 "<>",
                                 "<a/>",
                                 "<data>5</data>",
                                 "<a",
                                 "<a ",
                                 "<a b",
                                 "<a b ",
                                 "<a b=",
                                 "<a b= ",
                                 "<a b=c",
                                 "<a b=c ",
                                 "<a b='",
                                 "<a b='c'",
                                 "<a b=c'>",
                                 "<a/",
                                 "<a/ >",
                                 "<a>",
                                 "<a> ",
                                 "<a>text",
                                 "<a><b>",
                                 "<a></",
                                 "<a></a",
                                 "<a></b>",
                                 "<a></a b>",
                                 "<a b b>",
                                 "<a b=1 b=2>",
                                 "<a>&#;</a>",
                                 "<a b='&#'>",
                                 "<a><!--",
                                 "<a><?xml a",
                                 "<!--",
                                 "<?xml",
                                 "\xEF\xBB\xBF",
                                 "\xEF\xBB\xBF<a",
                                 "\xEF\xBB\xBF<a/>",
                                 "\xEF\xBB\xBF<a b=",
                                 "\xEF\xBB\xBF<\xEF\xBB\xBF"}) {
    EXPECT_TRUE(looksTheSame(text));
  }
}

TEST(DocumentEntry, ShowsTheOutcomeThatTinyXmlShowsOfBrokenReplies) {
  std::string const reply =
      "\xEF\xBB\xBF<?xml version='1.0'?><data a='1' b=\"&lt;\" c=2><!-- n --><d>&#65; e</d>"
      "<![CDATA[ f ]]><g h=''/>\n</data >";
  for (std::size_t length = 0; length <= reply.size(); ++length) {
    ASSERT_TRUE(looksTheSame(reply.substr(0, length)));
    for (char const c : {'<', '>', '/', '=', '\'', '"', '&', ' ', 'x', '\xEF'}) {
      std::string changed = reply;
      changed[std::min(length, reply.size() - 1)] = c;
      ASSERT_TRUE(looksTheSame(changed));
    }
  }
}

TEST(DocumentEntry, ShowsHostileRepliesLikeMalformedOnes) {
  for (std::string const& earlier : {std::string("<data/>"), std::string("<data>")}) {
    for (std::string const& hostile : {nested(129), withAttributes(257)}) {
      TiXmlDocument document;
      readAsDocument(document, earlier.c_str(), oneRoot, [](Element) { return true; });
      EXPECT_FALSE(
          readAsDocument(document, hostile.c_str(), oneRoot, [](Element) { return true; }));
      EXPECT_TRUE(document.Error());
      EXPECT_EQ(document.ErrorId(), TiXmlBase::TIXML_ERROR_PARSING_ELEMENT);
      EXPECT_TRUE(document.NoChildren());
    }
  }
}

TEST(DocumentEntry, LeavesNoNodesWhateverHappens) {
  for (std::string const& text : {std::string("<data/>"), std::string("<data>"), nested(129)}) {
    TiXmlDocument document;
    document.LinkEndChild(new TiXmlElement("before"));
    readAsDocument(document, text.c_str(), oneRoot, [](Element) { return true; });
    EXPECT_TRUE(document.NoChildren()) << text.substr(0, 20);
  }
  TiXmlDocument document;
  document.LinkEndChild(new TiXmlElement("before"));
  EXPECT_THROW(
      readAsDocument(document, "<data/>", oneRoot, [](Element) -> bool { throw std::bad_alloc(); }),
      std::bad_alloc);
  EXPECT_TRUE(document.NoChildren());
}

// ---- Broken copies of a real reply -----------------------------------------------------------

struct Read {
  bool result;
  KVGeneralStatus record;
};

/// What TinyXML by itself makes of a text that ends with zeros, read by the public element reader.
Read judgedByTinyXml(char const* text) {
  Read read{false, test::filled<KVGeneralStatus>()};
  TiXmlDocument document;
  document.Parse(text);
  TiXmlElement* const root = document.FirstChildElement("get_general_status");
  if (!document.Error() && root != nullptr) {
    read.result = KVXStatusParser().parseStatus(root, read.record);
  }
  return read;
}

/// The classic conversion of wide text: as many bytes as there are characters, and zeros.
Read judgedByTinyXml(std::wstring const& text) {
  std::vector<char> narrow(text.size() * 4 + padding);
  static_cast<void>(std::wcstombs(narrow.data(), text.c_str(), text.size()));
  return judgedByTinyXml(narrow.data());
}

Read readByTheWideEntry(std::wstring const& text) {
  Read read{false, test::filled<KVGeneralStatus>()};
  auto const exact = unterminated(text);
  read.result =
      KVXStatusParser().ParseStatus(*exact.get(), static_cast<int>(text.size()), read.record);
  return read;
}

/// The elements of a tree and their first texts, as a tree of TinyXML's.
std::unique_ptr<TiXmlElement> copyOf(Element root) {
  auto copy = std::make_unique<TiXmlElement>(std::string(root.name()));
  for (Element child = root.firstChild(); child; child = child.nextSibling()) {
    copy->LinkEndChild(copyOf(child).release());
  }
  if (!root.firstChild() && root.text() != nullptr) copy->LinkEndChild(new TiXmlText(root.text()));
  return copy;
}

Read readByTheNarrowEntry(std::string const& text) {
  constexpr char const* roots[] = {"get_general_status"};
  Read read{false, test::filled<KVGeneralStatus>()};
  read.result = readNarrow(text.c_str(), roots, [&](Element root) {
    auto const copy = copyOf(root);
    return KVXStatusParser().parseStatus(copy.get(), read.record);
  });
  return read;
}

testing::AssertionResult agree(Read const& actual, Read const& expected) {
  if (actual.result != expected.result) {
    return testing::AssertionFailure() << "result is " << actual.result;
  }
  return same(actual.record, expected.record);
}

TEST(BrokenReplies, CutAtAnyByteAreReadOnlyWhereTinyXmlReadsThem) {
  std::string const& reply = test::generalStatusReply;
  std::size_t refusals = 0;
  for (std::size_t length = 1; length < reply.size(); ++length) {
    std::string const cut = reply.substr(0, length);
    std::string padded = cut + std::string(padding, '\0');
    Read const expected = judgedByTinyXml(padded.c_str());
    EXPECT_TRUE(agree(readByTheNarrowEntry(cut), expected)) << "at " << length;
    EXPECT_TRUE(agree(readByTheWideEntry(wide(cut)), expected)) << "at " << length;
    refusals += expected.result ? 0 : 1;
  }
  // Only the line break behind the root may be missing.
  EXPECT_EQ(refusals, reply.size() - 2);
}

TEST(BrokenReplies, WithAnyBitFlippedAreReadOnlyWhereTinyXmlReadsThem) {
  std::string const& reply = test::generalStatusReply;
  for (char const* const locale : test::locales) {
    LocaleGuard const guard(locale);
    for (std::size_t bit = 0; bit < reply.size() * 8; ++bit) {
      std::string flipped = reply;
      flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
      std::string const padded = flipped + std::string(padding, '\0');
      EXPECT_TRUE(agree(readByTheNarrowEntry(flipped), judgedByTinyXml(padded.c_str())))
          << locale << " bit " << bit;
      std::wstring const text = wide(flipped);
      EXPECT_TRUE(agree(readByTheWideEntry(text), judgedByTinyXml(text)))
          << locale << " bit " << bit;
    }
  }
}

TEST(BrokenReplies, SentTwiceInOneTextAreReadOnce) {
  std::string const& reply = test::generalStatusReply;
  Read const once = readByTheWideEntry(wide(reply));
  EXPECT_TRUE(once.result);
  EXPECT_TRUE(agree(readByTheWideEntry(wide(reply + reply)), once));
}

// ---- Where a host lets TinyXML keep white space ------------------------------------------------

TEST(KeptWhiteSpace, IsReadByTheEntriesAsByTheElementReaders) {
  constexpr unsigned seed = 20240311;
  SCOPED_TRACE(seed);
  test::NastyTexts texts(seed);
  test::KeptWhiteSpace const kept;
  int good = 0;
  for (int i = 0; i < 300; ++i) {
    std::string const text =
        i == 0 ? test::generalStatusReply : texts.changed(test::generalStatusReply);
    std::string const padded = text + std::string(padding, '\0');
    Read const expected = judgedByTinyXml(padded.c_str());
    EXPECT_TRUE(agree(readByTheNarrowEntry(text), expected)) << text;
    EXPECT_TRUE(agree(readByTheWideEntry(wide(text)), judgedByTinyXml(wide(text)))) << text;
    good += expected.result ? 1 : 0;
  }
  EXPECT_GT(good, 30);
}

TEST(KeptWhiteSpace, StaysInWhatIsRead) {
  std::string const text =
      "<printer_id>\n <vendor>  a \n b\t</vendor> <printer_model> &#32; </printer_model>\n"
      " <oem_country><![CDATA[  ]]></oem_country> <hcb_fw_version>&#32;c </hcb_fw_version>\n"
      "</printer_id>";
  auto const read = [&] {
    KVPrinterInfo info = test::filled<KVPrinterInfo>();
    EXPECT_TRUE(KVXPrinterIDParser().ParsePrinterInfo(text.c_str(), 0, info));
    TiXmlDocument document;
    document.Parse(text.c_str());
    KVPrinterInfo byTinyXml = test::filled<KVPrinterInfo>();
    EXPECT_TRUE(KVXPrinterIDParser().parsePrinterInfo(document.RootElement(), byTinyXml));
    EXPECT_TRUE(same(info, byTinyXml));
    return info;
  };
  KVPrinterInfo const condensed = read();
  EXPECT_STREQ(condensed.vendor, "a b");
  EXPECT_STREQ(condensed.oem_country, "  ");
  EXPECT_STREQ(condensed.hcb_fw_version, " c");

  test::KeptWhiteSpace const kept;
  KVPrinterInfo const whole = read();
  EXPECT_STREQ(whole.vendor, "  a \n b\t");
  EXPECT_STREQ(whole.oem_country, "  ");
  EXPECT_STREQ(whole.hcb_fw_version, " c ");
  EXPECT_TRUE(same(whole.printer_model, condensed.printer_model)) << "blank, so there is no text";
}

}  // namespace
}  // namespace Kovra::frame
