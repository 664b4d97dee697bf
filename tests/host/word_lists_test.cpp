// The comments of the public headers list the printer's words and their codes. Each list is what
// the library makes of it, and nothing is missing in it: the lists themselves are read, not
// repeated.

#include <gtest/gtest.h>
#include <tinyxml.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kovra.hpp"
#include "kvxcapsparser.h"
#include "kvxconfigparser.h"
#include "kvxdevicecontrol.h"
#include "kvxmediaparser.h"
#include "kvxsecactionparser.h"
#include "kvxsetcaps.h"
#include "kvxsetconfig.h"
#include "kvxstatusparser.h"
#include "support/header_comments.hpp"
#include "support/tree.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::HeaderComment;
using Strings = std::vector<std::string>;

std::vector<HeaderComment> const& comments() {
  static std::vector<HeaderComment> const all = test::headerComments(KOVRA_INCLUDE_DIR);
  return all;
}

/// What the expression finds, match by match.
std::vector<std::smatch> matches(std::string const& text, std::regex const& expression) {
  return {std::sregex_iterator(text.begin(), text.end(), expression), {}};
}

/// The words between double quotes.
Strings quoted(std::string const& text) {
  static std::regex const word("\"([^\"]+)\"");
  Strings words;
  for (auto const& match : matches(text, word)) words.push_back(match[1]);
  return words;
}

constexpr char noWord[] = "no such word";

/// Words and their codes.
struct WordList {
  std::vector<std::pair<std::string, int>> words;
  bool anyCase = false;    ///< are they read in other cases, too?
  bool substring = false;  ///< are they found anywhere in a text?
  int first = 0;           ///< of a range of codes, of which only the ends are listed
  int last = -1;

  void add(std::string const& text, int code) {
    for (std::string const& word : quoted(text)) words.emplace_back(word, code);
  }

  bool has(std::string const& word, int code) const {
    if (first <= last) return first <= code && code <= last;
    return std::any_of(words.begin(), words.end(), [&](auto const& listed) {
      bool const same = substring ? word.find(listed.first) != word.npos
                        : anyCase ? test::lower(word) == test::lower(listed.first)
                                  : word == listed.first;
      return same && listed.second == code;
    });
  }

  /// The first of the words with the code.
  std::string wordOf(int code) const {
    auto const found = std::find_if(words.begin(), words.end(),
                                    [&](auto const& listed) { return listed.second == code; });
    return found == words.end() ? "" : found->first;
  }
};

// Lists look so: 1 "serial", 2 "usb" and "usb_2_0"; true for "true"; 256 "YMCKO" to 271 "Hologram".
std::string const oneOrMore = "(\"[^\"]+\"(?:(?:, | and | or )\"[^\"]+\")*)";
std::regex const codeAndWords("(?:^|[:;,.] | to |^Stores )(true|\\d+) (?:for (?:exactly )?)?\\(?" +
                              oneOrMore);

WordList listIn(std::string const& text) {
  static std::regex const range("(\\d+)(?: \"[^\"]+\")? to (\\d+)");
  static std::regex const withoutCode(oneOrMore + " and unknown words change nothing");
  static std::regex const yesOrNo("^'[^']+', \"([^\"]+)\" or \"([^\"]+)\"");
  WordList list;
  for (auto const& match : matches(text, codeAndWords)) {
    list.add(match[2], match[1] == "true" ? 1 : std::stoi(match[1]));
  }
  std::smatch match;
  if (!list.words.empty() && std::regex_search(text, match, range)) {
    list.first = std::stoi(match[1]);
    list.last = std::stoi(match[2]);
  }
  if (std::regex_search(text, match, withoutCode)) list.add(match[1], 0);
  if (std::regex_search(text, match, yesOrNo)) list.words = {{match[1], 1}, {match[2], 0}};
  if (text.find("first of these") != text.npos) list.add(text, 1);
  list.anyCase =
      std::regex_search(text, std::regex("in any case|or all in lower case|^The same for"));
  list.substring = std::regex_search(text, std::regex("found anywhere in the text"));
  return list;
}

// What operations say.

/// An operation that a list stands above: it makes a code of a word, or a word of a code.
struct Operation {
  std::string name;  ///< the class, "::", and as much of the declaration as tells it from others
  std::function<int(char const*)> codeOf;
  std::function<std::string(int)> wordOf;
  int lastCode = 300;  ///< beyond all that have words
};

Operation reads(char const* name, int (*convert)(char*)) {
  return {name, [convert](char const* word) { return convert(std::string(word).data()); }, {}};
}

template <class Class>
Operation reads(char const* name, int (Class::*convert)(char*)) {
  return {name,
          [convert](char const* word) { return (Class().*convert)(std::string(word).data()); },
          {}};
}

template <class Class, class Code>
Operation writes(char const* name, bool (Class::*convert)(char*, Code)) {
  auto const wordOf = [convert](int code) {
    char word[32] = "?";
    (Class().*convert)(word, static_cast<Code>(code));
    return std::string(word);
  };
  return {name, {}, wordOf, sizeof(Code) == 1 ? 127 : 300};
}

template <class Class>
Operation writes(char const* name, bool (Class::*convert)(int, char*, int)) {
  return {name, {}, [convert](int code) {
            char word[32] = "?";
            (Class().*convert)(code, word, static_cast<int>(sizeof word));
            return std::string(word);
          }};
}

template <class Class>
Operation writes(char const* name, char const* (Class::*convert)(int)) {
  return {name, {}, [convert](int code) { return (Class().*convert)(code); }};
}

/// The same of a command: the attribute of its element, or its text where none is named.
Operation commands(char const* name, char const* attribute,
                   std::function<void(KVXDeviceControl&, int)> const& command) {
  return {name, {}, [=](int code) {
            KVXDeviceControl writer;
            command(writer, code);
            TiXmlElement const* const element = writer.RootElement()->FirstChildElement();
            char const* const word =
                attribute != nullptr ? element->Attribute(attribute) : element->GetText();
            return std::string(word != nullptr ? word : "");
          }};
}

int flagOfAttribute(char const* word) {
  char flag = 0;
  KVXHelper::GetBool(test::AttributeElement(word).get(), "a", flag);
  return flag;
}

int flagOfText(char const* word) {
  char flag = 0;
  KVXHelper::GetBool(test::TextElement(word).get(), flag);
  return flag;
}

template <bool (KVXStatusParser::*Read)(TiXmlElement*, unsigned int&)>
int networkCode(char const* word) {
  unsigned int code = 0;
  (KVXStatusParser().*Read)(test::TextElement(word).get(), code);
  return static_cast<int>(code);
}

/// No reply shows these bits as a number.
int sharpeningBit(char const* word) {
  std::string const level = "<image_sharpening_level>" + std::string(word);
  test::Tree levels("<levels>" + level + "</image_sharpening_level></levels>");
  _Capabilities caps{};
  KVXCapsParser().getImageSharpeningLevels(levels.root(), caps);
  return caps.imageSharpeningLevels;
}

/// 1 for an action, 2 for a text that holds one.
int isAction(char const* word) {
  std::string text = word;
  if (!KVXSecAction().GetActionName(text.data())) return 0;
  return text == word ? 1 : 2;
}

std::vector<Operation> const& operations() {
  static std::vector<Operation> const all = {
      {"KVXHelper::GetBool(TiXmlElement* el, char* attr", flagOfAttribute, {}},
      {"KVXHelper::GetBool(TiXmlElement* el, char& out", flagOfText, {}},
      reads("KVXHelper::RibbonNameToInt", &KVXHelper::RibbonNameToInt),
      reads("KVXHelper::RibbonDescriptionToInt", &KVXHelper::RibbonDescriptionToInt),
      reads("KVXHelper::RibbonTypeToInt", &KVXHelper::RibbonTypeToInt),
      reads("KVXHelper::FeederSmartToInt", &KVXHelper::FeederSmartToInt),
      reads("KVXHelper::FeederTypeToInt", &KVXHelper::FeederTypeToInt),
      reads("KVXHelper::CoercivityToInt", &KVXHelper::CoercivityToInt),
      reads("KVXHelper::LaminationTypeToInt", &KVXHelper::LaminationTypeToInt),
      reads("KVXHelper::CommsChannelToInt", &KVXHelper::CommsChannelToInt),
      reads("KVXHelper::ContactlessEncToInt", &KVXHelper::ContactlessEncToInt),
      reads("KVXHelper::PanelToInt", &KVXHelper::PanelToInt),
      reads("KVXHelper::LaminatorWidthToInt", &KVXHelper::LaminatorWidthToInt),
      reads("KVXHelper::LaminatorRegistrationToInt", &KVXHelper::LaminatorRegistrationToInt),
      reads<KVXStatusParser>("KVXStatusParser::printerStateToInt",
                             &KVXStatusParser::printerStateToInt),
      reads<KVXStatusParser>("KVXStatusParser::lamStateToInt", &KVXStatusParser::lamStateToInt),
      reads<KVXStatusParser>("KVXStatusParser::jobStatusToInt", &KVXStatusParser::jobStatusToInt),
      reads<KVXStatusParser>("KVXStatusParser::cleaningStateToInt",
                             &KVXStatusParser::cleaningStateToInt),
      reads<KVXStatusParser>("KVXStatusParser::GetWirelessState",
                             &KVXStatusParser::GetWirelessState),
      {"KVXStatusParser::GetSecurity", networkCode<&KVXStatusParser::GetSecurity>, {}},
      {"KVXStatusParser::GetCrypto", networkCode<&KVXStatusParser::GetCrypto>, {}},
      reads<KVXCapsParser>("KVXCapsParser::portTypeToInt", &KVXCapsParser::portTypeToInt),
      reads<KVXCapsParser>("KVXCapsParser::protocolToInt", &KVXCapsParser::protocolToInt),
      reads<KVXCapsParser>("KVXCapsParser::transportToInt", &KVXCapsParser::transportToInt),
      reads<KVXCapsParser>("KVXCapsParser::encAlgToInt", &KVXCapsParser::encAlgToInt),
      reads<KVXCapsParser>("KVXCapsParser::graphicsFormatToInt",
                           &KVXCapsParser::graphicsFormatToInt),
      reads<KVXCapsParser>("KVXCapsParser::printerTypeToInt", &KVXCapsParser::printerTypeToInt),
      reads<KVXCapsParser>("KVXCapsParser::magHeadTypeToInt", &KVXCapsParser::magHeadTypeToInt),
      reads<KVXCapsParser>("KVXCapsParser::magStripeLocationToInt",
                           &KVXCapsParser::magStripeLocationToInt),
      reads<KVXCapsParser>("KVXCapsParser::laminationTypeToInt",
                           &KVXCapsParser::laminationTypeToInt),
      {"_Capabilities::imageSharpeningLevels", sharpeningBit, {}},
      {"KVXSecAction::GetActionName", isAction, {}},
      writes("KVXSetCaps::portTypeToString", &KVXSetCaps::portTypeToString),
      writes("KVXSetCaps::protocolToString", &KVXSetCaps::protocolToString),
      writes("KVXSetCaps::transportToString", &KVXSetCaps::transportToString),
      writes("KVXSetCaps::encAlgToString", &KVXSetCaps::encAlgToString),
      writes("KVXSetCaps::graphicFormatToString", &KVXSetCaps::graphicFormatToString),
      writes("KVXSetCaps::printTypeToString", &KVXSetCaps::printTypeToString),
      writes("KVXSetCaps::LaminatorToString", &KVXSetCaps::LaminatorToString),
      writes("KVXSetCaps::LamTypeToString", &KVXSetCaps::LamTypeToString),
      writes("KVXSetCaps::MagHeadTypeToString", &KVXSetCaps::MagHeadTypeToString),
      writes("KVXSetCaps::magStripeLocationToString", &KVXSetCaps::magStripeLocationToString),
      writes("KVXSetCaps::CommsChannelFromInt", &KVXSetCaps::CommsChannelFromInt),
      writes("KVXSetCaps::ContactlessEncFromInt", &KVXSetCaps::ContactlessEncFromInt),
      writes("KVXSetCaps::ribbonTypeToString", &KVXSetCaps::ribbonTypeToString),
      writes("KVXSetCaps::feederTypeToString", &KVXSetCaps::feederTypeToString),
      writes("KVXSetCaps::feederSmartToString", &KVXSetCaps::feederSmartToString),
      writes("KVXSetConfig::GetSecurity", &KVXSetConfig::GetSecurity),
      writes("KVXSetConfig::GetCrypto", &KVXSetConfig::GetCrypto),
      writes("KVXSetConfig::FeederModeToString", &KVXSetConfig::FeederModeToString),
      writes("KVXSetConfig::RibbonNameToString", &KVXSetConfig::RibbonNameToString),
      writes("KVXSetConfig::ribbonTypeToString", &KVXSetConfig::ribbonTypeToString),
      writes("KVXSetConfig::feederSmartToString", &KVXSetConfig::feederSmartToString),
      writes("KVXSetConfig::feederTypeToString", &KVXSetConfig::feederTypeToString),
      writes("KVXSetConfig::CommsChannelFromInt", &KVXSetConfig::CommsChannelFromInt),
      writes("KVXSetConfig::ContactlessEncFromInt", &KVXSetConfig::ContactlessEncFromInt),
      commands("KVXDeviceControl::RunMotorCommand(int state", nullptr,
               [](auto& writer, int code) {
                 writer.RunMotorCommand(0, 0, 0, code, static_cast<char*>(nullptr), 0);
               }),
      commands("KVXDeviceControl::RunCalibrateCommand", "type",
               [](auto& writer, int code) {
                 writer.RunCalibrateCommand(nullptr, code, 0, 0, nullptr, 0);
               }),
      commands("KVXDeviceControl::RunRFIDCommands", nullptr,
               [](auto& writer, int code) { writer.RunRFIDCommands("rfid", code, 0, nullptr, 0); }),
  };
  return all;
}

std::string ownerOf(Operation const& operation) {
  return operation.name.substr(0, operation.name.find("::"));
}

bool isAbove(HeaderComment const& comment, Operation const& operation) {
  return comment.owner == ownerOf(operation) &&
         comment.declaration.find(operation.name.substr(comment.owner.size() + 2)) !=
             std::string::npos;
}

bool isOfOperation(HeaderComment const& comment) {
  return std::any_of(operations().begin(), operations().end(),
                     [&](Operation const& operation) { return isAbove(comment, operation); });
}

/// Every word that anybody could take for one: those of the vocabulary and of all comments.
std::set<std::string> const& candidates() {
  static std::set<std::string> const all = [] {
    std::set<std::string> words;
    for (std::string const& word : vocabulary()) words.insert(word);
    for (HeaderComment const& comment : comments()) {
      for (std::string const& word : quoted(comment.text)) words.insert(word);
    }
    return words;
  }();
  return all;
}

/// The same, and for words that no reply holds whatever ends as they do: panels have names of
/// colours.
std::set<std::string> candidatesBeside(WordList const& list) {
  std::set<std::string> all = candidates();
  std::vector<std::string> const known = vocabulary();
  for (auto const& [listed, code] : list.words) {
    std::size_t const end = listed.rfind('_');
    if (end == listed.npos || std::find(known.begin(), known.end(), listed) != known.end())
      continue;
    for (std::string const& word : known) all.insert(word + listed.substr(end));
  }
  return all;
}

/// The words of the list have its codes, and no other word has a code.
void expectCodes(std::string const& text, std::function<int(char const*)> const& codeOf) {
  WordList const list = listIn(text);
  for (auto const& [word, code] : list.words) EXPECT_EQ(codeOf(word.c_str()), code) << word;
  int const unknown = codeOf(noWord);
  std::smatch match;
  if (std::regex_search(text, match, std::regex("(?:unknown|none|pointer,) gives? (-?\\d+)"))) {
    EXPECT_EQ(unknown, std::stoi(match[1])) << "of an unknown word";
  }
  std::set<int> codes;
  for (std::string const& word : candidatesBeside(list)) {
    int const code = codeOf(word.c_str());
    codes.insert(code);
    EXPECT_TRUE(code == unknown || list.has(word, code)) << "not listed: " << code << ' ' << word;
  }
  for (int code = list.first; code <= list.last; ++code) {
    EXPECT_TRUE(codes.count(code)) << "no word has the code " << code;
  }
}

/// The codes of the list have its words, and no other code has a word.
void expectWords(std::string const& text, Operation const& operation) {
  static std::regex const otherwise("any other (?:gives )?\"([^\"]+)\"");
  WordList const list = listIn(text);
  std::smatch match;
  std::string const other = std::regex_search(text, match, otherwise) ? match[1] : std::string();
  for (auto const& [word, code] : list.words) EXPECT_EQ(operation.wordOf(code), word) << code;
  for (int code = -3; code <= operation.lastCode; ++code) {
    std::string const word = operation.wordOf(code);
    if (list.first <= code && code <= list.last) {
      EXPECT_NE(word, "") << code;
    } else if (list.wordOf(code).empty()) {
      EXPECT_EQ(word, other) << code;
    }
  }
}

void expectListOf(Operation const& operation) {
  SCOPED_TRACE(operation.name);
  auto const comment = std::find_if(comments().begin(), comments().end(),
                                    [&](auto const& one) { return isAbove(one, operation); });
  ASSERT_NE(comment, comments().end());
  ASSERT_FALSE(listIn(comment->text).words.empty()) << comment->text;
  if (operation.codeOf) {
    expectCodes(comment->text, operation.codeOf);
  } else {
    expectWords(comment->text, operation);
  }
}

TEST(HeaderWordLists, OfOperationsAreWhatTheOperationsKnow) {
  for (Operation const& operation : operations()) expectListOf(operation);
}

// What members say.

/// A record's member that is read from an element.
struct MemberComment {
  HeaderComment const* comment;
  std::string type;
  std::string name;
  std::string path;  ///< of the element, from the record's own on
  std::string told;  ///< as the comment has it
};

/// Comments that do not name an element by its path from the record's.
std::map<std::string, std::string> const otherPaths = {
    {"KVJobStatus::mag_state", "status_mag/mag_state"},
    {"KVJobStatus::contact_state", "status_contact/contact_state"},
    {"KVJobStatus::contactless_state", "status_contactless/contactless_state"},
    {"_CustomCardInfo::coercivity", "information/coercivity"},
};

std::vector<MemberComment> memberComments() {
  static std::regex const member("^(.*?)(\\w+)(?:\\[\\w+\\])?;$");
  static std::regex const path("'([^']+)'");
  std::vector<MemberComment> all;
  for (HeaderComment const& comment : comments()) {
    std::smatch named;
    std::smatch element;
    if (!std::regex_match(comment.declaration, named, member)) continue;
    if (!std::regex_search(comment.text, element, path)) continue;
    auto const other = otherPaths.find(comment.owner + "::" + named[2].str());
    all.push_back({&comment, named[1], named[2],
                   other != otherPaths.end() ? other->second : element[1].str(), element[1]});
  }
  return all;
}

/// Where each record stands in a reply: the path of its element. That of the root stands above the
/// record, others in the members that hold such a record.
std::map<std::string, std::string> recordPaths() {
  static std::regex const record("^struct (\\w+)");
  static std::regex const root("root \"([^\"]+)\"");
  static std::regex const identifier("\\w+");
  // Named by the operation that reads them.
  std::map<std::string, std::string> paths = {{"_tagAccessPoint", "AccessPoints/AccessPoint"}};
  std::smatch name;
  std::smatch element;
  for (HeaderComment const& comment : comments()) {
    if (std::regex_search(comment.declaration, name, record) &&
        std::regex_search(comment.text, element, root)) {
      paths[name[1]] = element[1];
    }
  }
  std::vector<MemberComment> const members = memberComments();
  for (std::size_t before = 0; before != paths.size();) {
    before = paths.size();
    for (MemberComment const& member : members) {
      auto const outer = paths.find(member.comment->owner);
      if (outer == paths.end()) continue;
      for (auto const& type : matches(member.type, identifier)) {
        paths.emplace(type[0], outer->second + '/' + member.path);
      }
    }
  }
  return paths;
}

/// A reply with one text in it.
std::string replyWith(std::string const& path, std::string const& text) {
  static std::regex const element("[^/]+");
  std::string begin;
  std::string end;
  for (auto const& match : matches(path, element)) {
    std::string const rest = match[0].str() + '>';
    begin += '<' + rest;
    end.insert(0, "</" + rest);
  }
  return begin + text + end;
}

/// The member of that name in a value, at any depth; the first entry of one that is a list.
Value const* findMember(Value const& value, std::string const& name) {
  for (Member const& member : value.members()) {
    if (member.name() == name) {
      bool const list = member.value().isList() && !member.value().empty();
      return list ? &member.value().items().front() : &member.value();
    }
    if (Value const* const found = findMember(member.value(), name)) return found;
  }
  for (Value const& item : value.items()) {
    if (Value const* const found = findMember(item, name)) return found;
  }
  return nullptr;
}

/// What a reply with one text says of a member.
struct Said {
  static constexpr int noCode = -99;  ///< what is no word

  Decoding decoding;  ///< which holds the value
  Value const* value = nullptr;

  bool isFlag() const { return value != nullptr && value->isFlag(); }
  bool isKeyword() const { return value != nullptr && value->isKeyword(); }

  /// What the record holds.
  int stored() const {
    if (value == nullptr) return noCode;
    if (isFlag()) return value->asBool() ? 1 : 0;
    return isKeyword() ? value->code() : static_cast<int>(value->asInteger(0));
  }
  int code() const { return isKeyword() && !value->isKnown() ? noCode : stored(); }
};

Said said(MemberComment const& member, std::string const& record, std::string const& text) {
  Said said{decode(replyWith(record + '/' + member.path, text))};
  for (Reading const& reading : said.decoding.readings()) {
    if (said.value == nullptr) said.value = findMember(reading.record(), member.name);
  }
  return said;
}

/// What the enumerators of the type say.
WordList enumerated(std::string const& type) {
  static std::regex const enumerator("^\\w+ = (\\d+),$");
  WordList list;
  // One case of a word stands for all that are read.
  list.anyCase = true;
  for (HeaderComment const& comment : comments()) {
    std::smatch code;
    if (!type.empty() && comment.owner == type &&
        std::regex_match(comment.declaration, code, enumerator)) {
      list.add(comment.text, std::stoi(code[1]));
    }
  }
  return list;
}

/// The list above the operation of that name, whose class may be named as well.
WordList listAbove(std::string const& name) {
  for (Operation const& operation : operations()) {
    bool const named = ("::" + operation.name + '(').find("::" + name + '(') != name.npos;
    if (named && operation.codeOf) {
      for (HeaderComment const& comment : comments()) {
        if (isAbove(comment, operation)) return listIn(comment.text);
      }
    }
  }
  ADD_FAILURE() << "no operation " << name;
  return {};
}

/// The list that a member's comment says or names; of none it says nothing, and "the same codes"
/// are those of `before`.
WordList listOf(MemberComment const& member, WordList const& before) {
  static std::regex const ofOperation("codes? of ((?:\\w+::)?\\w+)");
  std::string const& text = member.comment->text;
  WordList list = listIn(text);
  std::smatch match;
  if (std::regex_search(text, std::regex("'[^']+', \"[^\"]+\" or \""))) {
    // The words that are written. Of those that are read the flag itself says nothing.
    WordList const read = listAbove("GetBool");
    list.words.insert(list.words.end(), read.words.begin(), read.words.end());
  } else if (std::regex_search(text, match, ofOperation)) {
    list = listAbove(match[1]);
  } else if (text.find("the same codes") != text.npos) {
    list = before;
  } else if (text.find("index into COERCIVITYTYPES") != text.npos) {
    for (char const* const word : COERCIVITYTYPES) {
      list.words.emplace_back(word, static_cast<int>(list.words.size()));
    }
  } else if (list.words.empty()) {
    list = enumerated(member.type.substr(0, member.type.find(' ')));
  }
  return list;
}

/// What a member's comment does not list, though it is a word with a code, and why not.
struct Unlisted {
  std::string member;
  std::string word;
  char const* reason;
};

std::vector<Unlisted> const unlisted = {
    {"_FontCaps::style", "none", "\"0 anything else\" holds for it as well"},
    {"_SecurityCaps::encryptionAlgorithm", "none", "has the code of an unknown word"},
    {"_Capabilities::printType", "1_side", "told as \"1 one-sided\""},
    {"_Capabilities::printType", "2_side", "told as \"2 two-sided\""},
    {"_WirelessParams::security", "wpa2_wpa", "the other order of \"wpa_wpa2\""},
    {"_WirelessParams::security", "WPA2_WPA", "the other order of \"wpa_wpa2\""},
    {"_WirelessParams::crypto", "CCMP_TKIP", "told as \"both ciphers mixed\""},
    {"_WirelessParams::crypto", "TKIP_CCMP", "told as \"both ciphers mixed\""},
    {"_WirelessParams::crypto", "ccmp_tkip", "told as \"both ciphers mixed\""},
    {"_WirelessParams::crypto", "tkip_ccmp", "told as \"both ciphers mixed\""},
};

/// The words of the list are read as its codes. Returns those that it lacks: what is read otherwise
/// than an unknown word. A flag without a list has the words of all flags.
Strings unlistedIn(WordList list, MemberComment const& member, std::string const& record) {
  static std::regex const otherwise("(?:else|,) (\\d+)(?: anything else| unset| none|$)");
  Said const unknown = said(member, record, noWord);
  std::smatch match;
  if (std::regex_search(member.comment->text, match, otherwise)) {
    EXPECT_EQ(unknown.stored(), std::stoi(match[1])) << member.comment->text;
  }
  if (list.words.empty() && unknown.isFlag()) list = listAbove("GetBool");
  if (list.words.empty() && !unknown.isKeyword()) return {};
  for (auto const& [word, code] : list.words) {
    EXPECT_EQ(said(member, record, word).code(), code) << word;
  }
  Strings words;
  for (std::string const& word : candidates()) {
    int const code = said(member, record, word).code();
    if (code != unknown.code() && !list.has(word, code)) words.push_back(word);
  }
  for (Note const& note : unknown.decoding.notes()) {
    for (std::string const& word : note.expected()) EXPECT_TRUE(candidates().count(word)) << word;
  }
  return words;
}

TEST(HeaderWordLists, OfMembersAreWhatRepliesMayHold) {
  std::map<std::string, std::string> const records = recordPaths();
  std::set<std::string> missing;
  WordList list;
  int lists = 0;
  for (MemberComment const& member : memberComments()) {
    SCOPED_TRACE(member.comment->place);
    auto const record = records.find(member.comment->owner);
    if (record == records.end() || isOfOperation(*member.comment)) continue;
    list = listOf(member, list);
    lists += list.words.empty() ? 0 : 1;
    for (std::string const& word : unlistedIn(list, member, record->second)) {
      missing.insert(member.comment->owner + "::" + member.name + ' ' + word);
    }
  }
  EXPECT_GT(lists, 40);
  std::set<std::string> expected;
  for (Unlisted const& word : unlisted) expected.insert(word.member + ' ' + word.word);
  EXPECT_EQ(missing, expected);
}

/// The bits of a card's features are listed with the elements that set them: all that do.
template <class Parser, class Card>
void expectFeatures(char const* record) {
  static std::regex const bitAndElement("(bit )?(\\d+) '(?:\\w+/)?(\\w+)'");
  std::map<std::string, int> listed;
  for (HeaderComment const& comment : comments()) {
    if (comment.owner != record || comment.declaration.find(" cardFeatures") == std::string::npos) {
      continue;
    }
    for (auto const& match : matches(comment.text, bitAndElement)) {
      int const number = std::stoi(match[2]);
      listed[match[3]] = match[1].matched ? 1 << number : number;
    }
  }
  std::map<std::string, int> read;
  for (std::string const& element : vocabulary()) {
    if (element.find(' ') != element.npos || element.front() < 'A') continue;
    Card card{};
    test::Tree information(replyWith("information/" + element, "yes"));
    Parser().getCardInformation(information.root(), card);
    if (card.cardFeatures != 0) read[element] = card.cardFeatures;
  }
  EXPECT_EQ(listed, read) << record;
  EXPECT_FALSE(listed.empty());
}

TEST(HeaderWordLists, OfFeaturesHaveEveryBit) {
  expectFeatures<KVXMediaParser, _CardInfo>("_CardInfo");
  expectFeatures<KVXConfigParser, _CustomCardInfo>("_CustomCardInfo");
}

/// What looks like a code with its word and is none, each in one comment.
Strings const noCodes = {"for motors 1 and 3 \"distance\"", "for all but motor 2 \"speed\""};

/// Takes out what is listed there, and counts how often that was needed.
std::string withoutNoCodes(std::string text, int& taken) {
  for (std::string const& none : noCodes) {
    if (auto const at = text.find(none); at != text.npos) {
      text.erase(at, none.size());
      ++taken;
    }
  }
  return text;
}

// So that no list is overlooked, and no part of one.
TEST(HeaderWordLists, AreAllChecked) {
  static std::regex const codeAndWord("\\d+ (?:for (?:exactly )?)?\\(?\"");
  std::map<std::string, std::string> const records = recordPaths();
  std::vector<MemberComment> const members = memberComments();
  int taken = 0;
  for (HeaderComment const& comment : comments()) {
    std::string const text = withoutNoCodes(comment.text, taken);
    auto const codes = matches(text, codeAndWord).size();
    EXPECT_GE(matches(text, codeAndWords).size(), codes) << comment.place;
    if (codes == 0 && listIn(text).words.empty()) continue;
    bool const ofMember = std::any_of(members.begin(), members.end(), [&](auto const& member) {
      return member.comment->place == comment.place && records.count(comment.owner) > 0;
    });
    EXPECT_TRUE(isOfOperation(comment) || ofMember) << comment.place << ": " << text;
  }
  EXPECT_EQ(taken, static_cast<int>(noCodes.size()));
}

TEST(HeaderWordLists, HaveNoPathThatTheCommentsTell) {
  std::size_t others = 0;
  for (MemberComment const& member : memberComments()) {
    auto const other = otherPaths.find(member.comment->owner + "::" + member.name);
    if (other == otherPaths.end()) continue;
    EXPECT_NE(member.told, other->second) << member.comment->place;
    ++others;
  }
  EXPECT_EQ(others, otherPaths.size());
}

TEST(HeaderWordLists, OfEnumerationsBelongToMembers) {
  static std::regex const defined("^enum (\\w+)");
  std::vector<MemberComment> const members = memberComments();
  for (HeaderComment const& comment : comments()) {
    std::smatch name;
    if (!std::regex_search(comment.declaration, name, defined)) continue;
    if (enumerated(name[1]).words.empty()) continue;
    EXPECT_TRUE(std::any_of(members.begin(), members.end(), [&](auto const& member) {
      return member.type == name[1].str() + ' ';
    })) << name[1];
  }
}

}  // namespace
}  // namespace Kovra
