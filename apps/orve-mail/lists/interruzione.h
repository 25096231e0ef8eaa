// A request from outside to stop, held until the program is ready for it.
#pragma once

#include <array>
#include <csignal>

namespace orve::app {

/// While it lives, SIGINT and SIGTERM end nothing: they are noted, however many arrive. A signal that was
/// ignored before stays ignored. One object at a time.
class Interruzione {
 public:
  Interruzione();
  Interruzione(const Interruzione&) = delete;
  Interruzione& operator=(const Interruzione&) = delete;
  Interruzione(Interruzione&&) = delete;
  Interruzione& operator=(Interruzione&&) = delete;
  ~Interruzione();

  [[nodiscard]] static bool Richiesta();

 private:
  static constexpr std::array<int, 2> kSegnali = {SIGINT, SIGTERM};
  std::array<struct sigaction, kSegnali.size()> prima_{};
};

}  // namespace orve::app
