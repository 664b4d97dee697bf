#include <gtest/gtest.h>

#include <string>

#include "kovra.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::declaration;
using test::outcome;

std::string const noText = ": found nothing; expected a text";
std::string const noElement = ": found a value; expected none: this document has no such element";

TEST(ComposeNonce, WritesTheText) {
  EXPECT_EQ(outcome(compose("nonce", Value::object({{"nonce", "8F31"}}))),
            declaration + std::string("<nonce>8F31</nonce>\n"));
}

TEST(ComposeNonce, RefusesWhatIsNone) {
  EXPECT_EQ(outcome(compose("nonce", Value::object())), "nonce" + noText);
  EXPECT_EQ(outcome(compose("nonce", "8F31")), "found \"8F31\"; expected an object");
  EXPECT_EQ(outcome(compose("nonce", Value::object({{"key", "8F31"}}))),
            "key: found an unknown key; expected one of: nonce");
  EXPECT_EQ(outcome(compose("nonce", Value::object({{"nonce", std::string(32, '8')}}))),
            "nonce: found \"" + std::string(32, '8') +
                "\"; expected a text of at most 31 bytes, none of them NUL");
}

TEST(ComposeSecureRequest, WritesItsAttributes) {
  EXPECT_EQ(outcome(compose("secure-action-request", Value::object({{"nonce", "8F31"},
                                                                    {"serial", "K1"},
                                                                    {"model", "KX-200"},
                                                                    {"action", "reset_oem"}}))),
            declaration + std::string("<secure_action_request>\n"
                                      "    <action name=\"reset_oem\">\n"
                                      "        <printer model=\"KX-200\" serial=\"K1\" "
                                      "nonce=\"8F31\" />\n"
                                      "    </action>\n"
                                      "</secure_action_request>\n"));
}

TEST(ComposeSecureRequest, NeedsEveryMemberAndAKnownAction) {
  Value request = Value::object({{"action", "reset_oem"}});
  for (char const* const next : {"model", "serial", "nonce"}) {
    EXPECT_EQ(outcome(compose("secure-action-request", request)), next + noText);
    request.add(next, "x");
  }
  EXPECT_TRUE(static_cast<bool>(compose("secure-action-request", request)));
  request.set("action", "reset_oem2");
  EXPECT_EQ(outcome(compose("secure-action-request", request)).substr(0, 43),
            "action: found \"reset_oem2\"; expected one of");
  request.set("action", 4);
  EXPECT_EQ(outcome(compose("secure-action-request", request)).substr(0, 24),
            "action: found 4; expecte");
  request.erase("action");
  EXPECT_EQ(outcome(compose("secure-action-request", request)), "action" + noText);
}

TEST(ComposeSecrets, RefusesMasksInAnyMemberOfAMessageOfSecrets) {
  Value const request = Value::object(
      {{"nonce", "8F31"}, {"serial", "******"}, {"model", "KX-200"}, {"action", "reset_oem"}});
  EXPECT_EQ(outcome(compose("secure-action-request", request)),
            "serial: found a masked secret; expected the secret itself");
  Composition const open = compose("printer-id", Value::object({{"printer_model", "******"}}),
                                   Value::object({{"fields", Value::list({"model"})}}));
  EXPECT_NE(open.text().find("******"), std::string::npos) << "elsewhere it is a text";
}

Value directive() {
  return Value::object(
      {{"model", "KX-200"}, {"serial", "K1"}, {"nonce", "8F31"}, {"hmac", "9b1c"}});
}

std::string directiveWith(std::string const& timeout) {
  return declaration +
         std::string(
             "<secure_action_request>\n"
             "    <action>\n"
             "        <printer model=\"KX-200\" serial=\"K1\" "
             "nonce=\"8F31\" />\n"
             "        <hmac>9b1c</hmac>\n") +
         timeout + "    </action>\n</secure_action_request>\n";
}

TEST(ComposeSecureDirective, WritesATimeoutOnlyWhenThereIsOne) {
  auto const composed = [](int timeout) {
    return outcome(
        compose("secure-action-directive", directive(), Value::object({{"timeout", timeout}})));
  };
  EXPECT_EQ(outcome(compose("secure-action-directive", directive())), directiveWith(""));
  EXPECT_EQ(composed(0), directiveWith(""));
  EXPECT_EQ(composed(30), directiveWith("        <timeout>30</timeout>\n"));
  EXPECT_EQ(composed(-1), directiveWith("        <timeout>-1</timeout>\n"));
}

TEST(ComposeSecureDirective, TakesAnActionAndDoesNotWriteIt) {
  Value shown = directive();
  shown.add("action", "printer");
  EXPECT_EQ(outcome(compose("secure-action-directive", shown)), directiveWith(""));
}

TEST(ComposeSecureDirective, NeedsEveryMember) {
  for (std::string const name : {"model", "serial", "nonce", "hmac"}) {
    Value part = directive();
    ASSERT_TRUE(part.erase(name));
    EXPECT_EQ(outcome(compose("secure-action-directive", part)), name + noText);
  }
}

_tagSecActionXMLValues const classicAction = {"reset_oem", "KX-200", "K1", "8F31", "9b1c"};

std::string ofClassicAction(_tagSecActionXMLValues const& values, std::string const& message) {
  return outcome(compose(values, Value::object({{"message", message}})));
}

TEST(ComposeClassicAction, WritesTheDocumentThatIsChosen) {
  EXPECT_EQ(ofClassicAction(classicAction, "secure-action-directive"), directiveWith(""));
  EXPECT_EQ(ofClassicAction(classicAction, "secure-action-request"),
            outcome(compose("secure-action-request", Value::object({{"action", "reset_oem"},
                                                                    {"model", "KX-200"},
                                                                    {"serial", "K1"},
                                                                    {"nonce", "8F31"}}))));
  EXPECT_EQ(outcome(compose(classicAction, Value::object({{"message", "secure-action-directive"},
                                                          {"timeout", 30}}))),
            directiveWith("        <timeout>30</timeout>\n"));
}

TEST(ComposeClassicAction, NeedsTheTextsOfThatDocumentAlone) {
  _tagSecActionXMLValues values = classicAction;
  values.hmac = nullptr;
  EXPECT_TRUE(
      static_cast<bool>(compose(values, Value::object({{"message", "secure-action-request"}}))));
  EXPECT_EQ(ofClassicAction(values, "secure-action-directive"), "hmac" + noText);
  values = classicAction;
  values.action = nullptr;
  EXPECT_EQ(ofClassicAction(values, "secure-action-directive"), directiveWith(""));
  EXPECT_EQ(ofClassicAction(values, "secure-action-request"), "action" + noText);
}

TEST(ComposeClassicAction, NeedsToKnowWhichDocumentIsMeant) {
  std::string const expected = "; expected one of: secure-action-request, secure-action-directive";
  EXPECT_EQ(outcome(compose(classicAction)), "message: found nothing" + expected);
  EXPECT_EQ(ofClassicAction(classicAction, "nonce"), "message: found \"nonce\"" + expected);
  EXPECT_EQ(outcome(compose(classicAction, Value::object({{"message", 5}}))),
            "message: found 5" + expected);
}

TEST(ComposeClassicAction, TellsNoTextsOfIt) {
  _tagSecActionXMLValues values = classicAction;
  values.nonce = "8F3\x01";
  EXPECT_EQ(ofClassicAction(values, "secure-action-request"),
            "nonce: found a text with a character that XML cannot carry; expected a text without "
            "control characters other than tabs and line ends");
}

TEST(ComposePasskey, WritesThePasskeyAlone) {
  EXPECT_EQ(outcome(compose("passkey", Value::object({{"current_passkey", "open <sesame>"}}))),
            declaration + std::string("<passkey>open &lt;sesame&gt;</passkey>\n"));
  EXPECT_EQ(outcome(compose("passkey", Value::object())), "current_passkey" + noText);
  EXPECT_EQ(outcome(compose("passkey", "open")), "found \"open\"; expected an object");
  EXPECT_EQ(
      outcome(compose("passkey", Value::object({{"current_passkey", "p"}, {"new_passkey", "n"}}))),
      "new_passkey" + noElement);
}

TEST(ComposePasskeyChange, WritesBothPasskeys) {
  EXPECT_EQ(outcome(compose("passkey-change",
                            Value::object({{"new_passkey", "n"}, {"current_passkey", "p"}}))),
            declaration + std::string("<keys>\n"
                                      "    <set>\n"
                                      "        <current_passkey>p</current_passkey>\n"
                                      "        <new_passkey>n</new_passkey>\n"
                                      "    </set>\n"
                                      "</keys>\n"));
  EXPECT_EQ(outcome(compose("passkey-change", Value::object({{"new_passkey", "n"}}))),
            "current_passkey" + noText);
  EXPECT_EQ(outcome(compose("passkey-change", Value::object({{"current_passkey", "p"}}))),
            "new_passkey" + noText);
  EXPECT_EQ(outcome(compose("passkey-change", Value::object({{"new_printer_lock_key", "p"}}))),
            "new_printer_lock_key" + noElement);
}

TEST(ComposeKeys, WritesTheThreeKeysInTheOrderOfTheDocument) {
  EXPECT_EQ(outcome(compose("security-keys", Value::object({{"data_encryption_key", "d"},
                                                            {"host_authentication_key", "h"},
                                                            {"printer_lock_key", "l"}}))),
            declaration + std::string("<keys>\n"
                                      "    <host_authentication_key>h</host_authentication_key>\n"
                                      "    <data_encryption_key>d</data_encryption_key>\n"
                                      "    <printer_lock_key>l</printer_lock_key>\n"
                                      "</keys>\n"));
}

TEST(ComposeKeys, NeedsEveryKeyAndTellsNone) {
  Value keys = Value::object();
  for (char const* const next :
       {"host_authentication_key", "data_encryption_key", "printer_lock_key"}) {
    EXPECT_EQ(outcome(compose("security-keys", keys)), next + noText);
    keys.add(next, "hush");
  }
  keys.members().back().value() = "hush\x1b";
  EXPECT_EQ(outcome(compose("security-keys", keys)),
            "printer_lock_key: found a text of 5 bytes; expected a text without control characters "
            "other than tabs and line ends");
  keys.members().back().value() = "hush\xff";
  EXPECT_EQ(outcome(compose("security-keys", keys)),
            "printer_lock_key: found a text of 5 bytes; expected a text in UTF-8");
}

TEST(ComposeKeys, TellsEveryProblemInTheOrderOfTheRecord) {
  Value const keys = Value::object({{"printer_lock_key", 5},
                                    {"host_authentication_key", "h"},
                                    {"key", "x"},
                                    {"data_encryption_key", std::string(300, 'd')}});
  EXPECT_EQ(test::pathsOf(compose("security-keys", keys)),
            "printer_lock_key key data_encryption_key ");
  EXPECT_EQ(test::pathsOf(compose("security-keys", Value::object())),
            "host_authentication_key data_encryption_key printer_lock_key ");
}

std::string changeOf(std::string const& keys) {
  return declaration +
         std::string("<keys>\n    <set>\n        <current_passkey>p</current_passkey>\n") + keys +
         "    </set>\n</keys>\n";
}

std::string pair(std::string const& key) {
  return "        <current_" + key + ">c</current_" + key + ">\n        <new_" + key + ">n</new_" +
         key + ">\n";
}

TEST(ComposeKeysChange, WritesThePairsThatTheRecordNames) {
  Value all = Value::object({{"current_passkey", "p"}});
  std::string pairs;
  for (std::string const key :
       {"host_authentication_key", "data_encryption_key", "printer_lock_key"}) {
    Value one = Value::object({{"current_passkey", "p"}});
    for (Value* const change : {&one, &all}) {
      change->add("new_" + key, "n");
      change->add("current_" + key, "c");
    }
    EXPECT_EQ(outcome(compose("security-key-change", one)), changeOf(pair(key)));
    pairs += pair(key);
  }
  EXPECT_EQ(outcome(compose("security-key-change", all)), changeOf(pairs));
}

TEST(ComposeKeysChange, RefusesHalfAPairAndNone) {
  EXPECT_EQ(outcome(compose("security-key-change", "p")), "found \"p\"; expected an object");
  EXPECT_EQ(outcome(compose("security-key-change", Value::object({{"current_passkey", "p"}}))),
            "found no key; expected a current and a new one");
  EXPECT_EQ(outcome(compose("security-key-change", Value::object({{"new_passkey", "p"}}))),
            "new_passkey: found a value; expected none: the passkey has a change of its own");
  EXPECT_EQ(
      outcome(compose("security-key-change", Value::object({{"new_printer_lock_key", "n"},
                                                            {"current_printer_lock_key", "c"}}))),
      "current_passkey" + noText);
  for (std::string const key :
       {"host_authentication_key", "data_encryption_key", "printer_lock_key"}) {
    for (auto const& [has, lacks] : {std::pair<std::string, std::string>("current_", "new_"),
                                     std::pair<std::string, std::string>("new_", "current_")}) {
      Value half = Value::object({{"current_passkey", "p"}});
      half.add(has + key, "hush");
      EXPECT_EQ(outcome(compose("security-key-change", half)), lacks + key + noText);
    }
  }
  Value half = Value::object({{"current_passkey", "p"}});
  for (std::string const key :
       {"printer_lock_key", "data_encryption_key", "host_authentication_key"}) {
    half.add("current_" + key, "hush");
    EXPECT_EQ(outcome(compose("security-key-change", half)), "new_" + key + noText)
        << "the first in the order of the document";
  }
}

}  // namespace
}  // namespace Kovra
