// Memory that the program gives back is wiped first: texts with passwords in them pass through objects that
// know nothing of it, the standard library's and others'.
#include <malloc.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

// All other forms but those with an alignment lead here; in what those bring there lies no text.
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
