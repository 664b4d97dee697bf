/// @file
/// The records of the sensor replies. The host owns them; a reader fills members in place and
/// leaves those alone whose element the reply lacks, so a host clears a record that it wants clean.

#ifndef KVXSENSORRECORDS_H
#define KVXSENSORRECORDS_H

namespace Kovra {

/// The printer's words for the states of its switches and detectors, as sent: the children of
/// "sensor_states" in root "get_sensor_status". Each member is named after its element and takes
/// the printer's longest word for it; what is longer is cut.
struct _KVPrinterSensorInfo {
  char ribbon_takeup_encoder[8];
  char ribbon_payout_encoder[8];
  char door_open[4];
  char feeder_door_open[4];
  char flipper_sensor_blocked[4];
  char card_in_flipper[4];
  char out_of_cards[4];
  char option_cam_state[8];
  char option_card_motion[4];
  char option_mag_blocked[4];
  char internal_encoder_present[4];
  char external_encoder_present[4];
  char uhf_encoder_present[4];
  char pusher_plate_blocked[4];
  char feeder_mode[8];
  char option_cam_blocked[4];
  char card_edge_blocked[4];
  char tricolor_state[16];
  char head_cam_blocked[4];
  char printhead_fan[4];
};

/// The readings of the printer's sensors: root "get_sensor_status". Each member is named after its
/// element and read from that element's attribute: "reading", where nothing else is said.
struct KVSensorInfo {
  int atm_card_present;       ///< in 'input_output'
  int input_feeder;           ///< in 'input_output'
  int output_hopper;          ///< in 'input_output'
  int synchro_card;           ///< in 'card_path'
  int synchro_mag;            ///< in 'card_path'
  int synchro_contact;        ///< in 'card_path'
  int synchro_contactless;    ///< in 'card_path'
  int flipper_card_present;   ///< in 'card_path'
  int head_open;              ///< in 'doors'
  int input_media_open;       ///< in 'doors'
  int output_media_open;      ///< in 'doors'
  int head_down;              ///< in 'positioning'
  int flipper_ready_in;       ///< in 'positioning'
  int flipper_ready_out;      ///< in 'positioning'
  int encoder;                ///< in 'ribbon' of 'web_media'
  int ribbon_sync_detection;  ///< in 'ribbon' of 'web_media', attribute 'adc_value'
  int led_1;                  ///< in 'color' of 'ribbon' of 'web_media'
  int led_2;                  ///< in 'color' of 'ribbon' of 'web_media'
  int led_3;                  ///< in 'color' of 'ribbon' of 'web_media'
  int film_sensor;            ///< in 'intm' of 'web_media'
  int supply_motor_pulses;    ///< in 'intm' of 'web_media', attribute 'count'
  int takeup_encoder_pulses;  ///< in 'intm' of 'web_media', attribute 'count'
};

}  // namespace Kovra

#endif
