// The module MDL_ACTIVEDIRECTORY: who is logged in to the network, and what the company's directory knows
// about that person. It gives the sender's address and display name to accounts that hold none of their own.
//
// A failed look-up is not an error: the record stays empty, so a machine outside a domain works too. The
// look-up goes over the network and blocks its caller for as long as the directory takes.
#pragma once

#include <functional>
#include <string>

#include "orve-mailserver/host/directory.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/system.h"

namespace orve::MDL_ACTIVEDIRECTORY {

/// What the directory says about a person; a field stays as it was if the person has no such attribute.
struct DatiUtenteDirectory {
  std::string FirstName;
  std::string LastName;
  std::string EmployeeID;
  std::string Title;
  std::string Division;
  std::string TelephoneNumber;
  std::string FaxNumber;
  std::string EmailAddress;
};

/// The network user name; empty when the network layer gives none.
[[nodiscard]] std::string GetNomeUtenteRete(host::Rete& rete);

/// The text up to its first NUL character; the whole text when it has none.
[[nodiscard]] std::string TagliaAlNul(const std::string& testo);

using SuErrore = std::function<void(const host::Errore&)>;

/// Looks the user up by account name and fills the record from the first match. True when the look-up ran to
/// completion, even if it found nobody; false when the directory could not be asked. Never raises. The name
/// goes into the filter as it is, without escaping. `fallita`, if any, is told of the error that ended the
/// look-up in a directory that exists; what it raises is dropped.
bool GetDatiUtenteDirectory(host::Directory& directory, const std::string& UserName,
                            DatiUtenteDirectory& dati, const SuErrore& fallita = {}) noexcept;

}  // namespace orve::MDL_ACTIVEDIRECTORY
