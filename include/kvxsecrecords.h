/// @file
/// Records of the secure-action exchange. Texts stand in fixed arrays and end with a NUL; the
/// library carries them as they are and neither checks nor converts them. Records whose texts are
/// keys or passkeys are the caller's to wipe.

#ifndef KVXSECRECORDS_H
#define KVXSECRECORDS_H

namespace Kovra {

/// The host's Diffie-Hellman values, root "diffie_hellman". The printer's own value,
/// 'printer_interim_key', is handed over apart from them.
struct _tagHostDHKeys {
  long modulus;           ///< 'modulus'
  long base;              ///< 'base', the generator
  long host_interim_key;  ///< 'host_interim_key', the host's public value
};

/// A secure action directive, root "action".
struct _tagSecDirecXML {
  char model[260];   ///< the printer's model; not read, the caller's own
  char serial[260];  ///< the printer's serial number; not read, the caller's own
  char action[260];  ///< text of the root, brought to its keyword
  char nonce[260];   ///< the nonce that the directive answers; not read, the caller's own
  char hmac[260];    ///< 'hmac', as the document carries it
};

/// A secure action request, root "secure_action_request". None of it is read.
struct _tagSecReqXML {
  char model[260];   ///< the printer's model
  char serial[260];  ///< the printer's serial number
  char action[260];  ///< the action's keyword
  char nonce[260];   ///< the printer's nonce
};

/// The three working keys, root "keys".
struct _tagSecKeys {
  char data_encryption_key[260];      ///< 'data_encryption_key'
  char host_authentication_key[260];  ///< 'host_authentication_key'
  char printer_lock_key[260];         ///< 'printer_lock_key'
};

/// A change of keys and passkey, 'set' below root "keys"; `current_passkey` alone is root
/// "passkey".
struct _tagSecSetKeys {
  char current_data_encryption_key[64];      ///< 'current_data_encryption_key'
  char new_data_encryption_key[64];          ///< 'new_data_encryption_key'
  char current_host_authentication_key[64];  ///< 'current_host_authentication_key'
  char new_host_authentication_key[64];      ///< 'new_host_authentication_key'
  char current_printer_lock_key[64];         ///< 'current_printer_lock_key'
  char new_printer_lock_key[64];             ///< 'new_printer_lock_key'
  char current_passkey[64];                  ///< 'current_passkey'
  char new_passkey[64];                      ///< 'new_passkey'
};

/// What a request or a directive is composed of: texts that the caller owns. A null one is left out
/// of the document.
struct _tagSecActionXMLValues {
  char const* action;  ///< the action's keyword; a directive does not carry it
  char const* model;   ///< the printer's model
  char const* serial;  ///< the printer's serial number
  char const* nonce;   ///< the printer's nonce
  char const* hmac;    ///< the directive's HMAC; a request does not carry it
};

}  // namespace Kovra

#endif
