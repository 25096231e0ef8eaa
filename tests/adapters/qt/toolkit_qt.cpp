// The windows of Qt, for the tests of the window contract.
#include <QAbstractButton>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QCursor>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>
#include <QWheelEvent>
#include <cctype>
#include <fstream>
#include <iterator>

#include "prova.h"
#include "window_contract/toolkit.h"

namespace orve::adapters::qt {

namespace {

using window_contract::Gesto;
using window_contract::Posto;
using window_contract::Risposta;
using window_contract::Tasto;

Qt::Key TastoQt(Tasto tasto) {
  switch (tasto) {
    case Tasto::kInvio:
      return Qt::Key_Return;
    case Tasto::kEsc:
      return Qt::Key_Escape;
    case Tasto::kSu:
      return Qt::Key_Up;
    case Tasto::kGiu:
      return Qt::Key_Down;
    case Tasto::kInizio:
      return Qt::Key_Home;
    case Tasto::kTab:
      return Qt::Key_Tab;
    case Tasto::kIndietro:
      return Qt::Key_Backspace;
  }
  return Qt::Key_unknown;
}

std::string Scritta(Risposta risposta) {
  return risposta == Risposta::kOk ? "OK" : risposta == Risposta::kSi ? "Sì" : "No";
}

Risposta RispostaDi(const QAbstractButton& pulsante) {
  const std::string scritta = pulsante.text().remove(QLatin1Char('&')).toStdString();
  for (const auto risposta : {Risposta::kOk, Risposta::kSi}) {
    if (scritta == Scritta(risposta)) return risposta;
  }
  EXPECT_EQ(scritta, Scritta(Risposta::kNo));
  return Risposta::kNo;
}

class VistaQt final : public window_contract::VistaSuSchermo {
 public:
  explicit VistaQt(QWidget& finestra) : finestra_(finestra) {}

  bool Aperta() const override { return finestra_.isVisible(); }
  bool Vede(const std::string& nome) const override { return Trova(finestra_, nome).isVisible(); }
  bool Attivo(const std::string& nome) const override { return Trova(finestra_, nome).isEnabled(); }
  std::string Titolo() const override { return finestra_.windowTitle().toStdString(); }
  std::string Contenuto(const std::string& nome) const override {
    if (const auto* combo = qobject_cast<QComboBox*>(&Trova(finestra_, nome))) {
      return combo->currentText().toStdString();
    }
    return qt::Contenuto(finestra_, nome);
  }
  bool Spuntata(const std::string& nome) const override {
    return Trova<QCheckBox>(finestra_, nome).isChecked();
  }
  std::vector<std::string> Righe() const override { return qt::Righe(finestra_); }
  int RigaSelezionata() const override { return qt::RigaSelezionata(finestra_); }

  void Clicca(const std::string& nome) const override { qt::Clicca(finestra_, nome); }
  void Digita(const std::string& nome, const std::string& testo) const override {
    qt::Digita(finestra_, nome, testo);
  }
  void Riscrive(const std::string& nome, const std::string& testo) const override {
    qt::Riscrive(finestra_, nome, testo);
  }
  void Incolla(const std::string& nome, const std::string& testo) const override {
    qt::Incolla(finestra_, nome, testo);
  }
  void VoceDopo(const std::string& combo) const override {
    DaiFuoco(combo);
    Preme(Tasto::kGiu);
  }
  void VocePrima(const std::string& combo) const override {
    DaiFuoco(combo);
    Preme(Tasto::kSu);
  }
  std::vector<std::string> VociDiMenu(const std::string& pulsante) const override {
    return qt::VociDiMenu(finestra_, pulsante);
  }
  void Sceglie(const std::string& pulsante, const std::string& didascalia) const override {
    qt::Sceglie(finestra_, pulsante, didascalia);
  }
  void Chiude() const override { finestra_.close(); }

  Posto Dove(const std::string& nome) const override {
    const auto& posto = Trova(finestra_, nome).geometry();
    return {posto.x(), posto.y(), posto.width(), posto.height()};
  }
  Posto Area() const override { return {0, 0, finestra_.width(), finestra_.height()}; }
  std::string ColFuoco() const override { return finestra_.focusWidget()->objectName().toStdString(); }
  void DaiFuoco(const std::string& nome) const override { Trova(finestra_, nome).setFocus(); }
  void Preme(Tasto tasto) const override {
    // The first row of a table and not the first cell of a row.
    const auto modo = tasto == Tasto::kInizio ? Qt::ControlModifier : Qt::NoModifier;
    QTest::keyClick(finestra_.focusWidget(), TastoQt(tasto), modo);
    Respira();
  }
  void Scrive(const std::string& nome, const std::string& testo) const override {
    QTest::keyClicks(&Trova(finestra_, nome), QString::fromStdString(testo));
  }
  void Seleziona(const std::string& nome, int inizio, int fine) const override {
    auto& casella = Trova(finestra_, nome);
    if (auto* riga = qobject_cast<QLineEdit*>(&casella)) {
      riga->setCursorPosition(inizio);
      if (fine != inizio) riga->setSelection(inizio, fine - inizio);
      return;
    }
    auto& corpo = dynamic_cast<QPlainTextEdit&>(casella);
    QTextCursor cursore = corpo.textCursor();
    cursore.setPosition(inizio);
    cursore.setPosition(fine, QTextCursor::KeepAnchor);
    corpo.setTextCursor(cursore);
  }
  int Cursore(const std::string& nome) const override {
    const auto& casella = Trova(finestra_, nome);
    if (const auto* riga = qobject_cast<const QLineEdit*>(&casella)) {
      return riga->hasSelectedText() ? -1 : riga->cursorPosition();
    }
    const QTextCursor cursore = dynamic_cast<const QPlainTextEdit&>(casella).textCursor();
    return cursore.hasSelection() ? -1 : cursore.position();
  }
  bool CursoreInVista(const std::string& nome) const override {
    const auto& corpo = Trova<QPlainTextEdit>(finestra_, nome);
    return corpo.viewport()->rect().contains(corpo.cursorRect().center());
  }
  std::vector<std::string> VociDelMenuAperto() const override { return qt::VociDelMenuAperto(); }
  void ConfermaVoce(const std::string& combo) const override {
    auto& lista = Trova<QComboBox>(finestra_, combo);
    int confermate = 0;
    const auto nota = QObject::connect(&lista, &QComboBox::activated, &lista, [&] { ++confermate; });
    lista.showPopup();
    QTest::keyClick(lista.view(), Qt::Key_Return);
    QObject::disconnect(nota);
    EXPECT_EQ(confermate, 1);
  }
  void Rotella(const std::string& combo) const override {
    auto& lista = Trova(finestra_, combo);
    lista.setFocus();
    const QPointF mezzo = lista.rect().center();
    constexpr int kUnoScatto = 120;
    QWheelEvent giro(mezzo, lista.mapToGlobal(mezzo), QPoint(), QPoint(0, -kUnoScatto), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&lista, &giro);
  }
  void PremeMnemonico(char lettera) const override {
    QTest::keyClick(&finestra_, static_cast<Qt::Key>(std::toupper(lettera)), Qt::AltModifier);
  }
  void Annulla(const std::string& nome) const override {
    QTest::keyClick(&Trova(finestra_, nome), Qt::Key_Z, Qt::ControlModifier);
  }
  void Porta(int width, int height) const override {
    finestra_.resize(width, height);
    Respira();
  }
  void LasciaFile(const std::vector<std::string>& percorsi) const override {
    std::vector<std::string> file;
    file.reserve(percorsi.size());
    for (const auto& uno : percorsi) file.push_back(PerSistema(uno));
    Lascia(finestra_, file);
  }

 private:
  QWidget& finestra_;
};

class ToolkitQt final : public window_contract::ToolkitSuSchermo {
 public:
  std::shared_ptr<fakes::FakeAmbiente> Ambiente() override { return ambiente_; }
  void VaCopiato(bool copiato) override { copiato_ = copiato; }
  std::string File(const std::string& nome, const std::string& contenuto) override {
    return PerLibreria(cartella_.File(nome, contenuto));
  }
  std::string PerPersona(const std::string& percorso) const override { return PerSistema(percorso); }
  std::string Mancante() const override { return PerLibreria(cartella_.Radice() + "/manca.pdf"); }
  void Rimuove(const std::string& percorso) override { std::filesystem::remove(PerSistema(percorso)); }
  std::string Legge(const std::string& percorso) override {
    std::ifstream flusso(PerSistema(percorso));
    return {std::istreambuf_iterator<char>(flusso), {}};
  }

  void Mostra(const host::LayoutForm& layout, const window_contract::Persona& persona,
              const Gesto& programma) override {
    regia_.Poi(std::string(layout.nome), [&](QWidget& finestra) {
      persona(VistaQt(finestra));
      Respira();
      if (finestra.isVisible()) finestra.close();
    });
    programma();
  }
  void MostraMessaggio(const std::string& testo, Risposta risposta, const Gesto& programma) override {
    Vede(programma, testo, risposta, nullptr);
  }
  window_contract::MessaggioVisto Vede(const Gesto& programma, const std::string& testo, Risposta risposta,
                                       const Gesto& prima) override {
    // A message that does not come in time may come when this has returned.
    const auto visto = std::make_shared<window_contract::MessaggioVisto>();
    regia_.Poi("MostraMsg", [visto, testo, risposta, prima](QWidget& finestra) {
      auto& casella = dynamic_cast<QMessageBox&>(finestra);
      EXPECT_EQ(casella.text().toStdString(), testo);
      visto->titolo = casella.windowTitle().toStdString();
      if (const auto* padrone = casella.parentWidget()) visto->padrone = padrone->windowTitle().toStdString();
      for (auto* pulsante : casella.buttons()) visto->pulsanti.push_back(RispostaDi(*pulsante));
      if (prima) prima();
      PremeNellaCasella(casella, Scritta(risposta));
    });
    programma();
    // What a window manager does once the message has gone.
    if (auto* rimasta = QApplication::activeModalWidget()) rimasta->activateWindow();
    return *visto;
  }
  bool PuntatoreAttende() const override {
    const auto* imposto = QGuiApplication::overrideCursor();
    return imposto != nullptr && imposto->shape() == Qt::WaitCursor;
  }
  void NelProgramma(const Gesto& azione) override {
    Respira();
    azione();
  }
  bool Attende(const std::function<bool()>& condizione) override {
    return QTest::qWaitFor(condizione, kPazienza);
  }
  std::string Risponde(const Gesto& gesto, const std::string& testo, Risposta risposta) override {
    return Vede(gesto, testo, risposta, nullptr).titolo;
  }
  void ScegliFile(const Gesto& gesto, const std::string& percorso) override {
    regia_.ScegliFile(PerSistema(percorso));
    gesto();
  }

 private:
  CartellaDiProva cartella_;
  bool copiato_ = false;
  std::shared_ptr<AmbienteConFinestre> ambiente_ = std::make_shared<AmbienteConFinestre>(WindowOptions{
      .cartellaCopie = cartella_.Radice(), .vaCopiato = [this](const std::string&) { return copiato_; }});
  Regia regia_;
};

}  // namespace

}  // namespace orve::adapters::qt

std::unique_ptr<orve::window_contract::Toolkit> orve::window_contract::CreaToolkit() {
  return std::make_unique<adapters::qt::ToolkitQt>();
}
