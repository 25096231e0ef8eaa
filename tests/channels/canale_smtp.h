// A service ready to send over SMTP: an account, a message of the caller's own and a user, over fakes.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "channels/smtp_channel.h"
#include "fakes/servizio_di_prova.h"

namespace orve {

class CanaleSmtp : public fakes::ServizioDiProva {
 protected:
  CanaleSmtp() {
    connessione->Risponde("SELECT FW07_CODICE ", {{{"FW07_CODICE", "U01"}}});
    connessione->Risponde("SELECT FW07_CODICE_FW06 ", {{{"FW07_CODICE_FW06", "AMM"}}});
    interno.contesto.IdUtenteCorrente = 7;
    interno.account.SmtpServer = "smtp.orve.example";
    interno.account.SmtpPorta = 587;
    interno.account.SmtpUtente = "utente";
    interno.account.SmtpPassword = "parolasegreta";
    interno.account.SmtpAuth = 1;
    interno.account.SmtpCrypt = 1;
    servizio->SrvMailInstallato = kvSMTPSSLMail;
    servizio->vSenderAddress = "info@orve.example";
    servizio->vSenderName = "Orve S.p.A.";
    servizio->vOggetto = "Fattura 12";
    servizio->vDitta = "Bianchi S.r.l.";
    servizio->DittaCorrente = "1";
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "Gentile ***(Nome)***";
  }
  void ConDestinatario(const std::string& indirizzo, const std::string& nome = "", std::int16_t casella = 0) {
    Collezione().AddFromLista(indirizzo, nome, "", casella);
  }
  void ConAllegati(std::vector<host::Variant> percorsi) {
    servizio->vElencoAllegati = host::Variant::Array(std::move(percorsi));
  }
  void ConMittenteScelto() {
    auto mittente = std::make_shared<Mittente>(ambiente);
    mittente->Server("smtp.altro.example");
    mittente->Port(465);
    mittente->Auth(0);
    mittente->user("altro");
    mittente->Password("altrasegreta");
    mittente->Indirizzo("vendite@orve.example");
    mittente->Descrizione("Vendite");
    mittente->CryptType(2);
    mittente->ReadRcpt(1);
    mittente->IsSsl(true);
    mittente->DeliveryStatus(1);
    servizio->vMittente = mittente;
    interno.account.UsaMittenteScelto = true;
  }
  /// What was handed to the component as recipients, as "list kind".
  std::vector<std::string> Elenchi() const {
    std::vector<std::string> elenchi;
    for (const auto& riga : journal->Righe({"smtp.AddRecipientEx "})) {
      elenchi.push_back(riga.substr(std::string("smtp.AddRecipientEx ").size()));
    }
    return elenchi;
  }
  /// The journal without how an event finds its user, which the events' own tests cover.
  std::vector<std::string> SenzaRicercaUtente() const {
    std::vector<std::string> righe;
    for (const auto& riga : journal->Righe()) {
      const bool ricerca = riga.starts_with("Command.") || riga.starts_with("Parameter.") ||
                           riga.starts_with("ConnectionADO.CreateCommand") ||
                           riga.starts_with("ConnectionADO.Execute 1  SELECT FW07_CODICE") ||
                           riga.starts_with("RecordSet.");
      if (!ricerca) righe.push_back(riga);
    }
    return righe;
  }
  /// A send in which every text is this one.
  void ConsegnaConTesto(const std::string& testo) {
    journal->Svuota();
    servizio->vCollDestinatari.reset();
    ConDestinatario(testo, testo);
    servizio->vNome.clear();
    servizio->vOggetto = testo;
    servizio->vDitta = testo;
    servizio->vCorpoMail = testo;
    ConAllegati({testo});
    SendWithSmtp(interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
                 interno.oggetti);
  }
  std::vector<std::string> Registro() const { return journal->Righe({"ObjRegistroInvio."}); }
};

}  // namespace orve
