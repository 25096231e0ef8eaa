// A service ready to send the caller's own message unattended, over fakes; the channel is the test's.
#pragma once

#include <string>
#include <vector>

#include "fakes/servizio_di_prova.h"

namespace orve {

class CanaleDiProva : public fakes::ServizioDiProva {
 protected:
  explicit CanaleDiProva(kvEnum_ServizioMail canale) {
    interno.impostazioni.PathTemp = "C:\\Temp";
    servizio->SrvMailInstallato = canale;
    servizio->ModalitaInvio(kvAutomatico);
    servizio->vFlagCorpo = 1;
    servizio->vCorpoMail = "Buongiorno";
    servizio->vOggetto = "Fattura 12";
    servizio->vDitta = "Acme S.p.A.";
    servizio->DittaCorrente = 1;
  }

  void ConAllegati(const std::vector<std::string>& percorsi) {
    for (const auto& percorso : percorsi) servizio->AddAllegato(percorso);
  }
  [[nodiscard]] std::vector<std::string> Registro() const { return journal->Righe({"ObjRegistroInvio."}); }
  /// Empty without any.
  [[nodiscard]] std::string UltimaRigaLog() const {
    const auto righe = journal->Righe({"TextStream.WriteLine "});
    return righe.empty() ? "" : righe.back();
  }
};

}  // namespace orve
