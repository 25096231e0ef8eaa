// The table of the channels, and what has to agree with it.
#include "channels/channel_traits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "fakes/servizio_di_prova.h"
#include "places.h"

namespace orve {
namespace {

TEST(TrattiDeiCanali, AreOneRowForEachNumber) {
  std::set<std::int32_t> numeri;
  for (const ChannelTraits& canale : Canali()) {
    EXPECT_TRUE(numeri.insert(canale.numero).second) << canale.numero;
    EXPECT_EQ(TrattiDi(canale.numero), &canale);
    EXPECT_FALSE(canale.nome.empty());
  }
  EXPECT_EQ(TrattiDi(fakes::kNessunCanale), nullptr);
  EXPECT_FALSE(HaAccount(fakes::kNessunCanale));
  EXPECT_FALSE(InvioDisabilitato(fakes::kNessunCanale));
}

TEST(TrattiDeiCanali, WhatSendsSignsItsRecordsShapesTheWindowAndGivesReasons) {
  for (const ChannelTraits& canale : Canali()) {
    const bool invia = canale.consegna != nullptr;
    EXPECT_EQ(!canale.firma.empty(), invia) << canale.nome;
    EXPECT_EQ(canale.adattaFinestra != nullptr, invia) << canale.nome;
    EXPECT_EQ(!canale.risponde.empty(), invia) << canale.nome;
    EXPECT_EQ(InvioDisabilitato(canale.numero), !invia) << canale.nome;
    EXPECT_TRUE(invia || (canale.crea == nullptr && canale.prepara == nullptr && canale.rilascia == nullptr))
        << canale.nome;
  }
}

// Both windows offer the receipt with the accounts, and the server is the account's.
TEST(TrattiDeiCanali, WithoutAnAccountThereIsNeitherAServerNorADeliveryReceipt) {
  for (const ChannelTraits& canale : Canali()) {
    if (canale.haAccount) continue;
    EXPECT_FALSE(canale.serverDellAccount) << canale.nome;
    EXPECT_FALSE(canale.ricevutaDiConsegna) << canale.nome;
  }
}

std::string Sorgente(const std::string& file) {
  std::ifstream flusso(places::Source(file));
  return {std::istreambuf_iterator<char>(flusso), std::istreambuf_iterator<char>()};
}

std::set<std::int32_t> NumeriIn(const std::string& testo) {
  std::set<std::int32_t> numeri;
  const std::regex numero(R"(\b\d+\b)");
  for (auto trovato = std::sregex_iterator(testo.begin(), testo.end(), numero);
       trovato != std::sregex_iterator(); ++trovato) {
    numeri.insert(std::stoi(trovato->str()));
  }
  return numeri;
}

std::set<std::int32_t> NumeriDeiCanali() {
  std::set<std::int32_t> numeri;
  for (const ChannelTraits& canale : Canali()) numeri.insert(canale.numero);
  return numeri;
}

TEST(TrattiDeiCanali, HaveTheNumbersOfTheAutomationInterface) {
  const std::string idl = Sorgente("com/idl/orve_mailserver.idl");
  const std::size_t fine = idl.find("} kvEnum_ServizioMail;");
  ASSERT_NE(fine, std::string::npos);
  const std::size_t inizio = idl.rfind('{', fine);
  EXPECT_EQ(NumeriIn(idl.substr(inizio, fine - inizio)), NumeriDeiCanali());
}

TEST(TrattiDeiCanali, HaveTheNumbersThatTheSchemaNames) {
  const std::string schema = Sorgente("adapters/sqlite/schema.sql");
  const std::size_t inizio = schema.find("-- mail: ", schema.find("FW24_INDFAXATTIVO"));
  ASSERT_NE(inizio, std::string::npos);
  EXPECT_EQ(NumeriIn(schema.substr(inizio, schema.find('\n', inizio) - inizio)), NumeriDeiCanali());
}

}  // namespace
}  // namespace orve
