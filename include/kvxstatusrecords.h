/// @file
/// The records of the status replies. The host owns them; a reader fills members in place and
/// leaves those alone whose element the reply lacks, so a host clears a record that it wants clean.
/// All codes are those of the readers in kvxstatusparser.h; all units are the printer's.

#ifndef KVXSTATUSRECORDS_H
#define KVXSTATUSRECORDS_H

namespace Kovra {

/// The printer's general status: root "get_general_status".
struct KVGeneralStatus {
  int printer_state;                  ///< 'printer_state', code of printerStateToInt
  unsigned int alarms;                ///< 'alarms', bits, sent as hexadecimal with "0x"
  int error;                          ///< 'error', the printer's error code
  char printer_lock;                  ///< 'printer_lock', 1 for "locked", else 0
  int num_jobs_receiving_or_pending;  ///< 'num_jobs_receiving_or_pending'
  int num_jobs_inprogress;            ///< 'num_jobs_inprogress'
  int num_jobs_done_ok;               ///< 'num_jobs_done_ok'
  int num_jobs_done_error;            ///< 'num_jobs_done_error'
  int num_jobs_total;                 ///< 'num_jobs_total'
  int action_id_next;                 ///< 'action_id_next', identifier of the next action
  int warning;                        ///< 'warning', the printer's warning code
  int laminator_state;                ///< 'laminator_state', code of lamStateToInt
  unsigned long param_chg_counter;    ///< 'param_chg_counter', wraps at 65536
};

/// One job of the list: element "job".
struct _KVJobInfo {
  unsigned long action_id;  ///< 'action_id', wraps at 65536
  char uuid[40];            ///< 'uuid', at most 39 characters
  int print_state;          ///< 'print_state', code of jobStatusToInt
};

/// The printer's jobs: root "get_job_list".
struct KVJobList {
  int count;             ///< before: entries to fill at most; afterwards: entries filled
  _KVJobInfo jobs[128];  ///< 'job', filled from the first one; never more than these
};

/// The status of one job: root "get_job_status".
struct KVJobStatus {
  unsigned long action_id;     ///< 'action_id', wraps at 65536
  char uuid[40];               ///< 'uuid', at most 39 characters
  char ready_for_next_job;     ///< 'ready_for_next_job', 1 for "yes", else 0
  int copies_done;             ///< 'status_printing/copies_done'
  int copies_total_specified;  ///< 'status_printing/copies_total_specified'
  unsigned short error_code;   ///< 'status_printing/error_code', the printer's error code
  int print_state;             ///< 'status_printing/print_state', code of jobStatusToInt
  int mag_state;               ///< 'mag_state' below any encoder, code of jobStatusToInt
  int contact_state;           ///< 'contact_state' below any encoder, code of jobStatusToInt
  int contactless_state;       ///< 'contactless_state' below any encoder, code of jobStatusToInt
  int position_in_transport;   ///< 'status_printing/position_in_transport', the same codes
  int laminator_state;         ///< 'status_printing/laminator_state', code of lamStateToInt
};

/// One consumable that is loaded. Which elements a ribbon, the film and a laminate have differs:
/// see the element readers.
struct _MediaStatusInfo {
  int type;              ///< 'type' of a ribbon or film; that of a laminate goes into `code`
  int code;              ///< ribbon code, 256 to 272; of a laminate its 'type'
  char description[32];  ///< 'description', or the joined words of a 'sequence'
  char part_number[32];  ///< 'part_number', of a ribbon only
  char oem_country[8];   ///< 'oem_country'
  int initial_size;      ///< 'initial_size', panels or prints when it was new
  int remaining;         ///< 'panels_remaining', of a ribbon also 'ribbon_remaining'
  float diam_payout;     ///< 'diam_ribbon_payout', the supply roll, not of a laminate
  float diam_takeup;     ///< 'diam_ribbon_takeup', the take-up roll, not of a laminate
};

/// The consumables: root "get_media_status".
struct MediaStatus {
  _MediaStatusInfo ribbon;           ///< 'ribbon'
  int reserved;                      ///< never read
  _MediaStatusInfo film;             ///< 'film', the transfer film
  _MediaStatusInfo top_laminate;     ///< 'top_laminate'
  _MediaStatusInfo bottom_laminate;  ///< 'bottom_laminate'
};

/// States and readings of the sensors: root "get_sensor_status". A flag is cleared by its one word
/// and set by any other, misspellings included.
struct _SENSOR {
  char ribbon_takeup_encoder[32];  ///< 'sensor_states/ribbon_takeup_encoder'
  char door_open;                  ///< 'sensor_states/door_open', 0 for "no"
  char flipoptions_door_open;      ///< 'sensor_states/flipoptions_door_open', 0 for "no"
  char flipper_card_blocked;       ///< 'sensor_states/flipper_card_blocked', 0 for "no"
  char flipper_rotation_blocked;   ///< 'sensor_states/flipper_rotation_blocked', 0 for "no"
  char cardout_sensor_set;         ///< 'sensor_states/cardout_sensor_set', 0 for "no"
  char option_mag_blocked;         ///< 'sensor_states/option_mag_blocked', 0 for "no"
  char option_cam_blocked;         ///< 'sensor_states/option_cam_blocked', 0 for "no"
  char card_exit_blocked;          ///< 'sensor_states/card_exit_blocked', 0 for "no"
  char card_edge_blocked;          ///< 'sensor_states/card_edge_blocked', 0 for "no"
  char tricolor_state[32];         ///< 'sensor_states/tricolor_state'
  char head_cam_blocked;           ///< 'sensor_states/head_cam_blocked', 0 for "no"
  int tricolor_error;              ///< 'sensor_states/tricolor_error'
  char printhead_fan;              ///< 'sensor_states/printhead_fan', 0 for "off"
  float voltage_24;                ///< 'sensor_values/voltage_24', supply voltage
  int voltage_raw;                 ///< 'sensor_values/voltage_raw', its raw reading
  int mag_track_1;                 ///< 'sensor_values/mag_track_1', level of the track
  int mag_track_2;                 ///< 'sensor_values/mag_track_2', level of the track
  int mag_track_3;                 ///< 'sensor_values/mag_track_3', level of the track
  int print_head_temp;             ///< 'sensor_values/print_head_temp'
  int mag_head_type;               ///< 'sensor_values/mag_head_type'
  int ribbon_bemf;                 ///< 'sensor_values/ribbon_bemf'
  int tricolor_any;                ///< 'sensor_values/tricolor_any', level of the colour sensor
  int tricolor_red;                ///< 'sensor_values/tricolor_red', level of the colour sensor
  int tricolor_green;              ///< 'sensor_values/tricolor_green', level of the colour sensor
  int tricolor_blue;               ///< 'sensor_values/tricolor_blue', level of the colour sensor
  int platen_temp128;              ///< 'sensor_values/platen_temp128'
  int RLEC;                        ///< 'sensor_values/RLEC', a ribbon encoder counter
  int RSEC;                        ///< 'sensor_values/RSEC', a ribbon encoder counter
  int RLDC;                        ///< 'sensor_values/RLDC', a ribbon encoder counter
  int RSDC;                        ///< 'sensor_values/RSDC', a ribbon encoder counter
  int RGSU;                        ///< 'sensor_values/RGSU', a ribbon encoder counter
  int RGSD;                        ///< 'sensor_values/RGSD', a ribbon encoder counter
};

/// The card counters: root "get_count". Each keeps the low 16 bits of what the printer counts.
struct KVCardCount {
  unsigned long total_cards_done;           ///< 'total_cards_done', wraps at 65536
  unsigned long laminator_cards_laminated;  ///< 'laminator_cards_laminated', wraps at 65536
  unsigned long laminator_cards_processed;  ///< 'laminator_cards_processed', wraps at 65536
};

/// The laminator's times: root "get_laminator_up_times". Each keeps the low 16 bits.
struct KVUpTimes {
  unsigned long laminator_total_up_time;        ///< 'laminator_total_up_time', wraps at 65536
  unsigned long laminator_top_bulb_on_time;     ///< 'laminator_top_bulb_on_time', wraps at 65536
  unsigned long laminator_bottom_bulb_on_time;  ///< 'laminator_bottom_bulb_on_time', wraps at 65536
};

/// The progress of a cleaning: root "get_cleaning_status".
struct KVCleaningStatus {
  int cleaning_status;  ///< 'cleaning_status', code of cleaningStateToInt
};

/// Free memory: root "get_free_ram" or "get_free_flash".
struct __MEMORY {
  unsigned int bytes_free;  ///< 'bytes_free', low 32 bits
};

}  // namespace Kovra

#endif
