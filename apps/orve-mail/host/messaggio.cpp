#include "orve-mail/host/messaggio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>

#include "mime/header_text.h"
#include "orve-mail/host/allegati.h"
#include "orve-mail/secrets/file_proprio.h"
#include "orve-mail/terminal/uscita.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/variant.h"
#include "text/text.h"

namespace orve::app {

namespace {

constexpr std::size_t kCorpoMassimo = 16UL * 1024 * 1024;

[[noreturn]] void DestinatarioErrato(std::string_view testo, const std::string& motivo) {
  throw ErroreProgramma(Uscita::kComandoErrato, "Destinatario «" + std::string(testo) + "»: " + motivo);
}

[[noreturn]] void FileNonLeggibile(const std::string& file, const std::string& motivo) {
  throw ErroreProgramma(Uscita::kFileMancante, file + ": " + motivo);
}

std::string_view SenzaVirgolette(std::string_view nome) {
  const bool virgolette = nome.size() >= 2 && nome.front() == '"' && nome.back() == '"';
  return virgolette ? nome.substr(1, nome.size() - 2) : nome;
}

bool Utf8(const std::string& testo) {
  return adapters::mime::ValidUtf8(testo) == testo;
}

std::string Leggi(std::istream& flusso, const std::string& nome) {
  std::string contenuto;
  std::string blocco(64UL * 1024, '\0');
  while (flusso.read(blocco.data(), static_cast<std::streamsize>(blocco.size())) || flusso.gcount() > 0) {
    contenuto.append(blocco, 0, static_cast<std::size_t>(flusso.gcount()));
    if (contenuto.size() > kCorpoMassimo) FileNonLeggibile(nome, "il testo supera 16 MiB");
  }
  if (flusso.bad()) FileNonLeggibile(nome, "errore di lettura");
  return contenuto;
}

// The body is subject to the same rules as an attachment.
std::string LeggiDocumento(const std::string& file, const std::vector<std::string>& esclusi) {
  std::ifstream flusso;
  try {
    flusso.open(FileAmmesso(file, esclusi).Percorso(), std::ios::binary);
  } catch (const host::Errore& errore) {
    FileNonLeggibile(file, errore.Descrizione());
  }
  return Leggi(flusso, file);
}

}  // namespace

VoceDestinatario LeggiDestinatario(std::string_view testo) {
  const std::string_view pulito = text::Trim(testo);
  const std::size_t apre = pulito.find('<');
  VoceDestinatario voce;
  if (apre == std::string_view::npos) {
    voce.indirizzo = pulito;
  } else {
    if (pulito.back() != '>') DestinatarioErrato(testo, "manca «>» in fondo");
    voce.nome = SenzaVirgolette(text::Trim(pulito.substr(0, apre)));
    voce.indirizzo = text::Trim(pulito.substr(apre + 1, pulito.size() - apre - 2));
  }
  if (voce.indirizzo.empty()) DestinatarioErrato(testo, "manca l'indirizzo");
  constexpr const char* kRiservati = ";<>";
  if (voce.nome.find_first_of(kRiservati) != std::string::npos ||
      voce.indirizzo.find_first_of(kRiservati) != std::string::npos) {
    DestinatarioErrato(testo, "nome e indirizzo non possono contenere «;», «<» o «>»");
  }
  return voce;
}

// Opens without waiting and checks: a folder, a pipe or a device cannot be an attachment or a body.
void RichiediFileLeggibile(const std::string& file) {
  const int descrittore = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descrittore < 0) FileNonLeggibile(file, std::generic_category().message(errno));
  struct stat stato {};
  const bool semplice = ::fstat(descrittore, &stato) == 0 && S_ISREG(stato.st_mode);
  ::close(descrittore);
  if (!semplice) FileNonLeggibile(file, NonFile(stato.st_mode));
}

std::string LeggiCorpo(const std::string& testo, std::istream& ingresso,
                       const std::vector<std::string>& esclusi) {
  if (testo.empty() || testo.front() != '@') return ConFineRigaDoppia(testo);
  if (testo.rfind("@@", 0) == 0) return ConFineRigaDoppia(std::string_view(testo).substr(1));
  const std::string file = testo.substr(1);
  std::string contenuto;
  if (file == "-") {
    contenuto = Leggi(ingresso, "standard input");
  } else {
    contenuto = LeggiDocumento(file, esclusi);
  }
  constexpr std::string_view kSegnoDiOrdine = "\xEF\xBB\xBF";  // a byte-order mark that some editors write
  if (contenuto.rfind(kSegnoDiOrdine, 0) == 0) contenuto.erase(0, kSegnoDiOrdine.size());
  if (!Utf8(contenuto)) FileNonLeggibile(file, "non è un testo UTF-8");
  return ConFineRigaDoppia(contenuto);
}

std::string ConFineRigaDoppia(std::string_view testo) {
  std::string righe;
  righe.reserve(testo.size() + testo.size() / 16);
  for (std::size_t i = 0; i < testo.size(); ++i) {
    if (testo[i] == '\n' && (i == 0 || testo[i - 1] != '\r')) righe.push_back('\r');
    righe.push_back(testo[i]);
  }
  return righe;
}

host::DataOra LeggiData(const std::string& testo) {
  std::string italiana = testo;
  if (testo.size() == 10 && testo[4] == '-' && testo[7] == '-') {
    italiana = testo.substr(8, 2) + "/" + testo.substr(5, 2) + "/" + testo.substr(0, 4);
  }
  try {
    const host::DataOra data = host::Variant(italiana).ToDate();
    if (data.HaData()) return data.SoloData();
  } catch (const host::Errore&) {  // NOLINT(bugprone-empty-catch): told below
  }
  throw ErroreProgramma(Uscita::kComandoErrato,
                        "--data: «" + testo + "» non è una data (gg/mm/aaaa oppure aaaa-mm-gg)");
}

void RichiediUtf8(const std::string& testo, const std::string& opzione) {
  if (!Utf8(testo)) {
    throw ErroreProgramma(Uscita::kComandoErrato, opzione + ": il testo non è UTF-8 valido");
  }
}

}  // namespace orve::app
