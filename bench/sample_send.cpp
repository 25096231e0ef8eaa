#include "sample_send.h"

#include <stdexcept>
#include <utility>

namespace orve::bench {

namespace {

void Require(bool holds, const std::string& what) {
  if (!holds) throw std::runtime_error(what);
}

std::unique_ptr<CLSFW_MAILSERVER> PreparedService(const std::shared_ptr<NullAmbiente>& ambiente) {
  auto service = std::make_unique<CLSFW_MAILSERVER>(ambiente);
  service->ConnectionADO = ambiente->Database();
  service->DittaCorrente = 1;
  service->GetImpostazioni();
  service->INFO_TipoDoc = "FAT";
  service->INFO_NumReg = "2026/000123";
  service->INFO_NumDoc = "123";
  service->INFO_SezDoc = "01";
  service->INFO_RagSocCliFor("Ferramenta Bianchi S.r.l.");
  service->InizializzaRegistroInvioMail("FATTURE", "StampaFatture", "mario", "vendite", "Stampa fatture");
  service->vOggetto = "Fattura n. 123 del 14/11/2026";
  service->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {};
  return service;
}

void CheckSent(const CLSFW_MAILSERVER& service, const Counts& counts, std::size_t recipients) {
  Require(service.Stato() == kvOK && counts.messages == 1, "the message was not sent");
  Require(counts.lines == recipients, "register lines: " + std::to_string(counts.lines));
  Require(counts.events == recipients, "management events: " + std::to_string(counts.events));
}

// The list: groups of ten, of which the second repeats the first.
std::size_t Person(std::size_t i) {
  return i % 10 == 1 ? i - 1 : i;
}
std::string Company(std::size_t i) {
  return "Azienda " + std::to_string(i) + " S.r.l.";
}
std::string Address(std::size_t i) {
  return "cliente" + std::to_string(Person(i)) + "@example.com";
}
std::string Name(std::size_t i) {
  return "Cliente numero " + std::to_string(Person(i));
}
std::size_t CompanyAfterwards(std::size_t i) {
  return i % 10 == 0 ? i + 1 : i;
}
kvCasella Box(std::size_t i) {
  const std::size_t group = i / 10 % 10;
  return group < 8 ? kvCasellaA : group == 8 ? kvCasellaCC : kvCasellaCCn;
}

}  // namespace

void SendInvoice(const std::shared_ptr<NullAmbiente>& ambiente, const std::string& attachment) {
  ambiente->Counted() = {};
  const auto service = PreparedService(ambiente);
  service->vMailAttachment = attachment;
  service->AvviaProceduraInvio(host::Variant("1001"), kvDestinatarioFaxCliente);
  CheckSent(*service, ambiente->Counted(), 1);
}

std::unique_ptr<CLSFW_MAILSERVER> ServiceForList(const std::shared_ptr<NullAmbiente>& ambiente,
                                                 std::size_t recipients) {
  auto service = PreparedService(ambiente);
  auto list = std::make_shared<CollDestinatari>(ambiente);
  for (std::size_t i = 0; i < recipients; ++i) list->AddFromLista(Address(i), Name(i), Company(i), Box(i));
  service->vCollDestinatari = std::move(list);
  ambiente->Counted() = {};
  return service;
}

void CheckListSent(const CLSFW_MAILSERVER& service, NullAmbiente& ambiente, std::size_t recipients) {
  CheckSent(service, ambiente.Counted(), recipients);
  // The boxes come one after the other, each in the order in which its recipients were added.
  auto found = service.vCollDestinatari->begin();
  for (const kvCasella box : {kvCasellaA, kvCasellaCC, kvCasellaCCn}) {
    for (std::size_t i = 0; i < recipients; ++i) {
      if (Box(i) != box) continue;
      const auto recipient = *found;
      ++found;
      Require(recipient->Casella() == box && recipient->Indirizzo() == Address(i), "lost: " + Address(i));
      Require(recipient->Azienda() == Company(CompanyAfterwards(i)),
              "wrong company of " + Address(i) + ": \"" + recipient->Azienda() + "\"");
    }
  }
}

}  // namespace orve::bench
