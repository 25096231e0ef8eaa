' The database and the SMTP component behind a sample, played.
Class ConnessioneAperta
  Public Sub Open(stringa)
    If InStr(stringa, "Provider=") <> 1 Then Err.Raise 5
  End Sub
  Public Function Execute(statement, quanti, opzione)
    Set Execute = New Risultato
  End Function
End Class
Class SmtpRiuscito
  Public FromAddr
  Public Function SendMail()
    WScript.Echo "consegnato"
  End Function
  Public Function GetLastError()
    GetLastError = -1
  End Function
End Class
Function NuovaConnessione()
  Set NuovaConnessione = New ConnessioneAperta
End Function
Function NuovoComponente()
  Set NuovoComponente = Banco.Spia("smtp", New SmtpRiuscito)
End Function
Banco.RegisterClass "ADODB.Connection", "NuovaConnessione"
Banco.RegisterClass "{DF8A4FE2-221A-4504-987A-3FD4720DB929}", "NuovoComponente"
