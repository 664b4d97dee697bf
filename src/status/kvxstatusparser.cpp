#include "kvxstatusparser.h"

#include "frame/typed/reply.hpp"
#include "frame/vocabulary.hpp"
#include "status/kvxstatusparser_words.hpp"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

// General status.

/// The codes are the state numbering that hosts share with other sources: the gaps are meant, and
/// so are words that share a code.
constexpr Word printerStateWords[] = {
    {"initializing", 1},
    {"idle", 2},
    {"xfer_rollers_heating", 3},
    {"printing_heating", 3},
    {"standby", 4},
    {"printing", 5},
    {"alarm_handling", 6},
    {"offline", 7},
    {"canceling", 8},
    {"temp_out_of_range", 9},
    {"mag_ops", 10},
    {"contact_ops", 11},
    {"contactless_ops", 12},
    {"config_data", 13},
    {"job_data", 14},
    {"diagnostic_mode", 15},
    {"xfer_rollers_cooling", 16},
    {"printing_cooling", 16},
    {"laminating_cooling", 16},
    {"insert_card", 17},
    {"laminating", 18},
    {"laminating_heating", 19},
    {"card_ready", 35},
    {"cleaning", 26},
};
constexpr Vocabulary printerStates{printerStateWords, Match::exact, 38};
static_assert(everyWordIsReachable(printerStates));

constexpr Table generalStatus = {
    keyword<&KVGeneralStatus::printer_state, printerStates>("printer_state"),
    hexadecimal<&KVGeneralStatus::alarms>("alarms"),
    number<&KVGeneralStatus::error>("error"),
    flagIf<&KVGeneralStatus::printer_lock, "locked">("printer_lock"),
    number<&KVGeneralStatus::num_jobs_receiving_or_pending>("num_jobs_receiving_or_pending"),
    number<&KVGeneralStatus::num_jobs_inprogress>("num_jobs_inprogress"),
    number<&KVGeneralStatus::num_jobs_done_ok>("num_jobs_done_ok"),
    number<&KVGeneralStatus::num_jobs_done_error>("num_jobs_done_error"),
    number<&KVGeneralStatus::num_jobs_total>("num_jobs_total"),
    number<&KVGeneralStatus::action_id_next>("action_id_next"),
    number<&KVGeneralStatus::warning>("warning"),
    keyword<&KVGeneralStatus::laminator_state, laminatorStates>("laminator_state"),
    number<&KVGeneralStatus::param_chg_counter>("param_chg_counter"),
};

constexpr char const* generalStatusRoots[] = {"get_general_status"};
using GeneralStatusReading = TableReading<generalStatus>;

// All replies of this class, for the catalogue.

constexpr ReplyReader replies[] = {
    reader<KVGeneralStatus, GeneralStatusReading>(
        "general-status", "state, alarms, lock and job counters", generalStatusRoots),
};

}  // namespace

std::span<frame::ReplyReader const> statusReplies() {
  return replies;
}

KVXStatusParser::KVXStatusParser() = default;
KVXStatusParser::~KVXStatusParser() = default;

bool KVXStatusParser::ParseStatus(wchar_t const& text, int len, KVGeneralStatus& out) {
  return readReply<GeneralStatusReading>(text, len, generalStatusRoots, out);
}

bool KVXStatusParser::parseStatus(TiXmlElement* root, KVGeneralStatus& out) {
  return walk(root, generalStatus, out);
}

int KVXStatusParser::printerStateToInt(char* keyword) {
  return printerStates.codeOf(keyword);
}

int KVXStatusParser::lamStateToInt(char* keyword) {
  return laminatorStates.codeOf(keyword);
}

}  // namespace Kovra
