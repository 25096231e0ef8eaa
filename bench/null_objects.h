// Outside objects that do nothing, so that what is measured is the library's own work. They answer from
// memory with what a send needs to run to completion, and they count what they were asked for, so that a
// benchmark can tell a send from a refusal.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "orve-mailserver/host/ambiente.h"
#include "orve-mailserver/host/connection.h"

namespace orve::bench {

/// What has reached the outside.
struct Counts {
  std::size_t messages = 0;  // SendMail of the SMTP component
  std::size_t lines = 0;     // RegistraInvio of the register object
  std::size_t events = 0;    // statements that activate a management event
};

/// The directory knows nobody. The machine has no Outlook and no MAPI: these raise 429.
class NullAmbiente : public host::Ambiente {
 public:
  using SmtpFactory = std::function<std::shared_ptr<host::ComponenteSmtp>()>;

  NullAmbiente();
  ~NullAmbiente() override;

  /// The SMTP component of the sends to come; without one it does nothing and reports success.
  void UseSmtp(SmtpFactory factory) { smtpFactory_ = std::move(factory); }
  /// One row for every statement, with the columns of the sample company, account and customer.
  [[nodiscard]] std::shared_ptr<host::Connection> Database() const;
  [[nodiscard]] Counts& Counted() { return *counts_; }

  std::shared_ptr<host::Messaggi> CreaMessaggi() override;
  std::shared_ptr<host::FormatoData> CreaFormatoData() override;
  std::shared_ptr<host::FormatoNumero> CreaFormatoNumero() override;
  std::shared_ptr<host::RegistroInvio> CreaRegistroInvio() override;
  std::shared_ptr<host::RisolutorePercorsi> CreaRisolutorePercorsi() override;
  std::shared_ptr<host::CifratorePassword> CreaCifratorePassword() override;
  std::shared_ptr<host::ComponenteSmtp> CreaComponenteSmtp() override;
  std::shared_ptr<host::OutlookApplication> CreaOutlook() override;
  std::shared_ptr<host::MAPISession> CreaMAPISession() override;
  std::shared_ptr<host::MAPIMessages> CreaMAPIMessages() override;
  std::shared_ptr<host::Mapi32> CreaMapi32() override;
  std::shared_ptr<host::FileSystem> CreaFileSystem() override;
  host::Orologio& OrologioDiSistema() override;
  host::DebugOutput& UscitaDiDebug() override;
  host::GeneratoreGuid& Identificatori() override;
  host::Environment& VariabiliDiAmbiente() override;
  host::Rete& ReteDiSistema() override;
  host::Directory& DirectoryAziendale() override;

 private:
  struct Platform;
  std::shared_ptr<Counts> counts_ = std::make_shared<Counts>();
  SmtpFactory smtpFactory_;
  std::unique_ptr<Platform> platform_;
  std::shared_ptr<host::Connection> database_;
};

}  // namespace orve::bench
