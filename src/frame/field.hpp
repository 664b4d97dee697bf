/// @file
/// Rows and tables.

#ifndef KOVRA_FRAME_FIELD_HPP
#define KOVRA_FRAME_FIELD_HPP

#include "frame/typed/field.hpp"

namespace Kovra::frame {
using namespace typed;
}  // namespace Kovra::frame

#endif
