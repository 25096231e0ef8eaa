// What a code from outside may be.
#include "orve-mail/host/codici.h"

#include <gtest/gtest.h>

#include <string>

namespace orve::app {

namespace {

struct CasoCodice {
  kvTipologiaDestinatarioFAX tipo;
  const char* codice;
  const char* difetto;
};

}  // namespace

TEST(Codici, WhatTheColumnsCanHoldAndNothingElse) {
  const std::string agenteLungo(11, 'x');
  const std::string destinazioneLunga = "1/2/0/" + std::string(21, 'x');
  for (const CasoCodice& caso :
       {CasoCodice{kvDestinatarioFaxCliente, "1001", ""},
        CasoCodice{kvDestinatarioFaxCliente, "0000001001", ""},
        CasoCodice{kvDestinatarioFaxCliente, "", "non è un numero"},
        CasoCodice{kvDestinatarioFaxCliente, "-1", "non è un numero"},
        CasoCodice{kvDestinatarioFaxCliente, "1 ", "non è un numero"},
        CasoCodice{kvDestinatarioFaxCliente, "1 OR 1=1", "non è un numero"},
        CasoCodice{kvDestinatarioFaxCliente, "0x1F", "non è un numero"},
        CasoCodice{kvDestinatarioFaxCliente, "1e3", "non è un numero"},
        CasoCodice{kvDestinatarioFaxCliente, "١٢", "non è un numero"},
        CasoCodice{kvDestinatarioFaxFornitore, "1;", "non è un numero"},
        CasoCodice{kvDestinatarioFaxContatto, "1--", "non è un numero"},
        CasoCodice{kvDestinatarioFaxAnagrafica, "12345678901", "ha più di 10 cifre"},
        CasoCodice{kvDestinatarioFaxDitta, "x", "non è un numero"},
        CasoCodice{kvDestinatarioFaxAgente, "A 01-è", ""},
        CasoCodice{kvDestinatarioFaxAgente, "", "è vuoto"},
        CasoCodice{kvDestinatarioFaxAgente, "A'", "contiene un apostrofo"},
        CasoCodice{kvDestinatarioFaxAgente, "A\n", "contiene caratteri di controllo"},
        CasoCodice{kvDestinatarioFaxAgente, "A\u009B", "contiene caratteri di controllo"},
        CasoCodice{kvDestinatarioFaxAgente, "A\u200FB", "contiene caratteri invisibili"},
        CasoCodice{kvDestinatarioFaxAgente, "èèèèèèèèèè", ""},
        CasoCodice{kvDestinatarioFaxAgente, agenteLungo.c_str(), "ha più di 10 caratteri"},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/1001/0/SEDE", ""},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/1001/1/A/B/3", ""},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/1001/0", "non ha quattro parti separate da «/»"},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/1001/2/SEDE",
                   "non ha 0 (cliente) o 1 (fornitore) come terza parte"},
        CasoCodice{kvDestinatarioFaxDestinatario, "x/1001/0/SEDE",
                   "non comincia con i numeri della ditta e del cliente o fornitore"},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/x/0/SEDE",
                   "non comincia con i numeri della ditta e del cliente o fornitore"},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/2/0/", "ha come quarta parte un codice che è vuoto"},
        CasoCodice{kvDestinatarioFaxDestinatario, "1/2/0/'",
                   "ha come quarta parte un codice che contiene un apostrofo"},
        CasoCodice{kvDestinatarioFaxDestinatario, destinazioneLunga.c_str(),
                   "ha come quarta parte un codice che ha più di 20 caratteri"},
        CasoCodice{kvDestinatarioFaxNumero, "D'Oro <***> x@example.org", ""}}) {
    EXPECT_EQ(DifettoDelCodice(caso.tipo, caso.codice), caso.difetto) << caso.codice;
  }
}

TEST(Codici, CompaniesUsersAndGroups) {
  EXPECT_EQ(DifettoDellaDitta("1"), "");
  EXPECT_EQ(DifettoDellaDitta("1 OR 1=1"), "non è un numero");
  EXPECT_EQ(DifettoDellaDitta("1234567890"), "ha più di 9 cifre");
  EXPECT_EQ(DifettoDelCodiceUtente("U07"), "");
  EXPECT_EQ(DifettoDelCodiceUtente("U' OR '1'='1"), "contiene un apostrofo");
}

}  // namespace orve::app
