// The rows of a table, of a stored query or of a statement, with a current row.
//
// A recordset over one table, or over a query that keeps to one table, is a set of keys read in
// order at its opening: rows are fetched as they are needed, so a journal of a million lines opens
// and scrolls at once. A row added stands at the end. A row that another station deleted raises
// 3167 when touched; one that it changed shows its new values. Sources that join or group can't be
// written (3027) and are read whole; but those that only look rows up by a key, as a recibo's
// customer, are read as they are needed too when they are opened by their first rows.
#pragma once

#include <memory>
#include <QStringList>

#include "common/variant.h"

class Recordset;

// How a set of keys is read at its opening: whole, as who goes through the rows needs it, or only
// as far as a screen shows at once. The other keys are then read when they are asked for, at the
// latest before the first change through the recordset.
enum class Opening { Whole, FirstRows };

// One field of the current row (or of the row being added or edited).
class FieldRef {
 public:
  FieldRef(Recordset& rs, int ordinal) : rs_(rs), ordinal_(ordinal) {}
  Variant Value() const;                      // 3021 without a current row, 3167 if the row is gone
  FieldRef& operator=(const Variant& value);  // 3020 outside AddNew and Edit; 3421, 3163
  FieldRef& operator=(const FieldRef& other) { return *this = other.Value(); }
  FieldRef(const FieldRef&) = default;
  // Short forms of Value(): text() raises 94 on Null, display() gives empty text.
  QString text() const { return Value().text(); }
  QString display() const { return Value().display(); }
  double number() const { return Value().number(); }
  qint64 toLong() const { return Value().toLong(); }
  bool isNull() const { return Value().isNull(); }
  QString Name() const;
  FieldType Type() const;
  int Size() const;  // characters of a text field, 0 otherwise

 private:
  Recordset& rs_;
  int ordinal_;
};

class Recordset {
 public:
  class Impl;
  explicit Recordset(std::unique_ptr<Impl> impl);
  ~Recordset();
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // Fields, by name without regard to case (a name shared by two columns is told apart as
  // "Tabla.Campo") or by ordinal. 3265 for one that isn't there.
  FieldRef Fields(const QString& name);
  FieldRef Fields(int ordinal);
  int FieldCount() const;
  QString FieldName(int ordinal) const;
  FieldType Type(int ordinal) const;
  int Size(int ordinal) const;
  int Ordinal(const QString& name) const;  // -1 when there is none

  // Adding and changing. The table's defaults stand in the fields of a new row that aren't set.
  // Update raises 3022 on a key collision; the edit stays open and CancelUpdate drops it. AddNew
  // and Edit raise 3260 when another station holds the file beyond the wait, Update 3186. A move
  // drops an open edit. After the Update of an addition the current row stays the one before
  // AddNew.
  void AddNew();
  void Edit();
  void Update();
  void CancelUpdate();
  void Delete();  // the position stays on the deleted row until a move
  enum class EditMode { None, InProgress, Add };
  EditMode editMode() const;

  // Position. MoveFirst and MoveLast raise 3021 on an empty recordset; MoveNext past the end and
  // MovePrevious before the start too.
  void MoveFirst();
  void MoveNext();
  void MovePrevious();
  void MoveLast();
  bool Eof() const;
  bool Bof() const;
  // Rows visited so far: the total only after MoveLast.
  int RecordCount() const;
  int AbsolutePosition() const;  // zero-based; -1 without a current row
  void setAbsolutePosition(int position);
  // All rows: for grids, which must size their scroll bar. The rows known so far are as many,
  // unless it was opened by its first rows only and nothing asked for the others yet.
  int rowTotal() const;
  int rowsKnown() const;

  // A bookmark names a row for the life of this recordset.
  using Bookmark = qint64;
  Bookmark bookmark() const;
  void setBookmark(Bookmark bookmark);      // 3021 if the row isn't in the recordset
  int positionOf(Bookmark bookmark) const;  // -1 if it isn't there

  // Searches by a criterion of the statement language, from the first row or from the one after the
  // current. On a match the position moves there; otherwise it stays and NoMatch() is true.
  void FindFirst(const QString& criterion);
  void FindNext(const QString& criterion);
  bool NoMatch() const;

  // A cell of any row without moving: for grids. `position` is zero-based. Deleted rows give Null.
  Variant cell(int position, int ordinal) const;
  bool isDeleted(int position) const;
  // The same as it was read last, for painting while the file can't be read: never raises, and
  // gives Null for what isn't kept.
  Variant shown(int position, int ordinal) const;

  void Requery();  // runs the source again, and stands on its first row
  void Close();

 private:
  std::unique_ptr<Impl> impl_;
  friend class FieldRef;
};
