// What the windows are made of, as a toolkit offers it to an Ambiente.
#pragma once

#include <memory>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/griglia.h"
#include "orve-mailserver/host/layout.h"
#include "orve-mailserver/host/messaggi.h"
#include "orve-mailserver/host/oggetti_file.h"
#include "orve-mailserver/host/record_set_scollegato.h"

namespace orve::host {

/// A new object at each call, never absent; raises 429, with the reason, where no window can be opened.
class ORVE_API Finestre {
 public:
  Finestre() = default;
  Finestre(const Finestre&) = delete;
  Finestre& operator=(const Finestre&) = delete;
  Finestre(Finestre&&) = delete;
  Finestre& operator=(Finestre&&) = delete;
  virtual ~Finestre() = default;

  /// A window built from the layout, not yet shown.
  [[nodiscard]] virtual std::shared_ptr<Form> CreaForm(const LayoutForm& layout) = 0;
  ///@{
  /// The parts of a window, and the objects that go with it.
  [[nodiscard]] virtual std::shared_ptr<ConfigurazioneGriglia> CreaConfigurazioneGriglia() = 0;
  [[nodiscard]] virtual std::shared_ptr<RecordSetScollegato> CreaRecordSetScollegato() = 0;
  [[nodiscard]] virtual std::shared_ptr<SelettoreFile> CreaSelettoreFile() = 0;
  [[nodiscard]] virtual std::shared_ptr<OggettoFile> CreaOggettoFile() = 0;
  [[nodiscard]] virtual std::shared_ptr<CollezioneFile> CreaCollezioneFile() = 0;
  ///@}
  /// Messages as boxes over the window that is open. Made also where no window can be opened.
  [[nodiscard]] virtual std::shared_ptr<Messaggi> CreaMessaggi() = 0;
};

}  // namespace orve::host
