// Replies read into the classic records, with what was said and what was lost.

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <string>
#include <type_traits>
#include <utility>

#include "kovra.hpp"
#include "support/locale.hpp"

namespace Kovra {
namespace {

static_assert(!detail::isRead<int> && !detail::isRead<_tagSecActionXMLValues>);

TEST(Read, FillsTheRecordAndKnowsWhatWasSaid) {
  auto const status = read<KVGeneralStatus>(
      "<get_general_status><alarms>0x1A</alarms><printer_state>idle</printer_state>"
      "</get_general_status>");
  ASSERT_TRUE(status);
  EXPECT_EQ(status->alarms, 26U);
  EXPECT_EQ((*status).printer_state, 2);
  EXPECT_EQ(status->error, 0) << "zero where the reply said nothing";
  EXPECT_TRUE(status.has("alarms"));
  EXPECT_FALSE(status.has("error"));
  EXPECT_FALSE(status.has(""));
  EXPECT_FALSE(status.has("alarms.x"));
  EXPECT_TRUE(status.result());
  EXPECT_EQ(status.message(), "general-status");
  EXPECT_TRUE(status.notes().empty());
  EXPECT_FALSE(status.refusal());
}

TEST(Read, HasNotes) {
  auto const status = read<KVGeneralStatus>(
      "<get_general_status><error>five</error><firmware/></get_general_status>");
  ASSERT_TRUE(status);
  EXPECT_TRUE(status.has("error")) << "as the record holds it";
  ASSERT_EQ(status.notes().size(), 2U);
  EXPECT_EQ(status.notes()[0].id(), "K112");
  EXPECT_EQ(status.notes()[1].path(), "/get_general_status/firmware");
  for (Note const& note :
       read<KVGeneralStatus>("<get_general_status><a/></get_general_status>").notes()) {
    EXPECT_EQ(note.element(), "a") << "though the reply is gone";
  }
}

template <class Record>
void expectRefused(std::string_view text, std::string const& id) {
  auto const reply = read<Record>(text);
  EXPECT_FALSE(reply);
  EXPECT_EQ(reply.refusal().id(), id);
  EXPECT_FALSE(reply.result());
  EXPECT_FALSE(reply.has("error"));
  EXPECT_TRUE(reply.notes().empty());
  EXPECT_EQ(reply.message(), "");
  Record zeros{};
  if constexpr (std::is_trivially_copyable_v<Record>) {
    EXPECT_EQ(std::memcmp(&*reply, &zeros, sizeof zeros), 0);
  }
}

TEST(Read, OfARefusedTextIsEmptyAndSafe) {
  expectRefused<KVGeneralStatus>("", "K001");
  expectRefused<KVGeneralStatus>("<get_general_status>", "K005");
  expectRefused<KVGeneralStatus>("<get_job_list/>", "K014");
  expectRefused<KVGeneralStatus>("<html/>", "K013");
  expectRefused<_KVMediaInfo>("<html/>", "K013");
  Reply<KVGeneralStatus> const born;
  EXPECT_FALSE(born);
  EXPECT_FALSE(born.refusal());
  EXPECT_EQ(born->error, 0);
}

TEST(Read, OwnsTheListsOfTheRecord) {
  std::string text = "<AccessPoints>";
  for (int i = 0; i < 300; ++i) {
    text += "<AccessPoint><SSID>net " + std::to_string(i) + "</SSID></AccessPoint>";
  }
  Reply<_tagAccessPoints> copy;
  {
    auto const reply = read<_tagAccessPoints>(text + "</AccessPoints>");
    ASSERT_TRUE(reply);
    copy = reply;
  }
  ASSERT_EQ(copy->count, 300U);
  EXPECT_STREQ(copy->accessPoints[299].ssid, "net 299");
  EXPECT_TRUE(copy.has("accessPoints[299].ssid"));
  EXPECT_TRUE(copy.has("accessPoints[299]"));
  EXPECT_TRUE(copy.has("accessPoints"));
  EXPECT_FALSE(copy.has("accessPoints[300]"));
  EXPECT_FALSE(copy.has("accessPoints[299].channel"));
  EXPECT_FALSE(copy.has("[299].ssid"));
  EXPECT_FALSE(copy.has("99].ssid"));
}

TEST(Read, KnowsNestedMembers) {
  auto const reply = read<_KVConfiguration>(
      "<configuration><wireless><ssid>Office</ssid></wireless><ethernet/>"
      "<lcd_contrast min='0' max='63'>5</lcd_contrast></configuration>");
  ASSERT_TRUE(reply);
  EXPECT_STREQ(reply->wireless.ssid, "Office");
  EXPECT_TRUE(reply.has("wireless.ssid"));
  EXPECT_TRUE(reply.has("wireless"));
  EXPECT_TRUE(reply.has("lcd_contrast.max"));
  EXPECT_FALSE(reply.has("ethernet")) << "nothing was read of it";
  EXPECT_FALSE(reply.has("ssid"));
  EXPECT_FALSE(reply.result()) << "as the classic operation";
}

TEST(Read, ForgetsWhatAnotherEntryTookThePlaceOf) {
  auto const reply = read<_KVConfiguration>(
      "<configuration><cards><card><cal_table>1</cal_table></card><card/></cards>"
      "</configuration>");
  EXPECT_EQ(reply->cards[1].cal_table, 0);
  EXPECT_FALSE(reply.has("cards[1].cal_table"));
  EXPECT_TRUE(reply.has("cards[1]"));
}

TEST(Read, TellsMessagesOfOneRecordApartByTheirRoots) {
  std::string const ram = "<get_free_ram><bytes_free>5</bytes_free></get_free_ram>";
  std::string const flash = "<get_free_flash><bytes_free>6</bytes_free></get_free_flash>";
  EXPECT_EQ(read<__MEMORY>(ram).message(), "free-ram");
  EXPECT_EQ(read<__MEMORY>(flash).message(), "free-flash");
}

TEST(Read, TakesEveryRecordOfTheReaders) {
  EXPECT_TRUE(read<CleaningLog>("<get_log_cleaning_history/>"));
  EXPECT_TRUE(read<_tagHostDHKeys>("<diffie_hellman/>"));
  EXPECT_TRUE(read<KVJobList>("<get_job_list/>"));
  EXPECT_TRUE(read<_KVMediaInfo>("<media/>"));
  EXPECT_TRUE(read<_Capabilities>("<capabilities/>"));
  EXPECT_TRUE(read<_tagLogServiceXML>("<get_log_service_history/>") ||
              read<_tagLogServiceXML>("<get_log_service_history/>").refusal());
  auto const keys =
      read<_tagHostDHKeys>("<diffie_hellman><modulus>0x10</modulus></diffie_hellman>");
  EXPECT_EQ(keys->modulus, 16);
  EXPECT_TRUE(keys.has("modulus"));
}

// Whatever the process has set.

class Face : public test::CommaLocale {};
INSTANTIATE_TEST_SUITE_P(Locales, Face, test::commaLocales(), test::nameOfLocale);

TEST_P(Face, KnowsNoLocale) {
  std::string const text =
      "<get_sensor_status><sensor_values><voltage_24>24.35</voltage_24></sensor_values>"
      "</get_sensor_status>";
  EXPECT_EQ(read<_SENSOR>(text)->voltage_24, 24.35F);
  EXPECT_TRUE(read<_SENSOR>(text).notes().empty());
  EXPECT_EQ(decode(text).readings()[0].record().at("voltage_24").asReal(), 24.35);
  EXPECT_NE(decode(text).toJson().find("\"voltage_24\":24.35"), std::string::npos);
  EXPECT_EQ(Value(24.35).toJson(), "24.35");
  EXPECT_EQ(Value::fromJson("24.35"), Value(24.35));
  _KVConfiguration record{};
  record.takeup_motor.S0 = {0.5F, 2.25F, 1.5F};
  Composition const motor =
      compose(record, Value::object({{"sections", Value::list({"ribbon_motor_parameters"})}}));
  ASSERT_TRUE(motor) << motor.problems()[0].message();
  EXPECT_NE(motor.text().find("<S0 min=\"0.50\" max=\"2.25\">1.5000</S0>"), std::string::npos)
      << motor.text();
  EXPECT_EQ(std::string(std::localeconv()->decimal_point), ",") << "and leaves it as it was";
}

}  // namespace
}  // namespace Kovra
