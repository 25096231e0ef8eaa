// The pointer while the program is busy on the windows' thread.
#pragma once

namespace orve::adapters::qt {

/// While it lives, the pointer tells the person to wait. The window under it does not respond meanwhile.
class PuntatoreInAttesa {
 public:
  PuntatoreInAttesa();
  PuntatoreInAttesa(const PuntatoreInAttesa&) = delete;
  PuntatoreInAttesa& operator=(const PuntatoreInAttesa&) = delete;
  PuntatoreInAttesa(PuntatoreInAttesa&&) = delete;
  PuntatoreInAttesa& operator=(PuntatoreInAttesa&&) = delete;
  ~PuntatoreInAttesa();
};

/// While it lives, the person is being asked something, and the pointer is the usual one although the program
/// is busy.
class PuntatoreLibero {
 public:
  PuntatoreLibero();
  PuntatoreLibero(const PuntatoreLibero&) = delete;
  PuntatoreLibero& operator=(const PuntatoreLibero&) = delete;
  PuntatoreLibero(PuntatoreLibero&&) = delete;
  PuntatoreLibero& operator=(PuntatoreLibero&&) = delete;
  ~PuntatoreLibero();

 private:
  bool cambiato_;
};

}  // namespace orve::adapters::qt
