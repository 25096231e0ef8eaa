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
// Read by the sample itself, so that its members are values as with the real one.
function RigheDelRegistro(statement) {
  var trovate = [], posto = 0, questo = this;
  for (var i = 0; i < registrate.length; i++) {
    if (statement.indexOf("NUMREG = '" + registrate[i].NUMREG + "'") >= 0) trovate.push(registrate[i]);
  }
  this.EOF = trovate.length === 0;
  this.Fields = {Item: function (nome) { return {Value: trovate[posto][nome]}; }};
  this.MoveNext = function () { posto++; questo.EOF = posto >= trovate.length; };
  this.Close = function () {};
}
function NuovaConnessione() {
  return Banco.Spia("ConnectionADO", {
    Open: function (stringa) { if (stringa.indexOf("Provider=") !== 0) throw new Error("stringa"); },
    Execute: function (statement, quanti, opzione) {
      return statement.indexOf("FROM REGISTRO_INVII") >= 0 ? new RigheDelRegistro(statement) : new Risultato();
    }
  });
}
function NuoviMessaggi() {
  return Banco.Spia("ObjMessaggi", {
    TitoloFinestra: function (testo) { return testo; },
    MostraMsg: function (testo, stile, titolo, proprietario) { WScript.Echo("messaggio: " + testo); return 1; }
  });
}
var registrate = [];
function NuovoRegistro() {
  var registro = {
    NumReg: "",
    EsitoInvio: 0,
    RegistraInvio: function (nome, ditta, indirizzo, allegato, esito, oggetto, corpo) {
      registrate.push(
        {NUMREG: registro.NumReg, ESITOINVIO: registro.EsitoInvio, NOME: nome, INDIRIZZO: indirizzo, RISULTATO: esito});
    }
  };
  return Banco.Spia("ObjRegistroInvio", registro);
}
// Refuses a message to an address that begins with "rifiutata".
function NuovoComponente() {
  var fine = -1;
  return Banco.Spia("smtp", {
    FromAddr: "",
    AddRecipientEx: function (elenco, tipo) {
      if (elenco.indexOf("<rifiutata@") >= 0) fine = 4;
    },
    SendMail: function () { WScript.Echo("consegna"); },
    GetLastError: function () { return fine; }
  });
}
Banco.RegisterClass("ORVE_LibSrv.Messaggi", "NuoviMessaggi");
Banco.RegisterClass("ORVE_REGSTAMPE.RegistroInvio", "NuovoRegistro");
Banco.RegisterClass("ADODB.Connection", "NuovaConnessione");
Banco.RegisterClass("{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoComponente");
