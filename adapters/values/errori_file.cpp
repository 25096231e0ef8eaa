#include "values/errori_file.h"

#include <string>

namespace orve::adapters::values {

namespace {

const char* Descrizione(NumeroErroreFile numero) {
  switch (numero) {
    case kNomeFileNonValido:
      return "Nome di file non valido";
    case kFileNonTrovato:
      return "File non trovato";
    case kErroreDispositivo:
      return "Errore di I/O del dispositivo";
    case kFileGiaEsistente:
      return "Il file esiste già";
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

}  // namespace

host::Errore ErroreFile(NumeroErroreFile numero, std::string_view percorso) {
  return {numero, "FileSystem", std::string(Descrizione(numero)).append(": ").append(percorso)};
}

}  // namespace orve::adapters::values
