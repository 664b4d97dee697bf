/// @file
/// The records of the classic readers and writers, by the names under which the library knows them.

#ifndef KOVRA_RECORDS_HPP
#define KOVRA_RECORDS_HPP

#include <string_view>

#include "kvxcapsrecords.h"
#include "kvxconfigrecords.h"
#include "kvxlogrecords.h"
#include "kvxmediarecords.h"
#include "kvxprinterrecords.h"
#include "kvxsecrecords.h"
#include "kvxsensorrecords.h"
#include "kvxstatusrecords.h"
#include "kvxtrackrecords.h"
#include "kvxwirelessrecords.h"

namespace Kovra {

/// The cleanings that the printer remembers: hosts get them without a record around them.
using CleaningLog = _tagCleaningLogEntry[32];

namespace detail {

/// The name of a record's type; empty for a type that is no record.
template <class Record>
inline constexpr std::string_view recordName = {};

// Records that are read.

template <>
inline constexpr std::string_view recordName<KVGeneralStatus> = "KVGeneralStatus";
template <>
inline constexpr std::string_view recordName<KVJobList> = "KVJobList";
template <>
inline constexpr std::string_view recordName<KVJobStatus> = "KVJobStatus";
template <>
inline constexpr std::string_view recordName<MediaStatus> = "MediaStatus";
template <>
inline constexpr std::string_view recordName<_SENSOR> = "_SENSOR";
template <>
inline constexpr std::string_view recordName<KVCardCount> = "KVCardCount";
template <>
inline constexpr std::string_view recordName<KVUpTimes> = "KVUpTimes";
template <>
inline constexpr std::string_view recordName<KVCleaningStatus> = "KVCleaningStatus";
template <>
inline constexpr std::string_view recordName<__MEMORY> = "__MEMORY";
template <>
inline constexpr std::string_view recordName<_tagWirelessStatus> = "_tagWirelessStatus";
template <>
inline constexpr std::string_view recordName<_tagWirelessRadioStatus> = "_tagWirelessRadioStatus";
template <>
inline constexpr std::string_view recordName<_tagAccessPoints> = "_tagAccessPoints";
template <>
inline constexpr std::string_view recordName<_KVPrinterSensorInfo> = "_KVPrinterSensorInfo";
template <>
inline constexpr std::string_view recordName<KVSensorInfo> = "KVSensorInfo";
template <>
inline constexpr std::string_view recordName<_tagLogServiceXML> = "_tagLogServiceXML";
template <>
inline constexpr std::string_view recordName<CleaningLog> = "CleaningLog";
template <>
inline constexpr std::string_view recordName<__GETTRACK> = "__GETTRACK";
template <>
inline constexpr std::string_view recordName<_tagHostDHKeys> = "_tagHostDHKeys";
template <>
inline constexpr std::string_view recordName<_tagSecReqXML> = "_tagSecReqXML";
template <>
inline constexpr std::string_view recordName<_tagSecDirecXML> = "_tagSecDirecXML";
template <>
inline constexpr std::string_view recordName<_tagSecKeys> = "_tagSecKeys";
template <>
inline constexpr std::string_view recordName<_tagSecSetKeys> = "_tagSecSetKeys";
template <>
inline constexpr std::string_view recordName<_KVConfiguration> = "_KVConfiguration";
template <>
inline constexpr std::string_view recordName<KVPrinterInfo> = "KVPrinterInfo";
template <>
inline constexpr std::string_view recordName<_Capabilities> = "_Capabilities";
template <>
inline constexpr std::string_view recordName<_KVMediaInfo> = "_KVMediaInfo";

// A record that is only written.

template <>
inline constexpr std::string_view recordName<_tagSecActionXMLValues> = "_tagSecActionXMLValues";

template <class Record>
inline constexpr bool isWritten = false;
template <>
inline constexpr bool isWritten<_KVConfiguration> = true;
template <>
inline constexpr bool isWritten<KVPrinterInfo> = true;
template <>
inline constexpr bool isWritten<_Capabilities> = true;
template <>
inline constexpr bool isWritten<_KVMediaInfo> = true;
template <>
inline constexpr bool isWritten<_tagSecKeys> = true;
template <>
inline constexpr bool isWritten<_tagSecActionXMLValues> = true;

template <class Record>
inline constexpr bool isRead = !recordName<Record>.empty();
template <>
inline constexpr bool isRead<_tagSecActionXMLValues> = false;

}  // namespace detail

}  // namespace Kovra

#endif
