/// @file
/// The record of a printer's media catalogue.

#ifndef KVXMEDIARECORDS_H
#define KVXMEDIARECORDS_H

#include <vector>

#include "kvxconfigrecords.h"

namespace Kovra {

/// A type of card: element "card". Not the configuration's _CustomCardInfo: `cal_table` stands
/// elsewhere.
struct _CardInfo {
  int type;                                         ///< 'information/type'
  char halvex_part_number[16];                      ///< 'information/halvex_part_number'
  char description[64];                             ///< 'information/description'
  float thickness;                                  ///< 'information/thickness'
  unsigned char coercivity;                         ///< 'information/coercivity', an index into
                                                    ///< COERCIVITYTYPES
  unsigned char cardFeatures;                       ///< bits: 1 'information/mag_stripe', 2
                                                    ///< 'information/contact_encode', 4
                                                    ///< 'information/non_contact_encode'
  _TransferTempInfo transfer_temps;                 ///< 'transfer_temps'
  _TransferSpeedInfo transfer_speeds;               ///< 'transfer_speeds'
  _LaminationAdjustmentsNew laminator_adjustments;  ///< 'laminator_adjustments'
  int cal_table;  ///< 'cal_table', number of the calibration table
};

/// A film, a ribbon or a laminate: element "film", "ribbon" or "laminate".
struct _MediaRibbonInfo {
  char halvex_part_number[16];  ///< 'halvex_part_number'
  char description[64];         ///< 'description'
};

/// The media that a printer knows: root "media". The record owns its lists and all entries. It is
/// made by GetKVMedia and BuildKVMedia, filled by the reader, and freed by DestroyKVMedia.
struct _KVMediaInfo {
  std::vector<_CardInfo*>* cards;             ///< 'cards/card'
  std::vector<_MediaRibbonInfo*>* films;      ///< 'films/film'
  std::vector<_MediaRibbonInfo*>* ribbons;    ///< nothing: the reader never fills it
  std::vector<_MediaRibbonInfo*>* laminates;  ///< 'laminates/laminate', also 'ribbons/laminate'
};

}  // namespace Kovra

#endif
