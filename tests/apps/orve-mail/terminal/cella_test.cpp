// Cells that spreadsheets open and do not run.
#include "orve-mail/terminal/cella.h"

#include <gtest/gtest.h>

namespace orve::app {

TEST(CellaInerte, WhatWouldRunStandsAfterAnApostrophe) {
  struct Caso {
    const char* testo;
    const char* atteso;
  };
  for (const Caso& caso : {Caso{"=cmd|' /C calc'!A0", "'=cmd|' /C calc'!A0"}, Caso{"+39 045 1", "'+39 045 1"},
                           Caso{"-2+3", "'-2+3"}, Caso{"@SUM(1)", "'@SUM(1)"}, Caso{"＝1+1", "'＝1+1"},
                           Caso{"\t=1", "'\t'=1"}, Caso{"\rx", "'\rx"}, Caso{" =1", " '=1"},
                           Caso{"Rossi;=1", "Rossi;'=1"}, Caso{"Rossi,\"=1", "Rossi,\"'=1"},
                           Caso{"uno\r\n=1", "uno\r\n'=1"}, Caso{"uno;\n\t-due", "uno;\n\t'-due"},
                           Caso{"", ""}, Caso{"a=b", "a=b"}, Caso{"x@example.org", "x@example.org"},
                           Caso{"Fattura n. 12 - marzo; uno", "Fattura n. 12 - marzo; uno"}}) {
    EXPECT_EQ(CellaInerte(caso.testo), caso.atteso) << caso.testo;
  }
}

TEST(CellaInerte, NumbersStayNumbers) {
  for (const char* numero : {"-5", "+5", "-5.25", "-1234,50", "-1.234,50", "0", "12"}) {
    EXPECT_EQ(CellaInerte(numero), numero);
  }
  for (const char* altro : {"-", "-5-5", "-5.", "-.5", "-5e3", "+5A1"}) {
    EXPECT_EQ(CellaInerte(altro), std::string("'") + altro);
  }
}

TEST(CellaInerte, WhatNobodySeesStandsThereAsAnEscape) {
  EXPECT_EQ(CellaInerte("a\x1B[31m\xC2\x9B\xE2\x80\x8F\x07 b"), "a\\u001B[31m\\u009B\\u200F\\u0007 b");
  EXPECT_EQ(CellaInerte("\xE2\x80\x8E=1"), "\\u200E=1");
  EXPECT_EQ(CellaInerte("\x9B"
                        "31mA"),
            "\xEF\xBF\xBD"
            "31mA")
      << "what is no text is no command either";
}

}  // namespace orve::app
