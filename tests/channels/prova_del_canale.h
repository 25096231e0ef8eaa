// A message that is sent through one of the channels, and all that can be seen of it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/oggetti_del_canale.h"
#include "fakes/servizio_di_prova.h"

namespace orve {

/// One send of one service through this channel, over fakes of its own.
class ProvaDelCanale {
 public:
  ProvaDelCanale(const fakes::OggettiDelCanale& oggetti, kvEnumModalitaInvio modo) : canale(oggetti) {
    servizio->ConnectionADO = connessione;
    servizio->SrvMailInstallato = canale.canale;
    servizio->ModalitaInvio(modo);
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "Per ***(Nome)***";
    servizio->vOggetto = "Fattura 12";
    servizio->vDitta = "Acme S.p.A.";
    servizio->vMailAttachment = "C:\\f.pdf";
    servizio->DittaCorrente = 1;
    servizio->ReadReceipt = true;
    servizio->vNotifyDelivery = true;
    servizio->IsPec(true);
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    interno.impostazioni.PathTemp = "C:\\Temp";
    interno.impostazioni.FlagBcc = true;
    interno.esito.StatoInvio = kvInvioNonImpostato;  // to see whether a channel touches it
    interno.account.SmtpServer = "smtp.azienda.example";
    servizio->vSenderAddress = "noi@azienda.example";
    ambiente->versioneOutlook = "14.0.0.7268";
    interno.oggetti.objOutlookApp = ambiente->CreaOutlook();
    interno.oggetti.ObjRegistroInvio = ambiente->CreaRegistroInvio();
  }
  ProvaDelCanale(const ProvaDelCanale&) = delete;
  ProvaDelCanale& operator=(const ProvaDelCanale&) = delete;
  ~ProvaDelCanale() = default;

  void Destinatario(const std::string& nome, const std::string& indirizzo, std::int16_t casella = 0) const {
    servizio->vCollDestinatari->AddFromLista(indirizzo, nome, "", casella);
  }
  void Allegati(const std::vector<std::string>& percorsi) const {
    for (const auto& percorso : percorsi) servizio->AddAllegato(percorso);
  }
  void Invia() {
    journal->Svuota();
    servizio->InviaMail();
  }

  /// What the channel gave to its object of recipients, attachments and body, and whether it sent.
  [[nodiscard]] std::string Consegna() const {
    std::vector<std::string_view> inizi;  // of all channels: none touches the object of another
    for (const fakes::OggettiDelCanale& uno : fakes::OggettiDeiCanali()) {
      inizi.insert(inizi.end(), uno.confronto.begin(), uno.confronto.end());
      inizi.push_back(uno.invio);
    }
    std::string testo;
    for (const auto& riga : journal->Righe(inizi)) testo += riga + "\n";
    for (const auto& invio : ambiente->inviiMapi) {
      for (const auto& d : invio.destinatari)
        testo += "recip " + std::to_string(d.RecipClass) + " " + d.Name + "\n";
      for (const auto& f : invio.file) testo += "file " + f.PathName + " " + f.FileName + "\n";
      testo += "subject " + invio.messaggio.Subject + "\nnote " + invio.messaggio.NoteText + "\n";
    }
    return testo;
  }
  [[nodiscard]] std::string Campi() const {
    return "vNome " + servizio->vNome + "\nvIndDestinatario " + servizio->vIndDestinatario + "\nStato " +
           std::to_string(servizio->Stato()) + "\n";
  }
  [[nodiscard]] std::string Registrazioni() const {
    constexpr std::string_view kRegistro = "ObjRegistroInvio.";
    std::string testo;
    for (const auto& riga : journal->Righe({kRegistro, "ConnectionADO.Execute 1 exec "})) {
      if (riga.starts_with(kRegistro)) {
        testo += "registro " + riga.substr(kRegistro.size()) + "\n";
      } else {
        // The code, and the payload after the part that is the same in every event.
        constexpr std::string_view kComune = "<GRP_COD=/>";
        const std::size_t inizio = riga.find(kComune) + kComune.size();
        testo += "evento " + riga.substr(riga.find(", ") + 2, 2) + " " +
                 riga.substr(inizio, riga.find("' , 1") - inizio) + "\n";
      }
    }
    return testo;
  }
  /// The lines of the send log after its heading.
  [[nodiscard]] std::string Log() const {
    const auto righe = journal->Righe({"TextStream.WriteLine "});
    std::string testo;
    for (std::size_t i = 1; i < righe.size(); ++i) testo += "log " + righe[i].substr(21) + "\n";
    return testo;
  }
  [[nodiscard]] std::string Messaggi(const std::string& modo) const {
    std::string testo;
    for (const auto& riga : journal->Righe({"ObjMessaggi.MostraMsg "}))
      testo += modo + " " + riga.substr(22) + "\n";
    return testo;
  }

  const fakes::OggettiDelCanale& canale;
  std::shared_ptr<fakes::FakeAmbiente> ambiente = std::make_shared<fakes::FakeAmbiente>();
  fakes::JournalPtr journal = ambiente->journal;
  std::shared_ptr<fakes::FakeConnection> connessione = std::make_shared<fakes::FakeConnection>(journal);
  fakes::ServizioAperto aperto{ambiente};
  std::unique_ptr<CLSFW_MAILSERVER>& servizio = aperto.servizio;
  Interno& interno = aperto.interno;
};

/// The message of most tests: one recipient, one file.
inline void UnoConAllegato(ProvaDelCanale& prova) {
  prova.Destinatario("Anna", "anna@x.example");
  prova.Allegati({"C:\\f.pdf"});
}

}  // namespace orve
