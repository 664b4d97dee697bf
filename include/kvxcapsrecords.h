/// @file
/// The record of a printer's capabilities, and the records of its lists.

#ifndef KVXCAPSRECORDS_H
#define KVXCAPSRECORDS_H

#include "kvxconfigrecords.h"

namespace Kovra {

/// On how many sides the printer laminates.
enum _laminatorType : int {
  laminatorTypeNone = 0,      ///< "none"
  laminatorTypeOneSide = 1,   ///< "1_side"
  laminatorTypeTwoSides = 2,  ///< "2_side"
};

/// A port of the host's or the device's side: element "host_port" or "device_port".
struct _PortCaps {
  int portId;  ///< 'port_id'
  int type;    ///< 'type', code of portTypeToInt
};

/// An interface for programs: element "software_interface".
struct _InterfaceCaps {
  int protocol;   ///< 'protocol', code of protocolToInt
  int transport;  ///< 'transport', code of transportToInt
  int port;       ///< 'port', its number
};

/// A font of the printer: element "font".
struct _FontCaps {
  char name[64];  ///< 'name', at most 63 characters
  bool scalable;  ///< 'scalable'; deliberately written as a second 'name'
  int style;      ///< 'style', 1 "regular", 2 "bold", 3 "italic", 0 anything else
};

/// A stored template or graphic: element "template" or "graphic".
struct _TemplateCaps {
  char name[4096];     ///< 'name', at most 4095 characters
  char location[256];  ///< 'location', at most 255 characters; not written for templates
};

/// A barcode symbology: element "barcode".
struct _BarCodeCaps {
  char name[64];  ///< the element's text, at most 63 characters
};

/// What the printer protects: element "security".
struct _SecurityCaps {
  bool passkeyProtection;   ///< 'passkey_protection'
  int encryptionAlgorithm;  ///< 'encryption_algorithm', code of encAlgToInt
};

/// What a printer can do: root "capabilities".
///
/// The lists are arrays of the host, each with its count beside it. Before a reply is read the
/// count is the number of entries that the array can hold. A list that has more children than that
/// stores nothing and leaves their number in the count: the host makes room and reads again. A list
/// that fits leaves the count alone, so a host sees in an array that it cleared what was stored. A
/// null array holds nothing, whatever its count.
///
/// When a document is written the count is the number of entries to be written.
struct _Capabilities {
  int hostPortCount;               ///< room in hostPorts
  _PortCaps* hostPorts;            ///< 'host_ports/host_port'
  int devicePortCount;             ///< room in devicePorts
  _PortCaps* devicePorts;          ///< 'device_ports/device_port', read into the first entry only
  int swInterfaceCount;            ///< room in swInterfaces
  _InterfaceCaps* swInterfaces;    ///< 'software_interfaces/software_interface'
  int ocpLanguageCount;            ///< room in ocpLanguages
  _OCPLanguageCaps* ocpLanguages;  ///< 'ocp_languages/ocp_language'
  int imageSharpeningLevels;       ///< 'image_sharpening_levels', bits: 1 "off", 2 "normal",
                                   ///< 4 "high", 8 "low"; a reply adds bits and clears none
  _SecurityCaps security;          ///< 'security'
  int ramSize;                     ///< 'memory/ram'
  long flashSize;                  ///< 'memory/flash'
  int graphicFormatCount;          ///< room in graphicFormats
  int* graphicFormats;       ///< 'graphic_formats/graphic_format', codes of graphicsFormatToInt
  int fontCount;             ///< room in fonts
  _FontCaps* fonts;          ///< 'fonts/font'
  int templateCount;         ///< room in templates
  _TemplateCaps* templates;  ///< 'templates/template'
  int graphicCount;          ///< room in graphics
  _TemplateCaps* graphics;   ///< 'graphics/graphic'
  int printSystem;           ///< 'print_system', code of printerTypeToInt; not written
  int printType;             ///< 'print_type', 1 one-sided, 2 two-sided, 0 anything else
  bool atm;                  ///< 'media_path/atm'
  int magazineCapacity;      ///< 'media_path/magazine_capacity', cards
  int logicalPageLength;     ///< 'image/logical_page/length'
  int logicalPageWidth;      ///< 'image/logical_page/width'
  int physicalPageLength;    ///< 'image/physical_page/length'
  int physicalPageWidth;     ///< 'image/physical_page/width'
  int printResolution;       ///< 'image/print_resolution'
  int magEncoderType;        ///< 'mag_encoder', code of magHeadTypeToInt
  int magStripeLocation;     ///< 'mag_stripe', code of magStripeLocationToInt; not written
  _InternalEncoderInfo internalEncoder;  ///< 'internal_encoder'
  int barcodeCount;                      ///< room in barcodes
  _BarCodeCaps* barcodes;                ///< 'barcodes/barcode'
  bool laminatorPresent;                 ///< 'laminator', true for exactly "present"
  _laminatorType laminatorType;          ///< 'laminator_type'
};

}  // namespace Kovra

#endif
