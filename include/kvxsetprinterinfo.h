/// @file
/// The writer of a printer's identity.

#ifndef KVXSETPRINTERINFO_H
#define KVXSETPRINTERINFO_H

#include "kovra_base.h"
#include "kvxprinterrecords.h"

namespace Kovra {

/// What may be set of a printer's identity; bits that are not listed select nothing.
enum PrinterInfoField : int {
  fieldPrinterModel = 0x1,     ///< 'printer_model'
  fieldPrintheadSerial = 0x2,  ///< 'printhead_serial'
};

/// Composes the document that sets a printer's identity. The writer is itself the document: use one
/// object for each, and each object in one thread at a time. A second call of SetPrinterInfo adds a
/// second declaration and root behind the first.
class KOVRA_EXPORT KVXSetPrinterInfo : public TiXmlDocument {
 public:
  KVXSetPrinterInfo();
  ~KVXSetPrinterInfo() override;
  KVXSetPrinterInfo(KVXSetPrinterInfo const&) = delete;
  KVXSetPrinterInfo& operator=(KVXSetPrinterInfo const&) = delete;

  /// Composes a "printer_id" with the fields whose bits are set in @p fields, prints the document
  /// and stores it in @p out, at most @p outLen wide characters; a terminator only where there is
  /// room for it. 4096 hold any identity, whatever was added; convention 8 of kvxhelper.h says how
  /// one that was cut is seen. The result is that of saveJob.
  bool SetPrinterInfo(KVPrinterInfo const& info, wchar_t* out, int outLen, long fields);

  /// Adds the fields to @p root. True when no field is selected, otherwise whether the last one
  /// could be added.
  bool addPrinterInfo(TiXmlElement* root, KVPrinterInfo const& info, long fields);

  /// Adds every element that is written at all: not the firmware versions of the laminator, of its
  /// board, and of the HCB and MAB boards. Always true.
  bool addPrinterInfo(TiXmlElement* root, KVPrinterInfo const& info);

  /// Leaves a debugging copy at "/tmp/printidsettings" (when it is skipped, convention 6 of
  /// kvxhelper.h says), then prints the document; false for a null @p out, or when printing fails.
  bool saveJob(wchar_t* out, int outLen);
  /// Saves the document to a file; false for a null path, or when saving fails.
  bool saveJob(char* path);

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool saveJob(Text const& path) {
    return saveJob(detail::borrowed(path));
  }
  /// @}

 private:
  TiXmlElement* root_;
};

}  // namespace Kovra

#endif
