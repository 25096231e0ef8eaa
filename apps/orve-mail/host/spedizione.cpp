#include "orve-mail/host/spedizione.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "channels/channel_traits.h"
#include "orve-mail/address-book/rubrica_finestra.h"
#include "orve-mail/host/account.h"
#include "orve-mail/host/ambiente.h"
#include "orve-mail/host/finestre.h"
#include "orve-mail/host/interfaccia_programma.h"
#include "orve-mail/host/observed_connection.h"
#include "orve-mailserver/addressing/destinatari.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

namespace orve::app {

using adapters::ambiente::AmbientePronto;

namespace {

constexpr const char* kVoce = "orve-mail";
constexpr std::int32_t kDiUnaLista = 1;

// A number where it is one, so the library sees what the application would pass.
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
  Spedizione(const RichiestaInvio& richiesta, const SedeInvio& sede, Terminale terminale)
      : richiesta_(richiesta),
        sede_(sede),
        allegati_(std::make_shared<Allegati>(richiesta.esclusi)),
        ambiente_(std::make_shared<AmbientePronto>(Opzioni(terminale))),
        servizio_(ambiente_) {
    for (const Allegato& allegato : richiesta.allegati) {
      percorsi_.push_back(allegati_->PerLaLibreria(allegato));
    }
    if (richiesta.mittente) RichiediAccount(*sede.archivio.connessione, *richiesta.mittente, richiesta.pec);
  }

  // The library dictates the order of these steps: each reads what the previous ones have set.
  void Prepara(bool daSola) {
    servizio_.ConnectionADO = Osserva(sede_.archivio.connessione, note_);
    servizio_.ActiveInterface = CreaInterfaccia(sede_.utente, ambiente_->CreaMessaggi());
    servizio_.ManagerRubrica =
        CreaRubrica(ambiente_, servizio_.ConnectionADO, MostraFinestraRubrica, richiesta_.data);
    servizio_.DittaCorrente = Ditta(richiesta_.ditta);
    servizio_.IsPec(richiesta_.pec);
    if (richiesta_.data) servizio_.DataValiditaCodiceDestinatario(*richiesta_.data);
    servizio_.InvioSMTP(daSola);  // objects for other channels are not created
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

  void InviaDaSola(bool silenzioso) {
    daSola_ = true;
    servizio_.silentMode = silenzioso;
    ImpostaMessaggio();
    for (const auto& [voce, casella] : richiesta_.destinatari) {
      if (casella == kvCasellaA) static_cast<void>(servizio_.AddDestinatario(voce.indirizzo, voce.nome));
    }
    // The call knows A recipients only; the other boxes go into the collection that it fills.
    if (!servizio_.vCollDestinatari)
      servizio_.vCollDestinatari = std::make_shared<CollDestinatari>(ambiente_);
    for (const auto& [voce, casella] : richiesta_.destinatari) {
      if (casella != kvCasellaA) {
        servizio_.vCollDestinatari->AddFromLista(voce.indirizzo, voce.nome, "", casella);
      }
    }
    servizio_.InviaMailSMTP(richiesta_.oggetto, richiesta_.corpo.value_or(""));
  }

  [[nodiscard]] Resoconto Esito() const {
    Resoconto resoconto{
        *note_, servizio_.Stato(), servizio_.Descrizione().Joined(), servizio_.vSenderAddress, daSola_, {},
        {}};
    const ChannelTraits* const canale = TrattiDi(servizio_.SrvMailInstallato);
    if (canale != nullptr && canale->rifiutaSenzaCorpo && SenzaCorpo() &&
        servizio_.Stato() == kvErroreInvioMail && note_->consegne == 0 && !note_->MapiNonDisponibile()) {
      resoconto.canaleCheVuoleCorpo = canale->nome;
    }
    if (!servizio_.errNumber.empty()) resoconto.errore = servizio_.errNumber + " " + servizio_.errDescription;
    return resoconto;
  }

 private:
  // Whether the window opens in any case. In the other modes that depends on the addresses, which are not
  // known yet.
  [[nodiscard]] bool ApreLaFinestra() const {
    return richiesta_.codice && servizio_.ModalitaInvio() == kvManuale &&
           !InvioDisabilitato(servizio_.SrvMailInstallato);
  }

  // A send by code has the body from the settings in this field before a channel begins; a direct one has
  // what it was given and takes none from the settings.
  [[nodiscard]] bool SenzaCorpo() const { return servizio_.vCorpoMail.empty(); }

  void InizializzaRegistro() {
    servizio_.INFO_TipoDoc = richiesta_.tipoDocumento;
    servizio_.INFO_NumReg = richiesta_.numeroRegistrazione;
    servizio_.INFO_NumDoc = richiesta_.numeroDocumento;
    servizio_.INFO_SezDoc = richiesta_.sezioneDocumento;
    servizio_.INFO_RagSocCliFor(richiesta_.azienda);
    if (!richiesta_.lista.empty()) {
      servizio_.IsLista(kDiUnaLista);
      servizio_.ListaGuid(richiesta_.lista);
    }
    if (richiesta_.utente.gruppo.empty()) {
      servizio_.InizializzaRegistroInvioMailMultiprofilo(kVoce, kVoce, sede_.utente, richiesta_.titolo);
    } else {
      servizio_.InizializzaRegistroInvioMail(kVoce, kVoce, richiesta_.utente.utente, richiesta_.utente.gruppo,
                                             richiesta_.titolo);
    }
  }

  void ImpostaMessaggio() {
    servizio_.vOggetto = richiesta_.oggetto;
    if (richiesta_.corpo) {
      servizio_.vFlagCorpo = 1;
      servizio_.vCorpoMail = *richiesta_.corpo;
    }
    Allega();
  }

  void InviaPerCodice(const CodiceDestinatario& codice) {
    ImpostaMessaggio();
    servizio_.AvviaProceduraInvio(host::Variant(codice.codice), codice.tipo);
  }

  // Without an account nothing is started: the library would send from whatever account it holds.
  void InviaDiretta() {
    const auto mittente = HaAccount(servizio_.SrvMailInstallato) ? Mittente() : std::int16_t{0};
    if (!mittente) return;
    const auto& destinatari = richiesta_.destinatari;
    servizio_.InviaMailDiretta(*mittente, Elenco(destinatari, kvCasellaA), Elenco(destinatari, kvCasellaCC),
                               Elenco(destinatari, kvCasellaCCn), richiesta_.oggetto,
                               richiesta_.corpo.value_or(""), Elenco(percorsi_));
  }

  std::optional<std::int16_t> Mittente() {
    if (richiesta_.mittente) return richiesta_.mittente;
    return AccountPredefinito(*sede_.archivio.connessione, {sede_.utente, richiesta_.ditta, richiesta_.pec},
                              servizio_.vSenderAddress);
  }

  // The main attachment goes into its own field and not into the list, where it would occur twice.
  void Allega() {
    if (percorsi_.empty()) return;
    servizio_.vMailAttachment = percorsi_.front();
    std::for_each(percorsi_.begin() + 1, percorsi_.end(),
                  [this](const std::string& allegato) { servizio_.AddAllegato(allegato); });
  }

  [[nodiscard]] adapters::ambiente::Options Opzioni(Terminale terminale) const {
    auto opzioni = OpzioniDelProgramma(terminale, note_);
    opzioni.cartellaBase = CartellaBase(richiesta_.archivio);
    opzioni.smtp = richiesta_.smtp;
    opzioni.mapi = richiesta_.mapi;
    opzioni.directory = sede_.directory;
    opzioni.connessioni = sede_.connessioni;
    opzioni.chiave = sede_.chiave;
    opzioni.registro = sede_.registro;
    ScegliPermessi(opzioni, sede_.permessi, SuOdbc(richiesta_.archivio));
    ScegliAllegati(opzioni, allegati_);
    opzioni.finestre = CreaFinestre(note_, allegati_);
    return opzioni;
  }

  const RichiestaInvio& richiesta_;
  const SedeInvio& sede_;
  OsservazioniPtr note_ = std::make_shared<Osservazioni>();
  std::shared_ptr<Allegati> allegati_;
  std::vector<std::string> percorsi_;  // of the attachments, as the library gets them
  std::shared_ptr<AmbientePronto> ambiente_;
  CLSFW_MAILSERVER servizio_;
  bool daSola_ = false;
};

// One connection for all look-ups.
std::optional<adapters::ldap::LdapOptions> CheResta(std::optional<adapters::ldap::LdapOptions> directory) {
  if (directory) directory->keepConnection = true;
  return directory;
}

PermessiInChiaro LeggiPermessi(const Archivio& archivio, bool ovunque) try {
  return {archivio, ovunque};
} catch (const host::Errore& errore) {
  throw ErroreProgramma(Uscita::kNonUtilizzabile, "Database non utilizzabile: " + errore.Descrizione());
}

void Prepara(Spedizione& spedizione, bool daSola) {
  try {
    spedizione.Prepara(daSola);
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(
        Uscita::kNonUtilizzabile,
        "Impostazioni non utilizzabili: " + std::to_string(errore.Numero()) + " " + errore.Descrizione());
  }
}

}  // namespace

SedeInvio::SedeInvio(const RichiestaInvio& richiesta)
    : chiave(LeggiChiave(richiesta.archivio)),
      archivio(ApriArchivio(richiesta.archivio)),
      registro(ApriRegistro(richiesta.archivio, archivio)),
      utente(TrovaUtente(*archivio.connessione, richiesta.utente)),
      permessi(LeggiPermessi(archivio, richiesta.passwordInChiaro)),
      connessioni(adapters::ambiente::CreaConnessioni(richiesta.smtp)),
      directory(CreaDirectory(CheResta(richiesta.directory))) {
  archivio.DiUtente(utente);
}

Resoconto Consegna(const RichiestaInvio& richiesta, const SedeInvio& sede, Terminale terminale,
                   const std::function<void()>& primaDiInviare) {
  Spedizione spedizione(richiesta, sede, terminale);
  Prepara(spedizione, false);
  if (primaDiInviare) primaDiInviare();
  spedizione.Invia();
  return spedizione.Esito();
}

Uscita Spedisci(const RichiestaInvio& richiesta, Terminale terminale) {
  return Racconta(Consegna(richiesta, SedeInvio(richiesta), terminale), terminale);
}

Uscita SpedisciDaSola(const RichiestaInvio& richiesta, bool silenzioso, Terminale terminale) {
  const SedeInvio sede(richiesta);
  Spedizione spedizione(richiesta, sede, terminale);
  Prepara(spedizione, true);
  spedizione.InviaDaSola(silenzioso);
  return Racconta(spedizione.Esito(), terminale);
}

}  // namespace orve::app
