#include "orve-mail/address-book/rubrica_finestra.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "orve-mailserver/qt/finestre.h"
#include "qt/aspetto.h"
#include "qt/misure.h"
#include "text/text.h"

namespace orve::app {

namespace {

using adapters::qt::Pulsante;
using adapters::qt::Testo;
using adapters::qt::TestoVisibile;
using adapters::qt::Utf8;

constexpr int kIndirizzoDellaRiga = Qt::UserRole;  // the row of an address in its party
constexpr int kAltezzaRiga = 21;

enum ColonnaRubrica { kNominativo, kGenere, kCodice, kDettaglio, kIndirizzi, kColonne };

struct Testata {
  QString didascalia;
  int larghezza;
};

Testata TestataDi(int colonna, bool pec) {
  switch (colonna) {
    case kNominativo:
      return {QStringLiteral("Nome"), 220};
    case kGenere:
      return {QStringLiteral("Genere"), 75};
    case kCodice:
      return {QStringLiteral("Codice"), 60};
    case kDettaglio:
      return {QStringLiteral("Città o azienda"), 160};
    default:
      return {pec ? QStringLiteral("Indirizzi PEC") : QStringLiteral("Indirizzi e-mail"), 200};
  }
}

QString Uniti(const Parte& parte) {
  QStringList indirizzi;
  for (const auto& uno : parte.indirizzi) indirizzi << TestoVisibile(uno.indirizzo);
  return indirizzi.join(QStringLiteral("; "));
}

// The rows that pass the filter. A new filter is one reset: with thousands of rows, announcing each removed
// row to a view would take quadratic time.
class ModelloParti : public QAbstractTableModel {
 public:
  ModelloParti(std::vector<Parte> parti, bool pec, QObject* padre)
      : QAbstractTableModel(padre), parti_(std::move(parti)), pec_(pec) {}

  void Filtra(const Filtro& filtro) {
    beginResetModel();
    filtro_ = filtro;
    Rifai();
    endResetModel();
  }
  void sort(int colonna, Qt::SortOrder ordine) override {
    beginResetModel();
    colonna_ = colonna;
    ordine_ = ordine;
    Rifai();
    endResetModel();
  }

  [[nodiscard]] const std::vector<Parte>& Parti() const { return parti_; }
  [[nodiscard]] const Parte* ParteDi(const QModelIndex& indice) const {
    if (!indice.isValid()) return nullptr;
    return &parti_[righe_[static_cast<std::size_t>(indice.row())]];
  }
  /// The row of a party; invalid when the filter hides it.
  [[nodiscard]] QModelIndex RigaDi(const Parte* parte) const {
    for (std::size_t i = 0; i < righe_.size(); ++i) {
      if (&parti_[righe_[i]] == parte) return index(static_cast<int>(i), 0);
    }
    return {};
  }

  [[nodiscard]] int rowCount(const QModelIndex& padre = {}) const override {
    return padre.isValid() ? 0 : static_cast<int>(righe_.size());
  }
  [[nodiscard]] int columnCount(const QModelIndex& padre = {}) const override {
    return padre.isValid() ? 0 : static_cast<int>(kColonne);
  }
  [[nodiscard]] QVariant headerData(int sezione, Qt::Orientation verso, int ruolo) const override {
    if (verso != Qt::Horizontal || ruolo != Qt::DisplayRole) return {};
    return TestataDi(sezione, pec_).didascalia;
  }
  [[nodiscard]] QVariant data(const QModelIndex& indice, int ruolo) const override {
    const Parte* parte = ParteDi(indice);
    if (parte == nullptr) return {};
    if (ruolo == Qt::DisplayRole) return Cella(*parte, indice.column());
    if (ruolo == Qt::SizeHintRole) return QSize(0, kAltezzaRiga);
    if (ruolo == Qt::ForegroundRole && parte->indirizzi.empty()) {
      return QApplication::palette().brush(QPalette::PlaceholderText);
    }
    // In a tag of its own, so that the text is shown as it is.
    if (ruolo == Qt::ToolTipRole) {
      return QStringLiteral("<span>%1</span>").arg(Cella(*parte, indice.column()).toHtmlEscaped());
    }
    return {};
  }

 private:
  static QString Cella(const Parte& parte, int colonna) {
    switch (colonna) {
      case kNominativo:
        return TestoVisibile(parte.nome);
      case kGenere:
        return Testo(NomeGenere(parte.genere));
      case kCodice:
        return TestoVisibile(parte.codice);
      case kDettaglio:
        return TestoVisibile(parte.dettaglio);
      default:
        return Uniti(parte);
    }
  }

  // Codes by length first, which sorts numbers as numbers.
  static std::pair<std::size_t, std::string> Chiave(const Parte& parte, int colonna) {
    if (colonna == kNominativo) return {0, {}};  // the order in which the parties came
    const std::string testo = PerRicerca(Utf8(Cella(parte, colonna)));
    return {colonna == kCodice ? testo.size() : 0, testo};
  }

  void Rifai() {
    using Riga = std::pair<std::pair<std::size_t, std::string>, std::size_t>;
    std::vector<Riga> righe;
    for (const auto posizione : orve::app::Filtra(parti_, filtro_)) {
      righe.emplace_back(Chiave(parti_[posizione], colonna_), posizione);
    }
    if (colonna_ != kNominativo) std::sort(righe.begin(), righe.end());
    if (ordine_ == Qt::DescendingOrder) std::reverse(righe.begin(), righe.end());
    righe_.clear();
    for (const auto& riga : righe) righe_.push_back(riga.second);
  }

  std::vector<Parte> parti_;
  bool pec_;
  Filtro filtro_;
  int colonna_ = kNominativo;
  Qt::SortOrder ordine_ = Qt::AscendingOrder;
  std::vector<std::size_t> righe_;
};

// A view that says why it is empty.
template <class Vista>
class ConAvviso : public Vista {
 public:
  using Vista::Vista;
  void Avviso(const QString& testo) {
    avviso_ = testo;
    this->setAccessibleDescription(testo);
    this->viewport()->update();
  }

 protected:
  void paintEvent(QPaintEvent* evento) override {
    Vista::paintEvent(evento);
    if (this->model()->rowCount() > 0) return;
    QPainter pittore(this->viewport());
    pittore.setPen(this->palette().color(QPalette::PlaceholderText));
    pittore.drawText(this->viewport()->rect().adjusted(12, 0, -12, 0),
                     static_cast<int>(Qt::AlignCenter) | static_cast<int>(Qt::TextWordWrap), avviso_);
  }

 private:
  QString avviso_;
};

class FinestraDellaRubrica : public QDialog {
 public:
  FinestraDellaRubrica(AperturaRubrica apertura, QWidget* padre)
      : QDialog(padre, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
        pec_(apertura.pec),
        modello_(new ModelloParti(std::move(apertura.parti), apertura.pec, this)) {
    setObjectName(QStringLiteral("Rubrica"));
    setWindowTitle(Testo(apertura.titolo));
    if (padre != nullptr) setFont(padre->font());
    Costruisci();
    Collega();
    Aggiorna();
    VaSu(apertura.nome);
    constexpr QSize kMinima(480, 360);
    constexpr QSize kPrima(780, 500);
    setMinimumSize(kMinima);
    resize(kPrima);
    cerca_->setFocus();
  }

  [[nodiscard]] SceltaRubrica Scelta() const {
    const Parte& parte = *Corrente();
    SceltaRubrica scelta{parte.codice, parte.nome, {}};
    for (int i = 0; i < indirizzi_->count(); ++i) {
      const auto* voce = indirizzi_->item(i);
      if (voce->checkState() != Qt::Checked) continue;
      const auto riga = static_cast<std::size_t>(voce->data(kIndirizzoDellaRiga).toInt());
      scelta.indirizzi.push_back(parte.indirizzi[riga].indirizzo);
    }
    return scelta;
  }

 protected:
  // In the search box the arrow keys move in the list, so that one can type and choose without leaving the
  // box.
  bool eventFilter(QObject* oggetto, QEvent* evento) override {
    if (oggetto == cerca_ && evento->type() == QEvent::KeyPress) {
      const int tasto = static_cast<QKeyEvent*>(evento)->key();
      if (tasto == Qt::Key_Up || tasto == Qt::Key_Down || tasto == Qt::Key_PageUp ||
          tasto == Qt::Key_PageDown) {
        QCoreApplication::sendEvent(elenco_, evento);
        return true;
      }
    }
    return QDialog::eventFilter(oggetto, evento);
  }

 private:
  void Costruisci() {
    auto* pila = new QVBoxLayout(this);
    pila->addLayout(RigaDellaRicerca());
    pila->addWidget(Elenco(), 1);
    pila->addWidget(Indirizzi());
    pila->addLayout(RigaDeiPulsanti());
  }

  QLayout* RigaDellaRicerca() {
    auto* riga = new QHBoxLayout;
    cerca_ = new QLineEdit(this);
    cerca_->setObjectName(QStringLiteral("TXT_CERCA"));
    cerca_->setAccessibleName(QStringLiteral("Cerca"));
    cerca_->setPlaceholderText(QStringLiteral("Nome, codice, città, azienda o indirizzo"));
    cerca_->setClearButtonEnabled(true);
    cerca_->installEventFilter(this);
    genere_ = new QComboBox(this);
    genere_->setObjectName(QStringLiteral("CMB_GENERE"));
    genere_->setAccessibleName(QStringLiteral("Genere"));
    for (const char* voce : {"Tutti", "Clienti", "Fornitori", "Agenti", "Contatti"}) {
      genere_->addItem(QString::fromUtf8(voce));
    }
    soloConIndirizzo_ = new QCheckBox(
        pec_ ? QStringLiteral("Solo con indirizzo &PEC") : QStringLiteral("Solo con indirizzo &e-mail"),
        this);
    soloConIndirizzo_->setObjectName(QStringLiteral("CHK_SOLOCONINDIRIZZO"));
    soloConIndirizzo_->setChecked(true);
    auto* etichettaCerca = new QLabel(QStringLiteral("&Cerca"), this);
    etichettaCerca->setBuddy(cerca_);
    auto* etichettaGenere = new QLabel(QStringLiteral("&Genere"), this);
    etichettaGenere->setBuddy(genere_);
    riga->addWidget(etichettaCerca);
    riga->addWidget(cerca_, 1);
    riga->addSpacing(8);
    riga->addWidget(etichettaGenere);
    riga->addWidget(genere_);
    riga->addSpacing(8);
    riga->addWidget(soloConIndirizzo_);
    return riga;
  }

  QWidget* Elenco() {
    elenco_ = new ConAvviso<QTreeView>(this);
    elenco_->setObjectName(QStringLiteral("LST_NOMINATIVI"));
    elenco_->setAccessibleName(QStringLiteral("Nominativi"));
    elenco_->setModel(modello_);
    elenco_->setRootIsDecorated(false);
    elenco_->setItemsExpandable(false);
    elenco_->setUniformRowHeights(true);
    elenco_->setAllColumnsShowFocus(true);
    elenco_->setSelectionMode(QAbstractItemView::SingleSelection);
    elenco_->setAlternatingRowColors(true);
    elenco_->header()->setSortIndicator(kNominativo, Qt::AscendingOrder);
    elenco_->setSortingEnabled(true);
    elenco_->header()->setStretchLastSection(true);
    for (int i = 0; i < kColonne; ++i) elenco_->setColumnWidth(i, TestataDi(i, pec_).larghezza);
    return elenco_;
  }

  QWidget* Indirizzi() {
    constexpr int kRigheInVista = 4;
    auto* gruppo = new QWidget(this);
    auto* pila = new QVBoxLayout(gruppo);
    pila->setContentsMargins(0, 0, 0, 0);
    indirizzi_ = new ConAvviso<QListWidget>(gruppo);
    indirizzi_->setObjectName(QStringLiteral("LST_INDIRIZZI"));
    indirizzi_->setAccessibleName(QStringLiteral("Indirizzi da usare"));
    indirizzi_->setUniformItemSizes(true);
    indirizzi_->setSelectionMode(QAbstractItemView::NoSelection);  // the check marks say what is taken
    indirizzi_->setFixedHeight(kRigheInVista * kAltezzaRiga + 2 * indirizzi_->frameWidth());
    auto* etichetta = new QLabel(QStringLiteral("In&dirizzi da usare"), gruppo);
    etichetta->setBuddy(indirizzi_);
    pila->addWidget(etichetta);
    pila->addWidget(indirizzi_);
    return gruppo;
  }

  QLayout* RigaDeiPulsanti() {
    constexpr QSize kPulsante(90, 26);
    auto* riga = new QHBoxLayout;
    quanti_ = new QLabel(this);
    quanti_->setObjectName(QStringLiteral("LBL_QUANTI"));
    scegli_ = new Pulsante(QStringLiteral("&Scegli"), false, true, this);
    scegli_->setObjectName(QStringLiteral("CMD_SCEGLI"));
    scegli_->setDefault(true);
    annulla_ = new Pulsante(QStringLiteral("&Annulla"), false, false, this);
    annulla_->setObjectName(QStringLiteral("CMD_ANNULLA"));
    for (auto* pulsante : {scegli_, annulla_}) pulsante->setFixedSize(kPulsante);
    riga->addWidget(quanti_, 1);
    riga->addWidget(scegli_);
    riga->addWidget(annulla_);
    return riga;
  }

  void Collega() {
    connect(cerca_, &QLineEdit::textChanged, this, [this] { Aggiorna(); });
    connect(genere_, &QComboBox::currentIndexChanged, this, [this] { Aggiorna(); });
    connect(soloConIndirizzo_, &QCheckBox::toggled, this, [this] { Aggiorna(); });
    connect(modello_, &QAbstractItemModel::modelAboutToBeReset, this, [this] { prima_ = Corrente(); });
    connect(modello_, &QAbstractItemModel::modelReset, this, [this] { VaDovEra(); });
    connect(elenco_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { MostraIndirizzi(); });
    connect(elenco_, &QTreeView::doubleClicked, this, [this] { scegli_->click(); });
    connect(indirizzi_, &QListWidget::itemChanged, this, [this] { Abilita(); });
    connect(scegli_, &QPushButton::clicked, this, &QDialog::accept);
    connect(annulla_, &QPushButton::clicked, this, &QDialog::reject);
  }

  [[nodiscard]] const Parte* Corrente() const { return modello_->ParteDi(elenco_->currentIndex()); }

  void Aggiorna() {
    Filtro filtro;
    filtro.testo = Utf8(cerca_->text());
    if (genere_->currentIndex() > 0) filtro.genere = static_cast<Genere>(genere_->currentIndex() - 1);
    filtro.soloConIndirizzo = soloConIndirizzo_->isChecked();
    modello_->Filtra(filtro);
    const qsizetype visibili = modello_->rowCount();
    const auto tutti = static_cast<qsizetype>(modello_->Parti().size());
    quanti_->setText(QStringLiteral("%1 di %2 nominativi").arg(visibili).arg(tutti));
    elenco_->Avviso(tutti == 0 ? QStringLiteral("La rubrica è vuota.")
                               : QStringLiteral("Nessun nominativo corrisponde alla ricerca."));
  }

  // The current party stays selected as long as it is in the list; a search selects the first party found.
  void VaDovEra() {
    QModelIndex riga = modello_->RigaDi(prima_);
    if (!riga.isValid() && !cerca_->text().trimmed().isEmpty()) riga = modello_->index(0, 0);
    elenco_->setCurrentIndex(riga);
    if (riga.isValid()) elenco_->scrollTo(riga);
    MostraIndirizzi();
  }

  void VaSu(const std::string& nome) {
    if (nome.empty()) return;
    const std::string cercato = PerRicerca(nome);
    for (int i = 0; i < modello_->rowCount(); ++i) {
      const QModelIndex riga = modello_->index(i, 0);
      if (PerRicerca(modello_->ParteDi(riga)->nome) != cercato) continue;
      elenco_->setCurrentIndex(riga);
      elenco_->scrollTo(riga, QAbstractItemView::PositionAtCenter);
      return;
    }
  }

  // A party's check marks stay as the person set them until another party is chosen.
  void MostraIndirizzi() {
    const Parte* parte = Corrente();
    if (parte != nullptr && parte == mostrata_) return;
    mostrata_ = parte;
    const QSignalBlocker muto(indirizzi_);
    indirizzi_->clear();
    if (parte != nullptr) {
      const std::vector<bool> presi = IndirizziConsueti(*parte);
      for (std::size_t i = 0; i < parte->indirizzi.size(); ++i) {
        const auto& [indirizzo, destinazione] = parte->indirizzi[i];
        QString testo = TestoVisibile(indirizzo);
        if (!destinazione.empty()) testo += QStringLiteral("  (%1)").arg(TestoVisibile(destinazione));
        auto* voce = new QListWidgetItem(testo, indirizzi_);
        voce->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        voce->setCheckState(presi[i] ? Qt::Checked : Qt::Unchecked);
        voce->setData(kIndirizzoDellaRiga, static_cast<int>(i));
        voce->setSizeHint(QSize(0, kAltezzaRiga));
      }
      indirizzi_->setCurrentRow(0);
    }
    indirizzi_->Avviso(parte == nullptr ? QStringLiteral("Scegliere un nominativo.")
                       : pec_ ? QStringLiteral("Nessun indirizzo PEC: si potrà scrivere nella mail.")
                              : QStringLiteral("Nessun indirizzo: si potrà scrivere nella mail."));
    Abilita();
  }

  // A party without any address may be chosen, for its name; one that has addresses is chosen with at least
  // one of them.
  void Abilita() {
    bool qualcuno = Corrente() != nullptr && indirizzi_->count() == 0;
    for (int i = 0; i < indirizzi_->count(); ++i) {
      qualcuno = qualcuno || indirizzi_->item(i)->checkState() == Qt::Checked;
    }
    scegli_->setEnabled(qualcuno);
  }

  bool pec_;
  ModelloParti* modello_;
  QLineEdit* cerca_ = nullptr;
  QComboBox* genere_ = nullptr;
  QCheckBox* soloConIndirizzo_ = nullptr;
  ConAvviso<QTreeView>* elenco_ = nullptr;
  ConAvviso<QListWidget>* indirizzi_ = nullptr;
  QLabel* quanti_ = nullptr;
  Pulsante* scegli_ = nullptr;
  Pulsante* annulla_ = nullptr;
  const Parte* prima_ = nullptr;
  const Parte* mostrata_ = nullptr;
};

}  // namespace

std::optional<SceltaRubrica> MostraFinestraRubrica(AperturaRubrica apertura) {
  adapters::qt::AssicuraApplicazione();
  // The desktop may not yet have activated the window below.
  QWidget* sotto = QApplication::activeModalWidget();
  FinestraDellaRubrica finestra(std::move(apertura), sotto != nullptr ? sotto : QApplication::activeWindow());
  if (finestra.exec() != QDialog::Accepted) return {};
  return finestra.Scelta();
}

}  // namespace orve::app
