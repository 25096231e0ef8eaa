// The mail settings of the application.
#pragma once

#include <string>

#include "service/account.h"
#include "service/contesto.h"
#include "service/impostazioni.h"
#include "service/oggetti.h"

namespace orve {

/// The one row of the mail settings.
inline constexpr const char* kStatementImpostazioni =
    "SELECT FW24_INDFAXATTIVO, FW24_INDMODALITA, FW24_PATHTMP, "
    " FW24_READRECEIPT, FW24_FLGMSGPERS, FW24_MSGPERS,FW24_BCC, "
    " FW24_MAILMODSTDIFF "
    " FROM FW24_FAXCONFIG "
    " WHERE FW24_INDCANALE = 1";

/// Reads the mail settings, sets channel, modes and temporary directory, and creates the channel's object.
/// Raises what the database or the MAPI sign-on raises, with the procedure's name after the description.
void GetImpostazioni(Impostazioni& impostazioni, Account& account, const Contesto& contesto,
                     Oggetti& oggetti);

/// The system's directories; no effect on the settings. They raise what the path resolver raises.
[[nodiscard]] std::string GetPathTemp(const Oggetti& oggetti);
[[nodiscard]] std::string GetPercorsoInstallazione(const Oggetti& oggetti);

}  // namespace orve
