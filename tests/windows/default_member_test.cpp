// Objects with a default member where a value is wanted, as passed by compiled clients and by calls by
// number.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "orve_mailserver.h"
#include "win32/oggetto_com.h"
#include "windows/cliente_anticipato.h"
#include "windows/win32/doppio.h"

namespace orve {
namespace {

using adapters::win32::Bstr;
using adapters::win32::VariantCom;
using prova::ChiamataTardiva;

class MembroPredefinito : public prova::ClienteAnticipato {
 protected:
  void SetUp() override {
    ClienteAnticipato::SetUp();
    RecitaMessaggi();
    campo_ = prova::CreaDoppio("campo", giornale_);
    campo_->Predefinito(DISPATCH_PROPERTYGET, [this](const prova::ArrivoCom&) {
      if (guasto_) throw host::Errore(3021, "Righe", "BOF o EOF è True");
      return adapters::win32::ToCom(valore_);
    });
    servizio_ = Crea<ICLSFW_MAILSERVER>(CLSID_CLSFW_MAILSERVER);
    ASSERT_TRUE(servizio_);
  }
  void TearDown() override {
    servizio_.Reset();
    RitiraMessaggi();
    ClienteAnticipato::TearDown();
  }
  [[nodiscard]] VariantCom Campo() const { return VariantCom::DiOggetto(campo_.Get()); }
  [[nodiscard]] host::Variant Ditta() const {
    VariantCom letta;
    EXPECT_EQ(servizio_->get_DittaCorrente(letta.Uscita()), S_OK);
    return adapters::win32::FromCom(letta.Get());
  }

  /// Writes an object to a property of any type and to one of text, and finds its value in both.
  void ScriveIlValore(WORD modi, const VARIANT& oggetto) {
    for (const wchar_t* membro : {L"DittaCorrente", L"vOggetto"}) {
      const ChiamataTardiva scritta(servizio_.Get(), membro, modi, {oggetto}, {DISPID_PROPERTYPUT});
      EXPECT_EQ(scritta.esito, S_OK);
    }
    EXPECT_EQ(Ditta(), host::Variant("C001"));
    Bstr testo;
    EXPECT_EQ(servizio_->get_vOggetto(testo.Uscita()), S_OK);
    EXPECT_EQ(adapters::win32::FromBstr(testo.Get()), "C001");
  }

  host::Variant valore_ = "C001";
  bool guasto_ = false;
  prova::GiornaleCom giornale_ = std::make_shared<std::vector<std::string>>();
  adapters::win32::ComPtr<prova::DoppioCom> campo_;
  adapters::win32::ComPtr<ICLSFW_MAILSERVER> servizio_;
};

TEST_F(MembroPredefinito, ACompiledClientWritesTheValueAndSetsTheObject) {
  ASSERT_EQ(servizio_->put_DittaCorrente(Campo().Get()), S_OK);
  valore_ = "C002";
  EXPECT_EQ(Ditta(), host::Variant("C001"));
  ASSERT_EQ(servizio_->putref_DittaCorrente(Campo().Get()), S_OK);
  EXPECT_EQ(adapters::win32::ComDi(Ditta().ToObject()), static_cast<IDispatch*>(campo_.Get()));
}

TEST_F(MembroPredefinito, AVariableByReferenceHoldsAnObjectLikeAnyOther) {
  VariantCom campo = Campo();
  VARIANT variabile;
  VariantInit(&variabile);
  V_VT(&variabile) = VT_VARIANT | VT_BYREF;
  V_VARIANTREF(&variabile) = &campo.Get();
  ScriveIlValore(DISPATCH_PROPERTYPUT, variabile);
}

TEST_F(MembroPredefinito, ALanguageWithoutSetWritesTheValue) {
  ScriveIlValore(DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF, Campo().Get());
}

TEST_F(MembroPredefinito, AnErrorOfTheDefaultMemberIsTheErrorOfTheCall) {
  guasto_ = true;
  for (const wchar_t* membro : {L"DittaCorrente", L"vOggetto"}) {
    const ChiamataTardiva scritta(servizio_.Get(), membro, DISPATCH_PROPERTYPUT, {Campo().Get()},
                                  {DISPID_PROPERTYPUT});
    EXPECT_EQ(scritta.esito, DISP_E_EXCEPTION);
    EXPECT_EQ(scritta.eccezione.scode, static_cast<HRESULT>(0x800A0BCD));
    EXPECT_EQ(adapters::win32::FromBstr(Bstr::Adotta(scritta.eccezione.bstrSource).Get()), "Righe");
    EXPECT_EQ(adapters::win32::FromBstr(Bstr::Adotta(scritta.eccezione.bstrDescription).Get()),
              "BOF o EOF è True");
  }
  EXPECT_EQ(servizio_->AvviaProceduraInvio(Campo().Get(), kvDestinatarioFaxCliente),
            static_cast<HRESULT>(0x800A0BCD));
}

TEST_F(MembroPredefinito, ADefaultMemberThatWantsArgumentsIsNoValue) {
  const auto destinatari = Crea<ICollDestinatari>(CLSID_CollDestinatari);
  const VariantCom oggetto = VariantCom::DiOggetto(destinatari.Get());
  const ChiamataTardiva scritta(servizio_.Get(), L"vOggetto", DISPATCH_PROPERTYPUT, {oggetto.Get()},
                                {DISPID_PROPERTYPUT});
  EXPECT_EQ(scritta.esito, DISP_E_EXCEPTION);
  EXPECT_EQ(scritta.eccezione.scode, static_cast<HRESULT>(0x800A01C2));
  SysFreeString(scritta.eccezione.bstrSource);
  SysFreeString(scritta.eccezione.bstrDescription);
}

}  // namespace
}  // namespace orve
