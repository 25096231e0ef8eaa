// The lists in which recipients travel as text: items of a display name, "<", the address and ">", separated
// by ";" without blanks. There is no quoting, so that a ";" inside a name splits its item in two.
//
// This is the lenient reader, for lists that a program has written. It takes whatever it can make sense of;
// what it does with the rest is relied on by callers and may not be mended here.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace orve {

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
