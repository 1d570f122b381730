// Work for several threads, with its results in the order in which it was given.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tavo::cli {

// The calling thread works, too. Only a few parts are under way at a time, however many are added.
// An exception of a part is thrown where its result would have been handed over. The destructor
// waits for the parts that have begun and drops the others.
class OrderedWork {
 public:
  // threads: how many work, the calling one included; at least 1.
  explicit OrderedWork(unsigned threads);
  ~OrderedWork();
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  // work: called on any thread. done: called on this one, after `done` of every part before.
  void add(std::function<void()> work, std::function<void()> done);
  // Until everything is done.
  void finish();

 private:
  struct Part;

  static void run(Part& part);
  void help();
  // Hands over what is done, and works until at most `most` parts are left.
  void settle(size_t most);

  size_t most_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Part>> waiting_;  // guarded by mutex_
  bool stopped_ = false;                       // guarded by mutex_
  std::deque<std::shared_ptr<Part>> order_;    // of the calling thread
  std::vector<std::thread> threads_;
};

}  // namespace tavo::cli
