// Another station on the same file.
#pragma once

#include "soporte/prueba.h"

// What a plain tool of the file's library prints for a statement: another program altogether.
inline QString preguntaFuera(const QString& ruta, const QString& sql,
                             const QStringList& opciones = {}) {
  QProcess p;
  p.start("sqlite3", opciones + QStringList{ruta, sql});
  p.waitForFinished();
  return QString::fromUtf8(p.readAllStandardOutput() + p.readAllStandardError()).trimmed();
}

// Another station: a plain tool that holds a transaction open until it is told to end.
class OtroPuesto {
 public:
  // It begins with some statements, if any.
  explicit OtroPuesto(const QString& ruta, const QString& sql = {}) {
    proceso_.start("sqlite3", {"-batch", ruta});
    if (!sql.isEmpty()) ejecuta(sql);
  }
  ~OtroPuesto() {
    proceso_.closeWriteChannel();
    proceso_.waitForFinished();
  }
  // Runs statements and waits until they are done.
  void ejecuta(const QString& sql) {
    proceso_.write((sql + "\n.print hecho\n").toUtf8());
    QByteArray salida;
    while (!salida.contains("hecho") && proceso_.waitForReadyRead()) salida += proceso_.readAll();
    ASSERT_TRUE(salida.contains("hecho")) << salida.toStdString();
  }

 private:
  QProcess proceso_;
};
