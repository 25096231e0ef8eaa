// The application's database: connection, record set, fields and stored-procedure command, as the application
// hands them over. All SQL of the library runs through these operations; the statements are SQL Server's.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "orve-mailserver/api.h"
#include "orve-mailserver/host/errore.h"
#include "orve-mailserver/host/oggetto.h"
#include "orve-mailserver/host/variant.h"

namespace orve::host {

/// The option of Connection::Execute.
enum CommandOption : std::int32_t {
  kComandoNonIndicato = -1,  ///< no command type given
  kComandoTesto = 1,         ///< a text command
  kProceduraMemorizzata = 4  ///< a stored procedure, for Command::CommandType
};

/// One column of the current row.
class ORVE_API Field : public Oggetto {
 public:
  /// The column's value; Null for a database null. Raises the engine's error when there is no current row.
  [[nodiscard]] virtual Variant Value() const = 0;
};

/// The columns of a record set.
class ORVE_API Fields : public Oggetto {
 public:
  /// The column of that name, compared without case. Raises the engine's error for an unknown name.
  [[nodiscard]] virtual std::shared_ptr<Field> Item(std::string_view nome) const = 0;
};

/// A result, positioned on its first row when it has one.
class ORVE_API RecordSet : public Oggetto {
 public:
  /// `EOF` of the interface, which C reserves as a macro: true past the last row, and on a result without
  /// rows.
  [[nodiscard]] virtual bool Eof() const = 0;
  /// The columns of the current row.
  [[nodiscard]] virtual std::shared_ptr<host::Fields> Fields() const = 0;
  ///@{
  /// To the first row, and to the next; both raise the engine's error on a result without rows.
  virtual void MoveFirst() = 0;
  virtual void MoveNext() = 0;
  ///@}
  /// 0 closed, 1 open.
  [[nodiscard]] virtual std::int32_t State() const = 0;
  /// Releases the rows.
  virtual void Close() = 0;
};

/// One parameter of a command.
class ORVE_API Parameter : public Oggetto {
 public:
  /// For an output parameter the value after Execute, Null when the procedure left it unset.
  [[nodiscard]] virtual Variant Value() const = 0;
};

/// A stored procedure to be run on a connection.
class ORVE_API Command : public Oggetto {
 public:
  /// What the text is, kProceduraMemorizzata for the name of a procedure.
  virtual void CommandType(std::int32_t tipo) = 0;
  /// The procedure's name.
  virtual void CommandText(const std::string& testo) = 0;
  /// A parameter, not yet part of the command. tipo 3: 32-bit integer; direzione 2: output.
  [[nodiscard]] virtual std::shared_ptr<Parameter> CreateParameter(const std::string& nome, std::int32_t tipo,
                                                                   std::int32_t direzione,
                                                                   std::int32_t lunghezza) = 0;
  /// `Parameters.Append`.
  virtual void ParametersAppend(const std::shared_ptr<Parameter>& parametro) = 0;
  /// Runs the command; raises the engine's error.
  virtual void Execute() = 0;
  /// `Parameters.Item`; raises the engine's error for an unknown name.
  [[nodiscard]] virtual std::shared_ptr<Parameter> ParametersItem(std::string_view nome) const = 0;
};

/// The open connection to the application's database, owned by the caller.
class ORVE_API Connection : public Oggetto {
 public:
  /// Runs the statement as it is and returns its result, never an absent object (a statement without rows
  /// gives a record set at its end). Raises Errore with the engine's number, source and text.
  [[nodiscard]] virtual std::shared_ptr<RecordSet> Execute(const std::string& statement,
                                                           std::int32_t opzione) = 0;
  /// A new command whose active connection is this one.
  [[nodiscard]] virtual std::shared_ptr<Command> CreateCommand() = 0;
};

/// The value of a column of the current row.
[[nodiscard]] inline Variant Leggi(const RecordSet& risultato, std::string_view colonna) {
  return Richiesto(Richiesto(risultato.Fields()).Item(colonna)).Value();
}

}  // namespace orve::host
