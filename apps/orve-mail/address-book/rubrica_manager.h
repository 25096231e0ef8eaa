// The address-book manager in the program's version: the application's book over the master data of the open
// database. The books of Outlook and Tobit do not exist on this machine, and a message says so.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orve-mail/address-book/rubrica.h"
#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/data_ora.h"
#include "orve-mailserver/host/manager_rubrica.h"

namespace orve::app {

/// What the book's window is given.
struct AperturaRubrica {
  std::string titolo;
  bool pec = false;  // the addresses are for certified mail
  std::string nome;  // the party to begin with, if there is one of this name
  std::vector<Parte> parti;
};

/// What the person picked there.
struct SceltaRubrica {
  std::string codice;
  std::string nome;
  std::vector<std::string> indirizzi;
};

/// Shows the book modally; none when the person leaves it without a choice.
using FinestraRubrica = std::function<std::optional<SceltaRubrica>(AperturaRubrica)>;

/// A manager over the connection, which may be absent until a book is opened. Its operations raise 5 for a
/// kind of address that it does not have, 13 for a company that is not a number, 91 without a connection, and
/// what the connection, the window and the message object raise.
///
/// The name that comes back can precede an address in a list of recipients: ";" becomes a comma, "<" and ">"
/// become round brackets, a line break becomes a blank. Without a choice code, name and address stay as they
/// were.
///
/// `data`: the day for which a partner's master data apply; none: today.
[[nodiscard]] std::shared_ptr<host::ManagerRubrica> CreaRubrica(std::shared_ptr<host::Ambiente> ambiente,
                                                                std::shared_ptr<host::Connection> connessione,
                                                                FinestraRubrica finestra,
                                                                std::optional<host::DataOra> data = {});

}  // namespace orve::app
