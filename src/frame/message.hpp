/// @file
/// Messages: what the printer says, and what it accepts. Each is a line of the catalogue; whatever
/// works on all of them walks over it.

#ifndef KOVRA_FRAME_MESSAGE_HPP
#define KOVRA_FRAME_MESSAGE_HPP

#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <type_traits>

#include "frame/entry.hpp"
#include "frame/field.hpp"
#include "frame/sink.hpp"
#include "frame/wipe.hpp"
#include "kovra_records.hpp"

namespace Kovra::frame {

/// A record without its type, as those make, fill and give it back who know no message.
struct RecordType {
  std::size_t size;
  /// Makes one in memory of that size, aligned for any type: all zeros.
  void (*make)(void* memory);
  /// Wipes it, with all that it owns.
  void (*destroy)(void* memory);
  /// The record in what was made, for rows: there may be room for its lists around it.
  void* (*record)(void* memory);
  /// Is it a record alone, which owns nothing?
  bool isPlain = false;
  /// That of the record's type, for those who ask for it by type.
  std::string_view name = {};
};

template <class Record>
inline constexpr RecordType recordType{
    sizeof(Record),
    [](void* memory) { new (memory) Record(); },
    [](void* memory) {
      static_assert(std::is_trivially_copyable_v<Record> && std::is_standard_layout_v<Record>);
      wipe(memory, sizeof(Record));
    },
    [](void* memory) { return memory; },
    true,
    Kovra::detail::recordName<Record>};

/// A record with an array for its list, as a host would make it.
template <class Record, class Entry>
struct WithEntries {
  Record record{};
  std::unique_ptr<Entry[]> entries{};
};

/// A record in a room of its own: an object with a member `record`.
template <class Room>
inline constexpr RecordType roomType{
    sizeof(Room),
    [](void* memory) { new (memory) Room(); },
    [](void* memory) { std::destroy_at(static_cast<Room*>(memory)); },
    [](void* memory) -> void* { return &static_cast<Room*>(memory)->record; },
    false,
    Kovra::detail::recordName<decltype(Room::record)>};

/// One record of any type.
class AnyRecord {
 public:
  explicit AnyRecord(RecordType const& type)
      : type_(type),
        memory_(new std::byte[type.size]),
        record_((type.make(memory_.get()), type.record(memory_.get()))) {}
  ~AnyRecord() { type_.destroy(memory_.get()); }
  AnyRecord(AnyRecord const&) = delete;
  AnyRecord& operator=(AnyRecord const&) = delete;

  /// What was made, for the message's own functions.
  void* memory() const { return memory_.get(); }
  /// The record, for rows.
  void* get() const { return record_; }

 private:
  RecordType const& type_;
  std::unique_ptr<std::byte[]> memory_;
  void* record_;
};

/// Something that whoever composes a document may choose.
struct ChoiceRow {
  enum class Form {
    flag,
    word,    ///< one of the words
    words,   ///< any of them: their bits
    number,  ///< a whole number
  };

  std::string_view name;
  Form form;
  std::string_view title;  ///< what it does, in lines of a help
  Vocabulary const* words = nullptr;
  bool isRequired = false;
  std::string_view example = {};  ///< what stands for the value in a help
  long least = 0;                 ///< bounds of a number; none where both are 0
  long most = 0;
};

/// What was chosen, in the order of the message's choices: flags as 0 or 1, words as their codes or
/// bits, numbers as they are; 0 for what was not.
using Chosen = std::span<long const>;

/// A member that composing says more of than its row.
struct MemberTitle {
  std::string_view member;
  std::string_view title;
};

/// Several documents that are composed by one word and then another.
struct CommandGroup {
  std::string_view title;
  std::string_view help;
};

/// How a document is composed.
struct Composing {
  /// The words of a command line: the message's name unless people have another.
  std::string_view command;
  std::string_view title;  ///< what the document is, in a few words
  std::string_view help;   ///< what more there is to say, with an example
  char const* root;
  /// The reply whose record is taken.
  std::string_view recordOf;
  std::span<ChoiceRow const> choices = {};
  /// Is every member to be there that the chosen sections are made of?
  bool isOfSections = false;
  /// Members that have to be there: what is forgotten would be written as an empty text.
  std::span<std::string_view const> required = {};
  /// No member may be there but those.
  bool requiredOnly = false;
  /// Whatever its rows say, all members are secrets.
  bool isSecret = false;
  CommandGroup const* group = nullptr;
  /// A command: its members are few and no secrets, and are given one by one.
  std::span<MemberTitle const> commandMembers = {};

  /// The circumstances that follow from which members the value has; false with a problem.
  bool (*sort)(Value const& value, Circumstances& circumstances, Problems& problems) = nullptr;
  /// Fills what was made; where it is null that is done by the rows.
  Assigned (*assign)(void* memory, Value const& value, Problems& problems) = nullptr;
  /// Whether members agree with one another; false with a problem.
  bool (*check)(void const* record, Value const& value, Problems& problems) = nullptr;
  /// Of a command: it takes the members that these rows write as attributes, and needs them all.
  Rows (*written)(void const* record) = nullptr;
  /// Writes what is below the root. False when there was nothing to write.
  bool (*write)(Sink& sink, void const* record, Chosen chosen, Circumstances circumstances);
  /// Why there was nothing.
  void (*explain)(Chosen chosen, Problems& problems) = nullptr;
};

struct MessageRow {
  std::string_view name;   ///< for people and command lines
  std::string_view title;  ///< what it tells, in a few words
  Roots roots;             ///< of a reply
  RecordType const* record;
  Rows rows;  ///< what fills and shows the record
  /// Reads the root into what was made; the result is that of the classic operation. Null for a
  /// message that is never read.
  bool (*read)(MessageRow const& message, Element root, void* memory, Watch const& watch);
  /// Null for one that is never written.
  Composing const* composing = nullptr;
  /// The words that no row tells.
  Vocabulary const* moreWords = nullptr;
  /// Does the result depend on the reply? Else it is false, whatever the reply says.
  bool hasResult = true;
};

/// Every element name and keyword of a reply, and its roots.
void outlineOf(MessageRow const& message, Outline& outline);

/// Reads the children of the root by the message's rows.
bool readByRows(MessageRow const& message, Element root, void* memory, Watch const& watch);
/// Reads the root itself by the message's only row.
bool readAsText(MessageRow const& message, Element root, void* memory, Watch const& watch);

/// Reads with `Reading`, a struct with `read(root, record, watch)`.
template <class Reading, class Record>
bool readBy(MessageRow const&, Element root, void* memory, Watch const& watch) {
  return Reading::read(root, *static_cast<Record*>(memory), watch);
}

/// Reads the children of the root by a table that is not all of the message's rows.
template <auto const& Table>
bool readWith(MessageRow const&, Element root, void* memory, Watch const& watch) {
  return readBelow(root, Table, memory, watch);
}

/// A reply whose record starts as zeros.
template <class Record, std::size_t N>
constexpr MessageRow reply(std::string_view name, std::string_view title, Roots roots,
                           Table<Record, N> const& table,
                           decltype(MessageRow::read) read = &readByRows) {
  return {name, title, roots, &recordType<Record>, table, read};
}

/// A reply whose record is in a room that makes space for its lists: `Room::read` reads.
template <class Room, class Record, std::size_t N>
constexpr MessageRow replyWithRoom(std::string_view name, std::string_view title, Roots roots,
                                   Table<Record, N> const& table) {
  return {name, title, roots, &roomType<Room>, table, &readBy<Room, Room>};
}

/// The same message, with words that no row tells.
constexpr MessageRow withWords(MessageRow message, Vocabulary const& words) {
  message.moreWords = &words;
  return message;
}

/// The same message, whose classic operation gives false for every reply.
constexpr MessageRow withoutResult(MessageRow message) {
  message.hasResult = false;
  return message;
}

/// The same message, which is written as well.
constexpr MessageRow alsoWritten(MessageRow message, Composing const& composing) {
  message.composing = &composing;
  return message;
}

// A host's replies.

/// The wide entry of a reply that rows read, watched by nobody.
bool readReply(wchar_t const* text, std::size_t length, Roots roots, Rows rows, void* record);

template <class Length, class Record, std::size_t N>
bool readReply(wchar_t const& text, Length length, Roots roots, Table<Record, N> const& table,
               std::type_identity_t<Record>& record) {
  return length >= 1 &&
         readReply(&text, static_cast<std::size_t>(length), roots, Rows(table), &record);
}

/// The same for a reply whose text is narrow and terminated, so that no length is needed.
bool readNarrowReply(char const* text, Roots roots, Rows rows, void* record);

template <class Record, std::size_t N>
bool readNarrowReply(char const* text, Roots roots, Table<Record, N> const& table,
                     std::type_identity_t<Record>& record) {
  return readNarrowReply(text, roots, Rows(table), &record);
}

/// The wide entry of a reply with a reading of its own.
template <class Reading, class Length, class Record>
bool readReplyBy(wchar_t const& text, Length length, Roots roots, Record& record) {
  return readWide(&text, length, roots,
                  [&](Element root) { return Reading::read(root, record, Watch()); });
}

/// `Reading` on an element of a host's own tree; false for a null one.
template <class Reading, class Record>
bool readHost(TiXmlElement const* element, Record& record) {
  if (element == nullptr) return false;
  HostTree const tree(element);
  return Reading::read(tree.root(), record, Watch());
}

/// A row on an element of a host's own tree.
bool readHostRow(TiXmlElement const* element, Row const& row, void* place);

/// For a host that has a record's member alone, in a variable of its own: the row is that member's.
template <auto M, auto const& Field>
bool readHostMember(TiXmlElement const* element, typename Member<M>::Type& out) {
  static_assert(Field.row().place == &detail::memberIn<M>, "this row is not the member's");
  return readHostRow(element, Field.row(), &out);
}

}  // namespace Kovra::frame

#endif
