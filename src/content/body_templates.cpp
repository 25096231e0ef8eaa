// Which body a message carries, and the placeholders in it.
//
// The standard body is a legal notice: it goes out to the character, doubled blanks and typographic signs
// included. Placeholders are replaced one after another over the growing text, so that a value which holds a
// later placeholder is filled in turn.
#include "content/body_templates.h"

#include <string>
#include <string_view>
#include <utility>

#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr std::string_view kCorpoStandard =
    "Gli allegati inclusi in questa mail sono destinati  a \r\n"
    " ***(Nome)***\r\n"
    "\r\n"
    "dell'azienda:\r\n"
    " ***(Azienda)***\r\n"
    "\r\n"
    "Posta elettronica:\r\n"
    "  ***(IndEmail)*** \r\n"
    "\r\n"
    "Informativa ai sensi del codice della Privacy (D. Lgs. 196 – 30/06/2003).\r\n"
    "Le informazioni contenute nella presente e-mail e negli eventuali allegati, devono essere nella "
    "disponibilità del solo destinatario.\r\n"
    // One long line from here to the end.
    "Se avete ricevuto per errore questa e-mail siete pregati di informarci (rispedendola al mittente) "
    "e di provvedere alla sua rimozione. Possono essere presenti informazioni riservate e non corrette "
    "( parzialmente o totalmente). Le e-mail in partenza e in arrivo possono essere oggetto di monitoraggio "
    "da parte di ***(AziendaCorr)***. Del contenuto è responsabile il mittente della presente. "
    "Chiunque venga in possesso non autorizzato di questa e-mail è vincolato dalla Legge a non leggerne il "
    "contenuto, a non copiarla, a non diffonderla e a non usarla. "
    "La informiamo che per l’esercizio dei diritti di cui all’art. 7 del d. lgs. 196/2003 "
    "può rivolgersi al Titolare del trattamento  "
    "***(AziendaCorr)***,***(AzCorrInd)*** –  ***(AzCorrCAP)***  ***(AzCorrCitta)*** "
    "per posta o per fax, indicando sulla busta o sul foglio la dicitura “Inerente alla Privacy”, "
    "o inviando una e-mail all’ indirizzo ***(AzCorrMail)***.";

}  // namespace

std::string_view CorpoStandard() {
  return kCorpoStandard;
}

std::string CLSFW_MAILSERVER::GetCorpoMail() {
  return vFlagCorpo != 0 ? CompilaTestoMail(vCorpoMail) : GetCorpoStandard();
}

// A body that cannot be filled goes out all the same: the notice with its placeholders, the standing message
// empty.
std::string CLSFW_MAILSERVER::GetCorpoStandard() {
  std::string corpo;
  if (!FlgMsgPers) corpo = kCorpoStandard;
  IgnoraErrori([&] { corpo = CompilaTestoMail(FlgMsgPers ? MsgPers : corpo); });
  return corpo;
}

std::string CLSFW_MAILSERVER::CompilaTestoMail(const std::string& testo) {
  std::string corpo = testo;
  const auto sostituisci = [&corpo](std::string_view segnaposto, const std::string& valore) {
    corpo = text::ReplaceIgnoreCase(std::move(corpo), segnaposto, valore);
  };
  sostituisci("***(Nome)***", vNome);
  sostituisci("***(Azienda)***", vDitta);
  sostituisci("***(IndEmail)***", vIndDestinatario);
  // These two also refresh the descriptions of group and user, which come next.
  sostituisci("***(Gruppo)***", GetGruppoPreferito());
  sostituisci("***(Utente)***", GetUtenteApplicazione());
  sostituisci("***(DescGruppo)***", DescGruppoCorrente);
  sostituisci("***(DescUtente)***", DescUtenteCorrente);
  sostituisci("***(AziendaCorr)***", AziendaCorr);
  sostituisci("***(AzCorrInd)***", AzCorrInd);
  sostituisci("***(AzCorrCAP)***", AzCorrCAP);
  sostituisci("***(AzCorrCitta)***", AzCorrCitta);
  sostituisci("***(AzCorrProv)***", AzCorrProv);
  sostituisci("***(AzCorrMail)***", AzCorrMail);
  return corpo;
}

}  // namespace orve
