#include "engine/datacontrol.h"

#include <QTimer>

#include "engine/dbengine.h"

namespace {
constexpr int kReadAgain = 1000;  // milliseconds
}

DataControl::DataControl(DBEngine& engine, QObject* parent) : QObject(parent), engine_(engine) {
  connect(&engine, &DBEngine::undone, this, &DataControl::reread);
}
DataControl::~DataControl() = default;

void DataControl::Refresh() {
  // The old rows go last, so that a source read again finds the keys that it shares with them.
  auto old = std::move(recordset_);
  try {
    recordset_ = Database(engine_.connection(databaseName_))
                     .OpenRecordset(recordSource_, Opening::FirstRows);
  } catch (const ErrorEjecucion&) {
    if (keepsRows_ && old && shown_.first == databaseName_) {
      recordSource_ = shown_.second;
      recordset_ = std::move(old);
    } else {
      Q_EMIT refreshed();
    }
    throw;
  }
  shown_ = {databaseName_, recordSource_};
  Q_EMIT refreshed();
  Q_EMIT repositioned();
}

void DataControl::bind(const QString& databaseName, const QString& recordSource) {
  databaseName_ = databaseName;
  recordSource_ = recordSource;
  Refresh();
}

// Stands on the row it stood on, or on the last one if that was among what was undone.
void DataControl::reread() {
  if (!recordset_) return;
  try {
    const int before = recordset_->AbsolutePosition();
    const auto row = before < 0 ? ::Recordset::Bookmark{-1} : recordset_->bookmark();
    recordset_->Requery();
    const int position = recordset_->positionOf(row);
    if (position >= 0) {
      recordset_->setAbsolutePosition(position);
    } else if (!recordset_->Eof()) {
      recordset_->MoveLast();
    }
  } catch (const ErrorEjecucion&) {
    QTimer::singleShot(kReadAgain, this, &DataControl::reread);
    return;
  }
  Q_EMIT refreshed();
  Q_EMIT repositioned();
}

void DataControl::unbind() {
  // While somebody can still be told of a failure.
  engine_.save();
  recordset_.reset();
  Q_EMIT refreshed();
}

Recordset& DataControl::Recordset() const {
  if (!recordset_) throw ErrorEjecucion(err::kSinRegistroActivo);
  return *recordset_;
}

void DataControl::MoveFirst() {
  Recordset().MoveFirst();
  Q_EMIT repositioned();
}

void DataControl::MoveNext() {
  Recordset().MoveNext();
  Q_EMIT repositioned();
}

void DataControl::MovePrevious() {
  Recordset().MovePrevious();
  Q_EMIT repositioned();
}

void DataControl::MoveLast() {
  Recordset().MoveLast();
  Q_EMIT repositioned();
}

void DataControl::setAbsolutePosition(int position) {
  Recordset().setAbsolutePosition(position);
  Q_EMIT repositioned();
}

void DataControl::setBookmark(::Recordset::Bookmark bookmark) {
  Recordset().setBookmark(bookmark);
  Q_EMIT repositioned();
}

void DataControl::FindFirst(const QString& criterion) {
  Recordset().FindFirst(criterion);
  if (!Recordset().NoMatch()) Q_EMIT repositioned();
}

void DataControl::FindNext(const QString& criterion) {
  Recordset().FindNext(criterion);
  if (!Recordset().NoMatch()) Q_EMIT repositioned();
}

void DataControl::AddNew() {
  Recordset().AddNew();
}
void DataControl::Edit() {
  Recordset().Edit();
}

void DataControl::Update() {
  const bool adding = Recordset().editMode() == ::Recordset::EditMode::Add;
  Recordset().Update();
  if (adding) {
    Q_EMIT rowAdded(Recordset().rowTotal() - 1);
  } else {
    Q_EMIT rowChanged(Recordset().AbsolutePosition());
  }
}

void DataControl::CancelUpdate() {
  Recordset().CancelUpdate();
}

void DataControl::Delete() {
  const int position = Recordset().AbsolutePosition();
  Recordset().Delete();
  Q_EMIT rowDeleted(position);
}
