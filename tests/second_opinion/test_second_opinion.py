"""Checks of the recogniser itself; every expectation is written by hand.

    python3 -m unittest discover -s tests/second_opinion
"""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from lexer import tokenise  # noqa: E402
from recogniser import Error, recognise, tokens  # noqa: E402
from validation import Pair, Violation, validate  # noqa: E402
from vocabulary import END_OF_INPUT, NATIONAL_IDENTIFIER_VALUES, TYPE_BY_NAME, KEY_LITERAL_TOKENS, WORD_TABLES  # noqa: E402


def visible(text):
    """(type, text) of the tokens that the parser sees."""
    return [(token.type, token.text) for token in tokenise(text)[0] if not token.hidden]


def types(text):
    return [kind for kind, _ in visible(text)]


def pairs(text):
    return [tuple(pair) for pair in recognise(text, fill=True).pairs]


class Case(unittest.TestCase):

    def accepted(self, text, *expected):
        """Accepted in both runs, with exactly these pairs; without any only the acceptance is looked at."""
        self.assertEqual(recognise(text, fill=False).status, 0, text)
        filling = recognise(text, fill=True)
        self.assertEqual((filling.status, filling.errors), (0, []), text)
        if expected:
            self.assertEqual([tuple(pair) for pair in filling.pairs], list(expected), text)

    def invalid(self, text, number, key=None):
        """The grammar has nothing against it, the provider's rules have."""
        self.assertEqual(recognise(text, fill=False).status, 0, text)
        filling = recognise(text, fill=True)
        self.assertEqual((filling.status, filling.errors), (7148, [Error(number, key_text=key)]), text)

    def syntax(self, text, position, stored=None):
        """7139 at this position in both runs, the text up to it as excerpt."""
        for fill in (False, True):
            run = recognise(text, fill=fill)
            self.assertEqual((run.status, run.errors), (7148, [Error(7139, position, text[:position])]), text)
        if stored is not None:
            self.assertEqual(pairs(text), stored, text)


class Vocabulary(Case):

    def test_every_table_has_its_number_of_rows(self):
        self.assertEqual([len(table) for table in WORD_TABLES], [14, 45, 20, 26, 29, 67])
        self.assertEqual(len(KEY_LITERAL_TOKENS), 84)

    def test_every_type_is_used_once_and_the_thirty_fragments_are_left(self):
        unused = set(range(4, 351)) - set(TYPE_BY_NAME.values())
        self.assertEqual(len(unused), 30)
        self.assertTrue({4, 5, 8, 9, 12, 13, 14, 332, 344, 350} <= unused)

    def test_the_national_identifier_lists_are_complete(self):
        sizes = {name[-9:-7]: len(values) for name, _, values in NATIONAL_IDENTIFIER_VALUES}
        self.assertEqual(sizes, {"US": 6, "CA": 6, "ES": 3, "UK": 20, "IT": 21, "FR": 69})

    def test_the_positions_of_a_value_add_up_to_the_countrys_length(self):
        lengths = {"US": 9, "CA": 9, "ES": 8, "UK": 9, "IT": 16, "FR": 15}
        for name, _, values in NATIONAL_IDENTIFIER_VALUES:
            for value in values:
                counts = value.upper().replace("X", " ").replace("C", " ").replace("-", " ").replace(".", " ")
                self.assertEqual(sum(map(int, counts.split())), lengths[name[-9:-7]], value)

    def test_the_french_values_are_23_stems_in_three_forms(self):
        french = next(values for name, _, values in NATIONAL_IDENTIFIER_VALUES if "_FR_" in name)
        for stem, dash, blank in zip(*[iter(french)] * 3):
            head = stem[:-1].rstrip("0123456789")
            tail = int(stem[len(head):-1])
            self.assertEqual(dash, f"{head}{tail - 2}X-2X")
            self.assertEqual(blank, f"{head}{tail - 2}X 2X")


class Lexer(Case):

    def test_blanks_and_comments_are_hidden(self):
        self.assertEqual(visible("PRO = CCN"), visible("PRO=CCN"))
        self.assertEqual(visible("/* note */PRO=CCN"), visible("PRO=CCN"))
        self.assertEqual(visible("PRO=CCN // note"), visible("PRO=CCN"))
        self.assertEqual(tokens("PRO // x\n\t=")[0],
                         [(230, 0, 3, False), (347, 3, 1, True), (11, 4, 4, True), (347, 8, 2, True), (17, 10, 1, False)])

    def test_a_line_comment_ends_at_a_carriage_return_a_line_feed_or_the_end(self):
        for end in ("\r", "\n", ""):
            self.assertEqual(tokens("//a b" + end)[0][0], (11, 0, 5, True))

    def test_a_block_comment_closes_at_the_third_character_at_the_earliest(self):
        self.assertEqual(tokens("/**/"), ([(11, 0, 4, True)], None))
        self.assertEqual(tokens("/*/"), ([], 3))
        self.assertEqual(tokens("/*/*/"), ([(11, 0, 5, True)], None))

    def test_integers_and_unquoted_strings(self):
        self.assertEqual(visible("-12"), [(24, "-12")])
        self.assertEqual(visible("-12a"), [(250, "-12a")])
        self.assertEqual(visible("12.5"), [(250, "12.5")])
        self.assertEqual(visible("+12a"), [(24, "+12"), (250, "a")])
        self.assertEqual(visible("-"), [(250, "-")])
        self.assertEqual(visible("+"), [(7, "+")])
        self.assertEqual(visible("1-2"), [(250, "1-2")])

    def test_environment_variables(self):
        self.assertEqual(visible("@HOME_KEY"), [(161, "@HOME_KEY")])
        self.assertEqual(visible("@ X"), [(7, "@"), (250, "X")])

    def test_an_escaped_quote_keeps_its_backslash_in_the_token(self):
        self.assertEqual(visible(r'"a\"b"'), [(251, r'"a\"b"')])

    def test_a_backslash_before_a_quote_is_an_escape_even_after_a_backslash(self):
        self.assertEqual(tokens('"a\\\\"'), ([], 5))
        self.assertEqual(visible('"a\\b"'), [(251, '"a\\b"')])

    def test_a_lone_quote_at_the_end_is_a_token_of_its_own(self):
        self.assertEqual(visible('"'), [(334, '"')])
        self.assertEqual(tokens('"a'), ([], 2))
        self.assertEqual(visible('""'), [(251, '""')])

    def test_characters_that_start_nothing(self):
        self.assertEqual(types("% # , ; \u00d3 / *"), [7, 7, 10, 7, 7, 7, 7])
        self.assertEqual(types("=)'\\("), [17, 336, 338, 6, 28])

    def test_a_character_above_ffff_is_broken_outside_and_inside_a_string(self):
        self.assertEqual(tokens("A\U0001F600B"), ([(250, 0, 1, False), (250, 2, 1, False)], 1))
        self.assertEqual(tokens('"A\U0001F600B'), ([(250, 3, 1, False)], 2))
        self.assertEqual(types('"\uffff"'), [251])
        self.assertEqual(types("\uffff"), [7])
        self.assertEqual(types("//\U0001F600"), [])

    def test_the_longest_word_wins(self):
        self.assertEqual(types("LIBRARYX LIBRARY LIB"), [250, 285, 284])
        self.assertEqual(types("PROV PROVX PROVIDE PROVIDER PRO"), [250, 250, 250, 230, 230])
        self.assertEqual(types("RAN RAND RANDOM RANDOM_LOOKUP"), [301, 302, 303, 242])
        self.assertEqual(types("CCN CCN: CCN. CCN-"), [232, 250, 250, 250])

    def test_words_match_in_either_case_over_ascii_only(self):
        self.assertEqual(types("pro=ccn"), types("PRO=CCN"))
        self.assertEqual(types("PR\u00d3"), [250, 7])
        self.assertEqual(types("\u017fEED"), [7, 250])

    def test_field_definition_numbers(self):
        self.assertEqual(types("FLDDEF FLDDEF1 fldDef99 FLDDEF10"), [64] * 4)
        self.assertEqual(types("FLDDEF0 FLDDEF01 FLDDEF100"), [250] * 3)

    def test_key_literals_match_exactly(self):
        self.assertEqual(types("TAVO:METHOD:HASH tavo:method:hash PROVIDER:HASH HASH"), [196, 250, 238, 277])

    def test_short_words_and_separators(self):
        self.assertEqual(types("Y N"), [216, 215])
        self.assertEqual(types("DOT . dot UNDERSCORE _ .. __"), [248, 248, 248, 249, 249, 250, 250])

    def test_issuer_patterns(self):
        self.assertEqual(types("4c2r 4C2RX 6C 8C 4C4R 6C2R 9X 3C6X"), [20, 250, 339, 16, 19, 340, 31, 342])

    def test_national_identifier_values(self):
        self.assertEqual(visible("3x.2x.4x"), [(210, "3x.2x.4x")])
        self.assertEqual(types("3X/2X/4X"), [250, 7, 250, 7, 250])
        self.assertEqual(types("2X6X1C 3X.3X.5X.5X"), [250, 250])
        self.assertEqual(visible("3X 3X 5X 4C1X"), [(208, "3X 3X 5X 4C1X")])
        self.assertEqual(types("7X 1X 8X 15X 13X 2X"), [206, 206, 207, 207])

    def test_a_value_with_blanks_does_not_commit(self):
        self.assertEqual(types("3X , X"), [250, 10, 250])
        self.assertEqual(types("3X 2X 5X"), [250, 250, 250])
        self.assertEqual(types("3X\t2X 4X"), [250, 250, 250])
        self.assertEqual(types("3X  2X 4X"), [250, 250, 250])

    def test_a_value_with_blanks_ends_where_it_is_complete(self):
        self.assertEqual(visible("3X 2X 4XY"), [(210, "3X 2X 4X"), (216, "Y")])

    def test_affix_instructions(self):
        for text in ('PREFIX("x")', "suffix(seq(1,3))", "PREFIX(RAND(2,+5))", 'OVERLAY(1,4,"")', 'PREFIX("\\"")'):
            self.assertEqual(visible(text), [(40, text)])
        self.assertEqual(types('PREFIX ("x")'), [299, 28, 251, 336])
        self.assertEqual(types('XPREFIX("x")'), [250, 28, 251, 336])

    def test_an_affix_instruction_that_breaks_off(self):
        self.assertEqual(tokens("OVERLAY(1,4)"), ([], 11))
        self.assertEqual(tokens("PREFIX( X"), ([(250, 8, 1, False)], 7))
        self.assertEqual(tokens("PREFIX(SEX"), ([], 9))
        self.assertEqual(tokens("PREFIX(RAND(2,5)"), ([], 16))
        self.assertEqual(tokens('PREFIX("'), ([], 8))

    def test_copy_ranges(self):
        self.assertEqual(visible("(1,4)(7,2)"), [(111, "(1,4)(7,2)")])
        self.assertEqual(types("(1,4) (7,2)"), [111, 111])
        self.assertEqual(types('(7,2,"x")(-1,+4)'), [111])
        self.assertEqual(types("(0,0)"), [111])
        self.assertEqual(types("( 1,4)"), [28, 24, 10, 24, 336])
        self.assertEqual(types("(-x)"), [28, 250, 336])

    def test_copy_ranges_that_break_off(self):
        self.assertEqual(tokens("(1,4"), ([], 4))
        self.assertEqual(tokens("(1, 4)"), ([(24, 4, 1, False), (336, 5, 1, False)], 3))
        self.assertEqual(tokens("(1,4)(X)"), ([(336, 7, 1, False)], 6))
        self.assertEqual(tokens("(1,4,X"), ([], 5))
        self.assertEqual(tokens("(1,+X"), ([], 4))
        self.assertEqual(tokens("(1,-"), ([], 4))
        self.assertEqual(tokens("(1,+-2)"), ([(24, 5, 1, False), (336, 6, 1, False)], 4))

    def test_seed_field_names(self):
        self.assertEqual(visible('#CUSTNO #"a b"'), [(244, "#CUSTNO"), (244, '#"a b"')])
        self.assertEqual(types("# X"), [7, 250])
        self.assertEqual(tokens('#"'), ([], 2))

    def test_a_leading_byte_order_mark_is_skipped_a_second_one_is_not(self):
        self.assertEqual(tokens("\ufeffCCN\ufeff")[0], [(232, 1, 3, False), (7, 4, 1, False)])


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

    def test_a_broken_first_character_is_at_the_length(self):
        self.syntax("\U0001F600PRO=CCN", 8)

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
