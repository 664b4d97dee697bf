/// @file
/// Settings together with the range that the printer permits.

#ifndef KVXSETTINGRECORDS_H
#define KVXSETTINGRECORDS_H

namespace Kovra {

/// A whole-number setting with the range that the printer permits: an element whose attributes
/// "min" and "max" hold the bounds and whose text holds the value. Units are the printer's.
struct _MinMaxVal {
  int min;  ///< attribute 'min', lower bound
  int max;  ///< attribute 'max', upper bound
  int val;  ///< text, current value
};

/// The same as _MinMaxVal with floating-point numbers.
struct _MinMaxValFloat {
  float min;  ///< attribute 'min', lower bound
  float max;  ///< attribute 'max', upper bound
  float val;  ///< text, current value
};

}  // namespace Kovra

#endif
