"""What every option of every provider stores, one line per option, written by hand.

A line is: keyword=value -> key type, value type. Each is tried after each provider that has it, and
is refused at its keyword after each other one.

    python3 -m unittest discover -s tests/second_opinion
"""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from recogniser import recognise  # noqa: E402

COMMON = """
    CP=1 -> 57 24           CODEPAGE=-1 -> 57 24
    CPT=ANY -> 59 141       CPTYPE=TERADATA -> 59 152
    TRCLEVEL="OFF" -> 94 251
"""

DISCARD = """
    DLIM=1 -> 61 24         DISCARDLIMIT=+1 -> 61 24
"""

SOURCE = """
    SOURCE="a" -> 83 251    SRC="a" -> 83 251
"""

WHEN_INVALID = """
    WHENINV=PRE -> 97 329   WHENINVALID=PRESERVE -> 97 329
"""

PLAIN_METHOD = """
    MTD=RAN -> 67 198       METHOD=RANDOM -> 67 198     MTD=REP -> 67 197       METHOD=REPEATABLE -> 67 197
"""

HASH_ALGORITHM = """
    ALGO=DEF -> 55 165      ALGORITHM=DEFAULT -> 55 165 ALGO=SHA256 -> 55 166
"""

WHEN_INTEGERS = """
    WHENNULL=1 -> 101 24    WHENSPACE=1 -> 102 24       WHENZEROLEN=1 -> 103 24 WHENMIXED=1 -> 99 24
"""

DATE_FORMAT = """
    SRCDF="a" -> 91 251     SRC_DATE_FORMAT="a" -> 91 251
"""

REPLACE = """
    REP="a" -> 76 251       REPLACE="a" -> 76 251
    DEST="a" -> 60 251      DESTINATION="a" -> 60 251
    TMPDIR="a" -> 93 251
    PRENULL="a" -> 71 251   PRESERVENULL="a" -> 71 251
    PRESPACES="a" -> 72 251 PRESERVESPACES="a" -> 72 251
    PREZL="a" -> 73 251     PRESERVEZEROLENGTH="a" -> 73 251
    ID=a -> 182 250         ID="a" -> 182 251           ID=1 -> 182 250
    LIB=own -> 183 0        LIB=ODBC -> 183 179         LIB=MSS -> 183 179      LIB=ORACLE -> 183 180
    USER=a -> 185 250       USER="a" -> 185 251
    PASS=a -> 184 250       PASS="a" -> 184 251
    CONN=a -> 181 250       CONN="a" -> 181 251
"""

CACHE = """
    CACHE=N -> 188 215      CACHE=MEM -> 188 187        CACHE=MEMORY -> 188 187 CACHE=MEMFILE -> 188 186
    CACHESIZE=1 -> 189 24
    WHENNF=ERR -> 100 330   WHENNF=ERROR -> 100 330     WHENNF=PRE -> 100 331   WHENNOTFOUND=PRESERVE -> 100 331
"""

SEARCH = """
    SEARCH="a" -> 193 251   SRCH="a" -> 193 251
"""

SWAP = """
    SFLD="a" -> 156 251     SWAPFIELD="a" -> 156 251
    LOCKED=Y -> 155 216     LOCKED=NO -> 155 215
    SEED=1 -> 79 24
"""

PROVIDERS = {
    "CCN": [COMMON, DISCARD, SOURCE, WHEN_INVALID, PLAIN_METHOD, """
        PAT=6C -> 69 169    PATTERN=8C -> 69 170        PAT=4C2R -> 69 171
        PAT=4C4R -> 69 172  PAT=6C2R -> 69 173
    """],
    "EML": [COMMON, DISCARD, SOURCE, WHEN_INVALID, PLAIN_METHOD, HASH_ALGORITHM, """
        MTD=HASH -> 67 196
        SEP=. -> 81 248     SEPARATOR=DOT -> 81 248     SEP=_ -> 81 249         SEP=UNDERSCORE -> 81 249
        PARTS="a" -> 68 251
        FCPART1=Y -> 159 216                            FCPART1=NO -> 159 215
        HASHDOM=KEEP -> 157 162                         HASHDOMAIN=REG -> 157 163
        HASHDOM=UNREGISTERED -> 157 164
        DOM=a -> 158 250    DOMAIN="a" -> 158 251
        USERPFX=a -> 160 250                            USERPREFIX="a" -> 160 251
        CASE=LOW -> 56 53   CASE=UPPER -> 56 54
        SEED="a" -> 79 246  SEED=HMAC -> 79 245
    """],
    "NID": [COMMON, DISCARD, SOURCE, WHEN_INVALID, PLAIN_METHOD, """
        SWI=CA -> 92 199    SWITCH=ES -> 92 200         SWI=FR -> 92 201
        SWI=IT -> 92 202    SWI=UK -> 92 203            SWI=US -> 92 204
        VAL=Y -> 96 216     VALIDATE=N -> 96 215
        ATAB=DIST -> 211 50 AREATABLE=MAXGROUP -> 211 51                        ATAB=HRM -> 211 52
    """],
    "AFF": [COMMON, DISCARD, SOURCE, """
        MTD=HASH -> 67 196  MTD=REP -> 67 197           METHOD=REPEATABLE -> 67 197
        ALGO=DEF -> 55 34   ALGORITHM=DEFAULT -> 55 34  ALGO=FPE -> 55 33
        KEY=@a -> 37 174    KEY="a" -> 37 175
        TWEAKS=Y -> 39 216  TWEAKS=N -> 39 215
        ITERATIONS=1 -> 36 24
        WHENMATCH=REVERSE -> 98 307                     WHENMATCH=SHUFFLE -> 98 314
        WHENMATCH=PREFIX("a") -> 98 40                  WHENMATCH=SUFFIX(RAND(1,2)) -> 98 40
        WHENMATCH=OVERLAY(1,2,"a") -> 98 40
        LEN=1 -> 107 24     LENGTH=MAX -> 107 105
        SEED=@a -> 79 243   SEED="a" -> 79 246          SEED=RAN -> 79 247      SEED=RANDOM -> 79 247
        RULE=BIN -> 77 106  RULE=BINARY -> 77 106       RULE=NUM -> 77 108
        RULE=NUMERIC -> 77 108                          RULE=SCA -> 77 104      RULE=SCALED -> 77 104
        TRIM=RIGHT -> 95 326
        COPY=(1,2) -> 109 0
        REMOVE="a" -> 75 251
        CASE=UP -> 56 54
        CLASS="a" -> 35 251 LANG="a" -> 38 251          LANGUAGE="a" -> 38 251
    """],
    "HASH": [COMMON, DISCARD, SOURCE, HASH_ALGORITHM, WHEN_INTEGERS, DATE_FORMAT, """
        SEED=@a -> 79 243   SEED=#a -> 79 244           SEED="a" -> 79 246      SEED=HMAC -> 79 245
        SEED=RAN -> 79 247  SEED=RANDOM -> 79 247
        DSTFLD=a -> 62 250  DSTFLD="a" -> 62 251
        HASHMAX=1 -> 167 24
        REMOVE="a" -> 75 251
        SEP="a" -> 81 251   SEPARATOR="a" -> 81 251
        CASE=UPPER -> 56 54
    """],
    "LOOKUP": [COMMON, DISCARD, SOURCE, REPLACE, CACHE, SEARCH, DATE_FORMAT, """
        OP=AND -> 192 213   OPERATOR=OR -> 192 214
    """],
    "HASH_LOOKUP": [COMMON, DISCARD, REPLACE, CACHE, SEARCH, DATE_FORMAT, HASH_ALGORITHM, WHEN_INTEGERS, """
        SOURCE="a" -> 193 251                           SRC="a" -> 193 251
        SEED="a" -> 79 246  SEED=HMAC -> 79 245
        REMOVE="a" -> 75 251
        CASE=UP -> 56 54
        HASHFLD=a -> 66 250 HASHFIELD="a" -> 66 251
    """],
    "RANDOM_LOOKUP": [COMMON, DISCARD, REPLACE, """
        LIM=1 -> 191 24     LIMIT=1 -> 191 24
    """],
    "AGE": [COMMON, DISCARD, SOURCE, PLAIN_METHOD, DATE_FORMAT, """
        MTD=CONSTRANDOM -> 67 195
        DSTDF="a" -> 63 251 DST_DATE_FORMAT="a" -> 63 251
        YR=1 -> 48 24       YEAR="a" -> 45 251
        MON=1 -> 43 0       MONTH=1 -> 43 0
        WK=1 -> 46 0        WEEK=1 -> 46 0
        DAY=1 -> 41 24      DAY=ANY -> 42 141
        PIV=1 -> 44 0       PIVOT=1 -> 44 0
        WHENRESULTINVALID=PRE -> 47 49                  WHENRESULTINVALID=PRESERVE -> 47 49
    """],
    "DS": [COMMON, PLAIN_METHOD, SWAP, "RATE=1 -> 74 24"],
    "CDS": [COMMON, PLAIN_METHOD, SWAP, """
        CTL="a" -> 154 251  CONTROL="a" -> 154 251      CLASS="a" -> 153 251    CLASSIFIER="a" -> 153 251
    """],
    "DDS": [COMMON, PLAIN_METHOD, SWAP, "SIZE=1 -> 82 24"],
}


def rows(blocks):
    """(statement, key type, value type)"""
    words = " ".join(blocks).split()
    return [(words[at], int(words[at + 2]), int(words[at + 3])) for at in range(0, len(words), 4)]


class OptionTables(unittest.TestCase):

    def test_every_option_stores_what_it_should(self):
        for provider, blocks in PROVIDERS.items():
            for option, key_type, value_type in rows(blocks):
                result = recognise(f"PRO={provider},{option}", fill=True)
                self.assertNotIn(7139, [error.number for error in result.errors], (provider, option))
                key, _, value = option.partition("=")
                if value_type in (251, 246, 175):
                    value = value[1:-1]
                self.assertEqual([tuple(pair) for pair in result.pairs[1:]], [(key_type, key, value_type, value)], (provider, option))

    def test_every_other_option_is_refused_at_its_keyword(self):
        every = {option.partition("=")[0] for blocks in PROVIDERS.values() for option, _, _ in rows(blocks)}
        for provider, blocks in PROVIDERS.items():
            own = {option.partition("=")[0] for option, _, _ in rows(blocks)}
            for keyword in every - own:
                result = recognise(f"PRO={provider},{keyword}=1", fill=True)
                self.assertEqual(result.error[:2], (7139, len(f"PRO={provider},") + 1), (provider, keyword))
                self.assertEqual(len(result.pairs), 1)

    def test_every_provider_takes_a_field_definition(self):
        for provider in PROVIDERS:
            result = recognise(f"PRO={provider},FLDDEF3=(LEN=1)", fill=True)
            self.assertEqual(tuple(result.pairs[1]), (220, "FLDDEF3:LEN", 24, "1"))


class Values(unittest.TestCase):

    def test_data_types(self):
        types = """
            CHAR 1  VARCHAR 2  VARCHAR_SZ 3  WCHAR 4  WVARCHAR 5  WVARCHAR_SZ 6  LONG_LONG 7  U_LONG_LONG 8
            INT 9  INTEGER 9  U_INT 10  U_INTEGER 10  DECIMAL_K48 13  DECK48 13  DATE 14  TIME 15  TIMESTAMP 16
            DATETIME_SZ 17  DATETIME_WSZ 18  DOUBLE 19  FLOAT 20  SMALLINT 21  U_SMALLINT 22  TINYINT 23  U_TINYINT 24
            DATETIME_CHAR 25  DATETIME_VARCHAR 26  DATETIME_WCHAR 27  DATETIME_WVARCHAR 28  ORA_VARNUM 101
        """.split()
        for word, code in zip(types[::2], map(int, types[1::2])):
            result = recognise(f"PRO=CCN,FLDDEF=(DT={word})", fill=True)
            self.assertEqual((result.status, tuple(result.pairs[1])), (0, (218, "FLDDEF:DT", code, word)))
        for word in ("GRAPHIC", "VARGRAPHIC"):
            self.assertEqual(recognise(f"PRO=CCN,FLDDEF=(DT={word})", fill=True).error[:2], (7139, 20))

    def test_national_formats(self):
        accepted = {
            "US": (229, ["9X", "3C6X", "3X-2X-4X", "3c 2x 4x"]),
            "CA": (224, ["9X", "3C6X", "3X-3X-3X", "3C 3X 3X"]),
            "UK": (228, ["9X", "8X1C", "2C 6X 1C", "2X-2X-2X-2X-1X"]),
            "FR": (226, ["15X", "13X 2X", "1X2C2X5C3X-2X"]),
            "IT": (227, ["16X", "3C 3C 5C 5X"]),
            "ES": (225, ["8X", "7X-1X", "7X 1X"]),
        }
        for country, (key_type, values) in accepted.items():
            for other, (_, others) in accepted.items():
                for value in others:
                    result = recognise(f"PRO=NID,SWI=US,FMT=({country}={value})", fill=True)
                    if value in values:
                        self.assertEqual((result.status, tuple(result.pairs[2])), (0, (key_type, "FMT:" + country, 0, value)))
                    else:
                        self.assertEqual(result.error[:2], (7139, 24), (country, value))

    def test_no_country_repeats(self):
        for country, value in (("US", "9X"), ("CA", "9X"), ("UK", "9X"), ("FR", "15X"), ("IT", "16X"), ("ES", "8X")):
            result = recognise(f"PRO=NID,SWI=US,FMT=({country}={value},{country}={value})", fill=True)
            self.assertEqual(len(result.pairs), 3)


if __name__ == "__main__":
    unittest.main()
