// A complete small program that sends one message through the library: an invoice to a customer found by
// code.
//
//   invia_fattura DATABASE CUSTOMER PDF CA
//
// DATABASE was created by `orve-mail crea-db`; CA holds the certificate of the authority that signed the mail
// server's. The outside objects are those of the reference host; an application brings its own.
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "orve-mail/host/ambiente.h"
#include "orve-mail/host/archivio.h"
#include "orve-mail/host/osservazioni.h"
#include "orve-mail/host/percorsi_host.h"
#include "orve-mailserver/posix/percorsi.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"

namespace {

// A message that was refused before it was sent does not change `Stato`. What became of it is in the
// register: a line for each recipient, or a single one that says why nothing was sent.
bool Inviato(const std::vector<orve::app::RigaRegistro>& registro, const std::string& cliente) {
  bool inviato = !registro.empty();
  if (!inviato)
    std::cout << "Non inviato: manca un account, oppure un errore sta nel registro degli errori\n";
  for (const auto& riga : registro) {
    if (riga.esito == orve::host::kInviato) {
      std::cout << "Inviato: " << riga.indirizzo << "\n";
      continue;
    }
    inviato = false;
    // Everybody in the master data has a name, with or without an address.
    std::cout << (riga.nome.empty() ? "Cliente " + cliente + " sconosciuto" : riga.nome) << ": "
              << riga.risultato << "\n";
  }
  return inviato;
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 5) {
    std::cerr << "uso: invia_fattura DATABASE CLIENTE PDF CA\n";
    return 2;
  }
  const orve::app::PosizioneArchivio posizione{argv[1]};
  const auto database = orve::app::ApriIncorporato(posizione);
  database->UtenteConnessione(1);
  orve::adapters::smtp::SmtpOptions smtp;
  smtp.caFile = argv[4];
  const auto chiave =
      std::make_shared<const orve::app::Chiave>(orve::app::Chiave::Leggi(orve::app::FileChiave(posizione)));
  const auto note = std::make_shared<orve::app::Osservazioni>();
  const auto ambiente = std::make_shared<orve::app::AmbienteProgramma>(
      orve::app::Terminale{std::cin, std::cout, std::cerr}, chiave, smtp,
      std::filesystem::current_path().string(), note);

  orve::CLSFW_MAILSERVER servizio(ambiente);
  servizio.ConnectionADO = database;
  servizio.DittaCorrente = 1;
  servizio.GetImpostazioni();
  servizio.ModalitaInvio(orve::kvAutomatico);
  servizio.InizializzaRegistroInvioMailMultiprofilo("fatture", "stampa", 1, "Fattura di vendita");
  servizio.vOggetto = "Fattura 12/2026";
  servizio.vMailAttachment = orve::adapters::posix::PercorsoLibreriaAssoluto(argv[3]);
  servizio.BeforeSendMail = [](auto& oggetto, auto&, auto&, auto&, auto&, auto&) {
    oggetto += " (originale)";
  };
  servizio.AvviaProceduraInvio(argv[2], orve::kvDestinatarioFaxCliente);
  return Inviato(note->registro, argv[2]) ? 0 : 1;
} catch (const std::exception& errore) {
  std::cerr << errore.what() << "\n";
  return 1;
}
