// Telling the application's management-event system about each message sent and each refusal to send.
//
// Nothing here may ever cost a send anything: every statement runs with its error ignored, and an event that
// cannot be registered is lost without a word.
#include "content/management_events.h"

#include <string>
#include <string_view>

#include "service/CLSFW_MAILSERVER.h"
#include "service/ignora_errori.h"
#include "service/nvl.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr const char* kParametroUtente = "IDUtenteApp";
constexpr std::int32_t kIntero32Bit = 3;
constexpr std::int32_t kUscita = 2;

// The elements of the payload, one behind the other. There is no escaping for the closing mark.
class Parametri {
 public:
  template <class Valore>
  void Sempre(std::string_view apertura, Valore&& valore) {
    std::string testo;
    IgnoraErrori([&] { testo = valore(); });
    Accoda(apertura, testo);
  }
  /// Left out when the value is missing.
  void SePresente(std::string_view apertura, const host::Variant& valore) {
    IgnoraErrori([&] {
      const std::string testo = NVL(valore, "").ToText();
      if (!testo.empty()) Accoda(apertura, testo);
    });
  }
  /// The same, for a value that stands inside a quoted statement.
  void SePresenteFraApici(std::string_view apertura, const std::string& valore) {
    SePresente(apertura, text::Replace(valore, "'", "''"));
  }
  [[nodiscard]] const std::string& Testo() const { return testo_; }

 private:
  void Accoda(std::string_view apertura, std::string_view valore) {
    testo_.append(apertura).append(valore).append("/>");
  }
  std::string testo_;
};

}  // namespace

void CLSFW_MAILSERVER::AttivaEventoGestionale(std::int32_t codice, const std::string& destinatario,
                                              const std::string& azienda, const std::string& indirizzo,
                                              const std::string& allegato, const std::string& esito,
                                              const std::string& oggetto) {
  std::int32_t idUtente = 0;
  IgnoraErrori([&] { idUtente = GetUserIDFromConnection().ToInt32(); });
  if (idUtente <= 0) return;
  IgnoraErrori([&] {
    std::string statement = "exec SPFW_AttivaEventoGestionale ";
    statement.append(DittaCorrente.Joined()).append(", ").append(std::to_string(codice));
    statement.append(", ").append(std::to_string(idUtente)).append(", '");
    statement.append(
        ComponiParametriEvento(idUtente, codice, destinatario, azienda, indirizzo, allegato, esito, oggetto));
    statement.append("' , 1");
    (void)host::Richiesto(ConnectionADO).Execute(statement, host::kComandoTesto);
  });
}

host::Variant CLSFW_MAILSERVER::GetUserIDFromConnection() const {
  host::Variant id = 0;
  std::shared_ptr<host::Command> comando;
  std::shared_ptr<host::Parameter> parametro;
  IgnoraErrori([&] { comando = host::Richiesto(ConnectionADO).CreateCommand(); });
  IgnoraErrori([&] { host::Richiesto(comando).CommandType(host::kProceduraMemorizzata); });
  IgnoraErrori([&] { host::Richiesto(comando).CommandText("SPFW_GetUserIDFromConnection"); });
  IgnoraErrori([&] {
    parametro = host::Richiesto(comando).CreateParameter(kParametroUtente, kIntero32Bit, kUscita, 0);
  });
  IgnoraErrori([&] { host::Richiesto(comando).ParametersAppend(parametro); });
  IgnoraErrori([&] { host::Richiesto(comando).Execute(); });
  IgnoraErrori([&] {
    const auto risposta = host::Richiesto(comando).ParametersItem(kParametroUtente);
    id = NVL(host::Richiesto(risposta).Value(), 0);
  });
  return id;
}

std::string CLSFW_MAILSERVER::ComponiParametriEvento(std::int32_t idUtente, std::int32_t codice,
                                                     const std::string& destinatario,
                                                     const std::string& azienda, const std::string& indirizzo,
                                                     const std::string& allegato, const std::string& esito,
                                                     const std::string& oggetto) {
  if (codice != kEventoNonInviato && codice != kEventoInvio) return {};
  host::DataOra adesso;
  IgnoraErrori([&] { adesso = ambiente_->OrologioDiSistema().Adesso(); });
  Parametri parametri;
  parametri.Sempre("<DATE_INS=", [&] { return host::TestoGiornoMeseAnno(adesso); });
  parametri.Sempre("<TIME_INS=", [&] { return ambiente_->OrologioDiSistema().TestoOra(adesso); });
  parametri.Sempre("<USR_COD=", [&] { return GetCodiceUtente(idUtente); });
  parametri.Sempre("<GRP_COD=", [&] { return GetCodiceGruppo(idUtente); });
  parametri.SePresenteFraApici("<MAIL_DEST=", destinatario);
  parametri.SePresente("<AZ_COD=", DittaCorrente);
  parametri.SePresenteFraApici("<AZ_DES=", azienda);
  parametri.SePresenteFraApici("<MAIL_IND=", indirizzo);
  // As it stands: a path with a quote breaks the statement, and the event is lost.
  parametri.SePresente("<MAIL_PATH=", allegato);
  parametri.SePresenteFraApici("<DESRES=", esito);
  parametri.SePresenteFraApici("<MAIL_OBJ=", oggetto);
  return parametri.Testo();
}

}  // namespace orve
