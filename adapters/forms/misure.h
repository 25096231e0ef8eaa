// Twips and pixels: where a control goes on a screen of a given number of dots per inch.
#pragma once

#include <cmath>

#include "orve-mailserver/host/layout.h"

namespace orve::adapters::forms {

inline constexpr int kPuntiPerPollice = 96;  // of the pixel in which the layout tables count

struct RettangoloInPixel {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
  friend bool operator==(const RettangoloInPixel&, const RettangoloInPixel&) = default;
};

[[nodiscard]] inline int Pixel(float twip, int dpi = kPuntiPerPollice) {
  constexpr float kTwipPerPollice = 1440;
  return static_cast<int>(std::lround(twip / (kTwipPerPollice / static_cast<float>(dpi))));
}
[[nodiscard]] inline float Twip(int pixel, int dpi = kPuntiPerPollice) {
  constexpr float kTwipPerPollice = 1440;
  return static_cast<float>(pixel) * (kTwipPerPollice / static_cast<float>(dpi));
}

/// Edges that coincide in twips coincide in pixels.
[[nodiscard]] inline RettangoloInPixel InPixel(const host::Rettangolo& r, int dpi = kPuntiPerPollice) {
  const int sinistra = Pixel(r.left, dpi);
  const int alto = Pixel(r.top, dpi);
  return {sinistra, alto, Pixel(r.left + r.width, dpi) - sinistra, Pixel(r.top + r.height, dpi) - alto};
}

[[nodiscard]] inline bool DiUnaRiga(host::TipoControllo tipo) {
  using enum host::TipoControllo;
  return tipo != kFrame && tipo != kRichTextBox && tipo != kGriglia;
}

/// Where the control goes in its rectangle: a single-line one keeps its height (in twips) when the window
/// grows, centred in its place.
[[nodiscard]] inline RettangoloInPixel Posto(host::TipoControllo tipo, const host::Rettangolo& rettangolo,
                                             float altezzaRiga, int dpi = kPuntiPerPollice) {
  RettangoloInPixel posto = InPixel(rettangolo, dpi);
  const int riga = Pixel(altezzaRiga, dpi);
  if (DiUnaRiga(tipo) && posto.height > riga) {
    posto.top += (posto.height - riga) / 2;
    posto.height = riga;
  }
  return posto;
}

}  // namespace orve::adapters::forms
