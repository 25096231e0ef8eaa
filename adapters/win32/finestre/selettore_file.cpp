#include "win32/finestre/selettore_file.h"

#include <windows.h>

#include <commdlg.h>

#include <utility>

#include "orve-mailserver/host/errore.h"
#include "win32/finestre/aspetto.h"
#include "win32/finestre/testo.h"

namespace orve::adapters::win32::finestre {

namespace {

constexpr std::size_t kPercorsoLungo = 32768;  // the longest path on Windows

// The path of the file chosen, empty for none. The system itself remembers the folder.
std::wstring ScegliFile(const std::wstring& titolo) {
  std::wstring percorso(kPercorsoLungo, L'\0');
  OPENFILENAMEW domanda = {};
  domanda.lStructSize = sizeof domanda;
  domanda.hwndOwner = GetActiveWindow();
  domanda.lpstrFilter = L"Tutti i file\0*.*\0";
  domanda.lpstrFile = percorso.data();
  domanda.nMaxFile = static_cast<DWORD>(percorso.size());
  domanda.lpstrTitle = titolo.empty() ? nullptr : titolo.c_str();
  domanda.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR | OFN_HIDEREADONLY;
  const ContestoVisuale contesto;
  if (GetOpenFileNameW(&domanda) == FALSE) return {};
  percorso.resize(percorso.find(L'\0'));
  return percorso;
}

class Selettore : public host::SelettoreFile {
 public:
  Selettore(std::shared_ptr<FileLasciati> lasciati, CreatoreFile creaFile)
      : lasciati_(std::move(lasciati)), creaFile_(std::move(creaFile)) {}

  void Titolo(const std::string& titolo) override { titolo_ = Largo(titolo); }

  std::int32_t Mostra(std::int32_t /*opzioni*/) override {
    scelto_.reset();
    std::wstring file;
    if (lasciati_->empty()) {
      file = ScegliFile(titolo_);
    } else {
      file = std::move(lasciati_->front());
      lasciati_->pop_front();
    }
    if (file.empty()) return 0;
    const std::string percorso = Stretto(file);
    const auto ultima = percorso.rfind('\\');
    if (ultima == std::string::npos) throw host::Errore(host::kArgomentoNonValido);
    scelto_ = creaFile_();
    scelto_->ApriPercorso(percorso.substr(0, ultima), percorso.substr(ultima + 1), "", 0);
    return kConfermato;
  }

  std::shared_ptr<host::OggettoFile> FileScelto() override { return scelto_; }
  void Chiudi() override { scelto_.reset(); }

 private:
  std::shared_ptr<FileLasciati> lasciati_;
  CreatoreFile creaFile_;
  std::wstring titolo_;
  std::shared_ptr<host::OggettoFile> scelto_;
};

}  // namespace

std::shared_ptr<host::SelettoreFile> CreaSelettore(std::shared_ptr<FileLasciati> lasciati,
                                                   CreatoreFile creaFile) {
  return std::make_shared<Selettore>(std::move(lasciati), std::move(creaFile));
}

}  // namespace orve::adapters::win32::finestre
