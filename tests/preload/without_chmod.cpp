// Loaded into a program under test (LD_PRELOAD), makes every later change of a file's mode do nothing: a file
// ends up with the mode it was created with, the one others could have opened it with in between.
#include <sys/stat.h>

// The names under which the program finds the functions; in this file the system's own keep theirs.
extern "C" {
int NoChmod(const char* path, mode_t mode) __asm__("chmod");
int NoChmodAt(int folder, const char* path, mode_t mode, int flags) __asm__("fchmodat");
int NoChmodOpen(int descriptor, mode_t mode) __asm__("fchmod");

__attribute__((visibility("default"))) int NoChmod(const char* /*path*/, mode_t /*mode*/) {
  return 0;
}
__attribute__((visibility("default"))) int NoChmodAt(int /*folder*/, const char* /*path*/, mode_t /*mode*/,
                                                     int /*flags*/) {
  return 0;
}
__attribute__((visibility("default"))) int NoChmodOpen(int /*descriptor*/, mode_t /*mode*/) {
  return 0;
}
}
