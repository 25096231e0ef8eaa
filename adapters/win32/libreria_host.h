// The objects of the host application's libraries, with the members that the library uses.
#pragma once

#include <memory>

#include "orve-mailserver/host/cifratore_password.h"
#include "orve-mailserver/host/formatori.h"
#include "orve-mailserver/host/messaggi.h"
#include "orve-mailserver/host/oggetti_file.h"
#include "orve-mailserver/host/parametri.h"
#include "orve-mailserver/host/registro_invio.h"
#include "orve-mailserver/host/risolutore_percorsi.h"
#include "win32/dispatch.h"

namespace orve::adapters::win32 {

/// The wrapper for an object of each kind; absent for an absent one.
[[nodiscard]] std::shared_ptr<host::Messaggi> AvvolgiMessaggi(Dispatch messaggi);
[[nodiscard]] std::shared_ptr<host::RegistroInvio> AvvolgiRegistroInvio(Dispatch registro);
[[nodiscard]] std::shared_ptr<host::FormatoData> AvvolgiFormatoData(Dispatch formato);
[[nodiscard]] std::shared_ptr<host::FormatoNumero> AvvolgiFormatoNumero(Dispatch formato);
[[nodiscard]] std::shared_ptr<host::RisolutorePercorsi> AvvolgiRisolutorePercorsi(Dispatch risolutore);
[[nodiscard]] std::shared_ptr<host::CifratorePassword> AvvolgiCifratorePassword(Dispatch cifratore);
[[nodiscard]] std::shared_ptr<host::CLSFW_Parametri> AvvolgiParametri(Dispatch parametri);
[[nodiscard]] std::shared_ptr<host::OggettoFile> AvvolgiOggettoFile(Dispatch file);
[[nodiscard]] std::shared_ptr<host::SelettoreFile> AvvolgiSelettoreFile(Dispatch selettore);
[[nodiscard]] std::shared_ptr<host::CollezioneFile> AvvolgiCollezioneFile(Dispatch collezione);

}  // namespace orve::adapters::win32
