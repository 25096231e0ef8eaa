// The before-send event and the stages around it. Recipients and attachments are flattened into texts, the
// caller's handler may change the texts, and the objects are rebuilt from them whether it did or not: what
// the texts cannot hold is lost here. A stage that fails reports by mode and does not stop the sequence.
#include "service/before_send.h"

#include <memory>
#include <utility>

#include "addressing/address_list.h"
#include "addressing/aziende_note.h"
#include "content/body_templates.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/nvl.h"
#include "text/text.h"

namespace orve {

namespace {

void SollevaEvento(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto,
                   Oggetti& oggetti) {
  BeforeDestinatari(messaggio, impostazioni, oggetti);
  BeforeAllegati(messaggio, impostazioni, oggetti);
  if (!messaggio.FlagInvioDiretto) {
    messaggio.vCorpoMail = GetCorpoMail(messaggio, impostazioni, contesto, oggetti);
  }

  std::string destinatariA = messaggio.DestinatariA;
  std::string destinatariCC = messaggio.DestinatariCC;
  std::string destinatariCCn = messaggio.DestinatariCCn;
  std::string allegati = messaggio.Allegati;
  std::string corpo = messaggio.vCorpoMail;
  std::string oggetto = messaggio.vOggetto;
  // A copy: the handler may detach itself or put another one in its place.
  const auto gestore = messaggio.BeforeSendMail;
  if (gestore) gestore(oggetto, corpo, destinatariA, destinatariCC, destinatariCCn, allegati);

  messaggio.DestinatariA = destinatariA;
  messaggio.DestinatariCC = destinatariCC;
  messaggio.DestinatariCCn = destinatariCCn;
  messaggio.Allegati = allegati;
  AfterDestinatari(messaggio, impostazioni, oggetti);
  AfterAllegati(messaggio, impostazioni, oggetti);

  // A changed body counts as the caller's own from now on.
  if (corpo != messaggio.vCorpoMail) {
    messaggio.vFlagCorpo = 1;
    messaggio.vCorpoMail = corpo;
  }
  messaggio.vOggetto = oggetto;
}

std::string* ElencoDi(Messaggio& messaggio, std::int16_t casella) {
  if (casella == kvCasellaA) return &messaggio.DestinatariA;
  if (casella == kvCasellaCC) return &messaggio.DestinatariCC;
  if (casella == kvCasellaCCn) return &messaggio.DestinatariCCn;
  return nullptr;
}

}  // namespace

void GestioneEventoBeforeSendMail(Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto,
                                  Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "GestioneEventoBeforeSendMail", " ",
                            " ORVE_MAILSERVER: CLSFW_MAILSERVER: GestioneEventoBeforeSendMail"),
                [&] { SollevaEvento(messaggio, impostazioni, contesto, oggetti); });
}

void BeforeDestinatari(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "ApriForm_OpzInvio", " ",
                            " ORVE_MAILSERVER: CLSFW_MAILSERVER: BeforeDestinatari"),
                [&] {
                  messaggio.CollDestinatariCopia = std::make_shared<CollDestinatari>(oggetti.ambiente);
                  if (!messaggio.vCollDestinatari) {
                    AccodaVoceSeparata(messaggio.DestinatariA, messaggio.vNome, messaggio.vIndDestinatario);
                    messaggio.CollDestinatariCopia->AddFromLista(messaggio.vIndDestinatario, messaggio.vNome,
                                                                 messaggio.vDitta, kvCasellaA, "");
                    return;
                  }
                  for (const auto& destinatario : *messaggio.vCollDestinatari) {
                    std::string* const elenco = ElencoDi(messaggio, destinatario->Casella());
                    if (elenco != nullptr)
                      AccodaVoceSeparata(*elenco, destinatario->Nome(), destinatario->Indirizzo());
                    messaggio.CollDestinatariCopia->AddFromLista(destinatario->Indirizzo(),
                                                                 destinatario->Nome(),
                                                                 destinatario->Azienda(), kvCasellaA, "");
                  }
                });
}

void BeforeAllegati(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "ApriForm_OpzInvio", " ",
                            " ORVE_MAILSERVER: CLSFW_MAILSERVER: BeforeAllegati"),
                [&] {
                  messaggio.Allegati = messaggio.vMailAttachment;
                  if (messaggio.vElencoAllegati.IsEmpty()) return;
                  for (const auto& allegato : std::as_const(messaggio.vElencoAllegati).ToArray()) {
                    if (!messaggio.Allegati.empty()) messaggio.Allegati.append(";");
                    messaggio.Allegati.append(allegato.Joined());
                  }
                });
}

void AfterDestinatari(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "AfterDestinatari", " ",
                            " ORVE_MAILSERVER: CLSFW_MAILSERVER: AfterDestinatari"),
                [&] {
                  messaggio.vCollDestinatari.reset();
                  messaggio.vCollDestinatari = std::make_shared<CollDestinatari>(oggetti.ambiente);
                  const AziendeNote aziende(messaggio.CollDestinatariCopia);

                  AddressListReader lettore;
                  const auto leggi = [&](const std::string& elenco, kvCasella casella) {
                    lettore.Leggi(elenco, [&](const std::string& indirizzo, const std::string& nome) {
                      std::string azienda = aziende.Di(indirizzo, nome);
                      if (casella != kvCasellaA) azienda = NVL(azienda, "").ToText();
                      messaggio.vCollDestinatari->AddFromLista(indirizzo, nome, azienda, casella, "");
                    });
                  };
                  leggi(messaggio.DestinatariA, kvCasellaA);
                  leggi(messaggio.DestinatariCC, kvCasellaCC);
                  leggi(messaggio.DestinatariCCn, kvCasellaCCn);
                });
}

void AfterAllegati(Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti) {
  SegnalaErrori(PerModalita(messaggio, impostazioni, oggetti, "ApriForm_OpzInvio", " ",
                            " ORVE_MAILSERVER: CLSFW_MAILSERVER: AfterAllegati"),
                [&] { RiprendiAllegati(messaggio, oggetti, messaggio.Allegati); });
}

void RiprendiAllegati(Messaggio& messaggio, const Oggetti& oggetti, const std::string& elenco) {
  messaggio.vElencoAllegati = {};
  bool principaleTrovato = false;
  for (const auto parte : text::Split(elenco, ';')) {
    AddAllegato(messaggio, oggetti, std::string(parte));
    if (parte == messaggio.vMailAttachment) principaleTrovato = true;
  }
  if (!principaleTrovato) messaggio.vMailAttachment.clear();
}

void AddAllegato(Messaggio& messaggio, const Oggetti& oggetti, const std::string& FileName) {
  IgnoraErrori([&] {
    SegnalaErrori(PerAvviso(oggetti, "ORVE_MAIL: InviaMailSMTP"), [&] {
      if (messaggio.vElencoAllegati.IsEmpty()) {
        messaggio.vElencoAllegati = host::Variant::Array{FileName};
      } else {
        messaggio.vElencoAllegati.ToArray().emplace_back(FileName);
      }
    });
  });
}

}  // namespace orve
