// A file being made beside the one that it will become.
//
// It is verified before anybody can see it under its name, so a copy that was broken off leaves
// what was there before. Unless it was renamed, it goes away with the object.
#pragma once

#include <QString>

class FileStore;
struct sqlite3;

class TemporaryCopy {
 public:
  // `target` is the system's path of what it will become, `path` the same as the program writes it.
  // Another station is waited for `timeout` milliseconds at each end of the copying.
  TemporaryCopy(const QString& target, const QString& path, int timeout);
  ~TemporaryCopy();
  TemporaryCopy(const TemporaryCopy&) = delete;
  TemporaryCopy& operator=(const TemporaryCopy&) = delete;

  QString path() const { return temporary_; }
  // Copies all of an open file, as it stands now.
  void fill(sqlite3* from, const QString& fromPath);
  void verify();  // 3343 unless it is sound
  void rename();  // 75 if the target can't be made
  // Writes it into a file that is in use, as one change: a kill leaves it wholly old or wholly new.
  void writeInto(FileStore& live);

 private:
  sqlite3* open(int flags) const;
  void remove() const;
  QString target_;
  QString path_;
  QString temporary_;
  int timeout_;
};
