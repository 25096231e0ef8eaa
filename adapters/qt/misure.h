// Between the library and Qt: twips and pixels, UTF-8 and QString.
#pragma once

#include <QRect>
#include <QString>
#include <cmath>
#include <string>
#include <string_view>

#include "host/layout.h"

namespace orve::adapters::qt {

inline constexpr float kTwipPerPixel = 15;  // of the device-independent pixel, 96 to an inch

[[nodiscard]] inline int Pixel(float twip) {
  return static_cast<int>(std::lround(twip / kTwipPerPixel));
}
[[nodiscard]] inline float Twip(int pixel) {
  return static_cast<float>(pixel) * kTwipPerPixel;
}

/// Edges that coincide in twips coincide in pixels.
[[nodiscard]] inline QRect RettangoloInPixel(const host::Rettangolo& r) {
  const int sinistra = Pixel(r.left);
  const int alto = Pixel(r.top);
  return {sinistra, alto, Pixel(r.left + r.width) - sinistra, Pixel(r.top + r.height) - alto};
}

[[nodiscard]] inline QString Testo(std::string_view testo) {
  return QString::fromUtf8(testo.data(), static_cast<qsizetype>(testo.size()));
}
[[nodiscard]] inline std::string Utf8(const QString& testo) {
  const QByteArray byte = testo.toUtf8();
  return {byte.constData(), static_cast<std::size_t>(byte.size())};
}

}  // namespace orve::adapters::qt
