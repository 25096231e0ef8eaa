// Unforeseen things that people and callers put into the real windows: no crash, no hang, nothing lost, and
// nothing sent that the person did not see.
#include <QComboBox>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "fakes/allocazioni.h"
#include "prova.h"

namespace orve::adapters::qt {
namespace {

using host::Variant;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kEmoji = "\xF0\x9F\x98\x80";

class IngressoOstile : public FinestraVera {
 protected:
  void Invia(Regia::Passo persona) {
    Apri([persona = std::move(persona)](QWidget& finestra) {
      persona(finestra);
      Clicca(finestra, "cmd_Invia");
      EXPECT_FALSE(finestra.isVisible());
    });
  }
  /// With thirty thousand items, uses less memory than a byte for each pair of them: quadratic copying would
  /// use many times as much.
  static void SenzaCopieDiTroppo(const std::function<void()>& azione) {
    EXPECT_LT(fakes::ByteAllocati(azione), std::size_t{1} << 30U);
  }
};

TEST_F(IngressoOstile, EachBoxTakesItsMaxcharFromTheClipboardAndNoMore) {
  const std::vector<std::pair<const char*, std::size_t>> caselle = {{"TXT_EMAIL", 10000},
                                                                    {"TXT_EMAIL_CC", 10000},
                                                                    {"TXT_EMAIL_CCN", 10000},
                                                                    {"TXT_OGGETTO", 100},
                                                                    {"TXT_CORPO", 2000}};
  servizio->vFlagCorpo = 1;
  std::string emoji;
  for (int i = 0; i < 10001; ++i) emoji += kEmoji;
  Apri([&](QWidget& finestra) {
    for (const auto& [casella, limite] : caselle) {
      Incolla(finestra, casella, std::string(10001, 'x'));
      EXPECT_TRUE(Contenuto(finestra, casella) == std::string(limite, 'x')) << casella;
      Riscrive(finestra, casella, "");
      Incolla(finestra, casella, emoji);
      EXPECT_TRUE(Contenuto(finestra, casella) == emoji.substr(0, limite * 4)) << casella;
    }
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(IngressoOstile, TenThousandCharactersInEachBoxArriveWhole) {
  const std::string nome(10000 - 13, 'n');
  servizio->vOggetto = std::string(10000, 'o');
  servizio->vCorpoMail = std::string(10000, 'c');
  servizio->vFlagCorpo = 1;
  Invia([&](QWidget& finestra) {
    for (const char* casella : {"TXT_EMAIL", "TXT_EMAIL_CC", "TXT_EMAIL_CCN"}) {
      Incolla(finestra, casella, nome + "<a@x.example>");
      EXPECT_EQ(Contenuto(finestra, casella).size(), 10000U);
    }
  });
  ASSERT_TRUE(Consegnato());
  ASSERT_EQ(servizio->vCollDestinatari->Count(), 3);
  EXPECT_EQ(servizio->vCollDestinatari->Item(3)->Nome(), nome);
  // Placed by the program, longer than what can be typed: shown and sent as it is.
  EXPECT_THAT(journal->Righe({"smtp.Subject"}), ElementsAre("smtp.Subject " + std::string(10000, 'o')));
  EXPECT_THAT(journal->Righe({"smtp.BodyText"}), ElementsAre("smtp.BodyText " + std::string(10000, 'c')));
}

TEST_F(IngressoOstile, ABoxFullOfSeparatorsIsRefused) {
  Apri([&](QWidget& finestra) {
    Incolla(finestra, "TXT_EMAIL", std::string(10000, ';'));
    regia.Risponde("L'elenco dei destinatari contiene un indirizzo non valido.");
    Clicca(finestra, "cmd_Invia");
    EXPECT_TRUE(finestra.isVisible());
  });
  EXPECT_FALSE(Consegnato());
}

TEST_F(IngressoOstile, ThirtyTwoThousandRecipientsAreShownAndReadAgain) {
  constexpr int kQuanti = 32768;
  for (int i = 0; i < kQuanti; ++i) {
    const std::string numero = std::to_string(i);
    Collezione().AddFromLista("a" + numero + "@x.example", "N" + numero, "Azienda " + numero,
                              static_cast<std::int16_t>(i % 3));
  }
  SenzaCopieDiTroppo([&] { Invia([](QWidget& /*finestra*/) {}); });
  ASSERT_TRUE(Consegnato());
  ASSERT_EQ(servizio->vCollDestinatari->Count(), kQuanti);
  EXPECT_EQ(servizio->vCollDestinatari->Item(2)->Azienda(), "Azienda 3");
}

TEST_F(IngressoOstile, ThirtyTwoThousandAttachmentsAreListedRemovedAndHandedOver) {
  constexpr int kQuanti = 32768;
  servizio->vElencoAllegati = Variant::Array(kQuanti, PerLibreria(cartella.File("f.pdf")));
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  SenzaCopieDiTroppo([&] {
    Invia([&](QWidget& finestra) {
      EXPECT_THAT(Righe(finestra), SizeIs(kQuanti));
      EXPECT_EQ(RigaSelezionata(finestra), kQuanti);
      Sceglie(finestra, "BTN_ELIMINA", "Del");
      EXPECT_THAT(Righe(finestra), SizeIs(kQuanti - 1));
    });
  });
  EXPECT_EQ(journal->Conta("smtp.AddAttachment"), static_cast<std::size_t>(kQuanti - 1));
}

TEST_F(IngressoOstile, ThirtyTwoThousandAccountsFillTheListToItsLastPosition) {
  constexpr int kQuanti = 32767;
  fakes::Righe righe;
  for (int i = 0; i < kQuanti; ++i) {
    righe.push_back(
        RigaAccount(static_cast<std::int16_t>(i + 1), "a" + std::to_string(i) + "@azienda.example"));
  }
  Accounts(std::move(righe));
  SenzaCopieDiTroppo([&] {
    Apri([&](QWidget& finestra) {
      auto& account = Trova<QComboBox>(finestra, "CMB_ACCOUNT");
      EXPECT_EQ(account.count(), kQuanti);
      account.setFocus();
      QTest::keyClick(&account, Qt::Key_End);
      EXPECT_EQ(servizio->vMittente->Indirizzo(), "a32766@azienda.example");
    });
  });
}

TEST_F(IngressoOstile, PastedLineBreaksGoNoFurtherThanTheirBox) {
  servizio->vFlagCorpo = 1;
  Invia([](QWidget& finestra) {
    Incolla(finestra, "TXT_EMAIL", "Anna<a@x.example>\r\n;Bea<b@x.example>\n;c@x.example");
    Incolla(finestra, "TXT_OGGETTO", "Fattura\r\nBcc: spia@x.example\rx\ny");
    EXPECT_EQ(Contenuto(finestra, "TXT_OGGETTO"), "Fattura Bcc: spia@x.example x y");
    Incolla(finestra, "TXT_CORPO", "uno\ndue\rtre\r\nquattro");
  });
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.BodyText", "smtp.AddRecipientEx"}),
              ElementsAre("smtp.AddRecipientEx Anna <a@x.example>;Bea <b@x.example>; <c@x.example> 0",
                          "smtp.Subject Fattura Bcc: spia@x.example x y",
                          "smtp.BodyText uno\r\ndue\r\ntre\r\nquattro"));
}

TEST_F(IngressoOstile, EmojiAndRightToLeftTextPassUnchanged) {
  const std::string nome = "😀 שלום العربية Ünïcödé";
  const std::string file = cartella.File("ملف😀.pdf");
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = "مرحبا";
  servizio->vElencoAllegati = Variant::Array{PerLibreria(file)};
  Invia([&](QWidget& finestra) {
    EXPECT_THAT(Righe(finestra), ElementsAre("ملف😀.pdf"));
    Incolla(finestra, "TXT_EMAIL", nome + "<a@x.example>");
    Riscrive(finestra, "TXT_OGGETTO", "✉ עברית");
    Incolla(finestra, "TXT_CORPO", kEmoji);
  });
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Nome(), nome);
  EXPECT_THAT(journal->Righe({"smtp.Subject", "smtp.AddAttachment", "smtp.BodyText"}),
              ElementsAre("smtp.AddAttachment " + PerLibreria(file), "smtp.Subject ✉ עברית",
                          std::string("smtp.BodyText مرحبا") + kEmoji));
}

TEST_F(IngressoOstile, BytesThatAreNoTextPassUnchangedUntilThePersonTouchesThem) {
  servizio->vFlagCorpo = 1;
  servizio->vCorpoMail = std::string("\xFF\xC3 corpo \x00 nul", 14);
  servizio->vOggetto = "\xC3\x28";
  const std::string corpo = servizio->vCorpoMail;
  Collezione().AddFromLista("anna@x.example", "An\xFEna", "", 0);
  Invia([](QWidget& /*finestra*/) {});
  EXPECT_THAT(journal->Righe({"smtp.BodyText", "smtp.Subject"}),
              ElementsAre("smtp.Subject \xC3\x28", "smtp.BodyText " + corpo));
  EXPECT_EQ(servizio->vCollDestinatari->Item(1)->Nome(), "An\xFEna");
}

// The window lists a path, not contents: the channel misses the file, and the person is told.
TEST_F(IngressoOstile, AFileThatVanishesBetweenAttachingAndSendingIsTold) {
  const std::string file = cartella.File("f.pdf");
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  journal->Quando("smtp.AddAttachment ", [&] {
    if (!std::filesystem::exists(file)) {
      throw host::Errore(53, "Componente", "Il file f.pdf non esiste");
    }
  });
  Apri([&](QWidget& finestra) {
    regia.ScegliFile(file);
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_THAT(Righe(finestra), ElementsAre("f.pdf"));
    std::filesystem::remove(file);
    regia.Risponde("Il file f.pdf non esiste");
    Clicca(finestra, "cmd_Invia");
    EXPECT_FALSE(finestra.isVisible());
  });
}

TEST_F(IngressoOstile, AFileThatVanishesBetweenAttachingAndRemovingIsRemovedAllTheSame) {
  const std::string a = cartella.File("a.pdf");
  const std::string b = cartella.File("b.pdf");
  servizio->vElencoAllegati = Variant::Array{PerLibreria(a), PerLibreria(b)};
  Apri([&](QWidget& finestra) {
    std::filesystem::remove(a);
    std::filesystem::remove(b);
    Sceglie(finestra, "BTN_ELIMINA", "Del");
    EXPECT_THAT(Righe(finestra), ElementsAre("a.pdf"));
    Sceglie(finestra, "BTN_ELIMINA", "Del");
    EXPECT_THAT(Righe(finestra), IsEmpty());
  });
}

// A file from outside that disappears while it is being attached.
class FileCheSparisce : public FinestraVera {
 protected:
  FileCheSparisce()
      : FinestraVera([](WindowOptions opzioni) {
          opzioni.vaCopiato = [](const std::string& percorso) { return std::filesystem::remove(percorso); };
          return std::make_shared<AmbienteConFinestre>(std::move(opzioni));
        }) {}
};

TEST_F(FileCheSparisce, IsToldAndNotAttached) {
  const std::string file = cartella.File("chiavetta.txt");
  Collezione().AddFromLista("anna@x.example", "Anna", "", 0);
  Apri([&](QWidget& finestra) {
    regia.ScegliFile(file);
    regia.Poi("MostraMsg", [](QWidget& casella) {
      EXPECT_TRUE(
          dynamic_cast<QMessageBox&>(casella).text().endsWith(QStringLiteral(" KVL_ALLEGA_ButtonClick")));
      casella.close();
    });
    Clicca(finestra, "KVL_ALLEGA");
    EXPECT_THAT(Righe(finestra), IsEmpty());
    Clicca(finestra, "cmd_Invia");
  });
  EXPECT_TRUE(Consegnato());
  EXPECT_EQ(journal->Conta("smtp.AddAttachment"), 0U);
}

}  // namespace
}  // namespace orve::adapters::qt
