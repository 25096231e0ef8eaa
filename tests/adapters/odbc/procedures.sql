-- The application's function and procedures for H2, in Java. Two signs, as below, part the statements.
CREATE SCHEMA dbo
@@
CREATE ALIAS dbo.FNCG_GETCODANAG AS $$
Integer codice(java.sql.Connection c, Integer ditta, Integer tipo, Integer partner, String data) throws Exception {
  if (ditta == null || tipo == null || partner == null || data == null) return null;
  String giorno = data.replace("-", "").split(" ")[0];
  java.time.LocalDate.parse(giorno, java.time.format.DateTimeFormatter.BASIC_ISO_DATE);
  java.sql.ResultSet righe = c.createStatement().executeQuery(
      "SELECT COALESCE((SELECT TOP 1 CG44V_CODICE_CG16 FROM CG44_CLIFORVALIDITA WHERE CG44V_DITTA_CG18 = " + ditta
      + " AND CG44V_TIPOCF_CG44 = " + tipo + " AND CG44V_CLIFOR_CG44 = " + partner + " AND CG44V_DAL <= " + giorno
      + " ORDER BY CG44V_DAL DESC), CG44_CODICE_CG16) FROM CG44_CLIFOR WHERE CG44_DITTA_CG18 = " + ditta
      + " AND CG44_TIPOCF = " + tipo + " AND CG44_CLIFOR = " + partner);
  return righe.next() ? (Integer) righe.getInt(1) : null;
}
$$
@@
CREATE ALIAS SPFW_AttivaEventoGestionale AS $$
void attiva(java.sql.Connection c, Integer ditta, Integer codice, Integer utente, String dati, Integer flag)
    throws Exception {
  java.sql.PreparedStatement riga = c.prepareStatement(
      "INSERT INTO EVENTI_GESTIONALI (DITTA, CODICE, IDUTENTE, DATI, FLAG) VALUES (?, ?, ?, ?, ?)");
  riga.setObject(1, ditta);
  riga.setObject(2, codice);
  riga.setObject(3, utente);
  riga.setString(4, dati);
  riga.setObject(5, flag);
  riga.executeUpdate();
}
$$
@@
CREATE ALIAS SPFW_GetUserIDFromConnection AS $$
java.sql.ResultSet utente(java.sql.Connection c, Integer uscita) throws Exception {
  return c.createStatement().executeQuery(
      "SELECT (SELECT FW07_ID FROM FW07_APPUSER WHERE FW07_USERNAME = CURRENT_USER)");
}
$$
