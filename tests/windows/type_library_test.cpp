// What the type library says about the public classes: programs built years ago rely on the order, the
// numbers and the types, and languages that read it rely on every detail.
#include <windows.h>

#include <oleauto.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "orve_mailserver.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve {
namespace {

using adapters::win32::Bstr;
using adapters::win32::ComPtr;

using Attributi = std::unique_ptr<TYPEATTR, std::function<void(TYPEATTR*)>>;
Attributi AttributiDi(ITypeInfo& tipo) {
  TYPEATTR* attributi = nullptr;
  EXPECT_EQ(tipo.GetTypeAttr(&attributi), S_OK);
  return {attributi, [&tipo](TYPEATTR* letti) { tipo.ReleaseTypeAttr(letti); }};
}

std::string NomeDi(ITypeInfo& tipo, MEMBERID membro) {
  Bstr nome;
  tipo.GetDocumentation(membro, nome.Uscita(), nullptr, nullptr, nullptr);
  return adapters::win32::FromBstr(nome.Get());
}

using Visita = std::function<void(const FUNCDESC&)>;
// Not by the number of functions in the attributes: with a dual interface not every system counts those of
// its bases.
void PerFunzione(ITypeInfo& tipo, const Visita& visita) {
  FUNCDESC* funzione = nullptr;
  for (UINT indice = 0; SUCCEEDED(tipo.GetFuncDesc(indice, &funzione)); ++indice) {
    visita(*funzione);
    tipo.ReleaseFuncDesc(funzione);
  }
}

// The members of an enumeration with their values.
std::string MembriDi(ITypeInfo& enumerazione) {
  std::string membri;
  VARDESC* membro = nullptr;
  for (UINT indice = 0; SUCCEEDED(enumerazione.GetVarDesc(indice, &membro)); ++indice) {
    EXPECT_EQ(membro->varkind, VAR_CONST);
    membri += NomeDi(enumerazione, membro->memid) + " " +
              adapters::win32::FromCom(*membro->lpvarValue).ToText() + ";";
    enumerazione.ReleaseVarDesc(membro);
  }
  return membri;
}

// A parameter with what the type library says about it: "[in,out,opt] Nome" and its value when it is omitted.
std::string Parametro(const ELEMDESC& elemento, const std::string& nome) {
  const USHORT modi = elemento.paramdesc.wParamFlags;
  std::string testo;
  const std::pair<USHORT, const char*> conosciuti[] = {
      {PARAMFLAG_FIN, "in"}, {PARAMFLAG_FOUT, "out"}, {PARAMFLAG_FRETVAL, "retval"}, {PARAMFLAG_FOPT, "opt"}};
  for (const auto& [modo, parola] : conosciuti) {
    if ((modi & modo) != 0) testo += (testo.empty() ? "" : ",") + std::string(parola);
  }
  testo = "[" + testo + "] " + nome;
  if (elemento.tdesc.vt == VT_PTR) testo += "&";
  if ((modi & PARAMFLAG_FHASDEFAULT) != 0) {
    const VARIANT& predefinito = elemento.paramdesc.pparamdescex->varDefaultValue;
    testo += V_VT(&predefinito) == VT_BSTR ? "=\"" + adapters::win32::FromBstr(V_BSTR(&predefinito)) + "\""
                                           : "=" + adapters::win32::FromCom(predefinito).ToText();
  }
  return testo;
}

class LibreriaDeiTipi : public ::testing::Test {
 protected:
  void SetUp() override {
    modulo_ = LoadLibraryW(ORVE_DLL);
    ASSERT_NE(modulo_, nullptr);
    wchar_t percorso[MAX_PATH];
    GetModuleFileNameW(modulo_, percorso, MAX_PATH);
    ASSERT_EQ(LoadTypeLibEx(percorso, REGKIND_NONE, libreria_.Uscita()), S_OK);
  }
  void TearDown() override {
    libreria_.Reset();
    FreeLibrary(modulo_);
  }

  [[nodiscard]] ComPtr<ITypeInfo> Tipo(REFGUID guid) {
    ComPtr<ITypeInfo> tipo;
    EXPECT_EQ(libreria_->GetTypeInfoOfGuid(guid, tipo.Uscita()), S_OK);
    return tipo;
  }

  // The members in the order of the vtable, after the seven of IDispatch; a slot without a member shows.
  [[nodiscard]] std::string Ordine(REFGUID interfaccia) {
    const auto tipo = Tipo(interfaccia);
    std::string nomi;
    int atteso = 7;
    PerFunzione(*tipo.Get(), [&](const FUNCDESC& funzione) {
      const int posto = funzione.oVft / static_cast<int>(sizeof(void*));
      if (posto < 7) return;
      if (posto != atteso++) nomi += "(salto)";
      nomi += funzione.invkind == INVOKE_PROPERTYGET      ? "get "
              : funzione.invkind == INVOKE_PROPERTYPUT    ? "put "
              : funzione.invkind == INVOKE_PROPERTYPUTREF ? "set "
                                                          : "";
      nomi += NomeDi(*tipo.Get(), funzione.memid) + ";";
    });
    return nomi;
  }

  // The parameters of a member that is not a property.
  [[nodiscard]] std::vector<std::string> Parametri(REFGUID interfaccia, const std::string& membro) {
    const auto tipo = Tipo(interfaccia);
    std::vector<std::string> parametri;
    PerFunzione(*tipo.Get(), [&](const FUNCDESC& funzione) {
      if (NomeDi(*tipo.Get(), funzione.memid) != membro) return;
      std::vector<BSTR> nomi(static_cast<std::size_t>(funzione.cParams) + 1);
      UINT letti = 0;
      tipo->GetNames(funzione.memid, nomi.data(), static_cast<UINT>(nomi.size()), &letti);
      for (SHORT indice = 0; indice < funzione.cParams; ++indice) {
        const ELEMDESC& elemento = funzione.lprgelemdescParam[indice];
        if ((elemento.paramdesc.wParamFlags & PARAMFLAG_FRETVAL) != 0) continue;
        parametri.push_back(
            Parametro(elemento, adapters::win32::FromBstr(nomi[static_cast<std::size_t>(indice) + 1])));
      }
      for (BSTR nome : nomi) SysFreeString(nome);
    });
    return parametri;
  }

  // The member of a number, empty for none.
  [[nodiscard]] std::string MembroDi(REFGUID interfaccia, DISPID numero) {
    const auto tipo = Tipo(interfaccia);
    std::string nome;
    PerFunzione(*tipo.Get(), [&](const FUNCDESC& funzione) {
      if (funzione.memid == numero) nome = NomeDi(*tipo.Get(), numero);
    });
    return nome;
  }

  HMODULE modulo_ = nullptr;
  ComPtr<ITypeLib> libreria_;
};

TEST_F(LibreriaDeiTipi, TheOrderOfTheInterfacesIsTheOneFixed) {
  EXPECT_EQ(Ordine(IID_ICollDestinatari), "Add;get Item;get Count;Remove;get NewEnum;AddFromLista;");
  EXPECT_EQ(Ordine(IID_ICollMittenti), "Add;get Item;get Count;Remove;get NewEnum;AddMittente;");
  EXPECT_EQ(Ordine(IID_IDestinatario),
            "put Indirizzo;get Indirizzo;put Azienda;get Azienda;put Nome;get Nome;put Casella;get Casella;");
  EXPECT_EQ(
      Ordine(IID_IMittente),
      "put Indirizzo;get Indirizzo;put Server;get Server;put Descrizione;get Descrizione;put Port;get Port;"
      "put Timeout;get Timeout;put user;get user;put Password;get Password;put Auth;get Auth;put ReadRcpt;"
      "get ReadRcpt;put DeliveryStatus;get DeliveryStatus;get IsSsl;put IsSsl;get CryptType;put CryptType;");
  EXPECT_EQ(
      Ordine(IID_ICLSFW_MAILSERVER),
      "get vIndDestinatario;put vIndDestinatario;get vNome;put vNome;get vDitta;put vDitta;get vOggetto;"
      "put vOggetto;get vTestoMail;put vTestoMail;get vMailAttachment;put vMailAttachment;"
      "get ConnectionADO;set ConnectionADO;get Stato;get Descrizione;AvviaProceduraInvio;get vFlagCorpo;"
      "put vFlagCorpo;get vCorpoMail;put vCorpoMail;InviaMail;get vCollDestinatari;set vCollDestinatari;"
      "get SrvMailInstallato;put SrvMailInstallato;get ManagerRubrica;set ManagerRubrica;get DittaCorrente;"
      "put DittaCorrente;set DittaCorrente;GetImpostazioni;get vIndTipologiaAllegati;"
      "put vIndTipologiaAllegati;get vElencoAllegati;put vElencoAllegati;set vElencoAllegati;"
      "get ReadReceipt;put ReadReceipt;get FlgMsgPers;put FlgMsgPers;get MsgPers;put MsgPers;"
      "get INFO_TipoDoc;put INFO_TipoDoc;get INFO_NumReg;put INFO_NumReg;get INFO_NumDoc;put INFO_NumDoc;"
      "get INFO_SezDoc;put INFO_SezDoc;InizializzaRegistroInvioMail;get vSenderName;put vSenderName;"
      "get vSenderAddress;put vSenderAddress;get vNotifyDelivery;put vNotifyDelivery;get vNotifyRead;"
      "put vNotifyRead;get vDisableNotifyDelivery;put vDisableNotifyDelivery;get vDisableNotifyRead;"
      "put vDisableNotifyRead;InviaMailSMTP;AddDestinatario;AddAllegato;get ModalitaInvio;"
      "put ModalitaInvio;get tempPath;InizializzaRegistroInvioMailMultiprofilo;get silentMode;"
      "put silentMode;get errDescription;put errDescription;get errNumber;put errNumber;get vCollMittenti;"
      "set vCollMittenti;get vMittente;set vMittente;get MailParamTipo;put MailParamTipo;"
      "get MailParamAccount;set MailParamAccount;get MailParamReadRcpt;put MailParamReadRcpt;"
      "get MailParamDeliveryStatus;put MailParamDeliveryStatus;get MailParamAllegatoUnico;"
      "put MailParamAllegatoUnico;get MailParamCorpoUnico;put MailParamCorpoUnico;get IsPec;put IsPec;"
      "get IsInvioMailConParams;put IsInvioMailConParams;ReturnMailParameters;get IsStampaDifferita;"
      "put IsStampaDifferita;get PercorsoInstallazione;get MailParamIsValoriValidi;"
      "put MailParamIsValoriValidi;get ListaGuid;put ListaGuid;get IsLista;put IsLista;"
      "get DataValiditaCodiceDestinatario;put DataValiditaCodiceDestinatario;get DestinatariA;"
      "put DestinatariA;get DestinatariCC;put DestinatariCC;get DestinatariCCn;put DestinatariCCn;"
      "get Allegati;put Allegati;get MailCorpo;put MailCorpo;get MailOggetto;put MailOggetto;"
      "get INFO_RagSocCliFor;put INFO_RagSocCliFor;CheckRegularMailAddress;InviaMailDiretta;"
      "get ActiveInterface;set ActiveInterface;get InvioSMTP;put InvioSMTP;");
}

TEST_F(LibreriaDeiTipi, TheEnumerationsHaveTheirMembersAndValues) {
  std::vector<std::pair<std::string, std::string>> enumerazioni;
  for (UINT indice = 0; indice < libreria_->GetTypeInfoCount(); ++indice) {
    ComPtr<ITypeInfo> tipo;
    ASSERT_EQ(libreria_->GetTypeInfo(indice, tipo.Uscita()), S_OK);
    if (AttributiDi(*tipo.Get())->typekind != TKIND_ENUM) continue;
    enumerazioni.emplace_back(NomeDi(*tipo.Get(), MEMBERID_NIL), MembriDi(*tipo.Get()));
  }
  const decltype(enumerazioni) attese = {
      {"kvEnum_ErroreMail",
       "kvOK 0;kvParametriNonValidi 1;kvErroreInvioMail 2;kvInvioNonImpostato 3;kvProgramError 99;"},
      {"kvEnum_ServizioMail",
       "kvSimpleMAPI 0;kvOutlook 1;kvMAPI 2;kvNoMail 3;kvSMTPMail 76;kvSMTPSSLMail 77;"},
      {"kvEnumModalitaInvio", "kvManuale 0;kvAutomatico 1;kvSemiAuto 2;kvListaDistribuzione 3;"},
      {"kvTipologiaAllegati", "kvSingoloAllegato 0;kvAllegatiMultipli 1;"},
      {"kvTipologiaDestinatarioFAX",
       "kvDestinatarioFaxAnagrafica 0;kvDestinatarioFaxCliente 1;kvDestinatarioFaxFornitore 2;"
       "kvDestinatarioFaxDitta 3;kvDestinatarioFaxAgente 4;kvDestinatarioFaxVettore 5;"
       "kvDestinatarioFaxSpedizioniere 6;kvDestinatarioFaxMittente 7;kvDestinatarioFaxIntermediarioTel 8;"
       "kvDestinatarioFaxNumero 9;kvDestinatarioFaxContatto 10;kvDestinatarioFaxDestinatario 11;"}};
  EXPECT_EQ(enumerazioni, attese);
}

TEST_F(LibreriaDeiTipi, EveryClassButTheRecipientSaysThatItCanBeCreated) {
  const auto creabile = [&](REFCLSID classe) {
    const auto tipo = Tipo(classe);
    const auto attributi = AttributiDi(*tipo.Get());
    EXPECT_EQ(attributi->typekind, TKIND_COCLASS);
    return (attributi->wTypeFlags & TYPEFLAG_FCANCREATE) != 0;
  };
  EXPECT_TRUE(creabile(CLSID_CLSFW_MAILSERVER));
  EXPECT_TRUE(creabile(CLSID_CollDestinatari));
  EXPECT_TRUE(creabile(CLSID_CollMittenti));
  EXPECT_TRUE(creabile(CLSID_Mittente));
  EXPECT_FALSE(creabile(CLSID_Destinatario));
}

TEST_F(LibreriaDeiTipi, TheRecipientsAloneHaveADefaultMemberAndAnEnumerator) {
  EXPECT_EQ(MembroDi(IID_ICollDestinatari, DISPID_VALUE), "Item");
  EXPECT_EQ(MembroDi(IID_ICollDestinatari, DISPID_NEWENUM), "NewEnum");
  for (const IID& altra : {IID_ICollMittenti, IID_IMittente, IID_IDestinatario, IID_ICLSFW_MAILSERVER}) {
    EXPECT_EQ(MembroDi(altra, DISPID_VALUE), "");
    EXPECT_EQ(MembroDi(altra, DISPID_NEWENUM), "");
  }
}

TEST_F(LibreriaDeiTipi, ArgumentsThatMayBeLeftOutAndThoseByReferenceAreMarked) {
  using Elenco = std::vector<std::string>;
  EXPECT_EQ(Parametri(IID_ICLSFW_MAILSERVER, "AvviaProceduraInvio"),
            (Elenco{"[in,opt] codice", "[in,opt] Tipo=0"}));
  EXPECT_EQ(Parametri(IID_ICLSFW_MAILSERVER, "InviaMailDiretta"),
            (Elenco{"[in,opt] pIdMittente=0", "[in,opt] pDestA=\"\"", "[in,opt] pDestCC=\"\"",
                    "[in,opt] pDestCCn=\"\"", "[in,opt] pOggetto=\"\"", "[in,opt] pCorpo=\"\"",
                    "[in,opt] pAllegati=\"\""}));
  EXPECT_EQ(
      Parametri(IID_ICLSFW_MAILSERVER, "InviaMailSMTP"),
      (Elenco{"[in] vOggetto", "[in] vCorpo", "[in,out,opt] prioritaAlta&", "[in,out,opt] mailNotifica&"}));
  EXPECT_EQ(Parametri(IID_ICLSFW_MAILSERVER, "AddDestinatario"), (Elenco{"[in] indMail", "[in] descrDest"}));
  EXPECT_EQ(Parametri(IID_ICollDestinatari, "AddFromLista"),
            (Elenco{"[in,out] Indirizzo&", "[in,out,opt] Nome&", "[in,out,opt] Azienda&",
                    "[in,out,opt] Casella&", "[in,out,opt] sKey&"}));
}

TEST_F(LibreriaDeiTipi, TheEventHandsSixTextsByReference) {
  const auto tipo = Tipo(DIID_DCLSFW_MAILSERVEREventi);
  EXPECT_EQ(AttributiDi(*tipo.Get())->typekind, TKIND_DISPATCH);
  EXPECT_EQ(MembroDi(DIID_DCLSFW_MAILSERVEREventi, 1), "BeforeSendMail");
  PerFunzione(*tipo.Get(), [&](const FUNCDESC& funzione) {
    if (funzione.memid != 1) return;
    ASSERT_EQ(funzione.cParams, 6);
    for (SHORT indice = 0; indice < 6; ++indice) {
      const TYPEDESC& dato = funzione.lprgelemdescParam[indice].tdesc;
      ASSERT_EQ(dato.vt, VT_PTR);
      EXPECT_EQ(dato.lptdesc->vt, VT_BSTR);
    }
  });
  EXPECT_EQ(Parametri(DIID_DCLSFW_MAILSERVEREventi, "BeforeSendMail"),
            (std::vector<std::string>{"[in,out] Oggetto&", "[in,out] Corpo&", "[in,out] DestinatariA&",
                                      "[in,out] DestinatariCC&", "[in,out] DestinatariCCn&",
                                      "[in,out] Allegati&"}));
}

}  // namespace
}  // namespace orve
