// The companies of a list of recipients, so that a recipient that comes back as text, with name and address
// only, gets its company back.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "orve-mailserver/addressing/destinatari.h"

namespace orve {

class AziendeNote {
 public:
  /// An absent list yields no companies. If several recipients match, the last one wins.
  explicit AziendeNote(const std::shared_ptr<CollDestinatari>& destinatari) {
    if (!destinatari) return;
    for (const auto& destinatario : *destinatari) {
      aziende_[Chiave(destinatario->Indirizzo(), destinatario->Nome())] = destinatario->Azienda();
    }
  }
  /// Empty when no recipient had exactly this address and name.
  [[nodiscard]] std::string Di(std::string_view indirizzo, std::string_view nome) const {
    const auto trovata = aziende_.find(Chiave(indirizzo, nome));
    return trovata == aziende_.end() ? std::string() : trovata->second;
  }

 private:
  // The leading length keeps "a" + "bc" and "ab" + "c" apart.
  static std::string Chiave(std::string_view indirizzo, std::string_view nome) {
    std::string chiave = std::to_string(indirizzo.size());
    return chiave.append(":").append(indirizzo).append(nome);
  }
  std::unordered_map<std::string, std::string> aziende_;
};

}  // namespace orve
