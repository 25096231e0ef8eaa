#include "win32/finestre/messaggi.h"

#include <algorithm>
#include <utility>

#include "forms/messaggi.h"
#include "forms/testo_visibile.h"
#include "text/text.h"
#include "win32/finestre/aspetto.h"
#include "win32/finestre/form_win32.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr std::size_t kTestoIntero = 2000;  // characters
constexpr std::size_t kRigheIntere = 30;

// A box taller than the screen would hide its own buttons.
std::string Mostrabile(const std::string& testo) {
  std::string_view parte = text::Left(testo, kTestoIntero);
  std::size_t righe = 0;
  for (std::size_t i = 0; i < parte.size(); ++i) {
    if (parte[i] == '\n' && ++righe == kRigheIntere) parte = parte.substr(0, i);
  }
  return parte.size() < testo.size() ? std::string(parte).append("…") : testo;
}

std::wstring TitoloDi(HWND finestra) {
  std::wstring titolo(static_cast<std::size_t>(GetWindowTextLengthW(finestra)), L'\0');
  if (!titolo.empty()) GetWindowTextW(finestra, titolo.data(), static_cast<int>(titolo.size()) + 1);
  return titolo;
}

}  // namespace

// The styles are those of Windows. An empty title stays empty; Windows would supply one of its own.
std::int32_t MostraCasella(const std::string& testo, std::int32_t stile, const std::string& titolo,
                           HWND proprietario) {
  auto* padrone = proprietario != nullptr ? proprietario : GetActiveWindow();
  auto come = static_cast<UINT>(stile);
  if (padrone == nullptr) come |= MB_TASKMODAL | MB_SETFOREGROUND;
  const ContestoVisuale contesto;
  const HCURSOR prima = SetCursor(LoadCursorW(nullptr, IDC_ARROW));
  const int risposta = MessageBoxW(padrone, Largo(Mostrabile(forms::TestoVisibile(testo))).c_str(),
                                   titolo.empty() ? L" " : Largo(forms::TestoVisibile(titolo)).c_str(), come);
  SetCursor(prima);
  return risposta;
}

void Protetta(HWND finestra, const std::function<void()>& azione) {
  forms::Protetta(
      azione,
      [finestra](const std::string& testo) {
        MostraCasella(testo, host::kCritico, Stretto(TitoloDi(finestra)), finestra);
      },
      OutputDebugStringA);
}

std::shared_ptr<host::Messaggi> CreaMessaggi(std::string programma) {
  return std::make_shared<forms::Messaggi>(
      std::move(programma), [](const std::string& testo, std::int32_t stile, const std::string& titolo,
                               host::Oggetto* proprietario) {
        return MostraCasella(testo, stile, titolo, ManigliaDi(proprietario));
      });
}

}  // namespace orve::adapters::win32::finestre
