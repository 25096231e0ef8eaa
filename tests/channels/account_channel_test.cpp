// The delivery that the channels with an account share, over an object that only takes notes.
#include "channels/account_channel.h"

#include <string>
#include <vector>

#include "channels/canale_smtp.h"
#include "channels/channel_traits.h"

namespace orve {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class CanaleConAccount : public CanaleSmtp {
 protected:
  CanaleConAccount() {
    ConRegistro();
    ConDestinatario("anna@x.example", "Anna");
    interno.esito.StatoInvio = kvProgramError;
    journal->Svuota();
  }

  void Consegna(kvEnum_ServizioMail canale) {
    ConsegnaDaAccount(
        interno.messaggio, interno.impostazioni, interno.account, interno.contesto, interno.esito,
        interno.oggetti, canale,
        [&] {
          journal->Add("allega, nomi \"" + servizio->vNome + "\"");
          return std::string("C:\\a.pdf");
        },
        [&](const AccountSubmission& composta) -> RispostaDelCanale {
          journal->Add("consegna da " + composta.mittente + " a " + composta.elenchi.a + ": " +
                       servizio->vCorpoMail);
          return {accettato, [&] {
                    journal->Add("motivo");
                    return std::string("rifiutato per prova");
                  }};
        });
  }

  std::vector<std::string> Passi() const {
    return journal->Righe({"allega", "consegna ", "motivo", "ObjRegistroInvio."});
  }

  bool accettato = true;
};

TEST_F(CanaleConAccount, AttachesComposesHandsOverAndRecordsInThisOrder) {
  Consegna(kvSMTPMail);
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(
      Passi(),
      ElementsAre(
          "allega, nomi \"\"",
          "consegna da \"Orve S.p.A.\"<info@orve.example> a Anna <anna@x.example>: Gentile Anna",
          "ObjRegistroInvio.TipoCanale 3", "ObjRegistroInvio.EsitoInvio 0",
          "ObjRegistroInvio.MittenteInvio SMTP: info@orve.example", "ObjRegistroInvio.CanaleInvio 77",
          "ObjRegistroInvio.RegistraInvio Anna|Bianchi S.r.l.|Anna<anna@x.example>|C:\\a.pdf||Fattura "
          "12|Gentile Anna"));
}

TEST_F(CanaleConAccount, ARefusalIsRecordedWithItsReasonAskedOnceTheRegisterKnowsTheOutcome) {
  accettato = false;
  Consegna(kvSMTPMail);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(Passi(), ElementsAre(testing::_, testing::_, "ObjRegistroInvio.TipoCanale 3",
                                   "ObjRegistroInvio.EsitoInvio 1", "motivo",
                                   "ObjRegistroInvio.MittenteInvio SMTP: info@orve.example",
                                   "ObjRegistroInvio.CanaleInvio 77",
                                   "ObjRegistroInvio.RegistraInvio Anna|Bianchi S.r.l.|Anna<anna@x.example>|"
                                   "C:\\a.pdf|rifiutato per prova|Fattura 12|Gentile Anna"));
}

TEST_F(CanaleConAccount, WithoutARegisterTheReasonIsNotAsked) {
  accettato = false;
  interno.oggetti.ObjRegistroInvio.reset();
  journal->Svuota();
  Consegna(kvSMTPMail);
  EXPECT_EQ(servizio->Stato(), kvErroreInvioMail);
  EXPECT_THAT(journal->Righe({"motivo"}), IsEmpty());
}

TEST_F(CanaleConAccount, OnlyAChannelThroughTheAccountsServerEndsWithoutOne) {
  interno.account.SmtpServer.clear();
  Consegna(kvSMTPMail);
  EXPECT_EQ(servizio->Stato(), kvProgramError);
  EXPECT_THAT(Passi(), ElementsAre("allega, nomi \"\""));
  // A channel that goes another way; that its own delivery is not this one does not matter here.
  ASSERT_FALSE(HaTratto(kvMAPI, &ChannelTraits::serverDellAccount));
  Consegna(kvMAPI);
  EXPECT_EQ(servizio->Stato(), kvOK);
  EXPECT_THAT(journal->Righe({"consegna "}), Not(IsEmpty()));
  EXPECT_THAT(journal->Righe({"ObjRegistroInvio.MittenteInvio"}),
              ElementsAre("ObjRegistroInvio.MittenteInvio MAPI: info@orve.example"));
}

}  // namespace
}  // namespace orve
