#include "ambiente/percorsi.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "orve-mailserver/posix/percorsi.h"
#include "posix/errori.h"
#include "posix/system.h"
#include "text/text.h"

namespace orve::adapters::ambiente {

namespace {

constexpr mode_t kScritturaAltrui = S_IWGRP | S_IWOTH;

// Where nothing can ever be, so that nobody can put it there.
constexpr const char* kInNessunLuogo = "/dev/null/nessuna";

bool SoloNostra(const std::string& cartella, mode_t vietati) {
  struct stat stato {};
  return ::lstat(cartella.c_str(), &stato) == 0 && S_ISDIR(stato.st_mode) && stato.st_uid == ::geteuid() &&
         (stato.st_mode & vietati) == 0;
}

// Created if missing.
bool RendiPrivata(const std::string& cartella) {
  return (::mkdir(cartella.c_str(), S_IRWXU) == 0 || errno == EEXIST) &&
         SoloNostra(cartella, kScritturaAltrui);
}

std::string SenzaBarraFinale(std::string percorso) {
  while (percorso.size() > 1 && percorso.back() == '/') percorso.pop_back();
  return percorso;
}

}  // namespace

RisolutorePercorsiUnix::RisolutorePercorsiUnix(std::string programma, std::string cartellaBase,
                                               std::function<void()> senzaTemporanea)
    : programma_(std::move(programma)),
      cartellaBase_(std::move(cartellaBase)),
      senzaTemporanea_(std::move(senzaTemporanea)) {}

void RisolutorePercorsiUnix::ChiudiPercorsi() {
  percorso_.clear();
}

void RisolutorePercorsiUnix::ImpostaTipoPercorso(std::int32_t tipo, const std::string& /*testo*/) {
  if (tipo != host::kPercorsoTemporaneo && tipo != host::kPercorsoInstallazione) {
    throw host::Errore(host::kArgomentoNonValido);
  }
  percorso_ = posix::PercorsoLibreria(tipo == host::kPercorsoTemporaneo ? CartellaTemporanea()
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

// A log without a place must not end a send.
std::string RisolutorePercorsiUnix::CartellaTemporanea() const {
  if (auto cartella = CartellaTemporaneaDiSistema(programma_)) return *cartella;
  if (senzaTemporanea_) senzaTemporanea_();
  return kInNessunLuogo;
}

std::optional<std::string> CartellaTemporaneaDiSistema(const std::string& programma) {
  const auto variabile = [](const char* nome) {
    std::string valore = posix::Environment().Leggi(nome);
    return valore.starts_with('/') ? SenzaBarraFinale(std::move(valore)) : std::string();
  };
  const std::string scelta = variabile("TMPDIR");
  const std::string diSessione = variabile("XDG_RUNTIME_DIR");
  const std::string casa = variabile("HOME");
  // The system's temporary folder is open to everybody: a log of recipients does not belong there, and
  // somebody else may have taken the name first.
  const std::string nome = "/" + programma;
  const std::string nostra = nome + "-" + std::to_string(::geteuid());
  if (!scelta.empty() && RendiPrivata(scelta + nostra)) return scelta + nostra;
  if (SoloNostra(diSessione, S_IRWXG | S_IRWXO) && RendiPrivata(diSessione + nome)) return diSessione + nome;
  if (scelta.empty() && RendiPrivata("/tmp" + nostra)) return "/tmp" + nostra;
  std::string stato = variabile("XDG_STATE_HOME");
  if (stato.empty() && !casa.empty()) stato = casa + "/.local/state";
  std::error_code mancata;
  if (!stato.empty()) std::filesystem::create_directories(stato, mancata);
  if (SoloNostra(stato, kScritturaAltrui) && RendiPrivata(stato + nome)) return stato + nome;
  return std::nullopt;
}

std::string CartellaDelProgramma() {
  std::error_code codice;
  const auto programma = std::filesystem::read_symlink("/proc/self/exe", codice);
  if (codice) throw posix::ErroreDiSistema(codice.value(), "/proc/self/exe");
  return programma.parent_path().native();
}

}  // namespace orve::adapters::ambiente
