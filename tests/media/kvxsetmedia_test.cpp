#include "kvxsetmedia.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "support/folder.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/room.hpp"
#include "support/tree.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::printed;
using test::same;
using test::wide;

struct Destroy {
  void operator()(_KVMediaInfo* media) const { DestroyKVMedia(media); }
};
using Media = std::unique_ptr<_KVMediaInfo, Destroy>;

/// A catalogue with these cards.
Media with(std::vector<_CardInfo> const& cards) {
  Media media(GetKVMedia());
  BuildKVMedia(media.get());
  for (_CardInfo const& card : cards) media->cards->push_back(new _CardInfo(card));
  return media;
}

_CardInfo ofType(int type) {
  _CardInfo card{};
  card.type = type;
  return card;
}

_CardInfo richCard() {
  _CardInfo card{};
  card.type = 1;
  std::strcpy(card.halvex_part_number, "082136");
  std::strcpy(card.description, "PVC <30 mil>");
  card.thickness = 30.25F;
  card.coercivity = 2;
  card.cardFeatures = 5;
  card.transfer_temps = {{100, 200, 175}, {101, 201, 170}, {102, 202, 180}, {103, 203, 172}};
  card.transfer_speeds = {{0.5F, 4, 2.5F}, {0.25F, 3.5F, 2.25F}, {0, 3, 2}, {-1, 2, 1.75F}};
  card.laminator_adjustments = {{-20, 20, -5}, {-21, 21, 6}, {-1, 1, 0.125F}};
  card.cal_table = 4;
  return card;
}

char const informationWritten[] =
    "<information><type>1</type><halvex_part_number>082136</halvex_part_number>"
    "<description>PVC &lt;30 mil&gt;</description><thickness>30.2500</thickness>"
    "<coercivity>high</coercivity><mag_stripe>yes</mag_stripe>"
    "<contact_encode>no</contact_encode><non_contact_encode>yes</non_contact_encode>"
    "</information>";
char const tempsWritten[] =
    "<transfer_temps><top_single min=\"100\" max=\"200\">175</top_single>"
    "<bot_single min=\"101\" max=\"201\">170</bot_single>"
    "<top_double min=\"102\" max=\"202\">180</top_double>"
    "<bot_double min=\"103\" max=\"203\">172</bot_double></transfer_temps>";
char const speedsWritten[] =
    "<transfer_speeds><input_single min=\"0.50\" max=\"4.00\">2.5000</input_single>"
    "<output_single min=\"0.25\" max=\"3.50\">2.2500</output_single>"
    "<input_double min=\"0.00\" max=\"3.00\">2.0000</input_double>"
    "<output_double min=\"-1.00\" max=\"2.00\">1.7500</output_double></transfer_speeds>";
char const adjustmentsWritten[] =
    "<laminator_adjustments><top_temp_adjust min=\"-20\" max=\"20\">-5</top_temp_adjust>"
    "<bot_temp_adjust min=\"-21\" max=\"21\">6</bot_temp_adjust>"
    "<speed_adjust min=\"-1.00\" max=\"1.00\">0.1250</speed_adjust></laminator_adjustments>";

std::string const cardWritten = "<card>" + std::string(informationWritten) + tempsWritten +
                                speedsWritten + adjustmentsWritten + "<cal_table>4</cal_table>" +
                                "</card>";

char const documentWritten[] = R"(<?xml version="1.0" encoding="UTF-8" ?>
<media>
    <cards>
        <card>
            <information>
                <type>1</type>
                <halvex_part_number>082136</halvex_part_number>
                <description>PVC &lt;30 mil&gt;</description>
                <thickness>30.2500</thickness>
                <coercivity>high</coercivity>
                <mag_stripe>yes</mag_stripe>
                <contact_encode>no</contact_encode>
                <non_contact_encode>yes</non_contact_encode>
            </information>
            <transfer_temps>
                <top_single min="100" max="200">175</top_single>
                <bot_single min="101" max="201">170</bot_single>
                <top_double min="102" max="202">180</top_double>
                <bot_double min="103" max="203">172</bot_double>
            </transfer_temps>
            <transfer_speeds>
                <input_single min="0.50" max="4.00">2.5000</input_single>
                <output_single min="0.25" max="3.50">2.2500</output_single>
                <input_double min="0.00" max="3.00">2.0000</input_double>
                <output_double min="-1.00" max="2.00">1.7500</output_double>
            </transfer_speeds>
            <laminator_adjustments>
                <top_temp_adjust min="-20" max="20">-5</top_temp_adjust>
                <bot_temp_adjust min="-21" max="21">6</bot_temp_adjust>
                <speed_adjust min="-1.00" max="1.00">0.1250</speed_adjust>
            </laminator_adjustments>
            <cal_table>4</cal_table>
        </card>
    </cards>
</media>
)";

/// The narrow form of what a host gets; every call succeeds.
std::string written(KVXSetMedia& writer, _KVMediaInfo& media, char allTypes, bool omit) {
  std::vector<wchar_t> out(100000, L'?');
  EXPECT_TRUE(writer.SetMedia(media, out.data(), static_cast<int>(out.size()), allTypes, omit));
  std::string narrow;
  for (wchar_t const c : std::wstring(out.data())) narrow += static_cast<char>(c);
  return narrow;
}

/// The root of one document, without breaks and blanks.
std::string root(_KVMediaInfo& media, char allTypes = 0, bool omit = false) {
  KVXSetMedia writer;
  written(writer, media, allTypes, omit);
  return printed(*writer.root);
}

/// The types of the cards that are written.
std::string types(_KVMediaInfo& media, char allTypes) {
  KVXSetMedia writer;
  written(writer, media, allTypes, false);
  std::string found;
  TiXmlElement const* const cards = writer.root->FirstChildElement("cards");
  for (auto* card = cards->FirstChildElement(); card; card = card->NextSiblingElement()) {
    found += card->FirstChildElement("information")->FirstChildElement("type")->GetText();
    found += ' ';
  }
  return found;
}

// ---- Whole documents -------------------------------------------------------------------------

TEST(SetMedia, WritesAWholeCardAndChangesNothing) {
  for (char const* const locale : test::locales) {
    test::LocaleGuard const guard(locale);
    Media const media = with({richCard()});
    KVXSetMedia writer;
    EXPECT_EQ(written(writer, *media, 0, false), documentWritten);
    EXPECT_EQ(media->cards->size(), 1U);
    EXPECT_TRUE(same(*media->cards->front(), richCard()));
  }
}

using MediaWriterInCommaLocale = test::CommaLocale;
INSTANTIATE_TEST_SUITE_P(All, MediaWriterInCommaLocale, test::commaLocales(), test::nameOfLocale);

TEST_P(MediaWriterInCommaLocale, WritesDecimalsWithCommas) {
  Media const media = with({richCard()});
  std::string expected = "<media><cards>" + cardWritten + "</cards></media>";
  std::replace(expected.begin(), expected.end(), '.', ',');
  EXPECT_EQ(root(*media), expected);
}

TEST(SetMedia, LeavesTransferSettingsOut) {
  Media const media = with({richCard()});
  EXPECT_EQ(root(*media, 0, true), "<media><cards><card>" + std::string(informationWritten) +
                                       adjustmentsWritten +
                                       "<cal_table>4</cal_table></card></cards></media>");
  EXPECT_EQ(root(*media, 0, false), "<media><cards>" + cardWritten + "</cards></media>");
}

TEST(SetMedia, WritesCommonTypesOnlyUnlessAllAreWanted) {
  Media const media = with(
      {ofType(0), ofType(2), ofType(1), ofType(-1), ofType(INT_MAX), ofType(INT_MIN), ofType(1)});
  EXPECT_EQ(types(*media, 0), "0 1 1 ");
  EXPECT_EQ(types(*media, 1), "0 2 1 -1 2147483647 -2147483648 1 ");
  // Only exactly 1 asks for all.
  EXPECT_EQ(types(*media, 2), "0 1 1 ");
  EXPECT_EQ(types(*media, static_cast<char>(-1)), "0 1 1 ");
}

TEST(SetMedia, WritesAnEmptyListWithoutCards) {
  EXPECT_EQ(root(*with({})), "<media><cards /></media>");
  EXPECT_EQ(root(*with({ofType(2)})), "<media><cards /></media>");
  Media const unbuilt(GetKVMedia());
  EXPECT_EQ(root(*unbuilt), "<media><cards /></media>");
  Media const holes = with({ofType(1)});
  holes->cards->insert(holes->cards->begin(), nullptr);
  EXPECT_EQ(types(*holes, 1), "1 ");
}

TEST(SetMedia, WritesNothingButCards) {
  Media const media = with({});
  for (auto* const list : {media->films, media->ribbons, media->laminates}) {
    list->push_back(new _MediaRibbonInfo{{"084053"}, {"Clear"}});
  }
  EXPECT_EQ(root(*media), "<media><cards /></media>");
}

TEST(SetMedia, KeepsItsArgumentsAndAppendsAtEveryCall) {
  Media const media = with({});
  KVXSetMedia writer;
  EXPECT_EQ(writer.root, nullptr);
  std::string const first = written(writer, *media, 0, true);
  TiXmlElement const* const firstRoot = writer.root;
  EXPECT_TRUE(writer.omitTransfer);
  EXPECT_EQ(written(writer, *media, 0, false), first + first);
  EXPECT_FALSE(writer.omitTransfer);
  EXPECT_NE(writer.root, firstRoot);
}

TEST(SetMedia, ConvertsNoMoreThanTheOutputTakes) {
  Media const media = with({richCard()});
  std::wstring const whole = wide(documentWritten);
  for (std::size_t const length :
       {std::size_t{1}, whole.size() - 1, whole.size(), whole.size() + 1, whole.size() + 2}) {
    std::vector<wchar_t> out(whole.size() + 3, L'?');
    KVXSetMedia writer;
    EXPECT_TRUE(writer.SetMedia(*media, out.data(), static_cast<int>(length), 0, false));
    std::wstring expected = whole.substr(0, length);
    if (length > whole.size()) expected += L'\0';
    expected.resize(out.size(), L'?');
    EXPECT_EQ(std::wstring(out.begin(), out.end()), expected) << length;
  }
}

TEST(SetMedia, IsFalseForANullOutputAndComposesAllTheSame) {
  Media const media = with({});
  KVXSetMedia writer;
  EXPECT_FALSE(writer.SetMedia(*media, nullptr, 100, 0, true));
  EXPECT_TRUE(writer.omitTransfer);
  EXPECT_EQ(printed(*writer.root), "<media><cards /></media>");
}

TEST(SetMedia, SavesToAFileThatTheHostNames) {
  test::TemporaryFolder const folder;
  std::string path = folder.file("media.xml");
  Media const media = with({richCard()});
  KVXSetMedia writer;
  written(writer, *media, 0, false);
  EXPECT_TRUE(writer.saveJob(path.data()));
  EXPECT_NE(test::contentsOf(path).find("<cal_table>4</cal_table>"), std::string::npos);
  EXPECT_FALSE(writer.saveJob(static_cast<char*>(nullptr)));
  EXPECT_FALSE(writer.saveJob("/no/such/folder/media.xml"));
}

TEST(SetMedia, LeavesNoFileUnlessTheHostNamesOne) {
  std::string const text = test::uniqueText();
  _CardInfo card = richCard();
  std::strcpy(card.description, text.c_str());
  Media const media = with({card});
  ASSERT_NE(root(*media).find(text), std::string::npos);
  EXPECT_FALSE(KVXSetMedia().SetMedia(*media, nullptr, 0, 0, false));
  EXPECT_EQ(test::temporaryFilesWith(text), "");
}

// ---- Cards -----------------------------------------------------------------------------------

TEST(AddMedia, HasTheResultOfTheLastCardWritten) {
  KVXSetMedia writer;
  TiXmlElement root("media");
  writer.root = &root;
  EXPECT_FALSE(writer.addMedia(*with({}), 1));
  EXPECT_FALSE(writer.addMedia(*with({ofType(2), ofType(-1)}), 0)) << "all were skipped";
  EXPECT_TRUE(writer.addMedia(*with({ofType(2), ofType(-1)}), 1));
  EXPECT_TRUE(writer.addMedia(*with({ofType(1), ofType(2)}), 0)) << "skipped ones do not count";
  writer.root = nullptr;
  EXPECT_FALSE(writer.addMedia(*with({ofType(1)}), 1));
}

TEST(AddCardInfo, AddsTheCardBelowTheElementGiven) {
  KVXSetMedia writer;
  TiXmlElement cards("cards");
  EXPECT_TRUE(writer.addCardInfo(&cards, richCard()));
  EXPECT_EQ(printed(cards), "<cards>" + cardWritten + "</cards>");
  EXPECT_FALSE(writer.addCardInfo(nullptr, richCard()));
}

TEST(AddCardInfo, PartsAddTheirElementBelowTheOneGiven) {
  KVXSetMedia writer;
  _CardInfo const card = richCard();
  TiXmlElement into("card");
  EXPECT_TRUE(writer.addCardInformation(&into, card));
  EXPECT_TRUE(writer.addTransferTemps(&into, card.transfer_temps));
  EXPECT_TRUE(writer.addTransferSpeeds(&into, card.transfer_speeds));
  EXPECT_TRUE(writer.addLaminationAdjustments(&into, card.laminator_adjustments));
  EXPECT_EQ(printed(into), "<card>" + std::string(informationWritten) + tempsWritten +
                               speedsWritten + adjustmentsWritten + "</card>");
  EXPECT_FALSE(writer.addCardInformation(nullptr, card));
  EXPECT_FALSE(writer.addTransferTemps(nullptr, card.transfer_temps));
  EXPECT_FALSE(writer.addTransferSpeeds(nullptr, card.transfer_speeds));
  EXPECT_FALSE(writer.addLaminationAdjustments(nullptr, card.laminator_adjustments));
}

/// The text of an element of the card's information.
std::string informed(_CardInfo const& card, char const* name) {
  TiXmlElement into("card");
  EXPECT_TRUE(KVXSetMedia().addCardInformation(&into, card));
  return into.FirstChildElement("information")->FirstChildElement(name)->GetText();
}

TEST(AddCardInformation, WritesCoercivityOutsideTheTableAsNone) {
  char const* const words[] = {"none", "low", "high", "none"};
  for (int code = 0; code < 256; ++code) {
    _CardInfo card{};
    card.coercivity = static_cast<unsigned char>(code);
    EXPECT_EQ(informed(card, "coercivity"), words[code < 3 ? code : 3]) << code;
  }
}

TEST(AddCardInformation, WritesEachFeatureFromItsBit) {
  for (unsigned bits = 0; bits < 256; ++bits) {
    _CardInfo card{};
    card.cardFeatures = static_cast<unsigned char>(bits);
    EXPECT_EQ(informed(card, "mag_stripe"), (bits & 1) != 0 ? "yes" : "no") << bits;
    EXPECT_EQ(informed(card, "contact_encode"), (bits & 2) != 0 ? "yes" : "no") << bits;
    EXPECT_EQ(informed(card, "non_contact_encode"), (bits & 4) != 0 ? "yes" : "no") << bits;
  }
}

TEST(AddCardInformation, ReadsTextsUpToTheEndOfTheirArrays) {
  _CardInfo card{};
  std::memset(card.halvex_part_number, 'p', sizeof card.halvex_part_number);
  std::memset(card.description, 'd', sizeof card.description);
  EXPECT_EQ(informed(card, "halvex_part_number"), std::string(16, 'p'));
  EXPECT_EQ(informed(card, "description"), std::string(64, 'd'));
}

// ---- There and back --------------------------------------------------------------------------

TEST(MediaRoundTrip, KeepsCardsWithoutTheBoundsOfTheirSettings) {
  KVXSetMedia writer;
  std::string const document = written(writer, *with({richCard(), ofType(2)}), 1, false);
  Media const media = with({});
  KVXMediaParser().GetMedia(*document.c_str(), static_cast<int>(document.size()), *media);
  ASSERT_EQ(media->cards->size(), 2U);
  _CardInfo expected = richCard();
  expected.transfer_temps = {{0, 0, 175}, {0, 0, 170}, {0, 0, 180}, {0, 0, 172}};
  expected.transfer_speeds = {{0, 0, 2.5F}, {0, 0, 2.25F}, {0, 0, 2}, {0, 0, 1.75F}};
  expected.laminator_adjustments = {{0, 0, -5}, {0, 0, 6}, {0, 0, 0.125F}};
  EXPECT_TRUE(same(*(*media->cards)[0], expected));
  EXPECT_TRUE(same(*(*media->cards)[1], ofType(2)));
}

TEST(MediaWriter, NeedsNoMoreThan4096CharactersForACardAndOneTimeMore) {
  _CardInfo card;
  test::fillWide(card);
  card.thickness = test::wideDecimal;
  card.transfer_speeds = {test::wideDecimals, test::wideDecimals, test::wideDecimals,
                          test::wideDecimals};
  card.laminator_adjustments.speed_adjust = test::wideDecimals;
  for (std::size_t const count : {0U, 1U, 20U}) {
    Media const media = with(std::vector<_CardInfo>(count, card));
    test::expectRoomFor(
        4096 * (count + 1),
        [&](wchar_t* out, int length) {
          return KVXSetMedia().SetMedia(*media, out, length, 1, false);
        },
        2 * count * sizeof card / sizeof(int));
  }
}

TEST(MediaWriter, IsADocument) {
  EXPECT_TRUE((std::is_base_of_v<TiXmlDocument, KVXSetMedia>));
  EXPECT_TRUE((std::is_same_v<decltype(KVXSetMedia::root), TiXmlElement*>));
  EXPECT_TRUE((std::is_same_v<decltype(KVXSetMedia::omitTransfer), bool>));
}

}  // namespace
}  // namespace Kovra
