// No memory that the library gives back holds a key. The key has 15 characters: of such a text
// TinyXML, whose own copies nobody can reach, puts none on the heap.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "kovra.h"
#include "kovra.hpp"
#include "kvxsecactionparser.h"
#include "kvxsetsecactions.h"
#include "support/allocations.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::Released;
using test::wide;

std::string const secret = "very-secret-key";

void expectWiped(char const* what, std::function<void()> const& call) {
  Released const released(secret);
  call();
  EXPECT_EQ(released.found(), 0U) << what;
}

class WipedSecrets : public test::HeapTest {};

TEST_F(WipedSecrets, OfTheReaderWhateverItMakesOfTheText) {
  for (std::string const& xml :
       {"<nonce>" + secret + "</nonce>", "<passkey>" + secret + "</passkey>",
        "<keys><printer_lock_key>" + secret + "</printer_lock_key><a b='" + secret + "'/></keys>",
        "<keys><set><new_passkey>" + secret + "</new_passkey></set></keys>",
        "<action>" + secret + "<printer nonce='x'/><hmac>" + secret + "</hmac></action>",
        "<secure_action_request><printer nonce='" + secret + "'/></secure_action_request>",
        "<diffie_hellman><modulus>" + secret + "</modulus></diffie_hellman>",
        "<other>" + secret + "</other>",
        "<keys><printer_lock_key>" + secret + "</printer_lock_key><open></keys>"}) {
    std::wstring text = wide(xml);
    char nonce[32];
    _tagSecKeys keys;
    _tagSecSetKeys change;
    _tagSecDirecXML directive;
    _tagSecReqXML request;
    std::memset(&directive, 'm', sizeof directive);
    std::memset(&request, 'm', sizeof request);
    _tagHostDHKeys host{};
    long printer = 0;
    expectWiped(xml.c_str(), [&] {
      KVXSecAction reader;
      auto const length = text.size();
      reader.GetNonceValue(*text.data(), static_cast<int>(length), nonce);
      reader.ParseHostDHKeyValues(*text.data(), length, host);
      reader.ParsePrinterDHKeyValues(*text.data(), length, printer);
      reader.ParseSecureRequestValues(text.data(), length, request);
      reader.ParseSecureDirectiveValues(*text.data(), length, directive);
      reader.ParseSecurityKeys(*text.data(), length, keys);
      reader.ParseSetSecurityKeys(*text.data(), length, change);
      reader.ParseGetSecureActionRequest(*text.data(), length, change);
    });
  }
}

TEST_F(WipedSecrets, OfTheWriterWithTheNextDocumentOrItsEnd) {
  wchar_t out[2048];
  char const* const s = secret.c_str();
  _tagSecActionXMLValues values{"reset_oem", s, s, s, s};
  _tagSecKeys keys{};
  std::memcpy(keys.printer_lock_key, s, secret.size());
  expectWiped("all documents", [&] {
    KVXSetSecActions writer;
    writer.GetNonceXML(s, out, 2048);
    writer.SecureActionRequestXML(values, out, 2048);
    writer.SecureActionDirectiveXML(values, out, 2048, 30);
    writer.GetPasskeyXML(s, s, out, 2048);
    writer.GetSecureActionXML(s, out, 2048);
    writer.SetSecureActionXML(keys, out, 2048);
    writer.SetHostAndEncryptXML(out, 2048, s, s, s, s, s, s, s, true, true, true);
    writer.saveJob(out, 2048);
  });
}

/// Of a text that is refused nobody but the library holds what was read so far.
TEST_F(WipedSecrets, OfJsonThatIsRefused) {
  std::string const text = '"' + secret + '"';
  std::string const longText = '"' + secret + " and more, so that it stands on the heap\"";
  std::string const escaped = R"("\u0076ery-secret-key and more, so that it stands on the heap")";
  for (std::string const& value : {text, longText, escaped}) {
    for (std::string const& json :
         {value + " x", '[' + value, '[' + value + ",[" + value + ",{\"a\":" + value + "}],x]",
          "{\"a\":" + value + ",\"a\":1}", "{\"a\":[" + value + "],\"b\":[[" + value + "]],}",
          "{\"code\":1,\"name\":" + value + ",", "[{\"code\":1,\"name\":" + value + "},x",
          value.substr(0, value.size() - 1), value.substr(0, value.size() - 1) + "\\x\""}) {
      expectWiped(json.c_str(), [&] { EXPECT_THROW(Value::fromJson(json), JsonError); });
      for (char const* const choices : {"", "{}", "[x"}) {
        expectWiped(json.c_str(), [&] {
          char* result = nullptr;
          EXPECT_EQ(kovra_compose("passkey", json.c_str(), choices, &result), KOVRA_REFUSED);
          kovra_free(result);
        });
      }
    }
    std::string const record = "{\"other\":" + value + "}";
    expectWiped("what is read but does not fit", [&] {
      char* result = nullptr;
      EXPECT_EQ(kovra_compose("passkey", record.c_str(), "", &result), KOVRA_REFUSED);
      kovra_free(result);
    });
  }
}

TEST_F(WipedSecrets, OfJsonThatIsTakenAreTheHosts) {
  std::string const json = "[\"" + secret + R"(","\u0076ery-secret-key",{"code":1,"name":")" +
                           secret + "\"},{\"a\":\"" + secret + "\"}]";
  Value value;
  expectWiped("what is left of the reading", [&] { value = Value::fromJson(json); });
  EXPECT_EQ(value.at("[1]"), Value(secret));
  for (char const* const path : {"", "[0]", "[1]", "[2]", "[3]", "[3].a"}) {
    EXPECT_FALSE(value.at(path).isSecret()) << path;
  }
}

TEST(Secrets, StandInNoNoteAndAreMarked) {
  std::string const longer = secret + std::string(300, 'x');
  for (std::string const& xml :
       {"<keys><printer_lock_key>" + longer + "</printer_lock_key></keys>",
        "<keys><set><new_passkey>" + longer + "</new_passkey></set></keys>",
        "<passkey>" + longer + "</passkey>", "<action>x<hmac>" + longer + "</hmac></action>"}) {
    Decoding const decoding = decode(xml);
    ASSERT_TRUE(static_cast<bool>(decoding)) << xml;
    ASSERT_FALSE(decoding.notes().empty()) << "the text was cut";
    for (Note const& note : decoding.notes()) {
      EXPECT_EQ(note.message().find(secret), std::string::npos) << xml;
      EXPECT_EQ(note.found().find(secret), std::string::npos) << xml;
      EXPECT_EQ(note.kept().find(secret), std::string::npos) << xml;
    }
    std::vector<Reading> const readings = decoding.readings();
    ASSERT_EQ(readings.size(), 1U) << xml;
    EXPECT_TRUE(readings[0].record().members().back().value().isSecret()) << xml;
  }
}

TEST(Secrets, StandInNoProblem) {
  for (Value const& value : {Value(secret + '\0' + "more"), Value(47110815)}) {
    Composition const composition =
        compose("security-keys", Value::object({{"host_authentication_key", value},
                                                {"data_encryption_key", "fits"},
                                                {"printer_lock_key", value}}));
    EXPECT_FALSE(composition);
    std::vector<Problem> const problems = composition.problems();
    ASSERT_EQ(problems.size(), 2U);
    EXPECT_EQ(problems[0].path(), "host_authentication_key");
    EXPECT_EQ(problems[1].path(), "printer_lock_key");
    for (Problem const& problem : problems) {
      EXPECT_EQ(problem.message().find(secret), std::string::npos);
      EXPECT_EQ(problem.message().find("47110815"), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace Kovra
