// The two small text codes by which a calling program may name a recipient: free text with the address after
// a marker, and the four-part code of a partner's goods destination. The application writes them, nothing
// here does.
#pragma once

#include <string>
#include <string_view>

namespace orve {

/// Everything after the first "<*pec*>", including any further marker; empty without that marker.
[[nodiscard]] std::string EstraiIndirizzoPec(std::string_view testo);

/// Everything after the first "<***>"; empty without that marker, and also when a "<*pec*>" follows it. A
/// caller that wants both addresses in one code therefore has no order that works for both kinds of mail;
/// programs rely on each half of this.
[[nodiscard]] std::string EstraiIndirizzoMail(std::string_view testo);

/// The parts of "company/partner/flag/destination". They go into statements as they are.
struct CodiceDestinazione {
  std::string ditta;
  std::string cliFor;
  std::string tipoCf;
  std::string destinazione;  // to the end of the code, so it may hold a "/"
};

/// Raises 5 when the code has fewer than three "/".
[[nodiscard]] CodiceDestinazione ScomponiCodiceDestinazione(std::string_view codice);

}  // namespace orve
