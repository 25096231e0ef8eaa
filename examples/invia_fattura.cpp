// A complete small program that sends one message through the library: an invoice to a customer found by
// code.
//
//   invia_fattura DATABASE CUSTOMER PDF CA
//
// DATABASE was created by `orve-mail crea-db`; CA holds the certificate of the authority that signed the mail
// server's.
#include <orve-mailserver/ambiente/ambiente.h>
#include <orve-mailserver/ambiente/database.h>
#include <orve-mailserver/posix/percorsi.h>
#include <orve-mailserver/service/CLSFW_MAILSERVER.h>

#include <iostream>
#include <memory>
#include <string>

namespace {

using namespace orve::adapters;

// Tells what became of the message. One that was refused before it was sent does not change `Stato`: the
// register has a line for each recipient, or a single one that says why nothing was sent.
class Racconto : public orve::host::OsservatoreInvio {
 public:
  explicit Racconto(std::string cliente) : cliente_(std::move(cliente)) {}

  void RigaRegistrata(std::int32_t esito, const std::string& nome, const std::string& indirizzo,
                      const std::string& risultato) override {
    const bool partito = esito == orve::host::kInviato;
    tutti_ = partito && (tutti_ || righe_ == 0);
    ++righe_;
    // Everybody in the master data has a name, with or without an address.
    const std::string chi = nome.empty() ? "Cliente " + cliente_ + " sconosciuto" : nome;
    std::cout << (partito ? "Inviato: " + indirizzo : chi + ": " + risultato) << "\n";
  }

  [[nodiscard]] bool Inviato() const {
    if (righe_ == 0)
      std::cout << "Non inviato: manca un account, oppure un errore sta nel registro degli errori\n";
    return tutti_;
  }

 private:
  std::string cliente_;
  int righe_ = 0;
  bool tutti_ = false;
};

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 5) {
    std::cerr << "uso: invia_fattura DATABASE CLIENTE PDF CA\n";
    return 2;
  }
  const std::string database = argv[1];
  const auto racconto = std::make_shared<Racconto>(argv[2]);
  ambiente::Options opzioni;
  opzioni.smtp.caFile = argv[4];
  opzioni.chiave = ambiente::LeggiChiave(database + ".chiave");
  opzioni.messaggi = &std::cerr;
  opzioni.osservatore = racconto;

  orve::CLSFW_MAILSERVER servizio(std::make_shared<ambiente::AmbientePronto>(opzioni));
  servizio.ConnectionADO = ambiente::ApriDatabase(database, {.utente = 1});
  servizio.DittaCorrente = 1;
  servizio.GetImpostazioni();
  servizio.ModalitaInvio(orve::kvAutomatico);
  servizio.InizializzaRegistroInvioMailMultiprofilo("fatture", "stampa", 1, "Fattura di vendita");
  servizio.vOggetto = "Fattura 12/2026";
  servizio.vMailAttachment = posix::PercorsoLibreriaAssoluto(argv[3]);
  servizio.BeforeSendMail = [](auto& oggetto, auto&, auto&, auto&, auto&, auto&) {
    oggetto += " (originale)";
  };
  servizio.AvviaProceduraInvio(argv[2], orve::kvDestinatarioFaxCliente);
  return racconto->Inviato() ? 0 : 1;
} catch (const std::exception& errore) {
  std::cerr << errore.what() << "\n";
  return 1;
}
