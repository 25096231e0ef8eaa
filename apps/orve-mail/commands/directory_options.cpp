#include "orve-mail/commands/directory_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>

#include "ldap/session.h"
#include "orve-mail/host/messaggio.h"
#include "orve-mail/secrets/memoria.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/host/errore.h"
#include "posix/file_riservato.h"

namespace orve::app {

namespace {

using adapters::ldap::Access;
using adapters::ldap::LdapOptions;

constexpr const char* kVariabilePassword = "ORVE_MAIL_DIRECTORY_PASSWORD";
constexpr std::size_t kPasswordPiuLunga = 4096;

[[noreturn]] void OpzioneErrata(const std::string& testo) {
  throw ErroreProgramma(Uscita::kComandoErrato, testo);
}

Access Accesso(const DirectoryOptions& opzioni) {
  if (opzioni.accesso == "kerberos") return Access::kKerberos;
  if (opzioni.accesso == "semplice") return Access::kSimple;
  if (opzioni.accesso == "anonimo") return Access::kAnonymous;
  if (!opzioni.accesso.empty()) {
    OpzioneErrata("--directory-accesso: «" + opzioni.accesso + "» non è kerberos, semplice o anonimo");
  }
  return opzioni.utente.empty() ? Access::kKerberos : Access::kSimple;
}

std::string PasswordDellAmbiente() {
  const char* const valore = std::getenv(kVariabilePassword);
  std::string password = valore != nullptr ? valore : "";
  DimenticaVariabile(kVariabilePassword);
  return password;
}

// The first line.
std::string PasswordDelFile(const std::string& file) {
  std::string testo = Oppure(Uscita::kNonUtilizzabile, [&] {
    return adapters::posix::LeggiFileRiservato("File della password della directory", file,
                                               kPasswordPiuLunga);
  });
  testo.resize(std::min(testo.find_first_of("\r\n"), testo.size()));
  return testo;
}

void RichiediSenso(const LdapOptions& scelte) {
  if (scelte.access == Access::kSimple && scelte.user.empty()) OpzioneErrata("manca --directory-utente");
  if (scelte.access != Access::kSimple && !scelte.user.empty()) {
    OpzioneErrata("--directory-utente vale solo con --directory-accesso semplice");
  }
  if (scelte.access == Access::kSimple && scelte.password.Empty()) {
    OpzioneErrata(
        "manca la password della directory: indicare --directory-file-password, oppure la variabile " +
        std::string(kVariabilePassword));
  }
  try {
    adapters::ldap::CheckOptions(scelte);
  } catch (const host::Errore& errore) {
    OpzioneErrata("--directory: " + errore.Descrizione());
  }
}

void RichiediSoloConServer(const DirectoryOptions& opzioni) {
  const bool altre = !opzioni.accesso.empty() || !opzioni.utente.empty() || !opzioni.filePassword.empty() ||
                     !opzioni.ca.empty() || !opzioni.base.empty() || opzioni.senzaTls;
  if (altre) OpzioneErrata("manca --directory, che le altre opzioni della directory presuppongono");
}

}  // namespace

void AggiungiDirectory(CLI::App& comando, DirectoryOptions& opzioni) {
  const auto aggiungi = [&comando](const char* opzione, auto& valore, const char* aiuto, const char* tipo) {
    return comando.add_option(opzione, valore, aiuto)->type_name(tipo)->group("Directory aziendale");
  };
  aggiungi("--directory", opzioni.server,
           "Directory da cui prendere indirizzo e nome del mittente quando l'account non li ha: "
           "ldaps://SERVER, oppure ldap://SERVER con StartTLS",
           "URL")
      ->envname("ORVE_MAIL_DIRECTORY");
  aggiungi("--directory-accesso", opzioni.accesso,
           "kerberos, semplice o anonimo (se manca: semplice con --directory-utente, altrimenti kerberos)",
           "MODO");
  aggiungi("--directory-utente", opzioni.utente, "Nome con cui accedere: DN oppure utente@dominio", "NOME");
  aggiungi("--directory-file-password", opzioni.filePassword,
           "File con la password, leggibile solo dal proprietario (se manca: la variabile "
           "ORVE_MAIL_DIRECTORY_PASSWORD)",
           "FILE");
  aggiungi("--directory-base", opzioni.base, "Dove cercare (se manca: dove dice la directory)", "DN");
  aggiungi("--directory-ca", opzioni.ca,
           "Certificati delle autorità di cui fidarsi al posto di quelle del sistema", "FILE");
  comando
      .add_flag("--directory-senza-tls", opzioni.senzaTls,
                "Con ldap:// non chiede StartTLS; vale per kerberos, che cifra da sé, e anonimo")
      ->group("Directory aziendale");
}

std::optional<LdapOptions> LeggiDirectory(const CLI::App& comando, const DirectoryOptions& opzioni) {
  if (comando.get_option_no_throw("--directory") == nullptr) return std::nullopt;
  const std::string dellAmbiente = PasswordDellAmbiente();
  if (opzioni.server.empty()) {
    RichiediSoloConServer(opzioni);
    return std::nullopt;
  }
  LdapOptions scelte;
  scelte.server = opzioni.server;
  scelte.startTls = !opzioni.senzaTls;
  scelte.access = Accesso(opzioni);
  scelte.user = opzioni.utente;
  scelte.searchBase = opzioni.base;
  if (!opzioni.ca.empty()) {
    RichiediFileLeggibile(opzioni.ca);
    scelte.caFile = opzioni.ca;
  }
  if (scelte.access == Access::kSimple) {
    scelte.password = opzioni.filePassword.empty() ? dellAmbiente : PasswordDelFile(opzioni.filePassword);
  }
  RichiediUtf8(scelte.user, "--directory-utente");
  RichiediUtf8(scelte.searchBase, "--directory-base");
  RichiediSenso(scelte);
  return scelte;
}

}  // namespace orve::app
