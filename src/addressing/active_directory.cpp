#include "addressing/active_directory.h"

#include <array>
#include <memory>
#include <utility>

#include "orve-mailserver/host/connection.h"
#include "orve-mailserver/host/errore.h"
#include "service/guards.h"

namespace orve::MDL_ACTIVEDIRECTORY {

namespace {

using host::Richiesto;

constexpr std::size_t kLunghezzaBuffer = 100;

constexpr std::array<std::pair<const char*, std::string DatiUtenteDirectory::*>, 8> kAttributi = {{
    {"FirstName", &DatiUtenteDirectory::FirstName},
    {"LastName", &DatiUtenteDirectory::LastName},
    {"EmployeeID", &DatiUtenteDirectory::EmployeeID},
    {"Title", &DatiUtenteDirectory::Title},
    {"Division", &DatiUtenteDirectory::Division},
    {"TelephoneNumber", &DatiUtenteDirectory::TelephoneNumber},
    {"FaxNumber", &DatiUtenteDirectory::FaxNumber},
    {"EmailAddress", &DatiUtenteDirectory::EmailAddress},
}};

// What must be closed and released, in this order, however far the look-up got.
struct Interrogazione {
  std::shared_ptr<host::RecordSet> risultato;
  std::shared_ptr<host::DirectoryConnection> connessione;
  std::shared_ptr<host::DirectoryObject> radice;
  std::shared_ptr<host::DirectoryObject> dominio;
  std::shared_ptr<host::DirectoryObject> persona;
};

void LeggiAttributi(host::DirectoryObject& persona, DatiUtenteDirectory& dati) {
  for (const auto& [nome, campo] : kAttributi) {
    IgnoraErrori([&, nome = nome, campo = campo] { dati.*campo = persona.Membro(nome).ToText(); });
  }
}

void Cerca(host::Directory& directory, const std::string& UserName, Interrogazione& aperta,
           DatiUtenteDirectory& dati) {
  aperta.risultato = directory.CreaRecordSet();
  aperta.radice = directory.ApriOggetto("LDAP://rootDSE");
  const std::string contesto = Richiesto(aperta.radice).Get("defaultNamingContext").ToText();
  aperta.dominio = directory.ApriOggetto("LDAP://" + contesto);
  const std::string base = "<" + Richiesto(aperta.dominio).ADsPath() + ">";
  const std::string filtro = "(&(objectCategory=person)(objectClass=user)(samaccountName=" + UserName + "))";
  const std::string interrogazione = base + ";" + filtro + ";adsPath;subTree";
  Richiesto(aperta.connessione).Open("Data Source=Active Directory Provider;Provider=ADsDSOObject");
  aperta.risultato = aperta.connessione->Execute(interrogazione);
  if (Richiesto(aperta.risultato).Eof()) return;
  aperta.persona = directory.ApriOggetto(host::Leggi(*aperta.risultato, "adsPath").ToText());
  LeggiAttributi(Richiesto(aperta.persona), dati);
}

void Chiudi(Interrogazione& aperta) {
  IgnoraErrori([&] {
    if (aperta.risultato && aperta.risultato->State() != 0) aperta.risultato->Close();
  });
  aperta.risultato.reset();
  IgnoraErrori([&] {
    if (aperta.connessione && aperta.connessione->State() != 0) aperta.connessione->Close();
  });
  aperta.connessione.reset();
  aperta.radice.reset();
  aperta.dominio.reset();
  aperta.persona.reset();
}

}  // namespace

std::string GetNomeUtenteRete(host::Rete& rete) {
  std::string buffer(kLunghezzaBuffer, ' ');
  return rete.WNetGetUserA(buffer) == 0 ? TagliaAlNul(buffer) : std::string();
}

std::string TagliaAlNul(const std::string& testo) {
  return testo.substr(0, testo.find('\0'));
}

bool GetDatiUtenteDirectory(host::Directory& directory, const std::string& UserName,
                            DatiUtenteDirectory& dati, const SuErrore& fallita) noexcept {
  Interrogazione aperta;
  bool arrivataInFondo = false;
  IgnoraErrori([&] {
    aperta.connessione = directory.CreaConnessione();  // fails where there is no directory
    try {
      Cerca(directory, UserName, aperta, dati);
    } catch (const host::Errore& errore) {
      if (fallita) fallita(errore);
      throw;
    } catch (...) {
      if (fallita) fallita(host::ErroreCorrente());
      throw;
    }
    arrivataInFondo = true;
  });
  Chiudi(aperta);
  return arrivataInFondo;
}

}  // namespace orve::MDL_ACTIVEDIRECTORY
