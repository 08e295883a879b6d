// Text files of fields with commas between them, read in sequence.
//
// It is the reader's caller who knows how many fields make a record: a line break ends a field as a
// comma does and means nothing else. A record that lacks one takes it from the next line, and all
// that follow shift.
#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

class LectorCampos {
 public:
  // `ruta` is a text path. 53 when there is no such file, 75 when it can't be read.
  explicit LectorCampos(const QString& ruta);

  // Nothing is left but blanks and line breaks.
  bool fin();
  // The next fields, each without the blanks before it. What stands between double quotes is one
  // field, with its commas, blanks and line breaks; a quote within it is written twice. 62 when the
  // file ends before the last of them, 3163 for one longer than any field is.
  QStringList lee(int cuantos);

  qint64 leido() const { return antes_ + at_; }  // bytes
  qint64 total() const { return total_; }

 private:
  // The next byte, which stays there; -1 at the end of the file.
  int mira();
  int toma();
  void saltaBlancos();
  void anade(QByteArray& campo, QByteArrayView bytes) const;
  template <class Acaba>
  QByteArrayView trozoHasta(Acaba acaba);
  bool acabado();  // the field
  QString entrecomillado();
  QString suelto();
  bool saltaSeparador();  // whether it was a comma

  QFile fichero_;
  qint64 total_ = 0;
  QByteArray bufer_;
  qsizetype at_ = 0;  // in the buffer
  qint64 antes_ = 0;  // bytes before it
};
