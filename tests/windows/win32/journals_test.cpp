// The journals of whole sends on Windows against the one journal that every platform is held to: the fakes
// answer behind objects of automation and behind MAPI32.DLL, and all that the library asks of them comes
// through COM.
#include <gtest/gtest.h>

#include "journals/scena.h"
#include "win32/ambiente_win32.h"
#include "win32/oggetti_chiamante.h"
#include "windows/win32/esposti.h"

namespace orve {
namespace {

/// Windows' own objects, at the time and under the identifiers of the fakes.
class AmbienteFermo final : public host::Ambiente {
 public:
  explicit AmbienteFermo(std::shared_ptr<fakes::FakeAmbiente> finto) : finto_(std::move(finto)) {}

  std::shared_ptr<host::Messaggi> CreaMessaggi() override { return vero_->CreaMessaggi(); }
  std::shared_ptr<host::FormatoData> CreaFormatoData() override { return vero_->CreaFormatoData(); }
  std::shared_ptr<host::FormatoNumero> CreaFormatoNumero() override { return vero_->CreaFormatoNumero(); }
  std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override { return vero_->CreaRegistroInvio(); }
  std::shared_ptr<host::RisolutorePercorsi> CreaRisolutorePercorsi() override {
    return vero_->CreaRisolutorePercorsi();
  }
  std::shared_ptr<host::CifratorePassword> CreaCifratorePassword() override {
    return vero_->CreaCifratorePassword();
  }
  std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override { return vero_->CreaComponenteSmtp(); }
  std::shared_ptr<host::OutlookApplication> CreaOutlook() override { return vero_->CreaOutlook(); }
  std::shared_ptr<host::MAPISession> CreaMAPISession() override { return vero_->CreaMAPISession(); }
  std::shared_ptr<host::MAPIMessages> CreaMAPIMessages() override { return vero_->CreaMAPIMessages(); }
  std::shared_ptr<host::Mapi32> CreaMapi32() override {
    // The library is not a class that could report its creation and release: the fake behind it lives as
    // long.
    auto finta = finto_->CreaMapi32();
    prova::RispondePerMapi32(finta);
    auto vera = vero_->CreaMapi32();
    auto* const funzioni = vera.get();
    return {funzioni, [vera = std::move(vera), finta = std::move(finta)](host::Mapi32*) mutable {
              vera.reset();
              finta.reset();
            }};
  }
  std::shared_ptr<host::FileSystem> CreaFileSystem() override { return vero_->CreaFileSystem(); }
  host::Orologio& OrologioDiSistema() override { return finto_->OrologioDiSistema(); }
  host::DebugOutput& UscitaDiDebug() override { return finto_->UscitaDiDebug(); }
  host::GeneratoreGuid& Identificatori() override { return finto_->Identificatori(); }
  host::Environment& VariabiliDiAmbiente() override { return finto_->VariabiliDiAmbiente(); }
  host::Rete& ReteDiSistema() override { return finto_->ReteDiSistema(); }
  host::Directory& DirectoryAziendale() override { return vero_->DirectoryAziendale(); }

 private:
  std::shared_ptr<fakes::FakeAmbiente> finto_;
  std::shared_ptr<host::Ambiente> vero_ = adapters::win32::CreaAmbienteWin32();
};

TEST(GiornaliDiWindows, WholeSendsAskOfTheOutsideWhatTheJournalSays) {
  const prova::AppartamentoCom appartamento;
  const auto finto = journals::CreaFinto();
  const auto database = journals::CreaDatabase(finto->journal);
  const prova::ClassiFinte classi(finto, database);
  const auto connessione = prova::Esponi(std::shared_ptr<host::Connection>(database));
  const auto interfaccia = prova::Esponi(fakes::CreaFakeInterfaccia(*finto));
  const std::string visto = journals::Recita({finto, database, std::make_shared<AmbienteFermo>(finto),
                                              adapters::win32::ConnessioneDa(connessione.Get()),
                                              adapters::win32::InterfacciaHostDa(interfaccia.Get())});
  EXPECT_EQ(journals::Differenza(visto), "");
  EXPECT_EQ(connessione->Riferiti(), 1U);
  EXPECT_EQ(interfaccia->Riferiti(), 1U);
}

}  // namespace
}  // namespace orve
