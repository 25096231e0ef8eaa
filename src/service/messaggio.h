// What is sent, and to whom: what the caller set, what the look-up found and what event and dialog changed.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "orve-mailserver/addressing/destinatari.h"
#include "orve-mailserver/host/registro_invio.h"
#include "orve-mailserver/host/variant.h"
#include "orve-mailserver/service/enumerazioni.h"

namespace orve {

/// BeforeSendMail: subject, body, A, CC and CCn recipients and attachments, all of which may be changed.
using GestoreBeforeSendMail =
    std::function<void(std::string& Oggetto, std::string& Corpo, std::string& DestinatariA,
                       std::string& DestinatariCC, std::string& DestinatariCCn, std::string& Allegati)>;

struct Messaggio {
  std::string vIndDestinatario;
  std::string vNome;
  std::string vDitta;
  std::string vOggetto;
  std::string vTestoMail;
  std::string vMailAttachment;
  std::int16_t vFlagCorpo = 0;
  std::string vCorpoMail;
  std::shared_ptr<CollDestinatari> vCollDestinatari;
  kvTipologiaAllegati vIndTipologiaAllegati = kvSingoloAllegato;
  host::Variant vElencoAllegati;
  bool IsPec = false;
  host::DataOra DataValiditaCodiceDestinatario;

  // Texts of the event, and the recipients before it.
  std::string DestinatariA;
  std::string DestinatariCC;
  std::string DestinatariCCn;
  std::string Allegati;
  std::shared_ptr<CollDestinatari> CollDestinatariCopia;
  GestoreBeforeSendMail BeforeSendMail;

  // Data of the document for the register.
  std::string INFO_TipoDoc;
  std::string INFO_NumReg;
  std::string INFO_NumDoc;
  std::string INFO_SezDoc;
  std::string INFO_RagSocCliFor;
  std::string ListaGuid;
  std::int32_t IsLista = 0;

  bool FlagInvioDiretto = false;  // a direct send is running

  // Kept for the caller; nothing in the library reads them.
  std::string MailCorpo;
  std::string MailOggetto;
};

/// What the register is told for certified and for ordinary mail.
[[nodiscard]] inline host::TipoCanale TipoCanaleDi(const Messaggio& messaggio) {
  return messaggio.IsPec ? host::kCanalePec : host::kCanaleMail;
}

}  // namespace orve
