#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <set>
#include <thread>
#include <vector>

#include "TAVOParser.h"
#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

ErrorState*& slot_of(void* block) {
  return *reinterpret_cast<ErrorState**>(static_cast<char*>(block) + kErrorStateSlotOffset);
}

void* own_block() {
  void* block = nullptr;
  EXPECT_EQ(TAVOGetThreadBlock(&block), kOk);
  return block;
}

wchar_t* copy_of(const wchar_t* text) {
  const size_t bytes = (std::wcslen(text) + 1) * sizeof(wchar_t);
  auto* copy = static_cast<wchar_t*>(std::malloc(bytes));
  std::memcpy(copy, text, bytes);
  return copy;
}

// An error state like the library's; `room` slots are allocated, `filled` of them have a value.
ErrorState* make_errors(int16_t slots, size_t room, size_t filled) {
  auto* state = static_cast<ErrorState*>(std::calloc(1, sizeof(ErrorState)));
  for (int i = 0; i < 2; ++i) {
    auto* block = static_cast<ErrorBlock*>(std::calloc(1, 32 + 16 * room));
    std::memcpy(block->eye, "ECBD", 4);
    block->version = 21;
    block->slots = slots;
    for (size_t k = 0; k < filled; ++k) {
      block->slot[k].id = 52;
      block->slot[k].value = copy_of(L"7");
    }
    block->next = state->first;
    state->first = block;
    ++state->blocks;
  }
  return state;
}

void free_errors(ErrorState* state, size_t filled) {
  while (state->first != nullptr) {
    ErrorBlock* next = state->first->next;
    for (size_t k = 0; k < filled; ++k) {
      std::free(state->first->slot[k].value);
    }
    std::free(state->first);
    state->first = next;
  }
  std::free(state);
}

std::atomic<int> g_calls{0};
std::atomic<int> g_wrong{0};

void* count_call(uint64_t reason, void* second, void* block) {
  ++g_calls;
  if ((reason & 0xFFFF) != 3 || second != nullptr || block == nullptr) ++g_wrong;
  ErrorState*& slot = slot_of(block);
  if (slot != nullptr) free_errors(slot, 1);
  slot = nullptr;
  return block;
}

int clean() {
  g_calls = 0;
  g_wrong = 0;
  EXPECT_EQ(TAVOCleanThreadBlock(&count_call), kOk);
  EXPECT_EQ(g_wrong, 0);
  return g_calls;
}

TEST(ThreadBlock, IsTheSameAtEveryCallOfAThread) {
  void* block = own_block();
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(own_block(), block);
  EXPECT_EQ(slot_of(block), nullptr);
  clean();
}

TEST(ThreadBlock, DiffersBetweenThreads) {
  void* mine = own_block();
  std::thread([&] { EXPECT_NE(own_block(), mine); }).join();
  clean();
}

TEST(ThreadBlock, NeedsAPlaceForItsAddress) {
  EXPECT_EQ(TAVOGetThreadBlock(nullptr), kArgumentInvalid);
}

TEST(ThreadBlock, IsCleanedForEveryThreadThatIsThere) {
  clean();
  own_block();
  std::atomic<int> ready{0};
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 3; ++i) {
    threads.emplace_back([&] {
      slot_of(own_block()) = make_errors(1, 2, 1);
      ++ready;
      while (!go) {
        std::this_thread::yield();
      }
      // The old block was freed: this one is new and empty.
      EXPECT_EQ(slot_of(own_block()), nullptr);
    });
  }
  while (ready != 3) {
    std::this_thread::yield();
  }
  EXPECT_EQ(clean(), 4);
  go = true;
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(clean(), 0) << "blocks of threads that ended are gone";
}

TEST(ThreadBlock, IsMadeAnewAfterTheClean) {
  void* block = own_block();
  slot_of(block) = make_errors(1, 2, 1);
  EXPECT_EQ(clean(), 1);
  EXPECT_EQ(slot_of(own_block()), nullptr);
  EXPECT_EQ(clean(), 1);
  EXPECT_EQ(clean(), 0);
}

// The sanitized build reports leaks and double frees.
TEST(ThreadEnd, FreesTheErrorStateInTheSlot) {
  std::thread([] { slot_of(own_block()) = make_errors(2, 3, 2); }).join();
  std::thread([] { slot_of(own_block()) = make_errors(0, 1, 1); }).join();
  EXPECT_EQ(clean(), 0);
}

TEST(ThreadEnd, FreesTheInsertAfterTheDeclaredSlots) {
  std::thread([] { slot_of(own_block()) = make_errors(1, 2, 2); }).join();
  EXPECT_EQ(clean(), 0);
}

TEST(ThreadEnd, ReadsNothingAfterABlockWithoutThatRoom) {
  std::thread([] { slot_of(own_block()) = make_errors(1, 1, 1); }).join();
  std::thread([] { slot_of(own_block()) = make_errors(-5, 1, 1); }).join();
  EXPECT_EQ(clean(), 0);
}

TEST(ThreadEnd, AlsoFreesABlockThatOtherCleanUpAsksForThen) {
  struct AsksAtTheEnd {
    ~AsksAtTheEnd() {
      slot_of(own_block()) = make_errors(1, 2, 1);
    }
  };
  std::thread([] {
    thread_local AsksAtTheEnd asks;
    (void)&asks;
    own_block();
  }).join();
  std::thread([] {
    pthread_key_t key;
    pthread_key_create(&key, [](void*) { slot_of(own_block()) = make_errors(1, 2, 1); });
    pthread_setspecific(key, &key);
    own_block();
  }).join();
  EXPECT_EQ(clean(), 0);
}

void* asks_for_a_block(uint64_t, void*, void* block) {
  ++g_calls;
  void* again = nullptr;
  if (TAVOGetThreadBlock(&again) != kOk || again == block) ++g_wrong;
  return block;
}

TEST(CleanThreadBlock, LetsItsCallbackAskForABlock) {
  clean();
  own_block();
  g_calls = g_wrong = 0;
  EXPECT_EQ(TAVOCleanThreadBlock(&asks_for_a_block), kOk);
  EXPECT_EQ(g_calls, 1);
  EXPECT_EQ(g_wrong, 0);
  EXPECT_EQ(clean(), 1) << "the block that the callback made";
}

TEST(CleanThreadBlock, DoesNothingWithoutACallback) {
  clean();
  own_block();
  EXPECT_EQ(TAVOCleanThreadBlock(nullptr), kArgumentInvalid);
  EXPECT_EQ(clean(), 1);
}

TEST(CleanThreadBlock, MayRunWhileThreadsComeAndGo) {
  std::atomic<bool> stop{false};
  std::vector<std::thread> threads;
  for (int i = 0; i < 2; ++i) {
    threads.emplace_back([&] {
      while (!stop) {
        std::thread([] { own_block(); }).join();
      }
    });
  }
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(TAVOCleanThreadBlock(&count_call), kOk);
  }
  stop = true;
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(clean(), 0);
}

}  // namespace
