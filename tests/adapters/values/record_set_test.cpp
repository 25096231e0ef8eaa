// The record set without a connection.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "fakes/errori.h"
#include "values/record_set_in_memoria.h"

namespace orve::adapters::values {
namespace {

using fakes::NumeroDi;
using host::Leggi;
using host::Variant;
using RecordSet = host::RecordSetScollegato;

class RecordSetScollegato : public ::testing::Test {
 protected:
  RecordSetScollegato() {
    righe.FieldsAppend("Index", RecordSet::kIntero, 0, -1);
    righe.FieldsAppend("FileName", RecordSet::kTesto, 255, -1);
    righe.Open(-1, -1, -1);
  }
  void Aggiungi(std::int32_t indice, const std::string& nome) {
    righe.AddNew({"Index", "FileName"}, {indice, nome});
  }
  void Cerca(const std::string& criterio) {
    righe.Find(criterio, 0, RecordSet::kAvanti, RecordSet::kDalPrimo);
  }

  RecordSetInMemoria righe;
};

TEST_F(RecordSetScollegato, ANewRecordSetIsOpenAndAtItsEnd) {
  EXPECT_EQ(righe.State(), 1);
  EXPECT_TRUE(righe.Eof());
  EXPECT_EQ(righe.RecordCount(), 0);
  EXPECT_EQ(righe.AbsolutePosition(), RecordSet::kNessunaRiga);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(Leggi(righe, "Index")); }), 3021);
  EXPECT_EQ(NumeroDi([&] { righe.MoveFirst(); }), 3021);
}

TEST_F(RecordSetScollegato, ANewRowBecomesTheCurrentOne) {
  Aggiungi(0, "a.pdf");
  Aggiungi(1, "b.pdf");
  EXPECT_EQ(righe.RecordCount(), 2);
  EXPECT_EQ(righe.AbsolutePosition(), 2);
  EXPECT_EQ(Leggi(righe, "INDEX"), Variant(1));
  EXPECT_EQ(Leggi(righe, "filename").ToText(), "b.pdf");
}

TEST_F(RecordSetScollegato, AWalkGoesThroughAllRowsToTheEnd) {
  Aggiungi(0, "a.pdf");
  Aggiungi(1, "b.pdf");
  std::string visti;
  for (righe.MoveFirst(); !righe.Eof(); righe.MoveNext()) visti += Leggi(righe, "FileName").ToText() + " ";
  EXPECT_EQ(visti, "a.pdf b.pdf ");
  EXPECT_EQ(NumeroDi([&] { righe.MoveNext(); }), 3021);
}

TEST_F(RecordSetScollegato, FindStopsAtTheFirstRowThatFitsWithoutRegardToCase) {
  Aggiungi(0, "a.pdf");
  Aggiungi(1, "Città.pdf");
  Aggiungi(2, "città.pdf");
  Cerca("FileName='CITTÀ.pdf'");
  EXPECT_EQ(righe.AbsolutePosition(), 2);
}

TEST_F(RecordSetScollegato, FindWithoutARowThatFitsRunsToTheEnd) {
  Aggiungi(0, "a.pdf");
  Cerca("FileName='b.pdf'");
  EXPECT_TRUE(righe.Eof());
  Aggiungi(1, "b.pdf");
  EXPECT_FALSE(righe.Eof());
}

TEST_F(RecordSetScollegato, FindLeavesOutTheRowsToSkip) {
  Aggiungi(0, "a.pdf");
  Aggiungi(1, "a.pdf");
  righe.Find("FileName='a.pdf'", 1, RecordSet::kAvanti, RecordSet::kDalPrimo);
  EXPECT_EQ(righe.AbsolutePosition(), 2);
  righe.Find("FileName='a.pdf'", 9, RecordSet::kAvanti, RecordSet::kDalPrimo);
  EXPECT_TRUE(righe.Eof());
}

TEST_F(RecordSetScollegato, AnApostropheSpoilsTheCriterionAndMovesNothing) {
  Aggiungi(0, "l'ordine.pdf");
  for (const char* criterio : {"FileName='l'ordine.pdf'", "FileName='l''ordine.pdf'", "FileName='",
                               "FileName=''x", "='a'", "FileName=a", ""}) {
    EXPECT_EQ(NumeroDi([&] { Cerca(criterio); }), 3001) << criterio;
  }
  EXPECT_EQ(righe.AbsolutePosition(), 1);
  EXPECT_EQ(NumeroDi([&] { Cerca("Altro='a'"); }), 3265);
}

TEST_F(RecordSetScollegato, AnEmptyTextIsAGoodCriterion) {
  Aggiungi(0, "");
  Cerca("FileName=''");
  EXPECT_EQ(righe.AbsolutePosition(), 1);
}

TEST_F(RecordSetScollegato, AValueThatDoesNotFitAddsNoRow) {
  EXPECT_NE(NumeroDi([&] { Aggiungi(0, std::string(256, 'x')); }), 0);
  EXPECT_EQ(NumeroDi([&] { righe.AddNew({"Index"}, {"molti"}); }), 13);
  EXPECT_EQ(NumeroDi([&] { righe.AddNew({"Altro"}, {1}); }), 3265);
  EXPECT_EQ(NumeroDi([&] { righe.AddNew({"Index"}, {}); }), 3001);
  EXPECT_EQ(righe.RecordCount(), 0);
}

TEST_F(RecordSetScollegato, TheSizeOfATextCountsCharacters) {
  std::string lungo;
  for (int i = 0; i < 255; ++i) lungo += "à";
  Aggiungi(0, lungo);
  EXPECT_EQ(Leggi(righe, "FileName").ToText(), lungo);
}

TEST_F(RecordSetScollegato, AFieldThatWasGivenNothingIsNull) {
  righe.AddNew({"Index"}, {3});
  EXPECT_TRUE(Leggi(righe, "FileName").IsNull());
}

TEST_F(RecordSetScollegato, EachMoveIsToldToTheGrid) {
  std::string mosse;
  righe.MoveComplete = [&] { mosse += std::to_string(righe.AbsolutePosition()) + " "; };
  Aggiungi(0, "a");
  Aggiungi(1, "b");
  righe.AbsolutePosition(1);
  Cerca("FileName='b'");
  Cerca("FileName='c'");
  EXPECT_EQ(mosse, "1 2 1 2 -3 ");
}

TEST_F(RecordSetScollegato, APositionWithoutARowIsRefused) {
  Aggiungi(0, "a");
  EXPECT_EQ(NumeroDi([&] { righe.AbsolutePosition(0); }), 3001);
  EXPECT_EQ(NumeroDi([&] { righe.AbsolutePosition(2); }), 3001);
  EXPECT_EQ(righe.AbsolutePosition(), 1);
}

TEST_F(RecordSetScollegato, AClosedRecordSetRefusesEverything) {
  Aggiungi(0, "a");
  const auto campo = host::Richiesto(righe.Fields()).Item("Index");
  righe.Close();
  EXPECT_EQ(righe.State(), 0);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(righe.RecordCount()); }), 3704);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(righe.Eof()); }), 3704);
  EXPECT_EQ(NumeroDi([&] { Aggiungi(1, "b"); }), 3704);
  EXPECT_EQ(NumeroDi([&] { Cerca("FileName='a'"); }), 3704);
  EXPECT_EQ(NumeroDi([&] { righe.Close(); }), 3704);
  EXPECT_EQ(NumeroDi([&] { static_cast<void>(host::Richiesto(campo).Value()); }), 3704);
}

TEST_F(RecordSetScollegato, FieldsAreAppendedBeforeTheOpening) {
  EXPECT_EQ(NumeroDi([&] { righe.FieldsAppend("Altro", RecordSet::kTesto, 10, -1); }), 3705);
  EXPECT_EQ(NumeroDi([&] { righe.Open(-1, -1, -1); }), 3705);
}

TEST_F(RecordSetScollegato, AFieldOutlivesItsRecordSet) {
  std::shared_ptr<host::Field> campo;
  {
    RecordSetInMemoria breve;
    breve.FieldsAppend("Index", RecordSet::kIntero, 0, -1);
    breve.Open(-1, -1, -1);
    breve.AddNew({"Index"}, {5});
    campo = host::Richiesto(breve.Fields()).Item("Index");
  }
  EXPECT_EQ(host::Richiesto(campo).Value(), Variant(5));
}

}  // namespace
}  // namespace orve::adapters::values
