// A script engine of the system with the two objects that scripts find here: as much of WScript as the
// samples use, and Banco, with what the tests need.
#pragma once

#include <windows.h>

#include <activscp.h>
#include <oleauto.h>

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "classi_recitate.h"
#include "oggetto_nominato.h"
#include "win32/com_ptr.h"

namespace orve::prova {

class Motore final : public IActiveScriptSite {
 public:
  /// `linguaggio` is "VBScript" or "JScript"; raises where the system lacks it.
  explicit Motore(const std::wstring& linguaggio);
  Motore(const Motore&) = delete;
  Motore& operator=(const Motore&) = delete;
  Motore(Motore&&) = delete;
  Motore& operator=(Motore&&) = delete;
  virtual ~Motore() = default;

  /// Runs the files one after the other in the same script; returns the exit status: 0, the status given to
  /// WScript.Quit, 1 after a failed check, 2 after an error that the script did not catch.
  int Esegui(const std::vector<std::filesystem::path>& file, std::vector<std::wstring> argomenti);

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override;
  // The engine lives inside the program's main function; nobody counts it.
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE GetLCID(LCID* lingua) override;
  HRESULT STDMETHODCALLTYPE GetItemInfo(LPCOLESTR nome, DWORD maschera, IUnknown** oggetto,
                                        ITypeInfo** tipo) override;
  HRESULT STDMETHODCALLTYPE GetDocVersionString(BSTR* versione) override;
  HRESULT STDMETHODCALLTYPE OnScriptTerminate(const VARIANT* /*risultato*/,
                                              const EXCEPINFO* /*errore*/) override {
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE OnStateChange(SCRIPTSTATE /*stato*/) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnScriptError(IActiveScriptError* errore) override;
  HRESULT STDMETHODCALLTYPE OnEnterScript() override { return S_OK; }
  HRESULT STDMETHODCALLTYPE OnLeaveScript() override { return S_OK; }

 private:
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> CreaWScript(std::vector<std::wstring> argomenti);
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> CreaBanco();
  [[nodiscard]] adapters::win32::ComPtr<IDispatch> Procedure();
  [[nodiscard]] adapters::win32::VariantCom CreaOggetto(const Argomenti& argomenti);
  void Collega(const adapters::win32::ComPtr<IDispatch>& oggetto, const std::wstring& prefisso);
  void Stacca(IDispatch* oggetto);
  void Chiudi();

  adapters::win32::ComPtr<IActiveScript> motore_;
  std::vector<std::filesystem::path> file_;
  std::map<std::wstring, adapters::win32::ComPtr<IDispatch>> oggetti_;
  struct Collegamento {
    adapters::win32::ComPtr<IDispatch> oggetto;
    std::function<void()> stacca;
  };
  std::vector<Collegamento> collegamenti_;
  ClassiRecitate classi_;
  std::string giornale_;
  int stato_ = 0;
  bool uscita_ = false;  // WScript.Quit was called
};

/// One line on the standard output or error, in UTF-8.
void ScriviRiga(const std::string& riga);
void ScriviErrore(const std::string& riga);

}  // namespace orve::prova
