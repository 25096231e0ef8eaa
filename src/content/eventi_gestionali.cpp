// Nothing here may ever cost a send anything: every statement runs with its error ignored, and an event that
// cannot be registered is lost silently.
#include "content/eventi_gestionali.h"

#include <memory>
#include <string>

#include "addressing/contesto_utente.h"
#include "service/guards.h"
#include "service/nvl.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr const char* kParametroUtente = "IDUtenteApp";
constexpr std::int32_t kIntero32Bit = 3;
constexpr std::int32_t kUscita = 2;

// The elements of the payload, one after the other. The closing mark cannot be escaped.
class Parameters {
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
  /// The same, for a value inside a quoted statement.
  void SePresenteFraApici(std::string_view apertura, std::string_view valore) {
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

void AttivaEventoGestionale(const Contesto& contesto, const Oggetti& oggetti,
                            const EventoGestionale& evento) {
  std::int32_t idUtente = 0;
  IgnoraErrori([&] { idUtente = GetUserIDFromConnection(contesto).ToInt32(); });
  if (idUtente <= 0) return;
  IgnoraErrori([&] {
    std::string statement = "exec SPFW_AttivaEventoGestionale ";
    statement.append(contesto.DittaCorrente.Joined()).append(", ").append(std::to_string(evento.codice));
    statement.append(", ").append(std::to_string(idUtente)).append(", '");
    statement.append(ComponiParametriEvento(contesto, oggetti, idUtente, evento)).append("' , 1");
    (void)host::Richiesto(contesto.ConnectionADO).Execute(statement, host::kComandoTesto);
  });
}

host::Variant GetUserIDFromConnection(const Contesto& contesto) {
  host::Variant id = 0;
  std::shared_ptr<host::Command> comando;
  std::shared_ptr<host::Parameter> parametro;
  IgnoraErrori([&] { comando = host::Richiesto(contesto.ConnectionADO).CreateCommand(); });
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

std::string ComponiParametriEvento(const Contesto& contesto, const Oggetti& oggetti, std::int32_t idUtente,
                                   const EventoGestionale& evento) {
  if (evento.codice != kEventoNonInviato && evento.codice != kEventoInvio) return {};
  const auto orologio = [&]() -> host::Orologio& { return oggetti.ambiente->OrologioDiSistema(); };
  host::DataOra adesso;
  IgnoraErrori([&] { adesso = orologio().Adesso(); });
  Parameters parametri;
  parametri.Sempre("<DATE_INS=", [&] { return host::TestoGiornoMeseAnno(adesso); });
  parametri.Sempre("<TIME_INS=", [&] { return orologio().TestoOra(adesso); });
  parametri.Sempre("<USR_COD=", [&] { return GetCodiceUtente(contesto, idUtente); });
  parametri.Sempre("<GRP_COD=", [&] { return GetCodiceGruppo(contesto, idUtente); });
  parametri.SePresenteFraApici("<MAIL_DEST=", evento.destinatario);
  parametri.SePresente("<AZ_COD=", contesto.DittaCorrente);
  parametri.SePresenteFraApici("<AZ_DES=", evento.azienda);
  parametri.SePresenteFraApici("<MAIL_IND=", evento.indirizzo);
  // As it is: a path with a quote breaks the statement, and the event is lost.
  parametri.SePresente("<MAIL_PATH=", evento.allegato);
  parametri.SePresenteFraApici("<DESRES=", evento.esito);
  parametri.SePresenteFraApici("<MAIL_OBJ=", evento.oggetto);
  return parametri.Testo();
}

}  // namespace orve
