// Actions through the face: texts of the printer's vocabulary, never codes.

#include <gtest/gtest.h>

#include <string>

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

Value text(std::string const& content) {
  Value value;
  value.kind = Value::Kind::text;
  value.text = content;
  return value;
}

/// A request for an action, complete otherwise.
Composition request(Value const& action) {
  Value record;
  record.kind = Value::Kind::record;
  record.members = {{"action", action},
                    {"model", text("KX-200")},
                    {"serial", text("K2001234")},
                    {"nonce", text("8F31C07A55D2")}};
  return composeSecureRequest(record);
}

void expectRefused(Value const& action) {
  Composition const composition = request(action);
  EXPECT_FALSE(composition.composed) << composition.text;
  EXPECT_EQ(composition.text, "");
  EXPECT_EQ(composition.problem.path, "action");
}

TEST(ComposedAction, IsAnyOfThePrintersWords) {
  for (char const* const action : actions) {
    Composition const composition = request(text(action));
    EXPECT_TRUE(composition.composed) << action;
    EXPECT_NE(composition.text.find("<action name=\"" + std::string(action) + "\">"),
              std::string::npos)
        << composition.text;
  }
}

TEST(ComposedAction, IsNothingBesideTheWords) {
  for (std::string const action : actions) {
    for (std::string const& other : {"x" + action, action + "s", " " + action, action + " "}) {
      if (other != "unlock_printer") expectRefused(text(other));
    }
  }
  for (char const* const other : {"", "Reset_oem", "RESET_OEM", "reset oem", "0", "1"}) {
    expectRefused(text(other));
  }
}

TEST(ComposedAction, HasNoCode) {
  for (long const code : {-1L, 0L, 1L, 5L, 16L}) {
    Value value;
    value.kind = Value::Kind::integer;
    value.integer = code;
    expectRefused(value);
    value.kind = Value::Kind::keyword;
    value.text = "reset_oem";
    value.known = true;
    expectRefused(value);
  }
  expectRefused(Value());
  // Whoever asks the vocabulary gets no code, either.
  for (frame::Word const& word : security::actionNames.words) EXPECT_EQ(word.code, 0) << word.text;
  EXPECT_EQ(security::actionNames.words.size(), std::size(actions));
}

TEST(DecodedAction, IsAText) {
  for (char const* const action : actions) {
    std::string const reply = "<action> " + std::string(action) + " <hmac>00</hmac></action>";
    Decoding const decoding = decode(reply.data(), reply.size());
    ASSERT_EQ(decoding.readings.size(), 1U) << action;
    Value const* const found = decoding.readings[0].record.find("action");
    ASSERT_NE(found, nullptr) << action;
    EXPECT_EQ(found->kind, Value::Kind::text) << action;
    EXPECT_EQ(found->text, action);
  }
}

}  // namespace
}  // namespace Kovra
