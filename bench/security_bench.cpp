// The secure-action exchange and device commands: reading against a bare parse, writing against the
// same tree built, printed and converted with raw TinyXML calls. No side leaves a copy for
// debugging.

#include <tinyxml.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "control/kvxdevicecontrol_documents.hpp"
#include "frame/output.hpp"
#include "kvxsecactionparser.h"
#include "kvxsetsecactions.h"
#include "support/bench_support.hpp"

namespace {

using namespace kovra_bench;

constexpr int room = 2048;

int const readKeys = registered("read_security_keys", [](benchmark::State& state) {
  std::string const narrow = sample("security/security-keys.xml");
  std::wstring const text = widened(narrow);
  Kovra::KVXSecAction reader;
  Kovra::_tagSecKeys keys{};
  compare(
      state,
      [&] { benchmark::DoNotOptimize(reader.ParseSecurityKeys(text.front(), text.size(), keys)); },
      bareParse(narrow));
});

TiXmlElement* add(TiXmlElement* parent, char const* name) {
  auto* const element = new TiXmlElement(name);
  parent->LinkEndChild(element);
  return element;
}

void add(TiXmlElement* parent, char const* name, char const* text) {
  add(parent, name)->LinkEndChild(new TiXmlText(text));
}

TiXmlElement* begin(TiXmlDocument& document, char const* root) {
  document.LinkEndChild(new TiXmlDeclaration("1.0", "UTF-8", ""));
  auto* const element = new TiXmlElement(root);
  document.LinkEndChild(element);
  return element;
}

void print(TiXmlDocument& document, wchar_t* out) {
  TiXmlPrinter printer;
  printer.SetIndent("    ");
  document.Accept(&printer);
  benchmark::DoNotOptimize(std::mbstowcs(out, printer.CStr(), room));
}

char const key[] = "00112233445566778899aabbccddeeff";

int const writeKeys = registered("write_security_keys", [](benchmark::State& state) {
  Kovra::_tagSecKeys keys{};
  for (char* const text :
       {keys.data_encryption_key, keys.host_authentication_key, keys.printer_lock_key}) {
    std::memcpy(text, key, sizeof key);
  }
  wchar_t out[room];
  compare(
      state,
      [&] {
        Kovra::KVXSetSecActions writer;
        benchmark::DoNotOptimize(writer.SetSecureActionXML(keys, out, room));
      },
      [&] {
        TiXmlDocument document;
        TiXmlElement* const root = begin(document, "keys");
        add(root, "host_authentication_key", keys.host_authentication_key);
        add(root, "data_encryption_key", keys.data_encryption_key);
        add(root, "printer_lock_key", keys.printer_lock_key);
        print(document, out);
      });
});

int const writeKeyChange = registered("write_key_change", [](benchmark::State& state) {
  wchar_t out[room];
  compare(
      state,
      [&] {
        Kovra::KVXSetSecActions writer;
        benchmark::DoNotOptimize(writer.SetHostAndEncryptXML(out, room, "open sesame", key, key,
                                                             key, key, key, key, true, true, true));
      },
      [&] {
        TiXmlDocument document;
        TiXmlElement* const set = add(begin(document, "keys"), "set");
        add(set, "current_passkey", "open sesame");
        for (char const* const name :
             {"current_host_authentication_key", "new_host_authentication_key",
              "current_data_encryption_key", "new_data_encryption_key", "current_printer_lock_key",
              "new_printer_lock_key"}) {
          add(set, name, key);
        }
        print(document, out);
      });
});

int const writeDirective = registered("write_secure_directive", [](benchmark::State& state) {
  Kovra::_tagSecActionXMLValues values{"reset_oem", "KX-200", "K2001234", "8F31C07A55D2E94B", key};
  wchar_t out[room];
  compare(
      state,
      [&] {
        Kovra::KVXSetSecActions writer;
        benchmark::DoNotOptimize(writer.SecureActionDirectiveXML(values, out, room, 30));
      },
      [&] {
        TiXmlDocument document;
        TiXmlElement* const action = add(begin(document, "secure_action_request"), "action");
        TiXmlElement* const printer = add(action, "printer");
        printer->SetAttribute("model", values.model);
        printer->SetAttribute("serial", values.serial);
        printer->SetAttribute("nonce", values.nonce);
        add(action, "hmac", values.hmac);
        char timeout[32];
        std::snprintf(timeout, sizeof timeout, "%d", 30);
        add(action, "timeout", timeout);
        print(document, out);
      });
});

int const writeMotor = registered("write_motor_command", [](benchmark::State& state) {
  char out[room];
  compare(
      state,
      [&] {
        TiXmlDocument document;
        Kovra::buildNamedMotor(document, 1, 0, 50, 1);
        benchmark::DoNotOptimize(Kovra::frame::printNarrow(document, out, room));
      },
      [&] {
        TiXmlDocument document;
        TiXmlElement* const motor = add(begin(document, "device_control"), "motor");
        motor->SetAttribute("state", "on");
        motor->SetAttribute("direction", "forward");
        motor->SetAttribute("distance", "0");
        motor->SetAttribute("speed", 50);
        motor->LinkEndChild(new TiXmlText("card_x"));
        TiXmlPrinter printer;
        printer.SetIndent("    ");
        document.Accept(&printer);
        std::strcpy(out, printer.CStr());
      });
});

}  // namespace
