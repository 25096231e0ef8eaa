// The host application, the database and the SMTP component behind a sample, played in JScript.
var valori = {
  FW24_INDFAXATTIVO: 77, FW24_INDMODALITA: 1, FW24_MAILMODSTDIFF: 1, FW24_PATHTMP: "C:\\windows\\temp", FW24_BCC: 0,
  FW24_READRECEIPT: 0, FW24_FLGMSGPERS: 0, FW24_MSGPERS: null,
  FW98_MAILADDRESS: "noi@azienda.example", FW23_SERVERNAME: "smtp.azienda.example", FW23_PORT: 587, FW23_INDAUTH: 0,
  FW23_SSL: 1, ALIAS: "Azienda", LETTURA: 0, CONSEGNA: 0
};
// Members are functions: Wine's JScript refuses to read a value that may be a method.
function Risultato() {
  var righe = true;
  this.EOF = function () { return !righe; };
  this.State = function () { return 1; };
  this.Fields = function () {
    return {
      Item: function (nome) {
        return {Value: function () { return valori[nome] === undefined ? "" : valori[nome]; }};
      }
    };
  };
  this.MoveFirst = function () {};
  this.MoveNext = function () { righe = false; };
  this.Close = function () {};
}
function NuovaConnessione() {
  return Banco.Spia("ConnectionADO", {
    Open: function (stringa) { if (stringa.indexOf("Provider=") !== 0) throw new Error("stringa"); },
    Execute: function (statement, quanti, opzione) { return new Risultato(); }
  });
}
function NuoviMessaggi() {
  return Banco.Spia("ObjMessaggi", {
    TitoloFinestra: function (testo) { return testo; },
    MostraMsg: function (testo, stile, titolo, proprietario) { WScript.Echo("messaggio: " + testo); return 1; }
  });
}
function NuovoRegistro() { return Banco.Spia("ObjRegistroInvio", {}); }
function NuovoComponente() {
  return Banco.Spia("smtp", {
    FromAddr: "",
    AddRecipientEx: function (elenco, tipo) { WScript.Echo("destinatari: " + elenco); },
    SendMail: function () { WScript.Echo("consegnato"); },
    GetLastError: function () { return -1; }
  });
}
Banco.RegisterClass("ORVE_LibSrv.Messaggi", "NuoviMessaggi");
Banco.RegisterClass("ORVE_REGSTAMPE.RegistroInvio", "NuovoRegistro");
Banco.RegisterClass("ADODB.Connection", "NuovaConnessione");
Banco.RegisterClass("{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoComponente");
