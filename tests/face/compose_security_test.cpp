#include <gtest/gtest.h>

#include <string>

#include "kovra.hpp"
#include "support/values.hpp"

namespace Kovra {
namespace {

using test::declaration;
using test::number;
using test::outcome;
using test::record;
using test::text;
using test::texts;

std::string const noText = ": found nothing; expected a text";
std::string const noElement = ": found a value; expected none: this document has no such element";

TEST(ComposeNonce, WritesTheText) {
  EXPECT_EQ(outcome(composeNonce(texts({{"nonce", "8F31"}}))),
            declaration + std::string("<nonce>8F31</nonce>\n"));
}

TEST(ComposeNonce, RefusesWhatIsNone) {
  EXPECT_EQ(outcome(composeNonce(record({}))), "nonce" + noText);
  EXPECT_EQ(outcome(composeNonce(text("8F31"))), "found \"8F31\"; expected an object");
  EXPECT_EQ(outcome(composeNonce(texts({{"key", "8F31"}}))),
            "key: found an unknown key; expected one of: nonce");
  EXPECT_EQ(outcome(composeNonce(record({{"nonce", text(std::string(32, '8'))}}))),
            "nonce: found \"" + std::string(32, '8') +
                "\"; expected a text of at most 31 bytes, none of them NUL");
}

TEST(ComposeSecureRequest, WritesItsAttributes) {
  EXPECT_EQ(
      outcome(composeSecureRequest(texts(
          {{"nonce", "8F31"}, {"serial", "K1"}, {"model", "KX-200"}, {"action", "reset_oem"}}))),
      declaration + std::string("<secure_action_request>\n"
                                "    <action name=\"reset_oem\">\n"
                                "        <printer model=\"KX-200\" serial=\"K1\" "
                                "nonce=\"8F31\" />\n"
                                "    </action>\n"
                                "</secure_action_request>\n"));
}

TEST(ComposeSecureRequest, NeedsEveryMemberAndAKnownAction) {
  Value request = texts({{"action", "reset_oem"}});
  for (char const* const next : {"model", "serial", "nonce"}) {
    EXPECT_EQ(outcome(composeSecureRequest(request)), next + noText);
    request.members.push_back({next, text("x")});
  }
  EXPECT_TRUE(composeSecureRequest(request).composed);
  request.members[0].value = text("reset_oem2");
  EXPECT_EQ(outcome(composeSecureRequest(request)).substr(0, 43),
            "action: found \"reset_oem2\"; expected one of");
  request.members[0].value = number(4);
  EXPECT_EQ(outcome(composeSecureRequest(request)).substr(0, 24), "action: found 4; expecte");
  request.members.erase(request.members.begin());
  EXPECT_EQ(outcome(composeSecureRequest(request)), "action" + noText);
}

Value directive() {
  return texts({{"model", "KX-200"}, {"serial", "K1"}, {"nonce", "8F31"}, {"hmac", "9b1c"}});
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
  EXPECT_EQ(outcome(composeSecureDirective(directive())), directiveWith(""));
  EXPECT_EQ(outcome(composeSecureDirective(directive(), 0)), directiveWith(""));
  EXPECT_EQ(outcome(composeSecureDirective(directive(), 30)),
            directiveWith("        <timeout>30</timeout>\n"));
  EXPECT_EQ(outcome(composeSecureDirective(directive(), -1)),
            directiveWith("        <timeout>-1</timeout>\n"));
}

TEST(ComposeSecureDirective, TakesAnActionAndDoesNotWriteIt) {
  Value shown = directive();
  shown.members.insert(shown.members.begin(), {"action", text("printer")});
  EXPECT_EQ(outcome(composeSecureDirective(shown)), directiveWith(""));
}

TEST(ComposeSecureDirective, NeedsEveryMember) {
  for (std::size_t i = 0; i < 4; ++i) {
    Value part = directive();
    std::string const name = part.members[i].name;
    part.members.erase(part.members.begin() + static_cast<std::ptrdiff_t>(i));
    EXPECT_EQ(outcome(composeSecureDirective(part)), name + noText);
  }
}

TEST(ComposePasskey, WritesThePasskeyAlone) {
  EXPECT_EQ(outcome(composePasskey(texts({{"current_passkey", "open <sesame>"}}))),
            declaration + std::string("<passkey>open &lt;sesame&gt;</passkey>\n"));
  EXPECT_EQ(outcome(composePasskey(record({}))), "current_passkey" + noText);
  EXPECT_EQ(outcome(composePasskey(text("open"))), "found \"open\"; expected an object");
  EXPECT_EQ(outcome(composePasskey(texts({{"current_passkey", "p"}, {"new_passkey", "n"}}))),
            "new_passkey" + noElement);
}

TEST(ComposePasskeyChange, WritesBothPasskeys) {
  EXPECT_EQ(outcome(composePasskeyChange(texts({{"new_passkey", "n"}, {"current_passkey", "p"}}))),
            declaration + std::string("<keys>\n"
                                      "    <set>\n"
                                      "        <current_passkey>p</current_passkey>\n"
                                      "        <new_passkey>n</new_passkey>\n"
                                      "    </set>\n"
                                      "</keys>\n"));
  EXPECT_EQ(outcome(composePasskeyChange(texts({{"new_passkey", "n"}}))),
            "current_passkey" + noText);
  EXPECT_EQ(outcome(composePasskeyChange(texts({{"current_passkey", "p"}}))),
            "new_passkey" + noText);
  EXPECT_EQ(outcome(composePasskeyChange(texts({{"new_printer_lock_key", "p"}}))),
            "new_printer_lock_key" + noElement);
}

TEST(ComposeKeys, WritesTheThreeKeysInTheOrderOfTheDocument) {
  EXPECT_EQ(outcome(composeKeys(texts({{"data_encryption_key", "d"},
                                       {"host_authentication_key", "h"},
                                       {"printer_lock_key", "l"}}))),
            declaration + std::string("<keys>\n"
                                      "    <host_authentication_key>h</host_authentication_key>\n"
                                      "    <data_encryption_key>d</data_encryption_key>\n"
                                      "    <printer_lock_key>l</printer_lock_key>\n"
                                      "</keys>\n"));
}

TEST(ComposeKeys, NeedsEveryKeyAndTellsNone) {
  Value keys = record({});
  for (char const* const next :
       {"host_authentication_key", "data_encryption_key", "printer_lock_key"}) {
    EXPECT_EQ(outcome(composeKeys(keys)), next + noText);
    keys.members.push_back({next, text("hush")});
  }
  keys.members.back().value = text("hush\x1b");
  EXPECT_EQ(outcome(composeKeys(keys)),
            "printer_lock_key: found a text of 5 bytes; expected a text without control characters "
            "other than tabs and line ends");
  keys.members.back().value = text("hush\xff");
  EXPECT_EQ(outcome(composeKeys(keys)),
            "printer_lock_key: found a text of 5 bytes; expected a text in UTF-8");
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
  Value all = texts({{"current_passkey", "p"}});
  std::string pairs;
  for (std::string const key :
       {"host_authentication_key", "data_encryption_key", "printer_lock_key"}) {
    Value one = texts({{"current_passkey", "p"}});
    for (Value* const change : {&one, &all}) {
      change->members.push_back({"new_" + key, text("n")});
      change->members.push_back({"current_" + key, text("c")});
    }
    EXPECT_EQ(outcome(composeKeysChange(one)), changeOf(pair(key)));
    pairs += pair(key);
  }
  EXPECT_EQ(outcome(composeKeysChange(all)), changeOf(pairs));
}

TEST(ComposeKeysChange, RefusesHalfAPairAndNone) {
  EXPECT_EQ(outcome(composeKeysChange(text("p"))), "found \"p\"; expected an object");
  EXPECT_EQ(outcome(composeKeysChange(texts({{"current_passkey", "p"}}))),
            "found no key; expected a current and a new one");
  EXPECT_EQ(outcome(composeKeysChange(texts({{"new_passkey", "p"}}))),
            "new_passkey: found a value; expected none: the passkey has a change of its own");
  EXPECT_EQ(outcome(composeKeysChange(
                texts({{"new_printer_lock_key", "n"}, {"current_printer_lock_key", "c"}}))),
            "current_passkey" + noText);
  for (std::string const key :
       {"host_authentication_key", "data_encryption_key", "printer_lock_key"}) {
    for (auto const& [has, lacks] : {std::pair<std::string, std::string>("current_", "new_"),
                                     std::pair<std::string, std::string>("new_", "current_")}) {
      Value half = texts({{"current_passkey", "p"}});
      half.members.push_back({has + key, text("hush")});
      EXPECT_EQ(outcome(composeKeysChange(half)), lacks + key + noText);
    }
  }
}

}  // namespace
}  // namespace Kovra
