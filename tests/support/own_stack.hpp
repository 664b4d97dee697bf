/// @file
/// A call on a stack of its own, of which one can see afterwards what it left there.

#ifndef KOVRA_TESTS_SUPPORT_OWN_STACK_HPP
#define KOVRA_TESTS_SUPPORT_OWN_STACK_HPP

#include <cstddef>
#include <functional>
#include <string_view>

namespace Kovra::test {

/// Memory that a thread has for its stack, one thread after the other.
class OwnStack {
 public:
  OwnStack();
  ~OwnStack();
  OwnStack(OwnStack const&) = delete;
  OwnStack& operator=(OwnStack const&) = delete;

  /// Makes the call in a thread on this stack, cleared before, and waits for its end. No exception
  /// may leave the call.
  void run(std::function<void()> const& call);

  /// How many pieces of `text`, each as long as what a register of the processor's holds, the last
  /// call left on the stack.
  std::size_t found(std::string_view text) const;

 private:
  void* memory_;
};

}  // namespace Kovra::test

#endif
