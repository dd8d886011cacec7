// Loaded before a program's libraries: what it writes takes its time to reach the disk.

#include <sys/syscall.h>
#include <unistd.h>

// The library's own declaration has a reserved name.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int fsync(int descriptor) {
  constexpr useconds_t delay = 300'000;
  ::usleep(delay);
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}
