/// @file
/// `kovra sample`: replies for those who have no printer.

#ifndef KOVRA_TOOL_SAMPLE_HPP
#define KOVRA_TOOL_SAMPLE_HPP

#include <cstdint>
#include <kovra.hpp>
#include <set>
#include <string>

#include "command.hpp"
#include "sampler.hpp"

namespace Kovra::tool {

/// What is asked for.
struct SampleOptions {
  Wishes wishes;
  bool isOdd = false;
};

struct Sample {
  std::string text;
  std::set<std::string, std::less<>> told;  ///< paths of the members that it tells
};

/// The reply of a seed: the same wherever it is made.
Sample sampleOf(Message const& message, std::uint64_t seed, SampleOptions const& options);

void addSample(CLI::App& command, ExitStatus& status);

}  // namespace Kovra::tool

#endif
