// "ORVE_ClsStd.CLSFW_Parametri": the special fields that the host application offers for use in texts.
#pragma once

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// Asked once for each window that lists the fields.
class ORVE_API CLSFW_Parametri : public Oggetto {
 public:
  /// The fields of a mail's body: an array of rows, each an array of texts with the caption in column 0 and
  /// the key in column 1. The first character of a key is a marker of the table; the rest is the
  /// placeholder's word.
  [[nodiscard]] virtual Variant GetParametriCorpoMail() = 0;
};

}  // namespace orve::host
