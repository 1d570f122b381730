/*
 * Preloaded library: makes the N-th call of read, write, fsync or rename fail, or interrupts it by
 * a signal. Environment: FAIL_CALL, FAIL_AT (from 1), FAIL_ERRNO, FAIL_SIGNAL (0: fail instead),
 * FAIL_FOREVER (also every later call), FAIL_MARK (a file that is created when it happens; it holds
 * the descriptor).
 */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/syscall.h>
#include <unistd.h>

#define INTERPOSED __attribute__((visibility("default")))

static long number_of(const char* variable) {
  const char* text = getenv(variable);
  return text == NULL ? 0 : strtol(text, NULL, 10);
}

static void leave_mark(int descriptor) {
  const char* path = getenv("FAIL_MARK");
  if (path == NULL) return;
  const int mark = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  const char digit = (char)(descriptor < 10 ? '0' + descriptor : '9');
  syscall(SYS_write, mark, &digit, 1L);
  close(mark);
}

/* Whether this call must fail. */
static int fails(const char* call, int descriptor) {
  static long calls = 0;
  const char* wanted = getenv("FAIL_CALL");
  if (wanted == NULL || strcmp(wanted, call) != 0) return 0;
  ++calls;
  const long at = number_of("FAIL_AT");
  if (calls < at || (calls > at && number_of("FAIL_FOREVER") == 0)) return 0;
  if (calls == at) leave_mark(descriptor);
  const long signal_number = number_of("FAIL_SIGNAL");
  if (signal_number != 0) {
    raise((int)signal_number);
    return 0;
  }
  errno = (int)number_of("FAIL_ERRNO");
  return 1;
}

INTERPOSED ssize_t read(int descriptor, void* buffer, size_t bytes) {
  return fails("read", descriptor) ? -1 : syscall(SYS_read, descriptor, buffer, bytes);
}

/* read() with checks of the buffer's size. */
INTERPOSED ssize_t __read_chk(int descriptor, void* buffer, size_t bytes, size_t size) {
  if (bytes > size) abort();
  return read(descriptor, buffer, bytes);
}

/* A write that a signal interrupts writes half. */
INTERPOSED ssize_t write(int descriptor, const void* buffer, size_t bytes) {
  const char* wanted = getenv("FAIL_CALL");
  if (wanted != NULL && strcmp(wanted, "write") == 0 && number_of("FAIL_HALF") != 0 && bytes > 1) {
    bytes /= 2;
  }
  return fails("write", descriptor) ? -1 : syscall(SYS_write, descriptor, buffer, bytes);
}

INTERPOSED int fsync(int descriptor) {
  return fails("fsync", descriptor) ? -1 : (int)syscall(SYS_fsync, descriptor);
}

INTERPOSED int rename(const char* from, const char* to) {
  return fails("rename", 9) ? -1 : (int)syscall(SYS_rename, from, to);
}
