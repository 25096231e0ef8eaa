#include "win32/ambiente_win32.h"

#include "values/formatori_sql.h"
#include "win32/classi.h"
#include "win32/directory.h"
#include "win32/dispatch.h"
#include "win32/file_system.h"
#include "win32/finestre/finestre.h"
#include "win32/libreria_host.h"
#include "win32/mapi32.h"
#include "win32/posta.h"
#include "win32/system.h"

namespace orve::adapters::win32 {

namespace {

class AmbienteWin32 final : public host::Ambiente {
 public:
  [[nodiscard]] std::shared_ptr<host::Messaggi> CreaMessaggi() override {
    if (!ClasseRegistrata(classi::kMessaggi)) return finestre_.CreaMessaggi();
    return AvvolgiMessaggi(CreaOggetto(classi::kMessaggi));
  }
  [[nodiscard]] std::shared_ptr<host::FormatoData> CreaFormatoData() override {
    if (!ClasseRegistrata(classi::kFormatoData)) return std::make_shared<FormatoDataWin32>();
    return AvvolgiFormatoData(CreaOggetto(classi::kFormatoData));
  }
  [[nodiscard]] std::shared_ptr<host::FormatoNumero> CreaFormatoNumero() override {
    if (!ClasseRegistrata(classi::kFormatoNumero)) return std::make_shared<values::FormatoNumeroSql>();
    return AvvolgiFormatoNumero(CreaOggetto(classi::kFormatoNumero));
  }
  [[nodiscard]] std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override {
    return AvvolgiRegistroInvio(CreaOggetto(classi::kRegistroInvio));
  }
  [[nodiscard]] std::shared_ptr<host::RisolutorePercorsi> CreaRisolutorePercorsi() override {
    if (!ClasseRegistrata(classi::kRisolutorePercorsi)) return std::make_shared<RisolutorePercorsiWin32>();
    return AvvolgiRisolutorePercorsi(CreaOggetto(classi::kRisolutorePercorsi));
  }
  [[nodiscard]] std::shared_ptr<host::CifratorePassword> CreaCifratorePassword() override {
    return AvvolgiCifratorePassword(CreaOggetto(classi::kCifratorePassword));
  }
  [[nodiscard]] std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override {
    return AvvolgiComponenteSmtp(CreaOggetto(classi::kComponenteSmtp));
  }
  [[nodiscard]] std::shared_ptr<host::OutlookApplication> CreaOutlook() override {
    return AvvolgiOutlook(CreaOggetto(classi::kOutlook));
  }
  [[nodiscard]] std::shared_ptr<host::MAPISession> CreaMAPISession() override {
    return AvvolgiMAPISession(CreaOggetto(classi::kMAPISession));
  }
  [[nodiscard]] std::shared_ptr<host::MAPIMessages> CreaMAPIMessages() override {
    return AvvolgiMAPIMessages(CreaOggetto(classi::kMAPIMessages));
  }
  [[nodiscard]] std::shared_ptr<host::Mapi32> CreaMapi32() override {
    return std::make_shared<Mapi32Win32>();
  }
  [[nodiscard]] std::shared_ptr<host::FileSystem> CreaFileSystem() override {
    return AvvolgiFileSystem(CreaOggetto(classi::kFileSystem));
  }
  [[nodiscard]] std::shared_ptr<host::CLSFW_Parametri> CreaParametri() override {
    return AvvolgiParametri(CreaOggetto(classi::kParametri));
  }

  [[nodiscard]] std::shared_ptr<host::Form> CreaForm(const host::LayoutForm& layout) override {
    return finestre_.CreaForm(layout);
  }
  [[nodiscard]] std::shared_ptr<host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override {
    return finestre_.CreaConfigurazioneGriglia();
  }
  [[nodiscard]] std::shared_ptr<host::RecordSetScollegato> CreaRecordSetScollegato() override {
    return finestre_.CreaRecordSetScollegato();
  }
  [[nodiscard]] std::shared_ptr<host::SelettoreFile> CreaSelettoreFile() override {
    if (!FileDelHost()) return finestre_.CreaSelettoreFile();
    return AvvolgiSelettoreFile(CreaOggetto(classi::kSelettoreFile));
  }
  [[nodiscard]] std::shared_ptr<host::OggettoFile> CreaOggettoFile() override {
    if (!FileDelHost()) return finestre_.CreaOggettoFile();
    return AvvolgiOggettoFile(CreaOggetto(classi::kOggettoFile));
  }
  [[nodiscard]] std::shared_ptr<host::CollezioneFile> CreaCollezioneFile() override {
    if (!FileDelHost()) return finestre_.CreaCollezioneFile();
    return AvvolgiCollezioneFile(CreaOggetto(classi::kCollezioneFile));
  }

  [[nodiscard]] host::Orologio& OrologioDiSistema() override { return orologio_; }
  [[nodiscard]] host::DebugOutput& UscitaDiDebug() override { return debug_; }
  [[nodiscard]] host::GeneratoreGuid& Identificatori() override { return guid_; }
  [[nodiscard]] host::Environment& VariabiliDiAmbiente() override { return variabili_; }
  [[nodiscard]] host::Rete& ReteDiSistema() override { return rete_; }
  [[nodiscard]] host::Directory& DirectoryAziendale() override { return directory_; }

 private:
  // The three work together: either all of them are the host's, or none is.
  [[nodiscard]] static bool FileDelHost() {
    return ClasseRegistrata(classi::kSelettoreFile) && ClasseRegistrata(classi::kOggettoFile) &&
           ClasseRegistrata(classi::kCollezioneFile);
  }

  // The host's chooser asks the person and knows nothing about what was dropped.
  finestre::Finestre finestre_{{.accettaFile = [] { return !FileDelHost(); }}};
  ClockWin32 orologio_;
  DebugOutputWin32 debug_;
  GuidGeneratorWin32 guid_;
  EnvironmentWin32 variabili_;
  NetworkWin32 rete_;
  DirectoryWin32 directory_;
};

}  // namespace

std::shared_ptr<host::Ambiente> CreaAmbienteWin32() {
  return std::make_shared<AmbienteWin32>();
}

}  // namespace orve::adapters::win32
