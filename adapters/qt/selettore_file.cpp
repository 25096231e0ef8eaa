#include "qt/selettore_file.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <string>
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

class Selettore : public host::SelettoreFile {
 public:
  Selettore(std::shared_ptr<FileLasciati> lasciati, CreatoreFile creaFile)
      : lasciati_(std::move(lasciati)), creaFile_(std::move(creaFile)) {}

  void Titolo(const std::string& titolo) override { titolo_ = Testo(titolo); }

  std::int32_t Mostra(std::int32_t /*opzioni*/) override {
    scelto_.reset();
    const QString file = lasciati_->isEmpty() ? ScegliFile(titolo_) : lasciati_->takeFirst();
    if (file.isEmpty()) return 0;
    // The name as the disk has it, which need not be UTF-8.
    const QByteArray nativo = QFile::encodeName(file);
    const std::string percorso =
        posix::PercorsoLibreriaAssoluto({nativo.constData(), static_cast<std::size_t>(nativo.size())});
    const auto ultima = percorso.rfind('\\');
    scelto_ = creaFile_();
    scelto_->ApriPercorso(percorso.substr(0, ultima), percorso.substr(ultima + 1), "", 0);
    return kConfermato;
  }

  std::shared_ptr<host::OggettoFile> FileScelto() override { return scelto_; }
  void Chiudi() override { scelto_.reset(); }

 private:
  std::shared_ptr<FileLasciati> lasciati_;
  CreatoreFile creaFile_;
  QString titolo_;
  std::shared_ptr<host::OggettoFile> scelto_;
};

}  // namespace

std::shared_ptr<host::SelettoreFile> CreaSelettore(std::shared_ptr<FileLasciati> lasciati,
                                                   CreatoreFile creaFile) {
  return std::make_shared<Selettore>(std::move(lasciati), std::move(creaFile));
}

}  // namespace orve::adapters::qt
