#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

#include "common/platform_status.h"
#include "platform/platform.h"

namespace {

using namespace tavo::platform;

class Mutex : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(MutexCreate(&mutex_), kOk);
  }
  void TearDown() override {
    MutexDestroy(mutex_);
  }
  void* mutex_ = nullptr;
};

TEST_F(Mutex, KeepsThreadsApart) {
  int count = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int k = 0; k < 2000; ++k) {
        EXPECT_EQ(MutexLock(mutex_, 0), kOk);
        ++count;
        EXPECT_EQ(MutexUnLock(mutex_), kOk);
      }
    });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(count, 8000);
}

TEST_F(Mutex, WaitsForItsHolder) {
  std::atomic<bool> about_to_lock{false}, locked{false};
  ASSERT_EQ(MutexLock(mutex_, 0), kOk);
  std::thread other([&] {
    about_to_lock = true;
    EXPECT_EQ(MutexLock(mutex_, 0), kOk);
    locked = true;
    EXPECT_EQ(MutexUnLock(mutex_), kOk);
  });
  while (!about_to_lock) {
    std::this_thread::yield();
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  EXPECT_FALSE(locked);
  EXPECT_EQ(MutexUnLock(mutex_), kOk);
  other.join();
  EXPECT_TRUE(locked);
}

TEST_F(Mutex, IsRecursive) {
  EXPECT_EQ(MutexLock(mutex_, 0), kOk);
  EXPECT_EQ(MutexLock(mutex_, 0), kOk);
  EXPECT_EQ(MutexUnLock(mutex_), kOk);
  std::thread([&] { EXPECT_EQ(MutexUnLock(mutex_), kMutexNotOwner); }).join();
  EXPECT_EQ(MutexUnLock(mutex_), kOk);
  EXPECT_EQ(MutexUnLock(mutex_), kMutexNotOwner);
}

TEST_F(Mutex, IsUnlockedByItsHolderOnly) {
  EXPECT_EQ(MutexUnLock(mutex_), kMutexNotOwner);
  EXPECT_EQ(MutexLock(mutex_, 0), kOk);
  std::thread([&] { EXPECT_EQ(MutexUnLock(mutex_), kMutexNotOwner); }).join();
  EXPECT_EQ(MutexUnLock(mutex_), kOk);
}

TEST_F(Mutex, IsNotDestroyedWhileItIsHeld) {
  EXPECT_EQ(MutexLock(mutex_, 0), kOk);
  EXPECT_EQ(MutexDestroy(mutex_), kMutexBusy);
  std::thread([&] { EXPECT_EQ(MutexDestroy(mutex_), kMutexBusy); }).join();
  EXPECT_EQ(MutexUnLock(mutex_), kOk);
  EXPECT_EQ(MutexDestroy(mutex_), kOk);
}

TEST_F(Mutex, IsRecognisedOnceItIsDestroyed) {
  EXPECT_EQ(MutexDestroy(mutex_), kOk);
  EXPECT_EQ(MutexDestroy(mutex_), kMutexHandleInvalid);
  EXPECT_EQ(MutexLock(mutex_, 0), kMutexHandleInvalid);
  EXPECT_EQ(MutexUnLock(mutex_), kMutexHandleInvalid);
  int32_t count = 0;
  EXPECT_EQ(LockedIncrement(&count, mutex_), kMutexHandleInvalid);
  EXPECT_EQ(count, 0);
}

TEST_F(Mutex, IsNotTakenForTheOneThatFollowsIt) {
  EXPECT_EQ(MutexDestroy(mutex_), kOk);
  void* next = nullptr;
  ASSERT_EQ(MutexCreate(&next), kOk);
  EXPECT_NE(next, mutex_);
  EXPECT_EQ(MutexLock(mutex_, 0), kMutexHandleInvalid);
  EXPECT_EQ(MutexDestroy(next), kOk);
}

TEST_F(Mutex, RefusesAReservedArgument) {
  EXPECT_EQ(MutexLock(mutex_, 1), kArgumentInvalid);
  EXPECT_EQ(MutexUnLock(mutex_), kMutexNotOwner);
}

TEST(MutexHandle, ThatWasNeverMadeIsAcceptedByLockAndUnlock) {
  EXPECT_EQ(MutexLock(nullptr, 0), kOk);
  EXPECT_EQ(MutexUnLock(nullptr), kOk);
  EXPECT_EQ(MutexDestroy(nullptr), kMutexHandleInvalid);
}

TEST(MutexHandle, MayHoldAnythingAndIsStillRecognised) {
  int local = 0;
  for (const uintptr_t bits :
       {uintptr_t{1}, uintptr_t{64}, uintptr_t{65}, uintptr_t{0xFFFFFFFF}, ~uintptr_t{0},
        uintptr_t{1} << 32, reinterpret_cast<uintptr_t>(&local)}) {
    void* handle = reinterpret_cast<void*>(bits);
    EXPECT_EQ(MutexLock(handle, 0), kMutexHandleInvalid) << bits;
    EXPECT_EQ(MutexUnLock(handle), kMutexHandleInvalid) << bits;
    EXPECT_EQ(MutexDestroy(handle), kMutexHandleInvalid) << bits;
  }
  EXPECT_EQ(MutexCreate(nullptr), kArgumentInvalid);
}

TEST(MutexHandle, ThereAreAsManyAsAskedFor) {
  std::vector<void*> mutexes(200, nullptr);
  for (void*& mutex : mutexes) {
    ASSERT_EQ(MutexCreate(&mutex), kOk);
    ASSERT_EQ(MutexLock(mutex, 0), kOk);
  }
  for (void* mutex : mutexes) {
    EXPECT_EQ(MutexUnLock(mutex), kOk);
    EXPECT_EQ(MutexDestroy(mutex), kOk);
  }
}

TEST(MutexHandle, ThreadsMayRaceADestroyAgainstLocks) {
  for (int round = 0; round < 50; ++round) {
    void* mutex = nullptr;
    ASSERT_EQ(MutexCreate(&mutex), kOk);
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
      threads.emplace_back([&] {
        const uint32_t locked = MutexLock(mutex, 0);
        if (locked == kOk) {
          if (MutexUnLock(mutex) != kOk) ++wrong;
        } else if (locked != kMutexHandleInvalid) {
          ++wrong;
        }
      });
    }
    const uint32_t destroyed = MutexDestroy(mutex);
    if (destroyed != kOk && destroyed != kMutexBusy) ++wrong;
    for (auto& thread : threads) {
      thread.join();
    }
    if (destroyed == kMutexBusy) {
      EXPECT_EQ(MutexDestroy(mutex), kOk);
    }
    EXPECT_EQ(wrong, 0);
  }
}

TEST(LockedIncrement, CountsWithAndWithoutAMutex) {
  for (const bool with_mutex : {false, true}) {
    void* mutex = nullptr;
    if (with_mutex) {
      ASSERT_EQ(MutexCreate(&mutex), kOk);
    }
    int32_t count = -1;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&] {
        for (int k = 0; k < 1000; ++k) {
          EXPECT_EQ(LockedIncrement(&count, mutex), kOk);
        }
      });
    }
    for (auto& thread : threads) {
      thread.join();
    }
    EXPECT_EQ(count, 3999);
    if (with_mutex) {
      EXPECT_EQ(MutexDestroy(mutex), kOk);
    }
  }
}

TEST(LockedIncrement, StaysApartFromAPlainChangeUnderTheMutex) {
  void* mutex = nullptr;
  ASSERT_EQ(MutexCreate(&mutex), kOk);
  int32_t count = 0;
  std::thread up([&] {
    for (int k = 0; k < 2000; ++k) {
      EXPECT_EQ(LockedIncrement(&count, mutex), kOk);
    }
  });
  for (int k = 0; k < 2000; ++k) {
    MutexLock(mutex, 0);
    --count;
    MutexUnLock(mutex);
  }
  up.join();
  EXPECT_EQ(count, 0);
  EXPECT_EQ(MutexDestroy(mutex), kOk);
}

TEST(LockedIncrement, RefusesToPassTheLargestNumber) {
  int32_t count = INT32_MAX - 1;
  EXPECT_EQ(LockedIncrement(&count, nullptr), kOk);
  EXPECT_EQ(LockedIncrement(&count, nullptr), kCountOverflow);
  EXPECT_EQ(count, INT32_MAX);
  EXPECT_EQ(LockedIncrement(nullptr, nullptr), kArgumentInvalid);
}

}  // namespace
