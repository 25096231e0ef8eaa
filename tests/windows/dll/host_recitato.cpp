#include "host_recitato.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>
#include <utility>

#include "oggetto_nominato.h"
#include "orve-mailserver/host/errore.h"
#include "win32/classi.h"
#include "win32/conversions.h"

namespace orve::prova {

using adapters::win32::ComPtr;
using adapters::win32::ToCom;
using adapters::win32::VariantCom;

namespace {

// An object made of its members.
ComPtr<IDispatch> Con(std::map<std::wstring, OggettoNominato::Membro> membri) {
  auto* oggetto = new OggettoNominato;
  ComPtr<IDispatch> fatto(oggetto);
  for (auto& [nome, membro] : membri) oggetto->Aggiungi(nome, std::move(membro));
  return fatto;
}

}  // namespace

HostRecitato::HostRecitato()
    : colonne_{{"FW24_INDFAXATTIVO", 77},
               {"FW24_INDMODALITA", 1},
               {"FW24_MAILMODSTDIFF", 1},
               {"FW24_PATHTMP", "C:\\windows\\temp"},
               {"FW24_BCC", 0},
               {"FW24_READRECEIPT", 0},
               {"FW24_FLGMSGPERS", 0},
               {"CG16_INDEMAIL", "anna@x.example"},
               {"CG16_RAGSOANAG", "Società Più S.r.l."},
               {"FW98_IDACCOUNT", std::int16_t{12}},
               {"FW98_MAILADDRESS", "noi@azienda.example"},
               {"FW98_USERNAME", "utente"},
               {"FW23_SERVERNAME", "smtp.azienda.example"},
               {"FW23_PORT", 587},
               {"FW23_INDAUTH", 0},
               {"FW23_SSL", 1},
               {"FW23_TIMEOUT", 30},
               {"ALIAS", "Azienda"},
               {"LETTURA", std::int16_t{0}},
               {"CONSEGNA", std::int16_t{0}}} {
  const auto recita = [this](const wchar_t* classe, std::function<ComPtr<IDispatch>()> fabbrica) {
    classi_.Recita(classe,
                   [fabbrica = std::move(fabbrica)] { return VariantCom::DiOggetto(fabbrica().Get()); });
  };
  recita(adapters::win32::classi::kConnessione, [this] { return Connessione(); });
  recita(adapters::win32::classi::kMessaggi, [this] {
    return Annotante(
        L"messaggi",
        Con({{L"TitoloFinestra", [](const Argomenti& dati) { return VariantCom(ToCom(dati.Testo(0))); }},
             {L"MostraMsg", [](const Argomenti&) { return ToCom(1); }}}));
  });
  recita(adapters::win32::classi::kRegistroInvio, [this] { return Annotante(L"registro", Registro()); });
  recita(adapters::win32::classi::kParametri, [this] {
    return Annotante(L"parametri", Con({{L"GetParametriCorpoMail", [](const Argomenti&) {
                                           return ToCom(host::Variant::Array{host::Variant(
                                               host::Variant::Array{"Ragione sociale", "RagSoc"})});
                                         }}}));
  });
  recita(adapters::win32::classi::kComponenteSmtp, [this] { return Annotante(L"smtp", Smtp()); });
}

bool HostRecitato::Annotato(const std::string& riga) const {
  return ("\n" + giornale_).find("\n" + riga + "\n") != std::string::npos;
}

ComPtr<IDispatch> HostRecitato::Annotante(const std::wstring& nome, ComPtr<IDispatch> oggetto) {
  return Spia(nome, std::move(oggetto), [this](const std::string& riga) { giornale_ += riga + "\n"; });
}

ComPtr<IDispatch> HostRecitato::Connessione() {
  return Con({{L"Open",
               [](const Argomenti& dati) -> VariantCom {
                 if (!dati.Testo(0).starts_with("Provider=")) throw host::Errore(host::kArgomentoNonValido);
                 return {};
               }},
              {L"Execute", [this](const Argomenti& dati) {
                 return VariantCom::DiOggetto(Righe(Trova(dati.Testo(0))).Get());
               }}});
}

std::vector<HostRecitato::Riga> HostRecitato::Trova(const std::string& domanda) const {
  std::vector<Riga> trovate;
  if (domanda.find("FROM REGISTRO_INVII") != std::string::npos) {
    std::copy_if(registrate_.begin(), registrate_.end(), std::back_inserter(trovate), [&](const Riga& riga) {
      return domanda.find("NUMREG = '" + riga.at("NUMREG").ToText() + "'") != std::string::npos;
    });
    return trovate;
  }
  if (!senzaRighe_.empty() && domanda.find(senzaRighe_) != std::string::npos) return trovate;
  trovate.push_back(colonne_);
  for (const auto& [parte, riga] : risposte_) {
    if (domanda.find(parte) == std::string::npos) continue;
    for (const auto& [colonna, valore] : riga) trovate.front()[colonna] = valore;
  }
  return trovate;
}

ComPtr<IDispatch> HostRecitato::Righe(std::vector<Riga> trovate) {
  const auto righe = std::make_shared<const std::vector<Riga>>(std::move(trovate));
  const auto posto = std::make_shared<std::size_t>(0);
  const ComPtr<IDispatch> campi =
      Con({{L"Item", [righe, posto](const Argomenti& dati) {
              const Riga& riga = righe->at(*posto);
              const auto trovata = riga.find(dati.Testo(0));
              const auto valore = trovata == riga.end() ? host::Variant("") : trovata->second;
              return VariantCom::DiOggetto(
                  Con({{L"Value", [valore](const Argomenti&) { return ToCom(valore); }}}).Get());
            }}});
  const auto nulla = [](const Argomenti&) { return VariantCom(); };
  return Con({{L"EOF", [righe, posto](const Argomenti&) { return ToCom(*posto >= righe->size()); }},
              {L"State", [](const Argomenti&) { return ToCom(1); }},
              {L"Fields", [campi](const Argomenti&) { return VariantCom::DiOggetto(campi.Get()); }},
              {L"MoveFirst", nulla},
              {L"MoveNext",
               [posto](const Argomenti&) {
                 ++*posto;
                 return VariantCom();
               }},
              {L"Close", nulla}});
}

ComPtr<IDispatch> HostRecitato::Registro() {
  const auto prossima = std::make_shared<Riga>();
  const auto colonna = [prossima](const char* nome) {
    return [prossima, nome](const Argomenti& dati) {
      (*prossima)[nome] = dati.Testo(0);
      return VariantCom();
    };
  };
  return Con({{L"NumReg", colonna("NUMREG")},
              {L"EsitoInvio", colonna("ESITOINVIO")},
              {L"RegistraInvio", [this, prossima](const Argomenti& dati) {
                 Riga riga = *prossima;
                 riga["NOME"] = dati.Testo(0);
                 riga["INDIRIZZO"] = dati.Testo(2);
                 riga["RISULTATO"] = dati.Testo(4);
                 registrate_.push_back(std::move(riga));
                 return VariantCom();
               }}});
}

ComPtr<IDispatch> HostRecitato::Smtp() {
  const auto fine = std::make_shared<std::int32_t>(-1);
  return Con({{L"AddRecipientEx",
               [fine](const Argomenti& dati) {
                 constexpr std::int32_t kRifiutata = 4;
                 if (dati.Testo(0).find("<rifiutata@") != std::string::npos) *fine = kRifiutata;
                 return VariantCom();
               }},
              {L"GetLastError", [fine](const Argomenti&) { return ToCom(*fine); }}});
}

bool RegistraDll(const std::wstring& percorso) {
  const HMODULE modulo = LoadLibraryW(std::filesystem::absolute(percorso).c_str());
  if (modulo == nullptr) return false;
  using Registrazione = HRESULT(STDAPICALLTYPE*)();
  // NOLINTNEXTLINE(bugprone-casting-through-void): the system's own way to a function
  const auto funzione =
      reinterpret_cast<Registrazione>(reinterpret_cast<void*>(GetProcAddress(modulo, "DllRegisterServer")));
  const bool riuscita = funzione != nullptr && SUCCEEDED(funzione());
  FreeLibrary(modulo);
  return riuscita;
}

}  // namespace orve::prova
