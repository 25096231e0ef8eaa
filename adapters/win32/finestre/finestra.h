// The window behind a form: a Windows dialog, its message loop, and the routing of its controls' messages.
#pragma once

#include <windows.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "orve-mailserver/host/layout.h"
#include "win32/finestre/aspetto.h"

namespace orve::adapters::win32::finestre {

class Elemento;

/// While it lives, the other windows of this thread take no input, as with every modal window. Those that
/// took none before are left alone.
class FinestreSpente {
 public:
  explicit FinestreSpente(HWND tranne);
  FinestreSpente(const FinestreSpente&) = delete;
  FinestreSpente& operator=(const FinestreSpente&) = delete;
  FinestreSpente(FinestreSpente&&) = delete;
  FinestreSpente& operator=(FinestreSpente&&) = delete;
  ~FinestreSpente();

 private:
  std::vector<HWND> spente_;
};

class Finestra : public std::enable_shared_from_this<Finestra> {
 public:
  /// Raises 429 when Windows makes no window.
  explicit Finestra(const host::LayoutForm& layout);
  Finestra(const Finestra&) = delete;
  Finestra& operator=(const Finestra&) = delete;
  Finestra(Finestra&&) = delete;
  Finestra& operator=(Finestra&&) = delete;
  ~Finestra();

  [[nodiscard]] HWND Maniglia() const { return maniglia_; }  // null once Windows has destroyed it
  [[nodiscard]] int Dpi() const { return dpi_; }
  [[nodiscard]] HFONT Carattere() const { return font_.get(); }
  [[nodiscard]] HFONT CarattereTitoli() const { return fontTitoli_.get(); }
  [[nodiscard]] bool Visibile() const { return IsWindowVisible(maniglia_) != FALSE; }
  /// Whether the keyboard has just brought the focus where it is.
  [[nodiscard]] bool DaTastiera() const { return daTastiera_; }

  void Titolo(const std::string& titolo);
  /// Size of the client area, which is also the smallest that the person can make it, unless the screen is
  /// smaller.
  void Misura(SIZE interno);
  [[nodiscard]] SIZE Misura() const;

  /// The tab order, first to last.
  void OrdinaTastiera(const std::vector<HWND>& controlli) const;

  void Registra(HWND controllo, Elemento* elemento) { elementi_[controllo] = elemento; }
  void Dimentica(HWND controllo) { elementi_.erase(controllo); }

  /// Shows the window over its owner, which may be null, and in the modal case returns when it has been
  /// hidden. A request to quit the program closes it and is passed on.
  void Mostra(HWND proprietario, bool modale);
  void Nascondi();

  /// Runs what the person's action sets off, one action at a time. No exception may reach Windows: an error
  /// is shown to the person, and the window stays open.
  void Azione(const std::function<void()>& azione);

  /// Called before the focus is taken from a control that is about to be hidden or disabled.
  void LasciaFuoco(HWND controllo) const;

  std::function<void()> Ridimensionata;
  std::function<void()> Attivata;
  /// The person wants the window closed, or Windows has destroyed it.
  std::function<void()> Chiusa;
  /// The person hit Escape.
  std::function<void()> Abbandonata;
  /// The resolution has changed: fonts and places have to be computed again.
  std::function<void()> CambiatoDpi;
  std::function<void(const std::vector<std::string>&)> Lasciati;  // files dropped on the window

  static constexpr UINT kAttivata = WM_APP + 1;

 private:
  static INT_PTR CALLBACK Procedura(HWND maniglia, UINT messaggio, WPARAM wParam, LPARAM lParam);
  /// What the message is answered with; none for Windows' own answer.
  std::optional<LRESULT> Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam);
  void Comando(int identificatore, int codice, HWND controllo);
  void Limiti(MINMAXINFO& limiti) const;
  void NuovoDpi(int dpi, const RECT& posto);
  void FileLasciati(WPARAM lasciati) const;
  void VuoleUscire(const std::function<void()>& uscita) const;
  void Centra(HWND proprietario) const;
  void Gira();
  void CaricaFont();

  HWND maniglia_ = nullptr;
  const host::LayoutForm& layout_;
  int dpi_ = 0;
  Font font_;
  Font fontTitoli_;
  SIZE minima_ = {};
  bool mostrata_ = false;
  bool daTastiera_ = false;
  bool inAzione_ = false;
  std::optional<FinestreSpente> spente_;
  std::map<HWND, Elemento*> elementi_;
};

}  // namespace orve::adapters::win32::finestre
