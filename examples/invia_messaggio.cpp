#include <orve-mailserver/ambiente/ambiente.h>
#include <orve-mailserver/ambiente/database.h>
#include <orve-mailserver/posix/percorsi.h>
#include <orve-mailserver/service/CLSFW_MAILSERVER.h>

using namespace orve::adapters;

int main() {
  const ambiente::Options opzioni{.chiave = ambiente::LeggiChiave("prova.db.chiave")};
  orve::CLSFW_MAILSERVER servizio(std::make_shared<ambiente::AmbientePronto>(opzioni));
  servizio.ConnectionADO = ambiente::ApriDatabase("prova.db", {.utente = 1});
  servizio.DittaCorrente = 1;
  servizio.GetImpostazioni();
  servizio.ModalitaInvio(orve::kvAutomatico);
  servizio.InizializzaRegistroInvioMailMultiprofilo("fatture", "stampa", 1, "Fattura di vendita");
  servizio.vOggetto = "Fattura 12/2026";
  servizio.vMailAttachment = posix::PercorsoLibreriaAssoluto("fattura-12.pdf");
  servizio.AvviaProceduraInvio("1001", orve::kvDestinatarioFaxCliente);
  return servizio.Stato();
}
