// A file being made beside the one that it will become.
//
// It is verified before anybody can see it under its name, so a copy that was broken off leaves
// what was there before. Unless it was renamed, it goes away with the object.
#pragma once

#include <QString>

#include "engine/sqlite/store.h"

class TemporaryCopy {
 public:
  // `target` is the system's path of what it will become, `path` the same as the program writes it.
  // Whoever shows windows is told of `source` while it takes long, and may stop it: 3059.
  TemporaryCopy(const QString& target, const QString& path, FileStore& source);
  ~TemporaryCopy();
  TemporaryCopy(const TemporaryCopy&) = delete;
  TemporaryCopy& operator=(const TemporaryCopy&) = delete;

  QString path() const { return temporary_; }
  // Copies all of the source as it stands now. 3260 while another station locks it.
  void fill();
  void verify();  // 3343 unless it is sound
  void rename();  // 75 if the target can't be made
  // Writes it into a file that is in use, as one change: a kill leaves it wholly old or wholly new.
  // 3186 while another station is in the way.
  void writeInto(FileStore& live);

 private:
  sqlite3* open(int flags) const;
  int copyPages(sqlite3* to, sqlite3* from);
  void remove() const;
  QString target_;
  QString path_;
  QString temporary_;
  FileStore& source_;
  FileStore::LongWork work_;
};
