/// @file
/// Rows whose values are secrets.

#ifndef KOVRA_FRAME_SECRET_HPP
#define KOVRA_FRAME_SECRET_HPP

#include "frame/typed/secret.hpp"

namespace Kovra::frame {
using namespace typed;
}  // namespace Kovra::frame

#endif
