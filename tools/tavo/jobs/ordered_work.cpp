#include "jobs/ordered_work.h"

#include <exception>
#include <utility>

namespace tavo::cli {
namespace {

constexpr size_t kPartsOfAThread = 8;

}  // namespace

struct OrderedWork::Part {
  std::function<void()> work;
  std::function<void()> done;
  std::exception_ptr failure;
  bool is_done = false;  // guarded by mutex_
};

OrderedWork::OrderedWork(unsigned threads) : most_(threads <= 1 ? 0 : threads * kPartsOfAThread) {
  for (unsigned i = 1; i < threads; ++i) threads_.emplace_back([this] { help(); });
}

OrderedWork::~OrderedWork() {
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
    waiting_.clear();
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void OrderedWork::run(Part& part) {
  try {
    part.work();
  } catch (...) {
    part.failure = std::current_exception();
  }
}

// The loop of the other threads.
void OrderedWork::help() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return stopped_ || !waiting_.empty(); });
    if (stopped_) return;
    const std::shared_ptr<Part> part = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    run(*part);
    lock.lock();
    part->is_done = true;
    changed_.notify_all();
  }
}

void OrderedWork::add(std::function<void()> work, std::function<void()> done) {
  auto part = std::make_shared<Part>();
  part->work = std::move(work);
  part->done = std::move(done);
  order_.push_back(part);
  {
    const std::lock_guard lock(mutex_);
    waiting_.push_back(std::move(part));
  }
  changed_.notify_one();
  settle(most_);
}

void OrderedWork::finish() {
  settle(0);
}

void OrderedWork::settle(size_t most) {
  while (!order_.empty()) {
    std::shared_ptr<Part> mine;
    {
      std::unique_lock lock(mutex_);
      if (!order_.front()->is_done) {
        if (order_.size() <= most) return;
        if (!waiting_.empty()) {
          mine = std::move(waiting_.front());
          waiting_.pop_front();
        } else {
          changed_.wait(lock, [this] { return order_.front()->is_done; });
        }
      }
    }
    if (mine != nullptr) {
      run(*mine);
      const std::lock_guard lock(mutex_);
      mine->is_done = true;
      continue;
    }
    const std::shared_ptr<Part> front = std::move(order_.front());
    order_.pop_front();
    if (front->failure) std::rethrow_exception(front->failure);
    front->done();
  }
}

}  // namespace tavo::cli
