// Delivering the current message through the SMTP component: one submission for all recipients, one record
// for each of them, no retry.
//
// The texts built here are read by others: the component splits the recipient lists, and the submission
// splits the sender text at its double quotes. Change their shape only together with both.
#pragma once

#include <string>

namespace orve {

/// The name between double quotes when a comma stands in it at the second character or later; otherwise as
/// it is.
[[nodiscard]] std::string QuotaNome(const std::string& nome);

/// The name between double quotes, "<", the address, ">". A name of blanks only counts as none; the two
/// double quotes stand there all the same.
[[nodiscard]] std::string ComponiMittente(const std::string& nome, const std::string& indirizzo);

}  // namespace orve
