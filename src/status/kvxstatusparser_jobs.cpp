// Job list and job status.

#include <algorithm>
#include <iterator>
#include <string_view>

#include "frame/typed/reply.hpp"
#include "frame/vocabulary.hpp"
#include "kvxstatusparser.h"
#include "status/kvxstatusparser_words.hpp"
#include "status/status_replies.hpp"

namespace Kovra {

namespace {

using namespace frame::typed;

/// One numbering for the states of a job, answers, the panel being printed, the steps and errors of
/// the encoders, the card's position and the steps of lamination. "mag_read" is "reading" again.
constexpr Word jobStateWords[] = {
    {"initializing", 0},
    {"receiving", 1},
    {"receive_ok", 2},
    {"receive_error", 3},
    {"receive_offline", 4},
    {"parsed", 5},
    {"in_progress", 6},
    {"done_ok", 7},
    {"done_error", 8},
    {"cancelled_by_user", 9},
    {"cancelled_by_error", 10},
    {"cleaning_up", 18},
    {"yes", 11},
    {"no", 12},
    {"yellow", 13},
    {"magenta", 14},
    {"cyan", 15},
    {"black", 16},
    {"clear", 17},
    {"encoding", 19},
    {"verifying", 20},
    {"reading", 21},
    {"at_station", 26},
    {"smart_encode_error", 27},
    {"contact_error", 28},
    {"contactless_error", 29},
    {"read_error", 22},
    {"read_ein_error", 23},
    {"write_error", 24},
    {"retrace_error", 25},
    {"not_in_printer", 30},
    {"feeding", 31},
    {"in_process", 32},
    {"ejecting_eject", 33},
    {"ejecting_reject", 34},
    {"ejecting_feeder", 35},
    {"held", 36},
    {"laminating", 41},
    {"transferring", 38},
    {"transfer_wait", 37},
    {"waiting_printer", 42},
    {"printing", 43},
    {"laminate", 39},
    {"laminate_insert", 40},
    {"mag_read", 21},
};
constexpr Vocabulary jobStates{jobStateWords, Match::exact, -1};
static_assert(everyWordIsReachable(jobStates));

// Job list.

constexpr Table jobInfo = {
    number<&_KVJobInfo::action_id>("action_id"),
    text<&_KVJobInfo::uuid>("uuid"),
    keyword<&_KVJobInfo::print_state, jobStates>("print_state"),
};

constexpr int roomOf(KVJobList const& list) {
  return static_cast<int>(std::size(list.jobs));
}

/// Hosts give the room that they have in `count` and find there how many entries were filled. Jobs
/// that find no room are skipped and leave the result as it is.
struct JobListReading {
  static constexpr std::string_view element = "job";
  static constexpr std::string_view entries = frame::Member<&KVJobList::jobs>::name();

  static bool read(Element root, KVJobList& list, Watch const& watch) {
    int const capacity = std::clamp(list.count, 0, roomOf(list));
    list.count = 0;
    remark(watch, [](Observer& observer) { observer.list(entries); });
    return walkEntries(root, element, watch, [&](Element child, bool result) {
      if (list.count == capacity) {
        remark(watch, [&](Observer& observer) {
          observer.surplusEntry(child, static_cast<std::size_t>(capacity));
        });
        return result;
      }
      int const index = list.count++;
      return RecordEntry<jobInfo>::read(child, list.jobs[index], watch, entries,
                                        static_cast<std::size_t>(index));
    });
  }

  static void outline(Outline& outline) {
    outline.emplace(element);
    outlineOf(jobInfo, outline);
  }
};

/// The list of a host that has room for as many jobs as the record takes.
struct WholeJobListReading : JobListReading {
  static bool read(Element root, KVJobList& list, Watch const& watch) {
    list.count = roomOf(list);
    return JobListReading::read(root, list, watch);
  }
};

constexpr char const* jobListRoots[] = {"get_job_list"};

// Job status.

constexpr Table jobPrinting = {
    number<&KVJobStatus::copies_done>("copies_done"),
    number<&KVJobStatus::copies_total_specified>("copies_total_specified"),
    number<&KVJobStatus::error_code>("error_code"),
    keyword<&KVJobStatus::print_state, jobStates>("print_state"),
    keyword<&KVJobStatus::laminator_state, laminatorStates>("laminator_state"),
    keyword<&KVJobStatus::position_in_transport, jobStates>("position_in_transport"),
};

/// Deliberately one table for all encoders: a state is stored by its own name, whichever encoder's
/// element it stands in.
constexpr Table encoderStates = {
    keyword<&KVJobStatus::mag_state, jobStates>("mag_state"),
    keyword<&KVJobStatus::contact_state, jobStates>("contact_state"),
    keyword<&KVJobStatus::contactless_state, jobStates>("contactless_state"),
};

constexpr Table jobStatus = {
    number<&KVJobStatus::action_id>("action_id"),
    text<&KVJobStatus::uuid>("uuid"),
    flagIf<&KVJobStatus::ready_for_next_job, "yes">("ready_for_next_job"),
    group<KVJobStatus, jobPrinting>("status_printing"),
    group<KVJobStatus, encoderStates>("status_mag"),
    group<KVJobStatus, encoderStates>("status_contact"),
    group<KVJobStatus, encoderStates>("status_contactless"),
};

constexpr char const* jobStatusRoots[] = {"get_job_status"};
using JobStatusReading = TableReading<jobStatus>;

constexpr ReplyReader replies[] = {
    reader<KVJobList, WholeJobListReading>("job-list", "the jobs that the printer knows",
                                           jobListRoots),
    reader<KVJobStatus, JobStatusReading>(
        "job-status", "the steps of one job and where its card is", jobStatusRoots),
};

}  // namespace

std::span<frame::ReplyReader const> jobReplies() {
  return replies;
}

bool KVXStatusParser::ParseJobList(wchar_t const& text, int len, KVJobList& out) {
  return readReply<JobListReading>(text, len, jobListRoots, out);
}

bool KVXStatusParser::parseJobList(TiXmlElement* root, KVJobList& out) {
  return readHost<JobListReading>(root, out);
}

bool KVXStatusParser::parseJobInfo(TiXmlElement* job, _KVJobInfo& out) {
  return walk(job, jobInfo, out);
}

bool KVXStatusParser::ParseJobStatus(wchar_t const& text, int len, KVJobStatus& out) {
  return readReply<JobStatusReading>(text, len, jobStatusRoots, out);
}

bool KVXStatusParser::parseJobStatus(TiXmlElement* root, KVJobStatus& out) {
  return walk(root, jobStatus, out);
}

bool KVXStatusParser::parseJobPrinting(TiXmlElement* printing, KVJobStatus& out) {
  return walk(printing, jobPrinting, out);
}

bool KVXStatusParser::getStatus(TiXmlElement* encoder, KVJobStatus& out) {
  return walk(encoder, encoderStates, out);
}

int KVXStatusParser::jobStatusToInt(char* keyword) {
  return jobStates.codeOf(keyword);
}

}  // namespace Kovra
