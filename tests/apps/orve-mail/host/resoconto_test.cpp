#include "orve-mail/host/resoconto.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace orve::app {

namespace {

Resoconto Consegnato() {
  Resoconto resoconto;
  resoconto.mittente = "fatture@arvenia.example";
  resoconto.note.consegne = 1;
  resoconto.note.esitoConsegna = -1;
  resoconto.note.registro = {{0, "Uno", "Uno<uno@x.example>", ""}};
  return resoconto;
}

Resoconto NonConsegnato(kvEnum_ErroreMail stato) {
  Resoconto resoconto;
  resoconto.mittente = "fatture@arvenia.example";
  resoconto.stato = stato;
  return resoconto;
}

struct Racconto {
  Uscita uscita;
  std::string fuori, errori;
};

Racconto Raccontato(const Resoconto& resoconto) {
  std::istringstream ingresso;
  std::ostringstream fuori;
  std::ostringstream errori;
  const Uscita uscita = Racconta(resoconto, {ingresso, fuori, errori});
  return {uscita, fuori.str(), errori.str()};
}

}  // namespace

TEST(Resoconto, ADeliveryThatWasSeenAndRecordedIsASuccess) {
  const Racconto racconto = Raccontato(Consegnato());
  EXPECT_EQ(racconto.uscita, Uscita::kInviato);
  EXPECT_EQ(racconto.fuori, "Messaggio inviato a 1 destinatario.\n  Uno<uno@x.example>\n");
  EXPECT_EQ(racconto.errori, "");
}

TEST(Resoconto, AStatoThatWasNeverTouchedIsNoSuccess) {
  EXPECT_EQ(Valuta(NonConsegnato(kvOK)), Uscita::kNonPartito);
}

TEST(Resoconto, AWindowLeftWithoutSendingIsACancellation) {
  Resoconto resoconto = NonConsegnato(kvOK);
  resoconto.note.finestreMostrate = 1;
  resoconto.note.messaggi = 1;  // a bad address, reported in the window
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kAnnullato);
  EXPECT_EQ(racconto.fuori, "");
  EXPECT_EQ(racconto.errori, "Messaggio non inviato: la finestra di invio è stata chiusa senza inviare.\n");
}

TEST(Resoconto, ASendThatFailsAfterTheWindowIsNoCancellation) {
  Resoconto resoconto = NonConsegnato(kvOK);
  resoconto.note.finestreMostrate = 1;
  resoconto.note.consegneIniziate = 1;
  EXPECT_EQ(Valuta(resoconto), Uscita::kNonPartito);
  resoconto.note.consegneIniziate = 0;
  resoconto.note.oggettiMancanti = {"MAPI32.DLL"};
  EXPECT_EQ(Valuta(resoconto), Uscita::kNonPartito);
  resoconto.stato = kvErroreInvioMail;
  EXPECT_EQ(Valuta(resoconto), Uscita::kInvioFallito);
}

TEST(Resoconto, AWindowThatCouldNotOpenIsNamed) {
  Resoconto resoconto = NonConsegnato(kvOK);
  resoconto.note.finestraNegata = "Non c'è uno schermo.";
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kNonPartito);
  EXPECT_EQ(racconto.errori, "Messaggio non inviato: serviva la finestra di invio. Non c'è uno schermo.\n");
}

TEST(Resoconto, ADeliveryThatFailedIsNoSuccessWhateverStatoSays) {
  Resoconto resoconto = Consegnato();
  resoconto.note.esitoConsegna = 5;
  EXPECT_EQ(Valuta(resoconto), Uscita::kNonPartito);
  resoconto.note.esitoConsegna.reset();
  EXPECT_EQ(Valuta(resoconto), Uscita::kNonPartito);
  resoconto.stato = kvErroreInvioMail;
  EXPECT_EQ(Valuta(resoconto), Uscita::kInvioFallito);
}

TEST(Resoconto, AMessageThatLeftWithAnythingWrongIsNoCleanSuccess) {
  for (int difetto = 0; difetto < 8; ++difetto) {
    Resoconto resoconto = Consegnato();
    if (difetto == 0) resoconto.note.messaggi = 1;
    if (difetto == 1) resoconto.note.erroriRegistro = {"database is locked"};
    if (difetto == 2) resoconto.note.erroriDatabase = {"database is locked"};
    if (difetto == 3) resoconto.note.righeLog = {"riga"};
    if (difetto == 4) resoconto.note.erroriLog = {"Disco pieno"};
    if (difetto == 6) resoconto.note.oggettiMancanti = {"MAPI32.DLL"};
    if (difetto == 5) resoconto.stato = kvErroreInvioMail;
    if (difetto == 7) resoconto.note.allegatiRifiutati = {"manca.pdf"};
    const Racconto racconto = Raccontato(resoconto);
    EXPECT_EQ(racconto.uscita, Uscita::kConRiserva) << difetto;
    EXPECT_EQ(racconto.errori.find("Messaggio inviato, ma non tutto è andato a buon fine.\n"), 0U);
  }
}

TEST(Resoconto, ACallPastTheSendProcedureHasFailedWhateverStatoSays) {
  Resoconto resoconto = Consegnato();
  resoconto.daSola = true;
  EXPECT_EQ(Valuta(resoconto), Uscita::kInviato);
  resoconto.note.esitoConsegna = 5;
  EXPECT_EQ(Valuta(resoconto), Uscita::kInvioFallito);
  // The component failed before it got to deliver: only the register tells.
  resoconto.note.consegne = 0;
  resoconto.note.registro = {{1, "Uno", "Uno <uno@x.example>", "Errore di connessione con il server"}};
  EXPECT_EQ(Valuta(resoconto), Uscita::kInvioFallito);
  resoconto.note.registro.clear();
  EXPECT_EQ(Valuta(resoconto), Uscita::kNonPartito);
}

TEST(Resoconto, AnErrorThatTheLibraryKeptIsToldAndNoCleanSuccess) {
  Resoconto resoconto = Consegnato();
  resoconto.errore = "91 Variabile oggetto non impostata";
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kConRiserva);
  EXPECT_EQ(racconto.errori,
            "Messaggio inviato, ma non tutto è andato a buon fine.\n"
            "  errore: 91 Variabile oggetto non impostata\n");
}

TEST(Resoconto, AFailedDeliverySaysWhatRegisterAndServerSaid) {
  Resoconto resoconto = NonConsegnato(kvErroreInvioMail);
  resoconto.note.consegne = 1;
  resoconto.note.esitoConsegna = 4;
  resoconto.note.motivo = "550 5.1.1 Casella\r\ninesistente";
  resoconto.note.registro = {{1, "Uno", "Uno<uno@x.example>", "Server si rifiuta"},
                             {1, "Due", "", "Server si rifiuta"}};
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kInvioFallito);
  EXPECT_EQ(racconto.fuori, "");
  EXPECT_EQ(
      racconto.errori,
      "Messaggio non inviato: Server si rifiuta\n  stato: 2\n  server: 550 5.1.1 Casella inesistente\n");
}

TEST(Resoconto, ARefusalSaysWhatTheRegisterSaid) {
  Resoconto resoconto = NonConsegnato(kvOK);
  resoconto.note.registro = {{1, "Uno", "", "Non inviato. Indirizzo mancante."}};
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kRifiutato);
  EXPECT_EQ(racconto.errori, "Invio rifiutato: Non inviato. Indirizzo mancante.\n");
}

TEST(Resoconto, ADisabledServiceIsARefusalEvenWhenTheRegisterFailed) {
  Resoconto resoconto = NonConsegnato(kvInvioNonImpostato);
  resoconto.descrizione = "Invio mail disabilitato!";
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kRifiutato);
  EXPECT_EQ(racconto.errori, "Invio rifiutato: Invio mail disabilitato!\n  stato: 3\n");
}

TEST(Resoconto, AnInterruptedSendShowsItsLogLine) {
  Resoconto resoconto = NonConsegnato(kvOK);
  resoconto.note.righeLog = {"MANCANTE   ErroreInvio   InviaMail"};
  const Racconto racconto = Raccontato(resoconto);
  EXPECT_EQ(racconto.uscita, Uscita::kNonPartito);
  EXPECT_EQ(racconto.errori,
            "Messaggio non inviato: l'invio è stato interrotto da un errore\n"
            "  registro degli errori: MANCANTE   ErroreInvio   InviaMail\n");
}

TEST(Resoconto, WithoutAnAccountThePersonLearnsIt) {
  EXPECT_EQ(Raccontato(Resoconto{}).errori,
            "Messaggio non inviato: nessun account di posta per l'utente e la ditta\n");
}

}  // namespace orve::app
