// Invia una fattura a un cliente: indirizzo, account e testo vengono dal database dell'applicazione.
//
//   invia_fattura CONNESSIONE DITTA CLIENTE FILE
//
// CONNESSIONE è una stringa di ADO, per esempio
// "Provider=SQLOLEDB;Data Source=server;Initial Catalog=azienda;Integrated Security=SSPI".
//
// Si compila con l'intestazione della libreria, in include:
//   cl /EHsc /utf-8 /I ..\include invia_fattura.cpp ole32.lib oleaut32.lib
//   x86_64-w64-mingw32-g++ -static -municode -I ../include invia_fattura.cpp -lole32 -loleaut32 -luuid
#include <windows.h>

#include <comdef.h>
#include <fcntl.h>
#include <io.h>
#include <ocidl.h>
#include <stdio.h>

#include <string>

#include <initguid.h>
// Dopo initguid.h: gli identificatori delle classi stanno in questo file.
#include "orve_mailserver.h"

_COM_SMARTPTR_TYPEDEF(IDispatch, __uuidof(IDispatch));
_COM_SMARTPTR_TYPEDEF(IConnectionPoint, __uuidof(IConnectionPoint));
_COM_SMARTPTR_TYPEDEF(IConnectionPointContainer, __uuidof(IConnectionPointContainer));
_COM_SMARTPTR_TYPEDEF(ICLSFW_MAILSERVER, __uuidof(ICLSFW_MAILSERVER));

namespace {

// L'errore di un membro con la descrizione che lo accompagna.
void Verifica(HRESULT esito) {
  if (SUCCEEDED(esito)) return;
  IErrorInfo* errore = nullptr;
  GetErrorInfo(0, &errore);
  throw _com_error(esito, errore);
}

IDispatchPtr Crea(const wchar_t* nome) {
  CLSID classe = {};
  Verifica(CLSIDFromProgID(nome, &classe));
  IDispatch* oggetto = nullptr;
  Verifica(CoCreateInstance(classe, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                            reinterpret_cast<void**>(&oggetto)));
  return {oggetto, false};
}

// Chiama un membro, o ne legge il valore, per nome.
_variant_t Membro(IDispatch* oggetto, const wchar_t* nome, const wchar_t* argomento = nullptr) {
  DISPID membro = 0;
  auto* cercato = const_cast<wchar_t*>(nome);
  Verifica(oggetto->GetIDsOfNames(IID_NULL, &cercato, 1, LOCALE_USER_DEFAULT, &membro));
  _variant_t dato;
  if (argomento != nullptr) dato = argomento;
  DISPPARAMS parametri = {&dato, nullptr, argomento != nullptr ? 1U : 0U, 0};
  EXCEPINFO eccezione = {};
  _variant_t risultato;
  const HRESULT esito =
      oggetto->Invoke(membro, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET,
                      &parametri, &risultato, &eccezione, nullptr);
  const _bstr_t sorgente(eccezione.bstrSource, false);
  const _bstr_t descrizione(eccezione.bstrDescription, false);
  if (descrizione.length() > 0) wprintf(L"%ls\n", static_cast<const wchar_t*>(descrizione));
  Verifica(esito);
  return risultato;
}

IDispatchPtr ApriConnessione(const wchar_t* stringa) {
  IDispatchPtr connessione = Crea(L"ADODB.Connection");
  Membro(connessione, L"Open", stringa);
  return connessione;
}

_variant_t Colonna(IDispatch* righe, const wchar_t* nome) {
  const IDispatchPtr campi(Membro(righe, L"Fields"));
  const IDispatchPtr campo(Membro(campi, L"Item", nome));
  return Membro(campo, L"Value");
}

std::wstring Testo(const _variant_t& valore) {
  if (V_VT(&valore) == VT_NULL) return {};
  const _bstr_t testo(valore);
  return {static_cast<const wchar_t*>(testo), testo.length()};
}

// Con cui ritrovare l'invio nel registro.
std::wstring NumeroDiInvio() {
  GUID guid = {};
  Verifica(CoCreateGuid(&guid));
  wchar_t testo[40] = {};
  StringFromGUID2(guid, testo, 40);
  return testo;
}

// Stato resta a 0 quando il messaggio è rifiutato prima di partire. Che cosa ne è stato lo dice il registro
// degli invii, che è dell'applicazione, con le tabelle e le colonne sue: una riga per destinatario, o una
// sola con il motivo.
bool Inviato(IDispatch* connessione, const std::wstring& invio, const wchar_t* cliente) {
  const std::wstring domanda =
      L"SELECT ESITOINVIO, NOME, INDIRIZZO, RISULTATO FROM REGISTRO_INVII WHERE NUMREG = '" + invio +
      L"' ORDER BY ID";
  const IDispatchPtr righe(Membro(connessione, L"Execute", domanda.c_str()));
  bool inviato = !static_cast<bool>(Membro(righe, L"EOF"));
  if (!inviato) wprintf(L"Non inviato: manca un account, oppure un errore sta nel registro degli errori\n");
  for (; !static_cast<bool>(Membro(righe, L"EOF")); Membro(righe, L"MoveNext")) {
    if (static_cast<long>(Colonna(righe, L"ESITOINVIO")) == 0) {
      wprintf(L"Inviato: %ls\n", Testo(Colonna(righe, L"INDIRIZZO")).c_str());
      continue;
    }
    std::wstring nome = Testo(Colonna(righe, L"NOME"));
    if (nome.empty()) nome = std::wstring(L"Cliente ") + cliente + L" sconosciuto";
    wprintf(L"%ls: %ls\n", nome.c_str(), Testo(Colonna(righe, L"RISULTATO")).c_str());
    inviato = false;
  }
  Membro(righe, L"Close");
  return inviato;
}

// L'ultima parola prima dell'invio: ogni testo si può cambiare. Vive più a lungo del servizio, e non
// conta i suoi riferimenti.
class Ascoltatore final : public IDispatch {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** oggetto) override {
    const bool sua = iid == IID_IUnknown || iid == IID_IDispatch || iid == DIID_DCLSFW_MAILSERVEREventi;
    *oggetto = sua ? this : nullptr;
    return sua ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* quanti) override {
    *quanti = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID evento, REFIID, LCID, WORD, DISPPARAMS* argomenti, VARIANT*,
                                   EXCEPINFO*, UINT*) override {
    // BeforeSendMail; gli argomenti stanno dall'ultimo al primo: allegati, CCn, CC, A, corpo, oggetto.
    if (evento != 1 || argomenti->cArgs != 6) return DISP_E_MEMBERNOTFOUND;
    wprintf(L"Invio a %ls\n", *V_BSTRREF(&argomenti->rgvarg[3]));
    BSTR* oggetto = V_BSTRREF(&argomenti->rgvarg[5]);
    const _bstr_t cambiato = _bstr_t(*oggetto) + L" (copia di cortesia)";
    return SysReAllocString(oggetto, cambiato) != FALSE ? S_OK : E_OUTOFMEMORY;
  }
};

int Invia(wchar_t** argomenti) {
  const IDispatchPtr connessione = ApriConnessione(argomenti[1]);
  Ascoltatore ascoltatore;  // prima del servizio, che lo tiene anche quando un errore salta il distacco
  ICLSFW_MAILSERVERPtr mail;
  Verifica(CoCreateInstance(CLSID_CLSFW_MAILSERVER, nullptr, CLSCTX_INPROC_SERVER,
                            __uuidof(ICLSFW_MAILSERVER), reinterpret_cast<void**>(&mail)));

  IConnectionPointContainerPtr contenitore(mail);
  IConnectionPoint* punto = nullptr;
  Verifica(contenitore->FindConnectionPoint(DIID_DCLSFW_MAILSERVEREventi, &punto));
  const IConnectionPointPtr eventi(punto, false);
  DWORD collegamento = 0;
  Verifica(eventi->Advise(&ascoltatore, &collegamento));

  Verifica(mail->putref_ConnectionADO(connessione));
  Verifica(mail->put_DittaCorrente(_variant_t(argomenti[2])));
  _variant_t ignorato;
  Verifica(mail->GetImpostazioni(&ignorato));
  // Un'applicazione dà il numero di registrazione del documento.
  const std::wstring invio = NumeroDiInvio();
  Verifica(mail->put_INFO_NumReg(_bstr_t(invio.c_str())));
  const _bstr_t vuoto(L"");
  Verifica(mail->InizializzaRegistroInvioMail(_bstr_t(L"FATTURE"), vuoto, vuoto, vuoto, _bstr_t(L"Fattura")));
  Verifica(mail->put_ModalitaInvio(kvAutomatico));  // mai una finestra

  Verifica(mail->put_vOggetto(_bstr_t(L"Fattura")));
  Verifica(mail->put_vCorpoMail(_bstr_t(L"Buongiorno, in allegato la fattura.")));
  Verifica(mail->put_vFlagCorpo(1));
  Verifica(mail->put_vMailAttachment(_bstr_t(argomenti[4])));
  Verifica(mail->AvviaProceduraInvio(_variant_t(argomenti[3]), kvDestinatarioFaxCliente));

  Verifica(eventi->Unadvise(collegamento));
  return Inviato(connessione, invio, argomenti[3]) ? 0 : 1;
}

}  // namespace

int wmain(int quanti, wchar_t** argomenti) {
  _setmode(_fileno(stdout), _O_U8TEXT);
  if (quanti != 5) {
    wprintf(L"uso: invia_fattura CONNESSIONE DITTA CLIENTE FILE\n");
    return 2;
  }
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int esito = 1;
  try {
    esito = Invia(argomenti);
  } catch (const _com_error& errore) {
    const _bstr_t descrizione = errore.Description();
    wprintf(L"errore %08lX: %ls\n", static_cast<unsigned long>(errore.Error()),
            descrizione.length() > 0 ? static_cast<const wchar_t*>(descrizione) : L"senza descrizione");
  }
  CoUninitialize();
  return esito;
}
