// The secure-action exchange and device commands: reading against a bare parse, writing against the
// same tree built, printed and converted with raw TinyXML calls. No side leaves a copy for
// debugging.

#include <tinyxml.h>

#include <cstring>

#include "control/control_tables.hpp"
#include "frame/output.hpp"
#include "kvxsecactionparser.h"
#include "kvxsetsecactions.h"
#include "support/bench_support.hpp"
#include "support/by_hand.hpp"

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
      {bareParse(narrow)});
});

char const key[] = "00112233445566778899aabbccddeeff";

int const writeKeys = registered("write_security_keys", [](benchmark::State& state) {
  Kovra::_tagSecKeys keys{};
  for (char* const text :
       {keys.data_encryption_key, keys.host_authentication_key, keys.printer_lock_key}) {
    std::memcpy(text, key, sizeof key);
  }
  wchar_t out[room];
  compare(state,
          [&] {
            Kovra::KVXSetSecActions writer;
            benchmark::DoNotOptimize(writer.SetSecureActionXML(keys, out, room));
          },
          {byHand([&] {
            TiXmlDocument document;
            TiXmlElement* const root = begin(document, "keys");
            text(root, "host_authentication_key", keys.host_authentication_key);
            text(root, "data_encryption_key", keys.data_encryption_key);
            text(root, "printer_lock_key", keys.printer_lock_key);
            print(document, out, room);
          })});
});

int const writeKeyChange = registered("write_key_change", [](benchmark::State& state) {
  wchar_t out[room];
  compare(state,
          [&] {
            Kovra::KVXSetSecActions writer;
            benchmark::DoNotOptimize(writer.SetHostAndEncryptXML(
                out, room, "open sesame", key, key, key, key, key, key, true, true, true));
          },
          {byHand([&] {
            TiXmlDocument document;
            TiXmlElement* const set = below(begin(document, "keys"), "set");
            text(set, "current_passkey", "open sesame");
            for (char const* const name :
                 {"current_host_authentication_key", "new_host_authentication_key",
                  "current_data_encryption_key", "new_data_encryption_key",
                  "current_printer_lock_key", "new_printer_lock_key"}) {
              text(set, name, key);
            }
            print(document, out, room);
          })});
});

int const writeDirective = registered("write_secure_directive", [](benchmark::State& state) {
  Kovra::_tagSecActionXMLValues values{"reset_oem", "KX-200", "K2001234", "8F31C07A55D2E94B", key};
  wchar_t out[room];
  compare(state,
          [&] {
            Kovra::KVXSetSecActions writer;
            benchmark::DoNotOptimize(writer.SecureActionDirectiveXML(values, out, room, 30));
          },
          {byHand([&] {
            TiXmlDocument document;
            TiXmlElement* const action = below(begin(document, "secure_action_request"), "action");
            TiXmlElement* const printer = below(action, "printer");
            printer->SetAttribute("model", values.model);
            printer->SetAttribute("serial", values.serial);
            printer->SetAttribute("nonce", values.nonce);
            text(action, "hmac", values.hmac);
            number(action, "timeout", 30);
            print(document, out, room);
          })});
});

int const writeMotor = registered("write_motor_command", [](benchmark::State& state) {
  char out[room];
  compare(state,
          [&] {
            using namespace Kovra::control;
            TiXmlDocument document;
            TreeSink sink(*beginDocument(document, controlRoots[0]));
            Command command;
            command.motor = 1;
            command.state = stateRunning;
            command.speed = 50;
            writeRowsBelow(sink, "motor", namedMotor, &command, circumstancesOf(command));
            benchmark::DoNotOptimize(Kovra::frame::printNarrow(document, out, room));
          },
          {byHand([&] {
            TiXmlDocument document;
            TiXmlElement* const motor = below(begin(document, "device_control"), "motor");
            motor->SetAttribute("state", "on");
            motor->SetAttribute("direction", "forward");
            motor->SetAttribute("distance", "0");
            motor->SetAttribute("speed", 50);
            motor->LinkEndChild(new TiXmlText("card_x"));
            TiXmlPrinter printer;
            printer.SetIndent("    ");
            document.Accept(&printer);
            std::strcpy(out, printer.CStr());
          })});
});

}  // namespace
