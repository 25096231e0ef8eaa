// What an instance trace tells: the lines of birth and death of the library's objects, paired by their
// identifiers.
//
// A trace may hold the lines of several programs and instances in any mixture, lines of other programs, and
// system-log text before a line. Memory grows with the number of objects alive at one time, not with the
// length of the trace.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <istream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace orve::app {

/// The classes that trace their objects.
inline constexpr std::array<std::string_view, 7> kClassiTracciate = {
    "CLSFW_MAILSERVER", "CollDestinatari", "Destinatario",    "CollMittenti",
    "Mittente",         "FRMRW_OPZMAIL",   "FRMFW_MAILPARAMS"};

/// A birth without a death.
struct MaiRilasciato {
  std::uint64_t riga = 0;  // from 1
  std::string identificatore;
};

/// A line that pairs with nothing.
struct Anomalia {
  std::uint64_t riga = 0;
  std::string testo;
};

class ControlloTraccia {
 public:
  static constexpr std::size_t kAnomalieTenute = 20;
  static constexpr std::size_t kRigaMassima = 4096;  // in bytes; anything beyond is ignored

  /// Reads to the end of the stream. Lines end in line feed, optionally preceded by a carriage return.
  void Leggi(std::istream& flusso);
  /// One line, without its end; `troncata` if it is only the beginning of a longer one.
  void Riga(std::string_view riga, bool troncata = false);

  [[nodiscard]] std::uint64_t Creati() const { return creati_; }
  [[nodiscard]] std::uint64_t Rilasciati() const { return rilasciati_; }
  /// Lines that are not trace lines of the library; empty ones are not counted.
  [[nodiscard]] std::uint64_t Estranee() const { return estranee_; }
  /// How many lines pair with nothing, and the first of them.
  [[nodiscard]] std::uint64_t NumeroAnomalie() const { return numeroAnomalie_; }
  [[nodiscard]] const std::vector<Anomalia>& Anomalie() const { return anomalie_; }
  /// The objects that are still alive, by class in the order of kClassiTracciate, each by line.
  [[nodiscard]] std::array<std::vector<MaiRilasciato>, kClassiTracciate.size()> MaiRilasciati() const;

 private:
  struct Aperto {
    std::uint64_t riga;
    std::size_t classe;
  };

  void Nato(const std::string& identificatore, std::size_t classe);
  void Morto(const std::string& identificatore, std::size_t classe);
  void Annota(std::string testo);

  std::uint64_t riga_ = 0;
  std::uint64_t creati_ = 0;
  std::uint64_t rilasciati_ = 0;
  std::uint64_t estranee_ = 0;
  std::uint64_t numeroAnomalie_ = 0;
  std::vector<Anomalia> anomalie_;
  std::unordered_map<std::string, Aperto> aperti_;
  // Births without an identifier, which happen when the system gives none; the death may still have one.
  std::array<std::deque<std::uint64_t>, kClassiTracciate.size()> senzaIdentificatore_;
};

}  // namespace orve::app
