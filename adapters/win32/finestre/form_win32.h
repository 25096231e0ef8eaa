// A window built from its layout table.
//
// The program's sizes are twips and exact; what is on the screen follows in whole pixels. Until the resizing
// control has started, nothing follows the window's size.
#pragma once

#include <windows.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "forms/contenuto.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/layout.h"
#include "win32/finestre/elemento.h"
#include "win32/finestre/finestra.h"
#include "win32/finestre/selettore_file.h"

namespace orve::adapters::win32::finestre {

class FormWin32 : public host::Form {
 public:
  FormWin32(const host::LayoutForm& layout, std::shared_ptr<FileLasciati> lasciati);
  FormWin32(const FormWin32&) = delete;
  FormWin32& operator=(const FormWin32&) = delete;
  FormWin32(FormWin32&&) = delete;
  FormWin32& operator=(FormWin32&&) = delete;
  ~FormWin32() override;

  [[nodiscard]] std::shared_ptr<host::Controllo> Controlli(std::string_view nome) override;
  [[nodiscard]] std::string Caption() override { return didascalia_; }
  void Caption(const std::string& didascalia) override;
  [[nodiscard]] float Width() override { return width_; }
  void Width(float twip) override;
  [[nodiscard]] float Height() override { return height_; }
  void Height(float twip) override;
  /// Without an owner form, the active window of the thread is the owner on the screen.
  void Show(std::int16_t modo, const std::shared_ptr<host::Form>& proprietario) override;
  void Chiudi() override;

  [[nodiscard]] HWND Maniglia() const { return finestra_->Maniglia(); }

 private:
  class Proporzioni;

  void Costruisci(const host::LayoutForm& layout);
  void DaiNomi(const host::LayoutForm& layout) const;
  void AdattaFinestra();
  void Segui();
  void Allega(const std::vector<std::wstring>& file);
  void Abbandona();

  std::shared_ptr<Finestra> finestra_;
  std::shared_ptr<FileLasciati> lasciati_;
  std::string didascalia_;
  float width_;
  float height_;
  bool aperta_ = true;
  bool caricata_ = false;
  bool primaAttivazione_ = false;    // Show has raised it before the window appeared
  std::vector<Elemento*> elementi_;  // in the order of the table
  std::shared_ptr<Proporzioni> proporzioni_;
  std::map<std::string, std::shared_ptr<host::Controllo>> controlli_;  // by folded name
  forms::Contenuto contenuto_;                                         // as it was shown
};

/// The window of a form of this toolkit; null for anything else.
[[nodiscard]] HWND ManigliaDi(host::Oggetto* oggetto);

}  // namespace orve::adapters::win32::finestre
