#include "qt/caselle_di_testo.h"

#include <QDragEnterEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>
#include <algorithm>
#include <limits>

#include "forms/testo_digitato.h"
#include "qt/misure.h"
#include "text/text.h"

namespace orve::adapters::qt {

namespace {

// The part of two texts that differs: where it starts, and how far it reaches in each.
struct Differenza {
  qsizetype inizio;
  qsizetype finePrima;
  qsizetype fineDopo;
};

// `cursore` is where an insertion has just ended: when "aa" is typed into "aaa", it says which two are new.
Differenza Confronta(const QString& prima, const QString& dopo, qsizetype cursore) {
  const qsizetype dietro = std::min(dopo.size() - cursore, prima.size());
  qsizetype coda = 0;
  while (coda < dietro && prima[prima.size() - 1 - coda] == dopo[dopo.size() - 1 - coda]) ++coda;
  const qsizetype limite = std::min(prima.size(), dopo.size()) - coda;
  qsizetype testa = 0;
  while (testa < limite && prima[testa] == dopo[testa]) ++testa;
  // Two emojis may share their first half.
  if (testa > 0 && dopo[testa - 1].isHighSurrogate()) --testa;
  if (coda > 0 && dopo[dopo.size() - coda].isLowSurrogate()) --coda;
  return {testa, prima.size() - coda, dopo.size() - coda};
}

// Not a browser's links, which are text too.
bool DiFile(const QMimeData* dati) {
  const QList<QUrl> indirizzi = dati->urls();
  return std::any_of(indirizzi.begin(), indirizzi.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

QString ConCrLf(QString testo) {
  return testo.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
}

}  // namespace

CasellaRiga::CasellaRiga(std::int32_t maxchar, QWidget* padre) : QLineEdit(padre), maxchar_(maxchar) {
  setMaxLength(std::numeric_limits<int>::max());  // the program's texts have no limit
  constexpr int kMargine = 2;                     // to line up with the text of lists and bodies
  setTextMargins(kMargine, 0, kMargine, 0);
  connect(this, &QLineEdit::textEdited, this, [this](const QString& nuovo) { Limita(nuovo); });
}

void CasellaRiga::Scrive(const std::string& testo) {
  scritto_ = testo;
  setText(Testo(testo));
  prima_ = text();
  setCursorPosition(0);
}

std::string CasellaRiga::Legge() const {
  return isModified() ? Utf8(text()) : scritto_;
}

void CasellaRiga::dragEnterEvent(QDragEnterEvent* evento) {
  if (DiFile(evento->mimeData())) {
    evento->ignore();
    return;
  }
  QLineEdit::dragEnterEvent(evento);
}

// Called after any change by the person, wherever it came from: keys, an input method, the clipboard, a drop,
// undo.
void CasellaRiga::Limita(const QString& nuovo) {
  if (corregge_) return;
  const auto [inizio, finePrima, fineDopo] = Confronta(prima_, nuovo, cursorPosition());
  const QString inserito = nuovo.mid(inizio, fineDopo - inizio);
  const QString resto = nuovo.left(inizio) + nuovo.mid(fineDopo);
  const QString accettato = Testo(forms::TestoAccettato(Utf8(resto), Utf8(inserito), maxchar_, false));
  if (inserito.isEmpty() || accettato == inserito) {
    prima_ = nuovo;
    return;
  }
  const bool nulla = accettato.isEmpty();
  const QString voluto = nulla ? prima_ : nuovo.left(inizio) + accettato + nuovo.mid(fineDopo);
  Rifai(voluto, nulla ? finePrima : inizio + accettato.size());
}

// The step is undone and done again, so that undo never brings up the text that was refused.
void CasellaRiga::Rifai(const QString& voluto, qsizetype cursore) {
  corregge_ = true;
  undo();
  const auto [inizio, finePrima, fineDopo] = Confronta(text(), voluto, voluto.size());
  if (text() != voluto) {
    setSelection(static_cast<int>(inizio), static_cast<int>(finePrima - inizio));
    insert(voluto.mid(inizio, fineDopo - inizio));
  }
  setCursorPosition(static_cast<int>(cursore));
  corregge_ = false;
  prima_ = text();
}

void CasellaPercorso::Scrive(const std::string& testo) {
  scritto_ = testo;
  CasellaRiga::Scrive(text::Replace(testo, "\\", "/"));
}

std::string CasellaPercorso::Legge() const {
  return isModified() ? text::Replace(CasellaRiga::Legge(), "/", "\\") : scritto_;
}

CasellaTesto::CasellaTesto(std::int32_t maxchar, QWidget* padre) : QPlainTextEdit(padre), maxchar_(maxchar) {
  setTabChangesFocus(true);  // the keyboard can leave the box
}

void CasellaTesto::Scrive(const std::string& testo) {
  const std::string ora = Legge();
  if (isVisible() && testo.starts_with(ora)) {
    Aggiunge(Testo(testo.substr(ora.size())));
  } else {
    setPlainText(Testo(testo));
  }
  scritto_ = testo;
  document()->setModified(false);
}

void CasellaTesto::Aggiunge(const QString& seguito) {
  moveCursor(QTextCursor::End);
  // A block of its own: otherwise it would form one step with what was typed before it.
  QTextCursor cursore = textCursor();
  cursore.beginEditBlock();
  cursore.insertText(seguito);
  cursore.endEditBlock();
  ensureCursorVisible();
}

std::string CasellaTesto::Legge() const {
  return document()->isModified() ? Utf8(ConCrLf(toPlainText())) : scritto_;
}

QString CasellaTesto::Accettato(const QString& testo) const {
  const QTextCursor cursore = textCursor();
  QString resto = toPlainText();
  resto.remove(cursore.selectionStart(), cursore.selectionEnd() - cursore.selectionStart());
  const std::string accettato = forms::TestoAccettato(Utf8(ConCrLf(resto)), Utf8(testo), maxchar_, true);
  return Testo(accettato).remove(QLatin1Char('\r'));
}

void CasellaTesto::keyPressEvent(QKeyEvent* evento) {
  const int tasto = evento->key();
  const bool aCapo = (tasto == Qt::Key_Return || tasto == Qt::Key_Enter) &&
                     (evento->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::NoModifier;
  const QString scritto = evento->text();
  // An emoji starts with half a character, and joiners and direction marks are characters too: none of them
  // is printable by itself. Ctrl makes a command of a letter; together with Alt it is the third level of the
  // keyboard.
  const bool comando = (evento->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::ControlModifier;
  const bool carattere = !comando && !scritto.isEmpty() && scritto[0].category() != QChar::Other_Control;
  if ((aCapo && Accettato(QStringLiteral("\n")).isEmpty()) ||
      (carattere && !aCapo && Accettato(scritto) != scritto)) {
    evento->accept();
    return;
  }
  QPlainTextEdit::keyPressEvent(evento);
}

void CasellaTesto::inputMethodEvent(QInputMethodEvent* evento) {
  const QString scritto = evento->commitString();
  if (!scritto.isEmpty()) {
    evento->setCommitString(Accettato(scritto), evento->replacementStart(), evento->replacementLength());
  }
  QPlainTextEdit::inputMethodEvent(evento);
}

bool CasellaTesto::canInsertFromMimeData(const QMimeData* dati) const {
  return dati->hasText() && !DiFile(dati);
}

void CasellaTesto::insertFromMimeData(const QMimeData* dati) {
  if (!canInsertFromMimeData(dati)) return;
  textCursor().insertText(Accettato(dati->text()));
  ensureCursorVisible();
}

}  // namespace orve::adapters::qt
