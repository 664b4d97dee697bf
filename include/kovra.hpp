/// @file
/// The modern face of Kovra: a reply's UTF-8 text goes in, and what it said comes out, with a
/// reason when it was refused and a note for everything in it that was lost or changed on the way.
///
/// The classic classes (KVXHelper, Kovra::KVXStatusParser, ...) fill plain records and answer with
/// a bool. The face reads with the same tables, so its values are those that a host gets, and adds
/// what a bool cannot tell: which members the reply named, which words and elements were unknown,
/// which texts did not fit, and where a broken text breaks.
///
///     auto const status = Kovra::read<Kovra::KVGeneralStatus>(text);
///     if (!status) return complain(status.refusal().message());
///     if (status.has("alarms")) show(status->alarms);
///     for (Kovra::Note const& note : status.notes()) log(note.message());
///
/// Text is UTF-8, and a decimal point is a point, whatever locale the process has set: neither
/// LC_CTYPE nor LC_NUMERIC matters here, as they do to the classic classes. Nothing here holds
/// state: any operation may be called from any thread, and a result that nobody changes be looked
/// at by several. Results own what they hold, and copies of one share it; they are born refused,
/// and then empty and safe to walk. All functions may throw std::bad_alloc.

#ifndef KOVRA_HPP
#define KOVRA_HPP

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "kovra_export.h"
#include "kovra_records.hpp"
#include "kovra_value.hpp"

namespace Kovra {

namespace frame {
struct ChoiceRow;
struct MessageRow;
struct Word;
}  // namespace frame

namespace detail {

// What results hold is known to the library alone.
struct CompositionData;
struct DecodingData;
struct FindingData;
struct FindingKindData;
struct ElementData;
struct MemberData;
struct ProblemData;
struct ReadingData;
struct ReplyData;

struct FaceAccess;

template <class Data>
using Shared = std::shared_ptr<Data const>;

}  // namespace detail

/// What may be chosen of reading.
class KOVRA_EXPORT ReadOptions {
 public:
  ReadOptions() noexcept = default;
  /// Passes over what stands before the document: a prompt, the header of a message.
  ReadOptions& skipTextBefore(bool on = true) noexcept {
    flags_[skipped] = on;
    return *this;
  }
  bool skipsTextBefore() const noexcept { return flags_[skipped]; }

 private:
  enum Flag : unsigned { skipped };

  bool flags_[32] = {};  // more than there are
};

// ---- What was found in a text ------------------------------------------------------------------

/// How bad it is.
enum class Severity : std::uint8_t {
  information,  ///< nothing that a record could hold was lost
  warning,      ///< something was lost or changed
  error,        ///< the text was refused
};

/// "information", "warning" or "error".
KOVRA_EXPORT std::string_view nameOf(Severity severity);

/// Something in a text, and where. Lines and columns count from 1; a column is a character, and a
/// tab is one, too. Offsets count bytes from 0. A line 0 means that no place is known.
class KOVRA_EXPORT Finding {
 public:
  /// Its kind, one of findingKinds(): "K104". Empty where nothing was found.
  std::string id() const;
  Severity severity() const;
  int line() const;
  int column() const;
  std::size_t offset() const;
  int endLine() const;    ///< behind the last character
  int endColumn() const;  ///< behind the last character
  std::size_t endOffset() const;
  /// Of the element: "/configuration/wireless/channel". Empty where there is none.
  std::string path() const;
  /// Its name: "channel".
  std::string element() const;
  /// What stands there; empty where that is a secret, or stands unread beside one.
  std::string found() const;
  /// What the record holds in its place; empty for a secret.
  std::string kept() const;
  /// What would have been right: the words of a vocabulary, or a form.
  std::vector<std::string> expected() const;
  /// How many there are that this one stands for: 1 but for surplus entries and what is not listed.
  std::size_t count() const;
  /// One sentence without the place: `<feeder_mode>: unknown word "tripel"; one of: single, dual`.
  std::string message() const;

 protected:
  Finding() noexcept;
  Finding(Finding const&) noexcept;
  Finding(Finding&&) noexcept;
  Finding& operator=(Finding const&) noexcept;
  Finding& operator=(Finding&&) noexcept;
  ~Finding();

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::FindingData> data_;
};

/// Something that a reply said and that was lost or changed. Reading goes on all the same.
class KOVRA_EXPORT Note : public Finding {
 public:
  Note() noexcept {}
};

/// Why a text was refused.
class KOVRA_EXPORT Refusal : public Finding {
 public:
  Refusal() noexcept {}
  /// Was it refused?
  explicit operator bool() const;
};

/// A kind of finding. Ids are never used again for something else.
class KOVRA_EXPORT FindingKind {
 public:
  std::string id() const;
  Severity severity() const;
  std::string name() const;         ///< for programs: "unknown_element"
  std::string title() const;        ///< a few words: "unknown element"
  std::string explanation() const;  ///< what it means and what to do, in a few sentences
  std::string example() const;      ///< a text of which decode() tells it,
  std::string exampleAs() const;    ///< asked for as this message
  ReadOptions exampleOptions() const;

 private:
  friend struct detail::FaceAccess;
  FindingKind() = default;
  detail::FindingKindData const* data_ = nullptr;
};

/// Every kind of refusal and then of note, in the order of their ids.
[[nodiscard]] KOVRA_EXPORT std::vector<FindingKind> findingKinds();

// ---- Replies
// -------------------------------------------------------------------------------------

/// Are the values of secrets shown, or six asterisks in their place?
enum class Secrets : std::uint8_t { masked, shown };

/// What one reader made of a reply.
class KOVRA_EXPORT Reading {
 public:
  Reading() noexcept;
  /// The message's name, as messages() has it: "general-status".
  std::string message() const;
  /// What the classic operation returns for this reply.
  bool result() const;
  /// The members that the reply named, and nothing else. There as long as this reading, or the
  /// result that it comes from.
  Value const& record() const;

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::ReadingData> data_;
};

/// What became of a text.
class [[nodiscard, gnu::visibility("default")]] Decoding {
 public:
  Decoding() noexcept;
  /// Did at least one reader take it?
  explicit operator bool() const;
  /// One where one reader knows the root; where several do, those that recognised something, or
  /// all where none did.
  std::vector<Reading> readings() const;
  /// In the order of the text. More than 1000 are counted by the last one.
  std::vector<Note> notes() const;
  Refusal refusal() const;
  /// The name of the root element, where there was one.
  std::string root() const;
  /// As JSON: an object as docs/json.md tells it, on one line or indented.
  std::string toJson(int indentation = -1, Secrets secrets = Secrets::masked) const;

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::DecodingData> data_;
};

/// Decodes a text. The reader is found by the root's name; where several readers share a root, all
/// that recognise something are run. `as` picks one by its message's name.
///
/// UTF-8 unless a byte order mark or the declaration says ISO 8859-1 or UTF-16, which are
/// converted; places are always those in the bytes that were given.
KOVRA_EXPORT Decoding decode(std::string_view text, std::string_view as = {});
KOVRA_EXPORT Decoding decode(std::string_view text, std::string_view as,
                             ReadOptions const& options);

namespace detail {

/// A reply read into a record whose type the library is told by name.
class KOVRA_EXPORT AnyReply {
 public:
  AnyReply() noexcept;
  AnyReply(std::string_view text, std::string_view record, ReadOptions const& options);

  bool isThere() const;
  /// Null for a text that was refused.
  void const* record() const;
  bool has(std::string_view path) const;
  bool result() const;
  std::string message() const;
  std::vector<Note> notes() const;
  Refusal refusal() const;

 private:
  Shared<ReplyData> data_;
};

}  // namespace detail

/// A reply read into a record of the classic readers.
template <class Record>
class [[nodiscard]] Reply {
  static_assert(detail::isRead<Record>, "no reader fills a record of this type");

 public:
  Reply() = default;

  /// Was the document there and well-formed?
  explicit operator bool() const { return reply_.isThere(); }
  /// The record, with zeros where the reply said nothing, and with its lists, as long as this reply
  /// or a copy of it is there. It is the one that the classic operation fills, but that a text that
  /// is cut ends with a whole character.
  Record const* operator->() const { return &**this; }
  Record const& operator*() const {
    static Record const zeros{};
    auto const* const record = static_cast<Record const*>(reply_.record());
    return record != nullptr ? *record : zeros;
  }
  /// Did the reply say it? A path is that of a decoded value: "wireless.ssid", "jobs[2].uuid".
  bool has(std::string_view path) const { return reply_.has(path); }
  /// What the classic operation returns for this reply.
  bool result() const { return reply_.result(); }
  /// The name of the message that it was read as; empty for one that was refused.
  std::string message() const { return reply_.message(); }
  /// In the order of the text. More than 1000 are counted by the last one.
  std::vector<Note> notes() const { return reply_.notes(); }
  Refusal refusal() const { return reply_.refusal(); }

 private:
  template <class Any>
  friend Reply<Any> read(std::string_view text, ReadOptions const& options);

  explicit Reply(detail::AnyReply reply) : reply_(std::move(reply)) {}

  detail::AnyReply reply_;
};

/// Reads a text into a record of the classic readers. Where several messages have such a record,
/// the reply's root tells which one it is.
template <class Record>
Reply<Record> read(std::string_view text, ReadOptions const& options) {
  return Reply<Record>(detail::AnyReply(text, detail::recordName<Record>, options));
}
template <class Record>
Reply<Record> read(std::string_view text) {
  return read<Record>(text, ReadOptions());
}

// ---- Documents
// -----------------------------------------------------------------------------------

/// Why a value could not go into a record, or a record into a document.
class KOVRA_EXPORT Problem {
 public:
  Problem() noexcept;
  /// Of the value within the record, as Value::at() takes it: "wireless.ssid", "cards[0].type".
  std::string path() const;
  /// What stands there; of a value marked as a secret, only its kind.
  std::string found() const;
  std::string expected() const;
  /// One sentence: `wireless.channel: found "six"; expected a whole number ...`.
  std::string message() const;

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::ProblemData> data_;
};

/// What became of a record.
class [[nodiscard, gnu::visibility("default")]] Composition {
 public:
  Composition() noexcept;
  explicit operator bool() const;
  /// The document, in UTF-8; empty where there is none. It may hold secrets, and is wiped with the
  /// last copy of this result.
  std::string const& text() const;
  /// All of them, in the order of the record, of which the first hundred are told; none for a
  /// document.
  std::vector<Problem> problems() const;

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::CompositionData> data_;
};

/// Composes the document of a message by its name, or by the words of a command line, of a record
/// as a reading shows it or as a person wrote it. Keys are the members' names; a keyword may be
/// given as its code, its word, or both. `choices` is an object with a member for each choice that
/// is made.
///
/// Whatever does not fit is a problem, and then there is no document. Where sections or fields are
/// chosen, so is a member that they are made of and that the record lacks, unless `zero_missing` is
/// chosen: then it is zero. Of other documents what the record lacks is zero, but for what
/// Message::required() names. A masked secret is none. No debugging copy is written.
KOVRA_EXPORT Composition compose(std::string_view message, Value const& record,
                                 Value const& choices = {});

namespace detail {
KOVRA_EXPORT Composition composeRecord(std::string_view type, void const* record,
                                       Value const& choices);
}  // namespace detail

/// Composes the document of a record of the classic writers: of the sections or fields that are
/// chosen, with all their members. A text that is no UTF-8, or that holds what XML cannot carry, is
/// a problem.
///
/// Of `_tagSecActionXMLValues` the choice `message` says which document is meant:
/// "secure-action-request" or "secure-action-directive".
template <class Record, std::enable_if_t<detail::isWritten<Record>, int> = 0>
Composition compose(Record const& record, Value const& choices = {}) {
  return detail::composeRecord(detail::recordName<Record>, &record, choices);
}

// ---- What there is
// -------------------------------------------------------------------------------

/// Something that whoever composes a document may choose.
class KOVRA_EXPORT Choice {
 public:
  enum class Form : std::uint8_t {
    flag,    ///< true or false
    word,    ///< one of the words
    words,   ///< a list of them
    number,  ///< a whole number
  };

  std::string name() const;  ///< its key among the choices: "sections"
  Form form() const;
  std::string title() const;  ///< what it does
  std::vector<std::string> words() const;
  bool isRequired() const;
  std::string example() const;  ///< what stands for the value in a help: "1|2"
  long least() const;           ///< of a number; without bounds, both are 0
  long most() const;

 private:
  friend struct detail::FaceAccess;
  Choice() = default;
  frame::ChoiceRow const* data_ = nullptr;
};

/// "flag", "integer", and so on; "nothing" for a kind that a later version has.
KOVRA_EXPORT std::string_view nameOf(Value::Kind kind);

/// "flag", "word", "words" or "number"; empty for a form that a later version has.
KOVRA_EXPORT std::string_view nameOf(Choice::Form form);

/// A word of the printer's, and its code in a record.
class KOVRA_EXPORT Keyword {
 public:
  int code() const;
  std::string word() const;

 private:
  friend struct detail::FaceAccess;
  Keyword() = default;

  frame::Word const* data_ = nullptr;
};

/// A member of a record.
class KOVRA_EXPORT MemberDescription {
 public:
  /// What is not told by the kind alone.
  enum class Form : std::uint8_t {
    plain,
    setting,          ///< a record of a value `val` and its bounds `min` and `max`
    ipv4,             ///< a text: "192.0.2.7"
    hardwareAddress,  ///< a text: "02:00:5e:10:00:00"
    hexadecimal,      ///< a natural that replies write as "0x1A"
  };

  std::string name() const;
  Value::Kind kind() const;
  Form form() const;
  /// Is it a key, a pass phrase or track data?
  bool isSecret() const;
  /// The elements, or the attributes, that carry it: "dhcp"; in others, "jobs/job".
  std::vector<std::string> elements() const;
  /// Of a keyword, of a flag, of flags that are named by words, or of a list of keywords.
  std::vector<Keyword> words() const;
  /// Every element, attribute and word by which replies say it, sorted: also the words of a flag,
  /// and whatever stands inside.
  std::vector<std::string> vocabulary() const;
  /// Of a record, or of the entries of a list.
  std::vector<MemberDescription> members() const;
  /// Of a text: how many bytes fit; 0 where its form tells it.
  std::size_t mostBytes() const;
  /// What there is to say of it; empty where the name says it.
  std::string title() const;

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::MemberData> data_;
};

/// "plain", "setting", "ipv4", "hardware_address" or "hexadecimal"; empty for a form that a later
/// version has.
KOVRA_EXPORT std::string_view nameOf(MemberDescription::Form form);

/// An element of a reply: what it tells, and how.
class KOVRA_EXPORT ElementDescription {
 public:
  /// Empty for the text of the element around it, which has other elements beside it or is told of
  /// as something else: as a list's entry.
  std::string name() const;
  /// The members that it tells, of the record whose members the elements around it tell. A record
  /// or a list is there where the elements in it tell its members, or those of an entry. None for
  /// an element that only holds others, or that is known and tells nothing.
  std::vector<MemberDescription> members() const;
  /// What may stand there as a text; none where that is no word.
  std::vector<Keyword> words() const;
  /// Where the members stand, in place of the text; of a setting its bounds, beside the text.
  std::vector<std::string> attributes() const;
  /// How often it may stand there and tell something more, whatever it says; 0: any number.
  std::size_t mostTimes() const;
  /// Those in it. What else stands there is told of in notes.
  std::vector<ElementDescription> elements() const;

 private:
  friend struct detail::FaceAccess;
  detail::Shared<detail::ElementData> data_;
};

/// What the printer says, or what it accepts, or both.
class KOVRA_EXPORT Message {
 public:
  std::string name() const;                ///< for people and programs: "general-status"
  std::string title() const;               ///< a few words on what it tells
  std::vector<std::string> roots() const;  ///< of a reply, the preferred one first
  bool isRead() const;
  bool isWritten() const;
  /// Does the result of the classic operation depend on the reply? Else Reading::result() is false,
  /// whatever the reply says.
  bool hasResult() const;
  /// The root of a reply; of a message that is not read, an element without anything.
  ElementDescription root() const;
  /// Of the record that is composed, or else of the one that is read.
  std::vector<MemberDescription> members() const;

  // Of a message that is written.

  /// Members that always have to be there. Some commands need more: a document says what it lacks
  /// by its problems, as what is needed may depend on what is chosen.
  std::vector<std::string> required() const;
  std::vector<Choice> choices() const;
  std::string command() const;  ///< the words of a command line that composes it
  /// What the documents have in common that are composed by the same first of several words: a few
  /// words, and what more there is to say. Empty for a message whose command is one word.
  std::string groupPurpose() const;
  std::string groupHelp() const;
  std::string purpose() const;   ///< a few words on what the document is for
  std::string help() const;      ///< what more there is to say, with an example
  std::string recordOf() const;  ///< the reply whose record is composed; empty for a command
  /// Paths of the members that are secrets: "wireless.key".
  std::vector<std::string> secrets() const;

 private:
  friend struct detail::FaceAccess;
  Message() = default;
  frame::MessageRow const* data_ = nullptr;
};

/// Every message, in a fixed order to which later versions only add.
[[nodiscard]] KOVRA_EXPORT std::vector<Message> messages();

/// The JSON Schema (draft 2020-12) of a message's record, as JSON: what decode() shows and
/// compose() takes. Empty for a name that no message has.
[[nodiscard]] KOVRA_EXPORT std::string schema(std::string_view message);

/// Every element name and keyword of every reply, each once, sorted: the printer's vocabulary.
[[nodiscard]] KOVRA_EXPORT std::vector<std::string> vocabulary();

/// Of the library that is running: "1.0.0".
[[nodiscard]] KOVRA_EXPORT std::string version();

}  // namespace Kovra

#endif
