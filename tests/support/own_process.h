// Runs a test's body in its own process: for tests that leave the library's process-wide state
// unusable for other tests.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace tavo_test {

template <typename Body>
void in_own_process(const Body& body) {
  std::fflush(nullptr);
  const pid_t child = fork();
  ASSERT_NE(-1, child);
  if (child == 0) {
    body();
    std::fflush(nullptr);
    std::exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(child, waitpid(child, &status, 0));
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
      << "the process ended with wait status " << status;
}

}  // namespace tavo_test
