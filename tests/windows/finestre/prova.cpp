#include "prova.h"

#include <fstream>
#include <system_error>

#include "win32/finestre/testo.h"

#include "service/dialog_bridge.h"

namespace orve::adapters::win32::finestre {

CartellaDiProva::CartellaDiProva() {
  static int numero = 0;
  radice_ = std::filesystem::temp_directory_path() /
            (L"orve-prova-" + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++numero));
  std::filesystem::create_directories(radice_);
}

CartellaDiProva::~CartellaDiProva() {
  std::error_code ignorato;
  std::filesystem::remove_all(radice_, ignorato);
}

std::string CartellaDiProva::File(const std::string& nome, const std::string& contenuto) const {
  const auto percorso = radice_ / Largo(nome);
  std::ofstream(percorso, std::ios::binary) << contenuto;
  return Stretto(percorso.native());
}

std::string CartellaDiProva::Radice() const {
  return Stretto(radice_.native());
}

fakes::Riga RigaAccount(std::int16_t id, const std::string& indirizzo, std::int16_t lettura) {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 25},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 0},
          {"FW23_SSL", 0},
          {"FW98_IDACCOUNT", id},
          {"FW98_MAILADDRESS", indirizzo},
          {"FW98_USERNAME", "utente"},
          {"FW98_PASSWORD", "{parola}"},
          {"ALIAS", "Azienda"},
          {"LETTURA", lettura},
          {"CONSEGNA", std::int16_t{0}}};
}

FinestraVera::FinestraVera()
    : ambiente(std::make_shared<AmbienteConFinestre>(
          OpzioniFinestre{.cartellaCopie = cartella.Radice(),
                          .vaCopiato = [this](const std::string&) { return vaCopiato; }})),
      journal(ambiente->journal),
      connessione(std::make_shared<fakes::FakeConnection>(journal)),
      aperto(ambiente) {
  servizio->ConnectionADO = connessione;
  servizio->SrvMailInstallato = kvSMTPMail;
  servizio->ModalitaInvio(kvManuale);
  Interno& interno = aperto.interno;
  interno.account.UsaMittenteScelto = true;
  interno.contesto.IdUtenteCorrente = 42;
  Accounts({RigaAccount(12, "noi@azienda.example")});
  Collezione();
  journal->Svuota();
}

CollDestinatari& FinestraVera::Collezione() {
  if (!servizio->vCollDestinatari) servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
  return *servizio->vCollDestinatari;
}

void FinestraVera::Apri(Azione persona) {
  const Compagno qualcuno(InFinestra(programma, LayoutOpzMail(), std::move(persona)));
  ApriForm_OpzInvio(aperto.interno, *servizio);
}

void FinestraVera::Parametri(Azione persona) {
  const Compagno qualcuno(InFinestra(programma, LayoutMailParams(), std::move(persona)));
  servizio->ReturnMailParameters();
}

}  // namespace orve::adapters::win32::finestre
