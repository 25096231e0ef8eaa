// The one journal in which every fake records what is asked of it, so that a test can assert the order across
// objects; also the place where a test makes an operation fail.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orve-mailserver/host/errore.h"
#include "service/guards.h"

namespace orve::fakes {

class Journal {
 public:
  /// Records one call, as "object.Operation arguments", then runs what a test has planned for it.
  void Add(const std::string& riga) {
    righe_.push_back(riga);
    const auto piani = piani_;  // a copy: a plan may add further plans
    for (const auto& [inizio, azione] : piani) {
      if (riga.starts_with(inizio)) azione();
    }
  }

  /// From now on each call whose line starts with `inizio` also runs `azione`, which may raise an Errore.
  void Quando(std::string inizio, std::function<void()> azione) {
    piani_.emplace_back(std::move(inizio), std::move(azione));
  }
  /// From now on each such call fails with this error.
  void Fallisce(std::string inizio, host::Errore errore = {1001, "Prova", "guasto di prova"}) {
    Quando(std::move(inizio), [errore = std::move(errore)] { throw errore; });
  }
  void DimenticaPiani() { piani_.clear(); }

  [[nodiscard]] const std::vector<std::string>& Righe() const { return righe_; }
  /// The lines that start with one of the texts, in their order.
  [[nodiscard]] std::vector<std::string> Righe(const std::vector<std::string_view>& inizi) const {
    std::vector<std::string> scelte;
    for (const auto& riga : righe_) {
      for (const auto inizio : inizi) {
        if (!riga.starts_with(inizio)) continue;
        scelte.push_back(riga);
        break;
      }
    }
    return scelte;
  }
  [[nodiscard]] std::size_t Conta(std::string_view inizio) const { return Righe({inizio}).size(); }
  void Svuota() { righe_.clear(); }

 private:
  std::vector<std::string> righe_;
  std::vector<std::pair<std::string, std::function<void()>>> piani_;
};

using JournalPtr = std::shared_ptr<Journal>;

/// Member of a fake whose end matters to a test: then a line "rilascio object" goes into the journal.
class Rilascio {
 public:
  Rilascio(JournalPtr journal, std::string oggetto)
      : journal_(std::move(journal)), oggetto_(std::move(oggetto)) {}
  Rilascio(const Rilascio&) = delete;
  Rilascio& operator=(const Rilascio&) = delete;
  ~Rilascio() {
    IgnoraErrori([&] { journal_->Add("rilascio " + oggetto_); });
  }

 private:
  JournalPtr journal_;
  std::string oggetto_;
};

/// The object, with a line "rilascio `nome`" in the journal once it is released.
template <class T>
[[nodiscard]] std::shared_ptr<T> ConRilascio(const JournalPtr& journal, std::shared_ptr<T> oggetto,
                                             const std::string& nome) {
  T* const nudo = oggetto.get();
  return {nudo, [oggetto = std::move(oggetto), journal, nome](T* /*nudo*/) mutable {
            oggetto.reset();
            IgnoraErrori([&] { journal->Add("rilascio " + nome); });
          }};
}

}  // namespace orve::fakes
