#include "kvxmediaparser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/allocations.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/tree.hpp"

namespace Kovra {
namespace {

using test::filled;
using test::same;
using test::Tree;

struct Destroy {
  void operator()(_KVMediaInfo* media) const { DestroyKVMedia(media); }
};
using Media = std::unique_ptr<_KVMediaInfo, Destroy>;

Media built() {
  Media media(GetKVMedia());
  BuildKVMedia(media.get());
  return media;
}

void read(std::string const& text, _KVMediaInfo& media) {
  // Of exactly its size: a sanitizer sees every step beyond.
  std::unique_ptr<char[]> const buffer(new char[text.size() + 1]);
  std::memcpy(buffer.get(), text.c_str(), text.size() + 1);
  EXPECT_FALSE(KVXMediaParser().GetMedia(*buffer.get(), static_cast<int>(text.size()), media));
}

/// "2 1 0 0": how many cards, films, ribbons and laminates.
std::string sizes(_KVMediaInfo const& media) {
  return std::to_string(media.cards->size()) + ' ' + std::to_string(media.films->size()) + ' ' +
         std::to_string(media.ribbons->size()) + ' ' + std::to_string(media.laminates->size());
}

std::string element(std::string const& name, std::string const& content) {
  return "<" + name + ">" + content + "</" + name + ">";
}

std::string sizesAfter(std::string const& children) {
  Media const media = built();
  read(element("media", children), *media);
  return sizes(*media);
}

// ---- The life of a record --------------------------------------------------------------------

TEST(MediaRecord, StartsWithoutLists) {
  Media const media(GetKVMedia());
  ASSERT_NE(media, nullptr);
  EXPECT_EQ(media->cards, nullptr);
  EXPECT_EQ(media->films, nullptr);
  EXPECT_EQ(media->ribbons, nullptr);
  EXPECT_EQ(media->laminates, nullptr);
}

TEST(MediaRecord, IsBuiltWithFourEmptyLists) {
  EXPECT_EQ(sizes(*built()), "0 0 0 0");
}

TEST(MediaRecord, IsDestroyedInAnyState) {
  DestroyKVMedia(nullptr);
  DestroyKVMedia(GetKVMedia());
  _KVMediaInfo* const partly = GetKVMedia();
  partly->films = new std::vector<_MediaRibbonInfo*>{new _MediaRibbonInfo{}, nullptr};
  DestroyKVMedia(partly);
  BuildKVMedia(nullptr);
}

TEST(MediaRecord, TakesWhatItsListsHoldWithIt) {
  Media const media = built();
  media->cards->push_back(new _CardInfo{});
  media->films->push_back(new _MediaRibbonInfo{});
  media->ribbons->push_back(new _MediaRibbonInfo{});
  media->laminates->push_back(new _MediaRibbonInfo{});
  // Whether all of it goes is seen by the leak sanitizer, and by the test of the heap below.
}

// ---- Lists -----------------------------------------------------------------------------------

TEST(GetMedia, AppendsTheEntriesOfEachList) {
  EXPECT_EQ(sizesAfter("<cards><card/><card/></cards>"), "2 0 0 0");
  EXPECT_EQ(sizesAfter("<films><film/></films>"), "0 1 0 0");
  EXPECT_EQ(sizesAfter("<laminates><laminate/><laminate/><laminate/></laminates>"), "0 0 0 3");
  EXPECT_EQ(sizesAfter("<cards><card/></cards><films/><cards><card/></cards>"), "2 0 0 0");
}

TEST(GetMedia, SearchesRibbonsForLaminates) {
  EXPECT_EQ(sizesAfter("<ribbons><ribbon/><ribbon/></ribbons>"), "0 0 0 0");
  EXPECT_EQ(sizesAfter("<ribbons><laminate/></ribbons>"), "0 0 0 1");
  EXPECT_EQ(sizesAfter("<ribbons><ribbon/><laminate/></ribbons><laminates><laminate/></laminates>"),
            "0 0 0 2");
}

TEST(GetMedia, SkipsOtherNames) {
  EXPECT_EQ(sizesAfter("<Cards><card/></Cards>"), "0 0 0 0");
  EXPECT_EQ(sizesAfter("<cards><Card/><film/><laminate/></cards>"), "0 0 0 0");
  EXPECT_EQ(sizesAfter("<films><card/><films/></films>"), "0 0 0 0");
  EXPECT_EQ(sizesAfter("<laminates><ribbon/></laminates>"), "0 0 0 0");
  EXPECT_EQ(sizesAfter("<card/><film/><laminate/>"), "0 0 0 0");
  EXPECT_EQ(sizesAfter("<!-- x --><cards>text<card/><!-- y --></cards>"), "1 0 0 0");
}

TEST(GetMedia, AppendsToWhatEarlierReadingsFound) {
  Media const media = built();
  read("<media><cards><card><cal_table>1</cal_table></card></cards></media>", *media);
  _CardInfo const* const first = media->cards->front();
  read("<media><cards><card><cal_table>2</cal_table></card></cards></media>", *media);
  ASSERT_EQ(sizes(*media), "2 0 0 0");
  EXPECT_EQ(media->cards->front(), first);
  EXPECT_EQ((*media->cards)[0]->cal_table, 1);
  EXPECT_EQ((*media->cards)[1]->cal_table, 2);
}

TEST(GetMedia, LeavesListsAloneThatTheRecordLacks) {
  char const everything[] =
      "<media><cards><card/></cards><films><film/></films><ribbons><laminate/></ribbons>"
      "<laminates><laminate/></laminates></media>";
  Media const none(GetKVMedia());
  read(everything, *none);
  EXPECT_EQ(none->cards, nullptr);
  EXPECT_EQ(none->laminates, nullptr);
  Media const some(GetKVMedia());
  some->films = new std::vector<_MediaRibbonInfo*>;
  read(everything, *some);
  EXPECT_EQ(some->cards, nullptr);
  EXPECT_EQ(some->films->size(), 1U);
}

// ---- Entries ---------------------------------------------------------------------------------

TEST(MediaEntries, AreClearedAndAppendedAlsoWhenEmpty) {
  Media const media = built();
  read(
      "<media><cards><card/></cards><films><film/></films><laminates><laminate/></laminates>"
      "</media>",
      *media);
  ASSERT_EQ(sizes(*media), "1 1 0 1");
  EXPECT_TRUE(same(*media->cards->front(), _CardInfo{}));
  EXPECT_TRUE(same(*media->films->front(), _MediaRibbonInfo{}));
  EXPECT_TRUE(same(*media->laminates->front(), _MediaRibbonInfo{}));
}

/// The reader of one entry, and the list to which it appends.
struct EntryCase {
  bool (KVXMediaParser::*read)(TiXmlElement*, _KVMediaInfo&);
  char const* sizes;
  char const* xml;
};

TEST(MediaEntries, HaveTheResultOfTheirLastChild) {
  EntryCase const cases[] = {
      {&KVXMediaParser::getCardInfo, "1 0 0 0", "<e><cal_table>1</cal_table></e>"},
      {&KVXMediaParser::getFilmInfo, "0 1 0 0", "<e><description>x</description></e>"},
      {&KVXMediaParser::getRibbonInfo, "0 0 1 0", "<e><description>x</description></e>"},
      {&KVXMediaParser::getLaminateInfo, "0 0 0 1", "<e><description>x</description></e>"},
  };
  for (auto const& [reader, after, xml] : cases) {
    SCOPED_TRACE(after);
    Media const full = built();
    EXPECT_TRUE((KVXMediaParser().*reader)(Tree(xml).root(), *full));
    EXPECT_EQ(sizes(*full), after);
    Media const empty = built();
    EXPECT_FALSE((KVXMediaParser().*reader)(Tree("<e/>").root(), *empty));
    EXPECT_EQ(sizes(*empty), after);
    Media const nothing = built();
    EXPECT_FALSE((KVXMediaParser().*reader)(nullptr, *nothing));
    EXPECT_EQ(sizes(*nothing), "0 0 0 0");
    Media const without(GetKVMedia());
    EXPECT_FALSE((KVXMediaParser().*reader)(Tree(xml).root(), *without));
  }
}

TEST(MediaLists, HaveTheResultOfTheirLastEntry) {
  struct {
    bool (KVXMediaParser::*read)(TiXmlElement*, _KVMediaInfo&);
    char const* item;
    char const* child;
  } const cases[] = {
      {&KVXMediaParser::getCardsInfo, "card", "<cal_table>1</cal_table>"},
      {&KVXMediaParser::getFilmsInfo, "film", "<description>x</description>"},
      {&KVXMediaParser::getRibbonsInfo, "laminate", "<description>x</description>"},
      {&KVXMediaParser::getLaminatesInfo, "laminate", "<description>x</description>"},
  };
  for (auto const& [reader, item, child] : cases) {
    SCOPED_TRACE(item);
    std::string const good = element(item, child);
    std::string const empty = element(item, "");
    Media const media = built();
    auto const result = [&, reader_ = reader](std::string const& content) {
      return (KVXMediaParser().*reader_)(Tree(element("any", content)).root(), *media);
    };
    EXPECT_TRUE(result(empty + good));
    EXPECT_FALSE(result(good + empty));
    EXPECT_TRUE(result(good + "<other/>"));
    EXPECT_FALSE(result("<other/>"));
    EXPECT_FALSE(result(""));
    EXPECT_FALSE((KVXMediaParser().*reader)(nullptr, *media));
  }
}

TEST(ParseMedia, HasTheResultOfTheLastListHandled) {
  Media const media = built();
  auto const result = [&](std::string const& content) {
    return KVXMediaParser().parseMedia(Tree(element("any", content)).root(), *media);
  };
  std::string const good = "<films><film><description>x</description></film></films>";
  EXPECT_TRUE(result(good));
  EXPECT_TRUE(result("<cards/>" + good + "<other/>"));
  EXPECT_FALSE(result(good + "<cards/>"));
  EXPECT_FALSE(result(good + "<ribbons><ribbon><description>x</description></ribbon></ribbons>"));
  EXPECT_FALSE(result(""));
  EXPECT_FALSE(KVXMediaParser().parseMedia(nullptr, *media));
}

// ---- Parts of a card -------------------------------------------------------------------------

template <class Record>
struct Child {
  std::string xml;
  bool result;
  void (*set)(Record&);
};

template <class Record>
void expectParts(bool (KVXMediaParser::*reader)(TiXmlElement*, Record&),
                 std::vector<Child<Record>> const& children) {
  for (auto const& [xml, result, set] : children) {
    SCOPED_TRACE(xml);
    Tree tree(element("any", xml));
    auto record = filled<Record>();
    auto expected = filled<Record>();
    set(expected);
    EXPECT_EQ((KVXMediaParser().*reader)(tree.root(), record), result);
    EXPECT_TRUE(same(record, expected));
  }
  auto record = filled<Record>();
  EXPECT_FALSE((KVXMediaParser().*reader)(nullptr, record));
  EXPECT_FALSE((KVXMediaParser().*reader)(Tree("<any/>").root(), record));
  EXPECT_FALSE((KVXMediaParser().*reader)(Tree("<any><other>1</other></any>").root(), record));
  EXPECT_TRUE(test::untouched(record));
}

template <std::size_t N>
void setText(char (&array)[N], std::string const& text) {
  ASSERT_LT(text.size(), N);
  std::memcpy(array, text.c_str(), text.size() + 1);
}

TEST(MediaCard, InformationIsReadMemberByMember) {
  expectParts<_CardInfo>(
      &KVXMediaParser::getCardInformation,
      {{"<type>-3</type>", true, [](_CardInfo& card) { card.type = -3; }},
       {"<type/>", false, [](_CardInfo&) {}},
       {"<Type>1</Type>", false, [](_CardInfo&) {}},
       {"<halvex_part_number>082136</halvex_part_number>", true,
        [](_CardInfo& card) { setText(card.halvex_part_number, "082136"); }},
       {"<description>PVC &amp; PET</description>", true,
        [](_CardInfo& card) { setText(card.description, "PVC & PET"); }},
       {"<thickness>30.5</thickness>", true, [](_CardInfo& card) { card.thickness = 30.5F; }},
       {"<thickness>x</thickness>", true, [](_CardInfo& card) { card.thickness = 0; }},
       {"<coercivity>low</coercivity>", true, [](_CardInfo& card) { card.coercivity = 1; }},
       {"<coercivity>high</coercivity>", true, [](_CardInfo& card) { card.coercivity = 2; }},
       {"<coercivity>none</coercivity>", true, [](_CardInfo& card) { card.coercivity = 0; }},
       {"<coercivity>High</coercivity>", true, [](_CardInfo& card) { card.coercivity = 0; }},
       {"<coercivity/>", false, [](_CardInfo& card) { card.coercivity = 0; }},
       {"<coercivity></coercivity>", false, [](_CardInfo& card) { card.coercivity = 0; }},
       {"<type>1</type><coercivity/>", false,
        [](_CardInfo& card) { card.type = 1, card.coercivity = 0; }},
       {"<coercivity/><type>1</type>", true,
        [](_CardInfo& card) { card.type = 1, card.coercivity = 0; }}});
}

using MediaInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, MediaInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(MediaInCommaLocale, ReadsDecimalsWithCommas) {
  expectParts<_CardInfo>(
      &KVXMediaParser::getCardInformation,
      {{"<thickness>30,5</thickness>", true, [](_CardInfo& card) { card.thickness = 30.5F; }},
       {"<thickness>30.5</thickness>", true, [](_CardInfo& card) { card.thickness = 30; }}});
  expectParts<_LaminationAdjustmentsNew>(
      &KVXMediaParser::getLaminationAdjustments,
      {{"<speed_adjust min='0,5' max='2,5'>1,25</speed_adjust>", true,
        [](_LaminationAdjustmentsNew& one) { one.speed_adjust.val = 1.25F; }}});
}

/// A text of each length around the array's goes into it, cut, and touches nothing behind it.
template <std::size_t N>
void expectBounded(char const* name, char (_CardInfo::*member)[N]) {
  for (std::size_t const length : {N - 2, N - 1, N, N + 1, 9 * N}) {
    SCOPED_TRACE(name + std::to_string(length));
    Tree tree(element("any", element(name, std::string(length, 'x'))));
    auto card = filled<_CardInfo>();
    auto expected = filled<_CardInfo>();
    setText(expected.*member, std::string(std::min(length, N - 1), 'x'));
    EXPECT_TRUE(KVXMediaParser().getCardInformation(tree.root(), card));
    EXPECT_TRUE(same(card, expected));
  }
}

TEST(MediaCard, TextsAreCutToTheirFields) {
  expectBounded("halvex_part_number", &_CardInfo::halvex_part_number);
  expectBounded("description", &_CardInfo::description);
}

TEST(MediaEntries, TextsAreCutToTheirFields) {
  for (std::size_t const length : {15U, 16U, 63U, 64U, 1000U}) {
    std::string const text(length, 'x');
    Media const media = built();
    read(element("media", element("films", element("film", element("halvex_part_number", text) +
                                                               element("description", text)))),
         *media);
    _MediaRibbonInfo expected{};
    setText(expected.halvex_part_number, text.substr(0, 15));
    setText(expected.description, text.substr(0, 63));
    EXPECT_TRUE(same(*media->films->front(), expected));
  }
}

TEST(MediaCard, EachFeatureChangesOnlyItsBit) {
  struct {
    char const* name;
    unsigned bit;
  } const features[] = {{"mag_stripe", 1}, {"contact_encode", 2}, {"non_contact_encode", 4}};
  struct {
    char const* word;
    bool set;
  } const words[] = {{"yes", true},  {"enabled", true}, {"no", false},
                     {"Yes", false}, {"1", false},      {"true", false}};
  for (auto const& [name, bit] : features) {
    for (auto const& [word, set] : words) {
      for (unsigned const before : {0x00U, 0x07U, 0xF8U, 0xFFU}) {
        _CardInfo card{};
        card.cardFeatures = static_cast<unsigned char>(before);
        Tree tree(element("any", element(name, word)));
        EXPECT_TRUE(KVXMediaParser().getCardInformation(tree.root(), card));
        EXPECT_EQ(unsigned{card.cardFeatures}, set ? before | bit : before & ~bit) << name << word;
      }
    }
    _CardInfo card{};
    card.cardFeatures = 0x5A;
    EXPECT_FALSE(
        KVXMediaParser().getCardInformation(Tree(element("any", element(name, ""))).root(), card));
    EXPECT_EQ(card.cardFeatures, 0x5A) << "an empty element leaves all bits";
  }
  _CardInfo card{};
  EXPECT_TRUE(KVXMediaParser().getCardInformation(
      Tree("<any><mag_stripe>yes</mag_stripe><contact_encode>yes</contact_encode>"
           "<mag_stripe>no</mag_stripe></any>")
          .root(),
      card));
  EXPECT_EQ(card.cardFeatures, 2);
}

TEST(MediaCard, SettingsAreReadWithoutTheirBounds) {
  expectParts<_TransferTempInfo>(
      &KVXMediaParser::getTransferTemp,
      {{"<top_single min='1' max='2'>150</top_single>", true,
        [](_TransferTempInfo& temps) { temps.top_single.val = 150; }},
       {"<bot_single>-5</bot_single>", true,
        [](_TransferTempInfo& temps) { temps.bot_single.val = -5; }},
       {"<top_double>x</top_double>", true,
        [](_TransferTempInfo& temps) { temps.top_double.val = 0; }},
       {"<bot_double>7</bot_double>", true,
        [](_TransferTempInfo& temps) { temps.bot_double.val = 7; }},
       {"<bot_double min='1' max='2'/>", false, [](_TransferTempInfo&) {}}});
  expectParts<_TransferSpeedInfo>(
      &KVXMediaParser::getTransferSpeed,
      {{"<input_single min='1' max='2'>2.5</input_single>", true,
        [](_TransferSpeedInfo& speeds) { speeds.input_single.val = 2.5F; }},
       {"<output_single>-1</output_single>", true,
        [](_TransferSpeedInfo& speeds) { speeds.output_single.val = -1; }},
       {"<input_double>0.5</input_double>", true,
        [](_TransferSpeedInfo& speeds) { speeds.input_double.val = 0.5F; }},
       {"<output_double>8</output_double>", true,
        [](_TransferSpeedInfo& speeds) { speeds.output_double.val = 8; }},
       {"<output_double/>", false, [](_TransferSpeedInfo&) {}}});
  expectParts<_LaminationAdjustmentsNew>(
      &KVXMediaParser::getLaminationAdjustments,
      {{"<top_temp_adjust min='1' max='2'>3</top_temp_adjust>", true,
        [](_LaminationAdjustmentsNew& one) { one.top_temp_adjust.val = 3; }},
       {"<bot_temp_adjust>-4</bot_temp_adjust>", true,
        [](_LaminationAdjustmentsNew& one) { one.bot_temp_adjust.val = -4; }},
       {"<speed_adjust>1.25</speed_adjust>", true,
        [](_LaminationAdjustmentsNew& one) { one.speed_adjust.val = 1.25F; }},
       {"<speed_adjust/>", false, [](_LaminationAdjustmentsNew&) {}}});
}

// ---- The entry -------------------------------------------------------------------------------

char const wholeReply[] = R"(<?xml version="1.0" encoding="UTF-8" ?>
<media>
    <cards>
        <card>
            <information>
                <type>1</type>
                <halvex_part_number>082136</halvex_part_number>
                <description>PVC 30 mil</description>
                <thickness>30.0000</thickness>
                <coercivity>high</coercivity>
                <mag_stripe>yes</mag_stripe>
                <contact_encode>no</contact_encode>
                <non_contact_encode>yes</non_contact_encode>
            </information>
            <transfer_temps>
                <top_single min="100" max="200">175</top_single>
                <bot_single min="100" max="200">170</bot_single>
                <top_double min="100" max="200">180</top_double>
                <bot_double min="100" max="200">172</bot_double>
            </transfer_temps>
            <transfer_speeds>
                <input_single min="0.50" max="4.00">2.5000</input_single>
                <output_single min="0.50" max="4.00">2.2500</output_single>
                <input_double min="0.50" max="4.00">2.0000</input_double>
                <output_double min="0.50" max="4.00">1.7500</output_double>
            </transfer_speeds>
            <laminator_adjustments>
                <top_temp_adjust min="-20" max="20">-5</top_temp_adjust>
                <bot_temp_adjust min="-20" max="20">6</bot_temp_adjust>
                <speed_adjust min="-1.00" max="1.00">0.1250</speed_adjust>
            </laminator_adjustments>
            <cal_table>4</cal_table>
        </card>
        <card><information><type>2</type></information></card>
    </cards>
    <films>
        <film><halvex_part_number>084053</halvex_part_number><description>Clear</description></film>
    </films>
    <ribbons>
        <ribbon><halvex_part_number>084051</halvex_part_number></ribbon>
        <laminate><halvex_part_number>082600</halvex_part_number></laminate>
    </ribbons>
    <laminates>
        <laminate><description>Globe</description></laminate>
    </laminates>
</media>
)";

_CardInfo wholeCard() {
  _CardInfo card{};
  card.type = 1;
  setText(card.halvex_part_number, "082136");
  setText(card.description, "PVC 30 mil");
  card.thickness = 30;
  card.coercivity = 2;
  card.cardFeatures = 5;
  card.transfer_temps.top_single.val = 175;
  card.transfer_temps.bot_single.val = 170;
  card.transfer_temps.top_double.val = 180;
  card.transfer_temps.bot_double.val = 172;
  card.transfer_speeds.input_single.val = 2.5F;
  card.transfer_speeds.output_single.val = 2.25F;
  card.transfer_speeds.input_double.val = 2;
  card.transfer_speeds.output_double.val = 1.75F;
  card.laminator_adjustments.top_temp_adjust.val = -5;
  card.laminator_adjustments.bot_temp_adjust.val = 6;
  card.laminator_adjustments.speed_adjust.val = 0.125F;
  card.cal_table = 4;
  return card;
}

TEST(GetMedia, ReadsAWholeCatalogueAndIsFalseAllTheSame) {
  for (char const* const locale : test::locales) {
    test::LocaleGuard const guard(locale);
    Media const media = built();
    read(wholeReply, *media);
    ASSERT_EQ(sizes(*media), "2 1 0 2");
    EXPECT_TRUE(same(*(*media->cards)[0], wholeCard()));
    EXPECT_EQ((*media->cards)[1]->type, 2);
    EXPECT_STREQ((*media->films)[0]->halvex_part_number, "084053");
    EXPECT_STREQ((*media->films)[0]->description, "Clear");
    EXPECT_STREQ((*media->laminates)[0]->halvex_part_number, "082600");
    EXPECT_STREQ((*media->laminates)[0]->description, "");
    EXPECT_STREQ((*media->laminates)[1]->description, "Globe");
  }
}

TEST(GetMedia, DoesNotUseItsLength) {
  for (int const length : {INT_MIN, -1, 0, 1, 10, INT_MAX}) {
    Media const media = built();
    EXPECT_FALSE(KVXMediaParser().GetMedia(*wholeReply, length, *media));
    EXPECT_EQ(sizes(*media), "2 1 0 2") << length;
  }
}

TEST(GetMedia, AppendsNothingWhenCutAnywhere) {
  std::string const reply = wholeReply;
  Media const media = built();
  for (std::size_t size = 0; size <= reply.rfind('>'); ++size) read(reply.substr(0, size), *media);
  EXPECT_EQ(sizes(*media), "0 0 0 0");
}

TEST(GetMedia, AppendsNothingForOtherRootsAndHostileTexts) {
  std::string deep;
  std::string end;
  std::string crowded = "<a";
  for (int i = 0; i < 128; ++i) deep += "<a>", end += "</a>";
  for (int i = 0; i < 257; ++i) crowded += " a" + std::to_string(i) + "='1'";
  std::string const known = "<cards><card/></cards>";
  Media const media = built();
  for (std::string const& text :
       {element("Media", known), element("get_media", known), element("a", element("media", known)),
        element("media", known) + "<open>", element("media", known + deep + end),
        element("media", known + crowded + "/>"), std::string()}) {
    read(text, *media);
    EXPECT_EQ(sizes(*media), "0 0 0 0") << text;
  }
}

TEST(GetMedia, ReadsManyEntries) {
  std::string cards;
  for (int i = 0; i < 1000; ++i) {
    cards += element("card", element("cal_table", std::to_string(i)));
  }
  Media const media = built();
  read(element("media", element("cards", cards)), *media);
  ASSERT_EQ(media->cards->size(), 1000U);
  for (int i = 0; i < 1000; ++i) {
    EXPECT_EQ((*media->cards)[static_cast<std::size_t>(i)]->cal_table, i);
  }
}

// ---- When there is no more memory ------------------------------------------------------------

using NoMemoryForMedia = test::HeapTest;

/// What a reading left whose heap gave out.
struct Outcome {
  bool threw = false;
  bool built = false;
  std::size_t cards = 0;
  std::size_t films = 0;
  std::size_t laminates = 0;
  bool firstCardIsWhole = true;
  std::size_t lost = 0;  ///< blocks that are left when the record is destroyed
};

Outcome readFailingAt(std::size_t failing, TiXmlElement* root) {
  Outcome outcome;
  _KVMediaInfo* media = nullptr;
  test::Allocations const allocations(failing);
  try {
    media = GetKVMedia();
    BuildKVMedia(media);
    KVXMediaParser().parseMedia(root, *media);
  } catch (std::bad_alloc const&) {
    outcome.threw = true;
  }
  if (media != nullptr && media->cards != nullptr) {
    outcome.built = media->films && media->ribbons && media->laminates;
    outcome.cards = media->cards->size();
    outcome.films = media->films->size();
    outcome.laminates = media->laminates->size();
    outcome.firstCardIsWhole = media->cards->empty() || media->cards->front()->cal_table == 4;
  }
  DestroyKVMedia(media);
  outcome.lost = allocations.alive();
  return outcome;
}

TEST_F(NoMemoryForMedia, KeepsWhatWasCompleteAndLosesNothing) {
  Tree tree(wholeReply);
  // A record, four lists, and two blocks for each of five entries: itself, and a larger list.
  constexpr std::size_t listsAfter = 5;
  constexpr std::size_t needed = listsAfter + 10;
  for (std::size_t failing = 1; failing <= needed + 1; ++failing) {
    SCOPED_TRACE(failing);
    Outcome const outcome = readFailingAt(failing, tree.root());
    EXPECT_EQ(outcome.threw, failing <= needed);
    EXPECT_EQ(outcome.built, failing > listsAfter);
    std::size_t const entries = failing > listsAfter ? (failing - listsAfter - 1) / 2 : 0;
    EXPECT_EQ(outcome.cards, std::min<std::size_t>(entries, 2));
    EXPECT_EQ(outcome.films, std::clamp<std::size_t>(entries, 2, 3) - 2);
    EXPECT_EQ(outcome.laminates, std::clamp<std::size_t>(entries, 3, 5) - 3);
    EXPECT_TRUE(outcome.firstCardIsWhole);
    EXPECT_EQ(outcome.lost, 0U);
  }
}

}  // namespace
}  // namespace Kovra
