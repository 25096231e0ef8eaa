#include "motore.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <utility>

#include "chiamata.h"
#include "eventi.h"
#include "golden.h"
#include "orve-mailserver/host/errore.h"
#include "win32/conversions.h"
#include "win32/errori_com.h"

namespace orve::prova {

using adapters::win32::ComPtr;
using adapters::win32::ToUtf8;
using adapters::win32::ToWide;
using adapters::win32::VariantCom;
using adapters::win32::Verifica;

namespace {

// Ends a script from inside; a private code.
constexpr HRESULT kUscita = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x7E57);

std::wstring LeggiTesto(const std::filesystem::path& file) {
  std::ifstream flusso(file, std::ios::binary);
  if (!flusso) throw host::Errore(53, "script_host", "File non trovato: " + ToUtf8(file.wstring()));
  std::ostringstream contenuto;
  contenuto << flusso.rdbuf();
  std::string testo = contenuto.str();
  if (testo.starts_with("\xEF\xBB\xBF")) testo.erase(0, 3);
  return ToWide(testo);
}

VariantCom Numero(long valore) {
  VariantCom numero;
  V_VT(&numero.Get()) = VT_I4;
  V_I4(&numero.Get()) = valore;
  return numero;
}

VariantCom Testo(const std::wstring& testo) {
  return VariantCom::DiTesto(adapters::win32::ToBstr(ToUtf8(testo)));
}

std::wstring Largo(const Argomenti& argomenti, std::size_t indice) {
  return ToWide(argomenti.Testo(indice));
}

std::string Unisci(const Argomenti& argomenti) {
  std::string riga;
  for (std::size_t indice = 0; indice < argomenti.Quanti(); ++indice) {
    riga += (indice == 0 ? "" : " ") + argomenti.Testo(indice);
  }
  return riga;
}

}  // namespace

void ScriviRiga(const std::string& riga) {
  std::cout << riga << '\n' << std::flush;
}

void ScriviErrore(const std::string& riga) {
  std::cerr << riga << '\n' << std::flush;
}

Motore::Motore(const std::wstring& linguaggio) {
  CLSID classe = CLSID_NULL;
  Verifica(CLSIDFromProgID(linguaggio.c_str(), &classe));
  Verifica(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, IID_IActiveScript, motore_.UscitaVoid()));
}

int Motore::Esegui(const std::vector<std::filesystem::path>& file, std::vector<std::wstring> argomenti) {
  file_ = file;
  oggetti_[L"WScript"] = CreaWScript(std::move(argomenti));
  oggetti_[L"Banco"] = CreaBanco();
  Verifica(motore_->SetScriptSite(this));
  const auto lettore = motore_.Come<IActiveScriptParse>(__uuidof(IActiveScriptParse));
  Verifica(lettore->InitNew());
  for (const auto& [nome, oggetto] : oggetti_) {
    Verifica(motore_->AddNamedItem(nome.c_str(), SCRIPTITEM_ISVISIBLE));
  }
  Verifica(motore_->SetScriptState(SCRIPTSTATE_CONNECTED));
  for (std::size_t indice = 0; indice < file_.size() && !uscita_ && stato_ == 0; ++indice) {
    const std::wstring testo = LeggiTesto(file_[indice]);
    const HRESULT esito = lettore->ParseScriptText(testo.c_str(), nullptr, nullptr, nullptr, indice, 0,
                                                   SCRIPTTEXT_ISVISIBLE, nullptr, nullptr);
    // An error that the engine did not report to OnScriptError is still an error.
    if (FAILED(esito) && !uscita_ && stato_ == 0) {
      ScriviErrore(adapters::win32::ErroreDi(esito).Descrizione());
      stato_ = 2;
    }
  }
  Chiudi();
  return stato_;
}

void Motore::Chiudi() {
  while (!collegamenti_.empty()) {
    collegamenti_.back().stacca();
    collegamenti_.pop_back();
  }
  classi_.Ritira();
  motore_->Close();
  motore_.Reset();
  oggetti_.clear();
}

HRESULT Motore::QueryInterface(REFIID iid, void** oggetto) {
  *oggetto = iid == IID_IUnknown || iid == IID_IActiveScriptSite ? this : nullptr;
  return *oggetto == nullptr ? E_NOINTERFACE : S_OK;
}

HRESULT Motore::GetLCID(LCID* lingua) {
  *lingua = LOCALE_USER_DEFAULT;
  return S_OK;
}

HRESULT Motore::GetItemInfo(LPCOLESTR nome, DWORD maschera, IUnknown** oggetto, ITypeInfo** tipo) {
  if (tipo != nullptr) *tipo = nullptr;
  if (oggetto != nullptr) *oggetto = nullptr;
  const auto trovato = oggetti_.find(nome);
  if (trovato == oggetti_.end()) return TYPE_E_ELEMENTNOTFOUND;
  if ((maschera & SCRIPTINFO_IUNKNOWN) != 0 && oggetto != nullptr) {
    *oggetto = ComPtr(trovato->second).Cedi();
  }
  return S_OK;
}

HRESULT Motore::GetDocVersionString(BSTR* versione) {
  *versione = nullptr;
  return E_NOTIMPL;
}

HRESULT Motore::OnScriptError(IActiveScriptError* errore) {
  EXCEPINFO eccezione{};
  errore->GetExceptionInfo(&eccezione);
  if (uscita_) return S_OK;
  if (DentroUnaChiamata()) {
    RicordaErroreDelloScript(adapters::win32::ErroreDi(DISP_E_EXCEPTION, &eccezione));
    return S_OK;
  }
  DWORD file = 0;
  ULONG riga = 0;
  LONG colonna = 0;
  errore->GetSourcePosition(&file, &riga, &colonna);
  const std::string nome = file < file_.size() ? ToUtf8(file_[file].filename().wstring()) : "?";
  const host::Errore letto = adapters::win32::ErroreDi(DISP_E_EXCEPTION, &eccezione);
  ScriviErrore(nome + "(" + std::to_string(riga + 1) + "): " + letto.Sorgente() + ": " +
               std::to_string(letto.Numero()) + " " + letto.Descrizione());
  stato_ = 2;
  return S_OK;
}

ComPtr<IDispatch> Motore::Procedure() {
  ComPtr<IDispatch> procedure;
  Verifica(motore_->GetScriptDispatch(nullptr, procedure.Uscita()));
  return procedure;
}

void Motore::Collega(const ComPtr<IDispatch>& oggetto, const std::wstring& prefisso) {
  collegamenti_.push_back({oggetto, Ascolta(*oggetto.Get(), prefisso, [this] { return Procedure(); })});
}

void Motore::Stacca(IDispatch* oggetto) {
  std::erase_if(collegamenti_, [&](const Collegamento& collegamento) {
    if (collegamento.oggetto.Get() != oggetto) return false;
    collegamento.stacca();
    return true;
  });
}

VariantCom Motore::CreaOggetto(const Argomenti& argomenti) {
  CLSID classe = CLSID_NULL;
  const std::wstring nome = Largo(argomenti, 0);
  const HRESULT trovata = nome.starts_with(L"{") ? CLSIDFromString(nome.c_str(), &classe)
                                                 : CLSIDFromProgID(nome.c_str(), &classe);
  if (FAILED(trovata)) throw host::Errore(host::kOggettoNonCreabile);
  ComPtr<IDispatch> oggetto;
  Verifica(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                            oggetto.UscitaVoid()));
  if (argomenti.Quanti() > 1) Collega(oggetto, Largo(argomenti, 1));
  return VariantCom::DiOggetto(oggetto.Get());
}

ComPtr<IDispatch> Motore::CreaWScript(std::vector<std::wstring> argomenti) {
  auto* elenco = new OggettoNominato;
  const ComPtr<IDispatch> valori(elenco);
  const auto voce = [argomenti](const Argomenti& indice) {
    const auto posizione = static_cast<std::size_t>(std::stoul(indice.Testo(0)));
    if (posizione >= argomenti.size()) throw host::Errore(host::kIndiceFuoriIntervallo);
    return Testo(argomenti[posizione]);
  };
  elenco->Aggiungi(L"", voce);
  elenco->Aggiungi(L"Item", voce);
  elenco->Aggiungi(L"Count",
                   [argomenti](const Argomenti&) { return Numero(static_cast<long>(argomenti.size())); });
  elenco->Aggiungi(L"length",
                   [argomenti](const Argomenti&) { return Numero(static_cast<long>(argomenti.size())); });

  auto* wscript = new OggettoNominato;
  ComPtr<IDispatch> oggetto(wscript);
  wscript->Aggiungi(L"Arguments", [valori](const Argomenti& indice) {
    if (indice.Quanti() == 0) return VariantCom::DiOggetto(valori.Get());
    VariantCom risultato;
    VARIANT posizione = indice[0];
    DISPPARAMS parametri{&posizione, nullptr, 1, 0};
    Verifica(valori->Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &parametri,
                            risultato.Uscita(), nullptr, nullptr));
    return risultato;
  });
  wscript->Aggiungi(L"Echo", [](const Argomenti& detti) {
    ScriviRiga(Unisci(detti));
    return VariantCom();
  });
  wscript->Aggiungi(L"CreateObject", [this](const Argomenti& dati) { return CreaOggetto(dati); });
  wscript->Aggiungi(L"ConnectObject", [this](const Argomenti& dati) {
    Collega(dati.Oggetto(0), Largo(dati, 1));
    return VariantCom();
  });
  wscript->Aggiungi(L"DisconnectObject", [this](const Argomenti& dati) {
    Stacca(dati.Oggetto(0).Get());
    return VariantCom();
  });
  wscript->Aggiungi(L"ScriptFullName", [this](const Argomenti&) { return Testo(file_.back().wstring()); });
  wscript->Aggiungi(L"Path", [](const Argomenti&) {
    std::wstring programma(MAX_PATH, L'\0');
    programma.resize(GetModuleFileNameW(nullptr, programma.data(), static_cast<DWORD>(programma.size())));
    return Testo(std::filesystem::path(programma).parent_path().wstring());
  });
  wscript->Aggiungi(L"Quit", [this](const Argomenti& dati) -> VariantCom {
    if (dati.Quanti() > 0) stato_ = std::stoi(dati.Testo(0));
    uscita_ = true;
    throw host::Errore(kUscita, "WScript", "Quit");
  });
  return oggetto;
}

ComPtr<IDispatch> Motore::CreaBanco() {
  auto* banco = new OggettoNominato;
  ComPtr<IDispatch> oggetto(banco);
  banco->Aggiungi(L"Riga", [](const Argomenti& detti) {
    ScriviRiga(Unisci(detti));
    return VariantCom();
  });
  banco->Aggiungi(L"Fallisce", [this](const Argomenti& detti) {
    ScriviErrore("FALLITO: " + Unisci(detti));
    stato_ = 1;
    return VariantCom();
  });
  banco->Aggiungi(L"RegisterClass", [this](const Argomenti& dati) {
    // The factory is a function of the script, by its name: not every engine can give a reference to one.
    classi_.Recita(Largo(dati, 0), [this, funzione = Largo(dati, 1)] {
      const ComPtr<IDispatch> procedure = Procedure();
      const DISPID numero = NumeroDi(*procedure.Get(), funzione);
      if (numero == DISPID_UNKNOWN) throw host::Errore(host::kMembroNonSupportato);
      return Chiama(*procedure.Get(), numero, DISPATCH_METHOD | DISPATCH_PROPERTYGET);
    });
    return VariantCom();
  });
  banco->Aggiungi(L"Spia", [this](const Argomenti& dati) {
    const auto annota = [this](const std::string& riga) { giornale_ += riga + "\n"; };
    return VariantCom::DiOggetto(Spia(Largo(dati, 0), dati.Oggetto(1), annota).Get());
  });
  banco->Aggiungi(L"Annota", [this](const Argomenti& detti) {
    giornale_ += Unisci(detti) + "\n";
    return VariantCom();
  });
  // All lines noted since the last call, each with its end.
  banco->Aggiungi(L"Giornale", [this](const Argomenti&) {
    return VariantCom::DiTesto(adapters::win32::ToBstr(std::exchange(giornale_, {})));
  });
  // What was noted against a journal in the sources, which `./dev journals` writes anew.
  banco->Aggiungi(L"Differenza", [this](const Argomenti& dati) {
    return VariantCom::DiTesto(
        adapters::win32::ToBstr(golden::Difference(ToUtf8(Largo(dati, 0)), std::exchange(giornale_, {}))));
  });
  // Members by a name that the script computes, since not every engine has Eval: read, written with Let,
  // written with Set.
  const auto membro = [](const Argomenti& dati, WORD modi) {
    const ComPtr<IDispatch> detentore = dati.Oggetto(0);
    const DISPID numero = NumeroDi(*detentore.Get(), Largo(dati, 1));
    if (numero == DISPID_UNKNOWN) throw host::Errore(host::kMembroNonSupportato);
    return Chiama(*detentore.Get(), numero, modi,
                  dati.Quanti() > 2 ? std::vector<VARIANT>{dati[2]} : std::vector<VARIANT>{});
  };
  banco->Aggiungi(L"Leggi", [membro](const Argomenti& dati) { return membro(dati, DISPATCH_PROPERTYGET); });
  banco->Aggiungi(L"Scrivi", [membro](const Argomenti& dati) { return membro(dati, DISPATCH_PROPERTYPUT); });
  banco->Aggiungi(L"Imposta",
                  [membro](const Argomenti& dati) { return membro(dati, DISPATCH_PROPERTYPUTREF); });
  banco->Aggiungi(L"StessoOggetto", [](const Argomenti& dati) {
    const auto primo = dati.Oggetto(0).Come<IUnknown>(IID_IUnknown);
    const auto secondo = dati.Oggetto(1).Come<IUnknown>(IID_IUnknown);
    VariantCom risposta;
    V_VT(&risposta.Get()) = VT_BOOL;
    V_BOOL(&risposta.Get()) = primo.Get() == secondo.Get() ? VARIANT_TRUE : VARIANT_FALSE;
    return risposta;
  });
  return oggetto;
}

}  // namespace orve::prova
