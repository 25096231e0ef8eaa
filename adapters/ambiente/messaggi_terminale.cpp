#include "ambiente/messaggi_terminale.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "mime/header_text.h"

namespace orve::adapters::ambiente {

namespace {

struct Risposta {
  std::int32_t valore;
  std::string_view testo;
};

constexpr Risposta kOk{1, "OK"};
constexpr Risposta kAnnulla{2, "Annulla"};
constexpr Risposta kTermina{3, "Termina"};
constexpr Risposta kRiprova{4, "Riprova"};
constexpr Risposta kIgnora{5, "Ignora"};
constexpr Risposta kSi{6, "Sì"};
constexpr Risposta kNo{7, "No"};

// The low bits of a style choose the buttons.
std::vector<Risposta> Risposte(std::int32_t stile) {
  switch (stile & 7) {
    case 1:
      return {kOk, kAnnulla};
    case 2:
      return {kTermina, kRiprova, kIgnora};
    case 3:
      return {kSi, kNo, kAnnulla};
    case 4:
      return {kSi, kNo};
    case 5:
      return {kRiprova, kAnnulla};
    default:
      return {kOk};
  }
}

std::size_t Predefinita(std::int32_t stile, std::size_t quante) {
  const auto indice = static_cast<std::size_t>((stile >> 8) & 3);
  return std::min(indice, quante - 1);
}

std::string_view Figura(std::int32_t stile) {
  switch (stile & 0x70) {
    case host::kCritico:
      return "Errore: ";
    case host::kAvviso:
      return "Avviso: ";
    case host::kInformazione:
      return "Informazione: ";
    default:
      return "";
  }
}

// The position of the answer chosen.
std::size_t Chiedi(std::istream& ingresso, std::ostream& uscita, const std::vector<Risposta>& risposte,
                   std::size_t predefinita) {
  constexpr int kTentativi = 3;
  for (int tentativo = 0; tentativo < kTentativi; ++tentativo) {
    for (std::size_t i = 0; i < risposte.size(); ++i) {
      uscita << "  " << i + 1 << ") " << risposte[i].testo;
    }
    uscita << "  [" << predefinita + 1 << "]: " << std::flush;
    std::string riga;
    if (!std::getline(ingresso, riga) || riga.empty()) return predefinita;
    const std::size_t scelta =
        riga.size() == 1 ? static_cast<std::size_t>(riga.front() - '1') : risposte.size();
    if (scelta < risposte.size()) return scelta;
  }
  return predefinita;
}

}  // namespace

std::string MessaggiTerminale::TitoloFinestra(const std::string& testo) {
  return testo.empty() ? programma_ : programma_ + " - " + testo;
}

std::int32_t MessaggiTerminale::MostraMsg(const std::string& testo, std::int32_t stile,
                                          const std::string& titolo,
                                          const std::shared_ptr<host::Oggetto>& /*proprietario*/) {
  const std::vector<Risposta> risposte = Risposte(stile);
  const std::size_t predefinita = Predefinita(stile, risposte.size());
  if (uscita_ == nullptr) return risposte[predefinita].valore;
  *uscita_ << Figura(stile) << mime::TerminalSafe(testo);
  if (!titolo.empty()) *uscita_ << " [" << mime::TerminalSafeLine(titolo) << "]";
  *uscita_ << std::endl;
  const bool daChiedere = risposte_ != nullptr && risposte.size() > 1;
  return risposte[daChiedere ? Chiedi(*risposte_, *uscita_, risposte, predefinita) : predefinita].valore;
}

}  // namespace orve::adapters::ambiente
