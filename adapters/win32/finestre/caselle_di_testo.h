// The two boxes of text. Both keep what the program wrote, byte by byte, until it is changed on the screen,
// and limit what the person types or pastes, but never the program. Characters are what a person counts: an
// emoji is one.
#pragma once

#include <string>

#include "host/controlli.h"
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
  /// The text with carriage return and line feed at a line's end, and as Windows counts its positions.
  [[nodiscard]] virtual std::wstring Mostrato() const = 0;
  [[nodiscard]] virtual std::wstring Contato() const { return Mostrato(); }
  [[nodiscard]] virtual Selezione Scelta() const = 0;
  virtual void Seleziona(Selezione selezione) = 0;
  /// Puts the program's text behind the one that stands; false where the box knows no such step.
  virtual bool Aggiunge(const std::wstring& /*seguito*/) { return false; }
  /// Pastes in the place of the selection, as far as there is room.
  void Incolla();

 private:
  [[nodiscard]] std::string Misurato(const std::wstring& contato) const;
  [[nodiscard]] std::wstring Accettato(const std::wstring& inserito) const;
  [[nodiscard]] bool Entra(wchar_t carattere);
  [[nodiscard]] bool Tasto(WPARAM tasto);
  void Cambiata();

  bool multiriga_;
  std::string scritto_;
  std::wstring mostrato_;  // what stood in the box when the program had written
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

/// A box of several lines of plain text. What the program adds to it under the person's eyes is a step that
/// can be undone, and leaves caret and view behind it; another text takes the place of the old one for good.
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
