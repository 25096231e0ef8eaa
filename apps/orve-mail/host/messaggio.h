// The parts of a message as given on the command line, checked and converted into what the library takes.
//
// The library carries recipients and attachments through texts joined by ";", with the address between "<"
// and ">". What such a text cannot represent would arrive as something else, so it is refused here.
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/data_ora.h"

namespace orve::app {

struct VoceDestinatario {
  std::string nome;
  std::string indirizzo;
};

/// A recipient from "Nome <indirizzo>", "<indirizzo>" or "indirizzo"; one pair of quotes around the name is
/// removed. The address itself is not checked: that is the library's and the server's business. Raises
/// ErroreProgramma (kComandoErrato) without an address, or when name or address hold ";", "<" or ">".
[[nodiscard]] VoceDestinatario LeggiDestinatario(std::string_view testo);

/// The body from a text, from "@file" or from "@-" (`ingresso`); "@@" at the start is text that begins with
/// "@". Lines end in carriage return and line feed, as the application's do. Raises ErroreProgramma:
/// kFileMancante for a file that cannot be read, may not go with a message (`esclusi`, see
/// orve-mail/allegati.h), is longer than 16 MiB or is not UTF-8 text.
[[nodiscard]] std::string LeggiCorpo(const std::string& testo, std::istream& ingresso,
                                     const std::vector<std::string>& esclusi);

/// The text with carriage return and line feed as line ends.
[[nodiscard]] std::string ConFineRigaDoppia(std::string_view testo);

/// Raises ErroreProgramma (kFileMancante) when the file does not exist, is not a regular file, or cannot be
/// read.
void RichiediFileLeggibile(const std::string& file);

/// A date from "gg/mm/aaaa" or "aaaa-mm-gg". Raises ErroreProgramma (kComandoErrato).
[[nodiscard]] host::DataOra LeggiData(const std::string& testo);

/// Raises ErroreProgramma (kComandoErrato) when the text is not valid UTF-8; `opzione` names it.
void RichiediUtf8(const std::string& testo, const std::string& opzione);

}  // namespace orve::app
