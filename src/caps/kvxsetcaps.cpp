#include "kvxsetcaps.h"

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
  return copyWord(buf, room, words.wordOrEmpty(code)) && !words.wordOf(code).empty();
}

/// The class has no function of its own that would bring its virtual table along, and yet the
/// library has always had one.
[[gnu::used]] TiXmlDocument* bringTable() {
  return new KVXSetCaps;
}

bool addRow(TiXmlElement* parent, Field<_Capabilities> const& row, _Capabilities const& caps) {
  if (parent == nullptr) return false;
  TreeSink sink(*parent);
  return row.write(sink, caps, 0, false);
}

bool addList(TiXmlElement* parent, List const& list, void const* entries, int count) {
  if (parent == nullptr) return false;
  TreeSink sink(*parent);
  return writeList(list, sink, entries, count, 0);
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
  TreeSink sink(*into);
  return writeCapabilities(sink, caps, mode, directToCard);
}

// Lists.

bool KVXSetCaps::addHostPorts(TiXmlElement* into, _PortCaps const* ports, int count) {
  return addList(into, hostPortList, ports, count);
}

bool KVXSetCaps::addDevicePorts(TiXmlElement* into, _PortCaps const* ports, int count) {
  return addList(into, devicePortList, ports, count);
}

bool KVXSetCaps::addPorts(TiXmlElement* list, _PortCaps const* ports, int count, char* itemTag) {
  if (list == nullptr || itemTag == nullptr) return false;
  TreeSink sink(*list);
  return writeEntries(sink, entries<port>(itemTag), ports, count, 0);
}

bool KVXSetCaps::addSWInterfaces(TiXmlElement* into, _InterfaceCaps const* interfaces, int count) {
  return addList(into, interfaceList, interfaces, count);
}

bool KVXSetCaps::addOcpLanguages(TiXmlElement* into, _OCPLanguageCaps const* languages, int count) {
  return addList(into, languageList, languages, count);
}

bool KVXSetCaps::addGraphicFormatsCaps(TiXmlElement* into, int const* formats, int count) {
  return addList(into, graphicFormatList, formats, count);
}

bool KVXSetCaps::addFontsCaps(TiXmlElement* into, _FontCaps const* fonts, int count) {
  return addList(into, fontList, fonts, count);
}

bool KVXSetCaps::addTemplateCaps(TiXmlElement* into, _TemplateCaps const* templates, int count) {
  return addList(into, templateList, templates, count);
}

bool KVXSetCaps::addGraphicsCaps(TiXmlElement* into, _TemplateCaps const* graphics, int count) {
  return addList(into, graphicList, graphics, count);
}

bool KVXSetCaps::addBarCodes(TiXmlElement* into, _BarCodeCaps const* barcodes, int count) {
  return addList(into, barCodeList, barcodes, count);
}

// Groups.

bool KVXSetCaps::addImageSharpeningLevels(TiXmlElement* into, int levels) {
  if (into == nullptr) return false;
  TreeSink sink(*into);
  return SharpeningLevels::write(sink, levels);
}

bool KVXSetCaps::addSecurityCaps(TiXmlElement* into, _SecurityCaps const& record) {
  return into != nullptr && writeBelow(*into, securityName, security, record, 0);
}

bool KVXSetCaps::addMemoryCaps(TiXmlElement* into, _Capabilities const& caps) {
  return addRow(into, memoryRow, caps);
}

bool KVXSetCaps::addMediaPathCaps(TiXmlElement* into, _Capabilities const& caps) {
  return addRow(into, mediaPathRow, caps);
}

bool KVXSetCaps::addImageCaps(TiXmlElement* into, _Capabilities const& caps) {
  return addRow(into, imageRow, caps);
}

bool KVXSetCaps::addInternalEncoder(TiXmlElement* into, _InternalEncoderInfo const& encoder) {
  return into != nullptr && writeBelow(*into, internalEncoderName, internalEncoder, encoder, 0);
}

bool KVXSetCaps::addInternalEncoderOnly(TiXmlElement* into, _InternalEncoderInfo const& encoder) {
  if (into == nullptr) return false;
  TreeSink sink(*into);
  return writeEncoderAlone(sink, encoder);
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
