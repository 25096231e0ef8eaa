// The two boxes of text. Both keep what the program wrote, byte by byte, until the person changes it, and
// limit what the person types, pastes or drops, but never the program.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <cstdint>
#include <string>

namespace orve::adapters::qt {

/// A box of one line. Characters are what a person counts: an emoji is one.
class CasellaRiga : public QLineEdit {
 public:
  CasellaRiga(std::int32_t maxchar, QWidget* padre);
  void Scrive(const std::string& testo);
  [[nodiscard]] std::string Legge() const;

 protected:
  /// Files dropped here go to the window.
  void dragEnterEvent(QDragEnterEvent* evento) override;

 private:
  void Limita(const QString& nuovo);
  void Rifai(const QString& voluto, qsizetype cursore);

  std::int32_t maxchar_;
  std::string scritto_;
  QString prima_;  // as accepted last
  bool corregge_ = false;
};

/// A box of one line that holds a path: with `/` for the person, who may also type `\`, and with `\` for the
/// program.
class CasellaPercorso : public CasellaRiga {
 public:
  using CasellaRiga::CasellaRiga;
  void Scrive(const std::string& testo);
  [[nodiscard]] std::string Legge() const;

 private:
  std::string scritto_;
};

/// A box of several lines of plain text. Text that the program adds while the person watches is a step that
/// can be undone, and leaves caret and view after it; a different text replaces the old one for good.
class CasellaTesto : public QPlainTextEdit {
 public:
  CasellaTesto(std::int32_t maxchar, QWidget* padre);
  void Scrive(const std::string& testo);
  [[nodiscard]] std::string Legge() const;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void inputMethodEvent(QInputMethodEvent* evento) override;
  void insertFromMimeData(const QMimeData* dati) override;
  /// No files: when dropped here they go to the window.
  [[nodiscard]] bool canInsertFromMimeData(const QMimeData* dati) const override;

 private:
  void Aggiunge(const QString& seguito);
  /// The part of the text that fits in place of the selection.
  [[nodiscard]] QString Accettato(const QString& testo) const;

  std::int32_t maxchar_;
  std::string scritto_;
};

}  // namespace orve::adapters::qt
