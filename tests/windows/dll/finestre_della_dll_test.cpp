// The windows that the DLL shows to a program that uses its published classes, driven as a person does.
#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "dialogs/layouts.h"
#include "forms/contenuto.h"
#include "host_recitato.h"
#include "orve_mailserver.h"
#include "persona.h"
#include "win32/com_ptr.h"
#include "win32/conversions.h"

namespace orve {
namespace {

using adapters::win32::Bstr;
using adapters::win32::ComPtr;
using adapters::win32::ToBstr;
using adapters::win32::VariantCom;
using adapters::win32::finestre::Attendi;
using adapters::win32::finestre::Compagno;
using adapters::win32::finestre::InFinestra;
using adapters::win32::finestre::Programma;
using adapters::win32::finestre::Vista;

template <class Funzione>
Funzione Esportata(HMODULE modulo, const char* nome) {
  return reinterpret_cast<Funzione>(reinterpret_cast<void*>(GetProcAddress(modulo, nome)));
}

class FinestreDellaDll : public ::testing::Test {
 protected:
  using Azione = std::function<void(const Vista&)>;

  void SetUp() override {
    ASSERT_TRUE(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    modulo_ = LoadLibraryW(ORVE_DLL);
    ASSERT_NE(modulo_, nullptr);
    host = std::make_unique<prova::HostRecitato>();
    const auto daClasse = Esportata<DaClasse>(modulo_, "DllGetClassObject");
    ComPtr<IClassFactory> fabbrica;
    ASSERT_EQ(daClasse(CLSID_CLSFW_MAILSERVER, IID_IClassFactory, fabbrica.UscitaVoid()), S_OK);
    ASSERT_EQ(fabbrica->CreateInstance(nullptr, __uuidof(ICLSFW_MAILSERVER), servizio.UscitaVoid()), S_OK);
    ASSERT_EQ(servizio->putref_ConnectionADO(host->Connessione().Get()), S_OK);
    ASSERT_EQ(servizio->put_DittaCorrente(adapters::win32::ToCom(1).Get()), S_OK);
    VariantCom ignorato;
    ASSERT_EQ(servizio->GetImpostazioni(ignorato.Uscita()), S_OK);
    ASSERT_EQ(servizio->InizializzaRegistroInvioMailMultiprofilo(ToBstr("FATTURE").Get(), ToBstr("").Get(), 7,
                                                                 ToBstr("Fattura").Get()),
              S_OK);
    ASSERT_EQ(servizio->put_ModalitaInvio(::kvManuale), S_OK);
    ASSERT_EQ(servizio->put_vOggetto(ToBstr("Fattura").Get()), S_OK);
    ASSERT_EQ(servizio->put_vCorpoMail(ToBstr("Buongiorno").Get()), S_OK);
    ASSERT_EQ(servizio->put_vFlagCorpo(1), S_OK);
  }
  void TearDown() override {
    servizio.Reset();
    host.reset();
    if (modulo_ != nullptr) {
      EXPECT_EQ(Esportata<SenzaArgomenti>(modulo_, "DllCanUnloadNow")(), S_OK) << "an object stayed behind";
      FreeLibrary(modulo_);
    }
    CoUninitialize();
  }

  void Parametri(Azione persona) {
    const Compagno qualcuno(InFinestra(programma, LayoutMailParams(), std::move(persona)));
    EXPECT_EQ(servizio->ReturnMailParameters(), S_OK);
  }
  void Invia(Azione persona) {
    const Compagno qualcuno(InFinestra(programma, LayoutOpzMail(), std::move(persona)));
    EXPECT_EQ(servizio->AvviaProceduraInvio(adapters::win32::ToCom("501").Get(), ::kvDestinatarioFaxCliente),
              S_OK);
  }
  [[nodiscard]] bool Consegnato() const { return host->Annotato("smtp.SendMail"); }
  [[nodiscard]] std::string Testo(HRESULT (STDMETHODCALLTYPE ICLSFW_MAILSERVER::*lettura)(BSTR*)) {
    Bstr letto;
    EXPECT_EQ((servizio.Get()->*lettura)(letto.Uscita()), S_OK);
    return adapters::win32::FromBstr(letto.Get());
  }
  [[nodiscard]] bool Vero(HRESULT (STDMETHODCALLTYPE ICLSFW_MAILSERVER::*lettura)(VARIANT_BOOL*)) {
    VARIANT_BOOL letto = VARIANT_FALSE;
    EXPECT_EQ((servizio.Get()->*lettura)(&letto), S_OK);
    return letto != VARIANT_FALSE;
  }
  [[nodiscard]] int Stato() {
    ::kvEnum_ErroreMail stato = ::kvProgramError;
    EXPECT_EQ(servizio->get_Stato(&stato), S_OK);
    return stato;
  }
  static void Preme(const Vista& finestra, const char* pulsante) {
    finestra.Clicca(pulsante);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  }

  using DaClasse = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
  using SenzaArgomenti = HRESULT(STDAPICALLTYPE*)();
  Programma programma;
  std::unique_ptr<prova::HostRecitato> host;
  ComPtr<ICLSFW_MAILSERVER> servizio;

 private:
  HMODULE modulo_ = nullptr;
};

TEST_F(FinestreDellaDll, ConfirmedParametersAreReadBackThroughTheMembers) {
  ASSERT_EQ(servizio->put_MailParamCorpoUnico(ToBstr("Prima").Get()), S_OK);
  Parametri([](const Vista& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Personalizzazione unica invio mail");
    EXPECT_EQ(finestra.Contenuto("TXT_CORPO"), "Prima");
    EXPECT_EQ(finestra.Contenuto("CMB_ACCOUNT"), "noi@azienda.example - Mail");
    finestra.Clicca("CHK_READ");
    finestra.Riscrive("TXT_CORPO", "Dopo: perché no? €");
    Preme(finestra, "CMD_OK");
  });
  EXPECT_TRUE(Vero(&ICLSFW_MAILSERVER::get_MailParamIsValoriValidi));
  EXPECT_EQ(Testo(&ICLSFW_MAILSERVER::get_MailParamCorpoUnico), "Dopo: perché no? €");
  EXPECT_EQ(Testo(&ICLSFW_MAILSERVER::get_MailParamAllegatoUnico), "");
  EXPECT_TRUE(Vero(&ICLSFW_MAILSERVER::get_MailParamReadRcpt));
  EXPECT_FALSE(Vero(&ICLSFW_MAILSERVER::get_MailParamDeliveryStatus));
  ComPtr<IMittente> account;
  ASSERT_EQ(servizio->get_MailParamAccount(account.Uscita()), S_OK);
  ASSERT_TRUE(account);
  Bstr indirizzo;
  ASSERT_EQ(account->get_Indirizzo(indirizzo.Uscita()), S_OK);
  EXPECT_EQ(adapters::win32::FromBstr(indirizzo.Get()), "noi@azienda.example");
}

TEST_F(FinestreDellaDll, CancelledParametersStayAsTheyWere) {
  ASSERT_EQ(servizio->put_MailParamCorpoUnico(ToBstr("Prima").Get()), S_OK);
  Parametri([](const Vista& finestra) {
    finestra.Clicca("CHK_READ");
    finestra.Riscrive("TXT_CORPO", "Dopo");
    Preme(finestra, "CMD_ANNULLA");
  });
  EXPECT_FALSE(Vero(&ICLSFW_MAILSERVER::get_MailParamIsValoriValidi));
  EXPECT_EQ(Testo(&ICLSFW_MAILSERVER::get_MailParamCorpoUnico), "Prima");
  EXPECT_FALSE(Vero(&ICLSFW_MAILSERVER::get_MailParamReadRcpt));
}

TEST_F(FinestreDellaDll, AMessageChangedInTheComposeWindowReachesTheChannel) {
  Invia([](const Vista& finestra) {
    EXPECT_EQ(finestra.Titolo(), "Invio email...");
    EXPECT_EQ(finestra.Contenuto("TXT_EMAIL"), "Società Più S.r.l.<anna@x.example>");
    EXPECT_EQ(finestra.Contenuto("TXT_OGGETTO"), "Fattura");
    EXPECT_THAT(finestra.VociDiMenu("CMD_LEGENDA"), ::testing::ElementsAre("Ragione sociale"));
    finestra.Digita("TXT_EMAIL", ";Bruno<bruno@x.example>");
    finestra.Digita("TXT_EMAIL_CC", "capo@x.example");
    finestra.Riscrive("TXT_OGGETTO", "Nuova: perché no?");
    finestra.Digita("TXT_CORPO", " cambiato");
    Preme(finestra, "cmd_Invia");
  });
  EXPECT_EQ(Stato(), 0);
  EXPECT_EQ(host->Giornale().find("MostraMsg"), std::string::npos) << host->Giornale();
  EXPECT_TRUE(Consegnato()) << host->Giornale();
  EXPECT_TRUE(
      host->Annotato("smtp.AddRecipientEx Società Più S.r.l. <anna@x.example>;Bruno <bruno@x.example> 0"))
      << host->Giornale();
  EXPECT_TRUE(host->Annotato("smtp.AddRecipientEx  <capo@x.example> 1")) << host->Giornale();
  EXPECT_TRUE(host->Annotato("smtp.Subject Nuova: perché no?")) << host->Giornale();
  EXPECT_TRUE(host->Annotato("smtp.BodyText Buongiorno cambiato")) << host->Giornale();
  EXPECT_EQ(Testo(&ICLSFW_MAILSERVER::get_vOggetto), "Nuova: perché no?");
  ComPtr<ICollDestinatari> destinatari;
  ASSERT_EQ(servizio->get_vCollDestinatari(destinatari.Uscita()), S_OK);
  LONG quanti = 0;
  ASSERT_EQ(destinatari->get_Count(&quanti), S_OK);
  EXPECT_EQ(quanti, 3);
}

TEST_F(FinestreDellaDll, EscapeSendsNothingAndLeavesTheMessage) {
  Invia([this](const Vista& finestra) {
    finestra.Riscrive("TXT_OGGETTO", "Cambiata");
    finestra.Fuoco("TXT_OGGETTO");
    finestra.Tasto(VK_ESCAPE);
    Risponde(programma, adapters::forms::kDomandaAbbandono, IDYES);
    EXPECT_TRUE(Attendi([&] { return !finestra.Aperta(); }));
  });
  EXPECT_FALSE(Consegnato()) << host->Giornale();
  EXPECT_EQ(Stato(), 0);
  EXPECT_EQ(Testo(&ICLSFW_MAILSERVER::get_vOggetto), "Fattura");
}

}  // namespace
}  // namespace orve
