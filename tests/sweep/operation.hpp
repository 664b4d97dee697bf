/// @file
/// The public operations, each with a call of it that can be made again and again.

#ifndef KOVRA_TESTS_SWEEP_OPERATION_HPP
#define KOVRA_TESTS_SWEEP_OPERATION_HPP

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Kovra::sweep {

/// What a host has before and after a call.
struct Contents {
  std::string whole;  ///< all of it changes, or nothing does
  std::string grown;  ///< grows piece by piece, so that a part of it is its beginning
};

inline bool operator==(Contents const& a, Contents const& b) {
  return a.whole == b.whole && a.grown == b.grown;
}

/// One call, of which can be seen what it changes. Destroying it gives back what the host owns.
class Trial {
 public:
  Trial() = default;
  virtual ~Trial() = default;
  Trial(Trial const&) = delete;
  Trial& operator=(Trial const&) = delete;

  virtual long call() = 0;
  virtual Contents contents() = 0;
};

struct Operation {
  std::string name;  ///< of the export, without its parameters
  std::function<std::unique_ptr<Trial>()> start;
};

/// A trial of something that a host owns, and of two functions that are given it.
template <class Host>
class TrialOf : public Trial {
 public:
  using Call = std::function<long(Host&)>;
  using Show = std::function<Contents(Host&)>;

  TrialOf(Call const& call, Show const& show) : call_(&call), show_(&show) {}

  long call() override { return (*call_)(*host_); }
  Contents contents() override { return (*show_)(*host_); }

 private:
  Call const* call_;
  Show const* show_;
  std::unique_ptr<Host> host_ = std::make_unique<Host>();
};

template <class Host>
Operation operation(std::string name, typename TrialOf<Host>::Call call,
                    typename TrialOf<Host>::Show show) {
  return {std::move(name), [call = std::move(call), show = std::move(show)] {
            return std::make_unique<TrialOf<Host>>(call, show);
          }};
}

/// An operation that gives a number and changes nothing.
inline Operation telling(std::string name, std::function<long()> call) {
  struct Nothing {};
  return operation<Nothing>(
      std::move(name), [call = std::move(call)](Nothing&) { return call(); },
      [](Nothing&) { return Contents(); });
}

std::vector<Operation> readingOperations();
std::vector<Operation> writingOperations();
std::vector<Operation> faceOperations();

}  // namespace Kovra::sweep

#endif
