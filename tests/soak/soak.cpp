// Everything at once, for as long as requested: eight threads start and stop the library, parse,
// read errors and validate while allocations are refused; between the rounds the library is
// unloaded and loaded again. Every result is compared with that of an undisturbed parse; the
// sanitizers find the rest.
//
//   soak [--seconds N] [--seed N]
//
// Returns 0 if nothing differed, and prints how much was done.
#include <dlfcn.h>

#include <atomic>
#include <barrier>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "TAVOErrorHandler.h"
#include "TAVOParser.h"
#include "soak/refused_memory.h"
#include "soak/statements.h"

namespace {

constexpr unsigned kThreads = 8;
constexpr int kStepsPerRound = 150;

// ---- the library, loaded and unloaded ----------------------------------------------------------

struct Library {
  void* handle = nullptr;
  decltype(&::Parser_Init) init = nullptr;
  decltype(&::Parser_Term) term = nullptr;
  decltype(&::Parser_Service) service = nullptr;
  decltype(&::Provider_Validate) validate = nullptr;
  decltype(&::Parser_GetErrorCount) error_count = nullptr;
  decltype(&::Parser_GetError) error = nullptr;
  decltype(&::Parser_GetFormattedErrorMsg) message = nullptr;
};

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "soak: %s\n", what.c_str());
  std::_Exit(1);
}

template <typename Function>
void find(void* handle, const char* name, Function*& function) {
  function = reinterpret_cast<Function*>(dlsym(handle, name));
  if (function == nullptr) fail(std::string("no function ") + name);
}

Library load() {
  Library library;
  library.handle = dlopen(SOAK_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  if (library.handle == nullptr) fail(dlerror());
  find(library.handle, "Parser_Init", library.init);
  find(library.handle, "Parser_Term", library.term);
  find(library.handle, "Parser_Service", library.service);
  find(library.handle, "Provider_Validate", library.validate);
  find(library.handle, "Parser_GetErrorCount", library.error_count);
  find(library.handle, "Parser_GetError", library.error);
  find(library.handle, "Parser_GetFormattedErrorMsg", library.message);
  if (library.init() != 0) fail("the library does not start");
  return library;
}

void unload(Library& library) {
  if (library.term() != 0) fail("the library does not stop");
  if (dlclose(library.handle) != 0) fail(dlerror());
  if (dlopen(SOAK_LIBRARY, RTLD_NOW | RTLD_NOLOAD) != nullptr) fail("the library stays loaded");
}

// ---- work of a thread --------------------------------------------------------------------------

struct Done {
  std::atomic<uint64_t> parses{0};
  std::atomic<uint64_t> rejected{0};
  std::atomic<uint64_t> refusals{0};
  std::atomic<uint64_t> messages{0};
  std::atomic<uint64_t> starts{0};
};

class Worker {
 public:
  Worker(uint64_t seed, Done& done) : random_(seed), done_(done) {}

  void work(const Library& library) {
    library_ = &library;
    for (int step = 0; step < kStepsPerRound; ++step) {
      switch (random_() % 8) {
        case 0: start_and_stop(); break;
        case 1: read_errors(); break;
        case 2: parse(true, true); break;
        case 3: parse(true, false); break;
        default: parse(false, random_() % 4 != 0); break;
      }
    }
  }

 private:
  // The main thread holds an additional start, so no stop here is the last.
  void start_and_stop() {
    const soak::RefusedMemory refused(random_() % 4 == 0 ? 1 + random_() % 3 : 0);
    const uint64_t count = 1 + random_() % 3;
    for (uint64_t i = 0; i < count; ++i) {
      if (library_->init() != 0) fail("a start failed");
    }
    for (uint64_t i = 0; i < count; ++i) {
      if (library_->term() != 0) fail("a stop failed");
    }
    done_.starts += count;
  }

  void parse(bool with_refusals, bool filling) {
    const soak::Statement& statement = soak::statements()[random_() % soak::statements().size()];
    soak::Request request(statement, filling);
    uint32_t status = 0;
    bool refused = false;
    {
      const soak::RefusedMemory memory(with_refusals ? 1 + random_() % 12 : 0);
      status = library_->service(request.get());
      refused = memory.happened();
    }
    ++done_.parses;
    done_.refusals += refused ? 1 : 0;
    const soak::Outcome& expected = filling ? statement.filling : statement.sizing;
    if (status != 0) ++done_.rejected;
    // After a refused allocation a parse may fail, but an accepted result is complete and correct.
    if (!refused || status == 0) {
      if (status != expected.status) fail("another status for " + statement.name());
      if (request.fingerprint() != expected.fingerprint) {
        fail("another result for " + statement.name());
      }
    }
    if (filling && status == 0 && library_->validate(request.get()) != 0) {
      fail("a valid array is invalid: " + statement.name());
    }
    if (random_() % 2 == 0) read_errors();
  }

  void read_errors() {
    uint32_t count = 0;
    const uint32_t status = library_->error_count(&count, nullptr);
    if (status != 0 && status != TAVO_STATUS_NO_ERRORS_HELD) fail("the errors cannot be counted");
    for (uint32_t i = 0; status == 0 && i < count; ++i) {
      TAVOErrorRequest error{};
      error.version = 21;
      error.size = sizeof error;
      error.index = i;
      if (library_->error(&error) != 0) fail("an error that was counted is not there");
      wchar_t text[512];
      TAVOMessageRequest message{};
      message.version = 21;
      message.size = sizeof message;
      message.block = error.block;
      message.text = text;
      message.textBytes = sizeof text;
      library_->message(&message);
      if (text[0] == L'\0') fail("an empty message");
      ++done_.messages;
    }
  }

  std::mt19937_64 random_;
  Done& done_;
  const Library* library_ = nullptr;
};

// ---- rounds ------------------------------------------------------------------------------------

// Runs some rounds in one set of threads, which outlive an unloading of the library.
uint64_t run_threads(Library& library, int rounds, std::mt19937_64& seeds, Done& done) {
  std::barrier begin(kThreads + 1);
  std::barrier end(kThreads + 1);
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, seed = seeds()] {
      Worker worker(seed, done);
      for (int round = 0; round < rounds; ++round) {
        begin.arrive_and_wait();
        worker.work(library);
        end.arrive_and_wait();
      }
    });
  }
  for (int round = 0; round < rounds; ++round) {
    begin.arrive_and_wait();
    end.arrive_and_wait();
    unload(library);
    library = load();
  }
  for (std::thread& thread : threads) thread.join();
  return static_cast<uint64_t>(rounds);
}

long option(int argc, char** argv, const char* name, long otherwise) {
  for (int i = 1; i + 1 < argc; i += 2) {
    if (std::strcmp(argv[i], name) == 0) return std::strtol(argv[i + 1], nullptr, 10);
  }
  return otherwise;
}

}  // namespace

int main(int argc, char** argv) {
  const long seconds = option(argc, argv, "--seconds", 2);
  std::mt19937_64 seeds(static_cast<uint64_t>(option(argc, argv, "--seed", 1)));
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
  Library library = load();
  soak::learn_outcomes(library.service);
  Done done;
  uint64_t rounds = 0;
  do {
    rounds += run_threads(library, 4, seeds, done);
  } while (std::chrono::steady_clock::now() < until);
  unload(library);
  std::printf(
      "soak: %u threads, %ld seconds, %llu loads, %llu parses (%llu not accepted, %llu with an "
      "allocation refused), %llu messages, %llu starts and stops: nothing differed\n",
      kThreads, seconds, static_cast<unsigned long long>(rounds + 1),
      static_cast<unsigned long long>(done.parses), static_cast<unsigned long long>(done.rejected),
      static_cast<unsigned long long>(done.refusals),
      static_cast<unsigned long long>(done.messages), static_cast<unsigned long long>(done.starts));
  return 0;
}
