/* Prints what a reply says as JSON, or why it was refused.
     decode REPLY */

#include <kovra.h>
#include <stdio.h>

int main(int argc, char** argv) {
  static char text[1 << 20];
  FILE* const file = argc == 2 ? fopen(argv[1], "rb") : NULL;
  if (file == NULL) {
    fputs("usage: decode REPLY\n", stderr);
    return 2;
  }
  size_t const length = fread(text, 1, sizeof text, file);
  fclose(file);

  char* json;
  int const status = kovra_decode(text, length, NULL, &json);
  if (status == KOVRA_NO_MEMORY) return 3;
  puts(json); /* keys and pass phrases are in it */
  kovra_free(json);
  return status == KOVRA_DONE ? 0 : 1;
}
