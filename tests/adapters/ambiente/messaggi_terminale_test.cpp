#include "ambiente/messaggi_terminale.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace orve::adapters::ambiente {

namespace {

struct Dialogo {
  std::int32_t risposta;
  std::string scritto;
};

Dialogo Mostra(const std::string& testo, std::int32_t stile, const std::string& titolo = "",
               const std::string& digitato = "", bool interattivo = true) {
  std::istringstream ingresso(digitato);
  std::ostringstream uscita;
  MessaggiTerminale messaggi("orve-mail", &uscita, interattivo ? &ingresso : nullptr);
  const std::int32_t risposta = messaggi.MostraMsg(testo, stile, titolo, nullptr);
  return {risposta, uscita.str()};
}

constexpr std::int32_t kSiNo = 4;
constexpr std::int32_t kSiNoAnnulla = 3;
constexpr std::int32_t kSecondaPredefinita = 0x100;

}  // namespace

TEST(MessaggiTerminale, AMessageWithOneAnswerIsAnsweredAtOnce) {
  const Dialogo dialogo = Mostra("Disco pieno", host::kAvviso, "ORVE_MAIL: InviaMailConSSL", "9\n");
  EXPECT_EQ(dialogo.risposta, 1);
  EXPECT_EQ(dialogo.scritto, "Avviso: Disco pieno [ORVE_MAIL: InviaMailConSSL]\n");
}

TEST(MessaggiTerminale, TheStyleChoosesTheWordInFront) {
  EXPECT_EQ(Mostra("x", host::kSemplice).scritto, "x\n");
  EXPECT_EQ(Mostra("x", host::kCritico).scritto, "Errore: x\n");
  EXPECT_EQ(Mostra("x", host::kInformazione).scritto, "Informazione: x\n");
}

TEST(MessaggiTerminale, APersonChoosesByNumber) {
  const Dialogo dialogo = Mostra("Ripetere?", kSiNo, "", "2\n");
  EXPECT_EQ(dialogo.risposta, 7);
  EXPECT_EQ(dialogo.scritto, "Ripetere?\n  1) Sì  2) No  [1]: ");
}

TEST(MessaggiTerminale, WithoutAPersonTheDefaultCounts) {
  EXPECT_EQ(Mostra("Ripetere?", kSiNo, "", "2\n", false).risposta, 6);
  EXPECT_EQ(Mostra("Ripetere?", kSiNo | kSecondaPredefinita, "", "1\n", false).risposta, 7);
  EXPECT_EQ(Mostra("Ripetere?", kSiNo, "", "", false).scritto, "Ripetere?\n");
}

TEST(MessaggiTerminale, AnEmptyAnswerAndTheEndOfTheInputMeanTheDefault) {
  EXPECT_EQ(Mostra("?", kSiNoAnnulla | kSecondaPredefinita, "", "\n").risposta, 7);
  EXPECT_EQ(Mostra("?", kSiNoAnnulla | kSecondaPredefinita, "", "").risposta, 7);
}

TEST(MessaggiTerminale, AnswersThatAreNoneAreAskedAgainThreeTimes) {
  EXPECT_EQ(Mostra("?", kSiNo, "", "x\n3\n2\n").risposta, 7);
  EXPECT_EQ(Mostra("?", kSiNo, "", "0\n12\n3\n2\n").risposta, 6);
}

TEST(MessaggiTerminale, EveryPairOfButtonsHasItsAnswers) {
  struct Caso {
    std::int32_t stile;
    std::string scelta;
    std::int32_t risposta;
  };
  for (const Caso& caso : {Caso{1, "1", 1}, Caso{1, "2", 2}, Caso{2, "1", 3}, Caso{2, "2", 4},
                           Caso{2, "3", 5}, Caso{3, "3", 2}, Caso{5, "1", 4}, Caso{5, "2", 2}}) {
    EXPECT_EQ(Mostra("?", caso.stile, "", caso.scelta + "\n").risposta, caso.risposta)
        << caso.stile << " " << caso.scelta;
  }
}

TEST(MessaggiTerminale, WhatComesFromOutsideCannotSteerTheTerminal) {
  EXPECT_EQ(Mostra("a\x1B[31mb\rc\td\x7F\xC2\x9B"
                   "e\xFF",
                   0)
                .scritto,
            "a\\u001B[31mbc d\\u007F\\u009Be\xEF\xBF\xBD\n");
  EXPECT_EQ(Mostra("fattura \xE2\x80\x8F"
                   "fdp.exe",
                   0)
                .scritto,
            "fattura \\u200Ffdp.exe\n");
  EXPECT_EQ(Mostra("riga 1\r\nriga 2", 0).scritto, "riga 1\nriga 2\n");
}

TEST(MessaggiTerminale, WhereNobodyReadsTheDefaultCounts) {
  MessaggiTerminale messaggi("orve-mail", nullptr);
  EXPECT_EQ(messaggi.MostraMsg("Continuare?", kSiNo | kSecondaPredefinita, "", nullptr), 7);
}

TEST(MessaggiTerminale, AWindowTitleNamesTheProgram) {
  MessaggiTerminale messaggi("orve-mail", nullptr);
  EXPECT_EQ(messaggi.TitoloFinestra("Invio"), "orve-mail - Invio");
  EXPECT_EQ(messaggi.TitoloFinestra(""), "orve-mail");
}

}  // namespace orve::adapters::ambiente
