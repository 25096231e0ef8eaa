#include "mapi/failure.h"

#include <sysexits.h>

#include "mime/attachment.h"
#include "orve-mailserver/host/errore.h"

namespace orve::adapters::mapi {

namespace {

std::int32_t NumberOf(std::int32_t errore) {
  switch (errore) {
    case mime::kFileNonTrovato:
      return kAttachmentNotFound;
    case mime::kAutorizzazioneNegata:
    case mime::kErroreAccessoFile:
      return kAttachmentOpenFailure;
    case host::kArgomentoNonValido:
      return kInvalidRecipients;
    case host::kMemoriaInsufficiente:
      return kInsufficientMemory;
    default:
      return kFailure;
  }
}

}  // namespace

MapiFailure CurrentFailure() {
  try {
    throw;
  } catch (const MapiFailure& failure) {
    return failure;
  } catch (...) {
    const host::Errore errore = host::ErroreCorrente();
    return {NumberOf(errore.Numero()), errore.Descrizione()};
  }
}

std::int32_t NumberOfExitStatus(int status) {
  switch (status) {
    case EX_DATAERR:
      return kInvalidMessage;
    case EX_NOUSER:
    case EX_NOHOST:
      return kUnknownRecipient;
    case EX_CANTCREAT:
      return kDiskFull;
    case EX_TEMPFAIL:
    case EX_PROTOCOL:
      return kNetworkFailure;
    case EX_NOPERM:
      return kAccessDenied;
    case EX_CONFIG:
      return kLoginFailure;
    default:
      return kFailure;
  }
}

}  // namespace orve::adapters::mapi
