// The standard body is a legal notice: it goes out character for character, doubled blanks and typographic
// signs included. Placeholders are replaced one after another over the growing text, so a value which holds a
// later placeholder is filled in turn.
#include "content/body_templates.h"

#include <utility>

#include "addressing/contesto_utente.h"
#include "service/guards.h"
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

std::string GetCorpoMail(const Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto,
                         const Oggetti& oggetti) {
  return messaggio.vFlagCorpo != 0 ? CompilaTestoMail(messaggio, contesto, oggetti, messaggio.vCorpoMail)
                                   : GetCorpoStandard(messaggio, impostazioni, contesto, oggetti);
}

std::string GetCorpoStandard(const Messaggio& messaggio, const Impostazioni& impostazioni, Contesto& contesto,
                             const Oggetti& oggetti) {
  std::string corpo;
  if (!impostazioni.FlgMsgPers) corpo = kCorpoStandard;
  IgnoraErrori([&] {
    corpo = CompilaTestoMail(messaggio, contesto, oggetti,
                             impostazioni.FlgMsgPers ? impostazioni.MsgPers : corpo);
  });
  return corpo;
}

std::string CompilaTestoMail(const Messaggio& messaggio, Contesto& contesto, const Oggetti& oggetti,
                             const std::string& testo) {
  std::string corpo = testo;
  const auto sostituisci = [&corpo](std::string_view segnaposto, const std::string& valore) {
    corpo = text::ReplaceIgnoreCase(std::move(corpo), segnaposto, valore);
  };
  sostituisci("***(Nome)***", messaggio.vNome);
  sostituisci("***(Azienda)***", messaggio.vDitta);
  sostituisci("***(IndEmail)***", messaggio.vIndDestinatario);
  // These two also refresh the descriptions of group and user, which come next.
  sostituisci("***(Gruppo)***", GetGruppoPreferito(contesto, oggetti));
  sostituisci("***(Utente)***", GetUtenteApplicazione(contesto, oggetti));
  sostituisci("***(DescGruppo)***", contesto.DescGruppoCorrente);
  sostituisci("***(DescUtente)***", contesto.DescUtenteCorrente);
  sostituisci("***(AziendaCorr)***", contesto.AziendaCorr);
  sostituisci("***(AzCorrInd)***", contesto.AzCorrInd);
  sostituisci("***(AzCorrCAP)***", contesto.AzCorrCAP);
  sostituisci("***(AzCorrCitta)***", contesto.AzCorrCitta);
  sostituisci("***(AzCorrProv)***", contesto.AzCorrProv);
  sostituisci("***(AzCorrMail)***", contesto.AzCorrMail);
  return corpo;
}

}  // namespace orve
