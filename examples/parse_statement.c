/* Parses the statement in its argument and prints its pairs or its errors: the two runs, step by
 * step. */
#include <TAVOErrorHandler.h>
#include <TAVOParser.h>
#include <TAVOParserExt.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>

/* Entries with a key and a value buffer each, as large as the sizing run reports. */
static KeyValueEntry* allocate_array(const RequestRecord* sized, uint32_t entries) {
  /* The sizes are in bytes; a size of 0 needs space for a terminator. */
  const size_t key_size = (size_t)sized->maxKeySize + sizeof(wchar_t);
  const size_t value_size = (size_t)sized->maxValueSize + sizeof(wchar_t);
  KeyValueEntry* array = calloc(entries, sizeof *array);
  for (uint32_t i = 0; array != NULL && i < entries; ++i) {
    array[i].key = calloc(1, key_size);
    array[i].value = calloc(1, value_size);
    if (array[i].key == NULL || array[i].value == NULL) exit(2);
    /* How far the library writes, and how far Provider_Validate reads: set them also when you fill
     * an array yourself. Neither goes any further. */
    array[i].keySize = (uint32_t)key_size;
    array[i].valueSize = (uint32_t)value_size;
  }
  return array;
}

static void free_array(KeyValueEntry* array, uint32_t entries) {
  for (uint32_t i = 0; array != NULL && i < entries; ++i) {
    free(array[i].key);
    free(array[i].value);
  }
  free(array);
}

static void print_errors(uint32_t status) {
  uint32_t count = 0;
  if (Parser_GetErrorCount(&count, NULL) != 0) count = 0;
  /* Nothing is recorded for some statuses, and for any when the platform refused to. */
  if (count == 0) fprintf(stderr, "error %u\n", status);
  for (uint32_t i = 0; i < count; ++i) {
    wchar_t text[1024];
    TAVOErrorRequest error = {.version = 21, .size = sizeof error, .index = i};
    TAVOMessageRequest message = {.version = 21, .size = sizeof message};
    TAVOErrorLocation location;
    if (Parser_GetError(&error) != 0) continue;
    message.block = error.block;
    message.messageId = error.messageId;
    message.text = text;
    message.textBytes = sizeof text;
    Parser_GetFormattedErrorMsg(&message);
    fprintf(stderr, "error %u", error.messageId);
    if (TAVOParser_GetErrorLocation(&location) == 0) {
      fprintf(stderr, " at line %u, column %u", location.line, location.column);
    }
    fprintf(stderr, ": %ls\n", text);
  }
}

int main(int argc, char** argv) {
  setlocale(LC_CTYPE, "C.UTF-8");
  if (argc != 2) {
    fprintf(stderr, "usage: parse_statement STATEMENT\n");
    return 2;
  }
  if (Parser_Init() != 0) return 2;

  ParmTextM text = {.codePage = 0, .text = argv[1]}; /* 8-bit text; the default is UTF-8 */
  size_t length = 0;
  while (argv[1][length] != '\0') ++length;
  RequestRecord request = {.sStructVer = TAVO_REQUEST_VERSION,
                           .form = 'M',
                           .textLength = (int32_t)length,
                           .parmText = &text};

  uint32_t status = Parser_Service(&request); /* the sizing run */
  uint32_t entries = request.count > 0 ? (uint32_t)request.count : 1;
  KeyValueEntry* array = NULL;
  if (status == 0) {
    array = allocate_array(&request, entries);
    if (array == NULL) return 2;
    request.pKeyValueArr = array;
    request.capacity = entries;
    status = Parser_Service(&request); /* the filling run */
  }
  if (status == 0) {
    for (int32_t i = 0; i < request.count; ++i) {
      printf("%u %ls = %u %ls\n", array[i].keyId, array[i].key, array[i].valueId, array[i].value);
    }
  } else {
    print_errors(status);
  }
  free_array(array, entries);
  Parser_Term();
  return status == 0 ? 0 : 1;
}
