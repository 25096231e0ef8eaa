#include "orve-mail/host/allegati.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "mime/attachment.h"
#include "mime/header_text.h"
#include "orve-mail/secrets/file_proprio.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/posix/percorsi.h"
#include "text/text.h"

namespace orve::app {

namespace fs = std::filesystem;
namespace mime = adapters::mime;
namespace posix = adapters::posix;

namespace {

constexpr const char* kSorgente = "orve-mail";

[[noreturn]] void NonAllegabile(int numero, const std::string& motivo) {
  throw host::Errore(numero, kSorgente, motivo);
}

[[noreturn]] void NonApribile(int errore) {
  const bool manca = errore == ENOENT || errore == ENOTDIR || errore == ENAMETOOLONG;
  const bool negato = errore == EACCES || errore == EPERM;
  NonAllegabile(manca    ? mime::kFileNonTrovato
                : negato ? mime::kAutorizzazioneNegata
                         : mime::kErroreAccessoFile,
                std::generic_category().message(errore));
}

[[noreturn]] void Vieta(const std::string& motivo) {
  throw AllegatoVietato(mime::kAutorizzazioneNegata, kSorgente, motivo);
}

bool SiChiama(const struct stat& stato, const std::string& file) {
  struct stat altro {};
  return ::stat(file.c_str(), &altro) == 0 && StessoFile(stato, altro);
}

bool Sotto(const std::string& file, const std::string& cartella) {
  std::error_code codice;
  const fs::path vera = fs::canonical(cartella.empty() ? "." : cartella, codice);
  if (codice) return false;
  const std::string prefisso = vera == vera.root_path() ? vera.native() : vera.native() + "/";
  return file.starts_with(prefisso);
}

// The kernel's own files, mounted anywhere.
bool DelNucleo(int numero, const std::string& vero) {
  struct statfs stato {};
  if (::fstatfs(numero, &stato) == 0) {
    const auto tipo = static_cast<unsigned long>(stato.f_type) & 0xFFFFFFFFUL;
    if (tipo == PROC_SUPER_MAGIC || tipo == SYSFS_MAGIC) return true;
  }
  constexpr std::array<std::string_view, 3> kAlberi = {"/proc/", "/sys/", "/dev/"};
  return std::any_of(kAlberi.begin(), kAlberi.end(),
                     [&](std::string_view albero) { return vero.starts_with(albero); });
}

void Giudica(int numero, const std::string& percorso, const std::vector<std::string>& esclusi,
             const std::vector<std::string>& cartelle) {
  struct stat stato {};
  if (::fstat(numero, &stato) != 0) NonApribile(errno);
  if (!S_ISREG(stato.st_mode)) NonAllegabile(mime::kErroreAccessoFile, NonFile(stato.st_mode));
  const auto stesso = [&stato](const std::string& file) { return SiChiama(stato, file); };
  if (std::any_of(esclusi.begin(), esclusi.end(), stesso)) {
    Vieta("è un file che il programma stesso usa e non si può allegare");
  }
  std::error_code codice;
  const std::string vero = fs::read_symlink(percorso, codice).native();
  if (codice) NonApribile(codice.value());
  if (DelNucleo(numero, vero)) Vieta("è un file del sistema e non si può allegare");
  const bool dentro =
      cartelle.empty() || std::any_of(cartelle.begin(), cartelle.end(),
                                      [&vero](const std::string& una) { return Sotto(vero, una); });
  if (!dentro) Vieta("sta fuori dalle cartelle da cui si può allegare");
}

// Actually opening the file is the only reliable test: a network file system may apply rules of its own.
void RichiediLettura(const std::string& percorso) {
  const posix::Descriptor prova(::open(percorso.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!prova) NonApribile(errno);
}

std::string NomeIn(std::string_view percorso) {
  return std::string(percorso.substr(percorso.find_last_of("\\/") + 1));
}

constexpr char kFineLetterale = '\'';

std::string NomeDiCopia(std::string nome) {
  std::replace(nome.begin(), nome.end(), kFineLetterale, '_');
  return nome;
}

// The copies' path goes into statements too.
std::string GenitoreDelleCopie() {
  std::error_code codice;
  const std::string temporanea = fs::temp_directory_path(codice).native();
  return codice || !Allegati::NomeInnocuo(temporanea) ? "/tmp" : temporanea;
}

void CopiaFile(const FileAmmesso& file, const std::string& copia) {
  const auto apri = [](const std::string& percorso) {
    auto oggetto = std::make_shared<posix::OggettoFile>(nullptr);
    const auto ultima = percorso.find_last_of("\\/");
    oggetto->Apri(percorso.substr(ultima + 1), percorso.substr(0, ultima), 0);
    return oggetto;
  };
  apri(file.Percorso())->CopiaIn(apri(copia), 0);
}

[[noreturn]] void Impossibile(const std::string& nome, const host::Errore& errore) {
  throw host::Errore(
      errore.Numero(), errore.Sorgente(),
      "Impossibile allegare il file \"" + mime::ForDisplay(nome) + "\": " + errore.Descrizione());
}

}  // namespace

// As a path only, not for reading: that does not wait on a pipe, and closing a database file that was open
// for reading would release the locks that the database holds on it.
FileAmmesso::FileAmmesso(const std::string& nativo, const std::vector<std::string>& esclusi,
                         const std::vector<std::string>& cartelle)
    : descrittore_(::open(nativo.c_str(), O_PATH | O_CLOEXEC)) {
  if (!descrittore_) NonApribile(errno);
  Giudica(descrittore_.Number(), Percorso(), esclusi, cartelle);
  RichiediLettura(Percorso());
}

std::string FileAmmesso::Percorso() const {
  return "/proc/self/fd/" + std::to_string(descrittore_.Number());
}

Allegato PreparaAllegato(const std::string& file, bool controlla, const std::vector<std::string>& esclusi,
                         std::vector<std::string> cartelle) {
  const auto rifiuta = [&file](const std::string& motivo) {
    throw ErroreProgramma(Uscita::kFileMancante, file + ": " + motivo);
  };
  if (file.find(';') != std::string::npos) rifiuta("il nome di un allegato non può contenere «;»");
  try {
    const FileAmmesso ammesso(file, esclusi, cartelle);
  } catch (const AllegatoVietato& vietato) {
    rifiuta(vietato.Descrizione());
  } catch (const host::Errore& errore) {
    if (controlla) rifiuta(errore.Descrizione());
  }
  try {
    return {posix::PercorsoLibreriaAssoluto(file), std::move(cartelle)};
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kFileMancante, errore.Descrizione());
  }
}

Allegati::Allegati(std::vector<std::string> esclusi)
    : esclusi_(std::move(esclusi)), copie_(GenitoreDelleCopie()) {}

Allegati::~Allegati() {
  copie_.Rimuovi();
}

bool Allegati::NomeInnocuo(std::string_view percorso) {
  return percorso.find(kFineLetterale) == std::string_view::npos;
}

std::string Allegati::PerLaLibreria(const Allegato& allegato) {
  const std::string& percorso = allegato.percorso;
  const std::string nome = NomeIn(percorso);
  if (NomeInnocuo(percorso)) {
    if (!allegato.cartelle.empty()) noti_[percorso] = {nome, {}, allegato.cartelle};
    return percorso;
  }
  try {
    std::string copia = PostoPer(nome);
    noti_[copia].vero = percorso;
    std::optional<FileAmmesso> file;
    try {
      file.emplace(posix::PercorsoUnix(percorso), esclusi_, allegato.cartelle);
    } catch (const AllegatoVietato&) {
      throw;
    } catch (const host::Errore&) {
      return copia;  // the library finds the file missing where it handles the others
    }
    CopiaFile(*file, copia);
    return copia;
  } catch (const host::Errore& errore) {
    throw ErroreProgramma(Uscita::kFileMancante, posix::PercorsoUnix(percorso) + ": " + errore.Descrizione());
  }
}

std::string Allegati::PostoPer(const std::string& nome) {
  std::string posto = copie_.PostoPer(NomeDiCopia(nome));
  noti_[posto].nome = nome;
  return posto;
}

void Allegati::Copia(const std::string& percorso, const std::string& posto) try {
  CopiaFile(FileAmmesso(posix::PercorsoUnix(percorso), esclusi_), posto);
  noti_[posto].vero = percorso;
} catch (const host::Errore& errore) {
  Impossibile(NomeIn(percorso), errore);
}

mime::Attachment Allegati::Apri(std::string_view percorso) const {
  const auto noto = noti_.find(percorso);
  const Noto come = noto != noti_.end() ? noto->second : Noto{NomeIn(percorso), {}, {}};
  try {
    auto file = std::make_shared<const FileAmmesso>(posix::PercorsoUnix(percorso), esclusi_, come.cartelle);
    mime::Attachment allegato(file->Percorso(), come.nome);
    allegato.held = std::move(file);
    return allegato;
  } catch (const host::Errore& errore) {
    Impossibile(come.nome, errore);
  }
}

std::string Allegati::NomeVero(const std::string& percorso) const {
  const auto noto = noti_.find(percorso);
  return noto != noti_.end() ? noto->second.nome : NomeIn(percorso);
}

std::string Allegati::ConPercorsiVeri(std::string testo) const {
  for (const auto& [percorso, noto] : noti_) {
    if (!noto.vero.empty()) testo = text::Replace(testo, percorso, noto.vero);
  }
  return testo;
}

}  // namespace orve::app
