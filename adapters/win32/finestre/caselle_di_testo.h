// The two boxes of text. Both keep what the program wrote, byte by byte, until it is changed on the screen,
// and limit what the person types or pastes, but never the program. Characters are what a person counts: an
// emoji is one.
#pragma once

#include <string>

#include "orve-mailserver/host/controlli.h"
#include "win32/finestre/elemento.h"

namespace orve::adapters::win32::finestre {

class CasellaDiTesto : public Elemento {
 public:
  void Comando(int codice) override;
  [[nodiscard]] std::string Legge() const;
  void Scrive(const std::string& testo);

 protected:
  CasellaDiTesto(Posto posto, const host::LayoutControllo& layout, const Sagoma& sagoma, bool multiriga)
      : Elemento(std::move(posto), layout, sagoma), multiriga_(multiriga) {}
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;

  /// Positions in Contato.
  struct Selezione {
    LONG inizio = 0;
    LONG fine = 0;
  };
  /// The text with carriage return and line feed as the line end, and as Windows counts its positions.
  [[nodiscard]] virtual std::wstring Mostrato() const = 0;
  [[nodiscard]] virtual std::wstring Contato() const { return Mostrato(); }
  [[nodiscard]] virtual Selezione Scelta() const = 0;
  virtual void Seleziona(Selezione selezione) = 0;
  /// Appends the program's text to the present one; false if the box has no such step.
  virtual bool Aggiunge(const std::wstring& /*seguito*/) { return false; }
  /// Pastes in place of the selection, as far as there is room.
  void Incolla();

 private:
  [[nodiscard]] std::string Misurato(const std::wstring& contato) const;
  [[nodiscard]] std::wstring Accettato(const std::wstring& inserito) const;
  [[nodiscard]] bool Entra(wchar_t carattere);
  [[nodiscard]] bool Tasto(WPARAM tasto);
  void Cambiata();

  bool multiriga_;
  std::string scritto_;
  std::wstring mostrato_;  // what was in the box after the program last wrote
  std::wstring prima_;     // as accepted last
  bool scrive_ = false;
  bool meta_ = false;  // the first half of a character was let in
};

/// A box of one line.
class CasellaRiga : public CasellaDiTesto {
 public:
  CasellaRiga(Posto posto, const host::LayoutControllo& layout);

 protected:
  [[nodiscard]] std::wstring Mostrato() const override;
  [[nodiscard]] Selezione Scelta() const override;
  void Seleziona(Selezione selezione) override;
};

/// A box of several lines of plain text. Text that the program adds while the person watches is a step that
/// can be undone, and leaves caret and view after it; a different text replaces the old one for good.
class CasellaCorpo : public CasellaDiTesto {
 public:
  CasellaCorpo(Posto posto, const host::LayoutControllo& layout);

 protected:
  LRESULT Messaggio(UINT messaggio, WPARAM wParam, LPARAM lParam) override;
  [[nodiscard]] std::wstring Mostrato() const override;
  [[nodiscard]] std::wstring Contato() const override;
  [[nodiscard]] Selezione Scelta() const override;
  void Seleziona(Selezione selezione) override;
  bool Aggiunge(const std::wstring& seguito) override;

 private:
  [[nodiscard]] std::wstring Testo(bool conLineFeed) const;
  void DipingeBordo();
  void MenuDiScelta(LPARAM dove);
};

template <class Base, class Casella>
class ControlloDiTesto : public Controllo<Base, Casella> {
 public:
  using Controllo<Base, Casella>::Controllo;
  std::string Text() override { return this->Legge(); }
  void Text(const std::string& testo) override { this->Scrive(testo); }
};

using Riga = ControlloDiTesto<host::TxtEdit, CasellaRiga>;
using Corpo = ControlloDiTesto<host::KvlRichTextBox, CasellaCorpo>;

}  // namespace orve::adapters::win32::finestre
