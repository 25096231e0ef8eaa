// The fixture of whole commands with windows: the command line in this process, so that the test can be the
// person at its windows; database and servers as in every whole send.
#pragma once

#include <QWidget>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "adapters/qt/mani.h"
#include "apps/orve-mail/prova_intera.h"
#include "orve-mail/commands/riga_di_comando.h"

namespace orve::app {

/// A variable of the environment, restored when the object is gone.
class Variabile {
 public:
  Variabile(const char* nome, const std::string& valore) : nome_(nome) {
    if (const char* prima = std::getenv(nome)) prima_ = prima;
    ::setenv(nome, valore.c_str(), 1);
  }
  Variabile(const Variabile&) = delete;
  Variabile& operator=(const Variabile&) = delete;
  Variabile(Variabile&&) = delete;
  Variabile& operator=(Variabile&&) = delete;
  ~Variabile() {
    if (prima_) {
      ::setenv(nome_, prima_->c_str(), 1);
    } else {
      ::unsetenv(nome_);
    }
  }

 private:
  const char* nome_;
  std::optional<std::string> prima_;
};

class ProvaConFinestre : public ProvaIntera {
 protected:
  using Regia = adapters::qt::Regia;

  [[nodiscard]] Esecuzione EseguiQui(const std::vector<std::string>& argomenti) const {
    const Variabile temporanea("TMPDIR", cartella.Path().string());
    const Variabile db("ORVE_MAIL_DB", Db());
    std::istringstream ingresso;
    std::ostringstream uscita;
    std::ostringstream errori;
    const Uscita stato = app::Esegui(argomenti, {ingresso, uscita, errori});
    return {static_cast<int>(stato), uscita.str(), errori.str()};
  }
  [[nodiscard]] Esecuzione InviaQui(std::vector<std::string> argomenti) const {
    argomenti.insert(argomenti.begin(), {"invia", "--ca", Ca()});
    return EseguiQui(argomenti);
  }

  /// What the person does in the next compose window; one that is still open then is closed.
  void NellaFinestra(Regia::Passo persona) { Nella("FRMRW_OPZMAIL", std::move(persona)); }
  void NeiParametri(Regia::Passo persona) { Nella("FRMFW_MAILPARAMS", std::move(persona)); }

  Regia regia;

 private:
  void Nella(const std::string& nome, Regia::Passo persona) {
    regia.Poi(nome, [persona = std::move(persona)](QWidget& finestra) {
      persona(finestra);
      adapters::qt::Respira();
      if (finestra.isVisible()) finestra.close();
    });
  }
};

}  // namespace orve::app
