' The database and the SMTP component behind a sample, played.
' The customers: 501 as comuni.vbs has it, 502 without an address, 503 whom the server refuses, 999 unknown.
Class ConnessioneAperta
  Public Sub Open(stringa)
    If InStr(stringa, "Provider=") <> 1 Then Err.Raise 5
  End Sub
  Public Function Execute(statement, quanti, opzione)
    Dim righe
    If InStr(statement, "FROM REGISTRO_INVII") > 0 Then
      Set Execute = RigheDelRegistro(statement)
    Else
      Set righe = New RisultatoDelCliente
      righe.EOF = InStr(statement, "CG44_CLIFOR = 999") > 0
      If InStr(statement, "CG44_CLIFOR = 502") > 0 Then righe.Indirizzo = ""
      If InStr(statement, "CG44_CLIFOR = 503") > 0 Then righe.Indirizzo = "rifiutata@x.example"
      Set Execute = righe
    End If
  End Function
End Class
Class RisultatoDelCliente
  Public EOF
  Public State
  Public Indirizzo
  Private Sub Class_Initialize
    State = 1
    Indirizzo = ValoreDi("CG16_INDEMAIL")
  End Sub
  Public Property Get Fields()
    Set Fields = Me
  End Property
  Public Function Item(nome)
    Dim campo
    Set campo = New CampoLetto
    campo.Value = ValoreDi(nome)
    If UCase(nome) = "CG16_INDEMAIL" Then campo.Value = Indirizzo
    Set Item = campo
  End Function
  Public Sub MoveFirst
  End Sub
  Public Sub MoveNext
    EOF = True
  End Sub
  Public Sub Close
    State = 0
  End Sub
End Class
Class CampoLetto
  Public Value
End Class

' The lines whose NUMREG stands in quotes in the statement.
Function RigheDelRegistro(statement)
  Dim riga, righe
  Set righe = New RisultatoDelRegistro
  For Each riga In Registrate.Items
    If InStr(statement, "NUMREG = '" & riga(0) & "'") > 0 Then righe.Trovate.Add righe.Trovate.Count, riga
  Next
  Set RigheDelRegistro = righe
End Function
Class RisultatoDelRegistro
  Public Trovate
  Private posto
  Private Sub Class_Initialize
    Set Trovate = CreateObject("Scripting.Dictionary")
    posto = 0
  End Sub
  Public Property Get EOF()
    EOF = posto >= Trovate.Count
  End Property
  Public Property Get Fields()
    Set Fields = Me
  End Property
  Public Function Item(nome)
    Dim riga, campo
    riga = Trovate.Item(posto)
    Set campo = New CampoLetto
    Select Case nome
      Case "ESITOINVIO": campo.Value = riga(1)
      Case "NOME": campo.Value = riga(2)
      Case "INDIRIZZO": campo.Value = riga(3)
      Case "RISULTATO": campo.Value = riga(4)
    End Select
    Set Item = campo
  End Function
  Public Sub MoveNext
    posto = posto + 1
  End Sub
  Public Sub Close
  End Sub
End Class

Class SmtpRecitato
  Public FromAddr
  Private fine
  Private Sub Class_Initialize
    fine = -1
  End Sub
  Public Function AddRecipientEx(elenco, tipo)
    If InStr(elenco, "rifiutata@") > 0 Then fine = 4
  End Function
  Public Function SendMail()
    WScript.Echo "consegna"
  End Function
  Public Function GetLastError()
    GetLastError = fine
  End Function
End Class
Function NuovaConnessione()
  Set NuovaConnessione = New ConnessioneAperta
End Function
Function NuovoComponente()
  Set NuovoComponente = Banco.Spia("smtp", New SmtpRecitato)
End Function
Banco.RegisterClass "ADODB.Connection", "NuovaConnessione"
Banco.RegisterClass "{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoComponente"
