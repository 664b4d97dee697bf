/// @file
/// Replies as metrics, in Prometheus' text format.

#ifndef KOVRA_TOOL_PROM_HPP
#define KOVRA_TOOL_PROM_HPP

#include <cstddef>
#include <kovra.hpp>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Kovra::tool {

/// What one reply says, before it is sorted by metric.
struct MetricSample {
  std::string metric;
  std::string help;
  std::string labels;  ///< without those of the reply: `state="idle"`
  std::string value;
};

/// A number is a gauge, a flag one of 0 or 1, a keyword a set of states of which one is 1, and all
/// texts of a record are labels of one metric that is always 1. Secrets are left out.
std::vector<MetricSample> samplesOf(Decoding const& decoding);

/// The metrics of several replies, those of one name together.
class Metrics {
 public:
  /// Of a reply that was decoded, or of one that was refused.
  void add(std::string_view source, std::vector<MetricSample> const& samples, bool isDecoded,
           std::size_t notes);

  std::string text() const;

 private:
  struct Metric {
    std::string help;
    std::string lines;
  };

  void addSample(std::string_view source, MetricSample const& sample);

  std::map<std::string, std::size_t> sources_;  ///< how often each came
  std::vector<std::string> order_;
  std::map<std::string, Metric, std::less<>> metrics_;
};

}  // namespace Kovra::tool

#endif
