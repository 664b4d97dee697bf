/// @file
/// A message is a table: one row for each element, made from a pointer to the member that it fills.
///
///     constexpr Table generalStatus = {
///         keyword<&KVGeneralStatus::printer_state, printerStates>("printer_state"),
///         number<&KVGeneralStatus::error>("error"),
///     };
///
/// walk.hpp reads an element with such a table, kinds.hpp says how text becomes a value, rows.hpp
/// makes the rows, lists.hpp reads what comes more than once. Families include this.

#ifndef KOVRA_FRAME_FIELD_HPP
#define KOVRA_FRAME_FIELD_HPP

#include "frame/kinds.hpp"
#include "frame/lists.hpp"
#include "frame/rows.hpp"
#include "frame/walk.hpp"

#endif
