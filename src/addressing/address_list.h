// The lists in which recipients are passed as text: items of a display name, "<", the address and ">",
// separated by ";" without blanks. There is no quoting, so a ";" inside a name splits the item in two.
//
// The reader here is the lenient one, for lists that a program has written. It takes whatever it can make
// sense of; callers rely on what it does with the rest, so that must not be fixed here.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orve {

/// What separates name and address; some channels' lists and records have a blank before it.
inline constexpr std::string_view kApertura = "<";
inline constexpr std::string_view kAperturaConBianco = " <";

/// An item; an empty name or address gets no special treatment.
[[nodiscard]] std::string VoceElenco(std::string_view nome, std::string_view indirizzo,
                                     std::string_view apertura = kApertura);
/// Appends an item as it is, or after a ";" when the list already holds something.
void AccodaVoce(std::string& elenco, std::string_view nome, std::string_view indirizzo,
                std::string_view apertura = kApertura);
void AccodaVoceSeparata(std::string& elenco, std::string_view nome, std::string_view indirizzo,
                        std::string_view apertura = kApertura);

class AddressListReader {
 public:
  using Aggiungi = std::function<void(const std::string& indirizzo, const std::string& nome)>;

  /// Calls `aggiungi` for each item with an address, in the order of the list. A bare address takes the name
  /// of the previous item, even if that item was in a list read earlier; an address without ">" runs to the
  /// end of its item. Raises 6 for more than 32767 items or a position beyond that, and 5 for an item whose
  /// ">" precedes its "<", after the preceding items have been passed on.
  void Leggi(std::string_view elenco, const Aggiungi& aggiungi);

 private:
  std::string nome_;
};

}  // namespace orve
