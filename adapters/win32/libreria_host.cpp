#include "win32/libreria_host.h"

#include <string>

namespace orve::adapters::win32 {

namespace {

class MessaggiCom final : public Involucro<host::Messaggi> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::string TitoloFinestra(const std::string& testo) override {
    return Oggetto().Call("TitoloFinestra", Argomento::PerRiferimento(host::Variant(testo))).ToText();
  }
  std::int32_t MostraMsg(const std::string& testo, std::int32_t stile, const std::string& titolo,
                         const std::shared_ptr<host::Oggetto>& proprietario) override {
    // One of the library's own windows has no automation object: its message then has no owner.
    return Oggetto()
        .Call("MostraMsg", Argomento::PerRiferimento(host::Variant(testo)),
              Argomento::PerRiferimento(host::Variant(stile)),
              Argomento::PerRiferimento(host::Variant(titolo)),
              Argomento::PerRiferimento(VariantCom::DiOggetto(ComDi(proprietario))))
        .ToInt32();
  }
};

// A text, or automation's null text for an absent one.
Argomento Testo(const host::TestoOAssente& testo) {
  return testo ? Argomento(*testo) : Argomento(VariantCom::TestoNullo());
}

class RegistroInvioCom final : public Involucro<host::RegistroInvio> {
 public:
  using Involucro::Involucro;
  void Connessione(const std::shared_ptr<host::Connection>& connessione) override {
    Oggetto().PutRef("Connessione", ComDaConsegnare(connessione));
  }
  void IDvoce(const std::string& voce) override { Oggetto().Put("IDvoce", voce); }
  void UObject(const std::string& oggetto) override { Oggetto().Put("UObject", oggetto); }
  void TipoCanale(std::int32_t tipo) override { Oggetto().Put("TipoCanale", tipo); }
  void TitoloStampa(const std::string& titolo) override { Oggetto().Put("TitoloStampa", titolo); }
  void Ditta(const std::string& ditta) override { Oggetto().Put("Ditta", ditta); }
  void NumReg(const std::string& numero) override { Oggetto().Put("NumReg", numero); }
  void TipoDoc(const std::string& tipo) override { Oggetto().Put("TipoDoc", tipo); }
  void NumDoc(const std::string& numero) override { Oggetto().Put("NumDoc", numero); }
  void SezDoc(const std::string& sezione) override { Oggetto().Put("SezDoc", sezione); }
  void RegistraInvio(const host::TestoOAssente& nome, const host::TestoOAssente& ditta,
                     const host::TestoOAssente& indirizzo, const host::TestoOAssente& allegato,
                     const host::TestoOAssente& esito, const host::TestoOAssente& oggetto,
                     const host::TestoOAssente& corpo) override {
    Oggetto().Run("RegistraInvio", Testo(nome), Testo(ditta), Testo(indirizzo), Testo(allegato), Testo(esito),
                  Testo(oggetto), Testo(corpo));
  }
  void UtenteApplicazione(std::int32_t id) override { Oggetto().Put("UtenteApplicazione", id); }
  void CanaleInvio(float canale) override { Oggetto().Put("CanaleInvio", canale); }
  void MittenteInvio(const std::string& mittente) override { Oggetto().Put("MittenteInvio", mittente); }
  void GuidLista(const std::string& guid) override { Oggetto().Put("GuidLista", guid); }
  void EsitoInvio(std::int32_t esito) override { Oggetto().Put("EsitoInvio", esito); }
  void TipoLista(std::int32_t tipo) override { Oggetto().Put("TipoLista", tipo); }
};

class FormatoDataCom final : public Involucro<host::FormatoData> {
 public:
  using Involucro::Involucro;
  void Data(const std::string& testo) override { Oggetto().Put("Data", testo); }
  [[nodiscard]] std::int32_t Stato() const override { return Oggetto().Get("Stato").ToInt32(); }
  [[nodiscard]] std::string DataDB() const override { return Oggetto().Get("DataDB").ToText(); }
};

class FormatoNumeroCom final : public Involucro<host::FormatoNumero> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] host::Variant NumeroDB(const host::Variant& valore) override {
    return Oggetto().Call("NumeroDB", valore);
  }
};

class RisolutorePercorsiCom final : public Involucro<host::RisolutorePercorsi> {
 public:
  using Involucro::Involucro;
  void ChiudiPercorsi() override { Oggetto().Run("ChiudiPercorsi"); }
  void ImpostaTipoPercorso(std::int32_t tipo, const std::string& testo) override {
    Oggetto().Run("ImpostaTipoPercorso", tipo, testo);
  }
  [[nodiscard]] std::string Percorso() const override { return Oggetto().Get("Percorso").ToText(); }
  void ImpostaPercorso(const std::string& percorso, bool indicatore) override {
    Oggetto().Run("ImpostaPercorso", percorso, indicatore);
  }
};

class CifratorePasswordCom final : public Involucro<host::CifratorePassword> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::string Cripta(const std::string& testo) override {
    return Oggetto().Call("Cripta", Argomento::PerRiferimento(host::Variant(testo))).ToText();
  }
  [[nodiscard]] std::string Decripta(const std::string& testo) override {
    return Oggetto().Call("Decripta", Argomento::PerRiferimento(host::Variant(testo))).ToText();
  }
};

class ParametriCom final : public Involucro<host::CLSFW_Parametri> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] host::Variant GetParametriCorpoMail() override {
    return Oggetto().Call("GetParametriCorpoMail");
  }
};

class OggettoFileCom final : public Involucro<host::OggettoFile> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::string Nome() override { return Oggetto().Get("Nome").ToText(); }
  [[nodiscard]] bool Esiste() override { return Oggetto().Get("Esiste").ToBoolean(); }
  void Chiudi() override { Oggetto().Run("Chiudi"); }
  void CopiaIn(const std::shared_ptr<host::OggettoFile>& altro, std::int32_t opzioni) override {
    Oggetto().Run("CopiaIn", ComDaConsegnare(altro), opzioni);
  }
  void Crea(std::int32_t tipo, const std::string& nome, const std::string& testo,
            std::int32_t opzioni) override {
    Oggetto().Run("Crea", tipo, nome, testo, opzioni);
  }
  [[nodiscard]] std::string Percorso() override { return Oggetto().Get("Percorso").ToText(); }
  [[nodiscard]] std::int32_t Posizione() override { return Oggetto().Get("Posizione").ToInt32(); }
  void Apri(const std::string& nome, const std::string& cartella, std::int32_t opzioni) override {
    Oggetto().Run("Apri", nome, cartella, opzioni);
  }
  void ApriPercorso(const std::string& cartella, const std::string& nome, const std::string& testo,
                    std::int32_t opzioni) override {
    Oggetto().Run("ApriPercorso", cartella, nome, testo, opzioni);
  }
};

class SelettoreFileCom final : public Involucro<host::SelettoreFile> {
 public:
  using Involucro::Involucro;
  void Titolo(const std::string& titolo) override { Oggetto().Put("Titolo", titolo); }
  std::int32_t Mostra(std::int32_t opzioni) override { return Oggetto().Call("Mostra", opzioni).ToInt32(); }
  [[nodiscard]] std::shared_ptr<host::OggettoFile> FileScelto() override {
    return AvvolgiOggettoFile(Oggetto().LeggiOggetto("FileScelto"));
  }
  void Chiudi() override { Oggetto().Run("Chiudi"); }
};

class CollezioneFileCom final : public Involucro<host::CollezioneFile> {
 public:
  using Involucro::Involucro;
  [[nodiscard]] std::shared_ptr<host::OggettoFile> Item(std::int32_t posizione) override {
    return AvvolgiOggettoFile(Oggetto().ChiamaOggetto("Item", posizione));
  }
  [[nodiscard]] std::int32_t Count() override { return Oggetto().Get("Count").ToInt32(); }
  void Clear() override { Oggetto().Run("Clear"); }
  void Add(const std::shared_ptr<host::OggettoFile>& file) override {
    Oggetto().Run("Add", ComDaConsegnare(file));
  }
  void Remove(std::int32_t posizione) override { Oggetto().Run("Remove", posizione); }
};

}  // namespace

std::shared_ptr<host::Messaggi> AvvolgiMessaggi(Dispatch messaggi) {
  return Avvolgi<MessaggiCom>(std::move(messaggi));
}

std::shared_ptr<host::RegistroInvio> AvvolgiRegistroInvio(Dispatch registro) {
  return Avvolgi<RegistroInvioCom>(std::move(registro));
}

std::shared_ptr<host::FormatoData> AvvolgiFormatoData(Dispatch formato) {
  return Avvolgi<FormatoDataCom>(std::move(formato));
}

std::shared_ptr<host::FormatoNumero> AvvolgiFormatoNumero(Dispatch formato) {
  return Avvolgi<FormatoNumeroCom>(std::move(formato));
}

std::shared_ptr<host::RisolutorePercorsi> AvvolgiRisolutorePercorsi(Dispatch risolutore) {
  return Avvolgi<RisolutorePercorsiCom>(std::move(risolutore));
}

std::shared_ptr<host::CifratorePassword> AvvolgiCifratorePassword(Dispatch cifratore) {
  return Avvolgi<CifratorePasswordCom>(std::move(cifratore));
}

std::shared_ptr<host::CLSFW_Parametri> AvvolgiParametri(Dispatch parametri) {
  return Avvolgi<ParametriCom>(std::move(parametri));
}

std::shared_ptr<host::OggettoFile> AvvolgiOggettoFile(Dispatch file) {
  return Avvolgi<OggettoFileCom>(std::move(file));
}

std::shared_ptr<host::SelettoreFile> AvvolgiSelettoreFile(Dispatch selettore) {
  return Avvolgi<SelettoreFileCom>(std::move(selettore));
}

std::shared_ptr<host::CollezioneFile> AvvolgiCollezioneFile(Dispatch collezione) {
  return Avvolgi<CollezioneFileCom>(std::move(collezione));
}

}  // namespace orve::adapters::win32
