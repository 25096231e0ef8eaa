// The lists in which recipients travel as text: items of a display name, "<", the address and ">", separated
// by ";" without blanks. There is no quoting, so that a ";" inside a name splits its item in two.
//
// The reader here is the lenient one, for lists that a program has written. It takes whatever it can make
// sense of; what it does with the rest is relied on by callers and may not be mended here.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orve {

/// What stands between name and address; some channels' lists and records have a blank in front.
inline constexpr std::string_view kApertura = "<";
inline constexpr std::string_view kAperturaConBianco = " <";

/// An item; empty name and address count as any other.
[[nodiscard]] std::string VoceElenco(std::string_view nome, std::string_view indirizzo,
                                     std::string_view apertura = kApertura);
/// Appends an item as it is, or after a ";" when the list already holds something.
void AccodaVoce(std::string& elenco, std::string_view nome, std::string_view indirizzo,
                std::string_view apertura = kApertura);
void AccodaVoceSeparata(std::string& elenco, std::string_view nome, std::string_view indirizzo,
                        std::string_view apertura = kApertura);

class LettoreElenchi {
 public:
  using Aggiungi = std::function<void(const std::string& indirizzo, const std::string& nome)>;

  /// Calls `aggiungi` for each item with an address, in the order of the list. A bare address has the name of
  /// the item before, also if that one stood in a list read before; an address without ">" runs to the end of
  /// its item. Raises 6 for more than 32767 items or a position beyond that, and 5 for an item whose ">"
  /// stands before its "<", after the items in front of it.
  void Leggi(std::string_view elenco, const Aggiungi& aggiungi);

 private:
  std::string nome_;
};

}  // namespace orve
