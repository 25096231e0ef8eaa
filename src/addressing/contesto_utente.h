// Who sends, and for which company: the initialisers that prepare the register object, and the answers about
// user, group and company that the other subjects ask for.
#pragma once

#include <cstdint>
#include <string>

#include "service/account.h"
#include "service/contesto.h"
#include "service/impostazioni.h"
#include "service/messaggio.h"
#include "service/oggetti.h"

namespace orve {

/// The company's row of the master data; none when there is no such company.
[[nodiscard]] std::string StatementAzienda(const std::string& ditta);

/// What a caller says about the document whose sends the register records.
struct DocumentoRegistro {
  const std::string& IDvoce;
  const std::string& UObject;
  const std::string& TitoloStampa;
};

/// Both prepare register, user and company data, and on channels with an account the default account. They
/// raise what the database or the register object raises.
void InizializzaRegistroInvioMail(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                  Account& account, Contesto& contesto, Oggetti& oggetti,
                                  const DocumentoRegistro& documento, const std::string& Utente,
                                  const std::string& Gruppo);
void InizializzaRegistroInvioMailMultiprofilo(const Messaggio& messaggio, const Impostazioni& impostazioni,
                                              Account& account, Contesto& contesto, Oggetti& oggetti,
                                              const DocumentoRegistro& documento, std::int32_t IdUtente);

/// The user's id, looked up until it is known and then kept; 0 means not known. Without a connection the
/// person is told. Never raises.
[[nodiscard]] std::int32_t GetIdUtente(Contesto& contesto, const Oggetti& oggetti);

/// Login name of the user, and code of his preferred group; they also refresh the description. Empty when
/// there is none; raise what the database raises.
[[nodiscard]] std::string GetUtenteApplicazione(Contesto& contesto, const Oggetti& oggetti);
[[nodiscard]] std::string GetGruppoPreferito(Contesto& contesto, const Oggetti& oggetti);

/// The codes of a user by id; empty when they cannot be read.
[[nodiscard]] std::string GetCodiceUtente(const Contesto& contesto, std::int32_t id);
[[nodiscard]] std::string GetCodiceGruppo(const Contesto& contesto, std::int32_t id);

/// Name, address and mail address of the current company. Raises what the database raises.
void CaricaDatiAziendaCorrente(Contesto& contesto);

}  // namespace orve
