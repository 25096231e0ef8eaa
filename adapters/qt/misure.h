// Between the library and Qt: twips and pixels, UTF-8 and QString.
#pragma once

#include <QRect>
#include <QString>
#include <optional>
#include <string>
#include <string_view>

#include "forms/misure.h"
#include "host/layout.h"
#include "text/unseen.h"

namespace orve::adapters::qt {

// Qt's pixels are independent of the screen: always 96 to an inch.
[[nodiscard]] inline int Pixel(float twip) {
  return forms::Pixel(twip);
}
[[nodiscard]] inline float Twip(int pixel) {
  return forms::Twip(pixel);
}
[[nodiscard]] inline QRect RettangoloInPixel(const host::Rettangolo& r) {
  const auto pixel = forms::InPixel(r);
  return {pixel.left, pixel.top, pixel.width, pixel.height};
}

[[nodiscard]] inline QString Testo(std::string_view testo) {
  return QString::fromUtf8(testo.data(), static_cast<qsizetype>(testo.size()));
}
/// Somebody else's text as a person may see it: what would turn it round or hide a part of it stands there as
/// an escape.
[[nodiscard]] inline QString TestoVisibile(std::string_view testo) {
  return Testo(text::ReplaceUnseen(testo, [](char32_t codice, text::Unseen) -> std::optional<std::string> {
    const bool spazio = codice == '\t' || codice == '\r' || codice == '\n';
    return spazio ? std::nullopt : std::optional(text::Escaped(codice));
  }));
}
[[nodiscard]] inline std::string Utf8(const QString& testo) {
  const QByteArray byte = testo.toUtf8();
  return {byte.constData(), static_cast<std::size_t>(byte.size())};
}

}  // namespace orve::adapters::qt
