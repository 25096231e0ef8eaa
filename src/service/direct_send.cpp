// The shortest way through the service, for a caller that holds everything as plain texts: no record is
// looked up, no body is chosen and no dialog opens, whatever the mode.
//
// FlagInvioDiretto is what makes a send a direct one. It is taken back at the end only: an error on the way
// leaves it set, and the object takes its next send for a direct one too.
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "addressing/address_list.h"
#include "content/management_events.h"
#include "service/CLSFW_MAILSERVER.h"

namespace orve {

void CLSFW_MAILSERVER::InviaMailDiretta(std::int16_t pIdMittente, std::string pDestA, std::string pDestCC,
                                        std::string pDestCCn, std::string pOggetto, std::string pCorpo,
                                        std::string pAllegati) {
  try {
    const std::string allegati = std::move(pAllegati);
    destinatariA_.clear();
    destinatariCC_.clear();
    destinatariCCn_.clear();
    FlagInvioDiretto = true;
    vFlagCorpo = 1;  // an empty body goes out empty
    if (CanaleSmtp(SrvMailInstallato)) IdMittenteDiretto = pIdMittente;
    LeggiDestinatariDiretti({std::move(pDestA), std::move(pDestCC), std::move(pDestCCn)});
    vCorpoMail = std::move(pCorpo);
    vOggetto = std::move(pOggetto);
    RiprendiAllegati(allegati);
    AvviaProceduraInvio(std::nullopt, kvDestinatarioFaxAnagrafica);
    FlagInvioDiretto = false;
  } catch (...) {  // NOLINT(bugprone-empty-catch): nobody is told, and the flag stays, on purpose
  }
}

void CLSFW_MAILSERVER::LeggiDestinatariDiretti(const std::array<std::string, 3>& elenchi) {
  vCollDestinatari.reset();
  vCollDestinatari = std::make_shared<CollDestinatari>(ambiente_);
  LettoreElenchi lettore;
  std::int16_t casella = kvCasellaA;
  for (const auto& elenco : elenchi) {
    lettore.Leggi(elenco, [&](const std::string& indirizzo, const std::string& nome) {
      vCollDestinatari->AddFromLista(indirizzo, nome, "", casella, "");
    });
    ++casella;
  }
}

void CLSFW_MAILSERVER::RegistraAnnullamentoDaUtente() try {
  constexpr const char* kTesto = "Richiesta annullamento da utente";
  const auto registro = ObjRegistroInvio;
  if (!registro) return;
  registro->EsitoInvio(host::kAnnullatoDaUtente);
  registro->TipoCanale(IsPec() ? host::kCanalePec : host::kCanaleMail);
  registro->CanaleInvio(static_cast<float>(SrvMailInstallato));
  registro->RegistraInvio(std::nullopt, std::nullopt, std::nullopt, std::nullopt, kTesto, "", "");
  AttivaEventoGestionale(kEventoNonInviato, "", "", "", "", kTesto, "");
} catch (...) {
  MostraErrore(host::ErroreCorrente(), "-", " in CLSFW_MAILSERVER: RegistraAnnullamentoDaUtente");
}

}  // namespace orve
