"""Words and tokens; every expectation is written by hand.

    python3 -m unittest discover -s tests/second_opinion
"""

import os
import sys
import unittest

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from lexer import tokenise  # noqa: E402
from recogniser import tokens  # noqa: E402
from vocabulary import KEY_LITERAL_TOKENS, NATIONAL_IDENTIFIER_VALUES, TYPE_BY_NAME, WORD_TABLES  # noqa: E402


def visible(text):
    """(type, text) of the tokens that the parser sees."""
    return [(token.type, token.text) for token in tokenise(text)[0] if not token.hidden]


def types(text):
    return [kind for kind, _ in visible(text)]


class Vocabulary(unittest.TestCase):

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


class Lexer(unittest.TestCase):

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


if __name__ == "__main__":
    unittest.main()
