/// @file
/// Every operation that reads a reply, with a sample that it reads and a record that it fills.

#ifndef KOVRA_TESTS_SUPPORT_READING_OPERATIONS_HPP
#define KOVRA_TESTS_SUPPORT_READING_OPERATIONS_HPP

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Kovra::test {

struct HostReply;

/// One call of an operation: its reply and the record that it fills.
class Trial {
 public:
  Trial() = default;
  virtual ~Trial() = default;
  Trial(Trial const&) = delete;
  Trial& operator=(Trial const&) = delete;

  virtual bool read() = 0;
  virtual std::string contents() const = 0;
};

/// What a reading asks of the heap for itself, besides what its reply takes.
enum class Asks {
  nothing,
  forAttributes,  ///< it sets some in the host's tree, before it reads
  forNodes,       ///< the reader is itself a document, and shows its outcome before it reads
  forEntries,     ///< of the record: a reading cut short leaves those that it had read
};

/// An ordinary reply, or one with comments enough that neither its text nor its nodes find room on
/// the stack.
enum class Length { ofOrdinaryReplies, beyondTheStack };

struct ReadingOperation {
  std::string name;  ///< with its class
  std::string sample;
  char const* element;  ///< null for those that take a text
  std::function<std::unique_ptr<Trial>(std::unique_ptr<HostReply>)> start;
  Asks asks = Asks::nothing;

  /// The sample, readable in any locale.
  std::string text() const;
  std::unique_ptr<Trial> startOn(std::string const& text, Length length) const;
};

std::vector<ReadingOperation> readingOperations();

}  // namespace Kovra::test

#endif
