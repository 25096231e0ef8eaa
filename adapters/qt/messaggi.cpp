#include "qt/messaggi.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "forms/messaggi.h"
#include "orve-mailserver/qt/finestre.h"
#include "qt/attesa.h"
#include "qt/finestra_di_form.h"
#include "qt/misure.h"

namespace orve::adapters::qt {

namespace {

constexpr std::int32_t kRispostaOk = 1;
constexpr std::int32_t kPulsanti = 15;  // the bits of a style that choose the buttons
constexpr std::int32_t kSiNo = 4;
constexpr std::int32_t kFigura = 0x70;        // and those that choose the icon
constexpr std::int32_t kPredefinito = 0x300;  // and the button that Return presses
constexpr qsizetype kTestoIntero = 2000;

QMessageBox::Icon Figura(std::int32_t stile) {
  switch (stile & kFigura) {
    case host::kCritico:
      return QMessageBox::Critical;
    case host::kAvviso:
      return QMessageBox::Warning;
    case host::kInformazione:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

}  // namespace

std::int32_t MostraCasella(const std::string& testo, std::int32_t stile, const std::string& titolo,
                           QWidget* padre) {
  const PuntatoreLibero puntatore;
  QMessageBox casella(padre != nullptr ? padre : QApplication::activeWindow());
  casella.setObjectName(QStringLiteral("MostraMsg"));
  casella.setTextFormat(Qt::PlainText);  // what a server or a file name says is not markup
  casella.setWindowTitle(TestoVisibile(titolo));
  casella.setIcon(Figura(stile));
  // A box taller than the screen would hide its own buttons.
  const QString intero = TestoVisibile(testo);
  if (intero.size() > kTestoIntero) {
    casella.setText(intero.left(kTestoIntero) + QStringLiteral("…"));
    casella.setDetailedText(intero);
  } else {
    casella.setText(intero);
  }
  if ((stile & kPulsanti) != kSiNo) {
    casella.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    casella.exec();
    return kRispostaOk;
  }
  auto* si = casella.addButton(QStringLiteral("&Sì"), QMessageBox::YesRole);
  auto* no = casella.addButton(QStringLiteral("&No"), QMessageBox::NoRole);
  casella.setDefaultButton((stile & kPredefinito) == host::kSecondoPredefinito ? no : si);
  casella.setEscapeButton(no);
  casella.exec();
  return casella.clickedButton() == si ? host::kRispostaSi : host::kRispostaNo;
}

void Azione(QWidget* padre, const std::function<void()>& azione) {
  forms::Protetta(
      azione,
      [padre](const std::string& testo) {
        MostraCasella(testo, host::kCritico,
                      padre != nullptr ? Utf8(padre->window()->windowTitle()) : std::string(), padre);
      },
      [](const char* nota) { qWarning("%s", nota); });
}

std::shared_ptr<host::Messaggi> CreaMessaggi(std::string programma) {
  return std::make_shared<forms::Messaggi>(
      std::move(programma), [](const std::string& testo, std::int32_t stile, const std::string& titolo,
                               host::Oggetto* proprietario) {
        AssicuraApplicazione();
        return MostraCasella(testo, stile, titolo, FinestraDi(proprietario));
      });
}

}  // namespace orve::adapters::qt
