// The result file of a list: what became of each row, kept so that no crash loses it and no row is sent
// twice.
//
// A line of the file is a row of the list. Its first half is on disk before the message is sent, its second
// half afterwards; a line without its second half is a message that may or may not have been sent.
#pragma once

#include <sys/types.h>

#include <array>
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "posix/descriptor.h"

namespace orve::app {

enum class EsitoRiga {
  kInviato,
  kConRiserva,  // the message was sent, but something else went wrong
  kRifiutato,   // by the library, before it was sent
  kFallito,     // it was not sent, or the server did not accept it
  kMalformata,  // no message could be made from the row
  kIncerto,     // it is not known whether the server accepted it
};

/// As written in the file.
[[nodiscard]] std::string_view Parola(EsitoRiga esito);

/// Whether such a row must not be sent again automatically.
[[nodiscard]] bool Definitivo(EsitoRiga esito);

struct EsitoRegistrato {
  EsitoRiga esito = EsitoRiga::kIncerto;
  std::string impronta;  // of the row as it was then
};

/// The file has a line of titles, which also holds the list's identifier, and one line for each row: its
/// line in the list, its fingerprint, the recipient, when the message was handed over (UTC; empty: it was
/// not), outcome and reason, separated by ";". A row that is retried gets a new line; the old one is dropped
/// when the file is closed.
///
/// All operations raise ErroreProgramma (kFileMancante) when the file cannot be read or written.
class EsitiLista {
 public:
  /// Opens or creates the file and keeps others out of it. `nuovaLista` is the identifier for a new file: at
  /// most 64 printable ASCII characters without ";" and blanks. A last line without its second half becomes
  /// "incerto". Also raises when another run holds the file, and when it is damaged or not such a file.
  EsitiLista(std::string file, const std::string& nuovaLista);
  EsitiLista(const EsitiLista&) = delete;
  EsitiLista& operator=(const EsitiLista&) = delete;
  EsitiLista(EsitiLista&&) = delete;
  EsitiLista& operator=(EsitiLista&&) = delete;
  ~EsitiLista();

  [[nodiscard]] const std::string& Lista() const { return lista_; }
  [[nodiscard]] std::size_t Quante() const { return voci_.size(); }
  /// What the file says of a row of the list.
  [[nodiscard]] std::optional<EsitoRegistrato> Cerca(std::size_t riga) const;
  /// The rows that must not be sent again, in ascending order.
  [[nodiscard]] std::vector<std::size_t> Definitive() const;

  /// The first half of a row's line, on disk when this returns. There is then room for the second half, as
  /// far as the file system can promise it.
  void Inizia(std::size_t riga, const std::string& impronta, const std::string& destinatario);
  /// The second half of the line begun last, on disk when this returns.
  void Concludi(EsitoRiga esito, const std::string& motivo);
  /// A whole line, for a row for which no message was handed over.
  void Annota(std::size_t riga, const std::string& impronta, const std::string& destinatario, EsitoRiga esito,
              const std::string& motivo);

  /// Leaves one line for each row, in the order of the list. If that cannot be done the file stays as it is,
  /// which will do just as well.
  void Riordina() noexcept;

 private:
  static constexpr std::size_t kCifreImpronta = 32;
  struct Voce {
    off_t posizione = 0;
    std::size_t lunghezza = 0;
    EsitoRiga esito = EsitoRiga::kIncerto;
    std::array<char, kCifreImpronta> impronta{};
  };
  struct Inizio {  // of the line begun and not yet ended
    std::size_t riga = 0;
    std::string impronta;
    off_t posizione = 0;
  };

  [[noreturn]] void Inutilizzabile(const std::string& motivo) const;
  void Apri();
  void Carica();
  void CaricaLinea(std::string_view linea, off_t posizione);
  void CaricaTitoli(std::string_view linea);
  void Crea(const std::string& nuovaLista);
  void Ripara(std::string_view coda);
  void Riserva();
  void Scrivi(std::string_view testo);
  void Sincronizza() const;
  [[nodiscard]] adapters::posix::Descriptor ScriviRiordinato(const std::string& nuovo) const;

  std::string file_;
  std::string lista_;
  std::map<std::size_t, Voce> voci_;
  std::size_t linee_ = 0;  // below the titles
  std::optional<Inizio> inizio_;
  off_t fine_ = 0;       // of the file
  off_t riservato_ = 0;  // up to where the file system promised room
  adapters::posix::Descriptor descrittore_;
};

}  // namespace orve::app
