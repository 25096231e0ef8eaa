#include "posix/errori.h"

#include <cerrno>
#include <string>

namespace orve::adapters::posix {

namespace {

const char* Descrizione(NumeroErroreFile numero) {
  switch (numero) {
    case kNomeFileNonValido:
      return "Nome di file non valido";
    case kFileNonTrovato:
      return "File non trovato";
    case kErroreDispositivo:
      return "Errore di I/O del dispositivo";
    case kDiscoPieno:
      return "Disco pieno";
    case kTroppiFile:
      return "Troppi file aperti";
    case kPermessoNegato:
      return "Autorizzazione negata";
    case kPercorsoNonTrovato:
      return "Percorso non trovato";
  }
  return "Errore";
}

NumeroErroreFile Numero(int codice) {
  switch (codice) {
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
      return kPercorsoNonTrovato;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
      return kPermessoNegato;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return kDiscoPieno;
    case EMFILE:
    case ENFILE:
      return kTroppiFile;
    case ENAMETOOLONG:
    case EINVAL:
      return kNomeFileNonValido;
    default:
      return kErroreDispositivo;
  }
}

}  // namespace

host::Errore ErroreFile(NumeroErroreFile numero, std::string_view percorso) {
  return {numero, "FileSystem", std::string(Descrizione(numero)).append(": ").append(percorso)};
}

host::Errore ErroreDiSistema(int codice, std::string_view percorso) {
  return ErroreFile(Numero(codice), percorso);
}

}  // namespace orve::adapters::posix
