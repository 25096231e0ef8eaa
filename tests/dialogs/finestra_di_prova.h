// The fixture of the window tests: a service whose windows are answered by a script in place of the person.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dialogs/FRMRW_OPZMAIL.h"
#include "fakes/fake_rubrica.h"
#include "fakes/headless.h"
#include "fakes/invio_manuale.h"
#include "fakes/servizio_di_prova.h"
#include "service/dialog_bridge.h"

namespace orve::fakes {

/// On the SMTP channel with one account, in manual mode, with the chosen account in force and an empty list
/// of recipients, as the send procedure and the event stage leave them.
class FinestraDiProva : public ServizioDiProva {
 protected:
  FinestraDiProva() {
    PreparaInvioManuale(*servizio, interno, *connessione);
    Collezione();
  }

  void Accounts(Righe righe) { OffriAccount(*connessione, std::move(righe)); }
  void SuCanale(std::int32_t canale) {
    servizio->SrvMailInstallato = static_cast<kvEnum_ServizioMail>(canale);
  }

  /// `programma` opens a window, and the script runs in it. The journal holds what happened since the window
  /// opened.
  template <class Programma>
  void ConPersona(const Persona& persona, const Programma& programma) {
    bool mostrata = false;
    bool finito = false;
    ambiente->persona = [&](HeadlessForm& finestra) {
      mostrata = true;
      if (persona) persona(finestra);
      finito = true;
    };
    journal->Svuota();
    programma();
    ambiente->persona = nullptr;
    EXPECT_TRUE(mostrata) << "the window was not shown";
    EXPECT_TRUE(finito) << "an error has ended the script";  // which the service would take for its own
  }
  /// The service opens the compose window.
  void Apri(const Persona& persona) {
    ConPersona(persona, [this] { ApriForm_OpzInvio(interno, *servizio); });
  }
  void Apri() { Apri(nullptr); }
  /// The same, and the person confirms at the end.
  void Invia(const Persona& persona) {
    Apri([&](HeadlessForm& finestra) {
      persona(finestra);
      finestra.Preme("cmd_Invia");
      EXPECT_FALSE(finestra.Aperta()) << "the send has left the window open";
    });
  }

  /// A file on the disk of names.
  void File(const std::string& percorso) { ambiente->file[percorso] = "contenuto"; }

  [[nodiscard]] bool Consegnato() const { return journal->Conta("smtp.SendMail") == 1; }
  /// Every message shown, whichever object showed it.
  [[nodiscard]] std::vector<std::string> Mostrati() const {
    return journal->Righe({"ObjMessaggi.MostraMsg", "Host.Messaggi.MostraMsg"});
  }
};

/// The compose window by itself, with the service behind it and nothing filled in.
class FormDiProva : public FinestraDiProva {
 protected:
  FormDiProva() {
    ambiente->persona = [this](HeadlessForm& finestra) {
      if (script) script(finestra);
    };
    form = std::make_unique<FRMRW_OPZMAIL>(ambiente);
    form->Parent = servizio.get();
    journal->Svuota();
  }
  void Mostra(Persona persona) {
    script = std::move(persona);
    form->Finestra().Show(host::Form::kModale, nullptr);
  }

  [[nodiscard]] FRMRW_OPZMAIL& Dentro() { return *form; }

  Persona script;
  std::unique_ptr<FRMRW_OPZMAIL> form;
};

}  // namespace orve::fakes
