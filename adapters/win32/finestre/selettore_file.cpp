#include "win32/finestre/selettore_file.h"

#include <windows.h>

#include <commdlg.h>

#include <utility>

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

class Selettore : public forms::SelettoreFile {
 public:
  using forms::SelettoreFile::SelettoreFile;

 protected:
  std::string Chiede(const std::string& titolo) override { return Stretto(ScegliFile(Largo(titolo))); }
  std::string PerLibreria(const std::string& percorso) override { return percorso; }
};

}  // namespace

std::shared_ptr<host::SelettoreFile> CreaSelettore(std::shared_ptr<forms::FileLasciati> lasciati,
                                                   forms::CreatoreFile creaFile) {
  return std::make_shared<Selettore>(std::move(lasciati), std::move(creaFile));
}

}  // namespace orve::adapters::win32::finestre
