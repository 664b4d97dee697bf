/// @file
/// Kovra for C, and for every language that calls C: texts go in, JSON comes out. A C compiler has
/// to know C99, a C++ compiler C++11.
///
/// These functions do what those of kovra.hpp do. Texts are UTF-8 and end with a zero byte, except
/// for a reply, whose length is given. A null text is an empty one.
///
/// The last parameter says where the result goes; without such a place nothing is done, and the
/// status is KOVRA_REFUSED. A result is one JSON object, as docs/json.md tells it: in ASCII, on one
/// line without a line feed, with a zero byte behind it. It belongs to the caller, who gives it
/// back with kovra_free(). With every status but KOVRA_NO_MEMORY there is a result; with that one
/// the place for it holds null.
///
///     char* json;
///     int const status = kovra_decode(text, length, NULL, &json);
///     if (status == KOVRA_NO_MEMORY) return give_up();
///     handle(status == KOVRA_DONE, json);
///     kovra_free(json);
///
/// RESULTS MAY HOLD SECRETS: keys, pass phrases, the data of magnetic tracks. kovra_decode() shows
/// them, and the document that kovra_compose() makes holds those of its record. Do not log results,
/// and give each back with kovra_free(), which wipes it, rather than with free(), which does not.
///
/// Nothing here holds state or remembers a last error: any function may be called from any thread.
/// No exception passes. The locale of the process does not matter.

#ifndef KOVRA_H
#define KOVRA_H

#include <stddef.h>

#include "kovra_export.h"

#ifdef __cplusplus
extern "C" {
#endif

/// What a function returns. Later versions may add to these; whatever is not KOVRA_DONE is a
/// failure.
enum KovraStatus {
  KOVRA_DONE = 0,       ///< the result is what was asked for
  KOVRA_REFUSED = 1,    ///< the result says why not
  KOVRA_NO_MEMORY = 2,  ///< there was not enough memory, and there is no result
};

/// Decodes a reply of `length` bytes. `as` is the name of the message that it is read as, and null
/// or empty to let the reply's root tell.
///
/// SECRETS ARE SHOWN AS THEY ARE, since this is the only way to get them. The tool `kovra decode`
/// prints asterisks in their place; whoever prints this result prints keys.
///
/// The result of KOVRA_DONE has the `readings` and the `notes`:
///
///     {"kovra":1,"ok":true,"root":"get_count","readings":[{"document":"card-count","result":true,
///      "record":{"total_cards_done":5}}],"notes":[]}
///
/// and that of KOVRA_REFUSED the `error`, with an id and a place:
///
///     {"kovra":1,"ok":false,"error":{"id":"K005","kind":"ends_early","severity":"error","line":1,
///      "column":11,...,"message":"..."}}
KOVRA_EXPORT int kovra_decode(char const* text, size_t length, char const* as, char** json);

/// Composes the document of a message, by its name or by the words of a command line.
///
/// `record` is JSON: what stands as the `record` of a reading in what kovra_decode() gives, or the
/// same as a person wrote it. It may also be all of what kovra_decode() gives, of which the reading
/// counts whose record this document is made of. `choices` is JSON as well, an object with a member
/// for each choice that is made, `{"sections":["wireless"]}`; null or empty for none.
///
/// The result of KOVRA_DONE has the document, in which SECRETS OF THE RECORD ARE SHOWN:
///
///     {"kovra":1,"ok":true,"document":"<?xml version=..."}
///
/// and that of KOVRA_REFUSED the problems, at most a hundred of them, those of the choices first:
///
///     {"kovra":1,"ok":false,"problems":[{"path":"wireless.channel","found":"\"six\"",
///      "expected":"a whole number ...","message":"wireless.channel: found ..."}]}
///
/// A path is one within the record, or the name of a choice. `path` and `message` are always there.
/// Of a text that cannot be read as JSON, a problem says which one in `in`, "record" or "choices",
/// and where in `line` and `column`, which count from 1, and `offset`, which counts bytes from 0;
/// its path is one within that text, and it has neither `found` nor `expected`. It repeats nothing
/// of the text but keys. Of a member that is known for a secret, `found` tells only what kind of
/// value it is.
KOVRA_EXPORT int kovra_compose(char const* message, char const* record, char const* choices,
                               char** document);

/// Every message that the printer sends or accepts, in a fixed order to which later versions only
/// add: its name, what it tells, the roots of its replies, whether it is read and written, the
/// members of its record, those that always have to be there, and what may be chosen of its
/// document.
///
///     {"kovra":1,"ok":true,"messages":[{"name":"configuration","title":"...",
///      "roots":["configuration",...],"read":true,"written":true,
///      "members":[{"name":"physical_address","kind":"text"},...],"required":[],
///      "choices":[{"name":"sections","form":"words","title":"...","words":["ethernet",...],
///                  "required":true},
///                 {"name":"card","form":"number","title":"...","required":false,
///                  "least":1,"most":2},...]},...]}
///
/// The kind of a member is one of "flag", "integer", "natural", "real", "text", "keyword", "list"
/// and "record", and the form of a choice one of "flag", "word", "words" and "number". A member has
/// a `title` where its name does not say it all, a choice `words` where it has some, and `least`
/// and `most` where it is a number with bounds.
KOVRA_EXPORT int kovra_messages(char** json);

/// The JSON Schema (draft 2020-12) of a message's record: what kovra_decode() shows and
/// kovra_compose() takes. The result of KOVRA_DONE is the schema itself; that of KOVRA_REFUSED, for
/// a name that no message has, is as that of kovra_decode().
KOVRA_EXPORT int kovra_schema(char const* message, char** json);

/// The version of the library that is running: "1.0.0". Not to be given back.
KOVRA_EXPORT char const* kovra_version(void);

/// Gives a result back. It is overwritten first, as far as its memory goes, since there may be
/// secrets in it. Null is no mistake.
KOVRA_EXPORT void kovra_free(char* result);

#ifdef __cplusplus
}  // extern "C"
#endif

#endif
