#include "host_recitato.h"

#include <filesystem>
#include <memory>
#include <utility>

#include "host/errore.h"
#include "oggetto_nominato.h"
#include "win32/classi.h"
#include "win32/conversions.h"

namespace orve::prova {

using win32::ComPtr;
using win32::ToCom;
using win32::VariantCom;

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
  recita(win32::classi::kConnessione, [this] { return Connessione(); });
  recita(win32::classi::kMessaggi, [this] {
    return Annotante(
        L"messaggi",
        Con({{L"TitoloFinestra", [](const Argomenti& dati) { return VariantCom(ToCom(dati.Testo(0))); }},
             {L"MostraMsg", [](const Argomenti&) { return ToCom(1); }}}));
  });
  recita(win32::classi::kRegistroInvio, [this] { return Annotante(L"registro", Con({})); });
  recita(win32::classi::kParametri, [this] {
    return Annotante(L"parametri", Con({{L"GetParametriCorpoMail", [](const Argomenti&) {
                                           return ToCom(host::Variant::Array{host::Variant(
                                               host::Variant::Array{"Ragione sociale", "RagSoc"})});
                                         }}}));
  });
  recita(win32::classi::kComponenteSmtp, [this] {
    return Annotante(L"smtp", Con({{L"GetLastError", [](const Argomenti&) { return ToCom(-1); }}}));
  });
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
              {L"Execute", [this](const Argomenti&) { return VariantCom::DiOggetto(Righe().Get()); }}});
}

ComPtr<IDispatch> HostRecitato::Righe() {
  const auto finite = std::make_shared<bool>(false);
  const ComPtr<IDispatch> campi =
      Con({{L"Item", [this](const Argomenti& dati) {
              const auto trovata = colonne_.find(dati.Testo(0));
              const auto valore = trovata == colonne_.end() ? host::Variant("") : trovata->second;
              return VariantCom::DiOggetto(
                  Con({{L"Value", [valore](const Argomenti&) { return ToCom(valore); }}}).Get());
            }}});
  const auto nulla = [](const Argomenti&) { return VariantCom(); };
  return Con({{L"EOF", [finite](const Argomenti&) { return ToCom(*finite); }},
              {L"State", [](const Argomenti&) { return ToCom(1); }},
              {L"Fields", [campi](const Argomenti&) { return VariantCom::DiOggetto(campi.Get()); }},
              {L"MoveFirst", nulla},
              {L"MoveNext",
               [finite](const Argomenti&) {
                 *finite = true;
                 return VariantCom();
               }},
              {L"Close", nulla}});
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
