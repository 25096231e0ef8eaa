// Shows one of the two windows on sample data until it is closed, for a picture of it: "invio" or
// "parametri".
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>

#include "fakes/fake_ambiente.h"
#include "fakes/servizio_aperto.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/dialog_bridge.h"
#include "win32/finestre/finestre.h"

namespace {

using orve::host::Variant;

class Ambiente : public orve::fakes::FakeAmbiente {
 public:
  std::shared_ptr<orve::host::Form> CreaForm(const orve::host::LayoutForm& layout) override {
    return finestre_.CreaForm(layout);
  }
  std::shared_ptr<orve::host::ConfigurazioneGriglia> CreaConfigurazioneGriglia() override {
    return finestre_.CreaConfigurazioneGriglia();
  }
  std::shared_ptr<orve::host::RecordSetScollegato> CreaRecordSetScollegato() override {
    return finestre_.CreaRecordSetScollegato();
  }
  std::shared_ptr<orve::host::SelettoreFile> CreaSelettoreFile() override {
    return finestre_.CreaSelettoreFile();
  }
  std::shared_ptr<orve::host::CollezioneFile> CreaCollezioneFile() override {
    return finestre_.CreaCollezioneFile();
  }
  std::shared_ptr<orve::host::Messaggi> CreaMessaggi() override { return finestre_.CreaMessaggi(); }

 private:
  orve::adapters::win32::finestre::Finestre finestre_;
};

orve::fakes::Riga Account() {
  return {{"FW23_SERVERNAME", "smtp.arvenia.example"},
          {"FW23_PORT", 25},
          {"FW23_TIMEOUT", 60},
          {"FW23_INDAUTH", 0},
          {"FW23_SSL", 0},
          {"FW98_IDACCOUNT", std::int16_t{1}},
          {"FW98_MAILADDRESS", "fatture@arvenia.example"},
          {"FW98_USERNAME", "fatture"},
          {"FW98_PASSWORD", ""},
          {"ALIAS", "Fatturazione"},
          {"LETTURA", std::int16_t{1}},
          {"CONSEGNA", std::int16_t{0}}};
}

// Once the window is open.
std::string fileDelPosto;

void CALLBACK ScriviPosto(HWND /*finestra*/, UINT /*messaggio*/, UINT_PTR orologio, DWORD /*ora*/) {
  HWND finestra = GetActiveWindow();
  if (finestra == nullptr || IsWindowVisible(finestra) == FALSE) return;
  KillTimer(nullptr, orologio);
  RECT interno = {};
  GetClientRect(finestra, &interno);
  POINT angolo = {0, 0};
  ClientToScreen(finestra, &angolo);
  std::ofstream(fileDelPosto) << angolo.x << ' ' << angolo.y << ' ' << interno.right << ' ' << interno.bottom
                              << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  const std::string quale = argc > 1 ? argv[1] : "";
  if (argc > 2) {
    constexpr UINT kMillisecondi = 50;
    fileDelPosto = argv[2];
    SetTimer(nullptr, 0, kMillisecondi, ScriviPosto);
  }
  const auto ambiente = std::make_shared<Ambiente>();
  ambiente->file = {{"C:\\Documenti\\fattura-12.pdf", ""}, {"C:\\Documenti\\listino-2026.pdf", ""}};
  const auto connessione = std::make_shared<orve::fakes::FakeConnection>(ambiente->journal);
  connessione->Risponde("INNER JOIN FW99_MAILUSERACCOUNT", {Account()});
  orve::fakes::ServizioAperto aperto(ambiente);
  orve::CLSFW_MAILSERVER& servizio = *aperto.servizio;
  servizio.ConnectionADO = connessione;
  servizio.SrvMailInstallato = orve::kvSMTPMail;
  servizio.ModalitaInvio(orve::kvManuale);
  orve::Interno& interno = aperto.interno;
  interno.account.UsaMittenteScelto = true;
  interno.contesto.IdUtenteCorrente = 42;
  if (quale == "parametri") {
    servizio.MailParamCorpoUnico(
        "Gentile cliente,\r\nin allegato il listino valido da gennaio.\r\nCordiali saluti");
    servizio.ReturnMailParameters();
    return 0;
  }
  if (quale != "invio") {
    std::fputs("uso: mostra-finestre invio|parametri [FILE]\n", stderr);
    return 2;
  }
  auto& destinatari = *(servizio.vCollDestinatari = std::make_shared<orve::CollDestinatari>(ambiente));
  destinatari.AddFromLista("acquisti@bellariva.example", "Officine Bellariva S.r.l.", "", 0);
  destinatari.AddFromLista("ufficio.acquisti@bellariva.example", "Ufficio Acquisti", "", 0);
  destinatari.AddFromLista("spedizioni@rapidiadriatici.example", "Trasporti Rapidi Adriatici S.p.A.", "", 1);
  servizio.vOggetto = "Fattura 12 del 14/11/2026, con listino";
  servizio.vFlagCorpo = 1;
  servizio.vCorpoMail =
      "Buongiorno,\r\n\r\nin allegato la fattura 12: la merce è già partita e arriverà "
      "lunedì.\r\n\r\nCordiali saluti,\r\n"
      "Ufficio Fatturazione";
  servizio.vMailAttachment = "C:\\Documenti\\fattura-12.pdf";
  servizio.vElencoAllegati =
      Variant::Array{"C:\\Documenti\\fattura-12.pdf", "C:\\Documenti\\listino-2026.pdf"};
  ApriForm_OpzInvio(interno, servizio);
  return 0;
}
