// The entry point of every normal send, and its last step. The message is refused, sent at once, or handed to
// the person in the compose dialog; which of these depends on where the recipients come from and on the mode.
//
// No failure of a send reaches the caller as an error: a failure while reporting a failure stops at the two
// public entry points. Inside, it propagates to the enclosing procedure.
//
// The procedure covers a whole send, so it is given the whole inside of the service.
#include "service/procedura_invio.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "addressing/accounts.h"
#include "addressing/recipient_lookup.h"
#include "channels/channel_traits.h"
#include "content/eventi_gestionali.h"
#include "service/address_check.h"
#include "service/before_send.h"
#include "service/dialog_bridge.h"
#include "service/failures.h"
#include "service/guards.h"
#include "service/report.h"
#include "text/text.h"

namespace orve {

namespace {

constexpr const char* kIndirizzoNonValido = "L'elenco dei destinatari contiene un indirizzo non valido.";

void RegistraRifiuto(const Impostazioni& impostazioni, const Contesto& contesto, const Oggetti& oggetti,
                     const RigaNonInviata& riga) {
  const auto registro = oggetti.ObjRegistroInvio;
  if (!registro) return;
  registro->EsitoInvio(host::kNonInviato);
  RegistraNonInviato(impostazioni, contesto, oggetti, *registro, riga);
}

void SollevaBeforeSendMail(Interno& interno) {
  GestioneEventoBeforeSendMail(interno.messaggio, interno.impostazioni, interno.contesto, interno.oggetti);
}

// Names and addresses joined for the placeholders of the body, for all recipients except the copies: those
// with an unknown box are included. Whatever the caller left in the two fields comes first. Once anything has
// been joined to either of them, both lose their last two characters; otherwise both stay as they are. The
// result says whether anything was joined.
bool UnisciNomiEIndirizzi(Messaggio& messaggio) {
  bool uniti = false;
  const auto unisci = [&uniti](std::string& campo, const std::string& valore) {
    if (valore.empty()) return;
    campo.append(valore).append(", ");
    uniti = true;
  };
  for (const auto& destinatario : *messaggio.vCollDestinatari) {
    if (destinatario->Casella() == kvCasellaCC || destinatario->Casella() == kvCasellaCCn) continue;
    unisci(messaggio.vNome, destinatario->Nome());
    unisci(messaggio.vIndDestinatario, destinatario->Indirizzo());
  }
  if (uniti) {
    messaggio.vNome = text::WithoutLast(messaggio.vNome, 2);
    messaggio.vIndDestinatario = text::WithoutLast(messaggio.vIndDestinatario, 2);
  }
  return uniti;
}

// The caller has named the recipients: the message goes out at once, in every mode and without any check.
void InviaACollezione(Interno& interno) {
  Messaggio& messaggio = interno.messaggio;
  messaggio.vDitta = messaggio.INFO_RagSocCliFor;
  interno.account.UsaMittenteScelto = true;
  if (HaAccount(interno.impostazioni.SrvMailInstallato)) {
    if (messaggio.FlagInvioDiretto) {
      CaricaAccountDaId(interno.account, interno.contesto, interno.esito, interno.oggetti);
    } else {
      CaricaAccountPredefinito(messaggio, interno.account, interno.contesto, interno.oggetti);
    }
  }
  const bool uniti = !messaggio.FlagInvioDiretto && UnisciNomiEIndirizzi(messaggio);
  SollevaBeforeSendMail(interno);
  if (uniti) {
    messaggio.vNome.clear();
    messaggio.vIndDestinatario.clear();
  }
  ConsegnaAlCanale(interno);
}

bool IndirizziRegolari(const CollDestinatari& destinatari) {
  return std::all_of(destinatari.begin(), destinatari.end(),
                     [](const auto& destinatario) { return ContieneIndirizzo(destinatario->Indirizzo()); });
}

// The addresses come from the master data, and the mode decides between refusal, sending and the dialog.
void InviaARicerca(Interno& interno, CLSFW_MAILSERVER& servizio, const std::optional<host::Variant>& codice,
                   std::optional<kvTipologiaDestinatarioFAX> tipo) {
  Messaggio& messaggio = interno.messaggio;
  const auto rifiuta = [&](const char* testo) {
    RegistraRifiuto(interno.impostazioni, interno.contesto, interno.oggetti,
                    {messaggio.vNome, messaggio.vDitta, "", messaggio.vMailAttachment, testo});
  };
  if (codice) {
    const bool senzaTipo = !tipo || *tipo == kvDestinatarioFaxAnagrafica;
    static_cast<void>(GetDatiDestinatario(messaggio, interno.contesto, interno.oggetti, *codice,
                                          senzaTipo ? std::nullopt : std::optional<std::int32_t>(*tipo)));
  }
  SollevaBeforeSendMail(interno);

  if (interno.impostazioni.ModalitaInvio() != kvManuale) {
    if (host::Richiesto(messaggio.vCollDestinatari).Count() > 0) {
      if (IndirizziRegolari(*messaggio.vCollDestinatari)) {
        ConsegnaAlCanale(interno);
        return;
      }
      if (interno.impostazioni.ModalitaInvio() == kvAutomatico) {
        rifiuta(kIndirizzoNonValido);
        return;
      }
      MostraMessaggio(interno.oggetti, kIndirizzoNonValido, host::kInformazione, "Attenzione");
    } else if (interno.impostazioni.ModalitaInvio() == kvAutomatico) {
      rifiuta("Non inviato. Indirizzo mancante.");
      return;
    }
  }
  interno.account.UsaMittenteScelto = true;
  ApriForm_OpzInvio(interno, servizio);
}

}  // namespace

void AvviaProceduraInvio(Interno& interno, CLSFW_MAILSERVER& servizio,
                         const std::optional<host::Variant>& codice,
                         std::optional<kvTipologiaDestinatarioFAX> Tipo) {
  const auto segnala =
      PerModalita(interno.messaggio, interno.impostazioni, interno.oggetti, "AvviaProceduraInvio", " ",
                  " ORVE_MAILSERVER: CLSFW_MAILSERVER: AvviaProceduraInvio");
  IgnoraErrori([&] {
    SegnalaErrori(segnala, [&] {
      const Messaggio& messaggio = interno.messaggio;
      if (InvioDisabilitato(interno.impostazioni.SrvMailInstallato)) {
        interno.esito.StatoInvio = kvInvioNonImpostato;
        interno.esito.DescrizioneInvio = "Invio mail disabilitato!";
        RegistraRifiuto(interno.impostazioni, interno.contesto, interno.oggetti,
                        {.testo = "Invio mail disabilitato"});
        return;
      }
      const ChannelTraits* const canale = TrattiDi(interno.impostazioni.SrvMailInstallato);
      if (canale != nullptr && canale->prepara != nullptr) canale->prepara(interno.oggetti);
      if (messaggio.vCollDestinatari &&
          (messaggio.vCollDestinatari->Count() > 0 || messaggio.FlagInvioDiretto)) {
        InviaACollezione(interno);
      } else {
        InviaARicerca(interno, servizio, codice, Tipo);
      }
    });
  });
}

void RegistraNonInviato(const Impostazioni& impostazioni, const Contesto& contesto, const Oggetti& oggetti,
                        host::RegistroInvio& registro, const RigaNonInviata& riga) {
  registro.CanaleInvio(static_cast<float>(impostazioni.SrvMailInstallato));
  RiferisciErrori(*oggetti.ambiente, &Osservatore::RigaNonRegistrata, [&] {
    registro.RegistraInvio(riga.nome, riga.ditta, riga.indirizzo, riga.allegato, riga.testo, "", "");
  });
  const auto testo = [](const host::TestoOAssente& valore) -> const std::string& {
    return valore ? *valore : kTestoVuoto;
  };
  Riferisci(*oggetti.ambiente, &Osservatore::RigaRegistrata, riga.esito, testo(riga.nome),
            testo(riga.indirizzo), riga.testo);
  AttivaEventoGestionale(contesto, oggetti,
                         {.codice = kEventoNonInviato,
                          .destinatario = testo(riga.nome),
                          .azienda = testo(riga.ditta),
                          .indirizzo = testo(riga.indirizzo),
                          .allegato = testo(riga.allegato),
                          .esito = riga.testo});
}

void ConsegnaAlCanale(Interno& interno) {
  SegnalaErrori(PerModalita(interno.messaggio, interno.impostazioni, interno.oggetti, "InviaMail", "-",
                            " in ORVE_MAILSERVER:CLSFW_MAILSERVER - InviaMail"),
                [&] {
                  const ChannelTraits* const canale = TrattiDi(interno.impostazioni.SrvMailInstallato);
                  if (canale != nullptr && canale->consegna != nullptr) canale->consegna(interno);
                });
}

}  // namespace orve
