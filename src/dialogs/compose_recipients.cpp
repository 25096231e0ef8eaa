// The three address boxes of the compose window, and its send button.
#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "addressing/address_list.h"
#include "addressing/aziende_note.h"
#include "channels/channel_traits.h"
#include "dialogs/FRMRW_OPZMAIL.h"
#include "dialogs/voci_indirizzo.h"
#include "orve-mailserver/service/CLSFW_MAILSERVER.h"
#include "service/guards.h"
#include "text/text.h"

namespace orve {

namespace {

using host::Richiesto;

// All addresses under the same name; parts without an address are left out. A single address goes in even if
// it is empty.
std::string Voci(std::string_view nome, std::string_view indirizzi) {
  if (indirizzi.find(';') == std::string_view::npos) return VoceElenco(nome, indirizzi);
  std::string voci;
  for (const auto parte : text::Split(indirizzi, ';')) {
    if (parte.empty()) continue;
    AccodaVoceSeparata(voci, nome, parte);
  }
  return voci;
}

}  // namespace

VoceIndirizzo LeggiVoceIndirizzo(std::string_view voce) {
  const auto apre = voce.find('<');
  const auto chiude = voce.find('>');
  if (apre == std::string_view::npos) {
    return {chiude == std::string_view::npos ? voce : std::string_view(), {}, false};
  }
  const bool chiuso = chiude != std::string_view::npos && chiude > apre;
  return {chiuso ? voce.substr(apre + 1, chiude - apre - 1) : std::string_view(), voce.substr(0, apre), true};
}

void FRMRW_OPZMAIL::PrepareCollDestinatari() try {
  const std::array<std::string, 3> caselle = {TXT_EMAIL->Text(), TXT_EMAIL_CC->Text(), TXT_EMAIL_CCN->Text()};
  const auto vecchia = Servizio().vCollDestinatari;
  CollDestinatariForm.reset();
  CollDestinatariForm = std::make_shared<CollDestinatari>(ambiente_);
  std::optional<AziendeNote> aziende;  // made at the first entry that needs it
  for (std::size_t casella = 0; casella < caselle.size(); ++casella) {
    for (const auto testo : text::Split(caselle[casella], ';')) {
      const auto voce = LeggiVoceIndirizzo(testo);
      std::string azienda;
      if (voce.conNome) {
        static_cast<void>(Richiesto(vecchia));
        if (!aziende) aziende.emplace(vecchia);
        azienda = aziende->Di(voce.indirizzo, voce.nome);
      }
      // Blind copies carry their name in place of the company.
      if (casella == kvCasellaCCn) azienda = voce.nome;
      CollDestinatariForm->AddFromLista(std::string(voce.indirizzo), std::string(voce.nome), azienda,
                                        static_cast<std::int16_t>(casella), "");
    }
  }
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: PrepareCollDestinatari");
}

void FRMRW_OPZMAIL::AggiornaCaselleDestinatari(const std::string& nome, const std::string& indirizzi,
                                               std::int16_t casella) try {
  const std::string voci = Voci(nome, indirizzi);
  host::TxtEdit* box = nullptr;
  if (casella == kvCasellaA) box = TXT_EMAIL.get();
  if (casella == kvCasellaCC) box = TXT_EMAIL_CC.get();
  if (casella == kvCasellaCCn) box = TXT_EMAIL_CCN.get();
  if (box == nullptr) return;
  const std::string presente = box->Text();
  box->Text(presente.empty() ? voci : presente + ";" + voci);
} catch (...) {
  SegnalaErrore(" ORVE_MAILSERVER: FRMFW_OPZMAIL: AggiornaCaselleDestinatari");
}

// Errors are ignored statement by statement: once the addresses have passed the check, the message goes out
// with whatever was taken over, and InviaMail reports its own failures.
void FRMRW_OPZMAIL::cmd_Invia_Click() {
  IgnoraErrori([&] { PrepareCollDestinatari(); });
  if (!CollDestinatariForm || CollDestinatariForm->Count() == 0) return;
  if (MancaLAccount()) return;
  if (!IndirizziRegolari()) {
    IgnoraErrori([&] {
      MostraMessaggio("L'elenco dei destinatari contiene un indirizzo non valido.", host::kSemplice,
                      finestra_->Caption(), nullptr);
    });
    return;
  }
  IgnoraErrori([&] { cmd_Invia->Enabled(false); });
  ConsegnaAlServizio();
  ConsegnaRicevute();
  IgnoraErrori([&] { Servizio().InviaMail(); });
  IgnoraErrori([&] { finestra_->Chiudi(); });
}

bool FRMRW_OPZMAIL::MancaLAccount() const {
  return Parent == nullptr || (HaAccount(Parent->SrvMailInstallato) && !Parent->vMittente);
}

bool FRMRW_OPZMAIL::IndirizziRegolari() {
  return std::all_of(
      CollDestinatariForm->begin(), CollDestinatariForm->end(), [this](const auto& destinatario) {
        bool regolare = false;
        IgnoraErrori([&] { regolare = Servizio().CheckRegularMailAddress(destinatario->Indirizzo()); });
        return regolare;
      });
}

void FRMRW_OPZMAIL::ConsegnaAlServizio() {
  IgnoraErrori([&] { Servizio().vNome.clear(); });
  IgnoraErrori([&] { Servizio().vOggetto = TXT_OGGETTO->Text(); });
  IgnoraErrori([&] { Servizio().vFlagCorpo = host::Variant(CHK_CORPO->Text()).ToInt16(); });
  IgnoraErrori([&] { Servizio().vCorpoMail = TXT_CORPO->Text(); });
  IgnoraErrori([&] { Servizio().vElencoAllegati = GetAllegatiMultipli(); });
  IgnoraErrori([&] { Servizio().vCollDestinatari = CollDestinatariForm; });
}

// 1 requests, 2 does not. The account is changed in memory only, for this send.
void FRMRW_OPZMAIL::ConsegnaRicevute() {
  bool ricevuta = false;
  IgnoraErrori([&] { ricevuta = CHK_RICEVUTA->Visible(); });
  if (ricevuta) {
    bool voluta = false;
    IgnoraErrori([&] { voluta = CHK_RICEVUTA->Text() == "1"; });
    IgnoraErrori([&] { Servizio().ReadReceipt = voluta; });
    IgnoraErrori([&] { Richiesto(Servizio().vMittente).ReadRcpt(voluta ? 1 : 2); });
  }
  bool consegna = false;
  IgnoraErrori([&] { consegna = CHK_CONSEGNA->Visible(); });
  if (consegna) {
    bool voluta = false;
    IgnoraErrori([&] { voluta = host::Variant(CHK_CONSEGNA->Text()).ToInt16() == 1; });
    IgnoraErrori([&] { Servizio().vNotifyDelivery = voluta; });
    IgnoraErrori([&] { Richiesto(Servizio().vMittente).DeliveryStatus(voluta ? 1 : 2); });
  }
}

}  // namespace orve
