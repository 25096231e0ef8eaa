// The before-send event and its stages: the six texts, what the handler may change, and what comes back as
// objects.
#include <vector>

#include "fakes/allocazioni.h"
#include "fakes/servizio_di_prova.h"
#include "service/before_send.h"

namespace orve {
namespace {

using host::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class EventoPrimaDelInvio : public fakes::ServizioDiProva {
 protected:
  EventoPrimaDelInvio() {
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "corpo";
    servizio->ModalitaInvio(kvManuale);
  }

  /// The recipients as "name<address>company/box".
  [[nodiscard]] std::vector<std::string> Recipienti() const {
    std::vector<std::string> testi;
    for (const auto& d : *servizio->vCollDestinatari) {
      testi.push_back(d->Nome() + "<" + d->Indirizzo() + ">" + d->Azienda() + "/" +
                      std::to_string(d->Casella()));
    }
    return testi;
  }
  [[nodiscard]] std::vector<std::string> Elenco() const {
    std::vector<std::string> percorsi;
    if (servizio->vElencoAllegati.IsEmpty()) return percorsi;
    for (const auto& percorso : std::as_const(servizio->vElencoAllegati).ToArray()) {
      percorsi.push_back(percorso.ToText());
    }
    return percorsi;
  }
  void Gestisci() {
    GestioneEventoBeforeSendMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
  }
};

TEST_F(EventoPrimaDelInvio, TheHandlerSeesTheSixTextsInTheirOrder) {
  auto& collezione = Collezione();
  collezione.AddFromLista("a@x.example", "Anna", "", 0);
  collezione.AddFromLista("c@x.example", "Carlo", "", 1);
  collezione.AddFromLista("n@x.example", "Nino", "", 2);
  servizio->vOggetto = "Fattura 12";
  servizio->vMailAttachment = "C:\\f.pdf";
  std::vector<std::string> visti;
  servizio->BeforeSendMail = [&](auto& oggetto, auto& corpo, auto& a, auto& cc, auto& ccn, auto& allegati) {
    visti = {oggetto, corpo, a, cc, ccn, allegati};
  };
  Gestisci();
  EXPECT_THAT(visti, ElementsAre("Fattura 12", "corpo", "Anna<a@x.example>", "Carlo<c@x.example>",
                                 "Nino<n@x.example>", "C:\\f.pdf"));
}

TEST_F(EventoPrimaDelInvio, WithoutAHandlerRecipientsComeBackAsNewObjects) {
  const auto vecchio = Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  const std::weak_ptr<CollDestinatari> vecchiaCollezione = servizio->vCollDestinatari;
  servizio->vFlagCorpo = 0;
  Gestisci();
  EXPECT_TRUE(vecchiaCollezione.expired());
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>Acme/0"));
  EXPECT_NE(servizio->vCollDestinatari->Item(1), vecchio);
  EXPECT_EQ(servizio->vFlagCorpo, 0);
}

TEST_F(EventoPrimaDelInvio, BoxesComeBackInTheOrderOfTheThreeLists) {
  auto& collezione = Collezione();
  collezione.AddFromLista("n@x.example", "Nino", "", 2);
  collezione.AddFromLista("c@x.example", "Carlo", "", 1);
  collezione.AddFromLista("a@x.example", "Anna", "", 0);
  collezione.AddFromLista("b@x.example", "Bea", "", 0);
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0", "Bea<b@x.example>/0", "Carlo<c@x.example>/1",
                                        "Nino<n@x.example>/2"));
}

TEST_F(EventoPrimaDelInvio, WithoutACollectionTheLooseFieldsMakeOneRecipient) {
  servizio->vIndDestinatario = "a@x.example";
  servizio->vNome = "Anna";
  servizio->vDitta = "Acme";
  Gestisci();
  EXPECT_EQ(servizio->DestinatariA(), "Anna<a@x.example>");
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>Acme/0"));
}

TEST_F(EventoPrimaDelInvio, WithoutACollectionAndWithoutAnAddressTheListHoldsEmptyBrackets) {
  Gestisci();
  EXPECT_EQ(servizio->DestinatariA(), "<>");
  ASSERT_NE(servizio->vCollDestinatari, nullptr);
  EXPECT_THAT(Recipienti(), IsEmpty());
}

TEST_F(EventoPrimaDelInvio, WithoutAnAddressTheNameStandsInFrontOfTheEmptyBrackets) {
  servizio->vNome = "Anna";
  Gestisci();
  EXPECT_EQ(servizio->DestinatariA(), "Anna<>");
  EXPECT_THAT(Recipienti(), IsEmpty());
}

TEST_F(EventoPrimaDelInvio, ItemsPutInBeforehandStayInFront) {
  servizio->DestinatariA("Zeno<z@x.example>");
  servizio->vIndDestinatario = "a@x.example";
  Gestisci();
  EXPECT_EQ(servizio->DestinatariA(), "Zeno<z@x.example>;<a@x.example>");
  EXPECT_THAT(Recipienti(), ElementsAre("Zeno<z@x.example>/0", "<a@x.example>/0"));
}

TEST_F(EventoPrimaDelInvio, ASecondSendCarriesTheRecipientsOfTheFirst) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  Gestisci();
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0", "Anna<a@x.example>/0"));
}

TEST_F(EventoPrimaDelInvio, ARecipientInAnUnknownBoxDisappearsFromTheSendButNotFromTheCopy) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  Collezione().AddFromLista("q@x.example", "Quinto", "", 3);
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0"));
  ASSERT_EQ(interno.messaggio.CollDestinatariCopia->Count(), 2);
  EXPECT_EQ(interno.messaggio.CollDestinatariCopia->Item(2)->Indirizzo(), "q@x.example");
}

TEST_F(EventoPrimaDelInvio, TheCopyHoldsEveryRecipientInBoxZero) {
  Collezione().AddFromLista("n@x.example", "Nino", "Acme", 2);
  Gestisci();
  const auto copia = interno.messaggio.CollDestinatariCopia->Item(1);
  EXPECT_EQ(copia->Casella(), 0);
  EXPECT_EQ(copia->Azienda(), "Acme");
}

TEST_F(EventoPrimaDelInvio, ARecipientWithoutAnAddressIsDropped) {
  Collezione().AddFromLista("", "Anna", "", 0);
  Collezione().AddFromLista("b@x.example", "Bea", "", 0);
  Gestisci();
  EXPECT_EQ(servizio->DestinatariA(), "Anna<>;Bea<b@x.example>");
  EXPECT_THAT(Recipienti(), ElementsAre("Bea<b@x.example>/0"));
}

TEST_F(EventoPrimaDelInvio, ASemicolonInANameMakesARecipientWithTheWrongAddress) {
  Collezione().AddFromLista("a@x.example", "Acme;Ufficio", "", 0);
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("<Acme>/0", "Ufficio<a@x.example>/0"));
}

struct CasoVoce {
  const char* label;
  const char* elenco;
  std::vector<std::string> want;
};

TEST_F(EventoPrimaDelInvio, TheLenientReaderTakesEveryForm) {
  const CasoVoce casi[] = {
      {"name and address", "Anna<a@x.example>", {"Anna<a@x.example>/0"}},
      {"bare address first", "a@x.example", {"<a@x.example>/0"}},
      {"bare address after a named item takes its name",
       "Anna<a@x.example>;b@x.example",
       {"Anna<a@x.example>/0", "Anna<b@x.example>/0"}},
      {"no closing bracket", "Anna<a@x.example", {"Anna<a@x.example>/0"}},
      {"no opening bracket",
       "Anna<a@x.example>;b@x.example>",
       {"Anna<a@x.example>/0", "Anna<b@x.example>/0"}},
      {"two separators in a row",
       "Anna<a@x.example>;;Bea<b@x.example>",
       {"Anna<a@x.example>/0", "Bea<b@x.example>/0"}},
      {"separator at the end", "Anna<a@x.example>;", {"Anna<a@x.example>/0"}},
      {"an empty address is skipped but leaves its name", "Zeno<>;b@x.example", {"Zeno<b@x.example>/0"}},
      {"the name is not trimmed", "Anna <a@x.example>", {"Anna <a@x.example>/0"}},
      {"text after the closing bracket is lost", "Anna<a@x.example> (casa)", {"Anna<a@x.example>/0"}},
      {"accents", "Nicolò<n@x.example>", {"Nicolò<n@x.example>/0"}},
  };
  for (const auto& caso : casi) {
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    servizio->DestinatariA(caso.elenco);
    Gestisci();
    EXPECT_EQ(Recipienti(), caso.want) << caso.label;
  }
}

TEST_F(EventoPrimaDelInvio, ABareAddressThatTheHandlerPutsAfterANamedItemTakesItsName) {
  Collezione().AddFromLista("a@x.example", "Anna", "", 0);
  servizio->BeforeSendMail = [](auto&, auto&, auto& a, auto&, auto&, auto&) { a += ";b@x.example"; };
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0", "Anna<b@x.example>/0"));
}

TEST_F(EventoPrimaDelInvio, TheNameSurvivesFromOneListToTheNext) {
  Collezione();
  servizio->DestinatariA("Anna<a@x.example>");
  servizio->DestinatariCC("c@x.example");
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0", "Anna<c@x.example>/1"));
}

TEST_F(EventoPrimaDelInvio, AClosingBracketInFrontOfTheOpeningOneEndsTheStageAtThatItem) {
  servizio->DestinatariA("Anna<a@x.example>;>rotto<;Bea<b@x.example>");
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0"));
  EXPECT_THAT(
      Messaggi(),
      ElementsAre("ObjMessaggi.MostraMsg 5 Chiamata di routine o argomento non validi ORVE_MAILSERVER: "
                  "CLSFW_MAILSERVER: AfterDestinatari|0||(assente)"));
}

TEST_F(EventoPrimaDelInvio, TheCompanyComesBackByAddressAndNameAndTheLastMatchWins) {
  auto& collezione = Collezione();
  collezione.AddFromLista("a@x.example", "Anna", "Prima", 0);
  collezione.AddFromLista("a@x.example", "Anna", "Seconda", 0);
  collezione.AddFromLista("a@x.example", "Altra", "Terza", 0);
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>Seconda/0", "Anna<a@x.example>Seconda/0",
                                        "Altra<a@x.example>Terza/0"));
}

TEST_F(EventoPrimaDelInvio, ABlankCompanyStaysWithAnARecipientAndIsEmptiedInTheCopies) {
  auto& collezione = Collezione();
  collezione.AddFromLista("a@x.example", "Anna", "   ", 0);
  collezione.AddFromLista("c@x.example", "Carlo", "   ", 1);
  collezione.AddFromLista("n@x.example", "Nino", "   ", 2);
  Gestisci();
  EXPECT_THAT(Recipienti(),
              ElementsAre("Anna<a@x.example>   /0", "Carlo<c@x.example>/1", "Nino<n@x.example>/2"));
}

// Recipients of an earlier send stay in the lists, but nothing more is known about them once the caller has
// replaced them.
TEST_F(EventoPrimaDelInvio, TheCopyOfAnEarlierSendIsDropped) {
  Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  Gestisci();
  const std::weak_ptr<CollDestinatari> vecchia = interno.messaggio.CollDestinatariCopia;
  servizio->vCollDestinatari.reset();
  Collezione().AddFromLista("b@x.example", "Bea", "Beta", 0);
  Gestisci();
  EXPECT_TRUE(vecchia.expired());
  ASSERT_EQ(interno.messaggio.CollDestinatariCopia->Count(), 1);
  EXPECT_EQ(interno.messaggio.CollDestinatariCopia->Item(1)->Nome(), "Bea");
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>/0", "Bea<b@x.example>Beta/0"));

  // The loose fields make a copy of their own too.
  servizio->vCollDestinatari.reset();
  servizio->DestinatariA("");
  servizio->vIndDestinatario = "c@x.example";
  Gestisci();
  ASSERT_EQ(interno.messaggio.CollDestinatariCopia->Count(), 1);
  EXPECT_EQ(interno.messaggio.CollDestinatariCopia->Item(1)->Indirizzo(), "c@x.example");
}

TEST_F(EventoPrimaDelInvio, AnAddressThatTheHandlerChangedHasNoCompany) {
  Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  servizio->BeforeSendMail = [](auto&, auto&, auto& a, auto&, auto&, auto&) { a = "Anna<nuovo@x.example>"; };
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<nuovo@x.example>/0"));
  EXPECT_EQ(servizio->DestinatariA(), "Anna<nuovo@x.example>");
}

TEST_F(EventoPrimaDelInvio, AListOf32767ItemsIsReadAndOneMoreOverflows) {
  std::string elenco = "a@x.example";
  for (int i = 1; i < 32767; ++i) elenco += ";a@x.example";
  Collezione();
  servizio->DestinatariA(elenco);
  Gestisci();
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 32767);
  EXPECT_THAT(Messaggi(), IsEmpty());

  servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
  servizio->DestinatariA(elenco + ";a@x.example");
  Gestisci();
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 0);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 6 Overflow ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                                      "AfterDestinatari|0||(assente)"));
}

TEST_F(EventoPrimaDelInvio, ABracketAfterPosition32767Overflows) {
  Collezione();
  servizio->DestinatariA(std::string(32766, 'x') + "<a@x.example>");  // "<" at 32767, ">" after it
  Gestisci();
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 0);
  EXPECT_THAT(Messaggi(), SizeIs(1));
  journal->Svuota();
  servizio->DestinatariA(std::string(32754, 'x') + "<a@x.example>");  // ">" at 32767
  Gestisci();
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 1);
  EXPECT_THAT(Messaggi(), IsEmpty());
}

TEST_F(EventoPrimaDelInvio, TheMainAttachmentStandsFirstAndTheListAfterIt) {
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->vElencoAllegati = Variant::Array{"C:\\a.pdf", "C:\\b.pdf"};
  Gestisci();
  EXPECT_EQ(servizio->Allegati(), "C:\\f.pdf;C:\\a.pdf;C:\\b.pdf");
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf", "C:\\a.pdf", "C:\\b.pdf"));
  EXPECT_EQ(servizio->vMailAttachment, "C:\\f.pdf");
}

TEST_F(EventoPrimaDelInvio, AMainAttachmentThatStandsInTheListGoesOutTwice) {
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->vElencoAllegati = Variant::Array{"C:\\f.pdf"};
  Gestisci();
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf", "C:\\f.pdf"));
}

TEST_F(EventoPrimaDelInvio, AListAloneLeavesNoMainAttachment) {
  servizio->vElencoAllegati = Variant::Array{"C:\\a.pdf"};
  Gestisci();
  EXPECT_THAT(Elenco(), ElementsAre("C:\\a.pdf"));
  EXPECT_EQ(servizio->vMailAttachment, "");
}

TEST_F(EventoPrimaDelInvio, AllegatiStartsAfreshAtEachSend) {
  servizio->Allegati("C:\\vecchio.pdf");
  servizio->vMailAttachment = "C:\\f.pdf";
  Gestisci();
  EXPECT_EQ(servizio->Allegati(), "C:\\f.pdf");
}

// The six texts are the only way in: everything that they represent is rebuilt from them.
TEST_F(EventoPrimaDelInvio, WhatTheHandlerWritesIntoTheServiceItselfIsUndone) {
  Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
  servizio->vOggetto = "Fattura 12";
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) {
    servizio->vOggetto = "altro oggetto";
    servizio->vCorpoMail = "altro corpo";
    servizio->vCollDestinatari->AddFromLista("b@x.example", "Bea", "", 0);
    servizio->vElencoAllegati = Variant::Array{"C:\\altro.pdf"};
    servizio->Allegati("C:\\altro.pdf");
    servizio->DestinatariA("Bea<b@x.example>");
    servizio->DestinatariCC("Carlo<c@x.example>");
    servizio->DestinatariCCn("Nino<n@x.example>");
  };
  Gestisci();
  EXPECT_EQ(servizio->vOggetto, "Fattura 12");
  EXPECT_EQ(servizio->vCorpoMail, "corpo");
  EXPECT_THAT(Recipienti(), ElementsAre("Anna<a@x.example>Acme/0"));
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf"));
  EXPECT_EQ(servizio->Allegati(), "C:\\f.pdf");
  EXPECT_EQ(servizio->DestinatariA() + servizio->DestinatariCC() + servizio->DestinatariCCn(),
            "Anna<a@x.example>");
}

TEST_F(EventoPrimaDelInvio, AHandlerThatClearsTheAttachmentsSendsNone) {
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto& allegati) { allegati.clear(); };
  Gestisci();
  EXPECT_TRUE(servizio->vElencoAllegati.IsEmpty());
  EXPECT_EQ(servizio->vMailAttachment, "");
}

TEST_F(EventoPrimaDelInvio, AHandlerMayAppendAnAttachment) {
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto& allegati) {
    allegati += ";C:\\n.pdf";
  };
  Gestisci();
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf", "C:\\n.pdf"));
  EXPECT_EQ(servizio->vMailAttachment, "C:\\f.pdf");
}

TEST_F(EventoPrimaDelInvio, TwoSeparatorsInARowGiveAnEmptyAttachment) {
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto& allegati) {
    allegati = "C:\\a;;C:\\b";
  };
  Gestisci();
  EXPECT_THAT(Elenco(), ElementsAre("C:\\a", "", "C:\\b"));
}

TEST_F(EventoPrimaDelInvio, AChangedBodyBecomesTheCallersOwn) {
  servizio->vFlagCorpo = 0;
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "dalle impostazioni";
  servizio->BeforeSendMail = [](auto&, auto& corpo, auto&, auto&, auto&, auto&) { corpo += "!"; };
  Gestisci();
  EXPECT_EQ(servizio->vFlagCorpo, 1);
  EXPECT_EQ(servizio->vCorpoMail, "dalle impostazioni!");
}

TEST_F(EventoPrimaDelInvio, AnUnchangedBodyLeavesTheChoiceToTheChannel) {
  servizio->vFlagCorpo = 0;
  servizio->FlgMsgPers = true;
  servizio->MsgPers = "dalle impostazioni";
  servizio->BeforeSendMail = [](auto& oggetto, auto&, auto&, auto&, auto&, auto&) { oggetto = "altro"; };
  Gestisci();
  EXPECT_EQ(servizio->vFlagCorpo, 0);
  EXPECT_EQ(servizio->vCorpoMail, "dalle impostazioni");
  EXPECT_EQ(servizio->vOggetto, "altro");
}

// What counts is what the handler leaves in the six texts. Anything it also writes into the service's own
// members is overwritten, even where it left the text as it was.
TEST_F(EventoPrimaDelInvio, WhatTheHandlerWritesIntoTheMembersGivesWayToTheTexts) {
  auto& collezione = Collezione();
  collezione.AddFromLista("a@x.example", "Anna", "", 0);
  collezione.AddFromLista("c@x.example", "Carlo", "", 1);
  collezione.AddFromLista("n@x.example", "Nino", "", 2);
  servizio->vOggetto = "oggetto";
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) {
    servizio->DestinatariA("Zeno<z@x.example>");
    servizio->DestinatariCC("Zita<z@x.example>");
    servizio->DestinatariCCn("Zara<z@x.example>");
    servizio->Allegati("C:\\z.pdf");
    servizio->vElencoAllegati = Variant::Array{"C:\\z.pdf"};
    servizio->vCollDestinatari.reset();
    servizio->vOggetto = "dal membro";
  };
  Gestisci();
  EXPECT_EQ(servizio->DestinatariA(), "Anna<a@x.example>");
  EXPECT_EQ(servizio->DestinatariCC(), "Carlo<c@x.example>");
  EXPECT_EQ(servizio->DestinatariCCn(), "Nino<n@x.example>");
  EXPECT_EQ(servizio->Allegati(), "C:\\f.pdf");
  EXPECT_THAT(Recipienti(),
              ElementsAre("Anna<a@x.example>/0", "Carlo<c@x.example>/1", "Nino<n@x.example>/2"));
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf"));
  EXPECT_EQ(servizio->vOggetto, "oggetto");
}

struct CasoCorpoScritto {
  const char* label;
  const char* membro;
  const char* testo;
  std::int16_t wantFlag;
};

// Whether the body counts as the caller's own is decided by member against text, not by what the text was
// before.
TEST_F(EventoPrimaDelInvio, ABodyWrittenIntoTheMemberCountsAsChangedUnlessTheTextSaysTheSame) {
  const CasoCorpoScritto casi[] = {
      {"member only", "nuovo", "dalle impostazioni", 1},
      {"text only", "dalle impostazioni", "nuovo", 1},
      {"both alike", "nuovo", "nuovo", 0},
      {"both, unlike", "altro", "nuovo", 1},
      {"case counts", "NUOVO", "nuovo", 1},
  };
  for (const auto& caso : casi) {
    servizio->vFlagCorpo = 0;
    servizio->FlgMsgPers = true;
    servizio->MsgPers = "dalle impostazioni";
    servizio->BeforeSendMail = [&](auto&, auto& corpo, auto&, auto&, auto&, auto&) {
      servizio->vCorpoMail = caso.membro;
      corpo = caso.testo;
    };
    Gestisci();
    EXPECT_EQ(servizio->vFlagCorpo, caso.wantFlag) << caso.label;
    EXPECT_EQ(servizio->vCorpoMail, caso.testo) << caso.label;
  }
}

TEST_F(EventoPrimaDelInvio, MembersBesideTheSixTextsKeepWhatTheHandlerWrote) {
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->vElencoAllegati = Variant::Array{"C:\\a.pdf"};
  servizio->BeforeSendMail = [&](auto&, auto&, auto&, auto&, auto&, auto&) {
    servizio->vMailAttachment = "C:\\a.pdf";
    servizio->vNome = "Nome";
    servizio->vDitta = "Ditta";
    servizio->vIndDestinatario = "i@x.example";
    servizio->vFlagCorpo = 2;
  };
  Gestisci();
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf", "C:\\a.pdf"));
  EXPECT_EQ(servizio->vMailAttachment, "C:\\a.pdf");
  EXPECT_EQ(servizio->vNome + servizio->vDitta + servizio->vIndDestinatario, "NomeDittai@x.example");
  EXPECT_EQ(servizio->vFlagCorpo, 2);
}

TEST_F(EventoPrimaDelInvio, ADirectSendKeepsTheBodyItWasGiven) {
  interno.messaggio.FlagInvioDiretto = true;
  servizio->vFlagCorpo = 0;
  servizio->vCorpoMail = "***(Nome)***";
  Gestisci();
  EXPECT_EQ(servizio->vCorpoMail, "***(Nome)***");
}

TEST_F(EventoPrimaDelInvio, AFailingHandlerEndsTheStageWithTheCollectionAsItStood) {
  Collezione().AddFromLista("q@x.example", "Quinto", "", 3);
  const auto* const prima = servizio->vCollDestinatari.get();
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
    throw host::Errore(1001, "Chiamante", "no");
  };
  Gestisci();
  EXPECT_EQ(servizio->vCollDestinatari.get(), prima);
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 1001 no ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                                      "GestioneEventoBeforeSendMail|0||(assente)"));
}

TEST_F(EventoPrimaDelInvio, AHandlerMayDetachItself) {
  const std::string nuovo(64, 'o');
  servizio->BeforeSendMail = [this, nuovo](auto& oggetto, auto&, auto&, auto&, auto&, auto&) {
    servizio->BeforeSendMail = nullptr;
    oggetto = nuovo;  // what the handler holds must still be there
  };
  Gestisci();
  EXPECT_EQ(servizio->vOggetto, nuovo);
  EXPECT_EQ(servizio->BeforeSendMail, nullptr);
}

TEST_F(EventoPrimaDelInvio, AForeignExceptionOfTheHandlerIsReportedToo) {
  servizio->BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
    throw std::runtime_error("estraneo");
  };
  Gestisci();
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 440 estraneo ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                                      "GestioneEventoBeforeSendMail|0||(assente)"));
}

TEST_F(EventoPrimaDelInvio, AFailedStageDoesNotStopTheSequence) {
  servizio->vElencoAllegati = "non un elenco";
  servizio->vMailAttachment = "C:\\f.pdf";
  servizio->vIndDestinatario = "a@x.example";
  Gestisci();
  EXPECT_THAT(Recipienti(), ElementsAre("<a@x.example>/0"));
  EXPECT_THAT(Elenco(), ElementsAre("C:\\f.pdf"));
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 13 Tipo non corrispondente ORVE_MAILSERVER: "
                                      "CLSFW_MAILSERVER: BeforeAllegati|0||(assente)"));
}

struct CasoFase {
  const char* label;
  std::function<void(CLSFW_MAILSERVER&)> guasto;
  const char* wantLog;
};

// The unattended mode names procedures in the log; three of the stages name another one.
TEST_F(EventoPrimaDelInvio, UnattendedFailuresStandInTheLogUnderTheirRequiredNames) {
  interno.impostazioni.PathTemp = "C:\\Temp";
  servizio->ModalitaInvio(kvAutomatico);
  const CasoFase casi[] = {
      {"handler",
       [](auto& s) {
         s.BeforeSendMail = [](auto&, auto&, auto&, auto&, auto&, auto&) {
           throw host::Errore(host::kOverflow);
         };
       },
       "ErroreInvio   GestioneEventoBeforeSendMail   "},
      {"BeforeAllegati", [](auto& s) { s.vElencoAllegati = 5; }, "ErroreInvio   ApriForm_OpzInvio   "},
      {"AfterDestinatari", [](auto& s) { s.DestinatariA("> <"); }, "ErroreInvio   AfterDestinatari   "},
  };
  for (const auto& caso : casi) {
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    servizio->vElencoAllegati = {};
    servizio->BeforeSendMail = nullptr;
    servizio->DestinatariA("");
    caso.guasto(*servizio);
    journal->Svuota();
    Gestisci();
    const auto righe = journal->Righe({"TextStream.WriteLine"});
    ASSERT_FALSE(righe.empty()) << caso.label;
    EXPECT_NE(righe.back().find(caso.wantLog), std::string::npos) << caso.label << ": " << righe.back();
    EXPECT_THAT(Messaggi(), IsEmpty()) << caso.label;
  }
}

TEST_F(EventoPrimaDelInvio, StagesReportTheirOwnNamesToThePerson) {
  servizio->DestinatariA("> <");
  AfterDestinatari(interno.messaggio, interno.impostazioni, interno.oggetti);
  servizio->vElencoAllegati = 5;
  BeforeAllegati(interno.messaggio, interno.impostazioni, interno.oggetti);
  EXPECT_THAT(
      Messaggi(),
      ElementsAre("ObjMessaggi.MostraMsg 5 Chiamata di routine o argomento non validi ORVE_MAILSERVER: "
                  "CLSFW_MAILSERVER: AfterDestinatari|0||(assente)",
                  "ObjMessaggi.MostraMsg 13 Tipo non corrispondente ORVE_MAILSERVER: CLSFW_MAILSERVER: "
                  "BeforeAllegati|0||(assente)"));
}

// Nothing short of exhausted memory makes these two stages fail.
TEST_F(EventoPrimaDelInvio, StagesThatRunOutOfMemoryReportTheirOwnNamesToThePerson) {
  servizio->Allegati("C:\\a.pdf");
  fakes::ConAllocazioneCheFallisce(
      1, [&] { BeforeDestinatari(interno.messaggio, interno.impostazioni, interno.oggetti); });
  fakes::ConAllocazioneCheFallisce(
      1, [&] { AfterAllegati(interno.messaggio, interno.impostazioni, interno.oggetti); });
  EXPECT_THAT(Messaggi(), ElementsAre("ObjMessaggi.MostraMsg 7 Memoria esaurita ORVE_MAILSERVER: "
                                      "CLSFW_MAILSERVER: BeforeDestinatari|0||(assente)",
                                      "ObjMessaggi.MostraMsg 7 Memoria esaurita ORVE_MAILSERVER: "
                                      "CLSFW_MAILSERVER: AfterAllegati|0||(assente)"));
}

TEST_F(EventoPrimaDelInvio, UnattendedStagesThatRunOutOfMemoryStandInTheLogUnderTheNameOfTheDialog) {
  interno.impostazioni.PathTemp = "C:\\Temp";
  servizio->ModalitaInvio(kvAutomatico);
  servizio->Allegati("C:\\a.pdf");
  const std::function<void()> fasi[] = {
      [&] { BeforeDestinatari(interno.messaggio, interno.impostazioni, interno.oggetti); },
      [&] { AfterAllegati(interno.messaggio, interno.impostazioni, interno.oggetti); }};
  for (const auto& fase : fasi) {
    journal->Svuota();
    fakes::ConAllocazioneCheFallisce(1, fase);
    const auto righe = journal->Righe({"TextStream.WriteLine"});
    ASSERT_FALSE(righe.empty());
    EXPECT_NE(righe.back().find("ErroreInvio   ApriForm_OpzInvio   "), std::string::npos) << righe.back();
    EXPECT_THAT(Messaggi(), IsEmpty());
  }
}

TEST_F(EventoPrimaDelInvio, AddAllegatoMakesAListAndLetsItGrow) {
  servizio->AddAllegato("C:\\a.pdf");
  servizio->AddAllegato("non esiste");
  EXPECT_THAT(Elenco(), ElementsAre("C:\\a.pdf", "non esiste"));
}

TEST_F(EventoPrimaDelInvio, AddAllegatoToSomethingElseThanAListIsToldInEverySilence) {
  servizio->silentMode = true;
  servizio->ModalitaInvio(kvAutomatico);
  servizio->vElencoAllegati = "testo";
  servizio->AddAllegato("C:\\a.pdf");
  EXPECT_THAT(
      Messaggi(),
      ElementsAre("ObjMessaggi.MostraMsg Tipo non corrispondente|48|ORVE_MAIL: InviaMailSMTP|(assente)"));
}

TEST_F(EventoPrimaDelInvio, AnAttachmentThatCannotBeToldOfIsNoErrorOfTheCallers) {
  servizio->vElencoAllegati = "testo";
  journal->Fallisce("ObjMessaggi.MostraMsg");
  EXPECT_NO_THROW(servizio->AddAllegato("C:\\a.pdf"));
  EXPECT_EQ(Messaggi().size(), 1U);
}

TEST_F(EventoPrimaDelInvio, ManyRecipientsFindTheirCompaniesAgain) {
  auto& collezione = Collezione();
  for (int i = 0; i < 20'000; ++i) {
    const std::string numero = std::to_string(i);
    collezione.AddFromLista("r" + numero + "@x.example", "N" + numero, "Azienda " + numero, 0);
  }
  Gestisci();
  ASSERT_EQ(servizio->vCollDestinatari->Count(), 20'000);
  EXPECT_EQ(servizio->vCollDestinatari->Item(20'000)->Azienda(), "Azienda 19999");
}

TEST_F(EventoPrimaDelInvio, HostileTextsPassThroughTheListsWithoutHarm) {
  const std::string ostili[] = {
      std::string("a\0b", 3),     "riga\r\nBcc: x@y.example", "\xFF\xFE", "\"'<<>>", "<", ">",
      std::string(1'000'000, 'x')};
  for (const auto& testo : ostili) {
    servizio->vCollDestinatari = std::make_shared<CollDestinatari>(ambiente);
    servizio->DestinatariA("");
    Collezione().AddFromLista(testo, testo, testo, 0);
    servizio->vMailAttachment = testo;
    servizio->vOggetto = testo;
    EXPECT_NO_THROW(Gestisci());
  }
}

}  // namespace
}  // namespace orve
