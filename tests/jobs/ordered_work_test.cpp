// Several threads process the parts; the results arrive in order.
#include "jobs/ordered_work.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>

namespace {

using tavo::cli::OrderedWork;

TEST(OrderedWork, KeepsTheOrder) {
  for (const unsigned threads : {0u, 1u, 2u, 7u}) {
    std::vector<int> done;
    std::atomic<int> worked = 0;
    OrderedWork work(threads);
    for (int i = 0; i < 500; ++i) {
      work.add(
          [&worked, i] {
            if (i % 3 == 0) std::this_thread::yield();
            ++worked;
          },
          [&done, i] { done.push_back(i); });
    }
    work.finish();
    ASSERT_EQ(worked, 500) << threads;
    ASSERT_EQ(done.size(), 500u) << threads;
    for (int i = 0; i < 500; ++i) EXPECT_EQ(done[static_cast<size_t>(i)], i);
  }
}

TEST(OrderedWork, HandsOverOnTheCallingThread) {
  OrderedWork work(3);
  std::set<std::thread::id> threads;
  for (int i = 0; i < 100; ++i) {
    work.add([] {}, [&] { threads.insert(std::this_thread::get_id()); });
  }
  work.finish();
  EXPECT_EQ(threads, std::set<std::thread::id>{std::this_thread::get_id()});
}

TEST(OrderedWork, FewPartsAreUnderWay) {
  OrderedWork work(2);
  size_t under_way = 0, most = 0;
  for (int i = 0; i < 1000; ++i) {
    ++under_way;
    work.add([] {}, [&] { --under_way; });
    most = std::max(most, under_way);
  }
  work.finish();
  EXPECT_LE(most, 17u);
}

TEST(OrderedWork, AnExceptionComesWhereItsResultWould) {
  for (const unsigned threads : {1u, 3u}) {
    OrderedWork work(threads);
    int done = 0;
    const auto add_all = [&] {
      for (int i = 0; i < 50; ++i) {
        work.add(
            [i] {
              if (i == 20) throw std::runtime_error("twenty");
            },
            [&] { ++done; });
      }
      work.finish();
    };
    EXPECT_THROW(add_all(), std::runtime_error) << threads;
    EXPECT_EQ(done, 20) << threads;
  }
}

}  // namespace
