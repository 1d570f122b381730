"""The extension module, from the library's own headers: what they declare is what Python calls.

Environment:
    TAVO_SOURCE  the source tree
    TAVO_BUILD   a build folder with libTAVOParser, the layout library and the command line's
    TAVO_BUNDLED 0 for a package of a system whose loader finds libTAVOParser by itself
"""
import os
import re
import subprocess

from cffi import FFI

SOURCE = os.environ.get("TAVO_SOURCE", os.path.join(os.path.dirname(__file__), "..", ".."))
BUILD = os.environ.get("TAVO_BUILD", os.path.join(SOURCE, "build", "release"))
BUNDLED = os.environ.get("TAVO_BUNDLED", "1") != "0"
INCLUDE = os.path.join(SOURCE, "include")
SHARED = os.path.join(SOURCE, "bindings", "shared")

HEADERS = ["TAVOParserSimple.h", "TAVODiagnostics.h", "TAVOLanguage.h", "layout.h"]
# The builder came later than the others; a tree without it still gives the rest.
if os.path.exists(os.path.join(INCLUDE, "TAVOBuilder.h")):
    HEADERS.insert(1, "TAVOBuilder.h")

# An accepted statement in one call and one block: a call for each number costs more than the number.
# The block is the head; of all pairs the key types, then the value types, offsets and lengths of keys,
# offsets and lengths of values; the characters of each key and value in turn; the bytes of each trace
# level; all texts in UTF-8 in the same order.
HELPERS = """
typedef struct {
  uint32_t status;
  uint32_t provider;
  uint32_t pairs;
  uint32_t levels;
} tavo_flat_head;
size_t tavo_read_flat(const void* text, size_t bytes, const TAVOReadOptions* options, char* block,
                      size_t room);
"""
HELPER_CODE = """
#include <string.h>

typedef struct {
  char* next;
  size_t left;
  size_t needed;
} tavo_writer;

static void tavo_put(tavo_writer* writer, const void* data, size_t bytes) {
  writer->needed += bytes;
  if (bytes > writer->left) {
    writer->left = 0;
    return;
  }
  memcpy(writer->next, data, bytes);
  writer->next += bytes;
  writer->left -= bytes;
}

static void tavo_put_number(tavo_writer* writer, size_t number) {
  const uint32_t value = (uint32_t)number;
  tavo_put(writer, &value, sizeof value);
}

static void tavo_flatten(const TAVOReadResult* result, tavo_writer* writer) {
  const tavo_flat_head head = {TAVOResult_GetStatus(result), TAVOResult_GetProvider(result),
                               TAVOResult_CountPairs(result), TAVOResult_CountTraceLevels(result)};
  const uint32_t pairs = head.pairs;
  TAVORange range = {0, 0};
  tavo_put(writer, &head, sizeof head);
  for (uint32_t i = 0; i < pairs; ++i) tavo_put_number(writer, TAVOResult_GetKeyType(result, i));
  for (uint32_t i = 0; i < pairs; ++i) tavo_put_number(writer, TAVOResult_GetValueType(result, i));
  for (int column = 0; column < 4; ++column) {
    for (uint32_t i = 0; i < pairs; ++i) {
      if (column < 2) {
        TAVOResult_GetKeyRange(result, i, &range);
      } else {
        TAVOResult_GetValueRange(result, i, &range);
      }
      tavo_put_number(writer, column % 2 == 0 ? range.offset : range.length);
    }
  }
  for (uint32_t i = 0; i < pairs; ++i) {
    tavo_put_number(writer, TAVOResult_GetKeyLength(result, i));
    tavo_put_number(writer, TAVOResult_GetValueLength(result, i));
  }
  for (uint32_t i = 0; i < head.levels; ++i) {
    tavo_put_number(writer, strlen(TAVOResult_GetTraceLevel(result, i)));
  }
  for (uint32_t i = 0; i < pairs; ++i) {
    tavo_put(writer, TAVOResult_GetKey(result, i), TAVOResult_GetKeyBytes(result, i));
    tavo_put(writer, TAVOResult_GetValue(result, i), TAVOResult_GetValueBytes(result, i));
  }
  for (uint32_t i = 0; i < head.levels; ++i) {
    const char* level = TAVOResult_GetTraceLevel(result, i);
    tavo_put(writer, level, strlen(level));
  }
}

size_t tavo_read_flat(const void* text, size_t bytes, const TAVOReadOptions* options, char* block,
                      size_t room) {
  uint64_t arena[1024];
  TAVOReadResult* result = NULL;
  TAVOReadResult* owned = NULL;
  if (TAVOParser_ReadInto(arena, sizeof arena, text, bytes, options, &result, NULL) ==
      TAVO_READ_NEEDS_MEMORY) {
    TAVOParser_Read(text, bytes, options, &owned);
    result = owned;
  }
  if (result == NULL) return 0;
  tavo_writer writer = {block, room, 0};
  tavo_flatten(result, &writer);
  TAVOParser_FreeResult(owned);
  return writer.needed;
}
"""


def declarations():
    """What our headers declare, as the preprocessor leaves it; of other headers nothing."""
    source = "".join('#include "%s"\n' % header for header in HEADERS)
    text = subprocess.run(
        ["cc", "-E", "-x", "c", "-I", INCLUDE, "-I", SHARED,
         "-D__attribute__(x)=", "-D_Static_assert(condition,text)=", "-"],
        input=source, capture_output=True, text=True, check=True).stdout
    ours, kept = False, []
    wanted = {os.path.realpath(folder) for folder in (INCLUDE, SHARED)}
    skipped = ("TAVOGrammar.h", "TAVOErrorHandler.h")  # the runtime's types, the two-run ABI
    for line in text.split("\n"):
        mark = re.match(r'# \d+ "(.*?)"', line)
        if mark:
            path = os.path.realpath(mark.group(1))
            ours = os.path.dirname(path) in wanted and os.path.basename(path) not in skipped
        elif ours:
            kept.append(line)
    # The assertions are empty now, but for their semicolons.
    return re.sub(r"(?m)^\s*(;\s*)+$", "", "\n".join(kept))


def make_ffi():
    builder = FFI()
    builder.cdef(declarations() + HELPERS +
                 'extern "Python" uint32_t tavo_visit(const TAVODiagnostic*, void*);',
                 packed=False)
    objects = [os.path.join(BUILD, "lib", name)
               for name in ("libtavo_bindings.a", "libtavo_cli.a")]
    builder.set_source(
        "tavoparser._native",
        "".join('#include "%s"\n' % header for header in HEADERS) + HELPERS + HELPER_CODE,
        include_dirs=[INCLUDE, SHARED],
        library_dirs=[os.path.join(BUILD, "lib")],
        extra_objects=objects,
        libraries=["TAVOParser", "fmt", "stdc++"],
        extra_compile_args=["-std=c11", "-O2"],
        # The wheel brings the library beside the module; a package finds it where it is installed.
        extra_link_args=(["-Wl,-rpath,$ORIGIN/lib"] if BUNDLED else []) + [
            "-Wl,--exclude-libs,ALL", "-Wl,--as-needed"])
    return builder


ffi = make_ffi()

if __name__ == "__main__":
    ffi.compile(verbose=True)
