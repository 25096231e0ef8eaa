// Between the library and Qt: twips and pixels, UTF-8 and QString.
#pragma once

#include <QRect>
#include <QString>
#include <string>
#include <string_view>

#include "forms/misure.h"
#include "forms/testo_visibile.h"
#include "orve-mailserver/host/layout.h"

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
[[nodiscard]] inline QString TestoVisibile(std::string_view testo) {
  return Testo(forms::TestoVisibile(testo));
}
[[nodiscard]] inline std::string Utf8(const QString& testo) {
  const QByteArray byte = testo.toUtf8();
  return {byte.constData(), static_cast<std::size_t>(byte.size())};
}

}  // namespace orve::adapters::qt
