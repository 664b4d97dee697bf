/// @file
/// The reader of a printer's capabilities.

#ifndef KVXCAPSPARSER_H
#define KVXCAPSPARSER_H

#include "kovra_base.h"
#include "kvxcapsrecords.h"
#include "kvxhelper.h"

namespace Kovra {

/// Reads what a printer can do into a record. It holds no state: any number of threads may read
/// different records at once.
///
/// A reading fills what the reply names and leaves the rest alone, so the host clears the record,
/// and then sets arrays and counts: see _Capabilities for how the two of them work together.
///
/// The readers of elements visit the children in order, read those that they know, by exact name,
/// and skip the others. Their result is whether the last known child could be read: false after an
/// empty one, though earlier members were filled, and false when there was none, or for a null
/// element. An empty element leaves its member, unless that is a keyword or a flag ("scalable",
/// "passkey_protection", "atm", "contact_encoding"): those are stored as for an unknown word. An
/// empty sharpening level adds nothing.
class KOVRA_EXPORT KVXCapsParser {
 public:
  KVXCapsParser();
  ~KVXCapsParser();

  /// Reads the capabilities, root "capabilities" or else "get_capabilities", with
  /// parseCapabilities. @p text is the reply's first character and @p len its length in characters,
  /// which is also the most bytes that its narrow form may have in the process's character set
  /// (LC_CTYPE); at most 65531 bytes are read of any reply. A longer text is cut, and a cut one is
  /// refused. A host whose text is terminated passes `reply.size() * MB_CUR_MAX`, and calls
  /// setlocale(LC_CTYPE, ""), not LC_ALL, which may make the points in numbers commas.
  ///
  /// Deliberately the result is always false, also after a complete reading: the record alone tells
  /// what was read. It is untouched for a length below 1, for a text that is not well-formed or
  /// that could harm the parser (elements nested deeper than 128, more than 256 attributes on one
  /// element), and for another root.
  bool GetCapabilities(wchar_t const& text, int len, _Capabilities& caps);

  /// Reads the children of the root. Where the reply repeats a list, each is measured with the room
  /// that its array had when this operation was called; the count is raised to what the longest of
  /// those that do not fit needs.
  bool parseCapabilities(TiXmlElement* root, _Capabilities& caps);

  /// @name Lists
  /// Each counts all children of the list, whatever their names. When those are more than the array
  /// has room for, nothing is stored, their number goes into the count, and the result is true.
  /// Otherwise the children of the list's own name are read into the array from its first entry on,
  /// and the count stays; the result is that of the last of them. An empty list gives false.
  /// @{
  bool getHostPorts(TiXmlElement* list, _Capabilities& caps);
  /// Deliberately every port is read into the first entry of the array: the last one stays.
  bool getDevicePorts(TiXmlElement* list, _Capabilities& caps);
  bool getSwInterfaces(TiXmlElement* list, _Capabilities& caps);
  bool getOCPLanguages(TiXmlElement* list, _Capabilities& caps);
  bool getGraphicFormatCaps(TiXmlElement* list, _Capabilities& caps);
  bool getFontsCaps(TiXmlElement* list, _Capabilities& caps);
  bool getTemplates(TiXmlElement* list, _Capabilities& caps);
  bool getGraphics(TiXmlElement* list, _Capabilities& caps);
  bool getBarCodes(TiXmlElement* list, _Capabilities& caps);
  /// @}

  /// @name Items
  /// @{
  /// Also for device ports.
  bool getHostPort(TiXmlElement* port, _PortCaps& out);
  bool getSwInterface(TiXmlElement* interface, _InterfaceCaps& out);
  bool getOCPLanguage(TiXmlElement* language, _OCPLanguageCaps& out);
  bool getFontCaps(TiXmlElement* font, _FontCaps& out);
  /// Also for graphics.
  bool getTemplate(TiXmlElement* stored, _TemplateCaps& out);
  bool getSecurityCaps(TiXmlElement* security, _SecurityCaps& out);
  /// Reads "comms_channel", "contact_encoding" and "contactless_encoder"; the record's other
  /// members stay.
  bool getInternalEncoderInfo(TiXmlElement* encoder, _InternalEncoderInfo& out);
  /// @}

  /// @name Groups
  /// @{
  /// Adds the bit of every child "image_sharpening_level" whose text is "off", "normal", "high" or
  /// "low"; other texts add nothing and count as read. No bit is ever cleared.
  bool getImageSharpeningLevels(TiXmlElement* levels, _Capabilities& caps);
  bool getMemoryCaps(TiXmlElement* memory, _Capabilities& caps);
  bool getMediaPath(TiXmlElement* path, _Capabilities& caps);
  bool getImageCaps(TiXmlElement* image, _Capabilities& caps);
  bool getLogicalPage(TiXmlElement* page, _Capabilities& caps);
  bool getPhysicalPage(TiXmlElement* page, _Capabilities& caps);
  /// @}

  /// @name Keywords of the record itself
  /// Each reads the text of the element that it is given; false when that is null, or empty, which
  /// stores what an unknown word does.
  /// @{
  bool getPrintSystem(TiXmlElement* system, _Capabilities& caps);
  bool getPrintType(TiXmlElement* type, _Capabilities& caps);
  bool getLaminator(TiXmlElement* laminator, _Capabilities& caps);
  bool getLaminatorType(TiXmlElement* type, _Capabilities& caps);
  /// @}

  /// @name The printer's keywords as codes
  /// Unknown words, and a null pointer, give the code named. Case counts. Each has an overload for
  /// texts that can only be read, so a pointer to one needs its type:
  /// `int (KVXCapsParser::*convert)(char*) = &KVXCapsParser::protocolToInt;`
  /// @{

  /// 0 "usb_2_0", 1 "serial", 2 "ethernet_10_100", 3 "ethernet_10_100_1G", 4 "wifi_enet_802_11g";
  /// unknown gives -1.
  int portTypeToInt(char* keyword);
  /// 0 "snmp", 1 "snmp_trap", 2 "http", 3 "kovra"; unknown gives -1.
  int protocolToInt(char* keyword);
  /// 0 "udp", 1 "tcp", 2 "usb", 3 "usb_2_0"; unknown gives -1.
  int transportToInt(char* keyword);
  /// 1 "aes", 2 "3des"; unknown gives -1.
  int encAlgToInt(char* keyword);
  /// 1 "bmp", 2 "jpeg", 8 "tga", 9 "tiff", 10 "raw"; unknown gives -1.
  int graphicsFormatToInt(char* keyword);
  /// 0 "direct", 1 "retransfer"; unknown gives -1, also the "direct_to_card" that is written.
  int printerTypeToInt(char* keyword);
  /// 0 "none", 1 "iso", 2 "aamva", 3 "custom", 4 "binary", 5 "jis"; unknown gives -1.
  int magHeadTypeToInt(char* keyword);
  /// 0 "back", 1 "front"; unknown gives -1.
  int magStripeLocationToInt(char* keyword);
  /// 1 "1_side", 2 "2_side"; unknown gives 0.
  int laminationTypeToInt(char* keyword);
  /// @}

  /// @name The same operations on texts that can only be read
  /// @{
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int portTypeToInt(Text const& keyword) {
    return portTypeToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int protocolToInt(Text const& keyword) {
    return protocolToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int transportToInt(Text const& keyword) {
    return transportToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int encAlgToInt(Text const& keyword) {
    return encAlgToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int graphicsFormatToInt(Text const& keyword) {
    return graphicsFormatToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int printerTypeToInt(Text const& keyword) {
    return printerTypeToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int magHeadTypeToInt(Text const& keyword) {
    return magHeadTypeToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int magStripeLocationToInt(Text const& keyword) {
    return magStripeLocationToInt(detail::borrowed(keyword));
  }
  template <class Text, detail::ReadOnlyText<Text> = 0>
  int laminationTypeToInt(Text const& keyword) {
    return laminationTypeToInt(detail::borrowed(keyword));
  }
  /// @}
};

}  // namespace Kovra

#endif
