// What the rows of a list ask for, and which of them ask for nothing that can be done.
#include "orve-mail/lists/lista_righe.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "orve-mail/terminal/uscita.h"
#include "support/temp_dir.h"

namespace orve::app {

namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;

std::vector<RigaLista> LeggiRiga(const std::string& testo) {
  const support::TempDir cartella;
  RigheLista righe(cartella.Write("elenco.csv", testo));
  std::vector<RigaLista> lette;
  for (RigaLista riga; righe.Prossima(riga);) lette.push_back(riga);
  return lette;
}

RigaLista Sola(const std::string& testo) {
  const auto lette = LeggiRiga(testo);
  EXPECT_THAT(lette, SizeIs(1));
  return lette.empty() ? RigaLista{} : lette.front();
}

std::string IntestazioneErrata(const std::string& testo) {
  try {
    static_cast<void>(LeggiRiga(testo));
  } catch (const ErroreProgramma& errore) {
    EXPECT_EQ(errore.Stato(), Uscita::kFileMancante);
    EXPECT_THAT(errore.what(), HasSubstr("elenco.csv: intestazione errata: "));
    const std::string detto = errore.what();
    return detto.substr(detto.find("errata: ") + 8);
  }
  return "";
}

}  // namespace

TEST(RigheLista, ACodeWithItsKind) {
  const RigaLista riga = Sola("tipo;codice\n Cliente ; 1001 \n");
  ASSERT_TRUE(riga.codice);
  EXPECT_EQ(riga.codice->codice, "1001");
  EXPECT_EQ(riga.codice->tipo, kvDestinatarioFaxCliente);
  EXPECT_EQ(riga.destinatario, "cliente 1001");
  EXPECT_EQ(riga.riga, 2U);
  EXPECT_THAT(riga.impronta, SizeIs(32));
}

TEST(RigheLista, EveryKindOfCode) {
  const auto righe = LeggiRiga(
      "tipo,codice\ncliente,1\nfornitore,1\nagente,1\ncontatto,1\ndestinatario,1/1/0/"
      "A\nnumero,x<***>y\nanagrafica,1\n");
  const std::vector<kvTipologiaDestinatarioFAX> tipi = {
      kvDestinatarioFaxCliente,   kvDestinatarioFaxFornitore,    kvDestinatarioFaxAgente,
      kvDestinatarioFaxContatto,  kvDestinatarioFaxDestinatario, kvDestinatarioFaxNumero,
      kvDestinatarioFaxAnagrafica};
  ASSERT_EQ(righe.size(), tipi.size());
  for (std::size_t i = 0; i < tipi.size(); ++i) EXPECT_EQ(righe[i].codice->tipo, tipi[i]) << righe[i].errore;
}

TEST(RigheLista, ANameAndAnAddressWithTextsOfTheirOwn) {
  const RigaLista riga = Sola(
      "ALLEGATO,Corpo,oggetto,Indirizzo,nome\n"
      "fatture/12.pdf,\"Gentile cliente,\nsaluti\",\"Fattura 12, gennaio\",rossi@x.example,\"Rossi, "
      "Mario\"\n");
  EXPECT_FALSE(riga.codice);
  EXPECT_EQ(riga.voce.nome, "Rossi, Mario");
  EXPECT_EQ(riga.voce.indirizzo, "rossi@x.example");
  EXPECT_EQ(riga.oggetto, "Fattura 12, gennaio");
  EXPECT_EQ(riga.corpo, "Gentile cliente,\r\nsaluti");
  EXPECT_THAT(riga.allegato, HasSubstr("/fatture/12.pdf"));
  EXPECT_EQ(riga.destinatario, "Rossi, Mario <rossi@x.example>");
}

TEST(RigheLista, ABodyIsATextAndNeverTheNameOfAFile) {
  EXPECT_EQ(Sola("indirizzo,corpo\na@x,@/etc/passwd\n").corpo, "@/etc/passwd");
}

TEST(RigheLista, AnAbsoluteAttachmentStaysWhereItIs) {
  EXPECT_EQ(Sola("indirizzo,allegato\na@x,/tmp/x.pdf\n").allegato, "/tmp/x.pdf");
}

TEST(RigheLista, AddressesAlone) {
  EXPECT_EQ(Sola("indirizzo\nrossi@x.example\n").destinatario, "rossi@x.example");
}

TEST(RigheLista, BothKindsOfRowsInOneFile) {
  const auto righe = LeggiRiga("tipo;codice;nome;indirizzo\ncliente;1001;;\n;;Rossi;rossi@x.example\n");
  ASSERT_THAT(righe, SizeIs(2));
  EXPECT_TRUE(righe[0].codice);
  EXPECT_FALSE(righe[1].codice);
  EXPECT_EQ(righe[1].voce.nome, "Rossi");
}

TEST(RigheLista, MalformedRowsAreToldWithTheLineOnWhichTheyBegin) {
  struct Caso {
    const char* testo;
    const char* errore;
  };
  for (const Caso& caso :
       {Caso{"tipo;codice\n\ncliente\n", "ha 1 campo invece di 2"},
        Caso{"tipo;codice\n\ncliente;1;2\n", "ha 3 campi invece di 2"},
        Caso{"tipo;codice\n\nclienti;1\n", "il tipo «clienti» non esiste"},
        Caso{"tipo;codice\n\n--cliente;1\n", "il tipo «--cliente» non esiste"},
        Caso{"tipo;codice\n\n;1\n", "manca il tipo del codice"},
        Caso{"tipo;codice\n\ncliente; \n", "manca il codice"},
        Caso{"tipo;codice\n\ncliente;1 OR 1=1\n", "il codice «1 OR 1=1» non è un numero"},
        Caso{"tipo;codice\n\nanagrafica;0 UNION SELECT 1\n", "il codice «0 UNION SELECT 1» non è un numero"},
        Caso{"tipo;codice\n\nagente;A'--\n", "il codice «A'--» contiene un apostrofo"},
        Caso{"tipo;codice\n\ndestinatario;1/2/3\n", "il codice «1/2/3» non ha quattro parti separate da «/»"},
        Caso{"tipo;codice\n\n;\n", "manca il destinatario"},
        Caso{"nome;indirizzo\n\nRossi;\n", "manca l'indirizzo"},
        Caso{"nome;indirizzo\n\nRossi;rossi\n", "«rossi» non è un indirizzo"},
        Caso{"nome,indirizzo\n\nRossi;R,r@x\n",
             "«Rossi;R»: nome e indirizzo non possono contenere «;», «<» o «>»"},
        Caso{"nome,indirizzo\n\nRossi,<r@x>\n",
             "«<r@x>»: nome e indirizzo non possono contenere «;», «<» o «>»"},
        Caso{"tipo;codice;indirizzo\n\ncliente;1;a@x\n", "ha un codice e anche un nome o un indirizzo"},
        Caso{"indirizzo\n\n\"a\"@x\n", "ha del testo dietro le virgolette chiuse"}}) {
    const RigaLista riga = Sola(caso.testo);
    EXPECT_EQ(riga.errore, caso.errore) << caso.testo;
    EXPECT_EQ(riga.riga, 3U);
    EXPECT_EQ(riga.impronta, "");
  }
}

TEST(RigheLista, LongFieldsAreCutInTheReason) {
  const std::string errore = Sola("indirizzo\n" + std::string(1'000'000, 'x') + "\n").errore;
  EXPECT_EQ(errore, "«" + std::string(60, 'x') + "…» non è un indirizzo");
}

TEST(RigheLista, AHeaderThatNamesNoColumns) {
  EXPECT_EQ(IntestazioneErrata(""), "il file è vuoto");
  EXPECT_EQ(IntestazioneErrata("\n\n"), "il file è vuoto");
  EXPECT_EQ(IntestazioneErrata("\"tipo\n"), "la riga 1 ha virgolette aperte e mai chiuse");
  EXPECT_EQ(IntestazioneErrata("cliente;1001\n"),
            "la colonna «cliente» non esiste; le colonne sono tipo, codice, nome, indirizzo, oggetto, corpo, "
            "allegato");
  EXPECT_EQ(IntestazioneErrata("tipo|codice\n").substr(0, 38), "la colonna «tipo|codice» non esiste;");
  EXPECT_THAT(IntestazioneErrata("tipo;codice;\n"), HasSubstr("la colonna «» non esiste"));
  EXPECT_EQ(IntestazioneErrata("tipo;codice;TIPO\n"), "la colonna «TIPO» si ripete");
  EXPECT_EQ(IntestazioneErrata("tipo;oggetto\n"), "tipo e codice vanno insieme");
  EXPECT_EQ(IntestazioneErrata("nome;oggetto\n"), "manca la colonna «indirizzo»");
  EXPECT_EQ(IntestazioneErrata("oggetto;corpo\n"),
            "mancano le colonne del destinatario, «tipo» e «codice» oppure «indirizzo»");
  EXPECT_EQ(IntestazioneErrata("\xFF\xFEt\n"), "la riga 1 non è un testo UTF-8");
}

TEST(RigheLista, AnyChangeOfAFieldShowsAndTheOrderOfTheColumnsDoesNot) {
  std::set<std::string> impronte;
  for (const char* riga :
       {"a@x;;;;", "b@x;;;;", ";;;cliente;1", ";;;cliente;2", ";;;agente;1", "a@x;o;;;", "a@x;;o;;"}) {
    impronte.insert(Sola(std::string("indirizzo;oggetto;corpo;tipo;codice\n") + riga + "\n").impronta);
  }
  EXPECT_THAT(impronte, SizeIs(7));
  EXPECT_EQ(Sola("oggetto;indirizzo\no;a@x\n").impronta,
            Sola("indirizzo,oggetto\r\n\r\n\"a@x\",o\r\n").impronta);
}

TEST(RigheLista, BeginsAgainAtTheFirstRow) {
  const support::TempDir cartella;
  RigheLista righe(cartella.Write("elenco.csv", "\xEF\xBB\xBFindirizzo\na@x\nb@x\n"));
  RigaLista riga;
  while (righe.Prossima(riga)) {
  }
  righe.Ricomincia();
  ASSERT_TRUE(righe.Prossima(riga));
  EXPECT_EQ(riga.voce.indirizzo, "a@x");
  EXPECT_EQ(riga.riga, 2U);
}

}  // namespace orve::app
