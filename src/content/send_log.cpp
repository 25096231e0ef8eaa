#include "content/send_log.h"

#include <string_view>
#include <utility>

#include "service/guards.h"
#include "service/report.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr std::string_view kTestata =
    "Destinatario --- StatoInvio --- MetodoFallito --- NomeFile --- Data --- Ora\r\n";
constexpr std::string_view kSeparatore = "   ";
constexpr std::string_view kNessunMetodo = "------------------------";
constexpr std::int16_t kLarghezzaDestinatario = 40;

// "ML" and the characters 1-2, 4-5 and the last two of the short date: MLddmmyy with the Italian form,
// whatever is at those places in another form.
std::string NomeFileLog(std::string_view data) {
  const std::size_t lunghezza = text::Length(data);
  std::string nome = "ML";
  nome.append(text::Left(data, 2)).append(text::Mid(data, 4, 2));
  return nome.append(text::Mid(data, lunghezza > 2 ? lunghezza - 1 : 1));
}

// The status words carry their own trailing blanks, which separate them from the method.
std::string StatoEMetodo(std::int32_t stato, const std::string& metodo) {
  switch (stato) {
    case 0:
      return "No Error      " + std::string(kNessunMetodo);
    case 1:
      return "IndMancante   " + std::string(kNessunMetodo);
    case 2:
      return "ErroreInvio   " + metodo;
    default:
      return {};
  }
}

std::string ComponiRigaLog(const Messaggio& messaggio, host::Ambiente& ambiente, std::int32_t stato,
                           const std::string& metodo) {
  std::string riga;
  const auto colonna = [&riga](const auto& testo) { IgnoraErrori([&] { riga.append(testo()); }); };
  const auto separatore = [] { return kSeparatore; };
  // Read again here: the day may have changed since the file was named.
  const auto orologio = [&]() -> host::Orologio& { return ambiente.OrologioDiSistema(); };
  host::DataOra adesso;
  IgnoraErrori([&] { adesso = orologio().Adesso(); });

  const std::string& chi = messaggio.vDitta.empty() ? messaggio.vNome : messaggio.vDitta;
  colonna([&] { return FormattaCampoLog(chi.empty() ? "MANCANTE" : chi, kLarghezzaDestinatario); });
  colonna(separatore);
  colonna([&] { return StatoEMetodo(stato, metodo); });
  colonna(separatore);
  colonna([&] { return EstraiNomeFile(messaggio.vMailAttachment); });
  colonna(separatore);
  colonna([&] { return orologio().TestoData(adesso); });
  colonna(separatore);
  colonna([&] { return orologio().TestoOra(adesso); });
  return riga;
}

template <class Passi>
auto ConLog(host::Ambiente& ambiente, Passi&& passi) {
  return RiferisciErrori(ambiente, &Osservatore::LogNonScritto, std::forward<Passi>(passi));
}

// Without a stream, its absence has been reported.
template <class Passi>
void SulFlusso(const Oggetti& oggetti, Passi&& passi) noexcept {
  if (!oggetti.objTextStream) return;
  IgnoraErrori([&] { ConLog(*oggetti.ambiente, [&] { passi(*oggetti.objTextStream); }); });
}

void AccodaAlLog(const Messaggio& messaggio, Oggetti& oggetti, std::int32_t stato,
                 const std::string& metodo) {
  bool fileEsiste = false;
  IgnoraErrori([&] { fileEsiste = host::Richiesto(oggetti.objFileSystem).FileExists(oggetti.PercorsoLog); });
  IgnoraErrori([&] {
    auto& fileSystem = host::Richiesto(oggetti.objFileSystem);
    oggetti.objTextStream = ConLog(*oggetti.ambiente, [&] {
      return fileSystem.OpenTextFile(oggetti.PercorsoLog, host::FileSystem::kAccoda, true,
                                     host::FileSystem::kSingoloByte);
    });
  });
  const std::string riga = ComponiRigaLog(messaggio, *oggetti.ambiente, stato, metodo);
  if (!fileEsiste) {
    SulFlusso(oggetti, [](host::TextStream& flusso) { flusso.WriteLine(std::string(kTestata)); });
  }
  SulFlusso(oggetti, [&](host::TextStream& flusso) {
    flusso.WriteLine(riga);
    Riferisci(*oggetti.ambiente, &Osservatore::RigaDiLogScritta, riga);
  });
  SulFlusso(oggetti, [](host::TextStream& flusso) { flusso.Close(); });
}

}  // namespace

std::string FormattaCampoLog(const host::Variant& valore, std::int16_t larghezza) {
  std::string campo;
  IgnoraErrori([&] {
    if (valore.IsNull() || valore.IsEmpty() || larghezza < 0) return;
    const auto caratteri = static_cast<std::size_t>(larghezza);
    const std::string testo = valore.ToText();
    std::string adattato(text::Left(text::Trim(testo), caratteri));
    adattato.append(caratteri - text::Length(adattato), ' ');
    campo = std::move(adattato);
  });
  return campo;
}

std::string EstraiNomeFile(const host::Variant& percorso) {
  const std::string testo = percorso.ToText();
  const std::size_t barra = testo.rfind('\\');
  return std::string(barra == std::string::npos ? text::Mid(testo, 2)
                                                : std::string_view(testo).substr(barra + 1));
}

// Each statement by itself: a log that cannot be written costs the send nothing.
void ScriviLogInvio(const Messaggio& messaggio, const Impostazioni& impostazioni, Oggetti& oggetti,
                    std::int32_t stato, const std::string& metodo) {
  std::string nome;
  IgnoraErrori([&] {
    oggetti.objFileSystem = ConLog(*oggetti.ambiente, [&] { return oggetti.ambiente->CreaFileSystem(); });
  });
  IgnoraErrori([&] {
    auto& orologio = oggetti.ambiente->OrologioDiSistema();
    nome = NomeFileLog(orologio.TestoData(orologio.Adesso()));
  });
  IgnoraErrori([&] { oggetti.CartellaLog = impostazioni.PathTemp; });
  bool cartellaEsiste = true;
  IgnoraErrori(
      [&] { cartellaEsiste = host::Richiesto(oggetti.objFileSystem).FolderExists(oggetti.CartellaLog); });
  if (cartellaEsiste) {
    IgnoraErrori([&] { oggetti.PercorsoLog = oggetti.CartellaLog + "\\" + nome + ".log"; });
    AccodaAlLog(messaggio, oggetti, stato, metodo);
  } else {
    Riferisci(*oggetti.ambiente, &Osservatore::CartellaDelLogMancante, oggetti.CartellaLog);
  }
  oggetti.objTextStream.reset();
  oggetti.objFileSystem.reset();
}

}  // namespace orve
