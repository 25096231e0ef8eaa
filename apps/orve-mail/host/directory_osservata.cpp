#include "orve-mail/host/directory_osservata.h"

#include <utility>

#include "ldap/failure.h"
#include "ldap/ldap_directory.h"
#include "posix/directory_assente.h"

namespace orve::app {

namespace {

template <class Passo>
auto Annotando(const OsservazioniPtr& note, Passo&& passo) {
  try {
    return std::forward<Passo>(passo)();
  } catch (const adapters::ldap::LeftAlone&) {
    throw;
  } catch (const host::Errore& errore) {
    note->erroriDirectory.push_back(errore.Descrizione());
    throw;
  }
}

class ConnessioneDirectoryOsservata : public host::DirectoryConnection {
 public:
  ConnessioneDirectoryOsservata(std::shared_ptr<host::DirectoryConnection> vera, OsservazioniPtr note)
      : vera_(std::move(vera)), note_(std::move(note)) {}
  void Open(const std::string& origine) override {
    Annotando(note_, [&] { vera_->Open(origine); });
  }
  std::shared_ptr<host::RecordSet> Execute(const std::string& interrogazione) override {
    return Annotando(note_, [&] { return vera_->Execute(interrogazione); });
  }
  std::int32_t State() override { return vera_->State(); }
  void Close() override { vera_->Close(); }

 private:
  std::shared_ptr<host::DirectoryConnection> vera_;
  OsservazioniPtr note_;
};

class DirectoryOsservata : public host::Directory {
 public:
  DirectoryOsservata(std::shared_ptr<host::Directory> vera, OsservazioniPtr note)
      : vera_(std::move(vera)), note_(std::move(note)) {}
  std::shared_ptr<host::DirectoryConnection> CreaConnessione() override {
    return std::make_shared<ConnessioneDirectoryOsservata>(vera_->CreaConnessione(), note_);
  }
  std::shared_ptr<host::RecordSet> CreaRecordSet() override { return vera_->CreaRecordSet(); }
  std::shared_ptr<host::DirectoryObject> ApriOggetto(const std::string& percorso) override {
    return Annotando(note_, [&] { return vera_->ApriOggetto(percorso); });
  }

 private:
  std::shared_ptr<host::Directory> vera_;
  OsservazioniPtr note_;
};

}  // namespace

std::shared_ptr<host::Directory> CreaDirectory(const std::optional<adapters::ldap::LdapOptions>& opzioni) {
  return opzioni ? std::make_shared<adapters::ldap::LdapDirectory>(*opzioni) : nullptr;
}

std::unique_ptr<host::Directory> OsservaDirectory(std::shared_ptr<host::Directory> vera,
                                                  OsservazioniPtr note) {
  if (!vera) return std::make_unique<adapters::posix::DirectoryAssente>();
  return std::make_unique<DirectoryOsservata>(std::move(vera), std::move(note));
}

}  // namespace orve::app
