// The layout of a recorded message, byte for byte.
#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>

#include "errors/error_list.h"
#include "platform/platform.h"

namespace {

using errors_test::ErrorList;

TEST(ErrorCapture, LaysOutABlockByteForByte) {
  ErrorList list;
  ASSERT_EQ(0, ErrorCaptureEAB(list.get(), 0x01020304, 7139, 2));
  uint8_t expected[64] = {};
  std::memcpy(expected + 8, "ECBD", 4);
  const uint16_t version = 21, always = 48, slots = 2;
  const uint32_t message = 7139, auxiliary = 0x01020304;
  std::memcpy(expected + 12, &version, 2);
  std::memcpy(expected + 14, &always, 2);
  std::memcpy(expected + 16, &slots, 2);
  std::memcpy(expected + 20, &message, 4);
  std::memcpy(expected + 24, &auxiliary, 4);
  EXPECT_EQ(0, std::memcmp(expected, list->first, sizeof expected));
}

TEST(ErrorCapture, LaysOutTheStateByteForByte) {
  ErrorList list;
  ErrorCaptureEAB(list.get(), 0, 1, 2);
  uint8_t expected[32] = {};
  std::memcpy(expected + 0, &list->first, 8);
  std::memcpy(expected + 8, &list->first, 8);
  const uint32_t blocks = 1, estimate = 32 + 2 * 16 + 2 * 8;
  std::memcpy(expected + 16, &blocks, 4);
  std::memcpy(expected + 20, &estimate, 4);
  std::memcpy(expected + 24, &estimate, 4);
  EXPECT_EQ(0, std::memcmp(expected, list.get(), sizeof expected));
}

TEST(ErrorCapture, LaysOutAnInsertByteForByte) {
  ErrorList list;
  ErrorCaptureEAB(list.get(), 0, 7139, 2);
  const int32_t number = 17;
  TokenCaptureEAB(list.get(), &number, 9, 52, 0);
  TokenCaptureEAB(list.get(), L"PRO", 6, 89, 0);
  const auto* bytes = reinterpret_cast<const uint8_t*>(list->first);
  const uint8_t first[8] = {52}, second[8] = {89};
  EXPECT_EQ(0, std::memcmp(first, bytes + 32, 8));
  EXPECT_EQ(0, std::memcmp(second, bytes + 48, 8));
  wchar_t* text = nullptr;
  std::memcpy(&text, bytes + 40, 8);
  EXPECT_STREQ(L"17", text);
  std::memcpy(&text, bytes + 56, 8);
  EXPECT_STREQ(L"PRO", text);
}

TEST(ErrorCapture, AppendsInOrder) {
  ErrorList list;
  for (uint32_t id = 1; id <= 5; ++id) EXPECT_EQ(0, ErrorCaptureEAB(list.get(), 0, id, 0));
  EXPECT_EQ(5u, list->blocks);
  uint32_t expected = 1;
  for (const ErrorBlock* block = list->first; block != nullptr; block = block->next) {
    EXPECT_EQ(expected++, block->messageId);
    if (block->next == nullptr) {
      EXPECT_EQ(block, list->last);
    }
  }
  EXPECT_EQ(6u, expected);
}

TEST(ErrorCapture, EstimatesAreTheSizePlusEightForEachSlot) {
  const struct {
    int16_t slots;
    uint32_t newest, largest;
  } cases[] = {{1, 56, 56}, {3, 104, 104}, {0, 48, 104}, {2, 80, 104}, {-1, 48, 104}};
  ErrorList list;
  for (const auto& c : cases) {
    ASSERT_EQ(0, ErrorCaptureEAB(list.get(), 0, 1, c.slots));
    EXPECT_EQ(c.newest, list->newestEstimate) << c.slots;
    EXPECT_EQ(c.largest, list->largestEstimate) << c.slots;
    EXPECT_EQ(0u, list->reserved);
  }
}

TEST(ErrorCapture, NegativeSlotsAreKeptAndStillHaveOneSlot) {
  for (const int16_t slots : std::initializer_list<int16_t>{-1, -32768}) {
    ErrorList list;
    ASSERT_EQ(0, ErrorCaptureEAB(list.get(), 0, 1, slots));
    EXPECT_EQ(slots, list->first->slots);
    EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"one", 6, 1, 0));
    EXPECT_EQ(1u, list->first->slot[0].id);
  }
}

TEST(ErrorCapture, ManySlots) {
  ErrorList list;
  ASSERT_EQ(0, ErrorCaptureEAB(list.get(), 0, 1, 32767));
  EXPECT_EQ(32u + 32767 * 24, list->newestEstimate);
  EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"one", 6, 1, 0));
}

TEST(ErrorCapture, WithoutAStateIsMinusOne) {
  EXPECT_EQ(-1, ErrorCaptureEAB(nullptr, 0, 1, 0));
  EXPECT_EQ(-1, ErrorCapture(nullptr, 0, 1, 0));
  void* empty_block[8] = {};
  EXPECT_EQ(-1, ErrorCapture(empty_block, 0, 1, 0));
}

TEST(ErrorCapture, OfAThreadBlockUsesTheStateItHolds) {
  ErrorList list;
  void* block[8] = {list.get()};
  EXPECT_EQ(0, ErrorCapture(block, 5, 4711, 1));
  EXPECT_EQ(4711u, list->first->messageId);
  EXPECT_EQ(5u, list->first->auxiliary);
  EXPECT_EQ(0u, TokenCapture(block, L"x", 6, 90, 0));
  EXPECT_EQ(90u, list->first->slot[0].id);
}

// ---- slots -------------------------------------------------------------------------------------

TEST(TokenSlots, ABlockOfNoneStillHasOnePhysicalSlot) {
  ErrorList list;
  ErrorCaptureEAB(list.get(), 0, 1, 0);
  EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"x", 6, 54, 0));
  EXPECT_EQ(0, list->first->slots);
  EXPECT_EQ(54u, list->first->slot[0].id);
  EXPECT_STREQ(L"x", list->first->slot[0].value);
}

TEST(TokenSlots, AnInsertTooManyLandsAfterTheLastSlotDeliberately) {
  for (int16_t slots = 0; slots <= 3; ++slots) {
    ErrorList list;
    ErrorCaptureEAB(list.get(), 0, 1, slots);
    const int declared = slots == 0 ? 1 : slots;
    for (int i = 0; i < declared; ++i) {
      EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"fits", 6, 10, 0));
    }
    EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"too many", 6, 11, 0)) << "never refused with 2";
    EXPECT_EQ(11u, list->first->slot[declared].id);
    EXPECT_STREQ(L"too many", list->first->slot[declared].value);
    EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"even more", 6, 12, 0));
    EXPECT_EQ(12u, list->first->slot[declared].id) << "there is no place but that";
    EXPECT_STREQ(L"even more", list->first->slot[declared].value);
    for (int i = 0; i < declared; ++i) EXPECT_STREQ(L"fits", list->first->slot[i].value);
    EXPECT_EQ(slots, list->first->slots);
  }
}

TEST(TokenSlots, OfTheNewestBlockAreFilled) {
  ErrorList list;
  ErrorCaptureEAB(list.get(), 0, 1, 1);
  ErrorCaptureEAB(list.get(), 0, 2, 1);
  TokenCaptureEAB(list.get(), L"x", 6, 10, 0);
  EXPECT_EQ(0u, list->first->slot[0].id);
  EXPECT_EQ(10u, list->last->slot[0].id);
}

// Id 0 marks an unused slot, so the slot counts as free afterwards.
TEST(TokenSlots, AnInsertWithIdZeroLeavesItsSlotFree) {
  ErrorList list;
  ErrorCaptureEAB(list.get(), 0, 1, 1);
  EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"first", 6, 0, 0));
  EXPECT_EQ(0u, TokenCaptureEAB(list.get(), L"second", 6, 7, 0));
  EXPECT_EQ(7u, list->first->slot[0].id);
  EXPECT_STREQ(L"second", list->first->slot[0].value);
}

// ---- freeing -----------------------------------------------------------------------------------

TEST(TermErrors, AcceptsNull) {
  EXPECT_EQ(0u, TermErrors(nullptr));
}

TEST(TermErrors, FreesAnEmptyStateAndAFullOne) {
  EXPECT_EQ(0u, TermErrors(static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)))));
  auto* state = static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)));
  for (int16_t slots = -1; slots < 4; ++slots) {
    ErrorCaptureEAB(state, 0, 1, slots);
    for (int i = 0; i < 6; ++i) TokenCaptureEAB(state, L"text", 6, 1, 0);
  }
  EXPECT_EQ(0u, TermErrors(state));
}

}  // namespace
