#include "posix/errori.h"

#include <cerrno>

namespace orve::adapters::posix {

namespace {

values::NumeroErroreFile Numero(int codice) {
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

host::Errore ErroreDiSistema(int codice, std::string_view percorso) {
  return ErroreFile(Numero(codice), percorso);
}

}  // namespace orve::adapters::posix
