// What a channel does whose sender is one of the application's own accounts: the sender that was chosen, the
// texts of sender, recipients and body, the files, and the records of what came of it. Such a channel makes
// its object (IniziaConsegna), attaches files to it and hands it the composed message; all else is here.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "channels/elenchi_destinatari.h"
#include "channels/righe_invio.h"
#include "orve-mailserver/host/registro_invio.h"
#include "orve-mailserver/service/enumerazioni.h"
#include "service/account.h"
#include "service/contesto.h"
#include "service/esito.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"
#include "service/report.h"

namespace orve {

/// The name between double quotes when it has a comma at the second character or later; otherwise as it is.
[[nodiscard]] std::string QuotaNome(const std::string& nome);

/// The name between double quotes, "<", the address, ">". A name that is all blanks counts as none; the two
/// double quotes are written all the same.
[[nodiscard]] std::string ComponiMittente(const std::string& nome, const std::string& indirizzo);

/// Takes the account that the person has chosen, where one was chosen and counts.
void ApplicaMittenteScelto(Account& account);

/// Attaches the files of the message to the channel's object, `allega` being the operation that takes a path.
/// Returns the paths attached, joined by "|". A refused file, like an object that is absent, is reported by
/// message under this title, and the message goes out without it and those after it.
template <class Oggetto>
std::string AllegaConAvviso(const Messaggio& messaggio, const Oggetti& oggetti, const char* titolo,
                            const std::shared_ptr<Oggetto>& oggetto,
                            void (Oggetto::*allega)(const std::string&)) {
  std::string elenco;
  SegnalaErrori(PerAvviso(oggetti, titolo), [&] {
    if (messaggio.vElencoAllegati.IsEmpty()) return;
    for (const auto& allegato : messaggio.vElencoAllegati.ToArray()) {
      const std::string percorso = allegato.ToText();
      auto& presente = host::Richiesto(oggetto);
      Allega(*oggetti.ambiente, percorso, [&] { (presente.*allega)(percorso); });
      AccodaPercorso(elenco, percorso);
    }
  });
  return elenco;
}

/// What is handed over besides subject and body, which are in the message.
struct AccountSubmission {
  std::string mittente;  // as ComponiMittente has it
  ElenchiDestinatari elenchi;
  std::string allegati;  // the paths attached, joined by "|"
};

/// Composes the message from the chosen account: sender, recipients, files, body. Names and A recipients are
/// left in the message for the placeholders, and the body in its place. `allega` attaches the files and
/// returns their paths; what it leaves in the body does not count. Raises 91 without a collection.
[[nodiscard]] AccountSubmission ComponiDaAccount(Messaggio& messaggio, const Impostazioni& impostazioni,
                                                 Account& account, Contesto& contesto, const Oggetti& oggetti,
                                                 const std::function<std::string()>& allega);

/// The register's account of the delivery, then its lines and events. `inviato` is asked whether the message
/// was sent, `motivo` why it was not, as late as the register is told; `mittente` is what it is told of the
/// way of sending. Nothing is asked without a register. Raises what they raise.
void RegistraEsitoDaAccount(const Messaggio& messaggio, const Impostazioni& impostazioni,
                            const Contesto& contesto, const Oggetti& oggetti,
                            const std::function<bool()>& inviato, const std::function<std::string()>& motivo,
                            const std::string& mittente, const RigheInvio& righe);

/// What the channel's object answered.
struct RispostaDelCanale {
  bool accettato = false;
  std::function<std::string()> motivo;  // why not, for the records; asked as late as the register is told
};

/// The delivery of one message: composes it, hands it over, leaves the outcome in Stato and records it under
/// the channel's signature. `allega` is as in ComponiDaAccount. `consegna` fills the object with what was
/// composed, and with subject and body of the message, and hands it over. A channel that delivers through the
/// account's server is not asked without one: nothing is left of that send. An address of the sender that is
/// empty is handed over as it is, for the object to refuse. Raises what it is given raises, and 91 without a
/// collection.
void ConsegnaDaAccount(Messaggio& messaggio, const Impostazioni& impostazioni, Account& account,
                       Contesto& contesto, Esito& esito, const Oggetti& oggetti, kvEnum_ServizioMail canale,
                       const std::function<std::string()>& allega,
                       const std::function<RispostaDelCanale(const AccountSubmission&)>& consegna);

}  // namespace orve
