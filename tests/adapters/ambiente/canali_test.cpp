// The channels over the ready set: which of them have their object on this machine, and which hand messages
// to its sendmail command, as their table says.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "channels/channel_traits.h"
#include "fakes/osservatore_annotato.h"
#include "orve-mailserver/ambiente/ambiente.h"
#include "orve-mailserver/ambiente/database.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "sqlite/schema.h"
#include "support/temp_dir.h"

namespace orve::adapters::ambiente {

namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Matches;
using ::testing::StartsWith;

/// An unattended message to one recipient, from the settings on. Whether the accounts' server takes it does
/// not matter: nobody listens there.
class InvioPronto {
 public:
  explicit InvioPronto(kvEnum_ServizioMail canale) {
    const std::string file = (cartella_.Path() / "dati.db").string();
    sqlite::CreaDatabase(file, [](const sqlite::PasswordToEncipher& /*password*/) { return ""; });
    connessione_ = ApriDatabase(file);
    Sql("UPDATE FW24_FAXCONFIG SET FW24_INDMODALITA = 1, FW24_PATHTMP = '', FW24_INDFAXATTIVO = " +
        std::to_string(canale));
    Sql("UPDATE FW23_FAXER SET FW23_SERVERNAME = '127.0.0.1', FW23_PORT = 1");
    Invia();
  }

  [[nodiscard]] bool ConSendmail() const { return std::filesystem::exists(Consegnato()); }
  [[nodiscard]] const std::vector<std::string>& Detto() const { return osservatore_->righe; }

 private:
  void Sql(const std::string& istruzione) const {
    static_cast<void>(connessione_->Execute(istruzione, host::kComandoTesto));
  }
  [[nodiscard]] std::filesystem::path Consegnato() const { return cartella_.Path() / "consegnato"; }

  void Invia() const {
    const std::string sendmail =
        cartella_.Write("sendmail", "#!/bin/sh\ncat > '" + Consegnato().string() + "'\n");
    std::filesystem::permissions(sendmail, std::filesystem::perms::owner_all);
    Options opzioni{.osservatore = osservatore_};
    opzioni.mapi.sendmail = sendmail;
    const auto pronto = std::make_shared<AmbientePronto>(std::move(opzioni));
    CLSFW_MAILSERVER servizio(pronto);
    servizio.ConnectionADO = connessione_;
    servizio.DittaCorrente = 1;
    servizio.GetImpostazioni();
    servizio.vFlagCorpo = 1;
    servizio.vCorpoMail = "Buongiorno";
    servizio.vCollDestinatari = std::make_shared<CollDestinatari>(pronto);
    servizio.vCollDestinatari->Add("anna@x.example", "Anna");
    servizio.AvviaProceduraInvio();
  }

  support::TempDir cartella_;
  std::shared_ptr<host::Connection> connessione_;
  std::shared_ptr<fakes::OsservatoreAnnotato> osservatore_ = std::make_shared<fakes::OsservatoreAnnotato>();
};

TEST(TrattiDeiCanali, SayWhatTheReadySetHasAndWhatGoesThroughSendmail) {
  const std::string nonCreabile = "|" + std::to_string(host::kOggettoNonCreabile) + " ";
  const auto manca = Contains(AllOf(StartsWith("oggetto non creato "), HasSubstr(nonCreabile)));
  for (const ChannelTraits& canale : Canali()) {
    if (canale.consegna == nullptr) continue;
    const InvioPronto invio(canale.numero);
    EXPECT_EQ(Matches(manca)(invio.Detto()), canale.soloWindows) << canale.nome;
    EXPECT_EQ(Matches(Contains(StartsWith("iniziata ")))(invio.Detto()), !canale.soloWindows) << canale.nome;
    EXPECT_EQ(invio.ConSendmail(), canale.usaSendmail) << canale.nome;
  }
}

}  // namespace

}  // namespace orve::adapters::ambiente
