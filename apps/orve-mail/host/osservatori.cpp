#include "orve-mail/host/osservatori.h"

#include <string>
#include <utility>
#include <vector>

#include "channels/mapi32_channel.h"

namespace orve::app {

namespace {

std::string Riga(const host::Errore& errore) {
  return errore.Descrizione() + " (" + errore.Sorgente() + " " + std::to_string(errore.Numero()) + ")";
}

// Runs the action; an error is noted and rethrown.
template <class Azione>
auto Annotando(std::vector<std::string>& note, Azione azione) {
  try {
    return azione();
  } catch (const host::Errore& errore) {
    note.push_back(Riga(errore));
    throw;
  }
}

class MessaggiOsservati : public host::Messaggi {
 public:
  MessaggiOsservati(std::shared_ptr<host::Messaggi> vero, OsservazioniPtr note)
      : vero_(std::move(vero)), note_(std::move(note)) {}
  std::string TitoloFinestra(const std::string& testo) override { return vero_->TitoloFinestra(testo); }
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override {
    if (testo != MDLFW_MAPI::kMessaggioInviato) ++note_->messaggi;
    return vero_->MostraMsg(testo, stile, titolo, proprietario);
  }

 private:
  std::shared_ptr<host::Messaggi> vero_;
  OsservazioniPtr note_;
};

class SmtpOsservato : public host::ComponenteSmtp {
 public:
  SmtpOsservato(std::shared_ptr<host::ComponenteSmtp> vero, OsservazioniPtr note,
                std::function<FineConsegna()> fine)
      : vero_(std::move(vero)), note_(std::move(note)), fine_(std::move(fine)) {}
  void ClearRecipient() override { vero_->ClearRecipient(); }
  void ServerAddr(const std::string& server) override { vero_->ServerAddr(server); }
  void UserName(const std::string& utente) override { vero_->UserName(utente); }
  void Password(const std::string& password) override { vero_->Password(password); }
  void ServerPort(std::int16_t porta) override { vero_->ServerPort(porta); }
  void ConnectType(std::int16_t tipo) override { vero_->ConnectType(tipo); }
  void From(const std::string& nome) override { vero_->From(nome); }
  void FromAddr(const std::string& indirizzo) override { vero_->FromAddr(indirizzo); }
  [[nodiscard]] std::string FromAddr() const override { return vero_->FromAddr(); }
  void DeliveryNotification(std::int16_t valore) override { vero_->DeliveryNotification(valore); }
  void AddRecipientEx(const std::string& elenco, std::int32_t tipo) override {
    vero_->AddRecipientEx(elenco, tipo);
  }
  void Subject(const std::string& oggetto) override { vero_->Subject(oggetto); }
  void BodyFormat(std::int16_t formato) override { vero_->BodyFormat(formato); }
  void BodyText(const std::string& corpo) override { vero_->BodyText(corpo); }
  void AddHeader(const std::string& nome, const std::string& valore) override {
    vero_->AddHeader(nome, valore);
  }
  void AddAttachment(const std::string& percorso) override { vero_->AddAttachment(percorso); }
  host::Variant SendMail() override {
    note_->esitoConsegna.reset();
    ++note_->consegne;
    host::Variant risultato = vero_->SendMail();
    note_->esitoConsegna = vero_->GetLastError().ToInt32();
    note_->origineMotivo = "server";
    if (note_->esitoConsegna == kConsegnaRiuscita) ++note_->accettate;
    if (fine_) {
      FineConsegna fine = fine_();
      note_->motivo = std::move(fine.motivo);
      note_->incerta = note_->incerta || fine.incerta;
    }
    return risultato;
  }
  [[nodiscard]] host::Variant GetLastError() const override { return vero_->GetLastError(); }

 private:
  std::shared_ptr<host::ComponenteSmtp> vero_;
  OsservazioniPtr note_;
  std::function<FineConsegna()> fine_;
};

constexpr const char* kSendmail = "posta della macchina";

class MessaggiMapiOsservati : public host::MAPIMessages {
 public:
  MessaggiMapiOsservati(std::shared_ptr<host::MAPIMessages> vero, OsservazioniPtr note,
                        std::function<FineConsegna()> fine)
      : vero_(std::move(vero)), note_(std::move(note)), fine_(std::move(fine)) {}
  void SessionID(const host::Variant& sessione) override { vero_->SessionID(sessione); }
  void SessioneID(const host::Variant& sessione) override { vero_->SessioneID(sessione); }
  void Compose() override { vero_->Compose(); }
  // The object was created before any window; the channel begins with the first slot.
  void RecipIndex(std::int16_t indice) override {
    if (indice == 0) note_->IniziaConsegna();
    vero_->RecipIndex(indice);
  }
  void RecipAddress(const std::string& indirizzo) override { vero_->RecipAddress(indirizzo); }
  void RecipDisplayName(const std::string& nome) override { vero_->RecipDisplayName(nome); }
  void RecipType(std::int32_t tipo) override { vero_->RecipType(tipo); }
  void MsgReceiptRequested(bool ricevuta) override { vero_->MsgReceiptRequested(ricevuta); }
  void MsgSubject(const std::string& oggetto) override { vero_->MsgSubject(oggetto); }
  void MsgNoteText(const std::string& corpo) override { vero_->MsgNoteText(corpo); }
  // The channel carries on without the file that one of these refuses, and tells nobody.
  void AttachmentIndex(std::int16_t indice) override {
    Annotando(note_->allegatiRifiutati, [&] { vero_->AttachmentIndex(indice); });
  }
  void AttachmentPosition(std::int16_t posizione) override {
    Annotando(note_->allegatiRifiutati, [&] { vero_->AttachmentPosition(posizione); });
  }
  void AttachmentPathName(const std::string& percorso) override {
    Annotando(note_->allegatiRifiutati, [&] { vero_->AttachmentPathName(percorso); });
  }
  void AttachmentName(const std::string& nome) override {
    Annotando(note_->allegatiRifiutati, [&] { vero_->AttachmentName(nome); });
  }
  void Send() override {
    note_->esitoConsegna.reset();
    note_->origineMotivo = kSendmail;
    ++note_->consegne;
    try {
      vero_->Send();
    } catch (const host::Errore& errore) {
      note_->esitoConsegna = errore.Numero();
      note_->motivo = errore.Descrizione();
      if (fine_) note_->incerta = note_->incerta || fine_().incerta;
      throw;
    }
    note_->esitoConsegna = kConsegnaRiuscita;
    ++note_->accettate;
    note_->motivo.clear();
  }

 private:
  std::shared_ptr<host::MAPIMessages> vero_;
  OsservazioniPtr note_;
  std::function<FineConsegna()> fine_;
};

class Mapi32Osservata : public host::Mapi32 {
 public:
  Mapi32Osservata(std::shared_ptr<host::Mapi32> vera, OsservazioniPtr note,
                  std::function<FineConsegna()> fine)
      : vera_(std::move(vera)), note_(std::move(note)), fine_(std::move(fine)) {}
  std::int32_t MAPILogon(host::ManigliaMapi finestra, const std::string& profilo, const std::string& password,
                         std::int32_t flags, std::int32_t riservato, host::ManigliaMapi& sessione) override {
    note_->IniziaConsegna();
    return Annotata(vera_->MAPILogon(finestra, profilo, password, flags, riservato, sessione));
  }
  std::int32_t BMAPISendMail(host::ManigliaMapi sessione, host::ManigliaMapi finestra,
                             host::MapiMessage& messaggio, const std::vector<host::MapiRecip>& destinatari,
                             const std::vector<host::MapiFile>& file, std::int32_t flags,
                             std::int32_t riservato) override {
    note_->esitoConsegna.reset();
    note_->motivo.clear();
    ++note_->consegne;
    const std::int32_t esito =
        Annotata(vera_->BMAPISendMail(sessione, finestra, messaggio, destinatari, file, flags, riservato));
    note_->esitoConsegna = esito == MDLFW_MAPI::kSuccesso ? kConsegnaRiuscita : esito;
    if (esito == MDLFW_MAPI::kSuccesso) ++note_->accettate;
    return esito;
  }
  // The delivery is over by then, and a failure shows as a message of the channel's.
  std::int32_t MAPILogoff(host::ManigliaMapi sessione, host::ManigliaMapi finestra, std::int32_t flags,
                          std::int32_t riservato) override {
    return vera_->MAPILogoff(sessione, finestra, flags, riservato);
  }

 private:
  std::int32_t Annotata(std::int32_t esito) {
    note_->origineMotivo = kSendmail;
    if (esito == MDLFW_MAPI::kSuccesso || !fine_) return esito;
    FineConsegna fine = fine_();
    note_->motivo = std::move(fine.motivo);
    note_->incerta = note_->incerta || fine.incerta;
    return esito;
  }

  std::shared_ptr<host::Mapi32> vera_;
  OsservazioniPtr note_;
  std::function<FineConsegna()> fine_;
};

class FlussoOsservato : public host::TextStream {
 public:
  FlussoOsservato(std::shared_ptr<host::TextStream> vero, OsservazioniPtr note)
      : vero_(std::move(vero)), note_(std::move(note)) {}
  void WriteLine(const std::string& testo) override {
    Annotando(note_->erroriLog, [&] { vero_->WriteLine(testo); });
    note_->righeLog.push_back(testo);
  }
  void Close() override {
    Annotando(note_->erroriLog, [&] { vero_->Close(); });
  }

 private:
  std::shared_ptr<host::TextStream> vero_;
  OsservazioniPtr note_;
};

class FileSystemOsservato : public host::FileSystem {
 public:
  FileSystemOsservato(std::shared_ptr<host::FileSystem> vero, OsservazioniPtr note)
      : vero_(std::move(vero)), note_(std::move(note)) {}
  // The library asks before it writes the log, and writes none into a folder that does not exist.
  bool FolderExists(const std::string& cartella) override {
    const bool presente = vero_->FolderExists(cartella);
    if (!presente) note_->erroriLog.push_back("la cartella temporanea non esiste: " + cartella);
    return presente;
  }
  bool FileExists(const std::string& file) override { return vero_->FileExists(file); }
  std::shared_ptr<host::TextStream> OpenTextFile(const std::string& file, std::int32_t modo, bool crea,
                                                 std::int32_t formato) override {
    return Annotando(note_->erroriLog, [&]() -> std::shared_ptr<host::TextStream> {
      return std::make_shared<FlussoOsservato>(vero_->OpenTextFile(file, modo, crea, formato), note_);
    });
  }

 private:
  std::shared_ptr<host::FileSystem> vero_;
  OsservazioniPtr note_;
};

class RegistroOsservato : public host::RegistroInvio {
 public:
  RegistroOsservato(std::shared_ptr<host::RegistroInvio> vero, OsservazioniPtr note)
      : vero_(std::move(vero)), note_(std::move(note)) {}
  void Connessione(const std::shared_ptr<host::Connection>& connessione) override {
    vero_->Connessione(connessione);
  }
  void IDvoce(const std::string& voce) override { vero_->IDvoce(voce); }
  void UObject(const std::string& oggetto) override { vero_->UObject(oggetto); }
  void TipoCanale(std::int32_t tipo) override { vero_->TipoCanale(tipo); }
  void TitoloStampa(const std::string& titolo) override { vero_->TitoloStampa(titolo); }
  void Ditta(const std::string& ditta) override { vero_->Ditta(ditta); }
  void NumReg(const std::string& numero) override { vero_->NumReg(numero); }
  void TipoDoc(const std::string& tipo) override { vero_->TipoDoc(tipo); }
  void NumDoc(const std::string& numero) override { vero_->NumDoc(numero); }
  void SezDoc(const std::string& sezione) override { vero_->SezDoc(sezione); }
  void RegistraInvio(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                     const host::TestoOAssente& indirizzo, const host::TestoOAssente& allegato,
                     const host::TestoOAssente& esito, const host::TestoOAssente& oggetto,
                     const host::TestoOAssente& corpo) override {
    Annotando(note_->erroriRegistro,
              [&] { vero_->RegistraInvio(nome, ditta, indirizzo, allegato, esito, oggetto, corpo); });
    note_->registro.push_back({esito_, nome.value_or(""), indirizzo.value_or(""), esito.value_or("")});
  }
  void UtenteApplicazione(std::int32_t id) override { vero_->UtenteApplicazione(id); }
  void CanaleInvio(float canale) override { vero_->CanaleInvio(canale); }
  void MittenteInvio(const std::string& mittente) override { vero_->MittenteInvio(mittente); }
  void GuidLista(const std::string& guid) override { vero_->GuidLista(guid); }
  void EsitoInvio(std::int32_t esito) override {
    esito_ = esito;
    vero_->EsitoInvio(esito);
  }
  void TipoLista(std::int32_t tipo) override { vero_->TipoLista(tipo); }

 private:
  std::shared_ptr<host::RegistroInvio> vero_;
  OsservazioniPtr note_;
  std::int32_t esito_ = 0;
};

class ConnessioneOsservata : public host::Connection {
 public:
  ConnessioneOsservata(std::shared_ptr<host::Connection> vera, OsservazioniPtr note)
      : vera_(std::move(vera)), note_(std::move(note)) {}
  std::shared_ptr<host::RecordSet> Execute(const std::string& statement, std::int32_t opzione) override {
    return Annotando(note_->erroriDatabase, [&] { return vera_->Execute(statement, opzione); });
  }
  std::shared_ptr<host::Command> CreateCommand() override { return vera_->CreateCommand(); }
  [[nodiscard]] const std::shared_ptr<host::Connection>& Vera() const { return vera_; }

 private:
  std::shared_ptr<host::Connection> vera_;
  OsservazioniPtr note_;
};

}  // namespace

std::shared_ptr<host::Messaggi> Osserva(std::shared_ptr<host::Messaggi> vero, OsservazioniPtr note) {
  return std::make_shared<MessaggiOsservati>(std::move(vero), std::move(note));
}

std::shared_ptr<host::ComponenteSmtp> Osserva(std::shared_ptr<host::ComponenteSmtp> vero,
                                              OsservazioniPtr note, std::function<FineConsegna()> fine) {
  return std::make_shared<SmtpOsservato>(std::move(vero), std::move(note), std::move(fine));
}

std::shared_ptr<host::MAPIMessages> Osserva(std::shared_ptr<host::MAPIMessages> vero, OsservazioniPtr note,
                                            std::function<FineConsegna()> fine) {
  return std::make_shared<MessaggiMapiOsservati>(std::move(vero), std::move(note), std::move(fine));
}

std::shared_ptr<host::Mapi32> Osserva(std::shared_ptr<host::Mapi32> vera, OsservazioniPtr note,
                                      std::function<FineConsegna()> fine) {
  return std::make_shared<Mapi32Osservata>(std::move(vera), std::move(note), std::move(fine));
}

std::shared_ptr<host::FileSystem> Osserva(std::shared_ptr<host::FileSystem> vero, OsservazioniPtr note) {
  return std::make_shared<FileSystemOsservato>(std::move(vero), std::move(note));
}

std::shared_ptr<host::RegistroInvio> Osserva(std::shared_ptr<host::RegistroInvio> vero,
                                             OsservazioniPtr note) {
  return std::make_shared<RegistroOsservato>(std::move(vero), std::move(note));
}

std::shared_ptr<host::Connection> Osserva(std::shared_ptr<host::Connection> vera, OsservazioniPtr note) {
  return std::make_shared<ConnessioneOsservata>(std::move(vera), std::move(note));
}

std::shared_ptr<host::Connection> ConnessioneInterna(const std::shared_ptr<host::Connection>& connessione) {
  const auto osservata = std::dynamic_pointer_cast<ConnessioneOsservata>(connessione);
  return osservata ? osservata->Vera() : connessione;
}

}  // namespace orve::app
