#include "orve-mail/percorsi_host.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "posix/errori.h"
#include "posix/percorsi.h"
#include "posix/sistema.h"
#include "text/text.h"

namespace orve::app {

namespace posix = adapters::posix;

namespace {

std::string SenzaBarraFinale(std::string percorso) {
  while (percorso.size() > 1 && percorso.back() == '/') percorso.pop_back();
  return percorso;
}

}  // namespace

RisolutorePercorsiUnix::RisolutorePercorsiUnix(std::string cartellaBase)
    : cartellaBase_(std::move(cartellaBase)) {}

void RisolutorePercorsiUnix::ChiudiPercorsi() {
  percorso_.clear();
}

void RisolutorePercorsiUnix::ImpostaTipoPercorso(std::int32_t tipo, const std::string& /*testo*/) {
  if (tipo != host::kPercorsoTemporaneo && tipo != host::kPercorsoInstallazione) {
    throw host::Errore(host::kArgomentoNonValido);
  }
  percorso_ = posix::PercorsoLibreria(tipo == host::kPercorsoTemporaneo ? CartellaTemporaneaDiSistema()
                                                                        : CartellaDelProgramma());
}

std::string RisolutorePercorsiUnix::Percorso() const {
  return percorso_;
}

void RisolutorePercorsiUnix::ImpostaPercorso(const std::string& percorso, bool /*indicatore*/) {
  const std::string_view configurato = text::Trim(percorso);
  if (configurato.empty()) {
    ImpostaTipoPercorso(host::kPercorsoTemporaneo, "");
    return;
  }
  std::string nativo = posix::PercorsoUnix(configurato);
  if (nativo == "~" || nativo.rfind("~/", 0) == 0) {
    nativo = posix::Environment().Leggi("HOME") + nativo.substr(1);
  }
  const auto assoluto = std::filesystem::path(cartellaBase_) / nativo;
  percorso_ = posix::PercorsoLibreria(SenzaBarraFinale(assoluto.lexically_normal().native()));
}

std::string CartellaTemporaneaDiSistema() {
  std::string radice = posix::Environment().Leggi("TMPDIR");
  if (radice.empty() || radice.front() != '/') radice = "/tmp";
  // The system's own is open to everybody: a log of recipients does not belong there, nor a name that
  // somebody else could have taken first.
  std::string cartella = SenzaBarraFinale(radice) + "/orve-mail-" + std::to_string(::geteuid());
  if (::mkdir(cartella.c_str(), S_IRWXU) != 0 && errno != EEXIST)
    throw posix::ErroreDiSistema(errno, cartella);
  struct stat stato {};
  if (::lstat(cartella.c_str(), &stato) != 0) throw posix::ErroreDiSistema(errno, cartella);
  const bool nostra =
      S_ISDIR(stato.st_mode) && stato.st_uid == ::geteuid() && (stato.st_mode & (S_IWGRP | S_IWOTH)) == 0;
  if (!nostra) throw posix::ErroreFile(posix::kPermessoNegato, cartella);
  return cartella;
}

std::string CartellaDelProgramma() {
  std::error_code codice;
  const auto programma = std::filesystem::read_symlink("/proc/self/exe", codice);
  if (codice) throw posix::ErroreDiSistema(codice.value(), "/proc/self/exe");
  return programma.parent_path().native();
}

}  // namespace orve::app
