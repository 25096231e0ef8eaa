// The outside objects in use.
#pragma once

#include <memory>
#include <string>

#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/interfaccia_host.h"
#include "orve-mailserver/host/manager_rubrica.h"
#include "orve-mailserver/host/variant.h"

namespace orve {

struct Oggetti {
  std::shared_ptr<host::Ambiente> ambiente;  // never absent
  std::shared_ptr<host::Messaggi> ObjMessaggi;
  std::shared_ptr<host::RegistroInvio> ObjRegistroInvio;
  std::shared_ptr<host::FormatoData> ObjFormatoData;
  std::shared_ptr<host::FormatoNumero> ObjFormatoNumero;
  std::shared_ptr<host::OutlookApplication> objOutlookApp;
  std::shared_ptr<host::OutlookMailItem> objOutlookItem;
  std::shared_ptr<host::OutlookAttachments> objOutlookAllegati;
  std::shared_ptr<host::MAPISession> objMapiSession;
  std::shared_ptr<host::MAPIMessages> objMapiMessages;
  host::Variant MapiSessionID;
  std::shared_ptr<host::ManagerRubrica> ManagerRubrica;
  std::shared_ptr<host::InterfacciaHost> ActiveInterface;
  // The send log, while a line is written.
  std::shared_ptr<host::FileSystem> objFileSystem;
  std::shared_ptr<host::TextStream> objTextStream;
  std::string PercorsoLog;
  std::string CartellaLog;
};

}  // namespace orve
