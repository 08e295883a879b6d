// The current row of a recordset and the edit on it. Errors are raised here; the recordset's own
// members see to it that the group is committed before they go up.
#pragma once

#include "engine/recordset.h"
#include "engine/rowset.h"

class Recordset::Impl {
 public:
  Impl(std::shared_ptr<Connection> connection, const QString& source, Opening opening);
  std::unique_ptr<Impl> again() const;  // the same source, run anew

  RowSet rows;

  int ordinal(const QString& name) const;
  int checked(int ordinal) const;  // 3265 for one that isn't there
  const OutputColumn& column(int ordinal) const {
    return rows.plan().columns[static_cast<std::size_t>(checked(ordinal))];
  }

  void first();
  bool forward();   // false past the last row
  bool backward();  // false before the first
  void last();
  void stand(int position);
  void find(int match);  // moves to it; -1 for none
  bool noMatch() const { return noMatch_; }
  int current() const;  // 3021 without a current row
  bool isEof() const { return place_ == Place::After || place_ == Place::Nowhere; }
  bool isBof() const { return place_ == Place::Before || place_ == Place::Nowhere; }
  bool isOn() const { return place_ == Place::On; }
  int position() const { return position_; }
  int visited() const { return std::max(0, visited_ - rows.deletedCount()); }

  Variant value(int ordinal);
  void assign(int ordinal, const Variant& value);

  EditMode mode() const { return mode_; }
  void drop();  // the open edit
  void addNew();
  void edit();
  int update();  // the position of the row written
  int remove();

 private:
  enum class Place { Before, On, After, Nowhere };

  const Row& currentRow();
  const Field* base(int ordinal) const;
  Values differing();  // what the edit sets that the row hasn't yet
  int insert();
  int store();

  std::shared_ptr<Connection> connection_;
  QString source_;
  Opening opening_;
  QHash<QString, int> ordinals_;
  std::vector<Field> fields_;    // of the base table
  std::vector<int> baseFields_;  // for each column its place among them, or -1
  Row defaults_;                 // what a new row has in each column

  Place place_ = Place::Nowhere;
  int position_ = -1;
  int visited_ = 0;
  bool noMatch_ = true;

  EditMode mode_ = EditMode::None;
  Row edited_;
  Values changed_;
};
