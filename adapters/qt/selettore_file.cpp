#include "qt/selettore_file.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <utility>

#include "orve-mailserver/posix/percorsi.h"
#include "qt/misure.h"

namespace orve::adapters::qt {

namespace {

// Where the person last chose a file; the next choice starts there.
QString& UltimaCartella() {
  static QString cartella = QDir::homePath();
  return cartella;
}

// The path of the file chosen, empty for none.
QString ScegliFile(const QString& titolo) {
  QFileDialog scelta(QApplication::activeWindow(), titolo, UltimaCartella());
  scelta.setObjectName(QStringLiteral("SelettoreFile"));
  scelta.setFileMode(QFileDialog::ExistingFile);
  scelta.setLabelText(QFileDialog::Accept, QStringLiteral("Allega"));
  scelta.setLabelText(QFileDialog::Reject, QStringLiteral("Annulla"));
  if (scelta.exec() != QDialog::Accepted || scelta.selectedFiles().isEmpty()) return {};
  QString file = scelta.selectedFiles().constFirst();
  UltimaCartella() = QFileInfo(file).absolutePath();
  return file;
}

class Selettore : public forms::SelettoreFile {
 public:
  using forms::SelettoreFile::SelettoreFile;

 protected:
  std::string Chiede(const std::string& titolo) override { return PercorsoNativo(ScegliFile(Testo(titolo))); }
  std::string PerLibreria(const std::string& percorso) override {
    return posix::PercorsoLibreriaAssoluto(percorso);
  }
};

}  // namespace

std::string PercorsoNativo(const QString& file) {
  const QByteArray nativo = QFile::encodeName(file);
  return {nativo.constData(), static_cast<std::size_t>(nativo.size())};
}

std::shared_ptr<host::SelettoreFile> CreaSelettore(std::shared_ptr<forms::FileLasciati> lasciati,
                                                   forms::CreatoreFile creaFile) {
  return std::make_shared<Selettore>(std::move(lasciati), std::move(creaFile));
}

}  // namespace orve::adapters::qt
