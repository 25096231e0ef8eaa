#include "orve-mail/checks/legatura_password.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "orve-mailserver/host/errore.h"

namespace orve::app {

namespace {

using adapters::secrets::Secret;

std::optional<Secret> Aperta(const SigilloPassword& sigillo, const PasswordMemorizzata& password) try {
  return sigillo.Apri(password.testo, password.legame);
} catch (const host::Errore&) {
  return std::nullopt;
}

bool Riscrivi(const Archivio& archivio, const PasswordMemorizzata& password,
              const std::string& sigillata) try {
  return archivio.incorporato && SostituisciSeAncora(*archivio.incorporato, password, sigillata);
} catch (const host::Errore&) {
  return false;
}

}  // namespace

bool Legatura::RestaAperta() const {
  return std::any_of(rimaste.begin(), rimaste.end(),
                     [](const PasswordSlegata& una) { return una.perche != Slegata::kNonSiApre; });
}

Legatura LegaPassword(const Archivio& archivio, const SigilloPassword& sigillo) {
  const auto tutte = LeggiPassword(*archivio.connessione, {});
  std::map<std::string, int> volte;
  for (const PasswordMemorizzata& password : tutte) ++volte[password.testo];
  Legatura esito;
  for (const PasswordMemorizzata& password : tutte) {
    if (!SigilloPassword::Sigillato(password.testo)) continue;
    ++esito.cifrate;
    if (!SigilloPassword::SenzaLegame(password.testo)) continue;
    const auto chiara = Aperta(sigillo, password);
    if (!chiara) {
      esito.rimaste.push_back({password, Slegata::kNonSiApre});
    } else if (volte[password.testo] > 1) {
      esito.rimaste.push_back({password, Slegata::kCopiata});
    } else if (!password.conServer) {
      esito.rimaste.push_back({password, Slegata::kSenzaServer});
    } else if (!Riscrivi(archivio, password, sigillo.Sigilla(chiara->View(), password.legame))) {
      esito.rimaste.push_back({password, Slegata::kNonScritta});
    } else {
      esito.riscritte.push_back(password);
    }
  }
  return esito;
}

}  // namespace orve::app
