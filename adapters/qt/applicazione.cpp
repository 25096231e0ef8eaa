// The one QApplication: found, or made with the first window.
#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QThread>
#include <QTranslator>
#include <array>
#include <memory>
#include <string>

#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/qt/finestre.h"

namespace orve::adapters::qt {

namespace {

[[noreturn]] void NonSiPuo(const char* motivo) {
  throw host::Errore(host::kOggettoNonCreabile, "ORVE_MAILSERVER",
                     std::string("Impossibile aprire una finestra: ") + motivo);
}

constexpr const char* kSenzaSchermo =
    "non c'è uno schermo (DISPLAY e WAYLAND_DISPLAY mancano o non rispondono).";

// Puts Qt's own texts, in the menus of its boxes and in the file chooser, into Italian too.
void ParlaItaliano(QApplication& applicazione) {
  auto traduttore = std::make_unique<QTranslator>(&applicazione);
  const bool trovato =
      traduttore->load(QLocale(QLocale::Italian), QStringLiteral("qtbase"), QStringLiteral("_"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  if (trovato) QApplication::installTranslator(traduttore.release());
}

// False when the display does not answer. Qt ends the program when no platform of its list starts; with one
// at the end that always starts, we get to say what is wrong.
bool CreaApplicazione() {
  static int argc = 1;
  static std::string nome = "orve";
  static std::array<char*, 2> argv = {nome.data(), nullptr};
  const bool piattaformaScelta = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
  const bool wayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
  if (!piattaformaScelta) qputenv("QT_QPA_PLATFORM", wayland ? "wayland;xcb;offscreen" : "xcb;offscreen");
  // Never destroyed: windows may be asked for until the program ends, and Qt cannot start twice.
  static auto* applicazione = new QApplication(argc, argv.data());
  if (piattaformaScelta) {
    ParlaItaliano(*applicazione);
    return true;
  }
  qunsetenv("QT_QPA_PLATFORM");
  ParlaItaliano(*applicazione);
  return QGuiApplication::platformName() != QStringLiteral("offscreen");
}

}  // namespace

void AssicuraApplicazione() {
  static bool schermo = true;
  if (!schermo) NonSiPuo(kSenzaSchermo);
  if (QCoreApplication::instance() == nullptr) {
    const bool dove = qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qEnvironmentVariableIsSet("DISPLAY") ||
                      qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!dove) NonSiPuo(kSenzaSchermo);
    schermo = CreaApplicazione();
    if (!schermo) NonSiPuo(kSenzaSchermo);
  }
  auto* applicazione = QCoreApplication::instance();
  if (qobject_cast<QApplication*>(applicazione) == nullptr) {
    NonSiPuo("il programma ospite non usa le finestre di Qt.");
  }
  if (applicazione->thread() != QThread::currentThread()) {
    NonSiPuo("le finestre si aprono soltanto nel thread in cui è nata la prima.");
  }
}

}  // namespace orve::adapters::qt
