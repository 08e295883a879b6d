// A file, a source and the live recordset between them: what grids, combos and labels are bound to.
//
// Assigning another path moves the control to another company at the next Refresh. All moves and
// changes go through the control, so that whatever is bound to it follows.
#pragma once

#include <memory>
#include <QObject>
#include <utility>

#include "engine/recordset.h"

class DBEngine;

class DataControl : public QObject {
  Q_OBJECT
 public:
  explicit DataControl(DBEngine& engine, QObject* parent = nullptr);
  ~DataControl() override;

  // Full path of the file with backslashes, as the program writes paths.
  QString DatabaseName() const { return databaseName_; }
  void setDatabaseName(const QString& path) { databaseName_ = path; }
  // A table name, a stored query's name or a statement.
  QString RecordSource() const { return recordSource_; }
  void setRecordSource(const QString& source) { recordSource_ = source; }

  // Opens the file if needed, runs the source as far as its first rows and stands on the first. On
  // failure (3024 no file, 3061, 3075, 3078, 3343...) the control is left without a recordset, or
  // as setKeepsRows says.
  void Refresh();
  // For rows that somebody looks at: where another source of the same file can't be read, those of
  // the last one stay, with it as the source.
  void setKeepsRows(bool keeps) { keepsRows_ = keeps; }
  // Sets both and refreshes.
  void bind(const QString& databaseName, const QString& recordSource);
  // Commits and releases the recordset, so that the file can be removed. 3186, 3026, 3043.
  void unbind();

  bool isOpen() const { return recordset_ != nullptr; }
  DBEngine& engine() const { return engine_; }
  // The live recordset; 3021 before the first Refresh. Moving it directly is seen by nobody: use
  // the members below from forms.
  ::Recordset& Recordset() const;

  // The recordset's operations, each followed by the signals for what is bound.
  void MoveFirst();
  void MoveNext();
  void MovePrevious();
  void MoveLast();
  void setAbsolutePosition(int position);
  void setBookmark(::Recordset::Bookmark bookmark);
  void FindFirst(const QString& criterion);
  void FindNext(const QString& criterion);
  void AddNew();
  void Edit();
  void Update();
  void CancelUpdate();
  void Delete();
  FieldRef Fields(const QString& name) const { return Recordset().Fields(name); }
  FieldRef Fields(int ordinal) const { return Recordset().Fields(ordinal); }
  bool Eof() const { return Recordset().Eof(); }

 Q_SIGNALS:
  void refreshed();             // another set of rows, or none
  void repositioned();          // another current row: forms recompute here
  void rowAdded(int position);  // appended at `position`
  void rowChanged(int position);
  void rowDeleted(int position);

 private:
  void reread();  // after changes that were shown have been undone

  DBEngine& engine_;
  QString databaseName_;
  QString recordSource_;
  std::unique_ptr<::Recordset> recordset_;
  std::pair<QString, QString> shown_;  // path and source of the recordset
  bool keepsRows_ = false;
};
