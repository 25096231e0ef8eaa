#include "values/formatori_sql.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "orve-mailserver/host/errore.h"

namespace orve::adapters::values {

TEST(FormatoDataSql, GoodDatesComeOutAsYearMonthDay) {
  for (const std::string testo :
       {"04/03/2026", " 04/03/2026 ", "4/3/2026", "04-03-2026", "04.03.2026", "04/03/2026 23:59:59"}) {
    FormatoDataSql formato;
    formato.Data(testo);
    EXPECT_EQ(formato.Stato(), 0) << testo;
    EXPECT_EQ(formato.DataDB(), "20260304") << testo;
  }
}

TEST(FormatoDataSql, WhatIsNoDateHasAStateAndNoText) {
  for (const std::string testo : {"", " ", "31/02/2026", "2026-03-04", "04/03/26", "oggi", "10:22:05",
                                  "01/01/1752", "04/03/2026x", "'; DROP TABLE X --"}) {
    FormatoDataSql formato;
    formato.Data(testo);
    EXPECT_EQ(formato.Stato(), 1) << testo;
    EXPECT_EQ(formato.DataDB(), "") << testo;
  }
}

TEST(FormatoDataSql, ABadDateAfterAGoodOneCounts) {
  FormatoDataSql formato;
  EXPECT_EQ(formato.Stato(), 1);
  formato.Data("04/03/2026");
  formato.Data("31/04/2026");
  EXPECT_EQ(formato.Stato(), 1);
  EXPECT_EQ(formato.DataDB(), "");
}

TEST(FormatoNumeroSql, NumbersHaveAPointAndNoExponent) {
  FormatoNumeroSql formato;
  EXPECT_EQ(formato.NumeroDB(12).ToText(), "12");
  EXPECT_EQ(formato.NumeroDB(-0.5).ToText(), "-0.5");
  EXPECT_EQ(formato.NumeroDB(1e21).ToText(), "1000000000000000000000");
  EXPECT_EQ(formato.NumeroDB(1e-7).ToText(), "0.0000001");
  EXPECT_EQ(formato.NumeroDB("1234,56").ToText(), "1234.56");
  EXPECT_EQ(formato.NumeroDB("1234.56").ToText(), "1234.56");
  EXPECT_EQ(formato.NumeroDB(host::Decimale("-12345678901234567,89")).ToText(), "-12345678901234567.89");
  EXPECT_EQ(formato.NumeroDB(std::numeric_limits<double>::max()).ToText().size(), 309U);
}

TEST(FormatoNumeroSql, WhatIsNoNumberIsAnError) {
  FormatoNumeroSql formato;
  EXPECT_THROW((void)formato.NumeroDB("1; DROP TABLE X"), host::Errore);
  EXPECT_THROW((void)formato.NumeroDB(host::Null{}), host::Errore);
}

}  // namespace orve::adapters::values
