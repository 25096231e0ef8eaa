#include "win32/directory.h"

#include <string>
#include <string_view>

#include "ldap/account_name.h"
#include "win32/classi.h"
#include "win32/connection.h"
#include "win32/dispatch.h"
#include "win32/errori_com.h"

namespace orve::adapters::win32 {

namespace {

// What the default member returned for a field: the field, whose value is its own default member, or the
// value itself.
class CampoPredefinito final : public host::Field {
 public:
  explicit CampoPredefinito(VariantCom dato) : dato_(std::move(dato)) {}
  [[nodiscard]] host::Variant Value() const override {
    if (V_VT(&dato_.Get()) != VT_DISPATCH) return FromCom(dato_.Get());
    return FromCom(Dispatch(V_DISPATCH(&dato_.Get())).GetDefault().Get());
  }

 private:
  VariantCom dato_;
};

class CampiPredefiniti final : public host::Fields {
 public:
  explicit CampiPredefiniti(Dispatch recordSet) : recordSet_(std::move(recordSet)) {}
  [[nodiscard]] std::shared_ptr<host::Field> Item(std::string_view nome) const override {
    return std::make_shared<CampoPredefinito>(recordSet_.GetDefault(nome));
  }

 private:
  Dispatch recordSet_;
};

// Its fields are reached through the default member with their names.
class RecordSetDirectory final : public Involucro<host::RecordSet> {
 public:
  explicit RecordSetDirectory(Dispatch recordSet)
      : Involucro(recordSet), membri_(AvvolgiRecordSet(std::move(recordSet))) {}
  [[nodiscard]] bool Eof() const override { return membri_->Eof(); }
  [[nodiscard]] std::shared_ptr<host::Fields> Fields() const override {
    return std::make_shared<CampiPredefiniti>(Oggetto());
  }
  void MoveFirst() override { membri_->MoveFirst(); }
  void MoveNext() override { membri_->MoveNext(); }
  [[nodiscard]] std::int32_t State() const override { return membri_->State(); }
  void Close() override { membri_->Close(); }

 private:
  std::shared_ptr<host::RecordSet> membri_;
};

class DirectoryConnectionCom final : public Involucro<host::DirectoryConnection> {
 public:
  using Involucro::Involucro;
  void Open(const std::string& origine) override { Oggetto().Run("Open", origine); }
  [[nodiscard]] std::shared_ptr<host::RecordSet> Execute(const std::string& interrogazione) override {
    adapters::ldap::RequirePlainAccountName(interrogazione);
    return Avvolgi<RecordSetDirectory>(Oggetto().ChiamaOggetto("Execute", interrogazione));
  }
  [[nodiscard]] std::int32_t State() override { return Oggetto().Get("State").ToInt32(); }
  void Close() override { Oggetto().Run("Close"); }
};

class DirectoryObjectCom final : public Involucro<host::DirectoryObject> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] host::Variant Get(const std::string& attributo) override {
    return Oggetto().Call("Get", attributo);
  }
  [[nodiscard]] std::string ADsPath() override { return Oggetto().Get("ADsPath").ToText(); }
  [[nodiscard]] host::Variant Membro(const std::string& nome) override { return Oggetto().Get(nome.c_str()); }
};

}  // namespace

std::shared_ptr<host::DirectoryConnection> DirectoryWin32::CreaConnessione() {
  return std::make_shared<DirectoryConnectionCom>(CreaOggetto(classi::kConnessione));
}

std::shared_ptr<host::RecordSet> DirectoryWin32::CreaRecordSet() {
  return std::make_shared<RecordSetDirectory>(CreaOggetto(classi::kRecordSet));
}

std::shared_ptr<host::DirectoryObject> DirectoryWin32::ApriOggetto(const std::string& percorso) {
  ComPtr<IDispatch> oggetto;
  SetErrorInfo(0, nullptr);
  Verifica(CoGetObject(ToWide(percorso).c_str(), nullptr, IID_IDispatch, oggetto.UscitaVoid()));
  return std::make_shared<DirectoryObjectCom>(Dispatch(std::move(oggetto)));
}

}  // namespace orve::adapters::win32
