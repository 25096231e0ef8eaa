// The event as handlers in C++ see it, one or several on the same service.
#include <windows.h>

#include <ocidl.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "windows/cliente_anticipato.h"

namespace orve {
namespace {

using adapters::win32::Bstr;
using adapters::win32::ComPtr;
using prova::Ascoltatore;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class EventoDelServizio : public prova::ClienteAnticipato {
 protected:
  void SetUp() override {
    ClienteAnticipato::SetUp();
    if (HasFatalFailure()) return;
    RecitaMessaggi();
    servizio = Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER);
    ASSERT_TRUE(servizio);
    contenitore = servizio.Come<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ASSERT_TRUE(contenitore);
    ASSERT_EQ(contenitore->FindConnectionPoint(DIID_DCLSFW_MAILSERVEREventi, punto.Uscita()), S_OK);
    ASSERT_EQ(servizio->putref_ConnectionADO(&messaggi_), S_OK);
    ASSERT_EQ(servizio->put_vOggetto(adapters::win32::ToBstr("Fattura").Get()), S_OK);
    ASSERT_EQ(servizio->put_vFlagCorpo(1), S_OK);
    ASSERT_EQ(servizio->put_SrvMailInstallato(::kvSMTPMail), S_OK);
    ASSERT_EQ(servizio->put_ModalitaInvio(::kvAutomatico), S_OK);
    ASSERT_EQ(servizio->put_DestinatariA(adapters::win32::ToBstr("Anna<anna@x.example>").Get()), S_OK);
  }
  void TearDown() override {
    punto.Reset();
    contenitore.Reset();
    servizio.Reset();
    RitiraMessaggi();
    ClienteAnticipato::TearDown();
  }

  DWORD Attacca(Ascoltatore& nuovo) {
    DWORD numero = 0;
    EXPECT_EQ(punto->Advise(&nuovo, &numero), S_OK);
    return numero;
  }
  // A send, as far as it gets on a machine without mail programs: past the event.
  void Invia() {
    VARIANT mancante;
    VariantInit(&mancante);
    V_VT(&mancante) = VT_ERROR;
    V_ERROR(&mancante) = DISP_E_PARAMNOTFOUND;
    EXPECT_EQ(servizio.Get()->AvviaProceduraInvio(mancante, ::kvDestinatarioFaxAnagrafica), S_OK);
  }
  std::string Oggetto() {
    Bstr letto;
    EXPECT_EQ(servizio->get_vOggetto(letto.Uscita()), S_OK);
    return adapters::win32::FromBstr(letto.Get());
  }

  // They outlive the service, which holds them.
  Ascoltatore ascoltatore;
  Ascoltatore primo{"uno"};
  Ascoltatore secondo{"due"};
  Ascoltatore terzo{"tre"};
  ComPtr<ICLSFW_MAILSERVER> servizio;
  ComPtr<IConnectionPointContainer> contenitore;
  ComPtr<IConnectionPoint> punto;
};

TEST_F(EventoDelServizio, ReachesASinkThatChangesTheSubject) {
  const auto informazioni = servizio.Come<IProvideClassInfo2>(IID_IProvideClassInfo2);
  ASSERT_TRUE(informazioni);
  GUID eventi = GUID_NULL;
  EXPECT_EQ(informazioni->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &eventi), S_OK);
  EXPECT_EQ(eventi, DIID_DCLSFW_MAILSERVEREventi);
  ComPtr<IConnectionPoint> altro;
  EXPECT_EQ(contenitore->FindConnectionPoint(IID_IDispatch, altro.Uscita()), CONNECT_E_NOCONNECTION);
  ComPtr<IDispatch> connessione;
  ASSERT_EQ(servizio->get_ConnectionADO(connessione.Uscita()), S_OK);
  EXPECT_EQ(connessione.Get(), static_cast<IDispatch*>(&messaggi_));

  const DWORD numero = Attacca(ascoltatore);
  Invia();
  EXPECT_THAT(ascoltatore.visti, ElementsAre("Fattura", "", "Anna<anna@x.example>;<>", "", "", ""));
  EXPECT_EQ(Oggetto(), "Fattura cambiato");

  ASSERT_EQ(punto->Unadvise(numero), S_OK);
  EXPECT_EQ(punto->Unadvise(numero), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(ascoltatore.riferimenti, 0);
  ascoltatore.visti.clear();
  Invia();
  EXPECT_THAT(ascoltatore.visti, IsEmpty());
}

TEST_F(EventoDelServizio, AsksTheHandlersInOrderAndEachSeesWhatTheOneBeforeLeft) {
  Attacca(primo);
  const DWORD numero = Attacca(secondo);
  Attacca(terzo);
  Invia();
  EXPECT_EQ(secondo.visti.at(0), "Fattura uno");
  EXPECT_EQ(terzo.visti.at(0), "Fattura uno due");
  EXPECT_EQ(Oggetto(), "Fattura uno due tre");

  // One that leaves and comes back is the last.
  punto->Unadvise(numero);
  Attacca(secondo);
  servizio->put_vOggetto(adapters::win32::ToBstr("Fattura").Get());
  Invia();
  EXPECT_EQ(Oggetto(), "Fattura uno tre due");
}

TEST_F(EventoDelServizio, TakesNothingFromAHandlerThatDoesNotKnowIt) {
  ascoltatore.esito = DISP_E_MEMBERNOTFOUND;
  Attacca(ascoltatore);
  Attacca(primo);
  Invia();
  EXPECT_EQ(Oggetto(), "Fattura uno");
}

TEST_F(EventoDelServizio, LetsAHandlerDetachItself) {
  const DWORD numero = Attacca(ascoltatore);
  ascoltatore.azione = [&] { EXPECT_EQ(punto->Unadvise(numero), S_OK); };
  Invia();
  EXPECT_EQ(Oggetto(), "Fattura cambiato");
  EXPECT_EQ(ascoltatore.riferimenti, 0);
  ascoltatore.visti.clear();
  Invia();
  EXPECT_THAT(ascoltatore.visti, IsEmpty());
}

TEST_F(EventoDelServizio, DoesNotAskAHandlerThatAnotherHasJustDetached) {
  Attacca(primo);
  const DWORD numero = Attacca(secondo);
  Attacca(terzo);
  primo.azione = [&] { punto->Unadvise(numero); };
  Invia();
  EXPECT_THAT(secondo.visti, IsEmpty());
  EXPECT_EQ(Oggetto(), "Fattura uno tre");
}

TEST_F(EventoDelServizio, AsksAHandlerAttachedByAnotherFromTheNextEventOn) {
  Attacca(primo);
  primo.azione = [&] {
    Attacca(secondo);
    primo.azione = nullptr;
  };
  Invia();
  EXPECT_THAT(secondo.visti, IsEmpty());
  Invia();
  EXPECT_EQ(Oggetto(), "Fattura uno uno due");
}

TEST_F(EventoDelServizio, OutlivesTheLastReferenceThatAHandlerLetsGo) {
  Attacca(ascoltatore);
  punto.Reset();
  contenitore.Reset();
  ascoltatore.azione = [&] { servizio.Reset(); };
  Invia();
  EXPECT_FALSE(servizio);
  EXPECT_EQ(ascoltatore.visti.size(), 6U);
  EXPECT_EQ(ascoltatore.riferimenti, 0) << "the service is still there";
}

TEST_F(EventoDelServizio, DoesNotTellAnOlderErrorAsTheOneOfAHandler) {
  // With recipients of its own the service reports to the person at once.
  const auto coll = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  ASSERT_EQ(servizio->putref_vCollDestinatari(coll.Get()), S_OK);
  ASSERT_EQ(servizio->put_ModalitaInvio(::kvManuale), S_OK);
  Attacca(primo);
  Attacca(secondo);
  primo.azione = [] {
    ComPtr<ICreateErrorInfo> creato;
    CreateErrorInfo(creato.Uscita());
    creato->SetDescription(const_cast<LPOLESTR>(L"errore vecchio"));
    SetErrorInfo(0, creato.Come<IErrorInfo>(IID_IErrorInfo).Get());
  };
  secondo.esito = E_FAIL;
  Invia();
  ASSERT_THAT(messaggi_.detti, Not(IsEmpty()));
  EXPECT_THAT(messaggi_.detti[0], HasSubstr("GestioneEventoBeforeSendMail"));
  EXPECT_THAT(messaggi_.detti[0], Not(HasSubstr("errore vecchio")));
}

TEST_F(EventoDelServizio, IsTheOnePointThatTheServiceEnumerates) {
  ComPtr<IEnumConnectionPoints> elenco;
  ASSERT_EQ(contenitore->EnumConnectionPoints(elenco.Uscita()), S_OK);
  ComPtr<IConnectionPoint> trovato;
  ULONG presi = 0;
  EXPECT_EQ(elenco->Next(1, trovato.Uscita(), &presi), S_OK);
  EXPECT_EQ(trovato.Get(), punto.Get());
  IID interfaccia = IID_NULL;
  EXPECT_EQ(trovato->GetConnectionInterface(&interfaccia), S_OK);
  EXPECT_EQ(interfaccia, DIID_DCLSFW_MAILSERVEREventi);
  ComPtr<IConnectionPointContainer> proprietario;
  EXPECT_EQ(trovato->GetConnectionPointContainer(proprietario.Uscita()), S_OK);
  EXPECT_EQ(proprietario.Get(), contenitore.Get());
  EXPECT_EQ(elenco->Next(1, trovato.Uscita(), &presi), S_FALSE);
  EXPECT_EQ(presi, 0U);
  EXPECT_EQ(contenitore->EnumConnectionPoints(nullptr), E_POINTER);
}

TEST_F(EventoDelServizio, EnumeratesTheConnectionsThatThereAre) {
  const DWORD numeroPrimo = Attacca(primo);
  const DWORD numeroSecondo = Attacca(secondo);
  ComPtr<IEnumConnections> elenco;
  ASSERT_EQ(punto->EnumConnections(elenco.Uscita()), S_OK);
  punto->Unadvise(numeroPrimo);  // the list is the current one
  CONNECTDATA dati[3] = {};
  ULONG presi = 0;
  EXPECT_EQ(elenco->Next(3, dati, &presi), S_FALSE);
  ASSERT_EQ(presi, 2U);
  EXPECT_EQ(dati[0].pUnk, static_cast<IUnknown*>(&primo));
  EXPECT_EQ(dati[0].dwCookie, numeroPrimo);
  EXPECT_EQ(dati[1].pUnk, static_cast<IUnknown*>(&secondo));
  EXPECT_EQ(dati[1].dwCookie, numeroSecondo);
  for (ULONG indice = 0; indice < presi; ++indice) dati[indice].pUnk->Release();
  EXPECT_EQ(elenco->Reset(), S_OK);
  EXPECT_EQ(elenco->Next(2, dati, nullptr), E_POINTER);
  EXPECT_EQ(elenco->Skip(1), S_OK);
  ComPtr<IEnumConnections> copia;
  ASSERT_EQ(elenco->Clone(copia.Uscita()), S_OK);
  EXPECT_EQ(copia->Next(1, dati, nullptr), S_OK);
  EXPECT_EQ(dati[0].dwCookie, numeroSecondo);
  dati[0].pUnk->Release();
  EXPECT_EQ(elenco->Skip(2), S_FALSE);
  elenco.Reset();
  copia.Reset();
  EXPECT_EQ(primo.riferimenti, 0);
}

TEST_F(EventoDelServizio, RefusesAHandlerThatCannotBeCalled) {
  DWORD numero = 7;
  EXPECT_EQ(punto->Advise(contenitore.Get(), nullptr), E_POINTER);
  EXPECT_EQ(punto->Advise(nullptr, &numero), E_POINTER);
  ComPtr<IEnumConnectionPoints> senzaMembri;
  ASSERT_EQ(contenitore->EnumConnectionPoints(senzaMembri.Uscita()), S_OK);
  EXPECT_EQ(punto->Advise(senzaMembri.Get(), &numero), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(numero, 0U);
}

}  // namespace
}  // namespace orve
