// Unforeseen things that people and callers put into the windows: no crash, no hang, nothing lost, and
// nothing sent that the person did not see.
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "dialogs/FRMFW_MAILPARAMS.h"
#include "dialogs/finestra_di_prova.h"
#include "fakes/allocazioni.h"
#include "service/dialog_bridge.h"
#include "text/text.h"

namespace orve {
namespace {

using fakes::HeadlessForm;
using fakes::RigaAccount;
using host::Variant;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class IngressoOstile : public fakes::FinestraDiProva {
 protected:
  /// With thirty thousand items, uses less memory than a byte for each pair of them: quadratic copying would
  /// use many times as much.
  static void SenzaCopieDiTroppo(const std::function<void()>& azione) {
    EXPECT_LT(fakes::ByteAllocati(azione), std::size_t{1} << 30U);
  }
};

TEST_F(IngressoOstile, EachBoxTakesItsMaxcharAndNoMore) {
  const std::pair<const char*, std::size_t> caselle[] = {{"TXT_EMAIL", 10000},
                                                         {"TXT_EMAIL_CC", 10000},
                                                         {"TXT_EMAIL_CCN", 10000},
                                                         {"TXT_OGGETTO", 100},
                                                         {"TXT_CORPO", 2000}};
  servizio->vFlagCorpo = 1;
  Apri([&](HeadlessForm& finestra) {
    for (const auto& [casella, limite] : caselle) {
      finestra.Riscrive(casella, std::string(10001, 'x'));
      EXPECT_EQ(finestra.Testo(casella), std::string(limite, 'x')) << casella;
      std::string emoji;
      for (int i = 0; i < 10001; ++i) emoji += "😀";
      finestra.Riscrive(casella, emoji);
      EXPECT_EQ(text::Length(finestra.Testo(casella)), limite) << casella;
    }
  });
}

TEST_F(IngressoOstile, TenThousandCharactersInEachBoxArriveWhole) {
  const std::string nome(9988, 'n');
  const std::string voce = nome + "<a@x.example";
  servizio->vOggetto = std::string(10000, 'o');
  servizio->vCorpoMail = std::string(10000, 'c');
  servizio->vFlagCorpo = 1;
  Invia([&](HeadlessForm& finestra) {
    for (const char* casella : {"TXT_EMAIL", "TXT_EMAIL_CC", "TXT_EMAIL_CCN"}) {
      finestra.Digita(casella, nome.substr(1) + "<a@x.example>");
      EXPECT_EQ(finestra.Testo(casella).size(), 10000U);
    }
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(servizio->vCollDestinatari->Count(), 3);
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Nome(), nome.substr(1));
  // Placed by the program, longer than what can be typed: shown and sent as it is.
  EXPECT_THAT(journal->Righe({"smtp.Subject"}), ElementsAre("smtp.Subject " + std::string(10000, 'o')));
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText " + std::string(10000, 'c')));
}

TEST_F(IngressoOstile, ABoxFullOfSeparatorsIsRefused) {
  Apri([&](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", std::string(10000, ';'));
    finestra.Preme("cmd_Invia");
    EXPECT_TRUE(finestra.Aperta());
  });
  EXPECT_THAT(Mostrati(), ElementsAre(HasSubstr("contiene un indirizzo non valido.")));
  EXPECT_FALSE(Consegnato());
}

TEST_F(IngressoOstile, ThirtyTwoThousandRecipientsAreReadAndKeepTheirCompanies) {
  constexpr int kQuanti = 32768;
  for (int i = 0; i < kQuanti; ++i) {
    const std::string numero = std::to_string(i);
    Collezione().AddFromLista("a" + numero + "@x.example", "N" + numero, "Azienda " + numero,
                              static_cast<std::int16_t>(i % 3));
  }
  SenzaCopieDiTroppo([&] { Invia([](HeadlessForm& /*finestra*/) {}); });
  ASSERT_EQ(servizio->vCollDestinatari->Count(), kQuanti);
  EXPECT_EQ(servizio->vCollDestinatari->Item(2)->Azienda(), "Azienda 3");
  EXPECT_EQ(servizio->vCollDestinatari->Item(kQuanti)->Azienda(), "N32765");  // a blind copy
  EXPECT_THAT(Mostrati(), IsEmpty());
  EXPECT_TRUE(Consegnato());
}

TEST_F(IngressoOstile, ThirtyTwoThousandAttachmentsAreListedRemovedAndHandedOver) {
  constexpr int kQuanti = 32768;
  Variant::Array elenco;
  for (int i = 0; i < kQuanti; ++i) {
    const std::string percorso = "C:\\doc\\f" + std::to_string(i) + ".pdf";
    File(percorso);
    elenco.emplace_back(percorso);
  }
  servizio->vElencoAllegati = elenco;
  servizio->SrvMailInstallato = kvMAPI;
  SenzaCopieDiTroppo([&] {
    Apri([&](HeadlessForm& finestra) {
      EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), SizeIs(kQuanti));
      finestra.SelezionaRiga("GRID_ALLEGATI", 1);
      finestra.Sceglie("BTN_ELIMINA", "Del");
      EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), SizeIs(kQuanti - 1));
      finestra.Digita("TXT_EMAIL", "a@x.example");
      finestra.Preme("cmd_Invia");
    });
  });
  ASSERT_EQ(servizio->vElencoAllegati.ToArray().size(), static_cast<std::size_t>(kQuanti - 1));
  EXPECT_EQ(servizio->vElencoAllegati.ToArray().front(), Variant("C:\\doc\\f1.pdf"));
}

TEST_F(IngressoOstile, AnAccountWhoseNumberDoesNotFitIsReportedAndOpensNothing) {
  auto riga = RigaAccount(1, "noi@azienda.example");
  riga["FW98_IDACCOUNT"] = 32768;
  Accounts({riga});
  ApriForm_OpzInvio(interno, *servizio);
  EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 6-Overflow in CLSFW_MAILSERVER: "
                                      "LoadAccountsPerUser|0||(assente)"));
  EXPECT_EQ(journal->Conta("FRMRW_OPZMAIL.Show"), 0U);
}

TEST_F(IngressoOstile, ThirtyTwoThousandAccountsFillTheListToItsLastPosition) {
  fakes::Righe righe;
  for (int i = 0; i < 32767; ++i) {
    righe.push_back(
        RigaAccount(static_cast<std::int16_t>(i + 1), "a" + std::to_string(i) + "@azienda.example"));
  }
  Accounts(std::move(righe));
  SenzaCopieDiTroppo([&] {
    Apri([&](HeadlessForm& finestra) {
      EXPECT_THAT(finestra.Voci("CMB_ACCOUNT"), SizeIs(32767));
      finestra.SceglieVoce("CMB_ACCOUNT", 32766);
      EXPECT_EQ(servizio->vMittente->Indirizzo(), "a32766@azienda.example");
    });
  });
}

TEST_F(IngressoOstile, PastedLineBreaksBecomeBlanksInABoxOfOneLine) {
  servizio->vFlagCorpo = 1;
  Invia([](HeadlessForm& finestra) {
    finestra.Digita("TXT_EMAIL", "Anna<a@x.example>\r\n;Bea<b@x.example>\n;c@x.example");
    finestra.Riscrive("TXT_OGGETTO", "Fattura\r\nBcc: spia@x.example\rx\ny");
    EXPECT_EQ(finestra.Testo("TXT_OGGETTO"), "Fattura Bcc: spia@x.example x y");
    finestra.Riscrive("TXT_CORPO", "uno\ndue\rtre\r\nquattro");
  });
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText", "smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx Anna <a@x.example>;Bea <b@x.example>; <c@x.example> 0",
                          "smtp.Subject Fattura Bcc: spia@x.example x y",
                          "smtp.BodyText uno\r\ndue\r\ntre\r\nquattro"));
}

TEST_F(IngressoOstile, EmojiAndRightToLeftTextPassUnchanged) {
  const std::string nome = "😀 שלום العربية Ünïcödé";
  ambiente->parametriCorpo = Variant::Array{Variant(Variant::Array{"Nome", "😀Nome"})};
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "مرحبا";
  File("C:\\doc\\ملف😀.pdf");
  servizio->vElencoAllegati = Variant::Array{"C:\\doc\\ملف😀.pdf"};
  Invia([&](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("ملف😀.pdf"));
    finestra.Digita("TXT_EMAIL", nome + "<a@x.example>");
    finestra.Riscrive("TXT_OGGETTO", "✉ עברית");
    finestra.Sceglie("CMD_LEGENDA", "😀Nome");
    EXPECT_EQ(finestra.Testo("TXT_CORPO"), "مرحبا ***(Nome)***");
  });
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Nome(), nome);
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.AddAttachment"}),
              ElementsAre("smtp.AddAttachment C:\\doc\\ملف😀.pdf", "smtp.Subject ✉ עברית"));
}

TEST_F(IngressoOstile, BytesThatAreNoTextPassUnchanged) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = std::string("\xFF\xC3 corpo \x00 nul", 14);
  servizio->vOggetto = "\xC3\x28";
  const std::string corpo = servizio->vCorpoMail;
  Invia([](HeadlessForm& finestra) { finestra.Digita("TXT_EMAIL", "\xFE<a@x.example>"); });
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText " + corpo));
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Nome(), "\xFE");
}

// The window lists a path, not contents: a file that disappears afterwards is for the channel to miss.
TEST_F(IngressoOstile, AFileThatVanishesBetweenAttachingAndSendingIsMissedByTheChannel) {
  File("C:\\doc\\f.pdf");
  servizio->vElencoAllegati = Variant::Array{"C:\\doc\\f.pdf"};
  Invia([&](HeadlessForm& finestra) {
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("f.pdf"));
    finestra.Digita("TXT_EMAIL", "a@x.example");
    ambiente->file.clear();
    journal->Fallisce("smtp.AddAttachment", {53, "Componente", "Impossibile trovare il file"});
  });
  EXPECT_THAT(journal->Righe({"smtp.AddAttachment"}), ElementsAre("smtp.AddAttachment C:\\doc\\f.pdf"));
}

TEST_F(IngressoOstile, AFileThatVanishesBetweenAttachingAndRemovingIsRemovedAllTheSame) {
  for (const char* file : {"C:\\a.pdf", "C:\\b.pdf"}) File(file);
  servizio->vElencoAllegati = Variant::Array{"C:\\a.pdf", "C:\\b.pdf"};
  Apri([&](HeadlessForm& finestra) {
    ambiente->file.clear();
    finestra.SelezionaRiga("GRID_ALLEGATI", 1);
    finestra.Sceglie("BTN_ELIMINA", "Del");
    EXPECT_THAT(finestra.Righe("GRID_ALLEGATI"), ElementsAre("b.pdf"));
  });
  EXPECT_THAT(Mostrati(), IsEmpty());
}

TEST_F(IngressoOstile, AFileThatVanishesBetweenTheChoiceAndTheOkIsRefused) {
  File("C:\\doc\\f.pdf");
  ambiente->fileScelto = "C:\\doc\\f.pdf";
  ambiente->persona = [&](HeadlessForm& finestra) {
    finestra.Preme("KVL_ALLEGA");
    ambiente->file.clear();
    finestra.Preme("CMD_OK");
    EXPECT_TRUE(finestra.Aperta());
  };
  servizio->ReturnMailParameters();
  EXPECT_THAT(Mostrati(),
              ElementsAre("ObjMessaggi.MostraMsg Percorso allegato non valido.|48|Avviso|(assente)"));
  EXPECT_EQ(servizio->MailParamAllegatoUnico(), "");
}

TEST_F(IngressoOstile, ListsThatAreNoListsAreReported) {
  const Variant elenchi[] = {Variant("C:\\f.pdf"), Variant(7),
                             Variant(Variant::Array{Variant(Variant::Array{1})})};
  for (const auto& elenco : elenchi) {
    servizio->vCollMittenti.reset();
    servizio->vElencoAllegati = elenco;
    journal->Svuota();
    ApriForm_OpzInvio(interno, *servizio);
    EXPECT_THAT(Mostrati(), ElementsAre("ObjMessaggi.MostraMsg 13 Tipo non corrispondente ORVE_MAILSERVER: "
                                        "CLSFW_MAILSERVER: ApriForm_OpzInvio|0||(assente)"));
    EXPECT_EQ(journal->Conta("FRMRW_OPZMAIL.Show"), 0U);
  }
}

TEST_F(IngressoOstile, PathsOfEveryShapeAreShownAndHandedOverAsTheyCame) {
  const std::pair<const char*, const char*> percorsi[] = {{"C:\\a.pdf", "a.pdf"},
                                                          {R"(\\server\condivisa\a.pdf)", "a.pdf"},
                                                          {"C:\\cartella\\", ""},
                                                          {"/srv/doc/a.pdf", "/srv/doc/a.pdf"},
                                                          {"C:\\doc;vecchi\\l'ordine.pdf", "l'ordine.pdf"}};
  Variant::Array elenco;
  std::vector<std::string> want;
  for (const auto& [percorso, nome] : percorsi) {
    File(percorso);
    elenco.emplace_back(percorso);
    want.emplace_back(nome);
  }
  servizio->vElencoAllegati = elenco;
  servizio->SrvMailInstallato = kvMAPI;
  Apri([&](HeadlessForm& finestra) {
    EXPECT_EQ(finestra.Righe("GRID_ALLEGATI"), want);
    finestra.Digita("TXT_EMAIL", "a@x.example");
    finestra.Preme("cmd_Invia");
  });
  EXPECT_EQ(servizio->vElencoAllegati, Variant(elenco));
}

}  // namespace
}  // namespace orve
