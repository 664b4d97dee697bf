// Numbered references, by all the ways in which hosts hand texts over. What becomes of them is a
// matter of the encoding that the text declares: UTF-8 keeps the character, and a text without a
// declaration, or with another encoding, the low byte of its number.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "kvxcapsparser.h"
#include "kvxconfigparser.h"
#include "kvxgetein.h"
#include "kvxmediaparser.h"
#include "kvxndc.h"
#include "kvxprinteridparser.h"
#include "kvxsecactionparser.h"
#include "kvxsensorparser.h"
#include "kvxstatusparser.h"
#include "support/locale.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

/// A reply with one text in it, and how a host gets at that.
struct Way {
  std::string before;
  std::string behind;
  std::string (*read)(std::string const& reply);
};

Way const ways[] = {
    {"<lam_ndc_rsp>", "</lam_ndc_rsp>",
     [](std::string const& reply) -> std::string {
       char out[512] = "";
       auto const text = test::unterminated(test::wide(reply));
       KVXNDC().GetLaminatorResponse(*text.get(), static_cast<int>(reply.size()), out);
       return out;
     }},
    {"<get_wireless_status><ssid>", "</ssid></get_wireless_status>",
     [](std::string const& reply) -> std::string {
       _tagWirelessStatus status{};
       auto const text = test::unterminated(test::wide(reply));
       KVXStatusParser().ParseWirelessStatusXML(*text.get(), static_cast<int>(reply.size()),
                                                status);
       return status.ssid;
     }},
    {"<nonce>", "</nonce>",
     [](std::string const& reply) -> std::string {
       char out[32] = "";
       auto const text = test::unterminated(test::wide(reply));
       KVXSecAction().GetNonceValue(*text.get(), static_cast<int>(reply.size()), out);
       return out;
     }},
    {"<capabilities><barcodes><barcode>", "</barcode></barcodes></capabilities>",
     [](std::string const& reply) -> std::string {
       _Capabilities caps{};
       _BarCodeCaps barcode{};
       caps.barcodes = &barcode;
       caps.barcodeCount = 1;
       auto const text = test::unterminated(test::wide(reply));
       KVXCapsParser().GetCapabilities(*text.get(), static_cast<int>(reply.size()), caps);
       return barcode.name;
     }},
    {"<printer_id><vendor>", "</vendor></printer_id>",
     [](std::string const& reply) -> std::string {
       KVPrinterInfo info{};
       KVXPrinterIDParser().ParsePrinterInfo(reply.c_str(), 0, info);
       return info.vendor;
     }},
    {"<configuration><wireless><ssid>", "</ssid></wireless></configuration>",
     [](std::string const& reply) -> std::string {
       auto const configuration = std::make_unique<_KVConfiguration>();
       KVXConfigParser().GetConfiguration(reply.c_str(), 0, *configuration);
       return configuration->wireless.ssid;
     }},
    {"<data><mag><track1>", "</track1></mag></data>",
     [](std::string const& reply) -> std::string {
       __GETTRACK tracks{};
       KVXGetEIN().GetMagneticTracks(*reply.c_str(), 0, tracks);
       return tracks.track1;
     }},
    {"<get_sensor_status><sensor_states><tricolor_state>",
     "</tricolor_state></sensor_states></get_sensor_status>",
     [](std::string const& reply) -> std::string {
       _KVPrinterSensorInfo sensors{};
       KVXSensorParser().ParseSensorStates(reply.c_str(), 0, sensors);
       return sensors.tricolor_state;
     }},
    {"<media><films><film><description>", "</description></film></films></media>",
     [](std::string const& reply) -> std::string {
       std::unique_ptr<_KVMediaInfo, void (*)(_KVMediaInfo*)> const media(
           GetKVMedia(), [](_KVMediaInfo* record) { DestroyKVMedia(record); });
       BuildKVMedia(media.get());
       KVXMediaParser().GetMedia(*reply.c_str(), 0, *media);
       return media->films->empty() ? "" : media->films->front()->description;
     }},
};

/// Expects of every way and in every locale that it makes `expected` of `text` behind a
/// declaration.
void expectEverywhere(std::string const& declaration, std::string const& text,
                      std::string const& expected) {
  for (char const* const locale : test::locales) {
    test::LocaleGuard const guard(locale);
    for (Way const& way : ways) {
      std::string const reply = declaration + way.before + text + way.behind;
      EXPECT_EQ(way.read(reply), expected) << locale << ": " << reply;
    }
  }
}

TEST(NumberedReferences, AreCharactersOfUtf8WhereThatIsDeclared) {
  for (char const* const declaration :
       {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<?xml version='1.0' encoding='utf-8' ?>\n",
        "<?xml version='1.0' encoding='UTF8'?>", "<?xml version='1.0'?>"}) {
    expectEverywhere(declaration, "Ren&#233;", "Ren\xC3\xA9");
    expectEverywhere(declaration, "&#8364;5",
                     "\xE2\x82\xAC"
                     "5");
    expectEverywhere(declaration, "&#xE9;&#x20AC;", "\xC3\xA9\xE2\x82\xAC");
    expectEverywhere(declaration, "&#65;&#x42;", "AB");
  }
}

TEST(NumberedReferences, AreSingleBytesWhereUtf8IsNotDeclared) {
  for (char const* const declaration :
       {"", "<!-- no declaration -->", "<?xml version='1.0' encoding='ISO-8859-1'?>"}) {
    expectEverywhere(declaration, "Ren&#233;", "Ren\xE9");
    expectEverywhere(declaration, "&#8364;5",
                     "\xAC"
                     "5");
    expectEverywhere(declaration, "&#xE9;&#x20AC;", "\xE9\xAC");
    expectEverywhere(declaration, "&#65;&#x42;", "AB");
  }
}

}  // namespace
}  // namespace Kovra
