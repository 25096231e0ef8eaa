// The module MDL_ACTIVEDIRECTORY: who is logged in to the network, and what the company's directory knows
// about that person. It gives the sender's address and display name to accounts that hold none of their own.
//
// A failed look-up is no error for anybody: the record stays empty, so that a machine outside a domain works
// as well. The look-up goes over the network and blocks its caller for as long as the directory takes.
#pragma once

#include <string>

#include "host/directory.h"
#include "host/sistema.h"

namespace orve::MDL_ACTIVEDIRECTORY {

/// What the directory says of a person; a text stays as it was where the person has no such attribute.
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

/// The network user name; empty when the network layer names none.
[[nodiscard]] std::string GetNomeUtenteRete(host::Rete& rete);

/// The text up to its first NUL character; the whole text when it has none.
[[nodiscard]] std::string TagliaAlNul(const std::string& testo);

/// Looks the user up by account name and fills the record from the first match. True when the look-up ran to
/// its end, also if it found nobody; false when the directory could not be asked. Never raises. The name goes
/// into the filter as it stands, without escaping.
bool GetDatiUtenteDirectory(host::Directory& directory, const std::string& UserName,
                            DatiUtenteDirectory& dati) noexcept;

}  // namespace orve::MDL_ACTIVEDIRECTORY
