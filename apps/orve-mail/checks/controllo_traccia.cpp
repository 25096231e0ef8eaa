#include "orve-mail/checks/controllo_traccia.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orve::app {

namespace {

constexpr std::string_view kSegnoEvento = "QLNA:|";
constexpr std::string_view kProgetto = "ORVE_MAILSERVER";
constexpr std::size_t kCampiEvento = 4;  // identifier, event, project, class
constexpr std::size_t kCifre = 32;

// The fields after the marker; none when there are more or fewer.
std::optional<std::array<std::string_view, kCampiEvento>> Campi(std::string_view testo) {
  std::array<std::string_view, kCampiEvento> campi;
  for (std::size_t i = 0; i < kCampiEvento; ++i) {
    const std::size_t fine = testo.find('|');
    const bool ultimo = i + 1 == kCampiEvento;
    if (ultimo != (fine == std::string_view::npos)) return std::nullopt;
    campi.at(i) = testo.substr(0, fine);
    if (!ultimo) testo.remove_prefix(fine + 1);
  }
  return campi;
}

bool Identificatore(std::string_view testo) {
  const bool cifre = std::all_of(testo.begin(), testo.end(),
                                 [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); });
  return testo.empty() || (cifre && testo.size() == kCifre);
}

}  // namespace

void ControlloTraccia::Leggi(std::istream& flusso) {
  std::string blocco(64UL * 1024, '\0');
  std::string riga;
  bool troncata = false;
  const auto aggiungi = [&](std::string_view pezzo) {
    const std::size_t posto = kRigaMassima - riga.size();
    troncata = troncata || pezzo.size() > posto;
    riga.append(pezzo.substr(0, posto));
  };
  const auto chiudi = [&] {
    Riga(riga, troncata);
    riga.clear();
    troncata = false;
  };
  while (flusso.read(blocco.data(), static_cast<std::streamsize>(blocco.size())) || flusso.gcount() > 0) {
    std::string_view resto(blocco.data(), static_cast<std::size_t>(flusso.gcount()));
    for (std::size_t fine = resto.find('\n'); fine != std::string_view::npos; fine = resto.find('\n')) {
      aggiungi(resto.substr(0, fine));
      chiudi();
      resto.remove_prefix(fine + 1);
    }
    aggiungi(resto);
  }
  if (!riga.empty()) chiudi();
}

void ControlloTraccia::Riga(std::string_view riga, bool troncata) {
  ++riga_;
  if (!riga.empty() && riga.back() == '\r') riga.remove_suffix(1);
  const std::size_t segno = riga.find(kSegnoEvento);
  if (segno == std::string_view::npos) {
    if (!riga.empty()) ++estranee_;
    return;
  }
  const auto campi = Campi(riga.substr(segno + kSegnoEvento.size()));
  if (!campi || troncata) return Annota("riga di traccia malformata");
  const auto [identificatore, evento, progetto, classe] = *campi;
  if (progetto != kProgetto) {
    ++estranee_;
    return;
  }
  const auto* const trovata = std::find(kClassiTracciate.begin(), kClassiTracciate.end(), classe);
  const bool nato = evento == "INI";
  if (trovata == kClassiTracciate.end() || !Identificatore(identificatore) || (!nato && evento != "TER")) {
    return Annota("riga di traccia malformata");
  }
  const auto indice = static_cast<std::size_t>(trovata - kClassiTracciate.begin());
  if (nato) {
    Nato(std::string(identificatore), indice);
  } else {
    Morto(std::string(identificatore), indice);
  }
}

void ControlloTraccia::Nato(const std::string& identificatore, std::size_t classe) {
  if (identificatore.empty()) {
    senzaIdentificatore_.at(classe).push_back(riga_);
  } else if (!aperti_.emplace(identificatore, Aperto{riga_, classe}).second) {
    return Annota("INI ripetuto di " + identificatore);
  }
  ++creati_;
}

void ControlloTraccia::Morto(const std::string& identificatore, std::size_t classe) {
  const auto aperto = aperti_.find(identificatore);
  if (aperto != aperti_.end()) {
    if (aperto->second.classe != classe) {
      return Annota("TER di " + identificatore + " con un'altra classe della riga " +
                    std::to_string(aperto->second.riga));
    }
    aperti_.erase(aperto);
  } else {
    auto& senza = senzaIdentificatore_.at(classe);
    if (senza.empty()) {
      return Annota("TER senza INI, o ripetuto" +
                    (identificatore.empty() ? std::string() : ", di " + identificatore));
    }
    senza.pop_front();
  }
  ++rilasciati_;
}

void ControlloTraccia::Annota(std::string testo) {
  ++numeroAnomalie_;
  if (anomalie_.size() < kAnomalieTenute) anomalie_.push_back({riga_, std::move(testo)});
}

std::array<std::vector<MaiRilasciato>, kClassiTracciate.size()> ControlloTraccia::MaiRilasciati() const {
  std::array<std::vector<MaiRilasciato>, kClassiTracciate.size()> mai;
  for (const auto& [identificatore, aperto] : aperti_) {
    mai.at(aperto.classe).push_back({aperto.riga, identificatore});
  }
  for (std::size_t classe = 0; classe < mai.size(); ++classe) {
    for (const std::uint64_t riga : senzaIdentificatore_.at(classe)) mai.at(classe).push_back({riga, ""});
    std::sort(mai.at(classe).begin(), mai.at(classe).end(),
              [](const MaiRilasciato& uno, const MaiRilasciato& altro) { return uno.riga < altro.riga; });
  }
  return mai;
}

}  // namespace orve::app
