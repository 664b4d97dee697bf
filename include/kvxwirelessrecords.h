/// @file
/// The records of the wireless replies. The host owns them; a reader fills members in place and
/// leaves those alone whose element the reply lacks. Codes are those of the readers in
/// kvxstatusparser.h; all units are the printer's.

#ifndef KVXWIRELESSRECORDS_H
#define KVXWIRELESSRECORDS_H

namespace Kovra {

/// Packet counters of one direction.
struct _tagPackets {
  int octets;    ///< 'octets'
  int upkts;     ///< 'upkts', unicast packets
  int nupkts;    ///< 'nupkts', packets that are not unicast
  int discards;  ///< 'discards'
  int errors;    ///< 'errors'
};

/// The state of the wireless link: root "get_wireless_status". A host sets `security` and `crypto`
/// to zero before each reading, because what is read is combined with what they hold.
struct _tagWirelessStatus {
  int state;              ///< 'state', code of GetWirelessState
  char ssid[32];          ///< 'ssid', the network's name, at most 31 characters of it
  int channel;            ///< 'channel'
  int rssi;               ///< 'rssi', signal strength
  int snr;                ///< 'snr', signal to noise ratio
  int nf;                 ///< 'nf', noise floor
  unsigned int security;  ///< 'security', codes of KVXStatusParser::GetSecurity, combined by OR
  unsigned int crypto;    ///< 'crypto', codes of KVXStatusParser::GetCrypto, combined by OR; not
                          ///< those of WirelessCrypto: 4 is TKIP and CCMP
  int rate;               ///< 'rate'
  _tagPackets in;         ///< 'in', received
  _tagPackets out;        ///< 'out', sent
  int link_lost;          ///< 'link_lost'
};

/// The radio's frame counters: root "get_wireless_radio_status". Each is named after its element.
struct _tagWirelessRadioStatus {
  int mcasttxframe;
  int failed;
  int retry;
  int multiretry;
  int framedup;
  int rtssuccess;
  int rtsfailure;
  int ackfailure;
  int rxfrag;
  int mcastrxframe;
  int fcserror;
  int txframe;
  int tx_success;
  int tx_retry;
  int rx_success;
  int rx_duplicate;
  int rts_success;  ///< another counter than `rtssuccess`
};

/// One access point in range. A host sets `security` and `encryption` to zero before each reading.
struct _tagAccessPoint {
  char ssid[34];            ///< 'SSID', the network's name, at most 33 characters: not 31, as above
  unsigned char bssid[6];   ///< 'BSSID', the access point's hardware address
  bool selected;            ///< 'Selected', true for "true"
  int channel;              ///< 'Channel'
  int privacy;              ///< 'Privacy'
  int signalStrength;       ///< 'SignalStrength'
  bool infrastructure;      ///< 'Infrastructure', true for "true"
  unsigned int security;    ///< 'Security', codes of KVXStatusParser::GetSecurity, combined by OR
  unsigned int encryption;  ///< 'Encryption', codes of KVXStatusParser::GetCrypto, combined by OR;
                            ///< not those of WirelessCrypto: 4 is TKIP and CCMP
  int maxDataRate;          ///< 'MaxDataRate'
};

/// The access points in range: root "AccessPoints". A host reads the reply twice: with a null
/// array, which tells it the count; then with an array of at least that many entries.
struct _tagAccessPoints {
  _tagAccessPoint* accessPoints;  ///< the host's array, or null to ask for the count
  unsigned int count;             ///< child elements of the reply, at least the entries stored
};

}  // namespace Kovra

#endif
