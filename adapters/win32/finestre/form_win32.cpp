#include "win32/finestre/form_win32.h"

#include <shellapi.h>

#include <algorithm>
#include <iterator>
#include <utility>

#include "forms/lettura_tavola.h"
#include "text/text.h"
#include "win32/finestre/controlli_win32.h"
#include "win32/finestre/finestre.h"
#include "win32/finestre/messaggi.h"
#include "win32/finestre/nomi_accessibili.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

HWND ManigliaDi(host::Oggetto* oggetto) {
  auto* form = dynamic_cast<FormWin32*>(oggetto);
  return form != nullptr ? form->Maniglia() : nullptr;
}

int IdentificatoreDi(const host::LayoutForm& layout, std::string_view nome) {
  const auto trovato = std::find_if(layout.controlli.begin(), layout.controlli.end(), [&](const auto& riga) {
    return text::EqualsIgnoreCase(riga.nome, nome);
  });
  if (trovato == layout.controlli.end()) return 0;
  return kPrimoControllo + static_cast<int>(std::distance(layout.controlli.begin(), trovato));
}

FormWin32::FormWin32(const host::LayoutForm& layout, const std::shared_ptr<forms::FileLasciati>& lasciati)
    : Form(layout, lasciati), finestra_(std::make_shared<Finestra>(layout)) {
  Costruisci(layout);
  Disponi(layout);
  finestra_->Ridimensionata = [this] { Segui(); };
  finestra_->Attivata = [this] { Protetta(finestra_->Maniglia(), [this] { Attivata(); }); };
  finestra_->Chiusa = [this] { Protetta(nullptr, [this] { Chiudi(); }); };
  finestra_->Abbandonata = [this] { Azione([this] { Abbandona(); }); };
  finestra_->CambiatoDpi = [this] {
    for (auto* elemento : Elementi()) {
      dynamic_cast<Elemento*>(elemento)->CambiaCarattere();
      elemento->Posa();
    }
  };
  if (lasciati) {
    finestra_->Lasciati = [this](const std::vector<std::string>& file) { Allega(file); };
  } else {
    DragAcceptFiles(finestra_->Maniglia(), FALSE);
  }
}

FormWin32::~FormWin32() {
  // A control may outlive its form, and the window with it.
  finestra_->Ridimensionata = nullptr;
  finestra_->Attivata = nullptr;
  finestra_->Chiusa = nullptr;
  finestra_->Abbandonata = nullptr;
  finestra_->CambiatoDpi = nullptr;
  finestra_->Lasciati = nullptr;
  finestra_->Nascondi();
}

std::shared_ptr<host::Controllo> FormWin32::CreaControllo(const host::LayoutForm& layout,
                                                          const host::LayoutControllo& riga,
                                                          forms::Elemento* cornice) {
  auto* padre = cornice == nullptr ? finestra_->Maniglia() : ManigliaDi(*cornice);
  auto controllo = finestre::CreaControllo({finestra_, padre, IdentificatoreDi(layout, riga.nome)}, riga,
                                           riga.nome == layout.pulsanteConferma);
  dynamic_cast<Elemento&>(*controllo).Posa();
  return controllo;
}

void FormWin32::Disponi(const host::LayoutForm& layout) const {
  std::vector<HWND> ordine;
  for (const auto* elemento : OrdineDiTastiera(layout)) ordine.push_back(ManigliaDi(*elemento));
  finestra_->OrdinaTastiera(ordine);
  NomiAccessibili nomi;
  for (const auto* elemento : Elementi()) {
    nomi.Da(ManigliaDi(*elemento), Largo(forms::NomeAccessibile(layout, elemento->tavola)));
  }
}

forms::Form::Misura FormWin32::Interno() const {
  const SIZE misura = finestra_->Misura();
  return {static_cast<int>(misura.cx), static_cast<int>(misura.cy)};
}

void FormWin32::Mostra(bool modale, host::Form* proprietario) {
  auto* padrone = ManigliaDi(proprietario);
  finestra_->Mostra(padrone != nullptr ? padrone : GetActiveWindow(), modale);
}

void FormWin32::ChiudiDallaCornice() {
  if (finestra_->Chiusa) finestra_->Chiusa();
}

std::int32_t FormWin32::Chiede(const std::string& testo, std::int32_t stile, const std::string& titolo) {
  return MostraCasella(testo, stile, titolo, finestra_->Maniglia());
}

bool FormWin32::Premibile(const forms::Elemento& elemento) const {
  auto* maniglia = ManigliaDi(elemento);
  return IsWindowVisible(maniglia) != FALSE && IsWindowEnabled(maniglia) != FALSE &&
         IsWindowEnabled(finestra_->Maniglia()) != FALSE;
}

}  // namespace orve::adapters::win32::finestre
