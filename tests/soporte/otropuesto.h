// Another station on the same file.
#pragma once

#include <gtest/gtest.h>
#include <QProcess>

// Another station: a plain tool that holds a transaction open until it is told to end.
class OtroPuesto {
 public:
  explicit OtroPuesto(const QString& ruta) { proceso_.start("sqlite3", {"-batch", ruta}); }
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
