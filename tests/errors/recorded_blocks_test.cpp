// The blocks that the parser itself records: as many slots as inserts, and nothing else.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "TAVOParser.h"
#include "platform/platform.h"
#include "support/parse_run.h"

namespace {

const ErrorState* held_state() {
  void* block = nullptr;
  EXPECT_EQ(0u, TAVOGetThreadBlock(&block));
  const ErrorState* state = nullptr;
  std::memcpy(&state, block, sizeof state);
  return state;
}

void expect_one_block(uint32_t message, int16_t slots) {
  const ErrorState* state = held_state();
  ASSERT_NE(nullptr, state);
  ASSERT_EQ(1u, state->blocks);
  ASSERT_EQ(state->first, state->last);
  const ErrorBlock& block = *state->first;
  EXPECT_EQ(message, block.messageId);
  EXPECT_EQ(slots, block.slots);
  EXPECT_EQ(0u, block.auxiliary);
  EXPECT_EQ(nullptr, block.next);
  for (int16_t i = 0; i < slots; ++i) {
    EXPECT_NE(0u, block.slot[i].id);
    EXPECT_NE(nullptr, block.slot[i].value);
  }
  const auto physical = static_cast<uint32_t>(slots == 0 ? 1 : slots);
  EXPECT_EQ(32 + 16 * physical + 8 * static_cast<uint32_t>(slots), state->newestEstimate);
}

TEST(RecordedBlock, OfASyntaxErrorHasTwoInserts) {
  tavo_test::fill_statement(L"PRO=CCN, NONSENSE=1");
  expect_one_block(7139, 2);
}

TEST(RecordedBlock, OfABadSeparatorHasNone) {
  tavo_test::fill_statement(L"PRO=CCN ; PAT=6C");
  expect_one_block(7140, 0);
}

TEST(RecordedBlock, OfAViolatedRuleHasNone) {
  tavo_test::fill_statement(L"PRO=HASH, SEED=HMAC");
  expect_one_block(7144, 0);
}

TEST(RecordedBlock, OfAViolatedRuleThatNamesItsOptionHasOne) {
  tavo_test::fill_statement(L"PRO=LOOKUP, SEARCH=\"a\", REPLACE=\"b\", CACHE=N, CACHESIZE=5");
  expect_one_block(7141, 1);
}

TEST(RecordedBlock, OfARefusedRequestHasNone) {
  tavo_test::WideRequest request(L"PRO=CCN");
  request.get()->textLength = 0;
  request.run();
  expect_one_block(7090, 0);
  request.get()->textLength = 28;
  request.get()->form = 'X';
  request.run();
  expect_one_block(7092, 0);
}

TEST(RecordedBlock, OfATextThatCannotBeConvertedHasOne) {
  tavo_test::fill_bytes("PRO=\xFF\xFF", 1208);
  expect_one_block(7095, 1);
  tavo_test::fill_statement(L"PRO=\xD800");
  expect_one_block(7095, 1);
}

TEST(RecordedBlock, OfAnAcceptedStatementIsNotThere) {
  EXPECT_EQ(0u, tavo_test::fill_statement(L"PRO=CCN").status);
  const ErrorState* state = held_state();
  ASSERT_NE(nullptr, state);
  EXPECT_EQ(0u, state->blocks);
  EXPECT_EQ(nullptr, state->first);
  EXPECT_EQ(nullptr, state->last);
}

}  // namespace
