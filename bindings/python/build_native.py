"""Builds the extension module from the library's own headers: Python calls what they declare.

Environment:
    TAVO_SOURCE  the source tree
    TAVO_BUILD   a build folder with libTAVOParser, the layout library and the tool's library
    TAVO_BUNDLED 0 for a system package: the loader finds libTAVOParser by itself
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
# The builder is newer than the other headers; a tree without it still provides the rest.
if os.path.exists(os.path.join(INCLUDE, "TAVOBuilder.h")):
    HEADERS.insert(1, "TAVOBuilder.h")

# An accepted statement in one call and one block: a call for each number costs more than the number.
# The block is the head; of all pairs the key types, then the value types, offsets and lengths of keys,
# offsets and lengths of values; the characters of each key, then of each value; the bytes of each
# trace level; all texts in UTF-8 in the same order, each with a zero after it. Only if a text has zeros of
# its own the lengths are needed.
HELPERS = """
typedef struct {
  uint32_t status;
  uint32_t provider;
  uint32_t pairs;
  uint32_t levels;
  uint32_t zeros;
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

/* Where so many numbers are to be written; null when they do not fit. */
static uint32_t* tavo_put_numbers(tavo_writer* writer, size_t count) {
  char* place = writer->next;
  const size_t bytes = count * sizeof(uint32_t);
  writer->needed += bytes;
  if (bytes > writer->left) {
    writer->left = 0;
    return NULL;
  }
  writer->next += bytes;
  writer->left -= bytes;
  return (uint32_t*)place;
}

static uint32_t tavo_has_zeros(const TAVOReadResult* result, uint32_t pairs) {
  for (uint32_t i = 0; i < pairs; ++i) {
    if (memchr(TAVOResult_GetValue(result, i), 0, TAVOResult_GetValueBytes(result, i)) != NULL) {
      return 1;
    }
  }
  return 0;
}

static void tavo_flatten(const TAVOReadResult* result, tavo_writer* writer) {
  const uint32_t pairs = TAVOResult_CountPairs(result);
  const tavo_flat_head head = {TAVOResult_GetStatus(result), TAVOResult_GetProvider(result), pairs,
                               TAVOResult_CountTraceLevels(result), tavo_has_zeros(result, pairs)};
  tavo_put(writer, &head, sizeof head);
  uint32_t* numbers = tavo_put_numbers(writer, 8 * (size_t)pairs + head.levels);
  if (numbers != NULL) {
    uint32_t* lengths = numbers + 6 * (size_t)pairs;
    for (uint32_t i = 0; i < pairs; ++i) {
      TAVORange key = {0, 0};
      TAVORange value = {0, 0};
      TAVOResult_GetKeyRange(result, i, &key);
      TAVOResult_GetValueRange(result, i, &value);
      numbers[i] = TAVOResult_GetKeyType(result, i);
      numbers[pairs + i] = TAVOResult_GetValueType(result, i);
      numbers[2 * (size_t)pairs + i] = key.offset;
      numbers[3 * (size_t)pairs + i] = key.length;
      numbers[4 * (size_t)pairs + i] = value.offset;
      numbers[5 * (size_t)pairs + i] = value.length;
      lengths[i] = (uint32_t)TAVOResult_GetKeyLength(result, i);
      lengths[pairs + i] = (uint32_t)TAVOResult_GetValueLength(result, i);
    }
    lengths += 2 * (size_t)pairs;
    for (uint32_t i = 0; i < head.levels; ++i) {
      *lengths++ = (uint32_t)strlen(TAVOResult_GetTraceLevel(result, i));
    }
  }
  for (uint32_t i = 0; i < pairs; ++i) {
    tavo_put(writer, TAVOResult_GetKey(result, i), TAVOResult_GetKeyBytes(result, i) + 1);
  }
  for (uint32_t i = 0; i < pairs; ++i) {
    tavo_put(writer, TAVOResult_GetValue(result, i), TAVOResult_GetValueBytes(result, i) + 1);
  }
  for (uint32_t i = 0; i < head.levels; ++i) {
    const char* level = TAVOResult_GetTraceLevel(result, i);
    tavo_put(writer, level, strlen(level) + 1);
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
    """The declarations of our own headers, preprocessed, without those of other headers."""
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
    # Only the semicolons of the assertions are left; remove them.
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
        # The wheel contains the library next to the module; a system package finds it where it is installed.
        extra_link_args=(["-Wl,-rpath,$ORIGIN/lib"] if BUNDLED else []) + [
            "-Wl,--exclude-libs,ALL", "-Wl,--as-needed"])
    return builder


ffi = make_ffi()

if __name__ == "__main__":
    ffi.compile(verbose=True)
