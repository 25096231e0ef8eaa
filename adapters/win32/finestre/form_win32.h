// A window of Windows built from its layout table.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "forms/form.h"
#include "win32/finestre/finestra.h"

namespace orve::adapters::win32::finestre {

class FormWin32 final : public forms::Form {
 public:
  /// Without `lasciati` the window takes no files.
  FormWin32(const host::LayoutForm& layout, const std::shared_ptr<forms::FileLasciati>& lasciati);
  FormWin32(const FormWin32&) = delete;
  FormWin32& operator=(const FormWin32&) = delete;
  FormWin32(FormWin32&&) = delete;
  FormWin32& operator=(FormWin32&&) = delete;
  ~FormWin32() override;

  [[nodiscard]] HWND Maniglia() const { return finestra_->Maniglia(); }

 protected:
  std::shared_ptr<host::Controllo> CreaControllo(const host::LayoutForm& layout,
                                                 const host::LayoutControllo& riga,
                                                 forms::Elemento* cornice) override;
  void Titolo(const std::string& titolo) override { finestra_->Titolo(titolo); }
  void Interno(const Misura& misura) override { finestra_->Misura({misura.width, misura.height}); }
  [[nodiscard]] Misura Interno() const override;
  [[nodiscard]] int Dpi() const override { return finestra_->Dpi(); }
  [[nodiscard]] bool Visibile() const override { return finestra_->Visibile(); }
  /// Without an owner form, the active window of the thread is the owner on the screen.
  void Mostra(bool modale, host::Form* proprietario) override;
  void Nascondi() override { finestra_->Nascondi(); }
  void ChiudiDallaCornice() override;
  void Azione(const std::function<void()>& azione) override { finestra_->Azione(azione); }
  std::int32_t Chiede(const std::string& testo, std::int32_t stile, const std::string& titolo) override;
  [[nodiscard]] bool Premibile(const forms::Elemento& elemento) const override;

 private:
  void Disponi(const host::LayoutForm& layout) const;

  std::shared_ptr<Finestra> finestra_;
};

/// The window of a form of this toolkit; null for anything else.
[[nodiscard]] HWND ManigliaDi(host::Oggetto* oggetto);

}  // namespace orve::adapters::win32::finestre
