// The before-send event and the stages round it. Recipients and attachments are flattened into texts, the
// caller's handler may change the texts, and the objects are rebuilt from them whether it did or not: what
// the texts cannot hold is lost here. A stage that fails reports by mode and does not stop the sequence.
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "addressing/address_list.h"
#include "addressing/known_companies.h"
#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"
#include "service/nvl.h"
#include "text/text.h"

namespace orve {

namespace {

void AppendItem(std::string& elenco, std::string_view nome, std::string_view indirizzo) {
  if (!elenco.empty()) elenco.append(";");
  elenco.append(nome).append("<").append(indirizzo).append(">");
}

}  // namespace

void CLSFW_MAILSERVER::GestioneEventoBeforeSendMail() try {
  BeforeDestinatari();
  BeforeAllegati();
  if (!FlagInvioDiretto) vCorpoMail = GetCorpoMail();

  std::string destinatariA = destinatariA_;
  std::string destinatariCC = destinatariCC_;
  std::string destinatariCCn = destinatariCCn_;
  std::string allegati = allegati_;
  std::string corpo = vCorpoMail;
  std::string oggetto = vOggetto;
  // A copy: the handler may detach itself or put another one in its place.
  const auto gestore = BeforeSendMail;
  if (gestore) gestore(oggetto, corpo, destinatariA, destinatariCC, destinatariCCn, allegati);

  DestinatariA(destinatariA);
  DestinatariCC(destinatariCC);
  DestinatariCCn(destinatariCCn);
  Allegati(allegati);
  AfterDestinatari();
  AfterAllegati();

  // A changed body counts as the caller's own from now on.
  if (corpo != vCorpoMail) {
    vFlagCorpo = 1;
    vCorpoMail = corpo;
  }
  vOggetto = oggetto;
} catch (...) {
  SegnalaPerModalita(host::ErroreCorrente(), "GestioneEventoBeforeSendMail", " ",
                     " ORVE_MAILSERVER: CLSFW_MAILSERVER: GestioneEventoBeforeSendMail");
}

void CLSFW_MAILSERVER::BeforeDestinatari() try {
  CollDestinatariCopia = std::make_shared<CollDestinatari>(ambiente_);
  if (!vCollDestinatari) {
    AppendItem(destinatariA_, vNome, vIndDestinatario);
    CollDestinatariCopia->AddFromLista(vIndDestinatario, vNome, vDitta, kvCasellaA, "");
    return;
  }
  for (const auto& destinatario : *vCollDestinatari) {
    switch (destinatario->Casella()) {
      case kvCasellaA:
        AppendItem(destinatariA_, destinatario->Nome(), destinatario->Indirizzo());
        break;
      case kvCasellaCC:
        AppendItem(destinatariCC_, destinatario->Nome(), destinatario->Indirizzo());
        break;
      case kvCasellaCCn:
        AppendItem(destinatariCCn_, destinatario->Nome(), destinatario->Indirizzo());
        break;
      default:
        break;
    }
    CollDestinatariCopia->AddFromLista(destinatario->Indirizzo(), destinatario->Nome(),
                                       destinatario->Azienda(), kvCasellaA, "");
  }
} catch (...) {
  SegnalaPerModalita(host::ErroreCorrente(), "ApriForm_OpzInvio", " ",
                     " ORVE_MAILSERVER: CLSFW_MAILSERVER: BeforeDestinatari");
}

void CLSFW_MAILSERVER::BeforeAllegati() try {
  allegati_ = vMailAttachment;
  if (vElencoAllegati.IsEmpty()) return;
  for (const auto& allegato : std::as_const(vElencoAllegati).ToArray()) {
    if (!allegati_.empty()) allegati_.append(";");
    allegati_.append(allegato.Joined());
  }
} catch (...) {
  SegnalaPerModalita(host::ErroreCorrente(), "ApriForm_OpzInvio", " ",
                     " ORVE_MAILSERVER: CLSFW_MAILSERVER: BeforeAllegati");
}

void CLSFW_MAILSERVER::AfterDestinatari() try {
  vCollDestinatari.reset();
  vCollDestinatari = std::make_shared<CollDestinatari>(ambiente_);
  const AziendeNote aziende(CollDestinatariCopia);

  LettoreElenchi lettore;
  const auto leggi = [&](const std::string& elenco, kvCasella casella) {
    lettore.Leggi(elenco, [&](const std::string& indirizzo, const std::string& nome) {
      std::string azienda = aziende.Di(indirizzo, nome);
      if (casella != kvCasellaA) azienda = NVL(azienda, "").ToText();
      vCollDestinatari->AddFromLista(indirizzo, nome, azienda, casella, "");
    });
  };
  leggi(destinatariA_, kvCasellaA);
  leggi(destinatariCC_, kvCasellaCC);
  leggi(destinatariCCn_, kvCasellaCCn);
} catch (...) {
  SegnalaPerModalita(host::ErroreCorrente(), "AfterDestinatari", " ",
                     " ORVE_MAILSERVER: CLSFW_MAILSERVER: AfterDestinatari");
}

void CLSFW_MAILSERVER::AfterAllegati() {
  try {
    RiprendiAllegati(allegati_);
  } catch (...) {
    SegnalaPerModalita(host::ErroreCorrente(), "ApriForm_OpzInvio", " ",
                       " ORVE_MAILSERVER: CLSFW_MAILSERVER: AfterAllegati");
  }
}

void CLSFW_MAILSERVER::RiprendiAllegati(const std::string& elenco) {
  vElencoAllegati = {};
  bool principaleTrovato = false;
  for (const auto parte : text::Split(elenco, ';')) {
    AddAllegato(std::string(parte));
    if (parte == vMailAttachment) principaleTrovato = true;
  }
  if (!principaleTrovato) vMailAttachment.clear();
}

void CLSFW_MAILSERVER::AddAllegato(const std::string& FileName) try {
  if (vElencoAllegati.IsEmpty()) {
    vElencoAllegati = host::Variant::Array{FileName};
  } else {
    vElencoAllegati.ToArray().emplace_back(FileName);
  }
} catch (...) {
  IgnoraErrori([this] {
    MostraMessaggio(host::ErroreCorrente().Descrizione(), host::kAvviso, "ORVE_MAIL: InviaMailSMTP", nullptr);
  });
}

}  // namespace orve
