// Actions through the face: texts of the printer's vocabulary, never codes.

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "security/security_tables.hpp"

namespace Kovra {
namespace {

constexpr char const* actions[] = {
    "cancel_printer_passkey",
    "set_single_sided",
    "set_double_sided",
    "reset_physical_address",
    "reset_oem",
    "reset_printer_serial_number",
    "reset_laminator_serial_number",
    "clear_error_log",
    "clear_card_cleaning_log",
    "clear_service_log",
    "reset_card_count",
    "reset_impression_count",
    "reset_system_defaults",
    "reset_cards_laminated",
    "unlock_printer",
    "lock_printer",
};

/// A request for an action, complete otherwise.
Composition request(Value const& action) {
  return compose("secure-action-request", Value::object({{"action", action},
                                                         {"model", "KX-200"},
                                                         {"serial", "K2001234"},
                                                         {"nonce", "8F31C07A55D2"}}));
}

void expectRefused(Value const& action) {
  Composition const composition = request(action);
  EXPECT_FALSE(composition) << composition.text();
  EXPECT_EQ(composition.text(), "");
  ASSERT_EQ(composition.problems().size(), 1U);
  EXPECT_EQ(composition.problems()[0].path(), "action");
}

TEST(ComposedAction, IsAnyOfThePrintersWords) {
  for (char const* const action : actions) {
    Composition const composition = request(action);
    EXPECT_TRUE(static_cast<bool>(composition)) << action;
    EXPECT_NE(composition.text().find("<action name=\"" + std::string(action) + "\">"),
              std::string::npos)
        << composition.text();
  }
}

TEST(ComposedAction, IsNothingBesideTheWords) {
  for (std::string const action : actions) {
    for (std::string const& other : {"x" + action, action + "s", " " + action, action + " "}) {
      if (other != "unlock_printer") expectRefused(other);
    }
  }
  for (char const* const other : {"", "Reset_oem", "RESET_OEM", "reset oem", "0", "1"}) {
    expectRefused(other);
  }
}

TEST(ComposedAction, HasNoCode) {
  for (int const code : {-1, 0, 1, 5, 16}) {
    expectRefused(code);
    expectRefused(Value::keyword(code, "reset_oem"));
  }
  expectRefused(Value());
  // Whoever asks the vocabulary gets no code, either.
  for (frame::Word const& word : security::actionNames.words) EXPECT_EQ(word.code, 0) << word.text;
  EXPECT_EQ(security::actionNames.words.size(), std::size(actions));
}

TEST(DecodedAction, IsAText) {
  for (char const* const action : actions) {
    std::string const reply = "<action> " + std::string(action) + " <hmac>00</hmac></action>";
    std::vector<Reading> const readings = decode(reply).readings();
    ASSERT_EQ(readings.size(), 1U) << action;
    Value const* const found = readings[0].record().find("action");
    ASSERT_NE(found, nullptr) << action;
    EXPECT_EQ(*found, Value(action));
  }
}

}  // namespace
}  // namespace Kovra
