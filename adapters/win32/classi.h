// The classes of the objects that the library creates, by name or by identifier.
//
// Those of the platform and of the SMTP component are published and not ours to choose. The classes of the
// host's own libraries are named here, in one place, after the library and the object: an installation whose
// libraries register other names changes them here, or registers these names alongside its own.
#pragma once

namespace orve::adapters::win32::classi {

// The SMTP component has no name, only its identifier.
inline constexpr const wchar_t* kComponenteSmtp = L"{DF8A4FE2-221A-4504-987A-3FD4720DB929}";

// The platform and the mail programs.
inline constexpr const wchar_t* kOutlook = L"Outlook.Application";
inline constexpr const wchar_t* kMAPISession = L"MSMAPI.MAPISession";
inline constexpr const wchar_t* kMAPIMessages = L"MSMAPI.MAPIMessages";
inline constexpr const wchar_t* kFileSystem = L"Scripting.FileSystemObject";
inline constexpr const wchar_t* kConnessione = L"ADODB.Connection";
inline constexpr const wchar_t* kRecordSet = L"ADODB.Recordset";
inline constexpr const wchar_t* kComando = L"ADODB.Command";

// The host's libraries.
inline constexpr const wchar_t* kParametri = L"ORVE_ClsStd.CLSFW_Parametri";
inline constexpr const wchar_t* kRegistroInvio = L"ORVE_REGSTAMPE.RegistroInvio";
inline constexpr const wchar_t* kMessaggi = L"ORVE_LibSrv.Messaggi";
inline constexpr const wchar_t* kFormatoData = L"ORVE_LibSrv.FormatoData";
inline constexpr const wchar_t* kFormatoNumero = L"ORVE_LibSrv.FormatoNumero";
inline constexpr const wchar_t* kRisolutorePercorsi = L"ORVE_LibSrv.RisolutorePercorsi";
inline constexpr const wchar_t* kCifratorePassword = L"ORVE_LibSrv.CifratorePassword";
inline constexpr const wchar_t* kSelettoreFile = L"ORVE_LibSrv.SelettoreFile";
inline constexpr const wchar_t* kOggettoFile = L"ORVE_LibSrv.OggettoFile";
inline constexpr const wchar_t* kCollezioneFile = L"ORVE_LibSrv.CollezioneFile";

}  // namespace orve::adapters::win32::classi
