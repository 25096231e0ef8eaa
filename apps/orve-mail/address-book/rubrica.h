// The address book's data: who is in the application's master data and under which addresses, and the search
// in it. The window that shows it is elsewhere, and so is the database behind the connection.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/data_ora.h"

namespace orve::app {

enum class Genere { kCliente, kFornitore, kAgente, kContatto };

/// "Cliente", "Fornitore", "Agente", "Contatto".
[[nodiscard]] std::string_view NomeGenere(Genere genere);

struct IndirizzoDiParte {
  std::string indirizzo;
  std::string destinazione;  // the goods destination that it belongs to; empty: the party's own
};

/// One line of the book.
struct Parte {
  Genere genere = Genere::kCliente;
  std::string codice;
  std::string nome;
  std::string dettaglio;                    // town and province; for a contact, the companies it belongs to
  std::vector<IndirizzoDiParte> indirizzi;  // the party's own first, no duplicates
  std::string ricerca;                      // all of this, as PerRicerca has it
};

struct RichiestaParti {
  std::optional<std::int32_t> ditta;  // none: the partners and agents of every company
  bool pec = false;                   // which addresses: certified or ordinary
  host::DataOra data;                 // the day for which a partner's master data apply
};

/// Everybody, by name. Raises what the connection raises.
[[nodiscard]] std::vector<Parte> LeggiParti(host::Connection& connessione, const RichiestaParti& richiesta);

/// The addresses that a column of the master data holds: separated by ";", by commas or by line breaks, each
/// alone or between "<" and ">" after a name.
[[nodiscard]] std::vector<std::string> SeparaIndirizzi(std::string_view colonna);

/// Which addresses of a party are taken unless the person says otherwise: all of its own; the first one for a
/// party that has none of its own.
[[nodiscard]] std::vector<bool> IndirizziConsueti(const Parte& parte);

/// The text as the search compares it: without case, accents and different apostrophes.
[[nodiscard]] std::string PerRicerca(std::string_view testo);

struct Filtro {
  std::string testo = {};  // each of its words occurs somewhere in the party's line
  std::optional<Genere> genere = {};
  bool soloConIndirizzo = false;
};

/// The positions of the matching parties, in their order.
[[nodiscard]] std::vector<std::size_t> Filtra(const std::vector<Parte>& parti, const Filtro& filtro);

}  // namespace orve::app
