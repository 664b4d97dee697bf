// What a host may write without a cast and without a warning: null wherever it has a meaning, alone
// and beside literals, in every language that hosts use. Compiled once with NOTHING as NULL and
// once as nullptr; the program tells where an operation does not do what its header says.

#include <cstdio>
#include <cstring>
#include <string>

#include "kvxcapsparser.h"
#include "kvxconfigparser.h"
#include "kvxdevicecontrol.h"
#include "kvxgetein.h"
#include "kvxhelper.h"
#include "kvxlogparser.h"
#include "kvxmediaparser.h"
#include "kvxndc.h"
#include "kvxprinteridparser.h"
#include "kvxsecactionparser.h"
#include "kvxsensorparser.h"
#include "kvxsetcaps.h"
#include "kvxsetconfig.h"
#include "kvxsetmedia.h"
#include "kvxsetprinterinfo.h"
#include "kvxsetsecactions.h"
#include "kvxstatusparser.h"

#ifndef NOTHING
#define NOTHING NULL
#endif

namespace {

int failures = 0;

void expect(bool holds, char const* what, int line) {
  if (holds) return;
  std::fprintf(stderr, "line %d: not so: %s\n", line, what);
  ++failures;
}

#define EXPECT(condition) expect((condition), #condition, __LINE__)

static_assert(!Kovra::detail::IsTextOrNull<long&>::value, "a number in a variable is no text");
static_assert(!Kovra::detail::IsTextOrNull<int>::value, "a number is no text");

/// The forms of a text beside null, apart from literals.
char writable[] = "w";
char* const variable = writable;
char const* const constant = "c";

// KVXHelper.

void readSingleValues() {
  TiXmlElement element("e");
  TiXmlElement* const el = &element;
  element.SetAttribute("a", "1");
  char text[4] = "old";
  char flag = 7;
  int whole = 7;
  unsigned short narrow = 7;
  float real = 7;
  unsigned long address = 7;
  unsigned char bytes[6] = {7, 7, 7, 7, 7, 7};

  EXPECT(!KVXHelper::GetString(el, NOTHING, text, 4));
  EXPECT(!KVXHelper::GetString(NOTHING, "a", text, 4));
  EXPECT(!KVXHelper::GetString(NOTHING, NOTHING, text, 4));
  EXPECT(!KVXHelper::GetString(el, "a", NOTHING, 4));
  EXPECT(!KVXHelper::GetString(el, variable, NOTHING, 4));
  EXPECT(!KVXHelper::GetString(el, NOTHING, NOTHING, 4));
  EXPECT(!KVXHelper::GetNumberFromAttr(el, NOTHING, whole));
  EXPECT(!KVXHelper::GetNumberFromAttr(NOTHING, "a", whole));
  EXPECT(!KVXHelper::GetNumberFromAttr(el, NOTHING, real));
  EXPECT(!KVXHelper::GetNumberFromAttr(NOTHING, "a", real));
  EXPECT(!KVXHelper::GetInt(el, NOTHING, whole));
  EXPECT(!KVXHelper::GetInt(NOTHING, "a", whole));
  EXPECT(!KVXHelper::GetShort(el, NOTHING, narrow));
  EXPECT(!KVXHelper::GetShort(NOTHING, "a", narrow));
  EXPECT(!KVXHelper::GetBool(el, NOTHING, flag));
  EXPECT(!KVXHelper::GetBool(NOTHING, "a", flag));
  EXPECT(!KVXHelper::GetIP(el, NOTHING, address));
  EXPECT(!KVXHelper::GetIP(NOTHING, "a", address));
  EXPECT(!KVXHelper::GetString(NOTHING, text[0], 4));
  EXPECT(!KVXHelper::GetBool(NOTHING, flag));
  EXPECT(!KVXHelper::GetNumber(NOTHING, whole, false));
  EXPECT(!KVXHelper::GetNumber(NOTHING, real, false));
  EXPECT(!KVXHelper::GetPhysicalAddress(NOTHING, bytes));
  EXPECT(std::strcmp(text, "old") == 0 && flag == 7 && whole == 7 && narrow == 7);
  EXPECT(real > 6 && address == 7 && bytes[0] == 7);
}

void addSingleValues() {
  TiXmlElement element("e");
  TiXmlElement* const el = &element;
  unsigned char const address[6] = {};
  Kovra::_MinMaxVal const setting = {1, 2, 3};
  Kovra::_MinMaxValFloat const decimals = {1, 2, 3};

  EXPECT(KVXHelper::AddTag(NOTHING, "t") == nullptr);
  EXPECT(KVXHelper::AddTag(el, NOTHING) == nullptr);
  EXPECT(KVXHelper::AddTag(NOTHING, NOTHING) == nullptr);
  EXPECT(!KVXHelper::AddTagString(NOTHING, "t", "x"));
  EXPECT(!KVXHelper::AddTagString(el, NOTHING, "x"));
  EXPECT(!KVXHelper::AddTagString(el, "t", NOTHING));
  EXPECT(!KVXHelper::AddTagString(el, variable, NOTHING));
  EXPECT(!KVXHelper::AddTagString(el, constant, NOTHING));
  EXPECT(!KVXHelper::AddTagString(el, NOTHING, NOTHING));
  EXPECT(!KVXHelper::AddTagNumber(NOTHING, "t", 1));
  EXPECT(!KVXHelper::AddTagNumber(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagFloat(NOTHING, "t", 1));
  EXPECT(!KVXHelper::AddTagFloat(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagDouble(NOTHING, "t", 1));
  EXPECT(!KVXHelper::AddTagDouble(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagUnsigned(NOTHING, "t", 1));
  EXPECT(!KVXHelper::AddTagUnsigned(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagLong(NOTHING, "t", 1));
  EXPECT(!KVXHelper::AddTagLong(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagBool(NOTHING, "t", 1));
  EXPECT(!KVXHelper::AddTagBool(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagPhysicalAddress(NOTHING, "t", address));
  EXPECT(!KVXHelper::AddTagPhysicalAddress(el, NOTHING, address));
  EXPECT(!KVXHelper::AddTagPhysicalAddress(el, "t", NOTHING));
  EXPECT(!KVXHelper::AddTagMinMaxVal(NOTHING, "t", setting));
  EXPECT(!KVXHelper::AddTagMinMaxVal(el, NOTHING, setting));
  EXPECT(!KVXHelper::AddTagMinMaxVal(NOTHING, "t", decimals));
  EXPECT(!KVXHelper::AddTagMinMaxVal(el, NOTHING, decimals));
  EXPECT(!KVXHelper::AddTagAttrib(NOTHING, "a", "x"));
  EXPECT(!KVXHelper::AddTagAttrib(NOTHING, "a", 1));
  EXPECT(!KVXHelper::AddTagAttrib(el, NOTHING, "x"));
  EXPECT(!KVXHelper::AddTagAttrib(el, NOTHING, 1));
  EXPECT(!KVXHelper::AddTagAttrib(el, "a", NOTHING));
  EXPECT(!KVXHelper::AddTagAttrib(el, constant, NOTHING));
  EXPECT(!KVXHelper::AddTagAttrib(el, variable, nullptr));  // NULL is a number there
  EXPECT(!KVXHelper::AddTagAttrib(el, NOTHING, NOTHING));
  EXPECT(!KVXHelper::AddTagAttrib(el, nullptr, NOTHING));
  EXPECT(!KVXHelper::AddTagAttrib(NOTHING, NOTHING, NOTHING));
  EXPECT(element.NoChildren() && element.FirstAttribute() == nullptr);
}

void convertKeywords() {
  EXPECT(KVXHelper::RibbonNameToInt(NOTHING) == 263);
  EXPECT(KVXHelper::RibbonDescriptionToInt(NOTHING) == 263);
  EXPECT(KVXHelper::RibbonTypeToInt(NOTHING) == -1);
  EXPECT(KVXHelper::FeederSmartToInt(NOTHING) == -1);
  EXPECT(KVXHelper::FeederTypeToInt(NOTHING) == -1);
  EXPECT(KVXHelper::CoercivityToInt(NOTHING) == 0);
  EXPECT(KVXHelper::LaminationTypeToInt(NOTHING) == 0);
  EXPECT(KVXHelper::CommsChannelToInt(NOTHING) == 0);
  EXPECT(KVXHelper::ContactlessEncToInt(NOTHING) == 0);
  EXPECT(KVXHelper::PanelToInt(NOTHING) == -1);
  EXPECT(KVXHelper::LaminatorWidthToInt(NOTHING) == -1);
  EXPECT(KVXHelper::LaminatorRegistrationToInt(NOTHING) == -1);

  Kovra::KVXStatusParser status;
  EXPECT(status.printerStateToInt(NOTHING) == 38);
  EXPECT(status.lamStateToInt(NOTHING) == 0);
  EXPECT(status.jobStatusToInt(NOTHING) == -1);
  EXPECT(status.cleaningStateToInt(NOTHING) == 10);
  EXPECT(status.GetWirelessState(NOTHING) == 0);

  Kovra::KVXCapsParser caps;
  EXPECT(caps.portTypeToInt(NOTHING) == -1);
  EXPECT(caps.protocolToInt(NOTHING) == -1);
  EXPECT(caps.transportToInt(NOTHING) == -1);
  EXPECT(caps.encAlgToInt(NOTHING) == -1);
  EXPECT(caps.graphicsFormatToInt(NOTHING) == -1);
  EXPECT(caps.printerTypeToInt(NOTHING) == -1);
  EXPECT(caps.magHeadTypeToInt(NOTHING) == -1);
  EXPECT(caps.magStripeLocationToInt(NOTHING) == -1);
  EXPECT(caps.laminationTypeToInt(NOTHING) == 0);
}

// The types of pointers to conversions, as the headers name them.
void pointToConversions() {
  using Kovra::KVXCapsParser;
  using Kovra::KVXStatusParser;
  int (*ribbon)(char*) = &KVXHelper::RibbonNameToInt;
  int (KVXStatusParser::*state)(char*) = &KVXStatusParser::lamStateToInt;
  int (KVXCapsParser::*protocol)(char*) = &KVXCapsParser::protocolToInt;
  EXPECT(ribbon(NOTHING) == 263);
  EXPECT((KVXStatusParser().*state)(NOTHING) == 0);
  EXPECT((KVXCapsParser().*protocol)(NOTHING) == -1);
}

// Readers.

void readStatus() {
  Kovra::KVXStatusParser parser;
  Kovra::KVGeneralStatus general = {};
  Kovra::KVCardCount counts = {};
  Kovra::_tagAccessPoints points = {NOTHING, 7};
  unsigned int code = 7;
  int cards = 7;
  TiXmlElement list("AccessPoints");
  EXPECT(!parser.parseStatus(NOTHING, general));
  EXPECT(!parser.parseCardCount(NOTHING, counts));
  EXPECT(!parser.parseCleanLog(NOTHING, cards) && cards == 7);
  EXPECT(parser.parseAllWirelessAccessPoint(&list, points) && points.count == 0);
  EXPECT(!parser.GetSecurity(NOTHING, code));
  EXPECT(!parser.GetCrypto(NOTHING, code) && code == 7);

  Kovra::KVXSensorParser sensors;
  Kovra::_KVPrinterSensorInfo states = {};
  EXPECT(!sensors.ParseSensorStates(NOTHING, 0, states));
  EXPECT(!sensors.getSensorStates(NOTHING, states));
}

void readDocuments() {
  Kovra::KVXConfigParser config;
  static Kovra::_KVConfiguration configuration;
  configuration.standby_timeout = 7;
  EXPECT(!config.GetConfiguration(NOTHING, 0, configuration));
  EXPECT(!config.parseConfiguration(NOTHING, configuration));
  EXPECT(!config.getNetworkParams(NOTHING, configuration.ethernet));
  EXPECT(configuration.standby_timeout == 7);

  Kovra::KVXPrinterIDParser identity;
  Kovra::KVPrinterInfo info = {};
  EXPECT(!identity.ParsePrinterInfo(NOTHING, 0, info));
  EXPECT(!identity.parsePrinterInfo(NOTHING, info));

  Kovra::KVXCapsParser caps;
  Kovra::_Capabilities capabilities = {};
  EXPECT(!caps.parseCapabilities(NOTHING, capabilities));
  EXPECT(!caps.getPrintSystem(NOTHING, capabilities));

  Kovra::KVXMediaParser media;
  Kovra::_KVMediaInfo catalogue = {NOTHING, NOTHING, NOTHING, NOTHING};
  EXPECT(!media.parseMedia(NOTHING, catalogue));
  Kovra::BuildKVMedia(NOTHING);
  Kovra::DestroyKVMedia(NOTHING);

  Kovra::KVXLogParser logs;
  Kovra::_tagLogServiceXML history = {7, NOTHING};
  TiXmlElement list("get_log_service_history");
  EXPECT(logs.parseServiceHistoryValues(&list, history) && history.count == 0);
  EXPECT(!logs.parseServiceHistoryValues(NOTHING, history));

  Kovra::__GETTRACK tracks = {};
  EXPECT(!Kovra::KVXGetEIN().parseMag(NOTHING, tracks));
  EXPECT(!Kovra::KVXNDC().GetLaminatorResponse(*L"<lam_ndc_rsp>x</lam_ndc_rsp>", 28, NOTHING));
}

void readSecrets() {
  Kovra::KVXSecAction parser;
  Kovra::_tagSecReqXML request = {};
  Kovra::_tagSecDirecXML directive = {};
  EXPECT(!parser.GetNonceValue(*L"<nonce>x</nonce>", 16, NOTHING));
  EXPECT(!parser.ParseSecureRequestValues(NOTHING, 16, request));
  EXPECT(!parser.ParseReqValues(NOTHING, request));
  EXPECT(!parser.ParseDirectiveValues(NOTHING, directive));
  EXPECT(!parser.GetActionName(NOTHING));
}

// Writers.

/// Every writer, without an output, without a path and without a parent.
template <class Writer>
void saveNowhere() {
  Writer writer;
  EXPECT(!writer.saveJob(NOTHING));
  EXPECT(!writer.saveJob(NOTHING, 10));
}

void writeDocuments() {
  saveNowhere<KVXDeviceControl>();
  saveNowhere<Kovra::KVXSetCaps>();
  saveNowhere<Kovra::KVXSetConfig>();
  saveNowhere<Kovra::KVXSetMedia>();
  saveNowhere<Kovra::KVXSetPrinterInfo>();
  saveNowhere<Kovra::KVXSetSecActions>();

  Kovra::KVXSetConfig config;
  static Kovra::_KVConfiguration const configuration = Kovra::_KVConfiguration();
  EXPECT(!config.SetConfiguration(configuration, NOTHING, 0, 1, 0, false));
  EXPECT(!config.addConfiguration(NOTHING, configuration, 1, 0));
  EXPECT(!config.addNetworkParams(NOTHING, configuration.ethernet));
  EXPECT(!config.RibbonNameToString(NOTHING, 256));
  EXPECT(!config.ribbonTypeToString(NOTHING, 0));
  EXPECT(config.CommsChannelFromInt(1, NOTHING, 32));
  EXPECT(config.ContactlessEncFromInt(1, NOTHING, 32));

  Kovra::KVXSetPrinterInfo identity;
  Kovra::KVPrinterInfo const info = {};
  EXPECT(!identity.SetPrinterInfo(info, NOTHING, 0, 1));
  EXPECT(!identity.addPrinterInfo(NOTHING, info, 1));

  Kovra::KVXSetMedia media;
  Kovra::_KVMediaInfo catalogue = {NOTHING, NOTHING, NOTHING, NOTHING};
  Kovra::_CardInfo const card = {};
  EXPECT(!media.SetMedia(catalogue, NOTHING, 0, 1, false));
  EXPECT(!media.addCardInfo(NOTHING, card));
}

void writeCapabilities() {
  Kovra::KVXSetCaps caps;
  Kovra::_Capabilities const capabilities = {};
  Kovra::_PortCaps const port = {1, 2};
  TiXmlElement list("ports");
  EXPECT(!caps.SetCapabilities(capabilities, NOTHING, 0, 0, false));
  EXPECT(!caps.addCapabilities(NOTHING, capabilities, 0));
  EXPECT(!caps.addHostPorts(NOTHING, &port, 1));
  EXPECT(!caps.addHostPorts(&list, NOTHING, 1));
  EXPECT(!caps.addPorts(NOTHING, &port, 1, "port"));
  EXPECT(!caps.addPorts(&list, NOTHING, 1, "port"));
  EXPECT(!caps.addPorts(&list, &port, 1, NOTHING));
  EXPECT(!caps.addPorts(NOTHING, NOTHING, 1, NOTHING));
  EXPECT(!caps.portTypeToString(NOTHING, 0));
  EXPECT(caps.CommsChannelFromInt(1, NOTHING, 32));
  EXPECT(caps.ContactlessEncFromInt(1, NOTHING, 32));
}

/// The document without its declaration, root and blanks.
std::string command(char const* text) {
  std::string const all = text;
  std::size_t const begin = all.find("<device_control>") + 21;
  return all.substr(begin, all.find("\n</device_control>") - begin);
}

#define EXPECT_COMMAND(call, expected) \
  EXPECT(control.call);                \
  EXPECT(command(out) == (expected))

void controlDevices() {
  KVXDeviceControl control;
  char out[512] = "";
  EXPECT_COMMAND(RunCamCommand("home", NOTHING, out, 512), "<cam>home</cam>");
  EXPECT_COMMAND(RunCamCommand(NOTHING, "up", out, 512), "<cam state=\"up\" />");
  EXPECT_COMMAND(RunCamCommand(variable, NOTHING, out, 512), "<cam>w</cam>");
  EXPECT_COMMAND(RunCamCommand(NOTHING, constant, out, 512), "<cam state=\"c\" />");
  EXPECT_COMMAND(RunCamCommand(NOTHING, NOTHING, out, 512), "<cam />");
  EXPECT_COMMAND(RunCamCommand(NOTHING, nullptr, out, 512), "<cam />");
  EXPECT(!control.RunCamCommand("home", "up", NOTHING, 512));
  EXPECT(!control.RunCamCommand(NOTHING, "up", NOTHING, 512));

  EXPECT_COMMAND(RunOtherCommands("fan", "t", NOTHING, true, out, 512),
                 "<fan state=\"on\">t</fan>");
  EXPECT_COMMAND(RunOtherCommands("fan", NOTHING, "p", true, out, 512), "<fan state=\"on\" />");
  EXPECT_COMMAND(RunOtherCommands("fan", NOTHING, NOTHING, true, out, 512), "<fan state=\"on\" />");
  EXPECT_COMMAND(RunOtherCommands("fan", NOTHING, nullptr, true, out, 512), "<fan state=\"on\" />");
  EXPECT_COMMAND(RunOtherCommands("advance", variable, NOTHING, true, out, 512),
                 "<advance>w</advance>");
  EXPECT_COMMAND(RunOtherCommands(variable, constant, NOTHING, true, out, 512), "<w>c</w>");
  EXPECT_COMMAND(RunOtherCommands(variable, NOTHING, NOTHING, true, out, 512), "<w />");
  EXPECT(!control.RunOtherCommands(NOTHING, "t", "p", true, out, 512));
  EXPECT(!control.RunOtherCommands(NOTHING, NOTHING, NOTHING, true, out, 512));
  EXPECT(!control.RunOtherCommands("fan", "t", NOTHING, true, NOTHING, 512));

  EXPECT_COMMAND(RunMotorCommand(NOTHING, 0, 5, 1, 5, true, out, 512), "<motor state=\"off\" />");
  EXPECT(!control.RunMotorCommand(1, 0, 50, 1, NOTHING, 512));
  EXPECT(!control.RunMotorCommand("any", 0, 5, 1, 5, true, NOTHING, 512));
  EXPECT_COMMAND(RunCalibrateCommand(NOTHING, 3, 1, 1, out, 512), "<calibrate type=\"calc\" />");
  EXPECT(!control.RunCalibrateCommand("any", 3, 1, 1, NOTHING, 512));
  EXPECT(!control.RunRFIDCommands(NOTHING, 1, 1, out, 512));
  EXPECT(!control.RunRFIDCommands("rfid", 1, 1, NOTHING, 512));
}

/// The element names of the document in `out`, without "keys" and "set".
std::string elements(Kovra::KVXSetSecActions& writer) {
  std::string names;
  TiXmlElement* const set = writer.RootElement()->FirstChildElement("set");
  for (TiXmlElement* one = set->FirstChildElement(); one != nullptr;
       one = one->NextSiblingElement()) {
    names += one->Value();
    names += ' ';
  }
  return names;
}

void composeSecrets() {
  Kovra::KVXSetSecActions writer;
  wchar_t out[1024];
  EXPECT(writer.GetNonceXML(NOTHING, out, 1024) && writer.RootElement()->NoChildren());
  EXPECT(writer.GetSecureActionXML(NOTHING, out, 1024) && writer.RootElement()->NoChildren());
  EXPECT(!writer.GetNonceXML("n", NOTHING, 1024));
  EXPECT(!writer.GetSecureActionXML("p", NOTHING, 1024));

  EXPECT(writer.GetPasskeyXML("old", NOTHING, out, 1024));
  EXPECT(elements(writer) == "current_passkey ");
  EXPECT(writer.GetPasskeyXML(NOTHING, constant, out, 1024));
  EXPECT(elements(writer) == "new_passkey ");
  EXPECT(writer.GetPasskeyXML(NOTHING, variable, out, 1024));
  EXPECT(elements(writer) == "new_passkey ");
  EXPECT(writer.GetPasskeyXML(NOTHING, NOTHING, out, 1024) && elements(writer).empty());
  EXPECT(!writer.GetPasskeyXML("old", NOTHING, NOTHING, 1024));

  EXPECT(writer.SetHostAndEncryptXML(out, 1024, "p", NOTHING, NOTHING, NOTHING, "d", variable,
                                     NOTHING, true, true, true));
  EXPECT(elements(writer) == "current_passkey new_data_encryption_key current_printer_lock_key ");
  EXPECT(writer.SetHostAndEncryptXML(out, 1024, NOTHING, "h", constant, NOTHING, NOTHING, NOTHING,
                                     nullptr, true, true, true));
  EXPECT(elements(writer) == "current_host_authentication_key new_host_authentication_key ");
  EXPECT(writer.SetHostAndEncryptXML(out, 1024, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING,
                                     NOTHING, "l", true, true, true));
  EXPECT(elements(writer) == "new_printer_lock_key ");
  EXPECT(writer.SetHostAndEncryptXML(out, 1024, NOTHING, NOTHING, NOTHING, NOTHING, NOTHING,
                                     NOTHING, NOTHING, true, true, true));
  EXPECT(elements(writer).empty());
  EXPECT(!writer.SetHostAndEncryptXML(NOTHING, 1024, "p", NOTHING, NOTHING, NOTHING, NOTHING,
                                      NOTHING, NOTHING, true, true, true));

  Kovra::_tagSecActionXMLValues values = {"lock_printer", NOTHING, NOTHING, NOTHING, NOTHING};
  EXPECT(writer.SecureActionRequestXML(values, out, 1024));
  EXPECT(writer.SecureActionDirectiveXML(values, out, 1024, 0));
  EXPECT(!writer.SecureActionRequestXML(values, NOTHING, 1024));
}

}  // namespace

int main() {
  readSingleValues();
  addSingleValues();
  convertKeywords();
  pointToConversions();
  readStatus();
  readDocuments();
  readSecrets();
  writeDocuments();
  writeCapabilities();
  controlDevices();
  composeSecrets();
  return failures == 0 ? 0 : 1;
}
