// A copy of an open file, made beside the one that it will become, or only to be read by others.
#pragma once

#include "common/ficherotemporal.h"
#include "engine/sqlite/store.h"

class TemporaryCopy : public Snapshot {
 public:
  // `target` is the system's path of what it will become, `path` the same as the program writes it.
  TemporaryCopy(const QString& target, const QString& path, FileStore& source);

  QString file() const override { return temporary_.ruta(); }
  // Copies all of the source as it stands now. 3260 while another station locks it. What won't take
  // a name needn't reach the disk.
  enum class Use { Lasting, Passing };
  void fill(FileStore::LongWork& work, Use use = Use::Lasting);
  void verify(FileStore::LongWork& work, const char* pragma = "PRAGMA integrity_check(1)");
  // That no page of it is lost. What can be made anew from the rows isn't compared with them.
  void verify() override;
  void rename();  // 75 if the target can't be made

 private:
  sqlite3* open(int flags) const;

  QString target_;
  QString path_;
  FicheroTemporal temporary_;
  FileStore& source_;
};

// Writes a file into another one that is in use, as one change: a kill leaves it wholly old or
// wholly new. 3186 while another station is in the way; and, with `asRead`, unless that is what it
// tells as its commits().
void writeInto(FileStore& live, FileStore& from, std::optional<qint64> asRead,
               FileStore::LongWork& work);
