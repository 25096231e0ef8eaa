#include "sqlite/collation.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstdint>

#include "sqlite/statement.h"

namespace orve::adapters::sqlite {

namespace {

// Beyond the last character of Unicode, so that a stray byte is equal to no character.
constexpr std::uint32_t kByteEstraneo = 0x110000;

std::string_view SenzaBianchiInFondo(std::string_view testo) {
  const auto ultimo = testo.find_last_not_of(' ');
  return ultimo == std::string_view::npos ? std::string_view() : testo.substr(0, ultimo + 1);
}

std::size_t LunghezzaSequenza(unsigned char primo) {
  if (primo < 0x80) return 1;
  if (primo >= 0xC2 && primo <= 0xDF) return 2;
  if (primo >= 0xE0 && primo <= 0xEF) return 3;
  if (primo >= 0xF0 && primo <= 0xF4) return 4;
  return 0;
}

// Takes the first character away from the text, which is not empty.
std::uint32_t Prendi(std::string_view& testo) {
  const auto primo = static_cast<unsigned char>(testo.front());
  const auto lunghezza = LunghezzaSequenza(primo);
  std::uint32_t carattere = lunghezza <= 1 ? primo : primo & (0xFFU >> (lunghezza + 1));
  bool buono = lunghezza != 0 && lunghezza <= testo.size();
  for (std::size_t i = 1; buono && i < lunghezza; ++i) {
    const auto seguito = static_cast<unsigned char>(testo[i]);
    buono = (seguito & 0xC0U) == 0x80U;
    carattere = (carattere << 6U) | (seguito & 0x3FU);
  }
  // Longer forms than a character needs are no UTF-8 either.
  buono = buono && !(lunghezza == 3 && carattere < 0x800) &&
          !(lunghezza == 4 && (carattere < 0x10000 || carattere >= kByteEstraneo));
  testo.remove_prefix(buono ? lunghezza : 1);
  return buono ? carattere : kByteEstraneo + primo;
}

std::uint32_t Minuscola(std::uint32_t carattere) {
  if (carattere >= 'A' && carattere <= 'Z') return carattere + 0x20;
  if (carattere >= 0xC0 && carattere <= 0xDE && carattere != 0xD7) return carattere + 0x20;
  if (carattere == 0x152 || carattere == 0x160 || carattere == 0x17D) return carattere + 1;  // Œ, Š, Ž
  if (carattere == 0x178) return 0xFF;                                                       // Ÿ
  return carattere;
}

int Confronta(void* /*contesto*/, int lunghezza1, const void* testo1, int lunghezza2, const void* testo2) {
  return ConfrontaItaliano({static_cast<const char*>(testo1), static_cast<std::size_t>(lunghezza1)},
                           {static_cast<const char*>(testo2), static_cast<std::size_t>(lunghezza2)});
}

}  // namespace

int ConfrontaItaliano(std::string_view primo, std::string_view secondo) noexcept {
  primo = SenzaBianchiInFondo(primo);
  secondo = SenzaBianchiInFondo(secondo);
  while (!primo.empty() && !secondo.empty()) {
    const auto a = Minuscola(Prendi(primo));
    const auto b = Minuscola(Prendi(secondo));
    if (a != b) return a < b ? -1 : 1;
  }
  if (primo.empty() && secondo.empty()) return 0;
  return primo.empty() ? -1 : 1;
}

void RegistraConfronto(sqlite3* database) {
  const int esito =
      sqlite3_create_collation_v2(database, kConfrontoItaliano, SQLITE_UTF8, nullptr, Confronta, nullptr);
  if (esito != SQLITE_OK) throw ErroreMotore(database, esito);
}

}  // namespace orve::adapters::sqlite
