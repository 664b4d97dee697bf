#include "frame/wipe.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <string>

#include "frame/entry.hpp"
#include "frame/output.hpp"
#include "support/allocations.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra::frame {
namespace {

using test::Released;
using test::Tree;
using test::wide;

bool isZero(char const* bytes, std::size_t length) {
  return std::all_of(bytes, bytes + length, [](char byte) { return byte == '\0'; });
}

TEST(Wipe, OverwritesTextsAndAttributesOfATreeAndKeepsItsShape) {
  Tree tree("<r a='1' b='2'>text<c d='3'><!--note--><e><f>deep</f></e></c><g/>more</r>");
  wipeBelow(*tree.root());
  EXPECT_STREQ(tree.root()->Value(), "r");
  EXPECT_STREQ(tree.root()->Attribute("a"), "1") << "below means below";
  TiXmlNode const* const text = tree.root()->FirstChild();
  EXPECT_STREQ(text->Value(), "");
  TiXmlElement const* const c = text->NextSibling()->ToElement();
  ASSERT_NE(c, nullptr);
  EXPECT_STREQ(c->Attribute("d"), "");
  EXPECT_STREQ(c->FirstChild()->Value(), "");
  EXPECT_STREQ(c->LastChild()->FirstChild()->FirstChild()->Value(), "");
  EXPECT_EQ(tree.root()->LastChild()->ValueStr(), std::string(4, '\0'));
  EXPECT_EQ(*c->Attribute(std::string("d")), std::string(1, '\0'));
}

TEST(Wipe, TakesTreesWithoutChildren) {
  TiXmlDocument empty;
  wipeBelow(empty);
  TiXmlElement alone("alone");
  wipeBelow(alone);
  EXPECT_STREQ(alone.Value(), "alone");
}

TEST(Wipe, BoundsThePrintedTextFromAbove) {
  for (char const* const xml :
       {"<?xml version='1.0' encoding='UTF-8' standalone='yes'?><r/>", "<r/>", "<r>&lt;</r>",
        "<r a='&quot;&quot;&quot;&quot;'><b><c><d>&apos;&apos;&apos;</d></c></b></r>",
        "<r>t<b/>t<b/>t<!--c--><![CDATA[<<<]]></r>",
        "<a><a><a><a><a><a><a><a><a/></a></a></a></a></a></a></a></a>"}) {
    TiXmlDocument document;
    document.Parse(xml);
    ASSERT_FALSE(document.Error()) << xml;
    EXPECT_GE(printedBound(document), test::printedByTinyxml(document).size()) << xml;
  }
}

TEST(Wipe, APrintersTextNeverMoves) {
  TiXmlDocument document;
  document.LinkEndChild(new TiXmlElement("r"));
  for (int i = 0; i < 100; ++i) {
    document.RootElement()->LinkEndChild(new TiXmlElement("e"));
    document.RootElement()->LastChild()->LinkEndChild(new TiXmlText("&&&&&&&&"));
  }
  SecretPrinter printer(document);
  char const* const before = printer.CStr();
  ASSERT_TRUE(document.Accept(&printer));
  EXPECT_EQ(printer.CStr(), before);
  EXPECT_GT(printer.Size(), 4000U);
}

TEST(Wipe, ARecordIsWipedAtTheEndOfTheScope) {
  char record[300];
  std::memset(record, 's', sizeof record);
  { WipedAtEnd const wiped(record); }
  EXPECT_TRUE(isZero(record, sizeof record));
}

TEST(Wipe, ATextWithoutTerminatorGetsOne) {
  char const full[4] = {'f', 'u', 'l', 'l'};
  char const half[4] = {'h', 'a', '\0', 'f'};
  EXPECT_STREQ(TerminatedText(full).get(), "full");
  TerminatedText const terminated(half);
  EXPECT_EQ(terminated.get(), half) << "not copied without need";
}

TEST(Wipe, ACopyOfATextIsWiped) {
  using Text = TerminatedText<100>;
  char array[100];
  std::memset(array, 's', sizeof array);
  alignas(Text) unsigned char place[sizeof(Text)] = {};
  Text* const text = new (place) Text(array);
  EXPECT_EQ(std::strlen(text->get()), sizeof array);
  text->~Text();
  // The address that the object also holds may have any byte in it, once.
  unsigned char const secret[] = {'s', 's', 's'};
  EXPECT_EQ(std::search(std::begin(place), std::end(place), std::begin(secret), std::end(secret)),
            std::end(place));
}

class WipedBlocks : public test::HeapTest {};

TEST_F(WipedBlocks, AreThoseOfAReplysText) {
  std::string const secret = "very-secret-key";
  std::string const xml =
      std::string(PrivateText::shortText, ' ') + "<keys><k>" + secret + "</k></keys>";
  std::wstring const text = wide(xml);
  Released const released(secret);
  {
    Reply const fromWide(text.data(), text.size());
    Reply const fromNarrow(xml.data(), xml.size());
    ASSERT_STREQ(firstElement(fromWide.tree()).firstChild().text(), secret.c_str());
  }
  EXPECT_EQ(released.found(), 0U);
}

TEST_F(WipedBlocks, AreToldFromOthers) {
  std::string const secret = "very-secret-key";
  Released const released(secret);
  { auto const copy = std::make_unique<std::string>(secret); }
  EXPECT_EQ(released.found(), 1U);
}

}  // namespace
}  // namespace Kovra::frame
