/// @file
/// A general status that names every element, as a printer with laminator sends it.

#ifndef KOVRA_TESTS_SUPPORT_GENERAL_STATUS_HPP
#define KOVRA_TESTS_SUPPORT_GENERAL_STATUS_HPP

#include <string>

#include "kvxstatusrecords.h"

namespace Kovra::test {

inline std::string const generalStatusReply = R"(<?xml version="1.0" encoding="UTF-8" ?>
<get_general_status>
    <printer_state>printing</printer_state>
    <alarms>0x80000401</alarms>
    <error>-17</error>
    <printer_lock>locked</printer_lock>
    <num_jobs_receiving_or_pending>1</num_jobs_receiving_or_pending>
    <num_jobs_inprogress>2</num_jobs_inprogress>
    <num_jobs_done_ok>30</num_jobs_done_ok>
    <num_jobs_done_error>4</num_jobs_done_error>
    <num_jobs_total>37</num_jobs_total>
    <action_id_next>4711</action_id_next>
    <warning>5</warning>
    <laminator_state>ready</laminator_state>
    <param_chg_counter>65535</param_chg_counter>
</get_general_status>
)";

/// Stores what the reply above says.
inline void setGeneralStatus(KVGeneralStatus& record) {
  record.printer_state = 5;
  record.alarms = 0x80000401;
  record.error = -17;
  record.printer_lock = 1;
  record.num_jobs_receiving_or_pending = 1;
  record.num_jobs_inprogress = 2;
  record.num_jobs_done_ok = 30;
  record.num_jobs_done_error = 4;
  record.num_jobs_total = 37;
  record.action_id_next = 4711;
  record.warning = 5;
  record.laminator_state = 3;
  record.param_chg_counter = 65535;
}

}  // namespace Kovra::test

#endif
