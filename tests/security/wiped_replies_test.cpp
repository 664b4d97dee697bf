// What an operation reads secrets from leaves no trace of them but in the host's own record: not in
// memory that is given back, and not on the stack.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "kovra.hpp"
#include "kvxconfigparser.h"
#include "kvxgetein.h"
#include "kvxsecactionparser.h"
#include "support/allocations.hpp"
#include "support/own_stack.hpp"
#include "support/records.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::Allocations;
using test::filled;
using test::OwnStack;
using test::Released;

// No piece of it stands anywhere else.
std::string const key = "kQ7w-Zt4x_Jb9m.Rf2p~Lh6v";
std::string const number = "7350918264403172859";

/// The middle of a text: of a string that was moved from, the beginning is gone.
std::string middleOf(std::string const& text) {
  return text.substr(text.size() / 2 - 4, 8);
}

// ---- Replies ---------------------------------------------------------------------------------

/// What an operation reads, in the forms in which hosts have it.
struct Reply {
  std::string narrow;
  std::wstring wide;
  TiXmlDocument tree;
  TiXmlElement* element = nullptr;
};

using Call = std::function<void(Reply&)>;

/// An operation and a reply with a secret in it, wherever the operation takes one.
struct Reader {
  char const* name;
  std::string reply;
  std::string secret;
  char const* element;  ///< which of the host's tree is read; null where a text is
  Call call;
};

/// An operation that fills a record, which is beyond the memory that is searched.
template <class Record, class Read>
Call into(Read read, Record const& before = filled<Record>()) {
  auto const record = std::make_shared<Record>(before);
  return [=](Reply& reply) { read(reply, *record); };
}

template <class Number, class Record>
Call wide(bool (KVXSecAction::*read)(wchar_t const&, Number, Record&)) {
  return into<Record>([read](Reply& reply, Record& record) {
    (KVXSecAction().*read)(*reply.wide.c_str(), static_cast<Number>(reply.wide.size()), record);
  });
}

template <class Class, class Record>
Call host(bool (Class::*read)(TiXmlElement*, Record&)) {
  return into<Record>(
      [read](Reply& reply, Record& record) { (Class().*read)(reply.element, record); });
}

/// The same for those that put the record's values into the host's tree. They find the tree's own
/// there, so that TinyXML has no reason to give memory back.
template <class Record>
Call identifying(bool (KVXSecAction::*read)(TiXmlElement*, Record&)) {
  Record record{};
  for (char* const text : {record.model, record.serial, record.nonce, record.action}) {
    std::memcpy(text, key.c_str(), key.size() + 1);
  }
  return into<Record>(
      [read](Reply& reply, Record& out) { (KVXSecAction().*read)(reply.element, out); }, record);
}

/// Without a root: an entry's variants have one, or another, or none.
std::string allKeys() {
  return "<host_authentication_key>" + key + "</host_authentication_key><data_encryption_key a='" +
         key + "'>" + key + "</data_encryption_key><printer_lock_key><![CDATA[" + key +
         "]]></printer_lock_key><!--" + key + "--><unknown>" + key + "</unknown>";
}

std::string changedKeys() {
  std::string set;
  for (char const* const name :
       {"current_passkey", "current_host_authentication_key", "new_host_authentication_key",
        "current_data_encryption_key", "new_data_encryption_key", "current_printer_lock_key",
        "new_printer_lock_key", "new_passkey"}) {
    set += "<" + std::string(name) + ">" + key + "</" + name + ">";
  }
  return "<set>" + set + "</set>";
}

std::string in(std::string const& root, std::string const& content) {
  return "<" + root + ">" + content + "</" + root + ">";
}

std::vector<Reader> readers() {
  using R = KVXSecAction;
  using Nonce = std::array<char, 32>;
  struct Exchange {
    _tagHostDHKeys host;
    long printer;
  };
  std::string const printer = "<printer model='" + key + "' serial='x' nonce='" + key + "'/>";
  std::string const directive = in("action", key + printer + in("hmac", key));
  std::string const request = in("secure_action_request", in("action", printer) + printer);
  std::string const exchange =
      in("diffie_hellman", in("modulus", number) + in("base", "0x" + number.substr(0, 16)) +
                               in("host_interim_key", number) +
                               in("printer_interim_key", " " + number));
  std::string const wireless =
      in("wireless", in("ssid", "x") + in("key", key) + in("channel", key));
  std::string const tracks =
      in("mag", in("track1", key) + in("track2", key) + in("track3", "%" + key + "?"));
  return {
      {"GetNonceValue", in("nonce", key), key, nullptr, into<Nonce>([](Reply& reply, Nonce& nonce) {
         R().GetNonceValue(*reply.wide.c_str(), static_cast<int>(reply.wide.size()), nonce.data());
       })},
      {"ParseHostDHKeyValues", exchange, number, nullptr, wide(&R::ParseHostDHKeyValues)},
      {"ParsePrinterDHKeyValues", exchange, number, nullptr, wide(&R::ParsePrinterDHKeyValues)},
      {"ParseDHKeys", exchange, number, "diffie_hellman",
       into<Exchange>([](Reply& reply, Exchange& values) {
         R().ParseDHKeys(reply.element, values.host, values.printer);
       })},
      {"ParseSecureRequestValues", request, key, nullptr,
       into<_tagSecReqXML>([](Reply& reply, _tagSecReqXML& values) {
         R().ParseSecureRequestValues(reply.wide.data(), reply.wide.size(), values);
       })},
      {"ParseReqValues", request, key, "secure_action_request", identifying(&R::ParseReqValues)},
      {"ParseSecureDirectiveValues", directive, key, nullptr, wide(&R::ParseSecureDirectiveValues)},
      {"ParseDirectiveValues", directive, key, "action", identifying(&R::ParseDirectiveValues)},
      {"ParseSecurityKeys", in("keys", allKeys()), key, nullptr, wide(&R::ParseSecurityKeys)},
      {"ParseHostNEncryptKey", in("keys", allKeys()), key, "keys", host(&R::ParseHostNEncryptKey)},
      {"ParseSetSecurityKeys", in("keys", changedKeys()), key, nullptr,
       wide(&R::ParseSetSecurityKeys)},
      {"ParsePassKey", in("keys", changedKeys()), key, "keys", host(&R::ParsePassKey)},
      {"ParsePassKey1", in("keys", changedKeys()), key, "set", host(&R::ParsePassKey1)},
      {"ParseGetSecureActionRequest", in("passkey", key), key, nullptr,
       wide(&R::ParseGetSecureActionRequest)},
      {"GetConfiguration", in("configuration", wireless), key, nullptr,
       into<_KVConfiguration>([](Reply& reply, _KVConfiguration& record) {
         KVXConfigParser().GetConfiguration(reply.narrow.c_str(), 0, record);
       })},
      {"parseConfiguration", in("configuration", wireless), key, "configuration",
       host(&KVXConfigParser::parseConfiguration)},
      {"getWirelessParams", in("configuration", wireless), key, "wireless",
       host(&KVXConfigParser::getWirelessParams)},
      {"GetMagneticTracks", in("data", tracks), key, nullptr,
       into<__GETTRACK>([](Reply& reply, __GETTRACK& record) {
         KVXGetEIN().GetMagneticTracks(*reply.narrow.c_str(), 0, record);
       })},
      {"parseMag", in("data", tracks), key, "data", host(&KVXGetEIN::parseMag)},
      {"parseTrack", in("data", tracks), key, "mag", host(&KVXGetEIN::parseTrack)},
  };
}

// ---- What becomes of them --------------------------------------------------------------------

std::string repeated(std::string const& text, std::size_t times) {
  std::string result;
  for (std::size_t i = 0; i < times; ++i) result += text;
  return result;
}

/// The reply, and what may be made of it; behind its secrets, where they are good.
std::vector<std::string> variantsOf(std::string const& reply) {
  std::size_t const end = reply.rfind("</");
  auto const with = [&](std::string const& more) { return std::string(reply).insert(end, more); };
  // More than the stack takes, of text and of nodes.
  std::string const padding = repeated("<!-- in the way -->", 700);
  std::string const tooDeep = repeated("<a>", 200);
  std::vector<std::string> all;
  for (std::string const& more : {std::string(), padding}) {
    all.push_back(with(more));
    all.push_back(with(more + "<open>"));
    all.push_back(with(more).substr(0, with(more).size() - 1));
    all.push_back(with(more + "<a b='c"));
    all.push_back(with(more + tooDeep));
    all.push_back(in("other", with(more)));
    all.push_back("\xEF\xBB\xBF" + with(more + "&#65;&lt;&#x20AC;"));
  }
  return all;
}

/// The reply in its forms; null where the operation cannot be called with it.
std::unique_ptr<Reply> replyFor(Reader const& reader, std::string const& text) {
  auto reply = std::make_unique<Reply>();
  reply->narrow = text;
  reply->wide = test::wide(text);
  if (reader.element == nullptr) return reply;
  reply->tree.Parse(text.c_str());
  TiXmlNode* node = &reply->tree;
  while (node != nullptr && reader.element != node->ValueStr()) node = node->FirstChildElement();
  reply->element = node != nullptr ? node->ToElement() : nullptr;
  return reply->element != nullptr && !reply->tree.Error() ? std::move(reply) : nullptr;
}

/// Makes the call with one allocation failing, and looks for the secret afterwards.
void expectNoTrace(Reader const& reader, Reply& reply, std::size_t failing, OwnStack& stack) {
  std::string const piece = middleOf(reader.secret);
  std::size_t released = 0;
  stack.run([&] {
    Allocations allocations(failing);
    Released const blocks(piece);
    try {
      reader.call(reply);
    } catch (std::bad_alloc const&) {
    }
    released = blocks.found();
    if (reader.element == nullptr) allocations.reclaim();
  });
  EXPECT_EQ(released, 0U) << "blocks";
  if (KOVRA_TESTS_LOOK_AT_STACK) {
    EXPECT_EQ(stack.found(reader.secret), 0U) << "pieces on the stack";
  }
}

class WipedReplies : public test::HeapTest {
 protected:
  // TinyXML, which sets attributes in a host's tree, binds its calls when they are made for the
  // first time, and the linker saves all registers on the stack then. So does the C++ runtime,
  // where something is thrown for the first time.
  WipedReplies() {
    try {
      throw std::bad_alloc();
    } catch (std::bad_alloc const&) {
    }
    TiXmlDocument tree;
    tree.Parse("<r><action name=''><printer/></action><printer model='' serial='' nonce=''/></r>");
    _tagSecReqXML record{"longer than what a text keeps", "", "short", "also much longer"};
    KVXSecAction().ParseReqValues(tree.RootElement(), record);
  }
};

/// Leaves a piece of the key on the stack.
void leave(std::size_t first, std::size_t length) {
  char copy[64];
  char volatile* const written = copy;
  for (std::size_t i = 0; i < length; ++i) written[i] = key[first + i];
}

TEST_F(WipedReplies, AreLookedForWhereTheyCouldBe) {
  if (!KOVRA_TESTS_LOOK_AT_STACK) GTEST_SKIP() << "this build's stack is not looked at";
  OwnStack stack;
  stack.run([] { leave(0, key.size()); });
  EXPECT_EQ(stack.found(key), key.size() - 7);
  stack.run([] { leave(7, 9); });
  EXPECT_EQ(stack.found(key), 2U) << "also pieces";
  stack.run([] {});
  EXPECT_EQ(stack.found(key), 0U) << "cleared before each call";
}

TEST_F(WipedReplies, LeaveNoTraceInMemory) {
  OwnStack stack;
  for (Reader const& reader : readers()) {
    SCOPED_TRACE(reader.name);
    std::size_t calls = 0;
    for (std::string const& text : variantsOf(reader.reply)) {
      for (std::size_t failing = 0; failing < 5; ++failing) {
        auto const reply = replyFor(reader, text);
        if (reply == nullptr) continue;
        ++calls;
        SCOPED_TRACE(text.substr(0, 100) + " ... " + text.substr(text.size() - 20) +
                     ", allocation " + std::to_string(failing));
        expectNoTrace(reader, *reply, failing, stack);
      }
    }
    EXPECT_GE(calls, 30U);
  }
}

// ---- The face --------------------------------------------------------------------------------

/// Decodes on a stack that is searched, with one allocation failing, and hands the values out.
Decoding expectNoTraceOfValues(std::string const& text, std::string const& secret,
                               std::size_t failing, OwnStack& stack) {
  Decoding decoding;
  std::size_t released = 0;
  std::string const piece = middleOf(secret);
  stack.run([&] {
    Allocations const allocations(failing);
    Released const blocks(piece);
    try {
      decoding = decode(text);
    } catch (std::bad_alloc const&) {
    }
    released = blocks.found();
  });
  EXPECT_EQ(released, 0U) << "blocks";
  if (KOVRA_TESTS_LOOK_AT_STACK) {
    EXPECT_EQ(stack.found(secret), 0U) << "pieces on the stack";
  }
  return decoding;
}

std::vector<std::string> secretReplies(std::string const& secret) {
  std::string const lock = in("printer_lock_key", secret);
  return {
      in("keys", in("data_encryption_key", secret) + lock + in("host_authentication_key", secret)),
      in("keys", lock + lock),
      in("keys", in("set", in("current_passkey", secret) + in("new_passkey", secret))),
      in("passkey", secret),
      in("configuration", in("wireless", in("ssid", "x") + in("key", secret) + in("key", secret))),
      in("data", in("mag", in("track1", secret) + in("track2", secret))),
  };
}

// The first is kept by a string without the heap, the last is cut.
TEST_F(WipedReplies, LeaveNoTraceBesideTheValuesOfTheFace) {
  OwnStack stack;
  for (std::string const& secret : {key.substr(0, 12), key, repeated(key, 20)}) {
    for (std::string const& text : secretReplies(secret)) {
      SCOPED_TRACE(text.substr(0, 100));
      Decoding const whole = expectNoTraceOfValues(text, secret.substr(0, 24), 0, stack);
      EXPECT_TRUE(static_cast<bool>(whole));
      EXPECT_FALSE(whole.readings().empty());
      for (std::size_t failing = 1; failing < 40; ++failing) {
        SCOPED_TRACE(failing);
        static_cast<void>(expectNoTraceOfValues(text, secret.substr(0, 24), failing, stack));
      }
    }
  }
}

TEST_F(WipedReplies, LeaveNothingInValuesThatTheHostDestroys) {
  for (std::string const& secret : {key.substr(0, 12), key}) {
    for (std::string const& text : secretReplies(secret)) {
      std::string const piece = middleOf(secret);
      Released const blocks(piece);  // from here on, blocks come without what earlier owners left
      auto decoding = std::make_unique<Decoding>(decode(text));
      decoding.reset();
      EXPECT_EQ(blocks.found(), 0U) << text;
    }
  }
}

}  // namespace
}  // namespace Kovra
