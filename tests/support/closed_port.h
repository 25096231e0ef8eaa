// A loopback port on which nobody listens, and nobody can as long as the object lives.
#pragma once

namespace orve::support {

class ClosedPort {
 public:
  ClosedPort();
  ClosedPort(const ClosedPort&) = delete;
  ClosedPort& operator=(const ClosedPort&) = delete;
  ClosedPort(ClosedPort&&) = delete;
  ClosedPort& operator=(ClosedPort&&) = delete;
  ~ClosedPort();

  [[nodiscard]] int Number() const { return number_; }

 private:
  int socket_;
  int number_ = 0;
};

}  // namespace orve::support
