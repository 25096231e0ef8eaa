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
  /// Files dropped here are for the window.
  void dragEnterEvent(QDragEnterEvent* evento) override;

 private:
  void Limita(const QString& nuovo);
  void Rifai(const QString& voluto, qsizetype cursore);

  std::int32_t maxchar_;
  std::string scritto_;
  QString prima_;  // as accepted last
  bool corregge_ = false;
};

/// A box of one line that holds a path: with `/` for the person, who may type `\` too, and with `\` for the
/// program.
class CasellaPercorso : public CasellaRiga {
 public:
  using CasellaRiga::CasellaRiga;
  void Scrive(const std::string& testo);
  [[nodiscard]] std::string Legge() const;

 private:
  std::string scritto_;
};

/// A box of several lines of plain text. What the program adds to it under the person's eyes is a step that
/// can be undone, and leaves caret and view behind it; another text takes the place of the old one for good.
class CasellaTesto : public QPlainTextEdit {
 public:
  CasellaTesto(std::int32_t maxchar, QWidget* padre);
  void Scrive(const std::string& testo);
  [[nodiscard]] std::string Legge() const;

 protected:
  void keyPressEvent(QKeyEvent* evento) override;
  void inputMethodEvent(QInputMethodEvent* evento) override;
  void insertFromMimeData(const QMimeData* dati) override;
  /// No files: dropped here they are for the window.
  [[nodiscard]] bool canInsertFromMimeData(const QMimeData* dati) const override;

 private:
  void Aggiunge(const QString& seguito);
  /// What of the text fits in the place of the selection.
  [[nodiscard]] QString Accettato(const QString& testo) const;

  std::int32_t maxchar_;
  std::string scritto_;
};

}  // namespace orve::adapters::qt
