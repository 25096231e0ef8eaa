// Texts that no mail was meant to carry, in every public text member and argument. Nothing breaks, what has a
// place to go arrives there unchanged, and the records count what was sent and nothing else.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "fakes/servizio_di_prova.h"

namespace orve {
namespace {

using host::Variant;
using ::testing::Contains;
using ::testing::IsEmpty;

struct TestoOstile {
  const char* etichetta;
  std::string testo;
};

const std::vector<TestoOstile>& TestiOstiliTutti() {
  static const std::vector<TestoOstile> testi = {
      {"line ends", "riga\r\nBcc: spia@x.example\r\n\r\n.\r\nQUIT"},
      {"NUL", std::string("prima\0dopo", 10)},
      {"invalid UTF-8", "\xFF\xFE\xC3"},
      {"quotes", "'\"`\\''); --"},
      {"separators", "><;;<|/<***>"},
      {"one megabyte", std::string(1U << 20U, 'x')},
  };
  return testi;
}

/// Where a text can be seen as it is: a line of the journal that begins with `prima`, the text, `dopo`.
struct Posto {
  std::string prima;
  std::string dopo;
  bool fineRiga = true;  // nothing follows
};

struct Membro {
  const char* nome;
  std::function<void(CLSFW_MAILSERVER&, const std::string&)> scrive;
  std::vector<Posto> posti;
};

fakes::Riga RigaAccount() {
  return {{"FW23_SERVERNAME", "smtp.azienda.example"},
          {"FW23_PORT", 587},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 0},
          {"FW23_SSL", 1},
          {"FW98_MAILADDRESS", "posta@azienda.example"},
          {"FW98_USERNAME", ""},
          {"FW98_PASSWORD", ""},
          {"ALIAS", "Azienda"},
          {"LETTURA", 0},
          {"CONSEGNA", 0}};
}

class TestiOstili : public fakes::ServizioDiProva {
 protected:
  TestiOstili() {
    connessione->Risponde("FW98_MAILACCOUNT", {RigaAccount()});
    Rinnova();
  }

  /// A new service, prepared as far as a caller does so, with one recipient.
  void Rinnova() {
    fakes::ServizioAperto nuovo(ambiente);
    Interno& dentro = nuovo.interno;
    registro_ = &dentro.oggetti.ObjRegistroInvio;
    servizio = std::move(nuovo.servizio);
    servizio->ConnectionADO = connessione;
    servizio->SrvMailInstallato = kvSMTPSSLMail;
    servizio->ModalitaInvio(kvAutomatico);
    servizio->vFlagCorpo = 1;
    servizio->ReadReceipt = true;
    dentro.impostazioni.PathTemp = "C:\\Temp";
    dentro.account.SmtpServer = "smtp.azienda.example";
    dentro.oggetti.ObjRegistroInvio = ambiente->CreaRegistroInvio();
    Collezione().AddFromLista("a@x.example", "Anna", "Acme", 0);
    journal->Svuota();
  }

  /// One register line and one event for each recipient of a message that was sent, none without a message.
  void VerificaRegistrazioni() {
    const std::size_t inviati = journal->Conta("smtp.SendMail");
    EXPECT_LE(inviati, 1U);
    const std::size_t destinatari =
        servizio->vCollDestinatari ? static_cast<std::size_t>(servizio->vCollDestinatari->Count()) : 0U;
    EXPECT_EQ(journal->Conta("ObjRegistroInvio.RegistraInvio"), inviati * destinatari);
    EXPECT_EQ(journal->Conta("ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale"),
              inviati * destinatari);
  }

  std::shared_ptr<host::RegistroInvio>* registro_ = nullptr;  // of the current service

  void VerificaPosti(const std::vector<Posto>& posti, const std::string& testo) const {
    for (const auto& posto : posti) {
      const std::string riga = posto.prima + testo + posto.dopo;
      const auto trovate = journal->Righe({riga});
      EXPECT_FALSE(trovate.empty()) << posto.prima;
      if (posto.fineRiga && !trovate.empty()) {
        EXPECT_TRUE(trovate.front() == riga) << posto.prima;
      }
    }
  }
};

// The members of a service, of a recipient and of an account, by a whole send to a collection.

std::shared_ptr<Mittente> Scelto(CLSFW_MAILSERVER& s, const std::shared_ptr<host::Ambiente>& ambiente) {
  s.vMittente = std::make_shared<Mittente>(ambiente);
  s.vMittente->Server("smtp.azienda.example");
  s.vMittente->Auth(1);
  return s.vMittente;
}

std::vector<Membro> Membri(const std::shared_ptr<host::Ambiente>& ambiente) {
  const auto primo = [](CLSFW_MAILSERVER& s) { return s.vCollDestinatari->Item(1); };
  return {
      {"vIndDestinatario", [](auto& s, auto& t) { s.vIndDestinatario = t; }, {}},
      {"vNome", [](auto& s, auto& t) { s.vNome = t; }, {}},
      {"vDitta", [](auto& s, auto& t) { s.vDitta = t; }, {}},
      {"vOggetto", [](auto& s, auto& t) { s.vOggetto = t; }, {{"smtp.Subject ", ""}}},
      {"vTestoMail", [](auto& s, auto& t) { s.vTestoMail = t; }, {}},
      {"vMailAttachment", [](auto& s, auto& t) { s.vMailAttachment = t; }, {}},
      {"vCorpoMail", [](auto& s, auto& t) { s.vCorpoMail = t; }, {{"smtp.BodyText ", ""}}},
      {"DittaCorrente",
       [](auto& s, auto& t) { s.DittaCorrente = t; },
       {{"ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale ", ", 89, 7, '<DATE_INS=", false}}},
      {"vElencoAllegati", [](auto& s, auto& t) { s.vElencoAllegati = Variant::Array{t}; }, {}},
      {"vElencoAllegati, no list", [](auto& s, auto& t) { s.vElencoAllegati = t; }, {}},
      {"AddAllegato", [](auto& s, auto& t) { s.AddAllegato(t); }, {}},
      {"MsgPers",
       [](auto& s, auto& t) {
         s.vFlagCorpo = 0;
         s.FlgMsgPers = true;
         s.MsgPers = t;
       },
       {{"smtp.BodyText ", ""}}},
      {"INFO_RagSocCliFor",
       [](auto& s, auto& t) { s.INFO_RagSocCliFor(t); },
       {{"ObjRegistroInvio.RegistraInvio Anna|", "|Anna<a@x.example>||||"}}},
      {"vSenderName", [](auto& s, auto& t) { s.vSenderName = t; }, {}},
      {"vSenderAddress",
       [](auto& s, auto& t) { s.vSenderAddress = t; },
       {{"ObjRegistroInvio.MittenteInvio SMTP: ", ""}}},
      {"errDescription", [](auto& s, auto& t) { s.errDescription = t; }, {}},
      {"errNumber", [](auto& s, auto& t) { s.errNumber = t; }, {}},
      {"MailParamAllegatoUnico", [](auto& s, auto& t) { s.MailParamAllegatoUnico(t); }, {}},
      {"MailParamCorpoUnico", [](auto& s, auto& t) { s.MailParamCorpoUnico(t); }, {}},
      {"ListaGuid", [](auto& s, auto& t) { s.ListaGuid(t); }, {}},
      {"DestinatariA", [](auto& s, auto& t) { s.DestinatariA(t); }, {}},
      {"DestinatariCC", [](auto& s, auto& t) { s.DestinatariCC(t); }, {}},
      {"DestinatariCCn", [](auto& s, auto& t) { s.DestinatariCCn(t); }, {}},
      {"Allegati", [](auto& s, auto& t) { s.Allegati(t); }, {}},
      {"MailCorpo", [](auto& s, auto& t) { s.MailCorpo(t); }, {}},
      {"MailOggetto", [](auto& s, auto& t) { s.MailOggetto(t); }, {}},
      {"Destinatario.Indirizzo", [=](auto& s, auto& t) { primo(s)->Indirizzo(t); }, {}},
      {"Destinatario.Nome", [=](auto& s, auto& t) { primo(s)->Nome(t); }, {}},
      {"Destinatario.Azienda", [=](auto& s, auto& t) { primo(s)->Azienda(t); }, {}},
      {"key of a recipient",
       [](auto& s, auto& t) {
         s.vCollDestinatari->Add("b@x.example", "Bea", "", t);
         EXPECT_EQ(s.vCollDestinatari->Item(t)->Nome(), "Bea");
       },
       {}},
      {"Mittente.Server",
       [=](auto& s, auto& t) { Scelto(s, ambiente)->Server(t); },
       {{"smtp.ServerAddr ", ""}}},
      {"Mittente.Indirizzo",
       [=](auto& s, auto& t) { Scelto(s, ambiente)->Indirizzo(t); },
       {{"ObjRegistroInvio.MittenteInvio SMTP: ", ""}}},
      {"Mittente.Descrizione", [=](auto& s, auto& t) { Scelto(s, ambiente)->Descrizione(t); }, {}},
      {"Mittente.user", [=](auto& s, auto& t) { Scelto(s, ambiente)->user(t); }, {{"smtp.UserName ", ""}}},
      {"Mittente.Password", [=](auto& s, auto& t) { Scelto(s, ambiente)->Password(t); }, {}},
  };
}

TEST_F(TestiOstili, InEachMemberLeaveTheSendAndItsRecordsSound) {
  for (const auto& membro : Membri(ambiente)) {
    for (const auto& [etichetta, testo] : TestiOstiliTutti()) {
      SCOPED_TRACE(std::string(membro.nome) + ", " + etichetta);
      Rinnova();
      membro.scrive(*servizio, testo);
      EXPECT_NO_THROW(servizio->AvviaProceduraInvio());
      EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
      EXPECT_EQ(servizio->Stato(), kvOK);
      VerificaRegistrazioni();
      VerificaPosti(membro.posti, testo);
    }
  }
}

// The arguments of the methods.

TEST_F(TestiOstili, InTheArgumentsOfTheInitialisersReachTheRegisterAndTheStatements) {
  for (const auto& [etichetta, testo] : TestiOstiliTutti()) {
    SCOPED_TRACE(etichetta);
    Rinnova();
    registro_->reset();
    servizio->IsLista(1);
    servizio->ListaGuid(testo);
    servizio->INFO_TipoDoc = servizio->INFO_NumReg = servizio->INFO_NumDoc = servizio->INFO_SezDoc = testo;
    servizio->DittaCorrente = testo;
    const auto inizializza = [&testo = testo, this] {
      servizio->InizializzaRegistroInvioMail(testo, testo, testo, testo, testo);
    };
    // No connection accepts a statement with a NUL; what precedes it has arrived all the same.
    if (testo.find('\0') != std::string::npos) {
      EXPECT_THROW(inizializza(), host::Errore);
    } else {
      inizializza();
    }
    for (const char* operazione : {"GuidLista ", "IDvoce ", "UObject ", "TitoloStampa ", "Ditta ", "TipoDoc ",
                                   "NumReg ", "NumDoc ", "SezDoc "}) {
      std::string riga = "ObjRegistroInvio.";
      riga.append(operazione).append(testo);
      EXPECT_THAT(journal->Righe(), Contains(riga)) << operazione;
    }
    std::string statement = " SELECT FW07_ID  FROM FW07_APPUSER  WHERE FW07_CODICE_FW06 = '";
    statement.append(testo).append("'      AND FW07_CODICE = '").append(testo).append("' ");
    EXPECT_EQ(connessione->Statements().front(), statement);
    EXPECT_THAT(Messaggi(), IsEmpty());
  }
}

TEST_F(TestiOstili, AsACodeOfEveryTypeAreRefusedOnRecordAndSendNothing) {
  for (std::int32_t tipo = 0; tipo <= 11; ++tipo) {
    for (const auto& [etichetta, testo] : TestiOstiliTutti()) {
      SCOPED_TRACE(std::to_string(tipo) + ", " + etichetta);
      Rinnova();
      servizio->vCollDestinatari.reset();
      EXPECT_NO_THROW(
          servizio->AvviaProceduraInvio(Variant(testo), static_cast<kvTipologiaDestinatarioFAX>(tipo)));
      EXPECT_EQ(journal->Conta("smtp."), 0U);
      EXPECT_EQ(
          journal->Righe({"ObjRegistroInvio.RegistraInvio"}),
          std::vector<std::string>{"ObjRegistroInvio.RegistraInvio ||||Non inviato. Indirizzo mancante.||"});
      EXPECT_EQ(journal->Conta("ConnectionADO.Execute 1 exec SPFW_AttivaEventoGestionale"), 1U);
    }
  }
}

TEST_F(TestiOstili, InTheArgumentsOfADirectSendLeaveItsRecordsSound) {
  constexpr std::size_t kArgomenti = 6;
  for (std::size_t quale = 0; quale < kArgomenti; ++quale) {
    for (const auto& [etichetta, testo] : TestiOstiliTutti()) {
      SCOPED_TRACE(std::to_string(quale) + ", " + etichetta);
      Rinnova();
      std::vector<std::string> a = {"Anna<a@x.example>", "", "", "Oggetto", "Corpo", ""};
      a[quale] = testo;
      EXPECT_NO_THROW(servizio->InviaMailDiretta(12, a[0], a[1], a[2], a[3], a[4], a[5]));
      // An address list that cannot be read ends the send silently before it has begun.
      const bool illeggibile = quale < 3 && testo.starts_with("><");
      EXPECT_EQ(journal->Conta("smtp.SendMail"), illeggibile ? 0U : 1U);
      if (!illeggibile) VerificaRegistrazioni();
      if (quale == 3) VerificaPosti({{"smtp.Subject ", ""}}, testo);
      if (quale == 4) VerificaPosti({{"smtp.BodyText ", ""}}, testo);
    }
  }
}

TEST_F(TestiOstili, InTheStandAloneCallsLeaveTheirRecordsSound) {
  for (const auto& [etichetta, testo] : TestiOstiliTutti()) {
    SCOPED_TRACE(etichetta);
    Rinnova();
    EXPECT_TRUE(servizio->InviaMailSMTP(testo, testo));
    VerificaRegistrazioni();
    VerificaPosti({{"smtp.Subject ", ""}, {"smtp.BodyText ", ""}}, testo);
    Rinnova();
    servizio->vCollDestinatari.reset();
    EXPECT_FALSE(servizio->AddDestinatario(testo, testo));
    EXPECT_TRUE(servizio->InviaMailSMTP("Oggetto", "Corpo"));
    EXPECT_EQ(journal->Conta("smtp.SendMail"), 1U);
    VerificaRegistrazioni();
    EXPECT_EQ(servizio->CheckRegularMailAddress(testo), testo.find('@') != std::string::npos);
  }
}

}  // namespace
}  // namespace orve
