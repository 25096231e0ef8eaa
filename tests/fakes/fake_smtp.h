// The SMTP component as a fake: it journals each member as "smtp.Member values" and its release as "rilascio
// smtp", and answers with the result it was given. The password appears in the journal as "***".
#pragma once

#include <string>
#include <utility>

#include "fakes/journal.h"
#include "orve-mailserver/host/componente_smtp.h"

namespace orve::fakes {

class FakeSmtp : public host::ComponenteSmtp {
 public:
  FakeSmtp(JournalPtr journal, host::Variant risultato, host::FineConsegna fine = {})
      : journal_(std::move(journal)),
        risultato_(std::move(risultato)),
        fine_(std::move(fine)),
        rilascio_(journal_, "smtp") {}

  void ClearRecipient() override { journal_->Add("smtp.ClearRecipient"); }
  void ServerAddr(const std::string& server) override { journal_->Add("smtp.ServerAddr " + server); }
  void UserName(const std::string& utente) override { journal_->Add("smtp.UserName " + utente); }
  void Password(const std::string& valore) override {
    password = valore;
    journal_->Add("smtp.Password ***");
  }
  void ServerPort(std::int16_t porta) override { journal_->Add("smtp.ServerPort " + std::to_string(porta)); }
  void ConnectType(std::int16_t tipo) override { journal_->Add("smtp.ConnectType " + std::to_string(tipo)); }
  void From(const std::string& nome) override { journal_->Add("smtp.From " + nome); }
  void FromAddr(const std::string& indirizzo) override {
    fromAddr_ = indirizzo;
    journal_->Add("smtp.FromAddr " + indirizzo);
  }
  std::string FromAddr() const override {
    journal_->Add("smtp.FromAddr");
    return fromAddr_;
  }
  void DeliveryNotification(std::int16_t valore) override {
    journal_->Add("smtp.DeliveryNotification " + std::to_string(valore));
  }
  void AddRecipientEx(const std::string& elenco, std::int32_t tipo) override {
    journal_->Add("smtp.AddRecipientEx " + elenco + " " + std::to_string(tipo));
  }
  void Subject(const std::string& oggetto) override { journal_->Add("smtp.Subject " + oggetto); }
  void BodyFormat(std::int16_t formato) override {
    journal_->Add("smtp.BodyFormat " + std::to_string(formato));
  }
  void BodyText(const std::string& corpo) override { journal_->Add("smtp.BodyText " + corpo); }
  void AddHeader(const std::string& nome, const std::string& valore) override {
    journal_->Add("smtp.AddHeader " + nome + ": " + valore);
  }
  void AddAttachment(const std::string& percorso) override {
    journal_->Add("smtp.AddAttachment " + percorso);
  }
  host::Variant SendMail() override {
    journal_->Add("smtp.SendMail");
    return true;
  }
  host::Variant GetLastError() const override {
    journal_->Add("smtp.GetLastError");
    return risultato_;
  }
  host::FineConsegna Fine() const override { return fine_; }

  std::string password;  // what the service handed over

 private:
  JournalPtr journal_;
  host::Variant risultato_;
  host::FineConsegna fine_;
  std::string fromAddr_;
  Rilascio rilascio_;
};

}  // namespace orve::fakes
