// The system's debug output of this process, as a debug viewer reads it: through the page that it shares.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace orve::prova {

/// Collects the lines that this process writes from its creation on. One at a time in the whole system.
class UscitaDebug {
 public:
  UscitaDebug() {
    EXPECT_NE(pagina_, nullptr);
    lettore_ = std::thread([this] { Leggi(); });
  }
  UscitaDebug(const UscitaDebug&) = delete;
  UscitaDebug& operator=(const UscitaDebug&) = delete;
  UscitaDebug(UscitaDebug&&) = delete;
  UscitaDebug& operator=(UscitaDebug&&) = delete;
  ~UscitaDebug() {
    Ferma();
    UnmapViewOfFile(pagina_);
    for (HANDLE maniglia : {memoria_, fine_, arrivato_, pronto_}) CloseHandle(maniglia);
  }

  /// Stops collecting; everything written before is included.
  [[nodiscard]] std::vector<std::string> Righe() {
    Ferma();
    return std::move(righe_);
  }

 private:
  struct Pagina {
    DWORD processo;
    char testo[4096 - sizeof(DWORD)];
  };

  // What has arrived comes before the end, since both may be waiting.
  void Leggi() {
    const HANDLE attesi[] = {arrivato_, fine_};
    while (pagina_ != nullptr && WaitForMultipleObjects(2, attesi, FALSE, INFINITE) == WAIT_OBJECT_0) {
      if (pagina_->processo == GetCurrentProcessId()) righe_.emplace_back(pagina_->testo);
      SetEvent(pronto_);
    }
  }
  void Ferma() {
    SetEvent(fine_);
    if (lettore_.joinable()) lettore_.join();
  }

  HANDLE pronto_ = CreateEventW(nullptr, FALSE, TRUE, L"DBWIN_BUFFER_READY");
  HANDLE arrivato_ = CreateEventW(nullptr, FALSE, FALSE, L"DBWIN_DATA_READY");
  HANDLE fine_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE memoria_ =
      CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(Pagina), L"DBWIN_BUFFER");
  const Pagina* pagina_ =
      static_cast<const Pagina*>(MapViewOfFile(memoria_, FILE_MAP_READ, 0, 0, sizeof(Pagina)));
  std::vector<std::string> righe_;
  std::thread lettore_;
};

}  // namespace orve::prova
