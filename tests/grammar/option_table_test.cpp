// The types of the grammar tables, at limits that no table reaches.
#include "Grammar/engine/option_table.h"

#include <gtest/gtest.h>

namespace {

TEST(InlineList, EndsAtTheFirstEmptyEntryOrWhenItIsFull) {
  struct {
    tavo::KeywordList list{};
    uint16_t after[4] = {7, 7, 7, 7};
  } memory;
  for (size_t count = 0; count <= memory.list.entries.size(); ++count) {
    EXPECT_EQ(count, memory.list.size());
    EXPECT_EQ(count, memory.list.list().size());
    if (count < memory.list.entries.size()) memory.list.entries[count] = 5;
  }
  memory.list.entries[1] = 0;
  EXPECT_EQ(1u, memory.list.size());
}

TEST(InlineList, OfValuesEndsAtTheFirstWithoutAToken) {
  tavo::ValueList list{};
  EXPECT_EQ(0u, list.size());
  list.entries[0] = {1, 0, 0};
  list.entries[1] = {0, 3, 4};
  EXPECT_EQ(1u, list.size());
}

TEST(OptionIndex, KnowsNoTypeAfterTheLastOne) {
  const tavo::OptionRule first, second;
  const tavo::OptionRule* const options[] = {&first, &second};
  struct {
    tavo::OptionIndex index{};
    uint8_t after[8] = {1, 1, 1, 1, 1, 1, 1, 1};
  } memory;
  memory.index[4] = 1;
  memory.index[350] = 2;
  EXPECT_EQ(&first, tavo::option_beginning_with(options, memory.index, 4));
  EXPECT_EQ(&second, tavo::option_beginning_with(options, memory.index, 350));
  for (const uint32_t type : {0u, 3u, 5u, 349u, 351u, 352u, 0xFFFFFFFFu}) {
    EXPECT_EQ(nullptr, tavo::option_beginning_with(options, memory.index, type)) << type;
  }
}

}  // namespace
