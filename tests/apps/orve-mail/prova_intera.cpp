#include "apps/orve-mail/prova_intera.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <ostream>
#include <stdexcept>
#include <utility>

#include "orve-mail/checks/controllo_traccia.h"
#include "places.h"
#include "sqlite/schema.h"
#include "support/process.h"

namespace orve::app {

namespace {

// The authority and the servers' certificate take a moment to make: once for all tests of the process.
struct Certificati {
  support::TempDir cartella;
  support::TestAuthority autorita{cartella.Path()};
  support::Certificate server = autorita.Issue("localhost", "DNS:localhost,IP:127.0.0.1");
};

const Certificati& CertificatiDiProva() {
  static const Certificati certificati;
  return certificati;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Esecuzione& esecuzione) {
  return out << "stato " << esecuzione.stato << "\nuscita: " << esecuzione.uscita
             << "\nerrori: " << esecuzione.errori;
}

ProvaIntera::ProvaIntera() {
  const Esecuzione creato = Esegui({"crea-db", Db()});
  if (creato.stato != 0) throw std::runtime_error("crea-db: " + creato.errori);
}

void ProvaIntera::TearDown() {
  std::ifstream traccia(TracciaIstanze(), std::ios::binary);
  ASSERT_TRUE(traccia.good());
  ControlloTraccia controllo;
  controllo.Leggi(traccia);
  EXPECT_EQ(controllo.Creati(), controllo.Rilasciati());
  EXPECT_EQ(controllo.NumeroAnomalie(), 0U);
  EXPECT_EQ(controllo.Estranee(), 0U);
}

Esecuzione ProvaIntera::EseguiComando(const std::vector<std::string>& comando,
                                      const std::string& ingresso) const {
  const std::string uscita = File("stdout");
  const std::string errori = File("stderr");
  std::vector<std::string> intero = {"/bin/sh",
                                     "-c",
                                     R"(in=$1 out=$2 err=$3; shift 3; exec "$@" <"$in" >"$out" 2>"$err")",
                                     "prova",
                                     cartella.Write("stdin", ingresso),
                                     uscita,
                                     errori};
  intero.insert(intero.end(), comando.begin(), comando.end());
  const support::ProcessResult risultato = support::RunProgram(intero);
  return {risultato.status, support::ReadFile(uscita), support::ReadFile(errori)};
}

// No display, whoever runs the tests.
std::vector<std::string> ProvaIntera::Ambiente() const {
  return {"/usr/bin/env",
          "--unset=DISPLAY",
          "--unset=WAYLAND_DISPLAY",
          "--unset=QT_QPA_PLATFORM",
          "TMPDIR=" + cartella.Path().string(),
          "ORVE_MAIL_DB=" + Db()};
}

Esecuzione ProvaIntera::Esegui(const std::vector<std::string>& argomenti, const std::string& ingresso) const {
  std::vector<std::string> comando = Ambiente();
  comando.insert(comando.end(), {places::Program(), "--traccia", TracciaIstanze()});
  comando.insert(comando.end(), argomenti.begin(), argomenti.end());
  return EseguiComando(comando, ingresso);
}

Esecuzione ProvaIntera::EseguiConAmbiente(const std::vector<std::string>& variabili,
                                          const std::vector<std::string>& argomenti,
                                          const std::string& ingresso) const {
  std::vector<std::string> comando = Ambiente();
  comando.insert(comando.end(), variabili.begin(), variabili.end());
  comando.emplace_back(places::Program());
  comando.insert(comando.end(), argomenti.begin(), argomenti.end());
  return EseguiComando(comando, ingresso);
}

// By its name and folder: a whole path would end at the first blank in it.
std::vector<std::string> ProvaIntera::Precarica(const std::string& modulo) {
  const std::filesystem::path file = places::Build("tests/lib" + modulo + ".so");
  const auto daPrima = [](const char* variabile) {
    const char* const valore = std::getenv(variabile);
    return valore == nullptr ? std::string() : ":" + std::string(valore);
  };
  return {"LD_LIBRARY_PATH=" + file.parent_path().string(),
          "LD_PRELOAD=" + file.filename().string() + daPrima("LD_PRELOAD"),
          "ASAN_OPTIONS=verify_asan_link_order=0" + daPrima("ASAN_OPTIONS")};
}

Esecuzione ProvaIntera::EseguiDaUtenteOrdinario(const std::vector<std::string>& argomenti) const {
  if (::geteuid() != 0) return Esegui(argomenti);
  constexpr uid_t kNessuno = 65534;
  // The program is copied too, since its own folder may be closed to others.
  std::filesystem::copy_file(places::Program(), File("orve-mail"),
                             std::filesystem::copy_options::overwrite_existing);
  for (const auto& voce : std::filesystem::directory_iterator(cartella.Path())) {
    if (::lchown(voce.path().c_str(), kNessuno, kNessuno) != 0) throw std::runtime_error("lchown");
  }
  if (::chown(cartella.Path().c_str(), kNessuno, kNessuno) != 0) throw std::runtime_error("chown");
  std::vector<std::string> comando = {"/usr/bin/setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"};
  const std::vector<std::string> ambiente = Ambiente();
  comando.insert(comando.end(), ambiente.begin(), ambiente.end());
  comando.insert(comando.end(), {File("orve-mail"), "--traccia", TracciaIstanze()});
  comando.insert(comando.end(), argomenti.begin(), argomenti.end());
  return EseguiComando(comando, "");
}

Esecuzione ProvaIntera::Invia(std::vector<std::string> argomenti) const {
  argomenti.insert(argomenti.begin(), {"invia", "--ca", Ca()});
  return Esegui(argomenti);
}

support::SmtpServer& ProvaIntera::AvviaServer(int idServer, support::SmtpServerOptions opzioni) {
  if (opzioni.tls != "implicit") opzioni.tls = "starttls";
  opzioni.requireTls = opzioni.tls == "starttls";
  opzioni.requireAuth = true;
  opzioni.auth = {"PLAIN", "LOGIN"};
  opzioni.certificate = CertificatiDiProva().server.certificate;
  opzioni.key = CertificatiDiProva().server.key;
  server_.push_back(std::make_unique<support::SmtpServer>(opzioni));
  const Esecuzione impostato = Esegui({"imposta-server", std::to_string(idServer), "--host", "localhost",
                                       "--porta", std::to_string(server_.back()->Port())});
  if (impostato.stato != 0) throw std::runtime_error("imposta-server: " + impostato.errori);
  return *server_.back();
}

support::SmtpServer& ProvaIntera::AvviaServerOrdinario(const std::vector<std::string>& rifiutati) {
  support::SmtpServerOptions opzioni;
  opzioni.user = "fatture@arvenia.example";
  opzioni.password = adapters::sqlite::PasswordDiProva(1);
  opzioni.refused = rifiutati;
  return AvviaServer(1, opzioni);
}

void ProvaIntera::ImpostaServerSemplice(int porta) const {
  const Esecuzione impostato = Esegui({"imposta-server", "1", "--host", "127.0.0.1", "--porta",
                                       std::to_string(porta), "--senza-tls", "--senza-autenticazione"});
  if (impostato.stato != 0) throw std::runtime_error("imposta-server: " + impostato.errori);
}

ProvaIntera::Righe ProvaIntera::Sql(const std::string& istruzione) const {
  const auto archivio = adapters::sqlite::SqliteConnection::Apri(Db());
  const auto risultato = archivio->EseguiConValori(istruzione, {});
  Righe righe;
  for (; !risultato->Eof(); risultato->MoveNext()) {
    std::vector<std::string> riga;
    for (int colonna = 1;; ++colonna) {
      try {
        riga.push_back(host::Leggi(*risultato, "C" + std::to_string(colonna)).Joined());
      } catch (const host::Errore&) {
        break;
      }
    }
    righe.push_back(std::move(riga));
  }
  return righe;
}

ProvaIntera::Righe ProvaIntera::Registro() const {
  return Sql(
      "SELECT ESITOINVIO AS C1, NOME AS C2, INDIRIZZO AS C3, RISULTATO AS C4 FROM REGISTRO_INVII ORDER BY "
      "ID");
}

std::vector<std::string> ProvaIntera::CodiciEventi() const {
  std::vector<std::string> codici;
  for (const auto& riga : Sql("SELECT CODICE AS C1 FROM EVENTI_GESTIONALI ORDER BY ID"))
    codici.push_back(riga.at(0));
  return codici;
}

std::string ProvaIntera::Ca() {
  return CertificatiDiProva().autorita.CaFile().string();
}

std::string ProvaIntera::Rovesciato(std::string percorso) {
  for (char& c : percorso) c = c == '/' ? '\\' : c;
  return percorso;
}

}  // namespace orve::app
