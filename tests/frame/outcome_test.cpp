// What a host sees of a reader that is itself a document, after it has read.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "frame/entry.hpp"
#include "kvxconfigparser.h"
#include "kvxprinteridparser.h"
#include "support/nasty_texts.hpp"
#include "support/records.hpp"
#include "support/twin_trees.hpp"

namespace Kovra::frame {

namespace {

using namespace std::string_literals;

// What the document would write into a file: nothing, or a byte order mark.
std::string written(TiXmlDocument const& document) {
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::tmpfile(), std::fclose);
  EXPECT_TRUE(document.SaveFile(file.get()));
  std::rewind(file.get());
  std::string bytes(100, '\0');
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
  return bytes;
}

std::string seenOf(TiXmlDocument const& document) {
  std::ostringstream out;
  out << document.Error() << ' ' << test::errorOf(document) << ", tab " << document.TabSize()
      << ", at " << document.Row() << ':' << document.Column()
      << (document.NoChildren() ? "" : ", with nodes") << ", writes "
      << test::quoted(written(document));
  return out.str();
}

// A document that parses what the reader reads, and is cleared.
class Model : public TiXmlDocument {
 public:
  void read(std::string const& text) {
    std::string const padded = text + std::string(padding, '\0');
    SetTabSize(0);
    Parse(padded.c_str());
    Clear();
  }
};

bool read(KVXPrinterIDParser& parser, std::string const& text) {
  KVPrinterInfo record = test::filled<KVPrinterInfo>();
  return parser.ParsePrinterInfo(text.c_str(), 0, record);
}
bool read(KVXConfigParser& parser, std::string const& text) {
  auto const record = std::make_unique<_KVConfiguration>(test::filled<_KVConfiguration>());
  return parser.GetConfiguration(text.c_str(), 0, *record);
}

template <class Parser>
class DocumentOutcome : public testing::Test {
 protected:
  // One after the other, with the same document.
  void expectSeen(std::vector<std::string> const& texts) {
    Parser parser;
    Model model;
    EXPECT_EQ(seenOf(parser), seenOf(model));
    for (std::string const& text : texts) {
      read(parser, text);
      model.read(text);
      EXPECT_EQ(seenOf(parser), seenOf(model)) << testing::PrintToString(text);
    }
  }
};

using Parsers = testing::Types<KVXPrinterIDParser, KVXConfigParser>;
TYPED_TEST_SUITE(DocumentOutcome, Parsers);

// One of every kind of fault, and with every error of TinyXML that a text can have.
std::vector<std::string> const malformed = {"",
                                            " ",
                                            "text",
                                            "text<a/>",
                                            "\xEF\xBB\xBF",
                                            "\xEF\xBB\xBFtext",
                                            "<a",
                                            "<a ",
                                            "<a b",
                                            "<a b ",
                                            "<a b=",
                                            "<a b= ",
                                            "<a b=c",
                                            "<a b='c",
                                            "<a b='c'",
                                            "<a b='c' ",
                                            "<a b>",
                                            "<a 1>",
                                            "<a b=c'>",
                                            "<a b='' b=''/>",
                                            "<a b='&#z;'/>",
                                            "<a/",
                                            "<a/ >",
                                            "<a>",
                                            "<a> ",
                                            "<a>text",
                                            "<a>&#z;</a>",
                                            "<a><",
                                            "<a></",
                                            "<a></a",
                                            "<a></a ",
                                            "<a></b>",
                                            "<a></a b>",
                                            "<a><!--",
                                            "<a><![CDATA[",
                                            "<a><?",
                                            "<a><?xml",
                                            "<a><?xml version?></a>",
                                            "<a><b></a>",
                                            "<a/><b",
                                            "<a/><b></c>",
                                            "\xEF\xBB\xBF<a>\xC3",
                                            "\xEF\xBB\xBF<\xEF\xBB\xBF>",
                                            "\xEF\xBB\xBF<a></b>",
                                            "<printer_id><vendor>x</vendor>",
                                            "<configuration><usb_timeout></configuration>"};

std::vector<std::string> const good = {"<a/>",
                                       "<!-- x -->",
                                       "<printer_id><vendor>x</vendor></printer_id>",
                                       "<configuration><usb_speed>full</usb_speed></configuration>",
                                       "<a/>text",
                                       "<a/><!-- open",
                                       "<?xml version=1'?>"};

TYPED_TEST(DocumentOutcome, IsTheErrorOfAMalformedText) {
  for (std::string const& text : malformed) {
    this->expectSeen({text});
    TypeParam parser;
    EXPECT_FALSE(read(parser, text));
    EXPECT_TRUE(parser.Error()) << text;
    EXPECT_STRNE(parser.ErrorDesc(), "") << text;
    EXPECT_TRUE(parser.NoChildren()) << text;
  }
}

TYPED_TEST(DocumentOutcome, IsNoErrorAfterAGoodText) {
  for (std::string const& text : good) {
    this->expectSeen({text});
    TypeParam parser;
    read(parser, text);
    EXPECT_FALSE(parser.Error()) << text;
    EXPECT_STREQ(parser.ErrorDesc(), "") << text;
    EXPECT_TRUE(parser.NoChildren()) << text;
  }
}

TYPED_TEST(DocumentOutcome, IsThatOfTheLatestText) {
  std::vector<std::string> mixed;
  for (std::size_t i = 0; i < malformed.size(); ++i) {
    mixed.push_back(malformed[i]);
    if (i % 2 == 0) mixed.push_back(good[i % good.size()]);
  }
  this->expectSeen(mixed);
}

TYPED_TEST(DocumentOutcome, KeepsAByteOrderMarkInMind) {
  for (char const* const text : {"<a/>", "<a>", "<a></b>", "<a b", "text", ""}) {
    this->expectSeen({"\xEF\xBB\xBF"s + text});
    this->expectSeen({"\xEF\xBB\xBF"s + text, "<a/>"});
    this->expectSeen({"<a/>", "\xEF\xBB\xBF"s + text});
  }
}

TYPED_TEST(DocumentOutcome, IsTinyXmlsForNastyTexts) {
  constexpr unsigned seed = 20221224;
  SCOPED_TRACE(seed);
  test::NastyTexts nasty(seed);
  std::vector<std::string> texts;
  for (int i = 0; i < 1000; ++i) {
    std::string const text = nasty.next();
    texts.push_back(text.substr(0, text.find('\0')));
  }
  this->expectSeen(texts);
}

std::string repeat(std::string const& piece, std::size_t times) {
  std::string text;
  while (times-- > 0) text += piece;
  return text;
}

TYPED_TEST(DocumentOutcome, OfAHarmfulTextIsThatOfAMalformedOne) {
  std::string attributes = "<a";
  for (int i = 0; i <= 256; ++i) attributes += " b" + std::to_string(i) + "=''";
  for (std::string const& text :
       {repeat("<a>", 129) + repeat("</a>", 129), repeat("<a>", 100000), attributes + "/>"}) {
    TypeParam parser;
    EXPECT_FALSE(read(parser, text));
    EXPECT_TRUE(parser.Error());
    EXPECT_STRNE(parser.ErrorDesc(), "");
    EXPECT_TRUE(parser.NoChildren());
    EXPECT_EQ(parser.TabSize(), 0);
    read(parser, "<a/>");
    EXPECT_FALSE(parser.Error());
  }
}

TYPED_TEST(DocumentOutcome, OfNoTextIsWhatItWas) {
  TypeParam parser;
  auto const record = std::make_unique<_KVConfiguration>(test::filled<_KVConfiguration>());
  read(parser, "<a></b>");
  std::string const before = seenOf(parser);
  if constexpr (std::is_same_v<TypeParam, KVXConfigParser>) {
    EXPECT_FALSE(parser.GetConfiguration(nullptr, 5, *record));
  } else {
    KVPrinterInfo info = test::filled<KVPrinterInfo>();
    EXPECT_FALSE(parser.ParsePrinterInfo(nullptr, 5, info));
  }
  EXPECT_EQ(seenOf(parser), before);
}

}  // namespace

}  // namespace Kovra::frame
