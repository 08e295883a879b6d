// What the program does while the engine can't go on at once.
//
// The engine knows no windows. Whoever shows them is told here that it waits for another station,
// or that what it was asked for takes long, so that it can say so, keep the windows painted and let
// the user give up. Until the call returns the engine refuses everything with 3260, so painting
// must do with what it has (Recordset::shown). Nothing may be thrown out of it.
#pragma once

#include <QtGlobal>

class Wait {
 public:
  virtual ~Wait() = default;
  // Another station has held the file for so many milliseconds; asked every few. False gives up.
  virtual bool waiting(qint64 elapsed) = 0;
  enum class Work { Reading, Copying, Repairing, Indexing };
  // A statement that only reads, a copy of a whole file, its repair or the making of its indexes
  // has run for so many milliseconds; asked from half a second on. False stops it: 3059. A repair
  // and indexes go on anyway.
  virtual bool working(Work work, qint64 elapsed) = 0;
  // It is over, either way. Only after one of the others.
  virtual void over() = 0;
};
