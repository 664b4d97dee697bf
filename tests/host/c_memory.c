/* A host in C without memory: whichever call for it fails, once or from then on, is told, loses
   nothing, and leaves no secret behind. All of the process gets its memory here, the C++ runtime of
   the library and its exceptions as well. */

#include <kovra.h>
#include <malloc.h>
#include <stdio.h>
#include <string.h>

extern void* __libc_malloc(size_t size);
extern void* __libc_calloc(size_t count, size_t size);
extern void* __libc_realloc(void* block, size_t size);
extern void __libc_free(void* block);

static char const secret[] = "seven red umbrellas";

static struct {
  size_t failing; /* the number of the call that fails, from 1; 0 for none */
  int for_good;   /* and all behind it? */
  size_t made;
  long alive;
  int looks_for_secrets;
  size_t secrets; /* blocks that were given back with the secret in them */
} watch;

static int fails(void) {
  ++watch.made;
  return watch.failing != 0 &&
         (watch.for_good ? watch.made >= watch.failing : watch.made == watch.failing);
}

static void* counted(void* block) {
  if (block != NULL) ++watch.alive;
  return block;
}

void* malloc(size_t size) {
  return fails() ? NULL : counted(__libc_malloc(size));
}

void* calloc(size_t count, size_t size) {
  return fails() ? NULL : counted(__libc_calloc(count, size));
}

void* realloc(void* block, size_t size) {
  if (fails()) return NULL;
  return block == NULL ? counted(__libc_malloc(size)) : __libc_realloc(block, size);
}

static int holds_secret(char const* block, size_t size) {
  size_t at;
  for (at = 0; at + sizeof secret - 1 <= size; ++at) {
    if (memcmp(block + at, secret, sizeof secret - 1) == 0) return 1;
  }
  return 0;
}

void free(void* block) {
  if (block == NULL) return;
  --watch.alive;
  if (watch.looks_for_secrets && holds_secret(block, malloc_usable_size(block))) ++watch.secrets;
  __libc_free(block);
}

static char const reply[] =
    "<configuration><wireless><key>seven red umbrellas</key></wireless></configuration>";
static char const record[] = "{\"wireless\":{\"key\":\"seven red umbrellas\",\"channel\":6}}";
static char const choices[] = "{\"sections\":[\"wireless\"],\"zero_missing\":true}";

static int decode(char** json) {
  return kovra_decode(reply, sizeof reply - 1, NULL, json);
}
static int refuse(char** json) {
  return kovra_decode(reply, sizeof reply - 2, NULL, json);
}
static int compose(char** json) {
  return kovra_compose("configuration", record, choices, json);
}
static int refuse_record(char** json) {
  return kovra_compose("media", record, choices, json);
}
static int refuse_text(char** json) {
  return kovra_compose("media", "[1,}", "{\"a\":01}", json);
}
static int list(char** json) {
  return kovra_messages(json);
}
static int schema(char** json) {
  return kovra_schema("nonce", json);
}
static int refuse_schema(char** json) {
  return kovra_schema("nothing", json);
}

static struct {
  char const* name;
  int (*call)(char** json);
  int status;
} const calls[] = {
    {"decode", decode, KOVRA_DONE},
    {"refuse", refuse, KOVRA_REFUSED},
    {"compose", compose, KOVRA_DONE},
    {"refuse a record", refuse_record, KOVRA_REFUSED},
    {"refuse a text", refuse_text, KOVRA_REFUSED},
    {"list", list, KOVRA_DONE},
    {"schema", schema, KOVRA_DONE},
    {"refuse a schema", refuse_schema, KOVRA_REFUSED},
};

static int complain(size_t which, size_t failing, char const* what) {
  fprintf(stderr, "%s, call %zu for memory: %s\n", calls[which].name, failing, what);
  return 1;
}

/* One call, of which call number `failing` for memory fails, or none; whether it was made. */
static int call(size_t which, size_t failing, int for_good, int* status, char** json) {
  int failed;
  /* What is read as JSON is known for a secret only when all of it is read. */
  watch.looks_for_secrets = failing == 0 || calls[which].call == decode;
  watch.failing = failing;
  watch.for_good = for_good;
  watch.made = 0;
  *status = calls[which].call(json);
  failed = watch.made >= failing;
  watch.failing = 0;
  watch.looks_for_secrets = 1; /* in results, when they are given back */
  return failed;
}

static int is_right(size_t which, int status, char const* json, char const* expected) {
  return status == calls[which].status && json != NULL && strcmp(json, expected) == 0;
}

/* Fails one call for memory after the other, until the whole call gets along. */
static int sweep(size_t which, int for_good, char const* expected) {
  static char untouched[] = "untouched";
  size_t failing;
  for (failing = 1;; ++failing) {
    long const alive = watch.alive;
    char* json = untouched;
    int status;
    int const failed = call(which, failing, for_good, &status, &json);
    if (!failed) {
      if (!is_right(which, status, json, expected)) return complain(which, failing, "went wrong");
      kovra_free(json);
      if (watch.alive != alive) return complain(which, failing, "lost memory");
      return failing < 4 ? complain(which, failing, "so few calls tell nothing") : 0;
    }
    /* The runtime keeps some memory for exceptions: then the call gets along nevertheless. */
    if (status != KOVRA_NO_MEMORY) {
      if (!is_right(which, status, json, expected)) return complain(which, failing, "went wrong");
      kovra_free(json);
    } else if (json != NULL) {
      return complain(which, failing, "left something");
    }
    if (watch.alive != alive) return complain(which, failing, "lost memory");
  }
}

int main(void) {
  size_t which;
  int bad = 0;
  setvbuf(stderr, NULL, _IONBF, 0);
  for (which = 0; which < sizeof calls / sizeof *calls; ++which) {
    char* expected;
    char* ignored;
    int status;
    /* What is made once, for results and for exceptions, is there from now on. */
    call(which, 0, 0, &status, &expected);
    if (!is_right(which, status, expected, expected)) return complain(which, 0, "went wrong");
    call(which, 1, 1, &status, &ignored);
    bad |= sweep(which, 0, expected);
    bad |= sweep(which, 1, expected);
    expected[0] = '\0'; /* as a host may do that takes it to pieces */
    kovra_free(expected);
  }
  if (watch.secrets != 0) bad |= fprintf(stderr, "%zu blocks with secrets\n", watch.secrets) > 0;
  return bad;
}
