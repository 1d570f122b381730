"""One statement per call: compares this package with ctypes on the two-run interface, in one run.

    bench.py BUILD    the build folder with libTAVOParser
"""
import ctypes
import statistics
import sys
import time

import tavoparser

STATEMENT = ('PRO=EML, MTD=HASH, ALGO=SHA256, SEED="1234", '
             "FLDDEF1=(NAME=MAIL, DT=VARCHAR_SZ, LEN=64)")
LONG = STATEMENT + "".join(", FLDDEF%d=(NAME=FIELD%d, DT=CHAR, LEN=20)" % (n, n)
                           for n in range(2, 12))
REPEATS, CALLS = 9, 2000


class Entry(ctypes.Structure):
    _fields_ = [("caller0", ctypes.c_uint8 * 16), ("key", ctypes.c_void_p),
                ("keyId", ctypes.c_uint32), ("keySize", ctypes.c_uint32),
                ("caller1", ctypes.c_uint8 * 8), ("value", ctypes.c_void_p),
                ("valueId", ctypes.c_uint32), ("valueSize", ctypes.c_uint32),
                ("valueLength", ctypes.c_uint32), ("status", ctypes.c_uint32)]


class Text(ctypes.Structure):
    _fields_ = [("text", ctypes.c_wchar_p)]


class Request(ctypes.Structure):
    _fields_ = [("caller0", ctypes.c_uint8 * 4), ("version", ctypes.c_int16),
                ("caller1", ctypes.c_uint8 * 2), ("entries", ctypes.POINTER(Entry)),
                ("capacity", ctypes.c_uint32), ("count", ctypes.c_int32),
                ("maxKey", ctypes.c_int32), ("maxValue", ctypes.c_int32),
                ("caller2", ctypes.c_uint8), ("flag", ctypes.c_uint8),
                ("caller3", ctypes.c_uint8 * 4), ("form", ctypes.c_char), ("pad39", ctypes.c_uint8),
                ("length", ctypes.c_int32), ("pad44", ctypes.c_uint8 * 4),
                ("parm", ctypes.c_void_p)]


def read_with_ctypes(library, statement):
    text = Text(statement)
    request = Request(version=21, form=b"W", length=4 * len(statement),
                      parm=ctypes.addressof(text))
    if library.Parser_Service(ctypes.byref(request)) != 0:
        raise ValueError("rejected")
    count = request.count
    entries = (Entry * count)()
    buffers = []
    for entry in entries:
        key = ctypes.create_unicode_buffer(request.maxKey // 4 + 1)
        value = ctypes.create_unicode_buffer(request.maxValue // 4 + 1)
        buffers.append((key, value))
        entry.key, entry.keySize = ctypes.addressof(key), request.maxKey + 4
        entry.value, entry.valueSize = ctypes.addressof(value), request.maxValue + 4
    request.entries, request.capacity = entries, count
    if library.Parser_Service(ctypes.byref(request)) != 0:
        raise ValueError("rejected")
    return [(entries[i].keyId, buffers[i][0].value, entries[i].valueId, buffers[i][1].value)
            for i in range(request.count)]


def read_here(statement):
    return tavoparser.parse(statement).entries


def read_with_places(statement):
    return tavoparser.parse(statement).pairs


def seconds(function):
    begin = time.perf_counter()
    for _ in range(CALLS):
        function()
    return (time.perf_counter() - begin) / CALLS


def compare(library, statement):
    ours, theirs = read_here(statement), read_with_ctypes(library, statement)
    if ours != theirs:
        sys.exit("the two readings differ")
    runs = [(seconds(lambda: read_with_ctypes(library, statement)),
             seconds(lambda: read_here(statement)),
             seconds(lambda: read_with_places(statement)),
             seconds(lambda: tavoparser.parse(statement))) for _ in range(REPEATS)]
    print("a statement of %d characters, %d pairs" % (len(statement), len(ours)))
    # The first two give the same: a list of key type, key, value type and value.
    for name, column in (("ctypes on the two runs, every pair", 0), ("parse, every pair", 1),
                         ("parse, every pair with its places", 2),
                         ("parse, no pair looked at", 3)):
        time_taken = statistics.median(run[column] for run in runs)
        ratio = statistics.median(run[0] / run[column] for run in runs)
        print("%-36s %7.1f us   ctypes takes %4.1f times as long" % (name, time_taken * 1e6, ratio))


def main():
    library = ctypes.CDLL(sys.argv[1] + "/lib/libTAVOParser.so.1")
    library.Parser_Init()
    try:
        for statement in (STATEMENT, LONG):
            compare(library, statement)
    finally:
        library.Parser_Term()


if __name__ == "__main__":
    main()
