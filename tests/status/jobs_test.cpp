// Job list and job status.

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "kovra.hpp"
#include "kvxstatusparser.h"
#include "support/findings.hpp"
#include "support/records.hpp"
#include "support/status_reply.hpp"
#include "support/tree.hpp"
#include "support/words.hpp"

namespace Kovra {
namespace {

using test::element;
using test::ExpectedWords;
using test::expectNeedsChildren;
using test::expectWords;
using test::filled;
using test::MemberCase;
using test::Outcome;
using test::Rule;
using test::same;
using test::StatusReply;
using test::Tree;

// ---- Words -------------------------------------------------------------------------------------

ExpectedWords const jobStates{Rule::exact,
                              -1,
                              {{"initializing", 0},
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
                               {"mag_read", 21}}};

TEST(JobStates, HaveTheirCodes) {
  expectWords(jobStates, [](char* word) { return KVXStatusParser().jobStatusToInt(word); });
}

TEST(JobStates, TakeWordsInEveryForm) {
  KVXStatusParser parser;
  char array[] = "mag_read";
  char const* const readOnly = "reading";
  EXPECT_EQ(parser.jobStatusToInt(array), 21);
  EXPECT_EQ(parser.jobStatusToInt(readOnly), 21);
  EXPECT_EQ(parser.jobStatusToInt("cleaning_up"), 18);
  EXPECT_EQ(parser.jobStatusToInt("Printing"), -1);
  EXPECT_EQ(parser.jobStatusToInt(nullptr), -1);
}

// ---- Job list ----------------------------------------------------------------------------------

/// A list record full of sentinels, but for the room that its host has.
KVJobList roomFor(int count) {
  auto list = filled<KVJobList>();
  list.count = count;
  return list;
}

StatusReply<KVJobList> jobList(int count) {
  return {"get_job_list", &KVXStatusParser::ParseJobList, &KVXStatusParser::parseJobList,
          roomFor(count)};
}

/// Jobs 1 to `last`, the number being the action's.
std::string jobs(int last) {
  std::string all;
  for (int id = 1; id <= last; ++id) {
    all += element("job", element("action_id", std::to_string(id)));
  }
  return all;
}

/// Stores the same in a record.
void setJobs(KVJobList& list, int last) {
  for (int i = 0; i < last; ++i) list.jobs[i].action_id = static_cast<unsigned long>(i) + 1;
  list.count = last;
}

template <std::size_t N>
void setText(char (&out)[N], char const* text) {
  std::snprintf(out, N, "%s", text);
}

void setPrintingJob(_KVJobInfo& job) {
  job.action_id = 4711;
  setText(job.uuid, "0f8fad5b-d9cb-469f-a165-70867728950e");
  job.print_state = 43;
}

std::string const printingJob =
    "<action_id>4711</action_id>\n<uuid>0f8fad5b-d9cb-469f-a165-70867728950e</uuid>\n"
    "<print_state>printing</print_state>\n";

TEST(JobList, ReadsEveryMemberOfAWholeReply) {
  std::string const reply =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n" +
      element("get_job_list", element("job", printingJob) +
                                  "<job><print_state>held</print_state>"
                                  "<uuid>7c9e6679-7425-40de-944b-e07fc1f90ae7</uuid>"
                                  "<action_id>4712</action_id></job>") +
      "\n";
  jobList(128).expectWideEntry(reply, [](KVJobList& list) {
    list.count = 2;
    setPrintingJob(list.jobs[0]);
    list.jobs[1].action_id = 4712;
    setText(list.jobs[1].uuid, "7c9e6679-7425-40de-944b-e07fc1f90ae7");
    list.jobs[1].print_state = 36;
  });
}

TEST(JobList, FillsNoMoreEntriesThanTheHostHasRoomFor) {
  for (int const room : {1, 3, 5, 6, 127, 128}) {
    int const expected = room < 5 ? room : 5;
    jobList(room).expectRead(jobs(5), [&](KVJobList& list) { setJobs(list, expected); });
  }
}

TEST(JobList, FillsNothingWithoutRoom) {
  for (int const room : {0, -1, -128, INT_MIN}) {
    jobList(room).expect(false, jobs(5), [](KVJobList& list) { list.count = 0; });
  }
}

TEST(JobList, NeverFillsMoreThanTheRecordHas) {
  for (int const room : {128, 129, 1000, INT_MAX}) {
    for (int const sent : {128, 129, 300}) {
      jobList(room).expectRead(jobs(sent), [](KVJobList& list) { setJobs(list, 128); });
    }
  }
  // By itself on the heap, where a sanitizer sees a step beyond the last entry.
  auto const list = std::make_unique<KVJobList>(roomFor(INT_MAX));
  EXPECT_TRUE(KVXStatusParser().parseJobList(Tree(element("l", jobs(300))).root(), *list));
  EXPECT_EQ(list->count, 128);
  EXPECT_EQ(list->jobs[127].action_id, 128U);
}

TEST(JobList, TakesThePresentCountForTheRoomOfTheNextCall) {
  KVJobList list = roomFor(2);
  KVXStatusParser parser;
  EXPECT_TRUE(parser.parseJobList(Tree(element("l", jobs(1))).root(), list));
  EXPECT_EQ(list.count, 1);
  EXPECT_TRUE(parser.parseJobList(Tree(element("l", jobs(5))).root(), list));
  EXPECT_EQ(list.count, 1);
}

TEST(JobList, ResultIsThatOfTheLastEntryFilled) {
  std::string const good = element("job", "<action_id>1</action_id>");
  std::string const bad = "<job><uuid/></job>";
  struct {
    int room;
    std::string children;
    bool result;
    int count;
  } const cases[] = {{3, good + good + good + bad + bad, true, 3},
                     {3, good + good + bad + good + good, false, 3},
                     {4, good + good + bad + good + bad, true, 4},
                     {128, bad + good, true, 2},
                     {128, good + bad, false, 2},
                     {128, good + bad + "<other><action_id>1</action_id></other>", false, 2},
                     {128, good + "<other/><uuid/>", true, 1}};
  for (auto const& [room, children, result, count] : cases) {
    auto const outcome = jobList(room).parsedChildren(children);
    EXPECT_EQ(outcome.result, result) << room << ' ' << children;
    EXPECT_EQ(outcome.record.count, count) << room << ' ' << children;
  }
}

TEST(JobList, CountsAJobOfWhichNothingIsKnown) {
  std::string const nothing = "<job/><job></job><job>text</job><job><other>1</other></job>";
  jobList(128).expect(false, nothing, [](KVJobList& list) { list.count = 4; });
}

TEST(JobList, StoresACountOfZeroWithoutAnyJob) {
  for (char const* const children :
       {"", " ", "text", "<!-- <job/> -->", "<jobs/>", "<Job/>", "<JOB/>", "<x:job/>",
        "<list><job><action_id>1</action_id></job></list>", "<action_id>1</action_id>"}) {
    jobList(128).expect(false, children, [](KVJobList& list) { list.count = 0; });
  }
}

TEST(JobList, KeepsTheCountOfANullRoot) {
  KVJobList list = roomFor(7);
  EXPECT_FALSE(KVXStatusParser().parseJobList(nullptr, list));
  EXPECT_TRUE(same(list, roomFor(7)));
}

TEST(JobList, SkipsWhatStandsBetweenTheJobs) {
  std::string const one = "<job><action_id>1</action_id></job>";
  std::string const two = "<job><job/><other/><action_id>2</action_id></job>";
  jobList(128).expectRead("<count>9</count>text" + one + "<!-- " + one + " --><jobs>" + one +
                              "</jobs>" + two + "<last/>",
                          [](KVJobList& list) { setJobs(list, 2); });
}

TEST(JobList, KeepsTheMembersThatAnEntryDoesNotName) {
  jobList(128).expectRead("<job><print_state>held</print_state></job><job><uuid>b</uuid></job>",
                          [](KVJobList& list) {
                            list.count = 2;
                            list.jobs[0].print_state = 36;
                            setText(list.jobs[1].uuid, "b");
                          });
}

TEST(JobList, KnowsTheElementsOfAJobByTheirExactNames) {
  jobList(128).expect(false,
                      "<job><Action_id>1</Action_id><uuids>b</uuids><state>held</state></job>",
                      [](KVJobList& list) { list.count = 1; });
}

TEST(JobList, ActionIdentifiersWrapAt65536) {
  struct {
    char const* text;
    unsigned long id;
  } const cases[] = {{"65535", 65535}, {"65536", 0}, {"70000", 4464}, {"-1", 65535}, {"x", 0}};
  for (auto const& [text, id] : cases) {
    jobList(1).expectRead(element("job", element("action_id", text)),
                          [value = id](KVJobList& list) {
                            list.count = 1;
                            list.jobs[0].action_id = value;
                          });
  }
}

TEST(JobList, IdentifiersOf39CharactersFitAndLongerOnesAreCut) {
  std::string const fits(39, 'u');
  for (std::string const behind : {"", "v", "vw", "vwxyz-and-so-on-for-quite-a-while-longer"}) {
    jobList(1).expectRead(element("job", element("uuid", fits + behind)), [&](KVJobList& list) {
      list.count = 1;
      setText(list.jobs[0].uuid, fits.c_str());
    });
  }
}

TEST(JobList, ReadsTheStatesOfItsJobs) {
  for (auto const& [word, code] : jobStates.rows) {
    jobList(1).expectRead(element("job", element("print_state", word)),
                          [value = code](KVJobList& list) {
                            list.count = 1;
                            list.jobs[0].print_state = value;
                          });
  }
  for (char const* const word :
       {"Printing", "unheard_of", "printing_and_so_on_for_quite_a_while"}) {
    jobList(1).expectRead(element("job", element("print_state", word)), [](KVJobList& list) {
      list.count = 1;
      list.jobs[0].print_state = -1;
    });
  }
}

TEST(JobList, LeavesWhatElementsOfAJobWithoutTextWouldFill) {
  for (std::string const name : {"action_id", "uuid", "print_state"}) {
    for (std::string const& empty : {"<" + name + "/>", element(name, "")}) {
      jobList(1).expect(false, element("job", empty), [](KVJobList& list) { list.count = 1; });
    }
  }
}

TEST(JobList, TakesTheFirstOfTwoRoots) {
  auto const outcome =
      jobList(128).parsed(element("get_job_list", jobs(3)) + element("get_job_list", jobs(5)));
  EXPECT_TRUE(outcome.result);
  EXPECT_EQ(outcome.record.count, 3);
}

TEST(JobList, ReadsOneJobByItself) {
  auto const start = filled<_KVJobInfo>();
  auto job = start;
  EXPECT_TRUE(KVXStatusParser().parseJobInfo(Tree(element("any", printingJob)).root(), job));
  auto expected = start;
  setPrintingJob(expected);
  EXPECT_TRUE(same(job, expected));
  EXPECT_FALSE(KVXStatusParser().parseJobInfo(
      Tree("<job><action_id>4711</action_id><uuid/><x>1</x></job>").root(), job));
  EXPECT_TRUE(same(job, expected));
  expectNeedsChildren(start, [](TiXmlElement* nothing, _KVJobInfo& record) {
    return KVXStatusParser().parseJobInfo(nothing, record);
  });
}

TEST(JobList, IsDecodedAsFarAsTheRecordGoesAndNamesTheSurplus) {
  std::string const reply = element("get_job_list", jobs(130));
  Decoding const decoding = decode(reply);
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_EQ(readings[0].message(), "job-list");
  EXPECT_TRUE(readings[0].result());
  Value const* const shown = readings[0].record().find("jobs");
  ASSERT_NE(shown, nullptr);
  ASSERT_EQ(shown->size(), 128U);
  EXPECT_EQ(shown->at("[127].action_id").asNatural(), 128U);
  std::vector<Note> const notes = decoding.notes();
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(test::kindOf(notes[0]), "surplus_entries");
  EXPECT_EQ(notes[0].element(), "job");
  EXPECT_EQ(notes[0].kept(), "128");
  EXPECT_EQ(notes[0].count(), 2U);
}

TEST(JobList, IsDecodedAsAListAlsoWithoutAnyJob) {
  Decoding const decoding = decode("<get_job_list><jobs/></get_job_list>");
  std::vector<Reading> const readings = decoding.readings();
  ASSERT_EQ(readings.size(), 1U);
  EXPECT_FALSE(readings[0].result());
  EXPECT_EQ(readings[0].record(), Value::object({{"jobs", Value::list()}}));
  std::vector<Note> const notes = decoding.notes();
  ASSERT_EQ(notes.size(), 1U);
  EXPECT_EQ(test::kindOf(notes[0]), "unknown_element");
}

// ---- Job status --------------------------------------------------------------------------------

StatusReply<KVJobStatus> const jobStatus{"get_job_status", &KVXStatusParser::ParseJobStatus,
                                         &KVXStatusParser::parseJobStatus};

constexpr MemberCase<KVJobStatus> jobMembers[] = {
    {"", "action_id", "17", [](auto& job) { job.action_id = 17; }},
    {"", "uuid", "abc", [](auto& job) { setText(job.uuid, "abc"); }},
    {"", "ready_for_next_job", "yes", [](auto& job) { job.ready_for_next_job = 1; }},
    {"status_printing", "copies_done", "-3", [](auto& job) { job.copies_done = -3; }},
    {"status_printing", "copies_total_specified", "4",
     [](auto& job) { job.copies_total_specified = 4; }},
    {"status_printing", "error_code", "65535", [](auto& job) { job.error_code = 65535; }},
    {"status_printing", "print_state", "in_progress", [](auto& job) { job.print_state = 6; }},
    {"status_printing", "laminator_state", "ready", [](auto& job) { job.laminator_state = 3; }},
    {"status_printing", "position_in_transport", "at_station",
     [](auto& job) { job.position_in_transport = 26; }},
    {"status_mag", "mag_state", "encoding", [](auto& job) { job.mag_state = 19; }},
    {"status_mag", "contact_state", "verifying", [](auto& job) { job.contact_state = 20; }},
    {"status_mag", "contactless_state", "yes", [](auto& job) { job.contactless_state = 11; }},
    {"status_contact", "mag_state", "mag_read", [](auto& job) { job.mag_state = 21; }},
    {"status_contact", "contact_state", "contact_error", [](auto& job) { job.contact_state = 28; }},
    {"status_contact", "contactless_state", "no", [](auto& job) { job.contactless_state = 12; }},
    {"status_contactless", "mag_state", "read_error", [](auto& job) { job.mag_state = 22; }},
    {"status_contactless", "contact_state", "done_ok", [](auto& job) { job.contact_state = 7; }},
    {"status_contactless", "contactless_state", "contactless_error",
     [](auto& job) { job.contactless_state = 29; }},
};

TEST(JobStatus, ReadsEveryMemberOfAWholeReply) {
  jobStatus.expectWideEntry(
      R"(<?xml version="1.0" encoding="UTF-8" ?>
<get_job_status>
    <action_id>4711</action_id>
    <uuid>0f8fad5b-d9cb-469f-a165-70867728950e</uuid>
    <ready_for_next_job>yes</ready_for_next_job>
    <status_printing>
        <copies_done>1</copies_done>
        <copies_total_specified>2</copies_total_specified>
        <error_code>105</error_code>
        <print_state>cyan</print_state>
        <laminator_state>not_ready</laminator_state>
        <position_in_transport>feeding</position_in_transport>
    </status_printing>
    <status_mag>
        <mag_state>verifying</mag_state>
    </status_mag>
    <status_contact>
        <contact_state>at_station</contact_state>
    </status_contact>
    <status_contactless>
        <contactless_state>retrace_error</contactless_state>
    </status_contactless>
</get_job_status>
)",
      [](KVJobStatus& job) {
        job.action_id = 4711;
        setText(job.uuid, "0f8fad5b-d9cb-469f-a165-70867728950e");
        job.ready_for_next_job = 1;
        job.copies_done = 1;
        job.copies_total_specified = 2;
        job.error_code = 105;
        job.print_state = 15;
        job.laminator_state = 6;
        job.position_in_transport = 31;
        job.mag_state = 20;
        job.contact_state = 26;
        job.contactless_state = 25;
      });
}

TEST(JobStatus, ReadsEachElementIntoItsMemberAndNoOther) {
  jobStatus.expectMembers(jobMembers);
}

TEST(JobStatus, KnowsAnElementOnlyInItsPlace) {
  for (char const* const name :
       {"copies_done", "copies_total_specified", "error_code", "print_state", "laminator_state",
        "position_in_transport", "mag_state", "contact_state", "contactless_state"}) {
    jobStatus.expectSkipped(element(name, "1"));
  }
  for (char const* const name : {"action_id", "uuid", "ready_for_next_job", "mag_state",
                                 "contact_state", "contactless_state", "status_printing"}) {
    jobStatus.expectSkipped(element("status_printing", element(name, "1")));
  }
  for (char const* const encoder : {"status_mag", "status_contact", "status_contactless"}) {
    for (char const* const name :
         {"action_id", "uuid", "ready_for_next_job", "copies_done", "error_code", "print_state",
          "laminator_state", "position_in_transport", "state"}) {
      jobStatus.expectSkipped(element(encoder, element(name, "1")));
    }
  }
  for (char const* const encoder : {"status", "Status_mag", "status_magnetic", "status_encoding"}) {
    jobStatus.expectSkipped(element(encoder, element("mag_state", "encoding")));
  }
}

TEST(JobStatus, StoresALaterStateOfTheSameNameFromAnotherEncoder) {
  jobStatus.expectRead(
      "<status_mag><mag_state>encoding</mag_state><contact_state>reading</contact_state></"
      "status_mag>"
      "<status_contactless><mag_state>done_ok</mag_state></status_contactless>",
      [](KVJobStatus& job) {
        job.mag_state = 7;
        job.contact_state = 21;
      });
}

TEST(JobStatus, IsReadyForTheNextJobByTheExactWordOnly) {
  jobStatus.expectRead("<ready_for_next_job>yes</ready_for_next_job>",
                       [](auto& job) { job.ready_for_next_job = 1; });
  std::string const longer = "yes" + std::string(100, 's');
  for (char const* const text :
       {"no", "Yes", "YES", "enabled", "1", "ye", "yes.", "x", longer.c_str()}) {
    jobStatus.expectRead(element("ready_for_next_job", text),
                         [](auto& job) { job.ready_for_next_job = 0; });
  }
}

TEST(JobStatus, ActionIdentifierWrapsAt65536) {
  struct {
    char const* text;
    unsigned long id;
  } const cases[] = {{"65535", 65535}, {"65536", 0}, {"70000", 4464}, {"-1", 65535}, {"no", 0}};
  for (auto const& [text, id] : cases) {
    jobStatus.expectRead(element("action_id", text),
                         [value = id](KVJobStatus& job) { job.action_id = value; });
  }
}

TEST(JobStatus, NumbersKeepWhatTheirMembersHold) {
  auto const printing = [](char const* name, char const* text) {
    return element("status_printing", element(name, text));
  };
  jobStatus.expectRead(printing("error_code", "65536"), [](auto& job) { job.error_code = 0; });
  jobStatus.expectRead(printing("error_code", "70000"), [](auto& job) { job.error_code = 4464; });
  jobStatus.expectRead(printing("error_code", "-1"), [](auto& job) { job.error_code = 65535; });
  jobStatus.expectRead(printing("error_code", "E12"), [](auto& job) { job.error_code = 0; });
  jobStatus.expectRead(printing("copies_done", "70000"),
                       [](auto& job) { job.copies_done = 70000; });
  jobStatus.expectRead(printing("copies_done", " 12abc"), [](auto& job) { job.copies_done = 12; });
  jobStatus.expectRead(printing("copies_total_specified", "many"),
                       [](auto& job) { job.copies_total_specified = 0; });
}

TEST(JobStatus, IdentifierOf39CharactersFitsAndALongerOneIsCut) {
  std::string const fits(39, 'u');
  for (std::string const behind : {"", "v", "vwxyz-and-so-on-for-quite-a-while-and-longer"}) {
    jobStatus.expectRead(element("uuid", fits + behind),
                         [&](KVJobStatus& job) { setText(job.uuid, fits.c_str()); });
  }
}

struct StateCase {
  char const* within;
  char const* name;
  int KVJobStatus::*member;
};

constexpr StateCase stateCases[] = {
    {"status_printing", "print_state", &KVJobStatus::print_state},
    {"status_printing", "position_in_transport", &KVJobStatus::position_in_transport},
    {"status_mag", "mag_state", &KVJobStatus::mag_state},
    {"status_contact", "contact_state", &KVJobStatus::contact_state},
    {"status_contactless", "contactless_state", &KVJobStatus::contactless_state},
};

TEST(JobStatus, AllStatesButTheLaminatorsShareOneVocabulary) {
  auto rows = jobStates.rows;
  for (char const* const unknown : {"Printing", "ready", "not_used", "?", "printing."}) {
    rows.push_back({unknown, -1});
  }
  for (auto const& [within, name, member] : stateCases) {
    for (auto const& [word, code] : rows) {
      jobStatus.expectRead(
          element(within, element(name, word)),
          [member = member, value = code](KVJobStatus& job) { job.*member = value; });
    }
  }
}

TEST(JobStatus, LaminatorStatesAreThoseOfTheGeneralStatus) {
  ExpectedWords::Row const rows[] = {
      {"uninitialized", 1}, {"initializing", 2}, {"ready", 3},       {"standby", 4},
      {"laminating", 5},    {"not_ready", 6},    {"not_used", 7},    {"init_error", 8},
      {"comm_error", 9},    {"fault_error", 10}, {"door_open", 11},  {"Ready", 0},
      {"done_ok", 0},       {"printing", 0},     {"door_opened", 0},
  };
  for (auto const& [word, code] : rows) {
    jobStatus.expectRead(element("status_printing", element("laminator_state", word)),
                         [value = code](KVJobStatus& job) { job.laminator_state = value; });
  }
}

TEST(JobStatus, ResultIsThatOfTheLastKnownElement) {
  std::string const id = "<action_id>1</action_id>";
  std::string const copies = "<copies_done>2</copies_done>";
  struct {
    std::string children;
    bool result;
  } const cases[] = {
      {id + element("status_printing", copies) + "<uuid/>", false},
      {"<uuid/>" + element("status_printing", copies) + id, true},
      {id + element("status_printing", copies + "<error_code/>"), false},
      {id + element("status_printing", "<error_code/>" + copies), true},
      {id + element("status_printing", copies) + "<status_mag/>", false},
      {id + element("status_printing", copies) + "<status_mag>text</status_mag>", false},
      {id + element("status_printing", copies) + "<status_mag><other>1</other></status_mag>",
       false},
      {id + element("status_printing", copies + "<other/>") + "<other/>", true},
  };
  for (auto const& [children, result] : cases) {
    jobStatus.expect(result, children, [](KVJobStatus& job) {
      job.action_id = 1;
      job.copies_done = 2;
    });
  }
}

TEST(JobStatus, TakesTheLaterOfTwoElements) {
  jobStatus.expectRead(
      "<action_id>1</action_id><status_printing><copies_done>1</copies_done></status_printing>"
      "<action_id>2</action_id><status_printing><copies_done>3</copies_done><copies_done>4"
      "</copies_done></status_printing>",
      [](KVJobStatus& job) {
        job.action_id = 2;
        job.copies_done = 4;
      });
}

TEST(JobStatus, FailsUntouchedWithoutAnyKnownElement) {
  for (char const* const children : {"", " ", "text", "<!-- a -->", "<unknown>1</unknown>"}) {
    jobStatus.expectSkipped(children);
  }
}

TEST(JobStatus, ReadsItsPartsByThemselves) {
  auto job = filled<KVJobStatus>();
  auto expected = job;
  KVXStatusParser parser;
  EXPECT_TRUE(parser.parseJobPrinting(
      Tree("<any><print_state>black</print_state><mag_state>held</mag_state></any>").root(), job));
  expected.print_state = 16;
  EXPECT_TRUE(same(job, expected));
  EXPECT_TRUE(parser.getStatus(
      Tree("<any><contactless_state>held</contactless_state><print_state>no</print_state></any>")
          .root(),
      job));
  expected.contactless_state = 36;
  EXPECT_TRUE(same(job, expected));
}

TEST(JobStatus, ElementReadersNeedChildren) {
  auto const start = filled<KVJobStatus>();
  for (auto const reader : {&KVXStatusParser::parseJobStatus, &KVXStatusParser::parseJobPrinting,
                            &KVXStatusParser::getStatus}) {
    expectNeedsChildren(start, [&](TiXmlElement* nothing, KVJobStatus& record) {
      return (KVXStatusParser().*reader)(nothing, record);
    });
  }
}

TEST(KVXStatusParser, HasEveryOperationOnJobsWithItsSignature) {
  using P = KVXStatusParser;
  [[maybe_unused]] bool (P::*const list)(wchar_t const&, int, KVJobList&) = &P::ParseJobList;
  [[maybe_unused]] bool (P::*const listReader)(TiXmlElement*, KVJobList&) = &P::parseJobList;
  [[maybe_unused]] bool (P::*const jobReader)(TiXmlElement*, _KVJobInfo&) = &P::parseJobInfo;
  [[maybe_unused]] bool (P::*const status)(wchar_t const&, int, KVJobStatus&) = &P::ParseJobStatus;
  [[maybe_unused]] bool (P::*const readers[])(TiXmlElement*, KVJobStatus&) = {
      &P::parseJobStatus, &P::parseJobPrinting, &P::getStatus};
  int (P::*const conversion)(char*) = &P::jobStatusToInt;
  char held[] = "held";
  EXPECT_EQ((P().*conversion)(held), 36);
}

}  // namespace
}  // namespace Kovra
