"""The providers' options and rules; every expectation is written by hand.

    python3 -m unittest discover -s tests/second_opinion
"""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from recogniser import recognise  # noqa: E402
from statement_case import Case, pairs  # noqa: E402
from validation import Pair, Violation, validate  # noqa: E402


class Ccn(Case):

    def test_patterns(self):
        for typed, stored in (("6C", 169), ("6c", 169), ("8C", 170), ("4C2R", 171), ("4C4R", 172), ("6C2R", 173)):
            self.accepted("PRO=CCN, PAT=" + typed, (230, "PRO", 232, "CCN"), (69, "PAT", stored, typed))
        self.syntax("PRO=CCN, PAT=7C", 14, [(230, "PRO", 232, "CCN")])
        self.syntax("PRO=CCN, PAT 6C", 14)

    def test_method(self):
        self.accepted("PRO=CCN, MTD=REP", (230, "PRO", 232, "CCN"), (67, "MTD", 197, "REP"))
        self.syntax("PRO=CCN, MTD=HASH", 14)

    def test_another_providers_option(self):
        self.syntax("PRO=CCN, DOM=x", 10)

    def test_a_random_method_excludes_two_options(self):
        self.invalid("PRO=CCN, MTD=RAN, PAT=6C", 7106)
        self.invalid("PRO=CCN, MTD=RANDOM, WHENINVALID=PRE", 7096)
        self.invalid("PRO=CCN, PAT=6C, WHENINV=PRESERVE, MTD=RAN", 7096)


class Eml(Case):

    def test_domains(self):
        self.accepted("PRO=EML, DOM=example", (230, "PRO", 237, "EML"), (158, "DOM", 250, "example"))
        self.accepted("PRO=EML, DOM=HASH", (230, "PRO", 237, "EML"), (158, "DOM", 250, "HASH"))
        self.assertEqual(pairs("PRO=EML, HASHDOM=REG")[1], (157, "HASHDOM", 163, "REG"))
        self.accepted("PRO=EML, DOM=" + "x" * 31)
        self.invalid("PRO=EML, DOM=" + "x" * 32, 7114)

    def test_its_seed_is_a_literal_or_hmac(self):
        self.syntax("PRO=EML, SEED=RANDOM", 15)
        self.invalid("PRO=EML, SEED=HMAC", 7155)
        self.invalid('PRO=EML, SEED="1"', 7154)
        self.invalid('PRO=EML, MTD=HASH, SEED="' + "1" * 32 + '"', 7116)
        self.accepted('PRO=EML, MTD=HASH, SEED="any words"')
        sha = 'PRO=EML, MTD=HASH, ALGO=SHA256, SEED='
        self.accepted(sha + '"2000000000"')
        self.accepted(sha + '"+7"')
        self.accepted(sha + "HMAC")
        for seed in ('"2000000001"', '"-0"', '"-1"', '" 1"', '""', '"x"', '"4294967296"'):
            self.invalid(sha + seed, 7157)

    def test_combinations(self):
        self.invalid("PRO=EML, ALGO=DEF, MTD=RAN", 7161)
        self.invalid("PRO=EML, ALGO=SHA256", 7154)
        self.invalid("PRO=EML, MTD=RAN, WHENINV=PRE", 7096)
        self.invalid("PRO=EML, MTD=RAN, DOM=x", 7159)
        self.invalid("PRO=EML, MTD=RAN, SEED=HMAC", 7160)
        self.invalid("PRO=EML, MTD=RAN, HASHDOM=KEEP", 7158)
        self.invalid("PRO=EML, HASHDOM=KEEP", 7154)
        self.accepted("PRO=EML, USERPFX=" + "x" * 512)
        self.invalid("PRO=EML, USERPFX=" + "x" * 513, 7115)
        self.invalid("PRO=EML, MTD=HASH, USERPFX=x", 7108)
        self.invalid('PRO=EML, PARTS="1", USERPFX=x', 7107)
        self.invalid('PRO=EML, PARTS="1", MTD=HASH', 7109)
        self.invalid("PRO=EML, DOM=x, MTD=HASH", 7112)
        self.invalid("PRO=EML, CASE=LOW, MTD=HASH", 7110)
        self.invalid("PRO=EML, FCPART1=Y, MTD=HASH", 7111)
        self.invalid("PRO=EML, SEP=., MTD=HASH", 7113)
        self.accepted("PRO=EML, SEP=_, CASE=UP, FCPART1=NO")


class Nid(Case):

    def test_switch_and_table(self):
        self.accepted("PRO=NID, SWI=US", (230, "PRO", 241, "NID"), (92, "SWI", 204, "US"))
        self.assertEqual(pairs("PRO=NID, ATAB=HRM")[1], (211, "ATAB", 52, "HRM"))
        self.invalid("PRO=NID", 7104)
        self.invalid("PRO=NID, SWI=FR, ATAB=HRM", 7105)
        self.accepted("PRO=NID, SWI=US, ATAB=HRM")

    def test_formats(self):
        self.accepted("PRO=NID, SWI=US, Fmt=(us=3X 2X 4X, FR=15X)", (230, "PRO", 241, "NID"), (92, "SWI", 204, "US"),
                      (229, "Fmt:us", 0, "3X 2X 4X"), (226, "Fmt:FR", 0, "15X"))
        self.assertEqual(len(pairs("PRO=NID, SWI=US, FMT=(US=9X, US=3C6X), FORMAT=(US=9X, CA=9X)")), 4)
        self.syntax("PRO=NID, FMT=()", 15)
        self.syntax("PRO=NID, FMT=(UK=3C6X)", 18)
        self.syntax("PRO=NID, FMT=(US=9X, FR=9X)", 25, [(230, "PRO", 241, "NID"), (229, "FMT:US", 0, "9X")])

    def test_a_random_method(self):
        self.invalid("PRO=NID, SWI=US, MTD=RAN, WHENINV=PRE", 7096)
        self.invalid("PRO=NID, SWI=US, MTD=RAN, VAL=Y", 7097)
        self.accepted("PRO=NID, SWI=US, MTD=RAN, VAL=N")


class Col(Case):

    def test_choices(self):
        self.assertEqual(pairs("PRO=AFF, ALGO=FPE")[1], (55, "ALGO", 33, "FPE"))
        self.assertEqual(pairs("PRO=AFFINITY, ALGO=DEFAULT")[1], (55, "ALGO", 34, "DEFAULT"))
        self.accepted("PRO=AFF, MTD=HASH, LEN=MAX", (230, "PRO", 234, "AFF"), (67, "MTD", 196, "HASH"), (107, "LEN", 105, "MAX"))
        self.assertEqual(pairs("PRO=AFF, LEN=12")[1], (107, "LEN", 24, "12"))
        self.syntax("PRO=AFF, TRIM=LEFT", 15)
        self.syntax("PRO=AFF, SEED=HMAC", 15)
        self.syntax("PRO=AFF, COPY=(1,4", 18)
        self.syntax("PRO=AFF, COPY=1", 15)

    def test_classes_repeat(self):
        self.accepted('PRO=AFF, MTD=REP, CLASS="a", CLASS="b", LANG="x", LANGUAGE="y"', (230, "PRO", 234, "AFF"),
                      (67, "MTD", 197, "REP"), (35, "CLASS", 251, "a"), (35, "CLASS", 251, "b"), (38, "LANG", 251, "x"))

    def test_encryption(self):
        self.invalid("PRO=AFF", 7117)
        self.invalid('PRO=AFF, MTD=REP, KEY="k"', 7165)
        self.invalid("PRO=AFF, MTD=REP, ITERATIONS=1", 7166)
        self.invalid("PRO=AFF, MTD=REP, TWEAKS=Y", 7167)
        self.invalid("PRO=AFF, MTD=HASH, ALGO=FPE", 7172)
        fpe = "PRO=AFF, MTD=REP, ALGO=FPE"
        self.invalid(fpe + ', SEED="1", KEY="k"', 7168)
        self.invalid(fpe, 7169)
        self.accepted(fpe + ', KEY="' + "k" * 32 + '"')
        self.invalid(fpe + ', KEY="' + "k" * 33 + '"', 7171)
        self.invalid(fpe + ', KEY=""', 7171)
        self.accepted(fpe + ', KEY="' + "\u00e9" * 16 + '"')
        self.invalid(fpe + ', KEY="' + "\u00e9" * 17 + '"', 7171)
        self.accepted(fpe + ", KEY=@" + "K" * 31)
        self.invalid(fpe + ", KEY=@" + "K" * 32, 7171)
        self.accepted(fpe + ', KEY="k"')
        self.accepted(fpe + ', KEY="' + "k" * 30 + '\u00e9"')
        self.invalid(fpe + ', KEY="' + "k" * 31 + '\u00e9"', 7171)
        for good in ("1", "99", "+99", "000000000000000000000000001"):
            self.accepted(fpe + ", KEY=@K, ITERATIONS=" + good)
        for bad in ("0", "100", "-1", "99999999999999999999"):
            self.invalid(fpe + ", KEY=@K, ITERATIONS=" + bad, 7170)

    def test_exclusions(self):
        self.invalid("PRO=AFF, MTD=REP, LEN=1", 7118)
        self.invalid("PRO=AFF, MTD=HASH, LEN=1, RULE=SCA", 7119)
        self.invalid("PRO=AFF, MTD=HASH, LEN=1, RULE=NUM", 7120)
        self.invalid("PRO=AFF, MTD=HASH, RULE=BIN, COPY=(1,2), TRIM=RIGHT", 7121)
        self.invalid('PRO=AFF, MTD=HASH, RULE=BIN, REMOVE="x", TRIM=RIGHT', 7124)
        self.invalid('PRO=AFF, MTD=HASH, RULE=BINARY, REMOVE="x", CASE=UP', 7122)
        self.invalid("PRO=AFF, MTD=HASH, RULE=SCALED, CASE=UPPER", 7123)
        self.invalid("PRO=AFF, MTD=HASH, RULE=NUMERIC, COPY=(1,2)", 7125)
        self.accepted("PRO=AFF, MTD=HASH, RULE=NUM, CASE=UP, TRIM=RIGHT")
        self.accepted("PRO=AFF, MTD=HASH, COPY=(1,2), CASE=UP, LEN=1")
        self.accepted("PRO=AFF, MTD=REP, ALGO=FPE, KEY=@K, LEN=1")


class Hash(Case):

    def test_it_needs_a_destination(self):
        self.invalid("PRO=HASH", 7144)
        self.accepted("PRO=HASH, DSTFLD=A")
        self.assertEqual(recognise("PRO=HASH", fill=False).status, 0)

    def test_choices(self):
        self.syntax("PRO=HASH, CASE=LOW", 16)
        self.syntax("PRO=HASH, HASHMAX=x", 19)
        self.assertEqual(pairs("PRO=HASH, ALGO=SHA256")[1], (55, "ALGO", 166, "SHA256"))
        self.assertEqual(pairs("PRO=HASH, ALGO=DEFAULT")[1], (55, "ALGO", 165, "DEFAULT"))
        self.accepted("PRO=HASH, CASE=up, DSTFLD=A")
        self.syntax("PRO=HASH, SEP=.", 15)

    def test_limits(self):
        for good in ("0", "-0", "+4294967295"):
            self.accepted("PRO=HASH, DSTFLD=A, HASHMAX=" + good)
        for bad in ("-1", "4294967296", "99999999999999999999"):
            self.invalid("PRO=HASH, DSTFLD=A, HASHMAX=" + bad, 7164)

    def test_seeds(self):
        start = "PRO=HASH, DSTFLD=A, "
        for good in ('"0"', '" \t2000000000 "', '"+0000000001"', "@ENV", "#F", "RAN", "HMAC, ALGO=SHA256"):
            self.accepted(start + "SEED=" + good)
        for bad in ('""', '"  "', '"2000000001"', '"000000000001"', '"1 2"', '"-1"', '"x"'):
            self.invalid(start + "SEED=" + bad, 7136)
        self.invalid(start + "SEED=#F, ALGO=SHA256", 7156)
        self.invalid(start + "SEED=RANDOM, ALGO=SHA256", 7156)
        self.invalid(start + "SEED=HMAC", 7155)


class Lookups(Case):

    def test_bare_statements_store_the_provider(self):
        self.assertEqual(pairs("PRO=LKP"), [(230, "PRO", 240, "LKP")])
        self.assertEqual(pairs("PRO=HASH_LKP"), [(230, "PRO", 239, "HASH_LKP")])
        self.assertEqual(pairs("PRO=RAN_LKP"), [(230, "PRO", 242, "RAN_LKP")])
        self.invalid("PRO=LOOKUP", 7149)
        self.invalid("PRO=HASH_LOOKUP", 7150)
        self.invalid("PRO=RANDOM_LOOKUP", 7138)
        self.invalid('PRO=LKP, SEARCH="x"', 7138)

    def test_choices(self):
        self.assertEqual(pairs("PRO=LKP, CACHE=MEM")[1][2], 187)
        self.assertEqual(pairs("PRO=LKP, CACHE=MEMORY")[1][2], 187)
        self.assertEqual(pairs("PRO=LKP, CACHE=MEMFILE")[1][2], 186)
        self.assertEqual(pairs("PRO=LKP, CACHE=N")[1][2], 215)
        self.syntax("PRO=LKP, CACHE=YES", 16)
        self.assertEqual(pairs("PRO=LKP, WHENNF=PRE")[1][2], pairs("PRO=LKP, WHENNF=PRESERVE")[1][2])
        self.syntax("PRO=LKP, WHENNF=PREFIX", 17)
        self.syntax("PRO=LKP, SEARCH=x", 17)
        self.syntax("PRO=LKP, REP=x", 14)

    def test_libraries(self):
        for typed, stored in (("KV8LUW", 176), ("KV8HRM", 177), ("KV8HRMSQL", 178), ("ORACLE", 180), ("MSS", 179), ("ODBC", 179),
                              ("own", 0)):
            self.assertEqual(pairs("PRO=LKP, LIB=" + typed)[1], (183, "LIB", stored, typed))
        for refused in ("KV8", "KVH", "ORA", "SQLSERVER", '"own"', "12"):
            self.syntax("PRO=LKP, LIB=" + refused, 14)

    def test_spellings_share_a_key_type(self):
        self.accepted('PRO=LKP, SRCH="a", SEARCH="b", REP="c", REPLACE="d", DEST="e", DESTINATION="f", SRC="g"',
                      (230, "PRO", 240, "LKP"), (193, "SRCH", 251, "a"), (76, "REP", 251, "c"), (60, "DEST", 251, "e"),
                      (83, "SRC", 251, "g"))

    def test_sources_are_searches_in_a_hash_lookup(self):
        for word in ("SOURCE", "SRC", "SEARCH", "SRCH"):
            self.assertEqual(pairs(f'PRO=HASH_LKP, {word}="a"')[1], (193, word, 251, "a"))
        self.assertEqual(len(pairs('PRO=HASH_LKP, SRC="a", SEARCH="b"')), 2)

    def test_what_each_refuses(self):
        self.accepted('PRO=LKP, OP=OR, SEARCH="a", REP="b"')
        self.syntax("PRO=HASH_LKP, OP=OR", 15)
        self.syntax("PRO=RAN_LKP, CACHE=N", 14)
        self.syntax('PRO=RAN_LKP, SEARCH="a"', 14)
        self.syntax('PRO=RAN_LKP, LIM="1"', 18)
        self.syntax("PRO=HASH_LKP, SEED=word", 20)
        self.assertEqual(pairs("PRO=HASH_LKP, SEED=HMAC")[1][2], 245)

    def test_cache(self):
        start = 'PRO=LKP, SEARCH="a", REP="b", '
        for good in ("0", "+2147483647", "00000000001"):
            self.accepted(start + "CACHESIZE=" + good)
        for bad in ("-1", "2147483648", "000000000001"):
            self.invalid(start + "CACHESIZE=" + bad, 7142)
        self.invalid(start + "CacheSize=99, CACHE=NO", 7141, "CacheSize")
        self.invalid(start + 'CACHE=NO, TmpDir="t"', 7141, "TmpDir")
        self.accepted(start + 'CACHE=MEM, TMPDIR="t", CACHESIZE=1')

    def test_hash_lookup_seed(self):
        start = 'PRO=HASH_LKP, SEARCH="a", REP="b", '
        self.invalid(start + "SEED=HMAC", 7155)
        self.accepted(start + "SEED=HMAC, ALGO=SHA256")
        self.accepted(start + 'SEED=" 2000000000"')
        self.accepted(start + 'SEED="0"')
        self.invalid(start + 'SEED="2000000001"', 7136)

    def test_row_limit(self):
        self.accepted('PRO=RAN_LKP, REP="a", LIM=2000000000')
        self.accepted('PRO=RAN_LKP, REP="a", LIM=0')
        self.invalid('PRO=RAN_LKP, REP="a", LIMIT=2000000001', 7137)
        self.invalid('PRO=RAN_LKP, REP="a", LIMIT=000000000001', 7137)
        self.invalid('PRO=RAN_LKP, REP="a", LIMIT=-1', 7137)

    def test_placeholder_texts(self):
        text = "Missing tavo_parser_string_with_quotes, really"
        self.invalid(f'PRO=LKP, Search="{text}"', 7176, "Search")
        self.accepted(f'PRO=LKP, SEARCH="<{text}", REP="x"')
        self.invalid(f'PRO=RAN_LKP, REP="{text}"', 7177, "REP")
        self.invalid(f'PRO=LKP, SRC="{text}"', 7178, "SRC")
        self.invalid(f'PRO=HASH_LKP, SRC="{text}"', 7176, "SRC")
        self.invalid(f'PRO=LKP, PRENULL="{text}"', 7179, "PRENULL")
        self.invalid(f'PRO=LKP, PRESPACES="{text}"', 7180, "PRESPACES")
        self.invalid(f'PRO=LKP, PREZL="{text}"', 7181, "PREZL")
        self.invalid(f'PRO=LKP, TMPDIR="{text}", SEARCH="{text}"', 7182, "TMPDIR")
        self.accepted(f'PRO=CCN, SRC="{text}"')


class Age(Case):

    def test_keys_depend_on_the_value(self):
        self.accepted("PRO=AGE, YR=5", (230, "PRO", 231, "AGE"), (48, "YR", 24, "5"))
        self.accepted('PRO=AGE, YEAR="2000"', (230, "PRO", 231, "AGE"), (45, "YEAR", 251, "2000"))
        self.assertEqual(pairs("PRO=AGE, DAY=ANY")[1], (42, "DAY", 141, "ANY"))
        self.accepted("PRO=AGE, DAY=-3, MON=1, WK=2, PIV=50", (230, "PRO", 231, "AGE"), (41, "DAY", 24, "-3"),
                      (43, "MON", 0, "1"), (46, "WK", 0, "2"), (44, "PIV", 0, "50"))

    def test_choices(self):
        self.syntax("PRO=AGE, MTD=RAND", 14)
        self.assertEqual(pairs("PRO=AGE, MTD=REPEATABLE")[1], (67, "MTD", 197, "REPEATABLE"))
        self.syntax("PRO=AGE, SRCDF=x", 16)
        self.syntax("PRO=AGE, MON=abc", 14)
        self.syntax("PRO=AGE, WHENRESULTINVALID=ERR", 28)

    def test_ranges(self):
        for good in ('YEAR="++2000"', "YEAR=+1581", "YEAR=-2500", "MONTH=30000", "MONTH=-30000", "WEEK=30000", "DAY=-30000", "PIVOT=0",
                     "PIVOT=99", 'YEAR=" \t1582 "', 'YEAR="3999"', 'YEAR="+2000"', "YEAR=00000001581"):
            self.accepted("PRO=AGE, " + good)
        for bad, number in (("YEAR=1582", 7126), ("YEAR=-2501", 7126), ("YEAR=+00000001581", 7126), ("MONTH=30001", 7127),
                            ("WEEK=-30001", 7128), ("DAY=30001", 7129), ('YEAR="1581"', 7130), ('YEAR="4000"', 7130),
                            ('YEAR=""', 7130), ('YEAR="   "', 7130), ("PIVOT=100", 7131), ("PIVOT=-1", 7131),
                            ('YEAR="19 99"', 7130), ('YEAR="+"', 7130), ('YEAR="+-2000"', 7130), ('YEAR="\u00a02000"', 7130)):
            self.invalid("PRO=AGE, " + bad, number)

    def test_combinations(self):
        self.invalid("PRO=AGE, DAY=ANY, MTD=REPEATABLE", 7183)
        self.invalid("PRO=AGE, DAY=ANY", 7183)
        self.accepted("PRO=AGE, DAY=ANY, MTD=RANDOM")
        self.accepted("PRO=AGE, DAY=ANY, MTD=CONSTRANDOM")
        year = 'PRO=AGE, YEAR="2000", '
        self.invalid(year + "YEAR=1", 7132)
        self.invalid(year + "MON=1", 7133)
        self.invalid(year + "WK=1", 7134)
        self.invalid(year + "DAY=1", 7135)
        self.invalid(year + "DAY=ANY, MTD=RAN", 7135)
        self.invalid(year + "MTD=RAN", 7186)
        self.accepted(year + "MTD=REP")
        self.invalid("PRO=AGE, YEAR=-1, MTD=RAN", 7184)
        self.accepted("PRO=AGE, YEAR=-0, MTD=RAN")
        self.accepted("PRO=AGE, YEAR=-1, MTD=REP")


class Swaps(Case):

    def test_bare_statements_store_the_provider(self):
        self.assertEqual(pairs("PRO=DS"), [(230, "PRO", 236, "DS")])
        self.assertEqual(pairs("PRO=CDS"), [(230, "PRO", 233, "CDS")])
        self.assertEqual(pairs("PRO=DDS"), [(230, "PRO", 235, "DDS")])
        for name in ("DS", "CDS", "DDS"):
            self.invalid("PRO=" + name, 7151)

    def test_what_each_accepts(self):
        self.accepted('PRO=DS, SFLD="a", RATE=5, LOCKED=Y, SEED=42', (230, "PRO", 236, "DS"), (156, "SFLD", 251, "a"),
                      (74, "RATE", 24, "5"), (155, "LOCKED", 216, "Y"), (79, "SEED", 24, "42"))
        self.accepted('PRO=CDS, SFLD="a", CTL="b", CONTROL="c", CLASS="d", CLASSIFIER="e"', (230, "PRO", 233, "CDS"),
                      (156, "SFLD", 251, "a"), (154, "CTL", 251, "b"), (153, "CLASS", 251, "d"))
        self.accepted('PRO=DDS, SWAPFIELD="a", SIZE=3', (230, "PRO", 235, "DDS"), (156, "SWAPFIELD", 251, "a"), (82, "SIZE", 24, "3"))
        self.syntax("PRO=CDS, RATE=5", 10)
        self.syntax("PRO=DDS, RATE=5", 10)
        self.syntax("PRO=DS, SIZE=5", 9)
        self.syntax('PRO=DS, CTL="x"', 9)
        self.syntax("PRO=DS, DLIM=1", 9)
        self.syntax("PRO=DS, LOCKED=MAX", 16)
        self.syntax('PRO=DS, SEED="42"', 14)

    def test_what_each_needs(self):
        self.invalid('PRO=CDS, SFLD="a"', 7152)
        self.invalid('PRO=DDS, SFLD="a"', 7153)


class FieldDefinitionRules(Case):

    def test_two_data_types_under_one_prefix(self):
        self.invalid("PRO=CCN, FLDDEF1=(DT=CHAR), flddef1=(DT=INT)", 7146, "flddef1:DT")
        self.accepted("PRO=CCN, FLDDEF1=(DT=CHAR), FLDDEF2=(DT=INT)")
        self.accepted("PRO=CCN, FLDDEF1=(DT=INT, DATATYPE=INTEGER)")

    def test_two_names_under_one_prefix(self):
        self.invalid("PRO=CCN, FLDDEF=(NAME=A, LEN=1, NAME=B)", 7147, "FLDDEF:NAME")
        self.accepted('PRO=CCN, FLDDEF=(NAME=A, NAME="A")')

    def test_data_types_are_looked_at_before_names_and_both_after_the_provider(self):
        self.invalid("PRO=CCN, FLDDEF=(NAME=A, NAME=B, DT=CHAR, DT=INT)", 7146, "FLDDEF:DT")
        self.invalid("PRO=HASH, FLDDEF=(NAME=A, NAME=B)", 7144)


class PairsThatNoStatementStores(unittest.TestCase):
    """Rules that look at pairs which a caller has to fill in by himself."""

    def check(self, provider, *others, violation):
        self.assertEqual(validate([Pair(230, "PRO", provider, ""), *others]), violation)

    def test_a_lower_case_option(self):
        lower, upper = Pair(56, "CASE", 53, "LOW"), Pair(56, "CASE", 53, "uPPer")
        self.check(238, lower, violation=Violation(7163))
        self.check(238, upper, violation=Violation(7144))
        self.check(239, lower, violation=Violation(7162))
        self.check(239, upper, violation=Violation(7150))

    def test_placeholders_of_single_tokens(self):
        method = Pair(67, "MTD", 197, "REP")
        self.check(234, method, Pair(109, "Copy", 0, "<Missing TAVO_PARSER_COPY_COL_SYNTAX>"), violation=Violation(7145, "Copy"))
        self.check(231, Pair(43, "Mon", 0, "<missing integer>"), violation=Violation(7127, "Mon"))
        self.check(231, Pair(46, "Wk", 0, "<missing INTEGER"), violation=Violation(7128, "Wk"))
        self.check(231, Pair(41, "DAY", 24, "<missing INTEGER>"), violation=Violation(7129))

    def test_placeholders_of_national_formats(self):
        switch, missing = Pair(92, "SWI", 204, "US"), Pair(229, "FMT:US", 0, "<missing tavo_parser_NID_FORMAT_US_VALUES>")
        self.check(241, missing, switch, violation=Violation(7173))
        self.check(241, missing, violation=Violation(7104))
        self.check(241, switch, Pair(229, "FMT:US", 0, "missing TAVO_PARSER_NID_FORMAT_"), violation=None)

    def test_no_provider_no_checks(self):
        self.assertIsNone(validate([]))
        self.assertIsNone(validate([Pair(218, "FLDDEF:DT", 1, "CHAR"), Pair(218, "FLDDEF:DT", 2, "VARCHAR")]))


if __name__ == "__main__":
    unittest.main()
