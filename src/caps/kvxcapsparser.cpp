#include "kvxcapsparser.h"

#include <algorithm>

#include "caps/caps_tables.hpp"
#include "frame/message.hpp"

namespace Kovra {

namespace {

using namespace caps;

bool readHostList(TiXmlElement const* element, List const& list, _Capabilities& caps) {
  if (element == nullptr) return false;
  HostTree const tree(element);
  return readList(list, tree.root(), caps, Watch());
}

/// The most bytes of a reply that are read, without the terminator.
constexpr int mostBytes = 65531;

}  // namespace

KVXCapsParser::KVXCapsParser() = default;
KVXCapsParser::~KVXCapsParser() = default;

bool KVXCapsParser::GetCapabilities(wchar_t const& text, int len, _Capabilities& caps) {
  // Hosts look at the record alone: the result is false whatever happened.
  static_cast<void>(
      readReplyBy<CapabilitiesReading>(text, std::min(len, mostBytes), capabilitiesRoots, caps));
  return false;
}

bool KVXCapsParser::parseCapabilities(TiXmlElement* root, _Capabilities& caps) {
  return readHost<CapabilitiesReading>(root, caps);
}

// Lists.

bool KVXCapsParser::getHostPorts(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, hostPortList, caps);
}

bool KVXCapsParser::getDevicePorts(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, devicePortList, caps);
}

bool KVXCapsParser::getSwInterfaces(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, interfaceList, caps);
}

bool KVXCapsParser::getOCPLanguages(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, languageList, caps);
}

bool KVXCapsParser::getGraphicFormatCaps(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, graphicFormatList, caps);
}

bool KVXCapsParser::getFontsCaps(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, fontList, caps);
}

bool KVXCapsParser::getTemplates(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, templateList, caps);
}

bool KVXCapsParser::getGraphics(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, graphicList, caps);
}

bool KVXCapsParser::getBarCodes(TiXmlElement* list, _Capabilities& caps) {
  return readHostList(list, barCodeList, caps);
}

// Items.

bool KVXCapsParser::getHostPort(TiXmlElement* element, _PortCaps& out) {
  return walk(element, port, out);
}

bool KVXCapsParser::getSwInterface(TiXmlElement* element, _InterfaceCaps& out) {
  return walk(element, softwareInterface, out);
}

bool KVXCapsParser::getOCPLanguage(TiXmlElement* element, _OCPLanguageCaps& out) {
  return walk(element, shared::language, out);
}

bool KVXCapsParser::getFontCaps(TiXmlElement* element, _FontCaps& out) {
  return walk(element, font, out);
}

bool KVXCapsParser::getTemplate(TiXmlElement* element, _TemplateCaps& out) {
  return walk(element, stored, out);
}

bool KVXCapsParser::getSecurityCaps(TiXmlElement* element, _SecurityCaps& out) {
  return walk(element, security, out);
}

bool KVXCapsParser::getInternalEncoderInfo(TiXmlElement* element, _InternalEncoderInfo& out) {
  return walk(element, internalEncoder, out);
}

// Groups.

bool KVXCapsParser::getImageSharpeningLevels(TiXmlElement* levels, _Capabilities& caps) {
  return readHost<SharpeningLevels>(levels, caps);
}

bool KVXCapsParser::getMemoryCaps(TiXmlElement* element, _Capabilities& caps) {
  return walk(element, memory, caps);
}

bool KVXCapsParser::getMediaPath(TiXmlElement* path, _Capabilities& caps) {
  return walk(path, mediaPath, caps);
}

bool KVXCapsParser::getImageCaps(TiXmlElement* element, _Capabilities& caps) {
  return walk(element, image, caps);
}

bool KVXCapsParser::getLogicalPage(TiXmlElement* page, _Capabilities& caps) {
  return walk(page, logicalPage, caps);
}

bool KVXCapsParser::getPhysicalPage(TiXmlElement* page, _Capabilities& caps) {
  return walk(page, physicalPage, caps);
}

bool KVXCapsParser::getPrintSystem(TiXmlElement* system, _Capabilities& caps) {
  return readHostMember<&_Capabilities::printSystem, printSystemRow>(system, caps.printSystem);
}

bool KVXCapsParser::getPrintType(TiXmlElement* type, _Capabilities& caps) {
  return readHostMember<&_Capabilities::printType, printTypeRow>(type, caps.printType);
}

bool KVXCapsParser::getLaminator(TiXmlElement* laminator, _Capabilities& caps) {
  return readHostMember<&_Capabilities::laminatorPresent, laminatorRow>(laminator,
                                                                        caps.laminatorPresent);
}

bool KVXCapsParser::getLaminatorType(TiXmlElement* type, _Capabilities& caps) {
  return readHostMember<&_Capabilities::laminatorType, laminatorTypeRow>(type, caps.laminatorType);
}

// Keywords.

int KVXCapsParser::portTypeToInt(char* keyword) {
  return portTypes.codeOf(keyword);
}
int KVXCapsParser::protocolToInt(char* keyword) {
  return protocols.codeOf(keyword);
}
int KVXCapsParser::transportToInt(char* keyword) {
  return transports.codeOf(keyword);
}
int KVXCapsParser::encAlgToInt(char* keyword) {
  return encryptions.codeOf(keyword);
}
int KVXCapsParser::graphicsFormatToInt(char* keyword) {
  return caps::graphicFormats.codeOf(keyword);
}
int KVXCapsParser::printerTypeToInt(char* keyword) {
  return printSystems.codeOf(keyword);
}
int KVXCapsParser::magHeadTypeToInt(char* keyword) {
  return magHeads.codeOf(keyword);
}
int KVXCapsParser::magStripeLocationToInt(char* keyword) {
  return magStripes.codeOf(keyword);
}
int KVXCapsParser::laminationTypeToInt(char* keyword) {
  return laminationTypes.codeOf(keyword);
}

}  // namespace Kovra
