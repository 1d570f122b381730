"""Statements, positions, pairs and errors; every expectation is written by hand.

    python3 -m unittest discover -s tests/second_opinion
"""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from recogniser import Error, recognise  # noqa: E402
from statement_case import Case, pairs  # noqa: E402
from vocabulary import END_OF_INPUT  # noqa: E402


class Positions(Case):

    def test_an_error_on_the_first_line_is_at_its_column(self):
        self.syntax("PRO=XYZ", 5)
        self.syntax("PRO CCN", 5)
        self.syntax("PRO=CCN, PAT=7C", 14)

    def test_an_error_at_the_end_is_at_the_length(self):
        self.syntax("PRO=", 4)
        self.syntax("PRO", 3)
        self.syntax("PRO=CCN,", 8)
        self.syntax("PRO=CCN, PAT=", 13)
        self.syntax("PRO=CCN,\n\n PAT=\n", 16)

    def test_an_error_at_the_first_character_is_at_the_length(self):
        self.syntax("XYZ=CCN", 7)
        self.syntax("%", 1)
        self.syntax(" XYZ=CCN", 8)
        self.syntax(" ", 1)
        self.syntax("  XYZ=CCN", 3)

    def test_a_later_line_counts_its_column_from_two(self):
        self.syntax("PRO=CCN,\nPAT=7C", 6)
        self.syntax("PRO=CCN,\n\n  DOM=x", 4)

    def test_no_alternative_at_the_start_of_a_later_line_is_at_the_length(self):
        self.syntax("PRO=CCN,\nDOM=x", 14)

    def test_a_wrong_value_at_the_start_of_a_later_line_is_at_two(self):
        self.syntax("PRO=CCN, PAT=\n7C", 2)

    def test_the_end_of_a_text_of_two_characters(self):
        self.syntax("PR", 2)

    def test_a_broken_string_at_the_start_of_a_later_line_is_at_two(self):
        self.syntax('"\U0001F600PRO=CCN', 2)
        self.syntax('PRO=CCN "\n\U0001F600', 2)

    def test_a_carriage_return_starts_no_line(self):
        self.syntax("PRO=CCN,\rPAT=7C", 14)

    def test_a_byte_order_mark_counts(self):
        self.syntax("\ufeffPRO=XYZ", 6)

    def test_an_astral_character_counts_once(self):
        self.syntax("/*\U0001F600*/PRO=XYZ", 10)

    def test_the_empty_text_is_refused_before_the_parse(self):
        self.assertEqual(recognise("", fill=True)[:3], (7090, 0, []))


class BrokenText(Case):

    def test_the_first_broken_place_is_reported_when_the_statement_is_clean(self):
        self.syntax("PRO=CCN /* no end", 17, [(230, "PRO", 232, "CCN")])
        self.syntax("PRO=CCN, PAT=6C \U0001F600 \U0001F600", 17)
        self.syntax("PRO=CCN, PAT=6C ignored (1,X", 28)
        self.syntax("PRO=CCN\n (1,X", 6)

    def test_a_string_without_end_after_the_statement_is_reported_at_the_end(self):
        self.syntax('PRO=CCN, PAT=6C "abc', 20)

    def test_the_parsers_record_stands_over_the_lexers(self):
        self.syntax("\U0001F600PRO=XYZ", 6)
        self.syntax('PRO=HASH, SEED="abc', 19)

    def test_validation_does_not_run_over_broken_text(self):
        self.syntax("PRO=HASH \U0001F600", 10)

    def test_a_broken_first_character_is_a_set_mismatch_there(self):
        self.syntax("\U0001F600PRO=CCN", 2)

    def test_dropped_characters_can_leave_a_clean_statement(self):
        self.syntax("PRO=\U0001F600CCN", 5, [(230, "PRO", 232, "CCN")])


class Store(Case):

    def test_the_first_of_an_option_wins_and_the_sizing_run_counts_both(self):
        text = "PRO=CCN, CP=1, CP=2"
        self.accepted(text, (230, "PRO", 232, "CCN"), (57, "CP", 24, "1"))
        self.assertEqual(recognise(text, fill=False).count, 3)

    def test_options_of_two_field_definitions_stay(self):
        self.accepted("PRO=CCN, FLDDEF1=(NAME=A, LEN=1), FLDDEF2=(NAME=B, LEN=2)", (230, "PRO", 232, "CCN"),
                      (221, "FLDDEF1:NAME", 250, "A"), (220, "FLDDEF1:LEN", 24, "1"),
                      (221, "FLDDEF2:NAME", 250, "B"), (220, "FLDDEF2:LEN", 24, "2"))

    def test_quotes_are_dropped_and_escaped_quotes_reduced(self):
        self.accepted(r'PRO=CCN, SRC="a\"b\c"', (230, "PRO", 232, "CCN"), (83, "SRC", 251, r'a"b\c'))
        self.accepted(r'PRO=CCN, SRC="\\""', (230, "PRO", 232, "CCN"), (83, "SRC", 251, "\\\""))

    def test_other_value_types_keep_their_quotes(self):
        self.assertEqual(pairs('PRO=HASH, SEED=#"x y"')[1], (79, "SEED", 244, '#"x y"'))
        self.assertEqual(pairs(r'PRO=AFF, WHENMATCH=PREFIX("\"")')[1], (98, "WHENMATCH", 40, r'PREFIX("\"")'))

    def test_a_missing_string_value_is_stored_before_it_is_missed(self):
        self.syntax("PRO=EML, DOM=", 13, [(230, "PRO", 237, "EML"), (158, "DOM", END_OF_INPUT, "<EOF>")])
        self.assertEqual(recognise("PRO=EML, DOM=", fill=False).count, 2)

    def test_any_token_stands_for_a_string_value(self):
        for value in (",", ")", "(", "=", "%", "'", "\\", "HASH", "12", "@A", "#B", "(1,4)", ".", "3X 2X 4X", "TAVO:KEY:LITERAL"):
            self.accepted("PRO=EML, DOM=" + value, (230, "PRO", 237, "EML"), (158, "DOM", 250, value))
        self.accepted('PRO=EML, DOM="', (230, "PRO", 237, "EML"), (158, "DOM", 250, '"'))
        self.accepted('PRO=EML, DOM=""', (230, "PRO", 237, "EML"), (158, "DOM", 251, ""))


class Statement(Case):

    def test_a_bare_provider(self):
        self.accepted("PRO=CCN", (230, "PRO", 232, "CCN"))
        self.accepted("provider = /**/ ccn", (230, "provider", 232, "ccn"))

    def test_a_bad_separator_is_an_error_of_its_own(self):
        for text in ("PRO=CCN; PAT=6C", "PRO=CCN% PAT=6C"):
            for fill in (False, True):
                run = recognise(text, fill=fill)
                self.assertEqual((run.status, run.errors), (7148, [Error(7140)]))
            self.assertEqual(pairs(text), [(230, "PRO", 232, "CCN")])

    def test_text_after_a_complete_option_is_ignored(self):
        self.accepted("PRO=CCN, CP=1 trailing = ) words", (230, "PRO", 232, "CCN"), (57, "CP", 24, "1"))
        self.assertEqual(pairs("PRO=HASH, SEED=HMAC trailing words"), [(230, "PRO", 238, "HASH"), (79, "SEED", 245, "HMAC")])
        self.assertEqual(recognise("PRO=CCN, CP=1 ; words", fill=True).status, 7148)
        self.assertEqual(recognise("PRO=CCN, CP=1 words ; words", fill=True).status, 0)

    def test_text_after_the_name_is_not(self):
        self.syntax("PRO=CCN trailing", 9, [(230, "PRO", 232, "CCN")])

    def test_a_repeated_option_keeps_its_first_value(self):
        self.assertEqual(pairs("PRO=HASH, SEED=HMAC, SEED=RANDOM"), [(230, "PRO", 238, "HASH"), (79, "SEED", 245, "HMAC")])

    def test_field_definitions(self):
        self.accepted("PRO=CCN, FLDDEF=(NAME=X, LEN=10)", (230, "PRO", 232, "CCN"),
                      (221, "FLDDEF:NAME", 250, "X"), (220, "FLDDEF:LEN", 24, "10"))
        self.accepted("PRO=CCN, FlDdEf7=(PRE=1, PRECISION=2, SCA=3, SCALE=4, CP=5, CODEPAGE=6, CPT=MSS, DT=DECK48)",
                      (230, "PRO", 232, "CCN"), (222, "FlDdEf7:PRE", 24, "1"), (222, "FlDdEf7:PRECISION", 24, "2"),
                      (223, "FlDdEf7:SCA", 24, "3"), (223, "FlDdEf7:SCALE", 24, "4"), (217, "FlDdEf7:CP", 24, "5"),
                      (217, "FlDdEf7:CODEPAGE", 24, "6"), (219, "FlDdEf7:CPT", 291, "MSS"), (218, "FlDdEf7:DT", 13, "DECK48"))
        self.syntax("PRO=CCN, FLDDEF=()", 18)
        self.syntax("PRO=CCN, FLDDEF=(LEN=1", 22)
        self.syntax("PRO=CCN, FLDDEF=(LEN=1;NAME=X)", 23)
        self.syntax("PRO=CCN, FLDDEF=(DT=GRAPHIC)", 21)
        self.syntax("PRO=CCN, FLDDEF=(LEN=abc)", 22)
        self.syntax("PRO=CCN, FLDDEF=LEN", 17)

    def test_database_products(self):
        for typed, stored in (("KV8", 142), ("KV8LUW", 142), ("KVH", 143), ("KV8HRM", 143), ("KV8HRMSQL", 144), ("ORA", 149),
                              ("ORACLE", 149), ("MSS", 291), ("SQLSERVER", 317), ("ANY", 141), ("TD", 152), ("QTL", 145),
                              ("BRAMOLT", 146), ("NONE", 147), ("ODBC", 148), ("SYBASE", 151)):
            self.accepted("PRO=CCN, CPT=" + typed, (230, "PRO", 232, "CCN"), (59, "CPT", stored, typed))

    def test_a_wrong_name_stores_nothing(self):
        self.syntax("PRO=XYZ", 5, [])


class UserAndTrace(Case):

    def test_the_library_alone(self):
        self.accepted("LIB=own", (328, "LIB", 0, "own"))
        self.accepted("Library=own.so", (328, "Library", 0, "own.so"))

    def test_free_pairs(self):
        self.accepted(r'LIB=own, a=1, b=x, c="y\"z", a=2', (328, "LIB", 0, "own"), (327, "a", 24, "1"), (327, "b", 250, "x"),
                      (327, "c", 251, 'y"z'), (327, "a", 24, "2"))
        self.accepted("LIB=own, FLDDEF=(DT=CHAR, DT=INT)", (328, "LIB", 0, "own"), (218, "FLDDEF:DT", 1, "CHAR"),
                      (218, "FLDDEF:DT", 9, "INT"))

    def test_keywords_are_refused(self):
        self.syntax("LIB=HASH", 5)
        self.syntax('LIB="own"', 5)
        self.syntax("LIB=own, CP=1", 10)
        self.syntax("LIB=own, a=HASH", 12)
        self.syntax('LIB=own, "a"=1', 10)
        self.syntax("LIB=own a", 9)
        self.syntax("LIB", 3)
        self.syntax("LIB,own", 4)

    def test_the_trace_level_statement_stores_nothing(self):
        self.accepted('TRCLEVEL="any"')
        self.assertEqual(pairs('TRCLEVEL="any"'), [])
        self.accepted('trclevel = "any" ignored text')
        self.syntax("TRCLEVEL=DETAIL", 10)
        self.syntax("TRCLEVEL=", 9)

    def test_the_trace_level_statement_hands_on_its_keyword(self):
        filling = recognise('TRCLEVEL="OFF"', fill=True, trace_levels=frozenset({"OFF"}))
        self.assertEqual((filling.status, filling.errors), (7148, [Error(None)]))
        self.assertEqual(recognise('TRCLEVEL="OFF"', fill=False, trace_levels=frozenset({"OFF"})).status, 0)

    def test_the_trace_level_option_stores_its_pair_and_hands_on_its_text(self):
        for level in ("OFF", "error", "Calls", "0", "1", "2", "3"):
            self.accepted(f'PRO=CCN, TRCLEVEL="{level}"')
        self.accepted('PRO=CCN, TRCLEVEL="Detail"', (230, "PRO", 232, "CCN"), (94, "TRCLEVEL", 251, "Detail"))
        self.assertEqual(recognise('PRO=CCN, TRCLEVEL="loud"', fill=False).status, 0)
        self.assertEqual(recognise('PRO=CCN, TRCLEVEL="loud"', fill=True).errors, [Error(None)])

    def test_a_refused_trace_level_does_not_end_the_statement(self):
        filling = recognise('PRO=CCN, TRCLEVEL="loud", CP=1', fill=True)
        self.assertEqual((filling.status, len(filling.pairs), filling.errors), (7148, 3, [Error(None)]))
        filling = recognise('PRO=HASH, TRCLEVEL="loud"', fill=True)
        self.assertEqual(filling.errors, [Error(None), Error(7144)])


if __name__ == "__main__":
    unittest.main()
