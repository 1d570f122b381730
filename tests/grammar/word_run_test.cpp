// Reading a word sixteen characters at a time, or from the index of a text's words, gives the same
// result as character by character.
#include "Grammar/lexer/word_run.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Grammar/lexer/word_index.h"

namespace {

using tavo::WordRun;

#if defined(TAVO_SSE2) || defined(TAVO_NEON)
constexpr bool kReadsInSteps = true;
#else
constexpr bool kReadsInSteps = false;  // the fast one never has a result then
#endif

// Compares both results for the beginning of a text; true when the fast one has a result.
bool compare(const std::vector<uint16_t>& text) {
  const uint16_t* end = text.data() + text.size();
  WordRun fast = {};
  if (!tavo::read_word(text.data(), end, fast) && !tavo::read_long_word(text.data(), end, fast)) {
    return false;
  }
  const WordRun slow = tavo::read_word_by_character(text.data(), end);
  EXPECT_EQ(slow.stop - text.data(), fast.stop - text.data());
  EXPECT_EQ(slow.head, fast.head);
  EXPECT_EQ(slow.tail, fast.tail);
  return true;
}

TEST(WordRun, HoldsTheFirstAndTheLastEightCharactersInUpperCase) {
  const std::u16string text = u"abcDEFgh-1.:_9";
  const std::vector<uint16_t> units(text.begin(), text.end());
  const WordRun run = tavo::read_word_by_character(units.data(), units.data() + units.size());
  EXPECT_EQ(0x4847464544434241u, run.head);
  EXPECT_EQ(0x395F3A2E312D4847u, run.tail);
  EXPECT_EQ(14, run.stop - units.data());
}

TEST(WordRun, IsTheSameForEveryLengthAndEveryDistanceToTheEnd) {
  const std::u16string letters = u"aZ09-.:_bYm4xQ7kPwErTyUiOpLkJhGfDsA";
  for (size_t length = 0; length <= 70; ++length) {
    for (size_t rest = 0; rest <= 34; ++rest) {
      std::vector<uint16_t> text(length);
      for (size_t i = 0; i < length; ++i) text[i] = letters[i % letters.size()];
      text.insert(text.end(), rest, u'=');
      // Every step needs sixteen characters, but one of fewer than eight only eight.
      const bool in_steps = text.size() >= (length / 16 + 1) * 16;
      EXPECT_EQ(kReadsInSteps && (in_steps || (text.size() >= 8 && length < 8)), compare(text))
          << length << " and " << rest;
    }
  }
}

TEST(WordRun, IsTheSameForEveryCodeUnitAtEveryPlace) {
  for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    std::vector<uint16_t> text(16, u'A');
    const size_t place = unit % 15;
    text[place] = static_cast<uint16_t>(unit);
    text[15] = u',';
    ASSERT_EQ(kReadsInSteps, compare(text)) << unit;
    text.assign(16, u',');
    text[0] = static_cast<uint16_t>(unit);
    ASSERT_EQ(kReadsInSteps, compare(text)) << unit;
  }
}

// Compares the index with reading by character, at every place of a text and at its end.
void compare_index(std::vector<uint16_t> text) {
  const size_t units = text.size();
  text.resize(units + tavo::WordIndex::kZeros);
  // As many bytes as are asked for, so that a sanitizer sees any access beyond them.
  std::vector<char> memory(tavo::WordIndex::memory_for(units));
  const tavo::WordIndex index(text.data(), units, memory.data());
  for (size_t at = 0; at <= units; ++at) {
    const uint16_t* place = text.data() + at;
    const WordRun slow = tavo::read_word_by_character(place, text.data() + units);
    WordRun fast = {};
    ASSERT_EQ(static_cast<size_t>(slow.stop - place), index.read(place, fast)) << at;
    if (slow.stop == place) continue;
    ASSERT_EQ(slow.stop, fast.stop) << at;
    ASSERT_EQ(slow.head, fast.head) << at;
    ASSERT_EQ(slow.tail, fast.tail) << at;
  }
}

TEST(WordIndex, IsTheSameForEveryLengthAtEveryPlace) {
  const std::u16string letters = u"aZ09-.:_bYm4xQ7kPwErTyUiOpLkJhGfDsA";
  for (size_t before = 0; before <= 70; before += 3) {
    for (size_t length = 0; length <= 200; length += length < 70 ? 1 : 13) {
      std::vector<uint16_t> text(before, u'=');
      for (size_t i = 0; i < length; ++i) text.push_back(letters[i % letters.size()]);
      compare_index(text);
      text.push_back(u'\xD83D');
      compare_index(text);
    }
  }
}

TEST(WordIndex, IsTheSameForEveryCodeUnit) {
  std::vector<uint16_t> text;
  for (uint32_t unit = 0; unit <= 0xFFFF; ++unit) {
    text.push_back(static_cast<uint16_t>(unit));
    text.push_back(u'A');
  }
  compare_index(text);
}

}  // namespace
