// Memory is wiped before the program frees it: texts with passwords in them pass through objects that know
// nothing about that, the standard library's and others'.
#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

// All other forms except those with an alignment lead here; memory from those never holds text.
void* operator new(std::size_t byte) {
  for (;;) {
    if (void* const memoria = std::malloc(byte == 0 ? 1 : byte)) return memoria;
    const std::new_handler altro = std::get_new_handler();
    if (altro == nullptr) throw std::bad_alloc();
    altro();
  }
}

void operator delete(void* memoria) noexcept {
  if (memoria == nullptr) return;
  ::explicit_bzero(memoria, ::malloc_usable_size(memoria));
  std::free(memoria);
}

void operator delete(void* memoria, std::size_t /*byte*/) noexcept {
  operator delete(memoria);
}
