#include "orve-mail/lists/lista.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <sstream>
#include <string_view>
#include <vector>

#include "orve-mail/host/resoconto.h"
#include "orve-mail/lists/avanzamento.h"
#include "orve-mail/lists/esiti_lista.h"
#include "orve-mail/lists/interruzione.h"
#include "orve-mail/lists/lista_righe.h"
#include "orve-mailserver/host/system.h"
#include "posix/system.h"

namespace orve::app {

namespace {

std::string NuovaLista() {
  const std::optional<host::Guid> guid = adapters::posix::GuidGenerator().CreaGuid();
  if (!guid) throw ErroreProgramma(Uscita::kNonUtilizzabile, "Il sistema non dà identificatori");
  const auto& b = guid->byte;
  std::array<char, 40> testo{};
  const int lungo =
      std::snprintf(testo.data(), testo.size(), "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                    guid->primo, guid->secondo, guid->terzo, b[0], b[1], b[2], b[3], b[4], b[5], b[6], b[7]);
  return {testo.data(), static_cast<std::size_t>(lungo)};
}

std::string Nella(std::size_t riga) {
  return "Riga " + std::to_string(riga) + ": ";
}

struct EsitoConMotivo {
  EsitoRiga esito;
  std::string motivo;
};

std::string Unisci(std::string testo, const std::vector<std::string>& altri) {
  for (const std::string& altro : altri) testo += (testo.empty() ? "" : " – ") + altro;
  return testo;
}

// `messaggi` is what the library showed meanwhile.
EsitoConMotivo Giudica(const Resoconto& resoconto, const std::string& messaggi) {
  const Uscita uscita = Valuta(resoconto);
  if (uscita == Uscita::kInviato) return {EsitoRiga::kInviato, Unisci("", resoconto.note.erroriDirectory)};
  std::vector<std::string> dettagli = Dettagli(resoconto);
  if (!messaggi.empty()) dettagli.insert(dettagli.begin(), messaggi);
  if (uscita == Uscita::kConRiserva || resoconto.note.accettate > 0)
    return {EsitoRiga::kConRiserva, Unisci("", dettagli)};
  const std::string motivo = Unisci(Spiega(resoconto, uscita), dettagli);
  if (resoconto.note.Incerto()) return {EsitoRiga::kIncerto, motivo};
  return {uscita == Uscita::kRifiutato ? EsitoRiga::kRifiutato : EsitoRiga::kFallito, motivo};
}

struct Conteggio {
  std::size_t righe = 0;
  std::array<std::size_t, 6> esiti{};  // of this run, by EsitoRiga
  std::size_t giaInviate = 0;
  std::size_t giaConRiserva = 0;

  [[nodiscard]] std::size_t Di(EsitoRiga esito) const { return esiti[static_cast<std::size_t>(esito)]; }
  void Segna(EsitoRiga esito) { ++esiti[static_cast<std::size_t>(esito)]; }
  [[nodiscard]] std::size_t Fatte() const {
    std::size_t fatte = giaInviate;
    for (const std::size_t quante : esiti) fatte += quante;
    return fatte;
  }
  [[nodiscard]] std::size_t Inviate() const {
    return giaInviate + Di(EsitoRiga::kInviato) + Di(EsitoRiga::kConRiserva);
  }
};

class InvioLista {
 public:
  InvioLista(const RichiestaLista& richiesta, Terminale terminale)
      : richiesta_(richiesta),
        terminale_(terminale),
        righe_(richiesta.file),
        sede_(richiesta.comune),
        esiti_(richiesta.esiti, NuovaLista()) {
    Verifica();
  }

  Uscita Esegui() {
    std::optional<ErroreProgramma> guasto;
    {
      Avanzamento avanzamento(terminale_, conto_.righe);
      righe_.Ricomincia();
      RigaLista riga;
      try {
        while (!Interruzione::Richiesta() && righe_.Prossima(riga)) Tratta(riga, avanzamento);
      } catch (const ErroreProgramma& errore) {
        if (conto_.Fatte() == conto_.giaInviate) throw;
        guasto = errore;
      }
    }
    esiti_.Riordina();
    if (senzaTemporanea_) terminale_.errori << kSenzaTemporanea << "\n";
    if (guasto) terminale_.errori << "orve-mail: " << TerminalSafeLine(guasto->what()) << "\n";
    Riassumi();
    return Stato();
  }

 private:
  // If the list was changed after its rows were sent, some would be sent twice and some left out.
  void Verifica() {
    const std::vector<std::size_t> decise = esiti_.Definitive();
    auto attesa = decise.begin();
    for (RigaLista riga; righe_.Prossima(riga); ++conto_.righe) {
      if (attesa != decise.end() && *attesa < riga.riga) break;
      if (GiaDecisa(riga)) ++attesa;
    }
    if (attesa != decise.end()) Cambiata(*attesa, "non c'è più");
  }

  [[noreturn]] void Cambiata(std::size_t riga, const std::string& come) const {
    const auto esito = esiti_.Cerca(riga);
    throw ErroreProgramma(
        Uscita::kFileMancante,
        "L'elenco è cambiato: la riga " + std::to_string(riga) + " risulta " +
            std::string(Parola(esito->esito)) + " nel file " + richiesta_.esiti + ", ma in " +
            richiesta_.file + " " + come + (conto_.Fatte() == 0 ? ". Nulla è stato inviato" : "") +
            ". Ripristinare l'elenco, oppure indicare con --esito un altro file per cominciare da capo.");
  }

  // Whether the row was sent or may have been.
  [[nodiscard]] bool GiaDecisa(const RigaLista& riga) const {
    const auto prima = esiti_.Cerca(riga.riga);
    if (!prima || !Definitivo(prima->esito)) return false;
    if (prima->impronta != riga.impronta) Cambiata(riga.riga, "ora è diversa");
    return true;
  }

  void Tratta(const RigaLista& riga, Avanzamento& avanzamento) {
    if (!riga.errore.empty()) return TrattaMalformata(riga, avanzamento);
    if (GiaDecisa(riga)) {
      const EsitoRiga prima = esiti_.Cerca(riga.riga)->esito;
      if (prima != EsitoRiga::kIncerto) {
        ++conto_.giaInviate;
        if (prima == EsitoRiga::kConRiserva) ++conto_.giaConRiserva;
        return avanzamento.PassoMuto();
      }
      if (!richiesta_.ritentaIncerti) {
        conto_.Segna(EsitoRiga::kIncerto);
        return avanzamento.PassoConAvviso(
            Nella(riga.riga) + riga.destinatario +
            ": esito incerto da un invio precedente; non viene inviata di nuovo");
      }
    }
    const EsitoConMotivo fine = Invia(riga);
    conto_.Segna(fine.esito);
    std::string testo = Nella(riga.riga) + riga.destinatario + ": " + std::string(Parola(fine.esito));
    if (!fine.motivo.empty()) testo += ": " + fine.motivo;
    if (fine.esito == EsitoRiga::kInviato && fine.motivo.empty()) {
      avanzamento.Passo(testo);
    } else {
      avanzamento.PassoConAvviso(testo);
    }
  }

  void TrattaMalformata(const RigaLista& riga, Avanzamento& avanzamento) {
    const auto prima = esiti_.Cerca(riga.riga);
    if (!prima || prima->esito != EsitoRiga::kMalformata) {
      esiti_.Annota(riga.riga, "", "", EsitoRiga::kMalformata, riga.errore);
    }
    conto_.Segna(EsitoRiga::kMalformata);
    avanzamento.PassoConAvviso(Nella(riga.riga) + "malformata: " + riga.errore);
  }

  [[nodiscard]] RichiestaInvio Messaggio(const RigaLista& riga) const {
    RichiestaInvio messaggio = richiesta_.comune;
    messaggio.codice = riga.codice;
    messaggio.destinatari.clear();
    if (!riga.codice) messaggio.destinatari.push_back({riga.voce, 0});
    if (!riga.oggetto.empty()) messaggio.oggetto = riga.oggetto;
    if (!riga.corpo.empty()) messaggio.corpo = riga.corpo;
    if (!riga.allegato.empty()) {
      messaggio.allegati.insert(messaggio.allegati.begin(),
                                PreparaAllegato(riga.allegato, richiesta_.controllaAllegati,
                                                messaggio.esclusi, richiesta_.cartelleAllegati));
    }
    messaggio.lista = esiti_.Lista();
    return messaggio;
  }

  EsitoConMotivo Invia(const RigaLista& riga) {
    std::optional<RichiestaInvio> messaggio;
    try {
      messaggio = Messaggio(riga);
    } catch (const ErroreProgramma& errore) {
      esiti_.Annota(riga.riga, riga.impronta, riga.destinatario, EsitoRiga::kFallito, errore.what());
      return {EsitoRiga::kFallito, errore.what()};
    }
    // What the library shows belongs to the row, and nobody is asked: there may be hundreds of rows.
    std::istringstream nessuno;
    std::ostringstream mostrato;
    const Resoconto resoconto = Consegna(*messaggio, sede_, {nessuno, mostrato, mostrato},
                                         [&] { esiti_.Inizia(riga.riga, riga.impronta, riga.destinatario); });
    senzaTemporanea_ = senzaTemporanea_ || resoconto.note.senzaTemporanea;
    EsitoConMotivo fine = Giudica(resoconto, mostrato.str());
    Concludi(riga, fine);
    return fine;
  }

  void Concludi(const RigaLista& riga, const EsitoConMotivo& fine) try {
    esiti_.Concludi(fine.esito, fine.motivo);
  } catch (const ErroreProgramma& errore) {
    conto_.Segna(EsitoRiga::kIncerto);
    throw ErroreProgramma(errore.Stato(), Nella(riga.riga) + riga.destinatario + ": " +
                                              std::string(Parola(fine.esito)) +
                                              ", ma l'esito non si può scrivere. " + errore.what());
  }

  void Riassumi() {
    std::ostream& uscita = terminale_.uscita;
    const std::size_t rimaste = conto_.righe - std::min(conto_.righe, conto_.Fatte());
    const auto quante = [&uscita](const char* testo, std::size_t numero) {
      if (numero > 0) uscita << "  " << testo << numero << "\n";
    };
    uscita << (rimaste > 0 && Interruzione::Richiesta() ? "Interrotto. " : "") << "Righe: " << conto_.righe
           << "\n";
    quante("inviate: ", conto_.Di(EsitoRiga::kInviato) + conto_.Di(EsitoRiga::kConRiserva));
    quante("  di cui con riserva: ", conto_.Di(EsitoRiga::kConRiserva));
    quante("già inviate: ", conto_.giaInviate);
    quante("rifiutate: ", conto_.Di(EsitoRiga::kRifiutato));
    quante("fallite: ", conto_.Di(EsitoRiga::kFallito));
    quante("malformate: ", conto_.Di(EsitoRiga::kMalformata));
    quante("incerte: ", conto_.Di(EsitoRiga::kIncerto));
    quante("rimaste: ", rimaste);
    uscita << "Risultati in " << TerminalSafeLine(richiesta_.esiti) << "\n";
    uscita.flush();
  }

  [[nodiscard]] Uscita Stato() const {
    if (conto_.Fatte() < conto_.righe && Interruzione::Richiesta()) return Uscita::kInterrotto;
    if (conto_.Inviate() < conto_.righe) return Uscita::kListaIncompleta;
    const bool riserve = conto_.Di(EsitoRiga::kConRiserva) > 0 || conto_.giaConRiserva > 0;
    return riserve ? Uscita::kConRiserva : Uscita::kInviato;
  }

  const RichiestaLista& richiesta_;
  Terminale terminale_;
  bool senzaTemporanea_ = false;
  RigheLista righe_;
  SedeInvio sede_;
  EsitiLista esiti_;
  Conteggio conto_;
};

}  // namespace

Uscita InviaLista(const RichiestaLista& richiesta, Terminale terminale) {
  const Interruzione interruzione;
  return InvioLista(richiesta, terminale).Esegui();
}

}  // namespace orve::app
