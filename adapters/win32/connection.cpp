#include "win32/connection.h"

#include <string>
#include <string_view>

#include "win32/classi.h"

namespace orve::adapters::win32 {

namespace {

class FieldCom final : public Involucro<host::Field> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] host::Variant Value() const override { return Oggetto().Get("Value"); }
};

class FieldsCom final : public Involucro<host::Fields> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::Field> Item(std::string_view nome) const override {
    return Avvolgi<FieldCom>(Oggetto().ChiamaOggetto("Item", nome));
  }
};

class RecordSetCom final : public Involucro<host::RecordSet> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] bool Eof() const override { return Oggetto().Get("EOF").ToBoolean(); }
  [[nodiscard]] std::shared_ptr<host::Fields> Fields() const override {
    return Avvolgi<FieldsCom>(Oggetto().LeggiOggetto("Fields"));
  }
  void MoveFirst() override { Oggetto().Run("MoveFirst"); }
  void MoveNext() override { Oggetto().Run("MoveNext"); }
  [[nodiscard]] std::int32_t State() const override { return Oggetto().Get("State").ToInt32(); }
  void Close() override { Oggetto().Run("Close"); }
};

class ParameterCom final : public Involucro<host::Parameter> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] host::Variant Value() const override { return Oggetto().Get("Value"); }
};

class CommandCom final : public Involucro<host::Command> {
 public:
  using Involucro::Involucro;
  void CommandType(std::int32_t tipo) override { Oggetto().Put("CommandType", tipo); }
  void CommandText(const std::string& testo) override { Oggetto().Put("CommandText", testo); }
  [[nodiscard]] std::shared_ptr<host::Parameter> CreateParameter(const std::string& nome, std::int32_t tipo,
                                                                 std::int32_t direzione,
                                                                 std::int32_t lunghezza) override {
    return Avvolgi<ParameterCom>(
        Oggetto().ChiamaOggetto("CreateParameter", nome, tipo, direzione, lunghezza));
  }
  void ParametersAppend(const std::shared_ptr<host::Parameter>& parametro) override {
    Oggetto().LeggiOggetto("Parameters").Run("Append", ComDaConsegnare(parametro));
  }
  void Execute() override { Oggetto().Run("Execute"); }
  [[nodiscard]] std::shared_ptr<host::Parameter> ParametersItem(std::string_view nome) const override {
    return Avvolgi<ParameterCom>(Oggetto().LeggiOggetto("Parameters").ChiamaOggetto("Item", nome));
  }
};

class ConnectionCom final : public Involucro<host::Connection> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& statement,
                                                         std::int32_t opzione) override {
    // The count of records comes back in the second argument; nobody uses it.
    return AvvolgiRecordSet(Oggetto().ChiamaOggetto(
        "Execute", statement, Argomento::PerRiferimento(host::Variant(std::int32_t{0})), opzione));
  }
  [[nodiscard]] std::shared_ptr<host::Command> CreateCommand() override {
    Dispatch comando = CreaOggetto(classi::kComando);
    comando.PutRef("ActiveConnection", Com());
    return std::make_shared<CommandCom>(std::move(comando));
  }
};

}  // namespace

std::shared_ptr<host::Connection> AvvolgiConnessione(Dispatch connessione) {
  return Avvolgi<ConnectionCom>(std::move(connessione));
}

std::shared_ptr<host::RecordSet> AvvolgiRecordSet(Dispatch recordSet) {
  return Avvolgi<RecordSetCom>(std::move(recordSet));
}

}  // namespace orve::adapters::win32
