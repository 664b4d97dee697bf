/// @file
/// What a document holds of a record, found out by composing it: what changes would do, and what
/// they cannot do.

#ifndef KOVRA_TOOL_WRITTEN_HPP
#define KOVRA_TOOL_WRITTEN_HPP

#include <kovra.hpp>
#include <string>
#include <vector>

#include "edit.hpp"

namespace Kovra::tool {

/// What is wrong with the record whichever words are chosen of the choices of several, such as
/// sections, that are still open. Nothing where none is.
std::vector<Problem> problemsOfAll(Message const& message, Value const& record,
                                   Value const& choices);

/// Throws a RecordFailure for a change that no document shows: of a member that only the printer
/// tells, or of one that these choices leave out. The record has the changes already.
void requireWritten(Message const& message, Value const& record, std::vector<Edit> const& edits,
                    Value const& choices);

/// The choices that make a document of what differs between two records, and of nothing else: to
/// those that were made already it adds the words of every choice of several whose documents
/// differ. Throws a RecordFailure where none of them do.
Value choicesOfChanges(Message const& message, Value const& before, Value const& after,
                       Value const& choices);

/// Something of a record that a document says in another way.
struct Misnomer {
  std::string path;
  std::string found;
  std::string expected;
};

/// Every keyword in the record whose code no word has, or whose code and name are those of
/// different words, as far as a document of these choices has it: it would say a word that nobody
/// chose.
std::vector<Misnomer> misnomers(Message const& message, Value const& record, Value const& choices);

/// Every keyword that is read of the document again, and is then another one than the record's, or
/// none. Some members follow from others when a document is written.
std::vector<Misnomer> contradictions(Message const& message, Value const& record,
                                     std::string const& document);

}  // namespace Kovra::tool

#endif
