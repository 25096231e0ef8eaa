// Listeners for a window's events that do nothing once their object is gone.
#pragma once

#include <memory>
#include <utility>

namespace orve {

/// Calls a member function of the object that `vita` points to, for as long as `vita` lives. Arguments that
/// the member does not take are dropped, by the caller's choice of `Membro`.
template <class Oggetto, class... Parametri>
[[nodiscard]] auto Ascolta(const std::shared_ptr<Oggetto*>& vita, void (Oggetto::*membro)(Parametri...)) {
  return [debole = std::weak_ptr<Oggetto*>(vita), membro](auto&&... argomenti) {
    if (const auto oggetto = debole.lock()) {
      ((**oggetto).*membro)(std::forward<decltype(argomenti)>(argomenti)...);
    }
  };
}

/// The same for a menu, whose second text is unused.
template <class Oggetto, class Chiave>
[[nodiscard]] auto AscoltaMenu(const std::shared_ptr<Oggetto*>& vita, void (Oggetto::*membro)(Chiave)) {
  return [ascoltatore = Ascolta(vita, membro)](const auto& chiave, const auto&) { ascoltatore(chiave); };
}

}  // namespace orve
