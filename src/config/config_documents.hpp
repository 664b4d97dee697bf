/// @file
/// The configuration for the rooms above: its line of the catalogue, and its document.

#ifndef KOVRA_CONFIG_CONFIG_DOCUMENTS_HPP
#define KOVRA_CONFIG_CONFIG_DOCUMENTS_HPP

#include <tinyxml.h>

#include <span>

#include "frame/assign.hpp"
#include "frame/typed/reader.hpp"
#include "kvxconfigrecords.h"

namespace Kovra {

std::span<frame::ReplyReader const> configurationReplies();

/// The name of the document's root.
inline constexpr char configurationRoot[] = "configuration";

/// Adds the sections below `root`, as KVXSetConfig::addConfiguration does.
bool writeConfiguration(TiXmlElement& root, _KVConfiguration const& config, long sections,
                        int cardSelect, bool filmless);

/// Fills the record with the members of a value.
frame::Assigned assignConfiguration(_KVConfiguration& config, Value const& value, Problem& problem);

}  // namespace Kovra

#endif
