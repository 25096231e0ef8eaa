#include "posix/directory_assente.h"

namespace orve::adapters::posix {

namespace {

[[noreturn]] void NessunaDirectory() {
  throw host::Errore(host::kOggettoNonCreabile, "Directory",
                     "Su questa macchina non c'è una directory aziendale");
}

}  // namespace

std::shared_ptr<host::DirectoryConnection> DirectoryAssente::CreaConnessione() {
  NessunaDirectory();
}

std::shared_ptr<host::RecordSet> DirectoryAssente::CreaRecordSet() {
  NessunaDirectory();
}

std::shared_ptr<host::DirectoryObject> DirectoryAssente::ApriOggetto(const std::string& /*percorso*/) {
  NessunaDirectory();
}

}  // namespace orve::adapters::posix
