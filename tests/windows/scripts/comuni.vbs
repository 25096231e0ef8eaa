' What the scripts of the tests share: the checks, and a host application played in VBScript.
Option Explicit

' Types count: a number that comes back as text is no success.
Sub Uguale(cosa, avuto, voluto)
  If TypeName(avuto) <> TypeName(voluto) Then
    Banco.Fallisce cosa & ": " & TypeName(avuto) & " invece di " & TypeName(voluto)
  ElseIf avuto <> voluto Then
    Banco.Fallisce cosa & ": """ & avuto & """ invece di """ & voluto & """"
  End If
End Sub

' To be called behind a statement run with On Error Resume Next; clears the error.
Sub UgualeErrore(cosa, numero, sorgente, descrizione)
  Dim n, s, d
  n = Err.Number : s = Err.Source : d = Err.Description
  Err.Clear
  Uguale cosa & ", numero", CLng(n), CLng(numero)
  If sorgente <> "" Then Uguale cosa & ", sorgente", s, sorgente
  If descrizione <> "" Then Uguale cosa & ", descrizione", d, descrizione
End Sub

Sub Stesso(cosa, avuto, voluto)
  If Not Banco.StessoOggetto(avuto, voluto) Then Banco.Fallisce cosa & ": un altro oggetto"
End Sub

' The host's message object: each message is noted.
Class MessaggiRecitati
  Public Function TitoloFinestra(testo)
    TitoloFinestra = testo
  End Function
  Public Function MostraMsg(testo, stile, titolo, proprietario)
    Banco.Annota "MostraMsg " & testo & "|" & stile & "|" & titolo
    MostraMsg = 1
  End Function
End Class

' Takes every member that it does not know, for a spy to note.
Class Nessuno
End Class

Function NuoviMessaggi()
  Set NuoviMessaggi = New MessaggiRecitati
End Function

' The register object: of what it takes, the lines are kept.
Class RegistroRecitato
  Public EsitoInvio
  Public NumReg
  Public Function RegistraInvio(nome, ditta, indirizzo, allegato, esito, oggetto, corpo)
    Registrate.Add Registrate.Count, Array(NumReg, EsitoInvio, nome, indirizzo, esito)
  End Function
End Class
Dim Registrate
Set Registrate = CreateObject("Scripting.Dictionary")

Function NuovoRegistro()
  Set NuovoRegistro = Banco.Spia("ObjRegistroInvio", New RegistroRecitato)
End Function

' A database whose every question has one row with everything in it, but for what Vuoto names.
Class Campo
  Public Nome
  Public Property Get Value()
    Value = ValoreDi(Nome)
  End Property
End Class

Class Campi
  Public Function Item(nome)
    Dim letto
    Set letto = New Campo
    letto.Nome = nome
    Set Item = letto
  End Function
End Class

Class Risultato
  Public EOF
  Public State
  Private Sub Class_Initialize
    EOF = False
    State = 1
  End Sub
  Public Property Get Fields()
    Set Fields = New Campi
  End Property
  Public Sub MoveFirst
  End Sub
  Public Sub MoveNext
    EOF = True
  End Sub
  Public Sub Close
    State = 0
  End Sub
End Class

' An SMTP component that takes every message.
Class Smtp
  Public FromAddr
  Public Function GetLastError()
    GetLastError = -1
  End Function
End Class

Class BancaDati
  Public Statements
  Public Vuoto
  Public Function Execute(statement, quanti, opzione)
    Dim righe
    Statements = Statements & opzione & " " & statement & vbLf
    Set righe = New Risultato
    If Vuoto <> "" Then
      If InStr(statement, Vuoto) > 0 Then righe.EOF = True
    End If
    Set Execute = righe
  End Function
End Class

Function ValoreDi(nome)
  Select Case UCase(nome)
    Case "FW24_INDFAXATTIVO": ValoreDi = CLng(CanaleDelTest)
    Case "FW24_INDMODALITA": ValoreDi = 1
    Case "FW24_MAILMODSTDIFF": ValoreDi = 2
    Case "FW24_PATHTMP": ValoreDi = "C:\windows\temp"
    Case "FW24_BCC": ValoreDi = 0
    Case "FW24_READRECEIPT": ValoreDi = 1
    Case "FW24_FLGMSGPERS": ValoreDi = 0
    Case "FW24_MSGPERS": ValoreDi = Null
    Case "CG16_INDEMAIL": ValoreDi = "anna@x.example"
    Case "CG16_RAGSOANAG": ValoreDi = "Società Più S.r.l."
    Case "FW98_MAILADDRESS": ValoreDi = "noi@azienda.example"
    Case "FW98_USERNAME": ValoreDi = "utente"
    Case "FW98_PASSWORD": ValoreDi = ""
    Case "FW23_SERVERNAME": ValoreDi = "smtp.azienda.example"
    Case "FW23_PORT": ValoreDi = 587
    Case "FW23_INDAUTH": ValoreDi = 0
    Case "FW23_SSL": ValoreDi = 1
    Case "FW23_TIMEOUT": ValoreDi = 30
    Case "ALIAS": ValoreDi = "Azienda"
    Case "LETTURA": ValoreDi = 1
    Case "CONSEGNA": ValoreDi = 0
    Case Else: ValoreDi = ""
  End Select
End Function

Dim CanaleDelTest
CanaleDelTest = 77

Banco.RegisterClass "ORVE_LibSrv.Messaggi", "NuoviMessaggi"
Banco.RegisterClass "ORVE_REGSTAMPE.RegistroInvio", "NuovoRegistro"
