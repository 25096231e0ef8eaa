#include "orve-mail/spedizione.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

#include "orve-mail/account.h"
#include "orve-mail/ambiente_finestre.h"
#include "orve-mail/interfaccia_programma.h"
#include "orve-mail/osservatori.h"
#include "orve-mail/resoconto.h"
#include "service/CLSFW_MAILSERVER.h"

namespace orve::app {

namespace {

constexpr const char* kVoce = "orve-mail";

std::string CartellaBase(const PosizioneArchivio& archivio) {
  return std::filesystem::absolute(FileArchivio(archivio)).parent_path().native();
}

// A number where it is one, so that the library sees what the application would hand it.
host::Variant Ditta(const std::string& ditta) {
  try {
    if (!ditta.empty()) return host::Variant(ditta).ToInt32();
  } catch (const host::Errore&) {  // NOLINT(bugprone-empty-catch): then it stays a text
  }
  return ditta;
}

// A name even where it is empty: an address alone would take the name of the one before it.
std::string Elenco(const std::vector<DestinatarioInCasella>& destinatari, std::int16_t casella) {
  std::string elenco;
  for (const auto& [voce, sua] : destinatari) {
    if (sua != casella) continue;
    if (!elenco.empty()) elenco += ";";
    elenco += voce.nome + "<" + voce.indirizzo + ">";
  }
  return elenco;
}

std::string Elenco(const std::vector<std::string>& allegati) {
  std::string elenco;
  for (const std::string& allegato : allegati) elenco += (elenco.empty() ? "" : ";") + allegato;
  return elenco;
}

class Spedizione {
 public:
  Spedizione(const RichiestaInvio& richiesta, Terminale terminale)
      : richiesta_(richiesta),
        chiave_(std::make_shared<const Chiave>(Chiave::Leggi(FileChiave(richiesta.archivio)))),
        archivio_(ApriArchivio(richiesta.archivio)),
        utente_(TrovaUtente(*archivio_, richiesta.utente)),
        ambiente_(std::make_shared<AmbienteFinestre>(terminale, chiave_, richiesta.smtp,
                                                     CartellaBase(richiesta.archivio), note_)),
        servizio_(ambiente_) {
    archivio_->UtenteConnessione(utente_);
    if (richiesta.mittente) RichiediAccount(*archivio_, *richiesta.mittente, richiesta.pec);
  }

  // The order of these steps is the library's: each reads what the ones before it set.
  void Prepara() {
    servizio_.ConnectionADO = Osserva(std::static_pointer_cast<host::Connection>(archivio_), note_);
    servizio_.ActiveInterface = CreaInterfaccia(utente_, ambiente_->CreaMessaggi());
    servizio_.DittaCorrente = Ditta(richiesta_.ditta);
    servizio_.IsPec(richiesta_.pec);
    if (richiesta_.data) servizio_.DataValiditaCodiceDestinatario(*richiesta_.data);
    servizio_.GetImpostazioni();
    if (richiesta_.modo) servizio_.ModalitaInvio(*richiesta_.modo);
    if (ApreLaFinestra()) RichiediSchermo("L'invio manuale vuole la finestra di invio.");
    InizializzaRegistro();
  }

  void Invia() {
    if (richiesta_.codice) {
      InviaPerCodice(*richiesta_.codice);
    } else {
      InviaDiretta();
    }
  }

  [[nodiscard]] Resoconto Esito() const {
    return {*note_, servizio_.Stato(), servizio_.Descrizione().Joined(), servizio_.vSenderAddress};
  }

 private:
  // Whether the window comes up in any case. In the other modes the addresses decide, which nobody knows yet.
  [[nodiscard]] bool ApreLaFinestra() const {
    return richiesta_.codice && servizio_.ModalitaInvio() == kvManuale &&
           servizio_.SrvMailInstallato != kvNoMail;
  }

  void InizializzaRegistro() {
    servizio_.INFO_TipoDoc = richiesta_.tipoDocumento;
    servizio_.INFO_NumReg = richiesta_.numeroRegistrazione;
    servizio_.INFO_NumDoc = richiesta_.numeroDocumento;
    servizio_.INFO_SezDoc = richiesta_.sezioneDocumento;
    servizio_.INFO_RagSocCliFor(richiesta_.azienda);
    if (richiesta_.utente.gruppo.empty()) {
      servizio_.InizializzaRegistroInvioMailMultiprofilo(kVoce, kVoce, utente_, richiesta_.titolo);
    } else {
      servizio_.InizializzaRegistroInvioMail(kVoce, kVoce, richiesta_.utente.utente, richiesta_.utente.gruppo,
                                             richiesta_.titolo);
    }
  }

  void InviaPerCodice(const CodiceDestinatario& codice) {
    servizio_.vOggetto = richiesta_.oggetto;
    if (richiesta_.corpo) {
      servizio_.vFlagCorpo = 1;
      servizio_.vCorpoMail = *richiesta_.corpo;
    }
    Allega();
    servizio_.AvviaProceduraInvio(host::Variant(codice.codice), codice.tipo);
  }

  // Without an account nothing is started: the library would send from whatever it holds.
  void InviaDiretta() {
    const auto mittente = CanaleSmtp(servizio_.SrvMailInstallato) ? Mittente() : std::int16_t{0};
    if (!mittente) return;
    const auto& destinatari = richiesta_.destinatari;
    servizio_.InviaMailDiretta(*mittente, Elenco(destinatari, kvCasellaA), Elenco(destinatari, kvCasellaCC),
                               Elenco(destinatari, kvCasellaCCn), richiesta_.oggetto,
                               richiesta_.corpo.value_or(""), Elenco(richiesta_.allegati));
  }

  std::optional<std::int16_t> Mittente() {
    if (richiesta_.mittente) return richiesta_.mittente;
    return AccountPredefinito(*archivio_, {utente_, richiesta_.ditta, richiesta_.pec},
                              servizio_.vSenderAddress);
  }

  // The main attachment goes into its own field and not into the list, where it would stand twice.
  void Allega() {
    if (richiesta_.allegati.empty()) return;
    servizio_.vMailAttachment = richiesta_.allegati.front();
    std::for_each(richiesta_.allegati.begin() + 1, richiesta_.allegati.end(),
                  [this](const std::string& allegato) { servizio_.AddAllegato(allegato); });
  }

  const RichiestaInvio& richiesta_;
  OsservazioniPtr note_ = std::make_shared<Osservazioni>();
  std::shared_ptr<const Chiave> chiave_;
  std::shared_ptr<adapters::sqlite::SqliteConnection> archivio_;
  std::int32_t utente_;
  std::shared_ptr<AmbienteFinestre> ambiente_;
  CLSFW_MAILSERVER servizio_;
};

}  // namespace

Uscita Spedisci(const RichiestaInvio& richiesta, Terminale terminale) {
  Spedizione spedizione(richiesta, terminale);
  try {
    spedizione.Prepara();
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(
        Uscita::kNonUtilizzabile,
        "Impostazioni non utilizzabili: " + std::to_string(errore.Numero()) + " " + errore.Descrizione());
  }
  spedizione.Invia();
  return Racconta(spedizione.Esito(), terminale);
}

}  // namespace orve::app
