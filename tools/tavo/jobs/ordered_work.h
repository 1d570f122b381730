// Work for several threads, whose results arrive in the order in which it was added.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tavo::cli {

// The calling thread works, too. However many parts are added, only a few are in progress at a
// time. An exception of a part is rethrown where its result would be delivered. The destructor
// waits for the parts that have begun and drops the others.
class OrderedWork {
 public:
  // threads: the number of working threads, the calling one included; at least 1.
  explicit OrderedWork(unsigned threads);
  ~OrderedWork();
  OrderedWork(const OrderedWork&) = delete;
  OrderedWork& operator=(const OrderedWork&) = delete;

  // work: called on any thread. done: called on this thread, after `done` of all earlier parts.
  void add(std::function<void()> work, std::function<void()> done);
  // Waits until everything is done.
  void finish();

 private:
  struct Part;

  static void run(Part& part);
  void help();
  // Delivers finished parts, and works until at most `most` parts are left.
  void settle(size_t most);

  size_t most_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::deque<std::shared_ptr<Part>> waiting_;  // guarded by mutex_
  bool stopped_ = false;                       // guarded by mutex_
  std::deque<std::shared_ptr<Part>> order_;    // used only by the calling thread
  std::vector<std::thread> threads_;
};

}  // namespace tavo::cli
