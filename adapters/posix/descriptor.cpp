#include "posix/descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace orve::adapters::posix {

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  if (this != &other) {
    Close();
    number_ = other.Release();
  }
  return *this;
}

int Descriptor::Release() noexcept {
  return std::exchange(number_, -1);
}

int Descriptor::Close() noexcept {
  if (number_ < 0) return 0;
  const int before = errno;  // a destructor may run between a failure and the look at it
  const int error = ::close(Release()) == 0 || errno == EINTR ? 0 : errno;
  errno = before;
  return error;
}

}  // namespace orve::adapters::posix
