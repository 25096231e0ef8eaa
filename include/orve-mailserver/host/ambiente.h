// Where the library gets every object that it creates. One Ambiente is handed to the service's constructor;
// the reference host, the Windows DLL and the tests each bring their own.
#pragma once

#include <memory>
#include <string_view>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/automation.h"
#include "orve-mailserver/host/cifratore_password.h"
#include "orve-mailserver/host/componente_smtp.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/directory.h"
#include "orve-mailserver/host/file_system.h"
#include "orve-mailserver/host/formatori.h"
#include "orve-mailserver/host/griglia.h"
#include "orve-mailserver/host/layout.h"
#include "orve-mailserver/host/mapi32.h"
#include "orve-mailserver/host/messaggi.h"
#include "orve-mailserver/host/oggetti_file.h"
#include "orve-mailserver/host/orologio.h"
#include "orve-mailserver/host/osservatore_invio.h"
#include "orve-mailserver/host/parametri.h"
#include "orve-mailserver/host/record_set_scollegato.h"
#include "orve-mailserver/host/registro_invio.h"
#include "orve-mailserver/host/risolutore_percorsi.h"
#include "orve-mailserver/host/system.h"

namespace orve::host {

/// The application overrides what it has. The service keeps the Ambiente alive, and calls it on the thread
/// that calls the service.
class ORVE_API Ambiente {
 public:
  Ambiente() = default;
  Ambiente(const Ambiente&) = delete;
  Ambiente& operator=(const Ambiente&) = delete;
  Ambiente(Ambiente&&) = delete;
  Ambiente& operator=(Ambiente&&) = delete;
  virtual ~Ambiente() = default;

  ///@{
  /// A new object at each call, never absent; raises 429 where the machine cannot make one.
  [[nodiscard]] virtual std::shared_ptr<Messaggi> CreaMessaggi() = 0;
  [[nodiscard]] virtual std::shared_ptr<FormatoData> CreaFormatoData() = 0;
  [[nodiscard]] virtual std::shared_ptr<FormatoNumero> CreaFormatoNumero() = 0;
  [[nodiscard]] virtual std::shared_ptr<RegistroInvio> CreaRegistroInvio() = 0;
  [[nodiscard]] virtual std::shared_ptr<RisolutorePercorsi> CreaRisolutorePercorsi() = 0;
  [[nodiscard]] virtual std::shared_ptr<CifratorePassword> CreaCifratorePassword() = 0;
  [[nodiscard]] virtual std::shared_ptr<ComponenteSmtp> CreaComponenteSmtp() = 0;
  [[nodiscard]] virtual std::shared_ptr<OutlookApplication> CreaOutlook() = 0;
  [[nodiscard]] virtual std::shared_ptr<MAPISession> CreaMAPISession() = 0;
  [[nodiscard]] virtual std::shared_ptr<MAPIMessages> CreaMAPIMessages() = 0;
  [[nodiscard]] virtual std::shared_ptr<Mapi32> CreaMapi32() = 0;
  [[nodiscard]] virtual std::shared_ptr<FileSystem> CreaFileSystem() = 0;
  ///@}

  /// A window built from the layout, a new one at each call, not yet shown. The tables behind the layout live
  /// as long as the program. A host without windows does not override this: it raises 429, with the window's
  /// name.
  [[nodiscard]] virtual std::shared_ptr<Form> CreaForm(const LayoutForm& layout);
  ///@{
  /// What the windows are made of, a new object at each call. A host without windows does not override these:
  /// each raises 429, with the object's name.
  [[nodiscard]] virtual std::shared_ptr<ConfigurazioneGriglia> CreaConfigurazioneGriglia();
  [[nodiscard]] virtual std::shared_ptr<RecordSetScollegato> CreaRecordSetScollegato();
  [[nodiscard]] virtual std::shared_ptr<SelettoreFile> CreaSelettoreFile();
  [[nodiscard]] virtual std::shared_ptr<OggettoFile> CreaOggettoFile();
  [[nodiscard]] virtual std::shared_ptr<CollezioneFile> CreaCollezioneFile();
  [[nodiscard]] virtual std::shared_ptr<CLSFW_Parametri> CreaParametri();
  ///@}

  ///@{
  /// The platform's own, which live as long as the Ambiente.
  [[nodiscard]] virtual Orologio& OrologioDiSistema() = 0;
  [[nodiscard]] virtual DebugOutput& UscitaDiDebug() = 0;
  [[nodiscard]] virtual GeneratoreGuid& Identificatori() = 0;
  [[nodiscard]] virtual Environment& VariabiliDiAmbiente() = 0;
  [[nodiscard]] virtual Rete& ReteDiSistema() = 0;
  [[nodiscard]] virtual Directory& DirectoryAziendale() = 0;
  ///@}

  /// Who is told what becomes of a send; lives as long as the Ambiente. Unless overridden, nobody.
  [[nodiscard]] virtual OsservatoreInvio& Osservatore();

  // A new object goes here, below all others, so that programs find those in their places, with a body that
  // raises NonCreabile.

 protected:
  /// Raises 429 with the object's name: what a host does that does not bring it.
  [[noreturn]] static void NonCreabile(std::string_view oggetto);
};

}  // namespace orve::host
