// The table of the channels, and that each row says what its channel does.
#include "channels/channel_traits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "channels/prova_del_canale.h"

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

// Those that programs have known for long. What the others say is held to what they do, as with these.
TEST(TrattiDeiCanali, AreThose) {
  const auto con = [](bool ChannelTraits::*tratto) {
    std::set<std::int32_t> numeri;
    for (const std::int32_t numero : {0, 1, 2, 3, 76, 77}) {
      if (HaTratto(static_cast<kvEnum_ServizioMail>(numero), tratto)) numeri.insert(numero);
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

/// Holds a trait of every channel to what is seen of a message.
void SeENonAltrimenti(bool ChannelTraits::*tratto,
                      const std::function<bool(const fakes::OggettiDelCanale&)>& siVede) {
  for (const fakes::OggettiDelCanale& oggetti : fakes::OggettiDeiCanali()) {
    EXPECT_EQ(siVede(oggetti), HaTratto(oggetti.canale, tratto)) << oggetti.titolo;
  }
}

using Preparato = std::function<void(ProvaDelCanale&)>;

/// All that is asked of the outside for the message.
std::vector<std::string> Giornale(const fakes::OggettiDelCanale& oggetti, const Preparato& prepara) {
  ProvaDelCanale prova(oggetti, kvAutomatico);
  UnoConAllegato(prova);
  prepara(prova);
  prova.Invia();
  EXPECT_EQ(prova.servizio->Stato(), kvOK) << oggetti.titolo;
  return prova.journal->Righe();
}

TEST(TrattiDeiCanali, HaveAnAccountIfTheMessageIsFromItsAddress) {
  SeENonAltrimenti(&ChannelTraits::haAccount, [](const auto& oggetti) {
    const auto righe = Giornale(
        oggetti, [](ProvaDelCanale& prova) { prova.servizio->vSenderAddress = "vendite@azienda.example"; });
    return testing::Matches(testing::Contains(testing::HasSubstr("vendite@azienda.example")))(righe);
  });
}

TEST(TrattiDeiCanali, AreOfTheAccountsServerIfItIsNamedToTheirObject) {
  SeENonAltrimenti(&ChannelTraits::serverDellAccount, [](const auto& oggetti) {
    const auto righe = Giornale(
        oggetti, [](ProvaDelCanale& prova) { prova.interno.account.SmtpServer = "altro.azienda.example"; });
    return testing::Matches(testing::Contains(testing::HasSubstr("altro.azienda.example")))(righe);
  });
}

TEST(TrattiDeiCanali, CanAskForADeliveryReceiptIfTheRequestMakesADifference) {
  SeENonAltrimenti(&ChannelTraits::ricevutaDiConsegna, [](const auto& oggetti) {
    const auto con = [&](bool richiesta) {
      return Giornale(oggetti, [&](ProvaDelCanale& prova) { prova.servizio->vNotifyDelivery = richiesta; });
    };
    return con(true) != con(false);
  });
}

TEST(TrattiDeiCanali, RefuseAMessageWithoutABodyIfItIsNotHandedOver) {
  SeENonAltrimenti(&ChannelTraits::rifiutaSenzaCorpo, [](const auto& oggetti) {
    ProvaDelCanale prova(oggetti, kvAutomatico);
    UnoConAllegato(prova);
    prova.servizio->vCorpoMail.clear();
    prova.Invia();
    const bool rifiutato = prova.journal->Conta(oggetti.invio) == 0;
    EXPECT_EQ(prova.servizio->Stato() == kvErroreInvioMail, rifiutato) << oggetti.titolo;
    return rifiutato;
  });
}

// In every mode, since the program tells of the file where the channel does not.
TEST(TrattiDeiCanali, TellOfARefusedFileIfTheMessageThatGoesWithoutItIsAccompaniedByOneToThePerson) {
  for (const kvEnumModalitaInvio modo : {kvAutomatico, kvManuale}) {
    SeENonAltrimenti(&ChannelTraits::avvisaDegliAllegati, [modo](const auto& oggetti) {
      ProvaDelCanale intera(oggetti, modo);
      UnoConAllegato(intera);
      intera.Invia();
      ProvaDelCanale senzaFile(oggetti, modo);
      UnoConAllegato(senzaFile);
      oggetti.rifiutaFile(*senzaFile.ambiente, "C:\\f.pdf", {1001, "File", "file non trovato"});
      senzaFile.Invia();
      return senzaFile.servizio->Stato() == kvOK && senzaFile.Messaggi("") != intera.Messaggi("");
    });
  }
}

}  // namespace
}  // namespace orve
