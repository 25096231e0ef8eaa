// The texts that the channels make of the recipients and attachments of one message, where channels agree on
// their form. A form that only one channel uses is with that channel.
#pragma once

#include <string>
#include <string_view>

#include "orve-mailserver/addressing/destinatari.h"

namespace orve {

/// The recipients of one message by box: entries of a name, " <", an address and ">", joined by ";".
struct ElenchiDestinatari {
  std::string a;
  std::string cc;
  std::string ccn;
};

/// Appends a value that is not empty, and ", " after it.
void AccodaConVirgola(std::string& campo, std::string_view valore);
/// Cuts the last two characters, whatever they are; a shorter text is emptied.
void TogliUltimaVirgola(std::string& campo);

/// Appends a path, after a "|" when the list already holds something.
void AccodaPercorso(std::string& elenco, std::string_view percorso);

/// One A recipient: its entry goes into the list of the A recipients, its name to the others' names.
void AccodaDestinatarioA(const Destinatario& destinatario, std::string& elencoA, std::string& nomi);

/// How a channel writes name and address of an entry.
struct TestiVoce {
  std::string nome;
  std::string indirizzo;
};

/// Puts the recipients into the lists of their boxes, in their order. The names of the A recipients go after
/// whatever `nomi` holds, and their last two characters are always cut. An unknown box counts as A, but
/// its entry has the ";" after it and none before it.
void RipartisciDestinatari(const CollDestinatari& destinatari, TestiVoce (*testi)(const Destinatario&),
                           ElenchiDestinatari& elenchi, std::string& nomi);

}  // namespace orve
