/// @file
/// The identity for the rooms above: its line of the catalogue, and its document.

#ifndef KOVRA_IDENTITY_IDENTITY_DOCUMENTS_HPP
#define KOVRA_IDENTITY_IDENTITY_DOCUMENTS_HPP

#include <tinyxml.h>

#include <span>

#include "frame/assign.hpp"
#include "frame/typed/reader.hpp"
#include "frame/vocabulary.hpp"
#include "kvxprinterrecords.h"
#include "kvxsetprinterinfo.h"

namespace Kovra {

std::span<frame::ReplyReader const> identityReplies();

/// The name of the document's root.
inline constexpr char identityRoot[] = "printer_id";

/// What people call the fields that may be set.
inline constexpr frame::Word identityFieldWords[] = {{"model", fieldPrinterModel},
                                                     {"printhead", fieldPrintheadSerial}};
inline constexpr frame::Vocabulary identityFields{identityFieldWords, frame::Match::exact, 0};
static_assert(frame::everyWordIsReachable(identityFields));

/// Adds the fields below `root`, as KVXSetPrinterInfo::addPrinterInfo does.
bool writeIdentity(TiXmlElement& root, KVPrinterInfo const& info, long fields);

/// Fills the record with the members of a value.
frame::Assigned assignIdentity(KVPrinterInfo& info, Value const& value, Problem& problem);

}  // namespace Kovra

#endif
