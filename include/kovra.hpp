/// @file
/// The modern face of Kovra: a reply's UTF-8 text goes in, and what it said comes out, with a
/// reason when it was refused and a note for everything in it that Kovra does not know.
///
/// The classic classes (KVXHelper, Kovra::KVXStatusParser, ...) fill plain records and answer with
/// a bool. The face reads with the same tables, so its values are exactly those that a host gets,
/// and adds what a bool cannot tell: which members the reply named, which words and elements were
/// unknown, which texts did not fit, and where a broken text breaks.
///
/// Text is UTF-8 and independent of the process's locale, apart from the decimal point of numbers,
/// which is that of LC_NUMERIC as in the whole library: where that is a comma, a printer's decimals
/// are misread and those that are composed are not understood, so a host leaves LC_NUMERIC alone
/// and sets LC_CTYPE if it has to. Nothing here holds state: any operation may be called from any
/// thread. Everything is returned by value and owned by the caller.

#ifndef KOVRA_HPP
#define KOVRA_HPP

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "kovra_base.h"

namespace Kovra {

/// A place in a text. Lines and columns count from 1; a column is a character, a tab counts as one.
/// (In a text that does not declare UTF-8, notes count bytes.) Line 0 means that no place is known.
struct KOVRA_EXPORT Place {
  int line = 0;
  int column = 0;
};

struct Member;

/// One decoded value. Which fields count follows from `kind`; the others are empty.
struct KOVRA_EXPORT Value {
  enum class Kind : int {
    nothing,  ///< no value: an entry of a list that the reply left empty
    flag,     ///< `flag`
    integer,  ///< `integer`
    natural,  ///< `natural`
    real,     ///< `real`
    text,     ///< `text`, the bytes as the record holds them
    keyword,  ///< `integer` is the code, `text` the word as sent, `known` whether Kovra knows it
    list,     ///< `items`
    record,   ///< `members`, in the order in which the reply named them
  };

  Kind kind = Kind::nothing;
  bool flag = false;
  bool known = false;
  bool hexadecimal = false;  ///< a natural that people read as bits
  bool secret = false;       ///< a key, pass phrase or track: not to be shown unasked; its text is
                             ///< wiped when the value is destroyed or takes another
  long integer = 0;
  unsigned long natural = 0;
  double real = 0;
  std::string text;
  std::vector<Value> items;
  std::vector<Member> members;

  Value();
  Value(Value const&);
  Value(Value&&) noexcept;
  Value& operator=(Value const&);
  Value& operator=(Value&&) noexcept;
  ~Value();

  /// The member named `name`, or null.
  Value const* find(std::string const& name) const;
};

/// A named value of a record. The name is that of the record's member.
struct KOVRA_EXPORT Member {
  std::string name;
  Value value;
};

/// Something that a reply said and Kovra could not use as it stands. Reading goes on all the same.
struct KOVRA_EXPORT Note {
  enum class Kind : int {
    unknownElement,  ///< an element that no row names: skipped
    unknownWord,     ///< a word that the vocabulary lacks: `expected` lists its words
    notANumber,      ///< a text that is no number of the expected form
    changedNumber,   ///< a number that its member cannot hold: `kept` is what it holds
    cutText,         ///< a text longer than its member: `kept` is what it holds
    emptyElement,    ///< an element without text or children: not read
    noAttribute,     ///< an element without the attribute `expected`: its member was not read
    surplusEntry,    ///< an entry beyond what the record's own array takes: skipped
    unlisted,        ///< `kept` more notes, which are not listed; the last note, without a place
  };

  Kind kind = Kind::unknownElement;
  Place place;                        ///< of the element
  std::string element;                ///< its name
  std::string found;                  ///< its text, empty for a secret
  std::string kept;                   ///< what the record holds instead
  std::vector<std::string> expected;  ///< the words or the form that would be right

  /// One sentence, without place: `<feeder_mode>: unknown word "tripel"; one of: single, dual`.
  std::string description() const;
};

/// Why a value could not go into a record, or a record into a document.
struct KOVRA_EXPORT Problem {
  std::string path;      ///< of the value within the record: "wireless.ssid", "cards[0].type"
  std::string found;     ///< what stands there; of a value marked as a secret, only its kind
  std::string expected;  ///< what would be right

  /// One sentence: `wireless.channel: found "six"; expected a whole number ...`.
  std::string description() const;
};

/// What one reader made of a reply.
struct KOVRA_EXPORT Reading {
  std::string document;  ///< the reader's name, as documents() lists it
  bool result = false;   ///< what the classic operation returns for this reply
  Value record;          ///< the members that the reply named, nothing else
};

/// What became of a text. Born refused.
struct KOVRA_EXPORT Decoding {
  enum class Status : int {
    decoded,      ///< at least one reader took the reply
    malformed,    ///< the text is no XML document that TinyXML takes
    hostile,      ///< nested too deeply, or too many attributes on one element
    unknownRoot,  ///< well-formed, but no document that Kovra knows
    wrongRoot,    ///< well-formed, but not the document that was asked for
    unknownName,  ///< no document has the name that was asked for
  };

  Status status = Status::malformed;
  Place place;           ///< where the text is wrong, unless it was decoded
  std::string found;     ///< what stands there
  std::string expected;  ///< what would be right
  std::string root;      ///< the name of the root element, once one was found
  std::vector<Reading> readings;
  std::vector<Note> notes;  ///< in the order of their places

  /// One sentence, without place, that says what was found and what was expected; for a decoded
  /// reply the word "decoded".
  std::string description() const;
};

/// A kind of document that Kovra reads.
struct KOVRA_EXPORT Document {
  std::string name;                ///< for people and command lines: "general-status"
  std::string title;               ///< a few words on what it tells
  std::vector<std::string> roots;  ///< names of its root element, the preferred one first
};

/// Every kind of reply that decode() knows, in a fixed order to which later versions only add.
KOVRA_EXPORT std::vector<Document> documents();

/// Every element name and keyword of every document, each once, sorted: the printer's vocabulary.
KOVRA_EXPORT std::vector<std::string> vocabulary();

/// Decodes the `length` bytes at `text`, which need no terminator. The reader is found by the
/// root's name; where several readers share a root, all that recognise something in the reply are
/// run (all of them when none does). `as` picks one reader by its name.
///
/// A text that holds a NUL byte is malformed; a null text with length 0 is malformed, too.
KOVRA_EXPORT Decoding decode(char const* text, std::size_t length, std::string const& as = {});

// Composing: a record as a reading shows it, or as a person wrote it, becomes the document that the
// printer accepts. Keys are the members' names; a member that is left out stays zero; a keyword may
// be given as its code, its word, or both as a reading shows them. Whatever does not fit is a
// problem, and then no document is made; so is a text that is no UTF-8, or that holds a control
// character that XML lacks. No debugging copy is written.

/// What became of a record. Born failed.
struct KOVRA_EXPORT Composition {
  bool composed = false;
  Problem problem;   ///< why there is no document
  std::string text;  ///< the document, UTF-8 as the record's texts are
};

// Every message has a name, and one compose() for all; the functions behind them say the same of
// one document each.

/// Something that whoever composes a document may choose.
class KOVRA_EXPORT Choice {
 public:
  enum class Form : int {
    flag,    ///< true or false
    word,    ///< one of the words
    words,   ///< a list of them
    number,  ///< a whole number
  };

  explicit Choice(void const* row) : row_(row) {}

  std::string name() const;  ///< its key among the choices: "sections"
  Form form() const;
  std::string title() const;  ///< what it does
  std::vector<std::string> words() const;
  bool isRequired() const;
  std::string example() const;  ///< what stands for the value in a help: "1|2"
  long least() const;           ///< of a number; without bounds, both are 0
  long most() const;

 private:
  void const* row_;
};

/// A member of a message's record.
class KOVRA_EXPORT MemberDescription {
 public:
  MemberDescription(std::string name, Value::Kind kind, std::string title)
      : name_(std::move(name)), kind_(kind), title_(std::move(title)) {}

  std::string const& name() const { return name_; }
  Value::Kind kind() const { return kind_; }
  /// What there is to say of it; empty where the name says it.
  std::string const& title() const { return title_; }

 private:
  std::string name_;
  Value::Kind kind_;
  std::string title_;
};

/// What the printer says, or what it accepts, or both.
class KOVRA_EXPORT Message {
 public:
  explicit Message(void const* row) : row_(row) {}

  std::string name() const;                ///< for people and programs: "general-status"
  std::string title() const;               ///< a few words on what it tells
  std::vector<std::string> roots() const;  ///< of a reply, the preferred one first
  bool isRead() const;
  bool isWritten() const;
  /// Of the record that is composed, or else of the one that is read.
  std::vector<MemberDescription> members() const;

  // Of a message that is written.

  std::vector<std::string> required() const;  ///< members that always have to be there
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
  void const* row_;
};

/// Every message, in a fixed order to which later versions only add.
KOVRA_EXPORT std::vector<Message> messages();

/// Composes the document of a message by its name, or by the words of a command line, of a record
/// and the choices: an object with a member for each that is made.
KOVRA_EXPORT Composition compose(std::string const& message, Value const& record,
                                 Value const& choices = {});

/// What of a printer's capabilities is composed.
struct KOVRA_EXPORT CapabilitiesChoice {
  enum class Part : int {
    all,              ///< the whole description
    magEncoder,       ///< the magnetic encoder alone
    internalEncoder,  ///< the internal encoder alone
  };

  Part part = Part::all;
  bool directToCard = false;  ///< says the print system; the record's is not looked at
};

/// Composes a capabilities document as KVXSetCaps does. A list's entries are counted; the record
/// has no counts.
KOVRA_EXPORT Composition composeCapabilities(Value const& record,
                                             CapabilitiesChoice const& choice = {});

/// Which cards of a media catalogue are composed, and how much of each.
struct KOVRA_EXPORT MediaChoice {
  bool allTypes = false;         ///< also cards of other types than 0 and 1
  bool withoutTransfer = false;  ///< no transfer temperatures and speeds
};

/// Composes a media document as KVXSetMedia does: the cards of a media catalogue.
KOVRA_EXPORT Composition composeMedia(Value const& record, MediaChoice const& choice = {});

/// The sections of a configuration document by name, in their order in the document. The names are
/// those of the elements; that of the wireless section is "wireless", as it is read.
KOVRA_EXPORT std::vector<std::string> configurationSections();

/// What of a configuration is composed.
struct KOVRA_EXPORT ConfigurationChoice {
  std::vector<std::string> sections;  ///< names of sections
  int card = 0;                       ///< 1 or 2: the section "cards" alone, with this card alone
  bool filmless = false;              ///< the printer works without transfer film
};

/// Composes a configuration document as KVXSetConfig does. Ribbon and film are described by the
/// member `ribbonNameCode`, a code or a name; the `description` that a reading shows is not
/// written.
KOVRA_EXPORT Composition composeConfiguration(Value const& record,
                                              ConfigurationChoice const& choice);

/// What may be set of a printer's identity, by name, in the order of the document.
KOVRA_EXPORT std::vector<std::string> printerIdFields();

/// Composes an identity with the fields of these names as KVXSetPrinterInfo does; none is allowed.
KOVRA_EXPORT Composition composePrinterId(Value const& record,
                                          std::vector<std::string> const& fields);

// The secure-action exchange. Every member that a document holds has to be there: no printer shall
// get an empty key for one that was forgotten.

/// Composes a "nonce" document of the member `nonce`.
KOVRA_EXPORT Composition composeNonce(Value const& record);

/// Composes a request for an action of `action`, `model`, `serial` and `nonce`.
KOVRA_EXPORT Composition composeSecureRequest(Value const& record);

/// Composes a directive of `model`, `serial`, `nonce` and `hmac`; an `action` is not written.
/// Without a timeout the document has none.
KOVRA_EXPORT Composition composeSecureDirective(Value const& record, int timeout = 0);

/// Composes a "passkey" document of the member `current_passkey`.
KOVRA_EXPORT Composition composePasskey(Value const& record);

/// Composes a change of the passkey of `current_passkey` and `new_passkey`.
KOVRA_EXPORT Composition composePasskeyChange(Value const& record);

/// Composes the three working keys.
KOVRA_EXPORT Composition composeKeys(Value const& record);

/// Composes a change of keys: `current_passkey`, and of every kind of key that the record names the
/// current and the new one.
KOVRA_EXPORT Composition composeKeysChange(Value const& record);

/// The devices that a command can be composed for: "motor", "cam", ...
KOVRA_EXPORT std::vector<std::string> controlledDevices();

/// Composes a command for a device as KVXDeviceControl does, of words in place of codes. Its
/// members are the attributes of the device's element and `text`, its content; a motor's name is
/// `motor`, an antenna's `mode` is its text, and a laminator's `spool` stands for the text "scal".
/// Apart from `text` and `motor`, every member that the command takes has to be there, and no
/// other.
KOVRA_EXPORT Composition composeDeviceControl(std::string const& device, Value const& command);

}  // namespace Kovra

#endif
