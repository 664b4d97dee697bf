#include "kvxsetcaps.h"

#include <limits>

#include "caps/caps_tables.hpp"
#include "frame/output.hpp"
#include "frame/text.hpp"

namespace Kovra {

namespace {

using namespace caps;

/// The host's buffer for a keyword, by agreement.
constexpr int wordRoom = 32;

/// Copies a text as far as it fits; an empty one for null.
bool copyWord(char* buf, int room, char const* word) {
  return buf != nullptr && copyBounded(word, buf, room);
}

/// Writes the word of a code, or an empty text; false when there is none.
bool putWord(Vocabulary const& words, int code, char* buf, int room = wordRoom) {
  std::string_view const word = words.wordOf(code);
  return copyWord(buf, room, word.empty() ? "" : word.data()) && !word.empty();
}

Circumstances circumstancesOf(_Capabilities const& caps, bool direct) {
  return (direct ? Circumstances{caps::directToCard} : 0) |
         (caps.laminatorPresent ? Circumstances{hasLaminator} : 0);
}

Circumstances circumstancesOf(_InternalEncoderInfo const& encoder) {
  return (encoder.contact_encoding ? Circumstances{hasContact} : 0) |
         (encoder.contactless_encoder != 0 ? Circumstances{hasContactless} : 0);
}

template <class Record>
bool writeRow(TiXmlElement* parent, Field<Record> const& row, Record const& record) {
  return parent != nullptr && row.write(*parent, record, 0, false);
}

template <class List>
bool writeList(TiXmlElement* parent, typename List::Entry const* entries, int count) {
  return parent != nullptr && List::write(*parent, entries, count, 0);
}

}  // namespace

bool KVXSetCaps::SetCapabilities(_Capabilities const& caps, wchar_t* out, int outLen, int mode,
                                 bool direct) {
  directToCard = direct;
  root = beginDocument(*this, capabilitiesRoots[0]);
  addCapabilities(root, caps, mode);  // whatever it added is printed
  return saveJob(out, outLen);
}

bool KVXSetCaps::saveJob(wchar_t* out, int outLen) {
  return printWide(*this, out, outLen);
}

bool KVXSetCaps::saveJob(char* path) {
  return saveTo(*this, path);
}

bool KVXSetCaps::addCapabilities(TiXmlElement* into, _Capabilities const& caps, int mode) {
  if (into == nullptr) return false;
  switch (mode) {
    case 0:
      return writeAll(*into, capabilities, caps, circumstancesOf(caps, directToCard), false);
    case 1:
      return writeRow(into, magEncoderRow, caps);
    case 2:
      return addInternalEncoderOnly(into, caps.internalEncoder);
    default:
      return false;
  }
}

// Lists.

bool KVXSetCaps::addHostPorts(TiXmlElement* into, _PortCaps const* ports, int count) {
  return writeList<HostPorts>(into, ports, count);
}

bool KVXSetCaps::addDevicePorts(TiXmlElement* into, _PortCaps const* ports, int count) {
  return writeList<DevicePorts>(into, ports, count);
}

bool KVXSetCaps::addPorts(TiXmlElement* list, _PortCaps const* ports, int count, char* itemTag) {
  return list != nullptr && itemTag != nullptr &&
         writeEntries<RecordEntry<port>>(*list, itemTag, ports, count, 0);
}

bool KVXSetCaps::addSWInterfaces(TiXmlElement* into, _InterfaceCaps const* interfaces, int count) {
  return writeList<SoftwareInterfaces>(into, interfaces, count);
}

bool KVXSetCaps::addOcpLanguages(TiXmlElement* into, _OCPLanguageCaps const* languages, int count) {
  return writeList<Languages>(into, languages, count);
}

bool KVXSetCaps::addGraphicFormatsCaps(TiXmlElement* into, int const* formats, int count) {
  return writeList<GraphicFormats>(into, formats, count);
}

bool KVXSetCaps::addFontsCaps(TiXmlElement* into, _FontCaps const* fonts, int count) {
  return writeList<Fonts>(into, fonts, count);
}

bool KVXSetCaps::addTemplateCaps(TiXmlElement* into, _TemplateCaps const* templates, int count) {
  return writeList<Templates>(into, templates, count);
}

bool KVXSetCaps::addGraphicsCaps(TiXmlElement* into, _TemplateCaps const* graphics, int count) {
  return writeList<Graphics>(into, graphics, count);
}

bool KVXSetCaps::addBarCodes(TiXmlElement* into, _BarCodeCaps const* barcodes, int count) {
  return writeList<BarCodes>(into, barcodes, count);
}

// Groups.

bool KVXSetCaps::addImageSharpeningLevels(TiXmlElement* into, int levels) {
  return into != nullptr && SharpeningLevels::write(*into, levels);
}

bool KVXSetCaps::addSecurityCaps(TiXmlElement* into, _SecurityCaps const& record) {
  return into != nullptr && writeBelow(*into, securityName, security, record, 0);
}

bool KVXSetCaps::addMemoryCaps(TiXmlElement* into, _Capabilities const& caps) {
  return writeRow(into, memoryRow, caps);
}

bool KVXSetCaps::addMediaPathCaps(TiXmlElement* into, _Capabilities const& caps) {
  return writeRow(into, mediaPathRow, caps);
}

bool KVXSetCaps::addImageCaps(TiXmlElement* into, _Capabilities const& caps) {
  return writeRow(into, imageRow, caps);
}

bool KVXSetCaps::addInternalEncoder(TiXmlElement* into, _InternalEncoderInfo const& encoder) {
  return into != nullptr && writeBelow(*into, internalEncoderName, internalEncoder, encoder, 0);
}

bool KVXSetCaps::addInternalEncoderOnly(TiXmlElement* into, _InternalEncoderInfo const& encoder) {
  bool result = false;
  if (encoder.contact_station) result = writeRow(into, contactStationRow, encoder);
  Circumstances const encoders = circumstancesOf(encoder);
  if (encoders == 0 && encoder.comms_channel == 0) return result;
  TiXmlElement* const element = KVXHelper::AddTag(into, internalEncoderName);
  if (element == nullptr) return false;
  if (encoders == 0) return true;  // a channel alone leaves the element empty: meant
  return writeAll(*element, internalEncoderAlone, encoder, encoders, false);
}

// Codes as keywords.

bool KVXSetCaps::portTypeToString(char* buf, int code) {
  return putWord(writtenPortTypes, code, buf);
}

bool KVXSetCaps::protocolToString(char* buf, int code) {
  return putWord(protocols, code, buf);
}

bool KVXSetCaps::transportToString(char* buf, int code) {
  return putWord(transports, code, buf);
}

bool KVXSetCaps::encAlgToString(char* buf, int code) {
  if (putWord(properEncryptions, code, buf)) return true;
  copyWord(buf, wordRoom, encryptions.wordOf(encryptions.unknown).data());
  return false;
}

bool KVXSetCaps::graphicFormatToString(char* buf, int code) {
  return putWord(caps::graphicFormats, code, buf);
}

bool KVXSetCaps::printSystemTypeToString(char* buf, int) {
  return copyWord(buf, wordRoom, printSystemWord(directToCard));
}

bool KVXSetCaps::printTypeToString(char* buf, int code) {
  // Both words are written, but only one of them counts as a success: hosts rely on it.
  return putWord(laminationTypes, code, buf) && code == 1;
}

bool KVXSetCaps::LaminatorToString(char* buf, char code) {
  return copyWord(buf, wordRoom, laminatorWord(code != 0));
}

bool KVXSetCaps::LamTypeToString(char* buf, _laminatorType code) {
  putWord(laminatorTypes, code, buf);
  return buf != nullptr;
}

bool KVXSetCaps::MagHeadTypeToString(char* buf, int code) {
  return putWord(writtenMagHeads, code, buf);
}

bool KVXSetCaps::magStripeLocationToString(char* buf, int code) {
  return putWord(magStripes, code, buf);
}

bool KVXSetCaps::CommsChannelFromInt(int code, char* buf, int bufLen) {
  putWord(writtenCommsChannels, code, buf, bufLen);
  return true;
}

bool KVXSetCaps::ContactlessEncFromInt(int code, char* buf, int bufLen) {
  putWord(writtenContactlessEncoders, code, buf, bufLen);
  return true;
}

bool KVXSetCaps::ribbonTypeToString(char* buf, int code) {
  return putWord(writableRibbonTypes, code, buf);
}

bool KVXSetCaps::feederTypeToString(char* buf, int code) {
  return putWord(feederTypes, code, buf);
}

bool KVXSetCaps::feederSmartToString(char* buf, int code) {
  return putWord(feederSmarts, code, buf);
}

}  // namespace Kovra
