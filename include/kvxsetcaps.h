/// @file
/// The writer of a printer's capabilities.

#ifndef KVXSETCAPS_H
#define KVXSETCAPS_H

#include "kovra_base.h"
#include "kvxcapsrecords.h"
#include "kvxhelper.h"

namespace Kovra {

/// Composes a capabilities document from a record. The writer is itself the document, and it is
/// never cleared: a further call appends a further declaration and root, so a host takes a fresh
/// writer for each document. One writer is used by one thread at a time.
///
/// What is written is not what KVXCapsParser reads; hosts rely on each of the differences, which
/// the operations name.
///
/// The operations that add elements (add...) take the element into which theirs is added.
/// Their result is whether the last tag below that could be added; false for a null one. A list
/// adds its own element before it looks at the count: with a count below 1, or a null array, that
/// stays empty, and the result is false.
class KOVRA_EXPORT KVXSetCaps : public TiXmlDocument {
 public:
  TiXmlElement* root = nullptr;  ///< the root that SetCapabilities made last; owned by the document
  bool directToCard = false;     ///< the last argument of SetCapabilities; says "print_system"

  KVXSetCaps() = default;
  KVXSetCaps(KVXSetCaps const&) = delete;
  KVXSetCaps& operator=(KVXSetCaps const&) = delete;

  /// Links a declaration and a root "capabilities", adds what @p mode says (see addCapabilities),
  /// and returns saveJob(out, outLen), whatever was added. 4096 wide characters, 1024 for each
  /// entry of a list and 28672 for each template and graphic hold any document; convention 8 of
  /// kvxhelper.h says how one that was cut is seen.
  bool SetCapabilities(_Capabilities const& caps, wchar_t* out, int outLen, int mode,
                       bool directToCard);

  /// Prints the document with an indent of four blanks and converts it into @p out, at most
  /// @p outLen wide characters; the terminator is written only where there is room for it. False,
  /// with nothing written, for a null @p out. No debugging copy is left.
  bool saveJob(wchar_t* out, int outLen);

  /// Saves the document to a file; false for a null path or when it cannot be saved.
  bool saveJob(char* path);

  /// Mode 0 adds the whole description; the result is that of the barcodes. Mode 1 adds only
  /// "mag_encoder", mode 2 only what addInternalEncoderOnly adds. Any other mode adds nothing and
  /// gives false.
  bool addCapabilities(TiXmlElement* into, _Capabilities const& caps, int mode);

  /// @name Lists
  /// @{
  bool addHostPorts(TiXmlElement* into, _PortCaps const* ports, int count);
  /// All ports are written, though a reader keeps only one.
  bool addDevicePorts(TiXmlElement* into, _PortCaps const* ports, int count);
  /// Adds the ports themselves, each as an element @p itemTag, without a list around them.
  bool addPorts(TiXmlElement* list, _PortCaps const* ports, int count, char* itemTag);
  bool addSWInterfaces(TiXmlElement* into, _InterfaceCaps const* interfaces, int count);
  bool addOcpLanguages(TiXmlElement* into, _OCPLanguageCaps const* languages, int count);
  bool addGraphicFormatsCaps(TiXmlElement* into, int const* formats, int count);
  /// Deliberately whether a font is scalable is written under a second "name". A style other than
  /// 1, 2 and 3 is "none".
  bool addFontsCaps(TiXmlElement* into, _FontCaps const* fonts, int count);
  /// Deliberately without locations.
  bool addTemplateCaps(TiXmlElement* into, _TemplateCaps const* templates, int count);
  bool addGraphicsCaps(TiXmlElement* into, _TemplateCaps const* graphics, int count);
  bool addBarCodes(TiXmlElement* into, _BarCodeCaps const* barcodes, int count);
  /// @}

  /// @name Groups
  /// @{
  /// Adds one "image_sharpening_level" for each of the bits 1, 2, 4 and 8, in this order. The
  /// result is that of the last one; false when there was none.
  bool addImageSharpeningLevels(TiXmlElement* into, int levels);
  bool addSecurityCaps(TiXmlElement* into, _SecurityCaps const& security);
  bool addMemoryCaps(TiXmlElement* into, _Capabilities const& caps);
  bool addMediaPathCaps(TiXmlElement* into, _Capabilities const& caps);
  bool addImageCaps(TiXmlElement* into, _Capabilities const& caps);
  /// Deliberately both "comms_channel" and "contactless_encoder" are made from the record's
  /// `contactless_encoder`; its `comms_channel` is not looked at.
  bool addInternalEncoder(TiXmlElement* into, _InternalEncoderInfo const& encoder);
  /// Adds "contact_station" when the encoder has one; then, when any of channel, contact encoding
  /// and contactless encoder is set, "internal_encoder", which stays empty when it is the channel
  /// alone. Otherwise it holds a "comms_channel" that is always "usb_2_0", and the encoders that
  /// are set. The result is that of the last tag added, an empty "internal_encoder" among them;
  /// false when there was none.
  bool addInternalEncoderOnly(TiXmlElement* into, _InternalEncoderInfo const& encoder);
  /// @}

  /// @name Codes as the printer's keywords
  /// Each writes the keyword and a terminator into a buffer of the host, which has 32 characters;
  /// what stands behind is left alone. A code without a keyword gives an empty text and false,
  /// unless the operation says otherwise. A null buffer gives false.
  /// @{

  /// 0 "usb_2_0", 1 "serial", 2 "ethernet_10_100", 3 "ethernet_10_100_1G". Deliberately 4 has none,
  /// though the reader knows it.
  bool portTypeToString(char* buf, int code);
  /// 0 "snmp", 1 "snmp_trap", 2 "http", 3 "kovra".
  bool protocolToString(char* buf, int code);
  /// 0 "udp", 1 "tcp", 2 "usb", 3 "usb_2_0".
  bool transportToString(char* buf, int code);
  /// 1 "aes", 2 "3des"; any other "none", with the result false.
  bool encAlgToString(char* buf, int code);
  /// 1 "bmp", 2 "jpeg", 8 "tga", 9 "tiff", 10 "raw".
  bool graphicFormatToString(char* buf, int code);
  /// Whatever the code, "direct_to_card" when `directToCard` is set, else "retransfer". Always
  /// true.
  bool printSystemTypeToString(char* buf, int code);
  /// 1 "1_side", 2 "2_side". Deliberately the result is true only for 1.
  bool printTypeToString(char* buf, int code);
  /// 0 "notpresent", any other "present". Always true.
  bool LaminatorToString(char* buf, char code);
  /// 0 "none", 1 "1_side", 2 "2_side". Always true.
  bool LamTypeToString(char* buf, _laminatorType code);
  /// 0 "none", 1 "iso", 2 "aamva", 3 "custom", 4 "binary". Deliberately 5 has none, though the
  /// reader knows it.
  bool MagHeadTypeToString(char* buf, int code);
  /// 0 "back", 1 "front".
  bool magStripeLocationToString(char* buf, int code);
  /// 1 "serial", 2 "usb_2_0", at most bufLen - 1 characters of it. Always true, also for an empty
  /// text and for a null buffer.
  bool CommsChannelFromInt(int code, char* buf, int bufLen);
  /// 1 "mifare", in the same way.
  bool ContactlessEncFromInt(int code, char* buf, int bufLen);
  /// 0 "dye_sub", 1 "resin". This and the next two are in no document of this writer.
  bool ribbonTypeToString(char* buf, int code);
  /// 0 "composite", 1 "pvc".
  bool feederTypeToString(char* buf, int code);
  /// 0 "contact", 1 "iclass", 2 "mifare", 3 "prox", 4 "uhf", 5 "legic".
  bool feederSmartToString(char* buf, int code);
  /// @}

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool saveJob(Text const& path) {
    return saveJob(detail::borrowed(path));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  bool addPorts(TiXmlElement* list, _PortCaps const* ports, int count, Text const& itemTag) {
    return addPorts(list, ports, count, detail::borrowed(itemTag));
  }
  /// @}
};

}  // namespace Kovra

#endif
