/// @file
/// The mark of what the shared library exports. Everything else in it stays hidden.

#ifndef KOVRA_EXPORT_H
#define KOVRA_EXPORT_H

/// Marks what the shared library exports.
#define KOVRA_EXPORT __attribute__((visibility("default")))

#endif
