#include "kvxlogparser.h"

#include "frame/message.hpp"
#include "logs/logs_tables.hpp"

namespace Kovra {

using namespace logs;

KVXLogParser::KVXLogParser() = default;
KVXLogParser::~KVXLogParser() = default;

bool KVXLogParser::ParseLogServiceXML(wchar_t const& text, unsigned long len,
                                      _tagLogServiceXML& out) {
  return readReplyBy<ServiceHistoryReading>(text, len, serviceHistoryRoots, out);
}

bool KVXLogParser::parseServiceHistoryValues(TiXmlElement* root, _tagLogServiceXML& out) {
  return readHost<ServiceHistoryReading>(root, out);
}

bool KVXLogParser::getServiceValues(TiXmlElement* element, _tagLogServiceValues& out) {
  return walk(element, service, out);
}

bool KVXLogParser::ParseCleaningLog(wchar_t const& text, unsigned long len,
                                    _tagCleaningLogEntry (&out)[32]) {
  return readReplyBy<CleaningHistoryReading>(text, len, cleaningHistoryRoots, out);
}

bool KVXLogParser::getCleaningLogValues(TiXmlElement* root, _tagCleaningLogEntry (&out)[32]) {
  return readHost<CleaningHistoryReading>(root, out);
}

bool KVXLogParser::getCleaningLogEntry(TiXmlElement* element, _tagCleaningLogEntry& out) {
  return walk(element, cleaning, out);
}

}  // namespace Kovra
