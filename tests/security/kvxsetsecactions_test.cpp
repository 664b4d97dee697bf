#include "kvxsetsecactions.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>

#include "kvxsecactionparser.h"
#include "support/folder.hpp"
#include "support/locale.hpp"
#include "support/records.hpp"
#include "support/room.hpp"
#include "support/wide.hpp"

namespace Kovra {
namespace {

using test::contentsOf;
using test::filled;
using test::same;
using test::TemporaryFolder;
using test::untouched;
using test::wide;

static_assert(std::is_base_of_v<TiXmlDocument, KVXSetSecActions>);

constexpr int room = 4096;

/// What an operation wrote into a buffer that is large enough; expects that it succeeded.
template <class Compose>
std::string composed(Compose compose) {
  auto const buffer = std::make_unique<wchar_t[]>(room);
  EXPECT_TRUE(compose(buffer.get(), room));
  std::wstring const text = buffer.get();
  EXPECT_LT(text.size(), static_cast<std::size_t>(room));
  std::string narrow;
  for (wchar_t const c : text) narrow += static_cast<char>(c);
  return narrow;
}

std::string document(std::string const& root) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n" + root;
}

_tagSecActionXMLValues values() {
  return {"reset_oem", "KX-200", "K2001234", "8F31C07A55D2", "5e8dd316726b0335"};
}

template <std::size_t N>
void put(char (&array)[N], std::string const& text) {
  ASSERT_LT(text.size(), N);
  std::memcpy(array, text.c_str(), text.size() + 1);
}

// ---- One document of each kind ---------------------------------------------------------------

TEST(SetSecureActions, NeedsNoMoreRoomThanItsHeaderTells) {
  std::string text(260, '"');
  char* const t = text.data();
  KVXSetSecActions writer;
  _tagSecActionXMLValues request = {t, t, t, t, t};
  _tagSecKeys keys;
  test::fillWide(keys);
  auto const expectRoom = [](std::size_t texts, auto compose) {
    test::expectRoomFor(1024 + 6 * 260 * texts, compose);
  };
  expectRoom(1, [&](auto* out, int length) { return writer.GetNonceXML(t, out, length); });
  expectRoom(4, [&](auto* out, int length) {
    return writer.SecureActionRequestXML(request, out, length);
  });
  expectRoom(4, [&](auto* out, int length) {
    return writer.SecureActionDirectiveXML(request, out, length, 1000000000);
  });
  expectRoom(2, [&](auto* out, int length) { return writer.GetPasskeyXML(t, t, out, length); });
  expectRoom(1, [&](auto* out, int length) { return writer.GetSecureActionXML(t, out, length); });
  expectRoom(3,
             [&](auto* out, int length) { return writer.SetSecureActionXML(keys, out, length); });
  expectRoom(7, [&](auto* out, int length) {
    return writer.SetHostAndEncryptXML(out, length, t, t, t, t, t, t, t, true, true, true);
  });
}

TEST(SetSecureActions, ComposesANonce) {
  KVXSetSecActions writer;
  char nonce[] = "8F31C07A55D2";
  EXPECT_EQ(composed([&](auto* out, int length) { return writer.GetNonceXML(nonce, out, length); }),
            document("<nonce>8F31C07A55D2</nonce>\n"));
}

TEST(SetSecureActions, ComposesARequest) {
  KVXSetSecActions writer;
  _tagSecActionXMLValues request = values();
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.SecureActionRequestXML(request, out, length);
            }),
            document(R"(<secure_action_request>
    <action name="reset_oem">
        <printer model="KX-200" serial="K2001234" nonce="8F31C07A55D2" />
    </action>
</secure_action_request>
)"));
}

TEST(SetSecureActions, ComposesADirectiveWithATimeout) {
  KVXSetSecActions writer;
  _tagSecActionXMLValues directive = values();
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.SecureActionDirectiveXML(directive, out, length, 30);
            }),
            document(R"(<secure_action_request>
    <action>
        <printer model="KX-200" serial="K2001234" nonce="8F31C07A55D2" />
        <hmac>5e8dd316726b0335</hmac>
        <timeout>30</timeout>
    </action>
</secure_action_request>
)"));
}

TEST(SetSecureActions, ComposesADirectiveWithoutATimeoutOf0) {
  KVXSetSecActions writer;
  _tagSecActionXMLValues directive = values();
  auto const with = [&](int timeout) {
    return composed([&](auto* out, int length) {
      return writer.SecureActionDirectiveXML(directive, out, length, timeout);
    });
  };
  EXPECT_EQ(with(0).find("timeout"), std::string::npos);
  EXPECT_NE(with(0).find("<hmac>5e8dd316726b0335</hmac>\n    </action>"), std::string::npos);
  EXPECT_NE(with(-1).find("<timeout>-1</timeout>"), std::string::npos);
}

TEST(SetSecureActions, ComposesAChangeOfThePasskey) {
  KVXSetSecActions writer;
  char current[] = "old";
  char next[] = "new";
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.GetPasskeyXML(current, next, out, length);
            }),
            document(R"(<keys>
    <set>
        <current_passkey>old</current_passkey>
        <new_passkey>new</new_passkey>
    </set>
</keys>
)"));
}

TEST(SetSecureActions, ComposesAPasskey) {
  KVXSetSecActions writer;
  char passkey[] = "open sesame";
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.GetSecureActionXML(passkey, out, length);
            }),
            document("<passkey>open sesame</passkey>\n"));
}

TEST(SetSecureActions, ComposesTheWorkingKeysInTheDocumentsOrder) {
  KVXSetSecActions writer;
  auto keys = filled<_tagSecKeys>();
  put(keys.data_encryption_key, "data");
  put(keys.host_authentication_key, "host");
  put(keys.printer_lock_key, "");
  auto const before = keys;
  EXPECT_EQ(
      composed([&](auto* out, int length) { return writer.SetSecureActionXML(keys, out, length); }),
      document(R"(<keys>
    <host_authentication_key>host</host_authentication_key>
    <data_encryption_key>data</data_encryption_key>
    <printer_lock_key></printer_lock_key>
</keys>
)"));
  EXPECT_TRUE(same(keys, before));
}

/// The change with the parts that the flags choose.
std::string keyChange(KVXSetSecActions& writer, bool host, bool data, bool lock) {
  char texts[7][8] = {"pass", "c-host", "n-host", "c-data", "n-data", "c-lock", "n-lock"};
  return composed([&](auto* out, int length) {
    return writer.SetHostAndEncryptXML(out, length, texts[0], texts[1], texts[2], texts[3],
                                       texts[4], texts[5], texts[6], host, data, lock);
  });
}

TEST(SetSecureActions, ComposesAChangeOfKeysInEveryCombination) {
  constexpr char hostKeys[] =
      "        <current_host_authentication_key>c-host</current_host_authentication_key>\n"
      "        <new_host_authentication_key>n-host</new_host_authentication_key>\n";
  constexpr char dataKeys[] =
      "        <current_data_encryption_key>c-data</current_data_encryption_key>\n"
      "        <new_data_encryption_key>n-data</new_data_encryption_key>\n";
  constexpr char lockKeys[] =
      "        <current_printer_lock_key>c-lock</current_printer_lock_key>\n"
      "        <new_printer_lock_key>n-lock</new_printer_lock_key>\n";
  KVXSetSecActions writer;
  for (int flags = 0; flags < 8; ++flags) {
    bool const host = (flags & 1) != 0;
    bool const data = (flags & 2) != 0;
    bool const lock = (flags & 4) != 0;
    EXPECT_EQ(keyChange(writer, host, data, lock),
              document("<keys>\n    <set>\n        <current_passkey>pass</current_passkey>\n" +
                       std::string(host ? hostKeys : "") + (data ? dataKeys : "") +
                       (lock ? lockKeys : "") + "    </set>\n</keys>\n"))
        << flags;
  }
}

// ---- Texts -----------------------------------------------------------------------------------

TEST(SetSecureActions, CopiesTextsWholeAndEscapesMarkup) {
  KVXSetSecActions writer;
  std::string const text(1000, 'n');
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.GetNonceXML(text.c_str(), out, length);
            }),
            document("<nonce>" + text + "</nonce>\n"));
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.GetSecureActionXML("<a&b>\"'", out, length);
            }),
            document("<passkey>&lt;a&amp;b&gt;&quot;&apos;</passkey>\n"));
  _tagSecActionXMLValues request = values();
  request.model = "say \"KX\" & 'go'";
  EXPECT_NE(composed([&](auto* out, int length) {
              return writer.SecureActionRequestXML(request, out, length);
            }).find("model='say &quot;KX&quot; &amp; &apos;go&apos;'"),
            std::string::npos);
}

TEST(SetSecureActions, LeavesOutWhatIsNull) {
  KVXSetSecActions writer;
  char* const none = nullptr;
  EXPECT_EQ(composed([&](auto* out, int length) { return writer.GetNonceXML(none, out, length); }),
            document("<nonce />\n"));
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.GetSecureActionXML(nullptr, out, length);
            }),
            document("<passkey />\n"));
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.GetPasskeyXML(nullptr, "new", out, length);
            }),
            document("<keys>\n    <set>\n        <new_passkey>new</new_passkey>\n    </set>\n"
                     "</keys>\n"));
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.SetHostAndEncryptXML(out, length, nullptr, nullptr, "n", nullptr,
                                                 nullptr, none, none, true, true, true);
            }),
            document("<keys>\n    <set>\n        <new_host_authentication_key>n"
                     "</new_host_authentication_key>\n    </set>\n</keys>\n"));
}

TEST(SetSecureActions, LeavesOutAttributesThatAreNull) {
  KVXSetSecActions writer;
  _tagSecActionXMLValues nothing{};
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.SecureActionRequestXML(nothing, out, length);
            }),
            document("<secure_action_request>\n    <action>\n        <printer />\n    </action>\n"
                     "</secure_action_request>\n"));
  EXPECT_EQ(composed([&](auto* out, int length) {
              return writer.SecureActionDirectiveXML(nothing, out, length, 0);
            }),
            document("<secure_action_request>\n    <action>\n        <printer />\n    </action>\n"
                     "</secure_action_request>\n"));
  nothing.serial = "";
  EXPECT_NE(composed([&](auto* out, int length) {
              return writer.SecureActionRequestXML(nothing, out, length);
            }).find("<printer serial=\"\" />"),
            std::string::npos);
}

TEST(SetSecureActions, ReadsKeysNoFurtherThanTheirArrays) {
  _tagSecKeys keys;
  std::memset(&keys, 'k', sizeof keys);
  KVXSetSecActions writer;
  std::string const key(260, 'k');
  EXPECT_EQ(
      composed([&](auto* out, int length) { return writer.SetSecureActionXML(keys, out, length); }),
      document("<keys>\n    <host_authentication_key>" + key +
               "</host_authentication_key>\n    <data_encryption_key>" + key +
               "</data_encryption_key>\n    <printer_lock_key>" + key +
               "</printer_lock_key>\n</keys>\n"));
}

TEST(SetSecureActions, TakesTextsThatCanOnlyBeReadInAnyMix) {
  KVXSetSecActions writer;
  wchar_t out[room];
  char buffer[] = "buffer";
  char* const pointer = buffer;
  char const* const constant = buffer;
  EXPECT_TRUE(writer.GetNonceXML(buffer, out, room));
  EXPECT_TRUE(writer.GetNonceXML(pointer, out, room));
  EXPECT_TRUE(writer.GetNonceXML(constant, out, room));
  EXPECT_TRUE(writer.GetNonceXML("literal", out, room));
  EXPECT_TRUE(writer.GetNonceXML(nullptr, out, room));
  EXPECT_TRUE(writer.GetPasskeyXML(buffer, "literal", out, room));
  EXPECT_TRUE(writer.GetPasskeyXML("literal", buffer, out, room));
  EXPECT_TRUE(writer.GetPasskeyXML(pointer, nullptr, out, room));
  EXPECT_TRUE(writer.GetPasskeyXML(constant, pointer, out, room));
  EXPECT_TRUE(writer.GetPasskeyXML(nullptr, "literal", out, room));
  EXPECT_TRUE(writer.GetPasskeyXML(nullptr, nullptr, out, room));
  EXPECT_TRUE(writer.GetPasskeyXML(buffer, nullptr, out, room));
  EXPECT_TRUE(writer.SetHostAndEncryptXML(out, room, "literal", pointer, constant, nullptr, buffer,
                                          "literal", nullptr, true, true, true));
  EXPECT_TRUE(writer.SetHostAndEncryptXML(out, room, nullptr, nullptr, nullptr, nullptr, nullptr,
                                          nullptr, nullptr, true, true, true));
}

// ---- The document in the writer --------------------------------------------------------------

TEST(SetSecureActions, ComposesEveryDocumentFromAnEmptyOne) {
  _tagSecActionXMLValues action = values();
  _tagSecKeys keys{};
  std::function<bool(KVXSetSecActions&, wchar_t*, int)> const operations[] = {
      [](auto& writer, auto* out, int length) { return writer.GetNonceXML("1", out, length); },
      [&](auto& writer, auto* out, int length) {
        return writer.SecureActionRequestXML(action, out, length);
      },
      [&](auto& writer, auto* out, int length) {
        return writer.SecureActionDirectiveXML(action, out, length, 30);
      },
      [](auto& writer, auto* out, int length) {
        return writer.GetPasskeyXML("old", "new", out, length);
      },
      [](auto& writer, auto* out, int length) {
        return writer.GetSecureActionXML("1", out, length);
      },
      [&](auto& writer, auto* out, int length) {
        return writer.SetSecureActionXML(keys, out, length);
      },
      [](auto& writer, auto* out, int length) {
        return writer.SetHostAndEncryptXML(out, length, "1", "2", "3", "4", "5", "6", "7", true,
                                           true, true);
      },
  };
  for (auto const& first : operations) {
    for (auto const& second : operations) {
      KVXSetSecActions used;
      KVXSetSecActions fresh;
      composed([&](auto* out, int length) { return first(used, out, length); });
      EXPECT_EQ(composed([&](auto* out, int length) { return second(used, out, length); }),
                composed([&](auto* out, int length) { return second(fresh, out, length); }));
    }
  }
}

TEST(SetSecureActions, KeepsTheLastDocumentForTheHost) {
  TemporaryFolder const folder;
  std::string path = folder.file("passkey.xml");
  KVXSetSecActions writer;
  std::string const text = composed(
      [&](auto* out, int length) { return writer.GetPasskeyXML("old", "new", out, length); });
  EXPECT_TRUE(writer.saveJob(path.data()));
  EXPECT_EQ(contentsOf(path), text);
  EXPECT_TRUE(writer.saveJob(path.c_str()));
  EXPECT_EQ(composed([&](auto* out, int length) { return writer.saveJob(out, length); }), text);
  EXPECT_FALSE(writer.saveJob(nullptr));
  EXPECT_FALSE(writer.saveJob((folder.path() + "/none/passkey.xml").c_str()));
}

// ---- The output ------------------------------------------------------------------------------

TEST(SetSecureActions, CutsTheTextAtTheBuffersEnd) {
  std::wstring const whole = wide(document("<nonce>1</nonce>\n"));
  KVXSetSecActions writer;
  for (int length = 1; length <= static_cast<int>(whole.size()) + 2; ++length) {
    auto const size = static_cast<std::size_t>(length);
    std::unique_ptr<wchar_t[]> const out(new wchar_t[size]);
    std::wmemset(out.get(), L'#', size);
    EXPECT_TRUE(writer.GetNonceXML("1", out.get(), length));
    std::wstring expected = whole.substr(0, size);
    if (expected.size() < size) expected += L'\0';
    expected.resize(size, L'#');
    EXPECT_EQ(std::wstring(out.get(), size), expected) << length;
  }
}

TEST(SetSecureActions, WritesNothingIntoNoBuffer) {
  KVXSetSecActions writer;
  EXPECT_FALSE(writer.GetNonceXML("1", nullptr, 100));
  EXPECT_FALSE(writer.saveJob(nullptr, 100));
  wchar_t out[4] = {L'#', L'#', L'#', L'#'};
  EXPECT_TRUE(writer.GetNonceXML("1", out, 0));
  EXPECT_TRUE(writer.GetNonceXML("1", out, -1));
  EXPECT_EQ(std::wstring(out, 4), L"####");
}

TEST(SetSecureActions, WritesTheLocalesCharacters) {
  test::LocaleGuard const guard("C.UTF-8");
  KVXSetSecActions writer;
  wchar_t out[room];
  EXPECT_TRUE(writer.GetSecureActionXML("\xC3\xA9", out, room));
  EXPECT_EQ(std::wstring(out), wide(document("<passkey>")) + L"\u00e9</passkey>\n");
}

TEST(DebugCopySecureActions, AreNeverWritten) {
  std::string const text = test::uniqueText();
  char const* const t = text.c_str();
  KVXSetSecActions writer;
  _tagSecActionXMLValues action{t, t, t, t, t};
  _tagSecKeys keys{};
  put(keys.data_encryption_key, text);
  wchar_t out[room];
  for (wchar_t* const buffer : {out, static_cast<wchar_t*>(nullptr)}) {
    writer.GetNonceXML(t, buffer, room);
    writer.SecureActionRequestXML(action, buffer, room);
    writer.SecureActionDirectiveXML(action, buffer, room, 30);
    writer.GetPasskeyXML(t, t, buffer, room);
    writer.GetSecureActionXML(t, buffer, room);
    writer.SetSecureActionXML(keys, buffer, room);
    writer.SetHostAndEncryptXML(buffer, room, t, t, t, t, t, t, t, true, true, true);
  }
  EXPECT_EQ(test::temporaryFilesWith(text), "");
}

// ---- There and back --------------------------------------------------------------------------

TEST(SetSecureActions, IsReadBackByTheReader) {
  KVXSetSecActions writer;
  KVXSecAction reader;
  wchar_t out[room];

  char nonce[32] = {};
  ASSERT_TRUE(writer.GetNonceXML("8F31C07A55D2", out, room));
  EXPECT_TRUE(reader.GetNonceValue(*out, room, nonce));
  EXPECT_STREQ(nonce, "8F31C07A55D2");

  _tagSecKeys keys{};
  put(keys.data_encryption_key, "d<&>");
  put(keys.host_authentication_key, "h");
  put(keys.printer_lock_key, std::string(259, 'l'));
  _tagSecKeys keysRead{};
  ASSERT_TRUE(writer.SetSecureActionXML(keys, out, room));
  EXPECT_TRUE(reader.ParseSecurityKeys(*out, room, keysRead));
  EXPECT_TRUE(same(keysRead, keys));

  _tagSecSetKeys change{};
  ASSERT_TRUE(writer.SetHostAndEncryptXML(out, room, "p", "ch", "nh", "cd", "nd", "cl", "nl", true,
                                          true, true));
  EXPECT_TRUE(reader.ParseSetSecurityKeys(*out, room, change));
  EXPECT_STREQ(change.current_passkey, "p");
  EXPECT_STREQ(change.new_passkey, "");
  EXPECT_STREQ(change.current_host_authentication_key, "ch");
  EXPECT_STREQ(change.new_host_authentication_key, "nh");
  EXPECT_STREQ(change.current_data_encryption_key, "cd");
  EXPECT_STREQ(change.new_data_encryption_key, "nd");
  EXPECT_STREQ(change.current_printer_lock_key, "cl");
  EXPECT_STREQ(change.new_printer_lock_key, "nl");

  ASSERT_TRUE(writer.GetPasskeyXML("old", "new", out, room));
  EXPECT_TRUE(reader.ParseSetSecurityKeys(*out, room, change));
  EXPECT_STREQ(change.current_passkey, "old");
  EXPECT_STREQ(change.new_passkey, "new");

  ASSERT_TRUE(writer.GetSecureActionXML("open sesame", out, room));
  EXPECT_TRUE(reader.ParseGetSecureActionRequest(*out, room, change));
  EXPECT_STREQ(change.current_passkey, "open sesame");
}

TEST(SetSecureActions, RequestAndDirectiveAreRecognisedAsARequest) {
  KVXSetSecActions writer;
  KVXSecAction reader;
  wchar_t out[room];
  _tagSecActionXMLValues action = values();
  auto request = filled<_tagSecReqXML>();
  ASSERT_TRUE(writer.SecureActionRequestXML(action, out, room));
  EXPECT_TRUE(reader.ParseSecureRequestValues(out, room, request));
  ASSERT_TRUE(writer.SecureActionDirectiveXML(action, out, room, 30));
  EXPECT_TRUE(reader.ParseSecureRequestValues(out, room, request));
  EXPECT_TRUE(untouched(request));
  // The reader of directives wants the "action" for its root.
  auto directive = filled<_tagSecDirecXML>();
  EXPECT_FALSE(reader.ParseSecureDirectiveValues(*out, room, directive));
  EXPECT_TRUE(untouched(directive));
}

}  // namespace
}  // namespace Kovra
