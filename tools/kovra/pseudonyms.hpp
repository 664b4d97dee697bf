/// @file
/// Made-up values in place of true ones.

#ifndef KOVRA_TOOL_PSEUDONYMS_HPP
#define KOVRA_TOOL_PSEUDONYMS_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "identity.hpp"
#include "tags.hpp"

namespace Kovra::tool {

/// A true value, and the one in its place.
struct Pseudonym {
  std::string original;
  std::string madeUp;
  Identity identity;
};

/// Finds many values in a text at once, in time that grows with the text and not with their number.
class ValueFinder {
 public:
  ValueFinder();

  void add(std::string_view value, std::uint32_t number);
  /// After the last value.
  void finish();

  /// Something that was found. What reaches into the one before begins where that ends.
  struct Found {
    Span span;
    std::uint32_t number;
  };
  /// In their order, with every byte of every value in one of them.
  std::vector<Found> in(std::string_view text) const;

 private:
  static constexpr std::uint32_t none = UINT32_MAX;
  struct Node {
    std::uint32_t child = 0;  ///< 0: none, since the root is nobody's child
    std::uint32_t sibling = 0;
    std::uint32_t fallback = 0;
    std::uint32_t value = none;  ///< the longest that ends here
    std::uint32_t length = 0;    ///< of that
    char letter = '\0';
  };

  std::uint32_t childOf(std::uint32_t node, char letter) const;
  std::uint32_t step(std::uint32_t node, char letter) const;

  std::vector<Node> nodes_;
  std::array<std::uint32_t, 256> first_{};  ///< the children of the root
};

/// All of a run: one original has one pseudonym, whatever it stood for, and no two have the same.
/// No pseudonym is an original. They are counted, so that nothing of the original is in them.
class Pseudonyms {
 public:
  void add(std::string_view original, Identity identity);
  /// After the last one is added. Throws an InputFailure when there are more than can be made up.
  void makeUp();

  /// Null for what was not added.
  Pseudonym const* find(std::string_view original) const;
  std::vector<Pseudonym> const& all() const { return all_; }

  /// The occurrences of originals of four characters and more.
  std::vector<ValueFinder::Found> in(std::string_view text) const { return finder_.in(text); }
  /// What stands in place of one that was found.
  std::string_view madeUp(std::uint32_t number) const { return texts_[number]; }
  /// The text with pseudonyms in place of what was found.
  std::string hidden(std::string_view text) const;

 private:
  std::string textFor(Pseudonym const& pseudonym);
  std::string ipv4For(std::uint32_t address);
  std::string hardwareFor(std::string_view original);
  std::string uuidFor(std::string_view original);
  std::string ipv6();
  std::string patternFor(Pseudonym const& pseudonym);
  std::string counted(std::string_view stem);
  std::uint32_t subnetFor(std::uint32_t original);
  bool isOriginal(std::string const& text) const { return index_.count(text) != 0; }
  void search();

  std::vector<Pseudonym> all_;
  std::map<std::string, std::size_t, std::less<>> index_;
  std::vector<std::string> texts_;
  ValueFinder finder_;

  std::map<std::string, std::uint64_t, std::less<>> counters_;  ///< of stems and of patterns
  std::set<std::uint32_t> originalSubnets_;
  struct Subnet {
    std::uint32_t madeUp = 0;
    unsigned hosts = 0;
  };
  std::map<std::uint32_t, Subnet> subnets_;
  std::uint32_t nextSubnet_ = 0;
  std::map<std::uint32_t, std::string> ipv4_;
  std::set<std::uint64_t> originalHardware_;
  std::map<std::uint64_t, std::uint64_t> hardware_;
  std::uint64_t nextHardware_ = 0;
};

}  // namespace Kovra::tool

#endif
