// script_host [--tell-status] [--register DLL] SCRIPT... [-- ARGUMENT...]
//
// Runs scripts of the system's script engines as the real clients that they are: text in and out is UTF-8, an
// error that the script does not catch is reported with its line and ends the program with status 2. The
// files form one script; the last file's extension tells the language. With --register a DLL's classes are
// registered first. With --tell-status the exit status is also the last line of output, for ctest, which
// checks one or the other.
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "motore.h"
#include "orve-mailserver/host/errore.h"
#include "win32/conversions.h"

namespace {

using orve::prova::Motore;

int Registra(const std::filesystem::path& dll) {
  const HMODULE modulo = LoadLibraryW(std::filesystem::absolute(dll).c_str());
  if (modulo == nullptr) {
    orve::prova::ScriviErrore("DLL non caricata: " + orve::adapters::win32::ToUtf8(dll.wstring()));
    return 3;
  }
  using Registrazione = HRESULT(STDAPICALLTYPE*)();
  // NOLINTNEXTLINE(bugprone-casting-through-void): the system's own way to a function
  const auto funzione =
      reinterpret_cast<Registrazione>(reinterpret_cast<void*>(GetProcAddress(modulo, "DllRegisterServer")));
  const HRESULT esito = funzione == nullptr ? E_NOINTERFACE : funzione();
  FreeLibrary(modulo);
  if (SUCCEEDED(esito)) return 0;
  orve::prova::ScriviErrore("DLL non registrata");
  return 3;
}

int Esegui(const std::vector<std::wstring>& parole) {
  std::vector<std::filesystem::path> file;
  std::vector<std::wstring> argomenti;
  std::size_t indice = 0;
  if (parole.size() >= 2 && parole[0] == L"--register") {
    if (const int stato = Registra(parole[1]); stato != 0) return stato;
    indice = 2;
  }
  for (; indice < parole.size() && parole[indice] != L"--"; ++indice) file.emplace_back(parole[indice]);
  for (++indice; indice < parole.size(); ++indice) argomenti.push_back(parole[indice]);
  if (file.empty()) {
    orve::prova::ScriviErrore(
        "uso: script_host [--tell-status] [--register DLL] SCRIPT... [-- ARGOMENTO...]");
    return 3;
  }
  Motore motore(file.back().extension() == L".js" ? L"JScript" : L"VBScript");
  return motore.Esegui(file, std::move(argomenti));
}

}  // namespace

int wmain(int quante, wchar_t** parole) {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 3;
  int stato = 3;
  try {
    const bool dice = quante > 1 && std::wstring_view(parole[1]) == L"--tell-status";
    stato = Esegui({parole + (dice ? 2 : 1), parole + quante});
    if (dice) orve::prova::ScriviRiga("esito " + std::to_string(stato));
  } catch (...) {
    const orve::host::Errore errore = orve::host::ErroreCorrente();
    orve::prova::ScriviErrore(errore.Sorgente() + ": " + std::to_string(errore.Numero()) + " " +
                              errore.Descrizione());
  }
  CoUninitialize();
  return stato;
}
