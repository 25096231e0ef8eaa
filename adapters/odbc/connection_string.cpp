#include "odbc/connection_string.h"

#include <algorithm>

#include "text/text.h"

namespace orve::adapters::odbc {

namespace {

// One keyword=value at a time. In a value that begins with a brace, ";" is an ordinary character until the
// closing brace; two closing braces are one.
class Reader {
 public:
  explicit Reader(std::string_view stringa) : resto_(stringa) {}

  bool Prossima() {
    while (!resto_.empty() && (resto_.front() == ';' || resto_.front() == ' ')) resto_.remove_prefix(1);
    if (resto_.empty()) return false;
    const std::size_t uguale = std::min(resto_.find_first_of("=;"), resto_.size());
    chiave = text::FoldCase(text::Trim(resto_.substr(0, uguale)));
    resto_.remove_prefix(uguale);
    grezzo.clear();
    valore.clear();
    if (resto_.empty() || resto_.front() == ';') return true;
    resto_.remove_prefix(1);
    const std::size_t bianchi = std::min(resto_.find_first_not_of(' '), resto_.size());
    const bool traParentesi = bianchi < resto_.size() && resto_[bianchi] == '{';
    const std::size_t fine =
        traParentesi ? FineParentesi(bianchi + 1) : std::min(resto_.find(';'), resto_.size());
    grezzo = std::string(text::Trim(resto_.substr(0, fine)));
    if (!traParentesi) valore = grezzo;
    resto_.remove_prefix(fine);
    return true;
  }

  std::string chiave;
  std::string grezzo;
  std::string valore;

 private:
  std::size_t FineParentesi(std::size_t posto) {
    for (; posto < resto_.size(); ++posto) {
      if (resto_[posto] == '}') {
        if (posto + 1 == resto_.size() || resto_[posto + 1] != '}') {
          return std::min(resto_.find(';', posto), resto_.size());
        }
        ++posto;
      }
      valore += resto_[posto];
    }
    return resto_.size();
  }

  std::string_view resto_;
};

}  // namespace

std::vector<std::string> Segreti(std::string_view stringaConnessione) {
  std::vector<std::string> segreti;
  const auto aggiungi = [&](const std::string& segreto) {
    if (!segreto.empty()) segreti.push_back(segreto);
  };
  const std::string pwd = text::FoldCase("pwd");
  const std::string password = text::FoldCase("password");
  for (Reader lettore(stringaConnessione); lettore.Prossima();) {
    if (lettore.chiave != pwd && lettore.chiave != password) continue;
    aggiungi(lettore.grezzo);
    aggiungi(lettore.valore);
    aggiungi(text::Replace(lettore.valore, "}", "}}"));  // as it is between the braces
  }
  std::sort(segreti.begin(), segreti.end(),
            [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
  segreti.erase(std::unique(segreti.begin(), segreti.end()), segreti.end());
  return segreti;
}

}  // namespace orve::adapters::odbc
