// The parts of a message as they stand on the command line, checked and turned into what the library takes.
//
// The library carries recipients and attachments through texts joined by ";", with the address between "<"
// and ">". What such a text cannot hold would arrive as something else, so that it is refused here.
#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include "host/data_ora.h"

namespace orve::app {

struct VoceDestinatario {
  std::string nome;
  std::string indirizzo;
};

/// A recipient from "Nome <indirizzo>", "<indirizzo>" or "indirizzo"; one pair of quotes round the name is
/// taken off. The address itself is not checked: that is the library's and the server's business. Raises
/// ErroreProgramma (kComandoErrato) without an address, or when name or address hold ";", "<" or ">".
[[nodiscard]] VoceDestinatario LeggiDestinatario(std::string_view testo);

/// The body from a text, from "@file" or from "@-" (`ingresso`); "@@" in front is a text that begins with
/// "@". Lines end in carriage return and line feed, as the application's do. Raises ErroreProgramma:
/// kFileMancante for a file that cannot be read, may not go with a message (`esclusi`, see
/// orve-mail/host/allegati.h), is longer than 16 MiB or is no UTF-8 text.
[[nodiscard]] std::string LeggiCorpo(const std::string& testo, std::istream& ingresso,
                                     const std::vector<std::string>& esclusi);

/// The text with its lines ending in carriage return and line feed.
[[nodiscard]] std::string ConFineRigaDoppia(std::string_view testo);

/// Raises ErroreProgramma (kFileMancante) when the file is not there, is no plain file, or cannot be read.
void RichiediFileLeggibile(const std::string& file);

/// A date from "gg/mm/aaaa" or "aaaa-mm-gg". Raises ErroreProgramma (kComandoErrato).
[[nodiscard]] host::DataOra LeggiData(const std::string& testo);

/// Raises ErroreProgramma (kComandoErrato) when the text is no valid UTF-8; `opzione` names it.
void RichiediUtf8(const std::string& testo, const std::string& opzione);

}  // namespace orve::app
