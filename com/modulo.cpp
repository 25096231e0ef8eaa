#include "modulo.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

#include "errori.h"

// The linker's name of the module's first byte, whose address is the module's handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;  // NOLINT(bugprone-reserved-identifier): the linker's name

namespace orve::com {

namespace {

struct OrdineGuid {
  bool operator()(const GUID& a, const GUID& b) const { return std::memcmp(&a, &b, sizeof(GUID)) < 0; }
};

struct Oggetto {
  IUnknown* identita;
  Interno* interno;
};

struct Modulo {
  std::atomic<long> presenze{0};
  std::mutex chiave;
  std::map<GUID, std::shared_ptr<const DescrizioneTipo>, OrdineGuid> descrizioni;
  std::map<const void*, Oggetto> oggetti;  // by the object of the library
};

// Never destroyed: at the end of a process objects may outlive the DLL's own statics.
Modulo& ModuloUnico() {
  static auto& modulo = *new Modulo;
  return modulo;
}

}  // namespace

Presenza::Presenza() noexcept {
  ++ModuloUnico().presenze;
}

Presenza::~Presenza() {
  Modulo& modulo = ModuloUnico();
  if (--modulo.presenze > 0) return;
  decltype(modulo.descrizioni) daLasciare;
  const std::lock_guard serratura(modulo.chiave);
  if (modulo.presenze == 0) daLasciare.swap(modulo.descrizioni);
}

bool ScaricabileOra() noexcept {
  return ModuloUnico().presenze == 0;
}

std::filesystem::path PercorsoDelModulo() {
  std::wstring percorso(MAX_PATH, L'\0');
  for (;;) {
    const DWORD scritti = GetModuleFileNameW(reinterpret_cast<HMODULE>(&__ImageBase), percorso.data(),
                                             static_cast<DWORD>(percorso.size()));
    if (scritti == 0) Verifica(HRESULT_FROM_WIN32(GetLastError()));
    if (scritti < percorso.size()) {
      percorso.resize(scritti);
      return percorso;
    }
    percorso.resize(percorso.size() * 2);
  }
}

adapters::win32::ComPtr<ITypeLib> LibreriaDeiTipi() {
  adapters::win32::ComPtr<ITypeLib> libreria;
  Verifica(LoadTypeLibEx(PercorsoDelModulo().c_str(), REGKIND_NONE, libreria.Uscita()));
  return libreria;
}

std::shared_ptr<const DescrizioneTipo> DescrizioneDi(REFIID interfaccia) {
  Modulo& modulo = ModuloUnico();
  const std::lock_guard serratura(modulo.chiave);
  auto& descrizione = modulo.descrizioni[interfaccia];
  if (!descrizione) {
    adapters::win32::ComPtr<ITypeInfo> tipo;
    Verifica(LibreriaDeiTipi()->GetTypeInfoOfGuid(interfaccia, tipo.Uscita()));
    descrizione = std::make_shared<DescrizioneTipo>(std::move(tipo));
  }
  return descrizione;
}

IUnknown* OggettoPerNucleo(const void* nucleo) noexcept {
  Modulo& modulo = ModuloUnico();
  const std::lock_guard serratura(modulo.chiave);
  const auto trovato = modulo.oggetti.find(nucleo);
  if (trovato == modulo.oggetti.end()) return nullptr;
  trovato->second.identita->AddRef();
  return trovato->second.identita;
}

Interno* InternoDi(IUnknown* identita) noexcept {
  Modulo& modulo = ModuloUnico();
  const std::lock_guard serratura(modulo.chiave);
  const auto trovato =
      std::ranges::find(modulo.oggetti, identita, [](const auto& voce) { return voce.second.identita; });
  return trovato == modulo.oggetti.end() ? nullptr : trovato->second.interno;
}

void RicordaNucleo(const void* nucleo, IUnknown* oggetto, Interno* interno) {
  Modulo& modulo = ModuloUnico();
  const std::lock_guard serratura(modulo.chiave);
  modulo.oggetti.emplace(nucleo, Oggetto{oggetto, interno});
}

void DimenticaNucleo(const void* nucleo) noexcept {
  Modulo& modulo = ModuloUnico();
  const std::lock_guard serratura(modulo.chiave);
  modulo.oggetti.erase(nucleo);
}

}  // namespace orve::com
