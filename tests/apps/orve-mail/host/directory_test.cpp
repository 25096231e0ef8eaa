// Sends by a person who is in the company's directory: the account has no address and no name, and the
// directory has both.
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

#include "apps/orve-mail/prova_intera.h"
#include "posix/system.h"
#include "support/ldap_server.h"
#include "support/patience.h"
#include "support/scripted_server.h"

namespace orve::app {

namespace {

using support::LdapServer;
using namespace std::chrono_literals;
using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

class InvioConDirectory : public ProvaIntera {
 protected:
  InvioConDirectory() {
    const support::Certificate certificato = autorita.Issue("directory", "IP:127.0.0.1");
    opzioni.certificate = certificato.certificate;
    opzioni.key = certificato.key;
    opzioni.entries =
        "dn: cn=Dora Bianchi,ou=Vendite,dc=azienda,dc=example\nobjectClass: user\ncn: Dora Bianchi\n"
        "sAMAccountName: " +
        adapters::posix::NomeSenzaDominio(::getpwuid(::geteuid())->pw_name) +
        "\nobjectCategory: person\ngivenName: Dora\nsn: Bianchi\nmail: dora.bianchi@azienda.example\n";
    Sql("UPDATE FW98_MAILACCOUNT SET FW98_MAILADDRESS = NULL, FW98_ALIAS = NULL");
  }

  /// A send to a customer, with these options of the directory.
  Esecuzione InviaACliente(const std::vector<std::string>& directory,
                           const std::vector<std::string>& variabili = {}) const {
    std::vector<std::string> argomenti = {"invia",     "--ca",  Ca(),      "--cliente", "1001",
                                          "--oggetto", "Prova", "--corpo", "Un testo."};
    argomenti.insert(argomenti.end(), directory.begin(), directory.end());
    return EseguiConAmbiente(variabili, argomenti);
  }

  std::string FilePassword(const std::string& contenuto, mode_t permessi = S_IRUSR | S_IWUSR) const {
    std::string file = cartella.Write("password", contenuto);
    ::chmod(file.c_str(), permessi);
    return file;
  }

  std::vector<std::string> ComeLettore(const std::string& url, const std::string& filePassword) const {
    return {"--directory",
            url,
            "--directory-utente",
            LdapServer::kReader,
            "--directory-file-password",
            filePassword,
            "--directory-ca",
            autorita.CaFile().string()};
  }

  support::TempDir certificati;
  support::TestAuthority autorita{certificati.Path()};
  support::LdapServerOptions opzioni;
};

}  // namespace

TEST_F(InvioConDirectory, TheMessageComesFromThePersonWhomTheDirectoryKnows) {
  auto& server = AvviaServerOrdinario();
  const LdapServer directory(opzioni);
  for (const std::string& url : {directory.SecureUrl(), directory.Url()}) {
    const Esecuzione esecuzione =
        InviaACliente(ComeLettore(url, FilePassword(std::string(LdapServer::kPassword) + "\r\n")));
    EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
    EXPECT_EQ(esecuzione.errori, "");
  }
  for (const support::ReceivedMessage& messaggio : server.Messages()) {
    EXPECT_EQ(messaggio.sender, "dora.bianchi@azienda.example");
    EXPECT_THAT(messaggio.from,
                ElementsAre(support::Mailbox{"Dora Bianchi", "dora.bianchi@azienda.example"}));
  }
  EXPECT_EQ(server.Count(), 2U);
}

TEST_F(InvioConDirectory, TheCheckOfAnInstallationAsksTheDirectoryForThePerson) {
  const LdapServer directory(opzioni);
  const auto controlla = [&](const std::string& password) {
    std::vector<std::string> argomenti = {"controlla", "--ca", Ca()};
    const auto come = ComeLettore(directory.SecureUrl(), FilePassword(password));
    argomenti.insert(argomenti.end(), come.begin(), come.end());
    return EseguiConAmbiente({}, argomenti).uscita;
  };
  EXPECT_THAT(controlla(LdapServer::kPassword),
              ContainsRegex("\\[ok\\] +directory aziendale: «.*», dora.bianchi@azienda.example\n"));
  const std::string rifiutata = controlla("parola-sbagliata");
  EXPECT_THAT(rifiutata, HasSubstr("[avviso]  directory aziendale: "));
  EXPECT_THAT(rifiutata, Not(HasSubstr("parola-sbagliata")));
}

TEST_F(InvioConDirectory, TheCheckTellsWhyThePersonCannotBeLookedFor) {
  const LdapServer directory;
  // Anonymous clients may read the root, and search for nobody.
  const Esecuzione esecuzione =
      EseguiConAmbiente({}, {"controlla", "--ca", Ca(), "--directory", directory.Url(), "--directory-accesso",
                             "anonimo", "--directory-senza-tls"});
  EXPECT_THAT(esecuzione.uscita,
              ContainsRegex("\\[avviso\\] +directory aziendale: la ricerca di «.*» non riesce: Directory: "));
}

TEST_F(InvioConDirectory, ServerAndPasswordMayComeFromTheEnvironment) {
  auto& server = AvviaServerOrdinario();
  const LdapServer directory(opzioni);
  const Esecuzione esecuzione =
      InviaACliente({"--directory-utente", LdapServer::kReader, "--directory-ca", autorita.CaFile().string()},
                    {"ORVE_MAIL_DIRECTORY=" + directory.SecureUrl(),
                     "ORVE_MAIL_DIRECTORY_PASSWORD=" + std::string(LdapServer::kPassword)});
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.OnlyMessage().sender, "dora.bianchi@azienda.example");
}

TEST_F(InvioConDirectory, WhatTheAccountHoldsGoesBeforeTheDirectory) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_MAILADDRESS = 'conto@arvenia.example'");
  const LdapServer directory(opzioni);
  const Esecuzione esecuzione =
      InviaACliente(ComeLettore(directory.SecureUrl(), FilePassword(LdapServer::kPassword)));
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_THAT(server.OnlyMessage().from,
              ElementsAre(support::Mailbox{"Dora Bianchi", "conto@arvenia.example"}));
}

TEST_F(InvioConDirectory, ADirectoryThatFailsHoldsNoMessageUpAndIsToldOf) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_MAILADDRESS = 'conto@arvenia.example'");
  const LdapServer directory(opzioni);
  const Esecuzione rifiutata =
      InviaACliente(ComeLettore(directory.SecureUrl(), FilePassword("password-sbagliata")));
  EXPECT_EQ(rifiutata.stato, 0) << rifiutata;
  EXPECT_THAT(rifiutata.errori, AllOf(HasSubstr("  Directory: la directory rifiuta nome utente o password"),
                                      Not(HasSubstr("password-sbagliata"))));

  support::ScriptedServer muto({ThenStall(support::Say(""))});
  std::vector<std::string> lenta = {"--directory", "ldap://127.0.0.1:" + std::to_string(muto.Port()),
                                    "--directory-accesso", "anonimo", "--directory-senza-tls"};
  std::size_t prima = 0;
  const auto invio = [&](std::chrono::seconds attesa) {
    prima = server.Count();
    std::vector<std::string> opzioniLente = lenta;
    opzioniLente.insert(opzioniLente.end(), {"--attesa-risposta", std::to_string(attesa.count())});
    return InviaACliente(opzioniLente);
  };
  // The time limit applies to the mail server too, which must not be too slow for it.
  const auto inviato = [](const Esecuzione& una) { return una.stato == 0; };
  const Esecuzione silenziosa = support::WithPatience(invio, inviato, {2s, 15s, 40s});
  EXPECT_EQ(silenziosa.stato, 0) << silenziosa;
  EXPECT_THAT(silenziosa.errori, HasSubstr("non ha risposto in tempo"));
  EXPECT_EQ(server.Count(), prima + 1);
}

TEST_F(InvioConDirectory, AListTellsOnceThatTheDirectoryFailsAndLeavesItAlone) {
  auto& server = AvviaServerOrdinario();
  Sql("UPDATE FW98_MAILACCOUNT SET FW98_MAILADDRESS = 'conto@arvenia.example'");
  const LdapServer directory(opzioni);
  const std::string elenco =
      cartella.Write("elenco.csv", "tipo;codice\ncliente;1001\ncliente;1002\ncliente;1006\n");
  std::vector<std::string> argomenti = {"lista",     elenco,    "--ca",    Ca(),
                                        "--oggetto", "Listino", "--corpo", "x"};
  const auto come = ComeLettore(directory.SecureUrl(), FilePassword("password-sbagliata"));
  argomenti.insert(argomenti.end(), come.begin(), come.end());
  const Esecuzione esecuzione = EseguiConAmbiente({}, argomenti);
  EXPECT_EQ(esecuzione.stato, 0) << esecuzione;
  EXPECT_EQ(server.Count(), 3U);
  const std::string detto = "la directory rifiuta nome utente o password";
  const std::size_t primo = esecuzione.errori.find(detto);
  ASSERT_NE(primo, std::string::npos) << esecuzione;
  EXPECT_EQ(esecuzione.errori.find(detto, primo + 1), std::string::npos) << esecuzione;
}

TEST_F(InvioConDirectory, AListTakesEachSenderFromTheDirectoryOverOneConnection) {
  auto& server = AvviaServerOrdinario();
  opzioni.countsBinds = true;
  LdapServer directory(opzioni);
  const std::string elenco = cartella.Write("elenco.csv", "tipo;codice\ncliente;1001\ncliente;1002\n");
  std::vector<std::string> argomenti = {"lista",     elenco,    "--ca",    Ca(),
                                        "--oggetto", "Listino", "--corpo", "x"};
  const auto come = ComeLettore(directory.SecureUrl(), FilePassword(LdapServer::kPassword));
  argomenti.insert(argomenti.end(), come.begin(), come.end());
  EXPECT_EQ(EseguiConAmbiente({}, argomenti).stato, 0);
  ASSERT_EQ(server.Count(), 2U);
  for (const auto& messaggio : server.Messages()) EXPECT_EQ(messaggio.sender, "dora.bianchi@azienda.example");
  EXPECT_EQ(directory.EndAndCountBinds(), 1);
}

TEST_F(InvioConDirectory, APasswordFileThatOthersCanReadIsRefused) {
  const Esecuzione esecuzione =
      InviaACliente(ComeLettore("ldaps://127.0.0.1", FilePassword(LdapServer::kPassword, S_IRUSR | S_IRGRP)));
  EXPECT_EQ(esecuzione.stato, 5) << esecuzione;
  EXPECT_THAT(esecuzione.errori, HasSubstr("chmod 600"));
}

TEST_F(InvioConDirectory, OptionsThatMakeNoSenseAreRefusedBeforeAnythingIsTried) {
  const std::string file = FilePassword(LdapServer::kPassword);
  const std::vector<std::vector<std::string>> errate = {
      {"--directory-base", "dc=x"},
      {"--directory", "http://x"},
      {"--directory", "ldap://x", "--directory-accesso", "magico"},
      {"--directory", "ldap://x", "--directory-accesso", "semplice"},
      {"--directory", "ldap://x", "--directory-utente", "anna"},
      {"--directory", "ldap://x", "--directory-utente", "anna", "--directory-file-password", "/dev/null"},
      {"--directory", "ldap://x", "--directory-utente", "anna", "--directory-accesso", "anonimo"},
      {"--directory", "ldap://x", "--directory-utente", "anna", "--directory-file-password", file,
       "--directory-senza-tls"}};
  for (const auto& directory : errate) {
    const Esecuzione esecuzione = InviaACliente(directory);
    const bool filePassword = std::find(directory.begin(), directory.end(), "/dev/null") != directory.end();
    EXPECT_EQ(esecuzione.stato, filePassword ? 5 : 2) << esecuzione;
    EXPECT_THAT(esecuzione.errori, Not(IsEmpty()));
    EXPECT_THAT(esecuzione.errori, Not(HasSubstr(LdapServer::kPassword)));
  }
}

}  // namespace orve::app
