// What both windows of the service have in common: the form that the host makes of a layout table, the
// service that opened it, and the ways to tell the person something.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/content/traccia_istanza.h"
#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/controlli.h"
#include "orve-mailserver/host/interfaccia_host.h"
#include "service/report.h"

namespace orve {

class CLSFW_MAILSERVER;

class FinestraDelServizio {
 public:
  FinestraDelServizio(const FinestraDelServizio&) = delete;
  FinestraDelServizio& operator=(const FinestraDelServizio&) = delete;
  FinestraDelServizio(FinestraDelServizio&&) = delete;
  FinestraDelServizio& operator=(FinestraDelServizio&&) = delete;

  /// The service that opened the window; it outlives the window's being shown.
  CLSFW_MAILSERVER* Parent = nullptr;
  std::shared_ptr<host::InterfacciaHost> ActiveInterface;

  /// The window with its named controls.
  [[nodiscard]] host::Form& Finestra() { return *form_; }

 protected:
  /// `classe` is the name that the traces show. The window itself holds form and messages, among its other
  /// objects: the order in which they are released is visible outside.
  FinestraDelServizio(std::shared_ptr<host::Ambiente> ambiente, std::string_view classe,
                      std::shared_ptr<host::Form>& form, std::shared_ptr<host::Messaggi>& messaggi);
  ~FinestraDelServizio() = default;

  /// Builds the form without showing it, and runs the steps that take its controls. Raises 429 on a host
  /// without windows.
  template <class Passi>
  void Costruisci(const host::LayoutForm& layout, Passi&& passi) {
    traccia_.Inizio([&] {
      form_ = RiferisciErrori(*ambiente_, &Osservatore::FinestraNonAperta,
                              [&] { return ambiente_->CreaForm(layout); });
      passi();
    });
  }
  template <class Tipo>
  void Prendi(std::shared_ptr<Tipo>& controllo, std::string_view nome) {
    controllo = host::ControlloDi<Tipo>(host::Richiesto(form_), nome);
  }

  /// Raises 91 when the window has released its service.
  [[nodiscard]] CLSFW_MAILSERVER& Servizio() const;

  std::int32_t MostraMessaggio(const std::string& testo, std::int32_t stile, const std::string& titolo,
                               const std::shared_ptr<host::Oggetto>& proprietario);
  /// The exception in flight as a message under the window's caption: description and closing text.
  void SegnalaErroreConTitolo(std::string_view chiusura);
  /// The caption in the form that the host interface's messages expect.
  void CompletaTitolo(const std::shared_ptr<host::InterfacciaHost>& interfaccia);

  std::shared_ptr<host::Ambiente> ambiente_;
  TracciaIstanza traccia_;

 private:
  std::shared_ptr<host::Form>& form_;
  std::shared_ptr<host::Messaggi>& messaggi_;
};

}  // namespace orve
