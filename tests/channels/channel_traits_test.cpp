// The table of the channels.
#include "channels/channel_traits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "fakes/servizio_di_prova.h"

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

TEST(TrattiDeiCanali, AreThose) {
  const auto con = [](bool ChannelTraits::*tratto) {
    std::set<std::int32_t> numeri;
    for (const ChannelTraits& canale : Canali()) {
      if (canale.*tratto) numeri.insert(canale.numero);
    }
    return numeri;
  };
  EXPECT_THAT(con(&ChannelTraits::haAccount), testing::ElementsAre(76, 77));
  EXPECT_THAT(con(&ChannelTraits::serverDellAccount), testing::ElementsAre(76, 77));
  EXPECT_THAT(con(&ChannelTraits::ricevutaDiConsegna), testing::ElementsAre(76, 77));
  EXPECT_THAT(con(&ChannelTraits::avvisaDegliAllegati), testing::ElementsAre(76, 77));
  EXPECT_THAT(con(&ChannelTraits::rifiutaSenzaCorpo), testing::ElementsAre(0));
  EXPECT_THAT(con(&ChannelTraits::usaSendmail), testing::ElementsAre(0, 2));
  EXPECT_THAT(con(&ChannelTraits::soloWindows), testing::ElementsAre(1));
}

// The windows offer the receipt with the accounts, and the server is the account's.
TEST(TrattiDeiCanali, WithoutAnAccountThereIsNeitherAServerNorADeliveryReceipt) {
  for (const ChannelTraits& canale : Canali()) {
    if (canale.haAccount) continue;
    EXPECT_FALSE(canale.serverDellAccount) << canale.nome;
    EXPECT_FALSE(canale.ricevutaDiConsegna) << canale.nome;
  }
}

}  // namespace
}  // namespace orve
