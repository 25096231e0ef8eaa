#include "qt/attesa.h"

#include <QCursor>
#include <QGuiApplication>

namespace orve::adapters::qt {

PuntatoreInAttesa::PuntatoreInAttesa() {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

PuntatoreInAttesa::~PuntatoreInAttesa() {
  QGuiApplication::restoreOverrideCursor();
}

PuntatoreLibero::PuntatoreLibero() : cambiato_(QGuiApplication::overrideCursor() != nullptr) {
  if (cambiato_) QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
}

PuntatoreLibero::~PuntatoreLibero() {
  if (cambiato_) QGuiApplication::restoreOverrideCursor();
}

}  // namespace orve::adapters::qt
