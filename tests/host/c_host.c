/* A host in C: each function does what kovra.h says, for right and for wrong arguments. */

#include <kovra.h>
#include <stdio.h>
#include <string.h>

static int failures;

static void expect(int is, char const* what) {
  if (is) return;
  fprintf(stderr, "not so: %s\n", what);
  ++failures;
}

/* What no function may leave where its result belongs. */
static char untouched[] = "untouched";

/* Checks a result, and gives it back. */
static void expect_result(int status, int expected, char* json, char const* part,
                          char const* what) {
  expect(status == expected, what);
  expect(json != untouched && json != NULL, what);
  if (json == untouched || json == NULL) return;
  expect(json[0] == '{' && json[strlen(json) - 1] == '}', what);
  expect(strchr(json, '\n') == NULL, what);
  expect(strstr(json, part) != NULL, what);
  if (strstr(json, part) == NULL) fprintf(stderr, "  %s\n  lacks %s\n", json, part);
  kovra_free(json);
}

static void decode(char const* text, size_t length, char const* as, int expected,
                   char const* part) {
  char* json = untouched;
  int const status = kovra_decode(text, length, as, &json);
  expect_result(status, expected, json, part, "kovra_decode");
}

static void compose(char const* message, char const* record, char const* choices, int expected,
                    char const* part) {
  char* document = untouched;
  int const status = kovra_compose(message, record, choices, &document);
  expect_result(status, expected, document, part, "kovra_compose");
}

static void schema(char const* message, int expected, char const* part) {
  char* json = untouched;
  int const status = kovra_schema(message, &json);
  expect_result(status, expected, json, part, "kovra_schema");
}

static char const reply[] =
    "<configuration><wireless><ssid>B\xc3\xbcro</ssid><key>umbrella</key></wireless>"
    "</configuration>";
static size_t const length = sizeof reply - 1;

static void decode_replies(void) {
  decode(reply, length, NULL, KOVRA_DONE, "\"key\":\"umbrella\"");
  decode(reply, length, "", KOVRA_DONE, "\"ssid\":\"B\\u00fcro\"");
  decode(reply, length, "configuration", KOVRA_DONE, "{\"kovra\":1,\"ok\":true,");
  decode(reply, length - 1, NULL, KOVRA_REFUSED, "\"id\":\"K005\"");
  decode(reply, length, "media", KOVRA_REFUSED, "\"id\":\"K014\"");
  decode(reply, length, "nothing", KOVRA_REFUSED, "\"id\":\"K015\"");
  decode(reply, 0, NULL, KOVRA_REFUSED, "\"id\":\"K001\"");
  decode(NULL, 0, NULL, KOVRA_REFUSED, "\"id\":\"K001\"");
  decode(NULL, length, NULL, KOVRA_REFUSED, "\"id\":\"K001\"");
  expect(kovra_decode(reply, length, NULL, NULL) == KOVRA_REFUSED,
         "nowhere to put what is decoded");
}

static void compose_documents(void) {
  char const* const choices = "{\"sections\":[\"wireless\"],\"zero_missing\":true}";
  char const* const key = "<key>umbrella</key>";
  char* decoded = NULL;
  compose("configuration", "{\"wireless\":{\"key\":\"umbrella\"}}", choices, KOVRA_DONE, key);
  expect(kovra_decode(reply, length, NULL, &decoded) == KOVRA_DONE, "a reply");
  compose("configuration", decoded, choices, KOVRA_DONE, key);
  kovra_free(decoded);
  compose("nonce", "{\"nonce\":\"n\"}", NULL, KOVRA_DONE, "<?xml version=");
  compose("nonce", "{\"nonce\":\"n\"}", "", KOVRA_DONE, "{\"kovra\":1,\"ok\":true,");
  compose("nonce", "{\"nonce\":5}", NULL, KOVRA_REFUSED, "\"path\":\"nonce\"");
  compose("nonce", "{\"nonce\":}", NULL, KOVRA_REFUSED, "\"in\":\"record\",\"line\":1");
  compose("nonce", "{\"nonce\":\"n\"}", "{", KOVRA_REFUSED, "\"in\":\"choices\"");
  compose("nothing", "{}", NULL, KOVRA_REFUSED, "{\"kovra\":1,\"ok\":false,\"problems\":[{");
  compose(NULL, "{}", NULL, KOVRA_REFUSED, "\"problems\":[{");
  compose("nonce", NULL, NULL, KOVRA_REFUSED, "\"in\":\"record\"");
  compose(NULL, NULL, NULL, KOVRA_REFUSED, "\"problems\":[{");
  expect(kovra_compose("nonce", "{}", NULL, NULL) == KOVRA_REFUSED, "nowhere to put a document");
}

static void tell_what_there_is(void) {
  char* json = untouched;
  int const status = kovra_messages(&json);
  expect_result(status, KOVRA_DONE, json, "{\"name\":\"configuration\",", "kovra_messages");
  expect(kovra_messages(NULL) == KOVRA_REFUSED, "nowhere to put messages");
  schema("nonce", KOVRA_DONE, "https://json-schema.org/");
  schema("nothing", KOVRA_REFUSED, "\"id\":\"K015\"");
  schema("", KOVRA_REFUSED, "\"id\":\"K015\"");
  schema(NULL, KOVRA_REFUSED, "\"id\":\"K015\"");
  expect(kovra_schema("nonce", NULL) == KOVRA_REFUSED, "nowhere to put a schema");
}

int main(void) {
  decode_replies();
  compose_documents();
  tell_what_there_is();
  kovra_free(NULL);
  puts(kovra_version());
  return failures != 0;
}
