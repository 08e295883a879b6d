// Another station that runs our own engine: this same test program, started again with an order.
#pragma once

#include <signal.h>
#include <QCoreApplication>
#include <QProcess>

class Estacion {
 public:
  explicit Estacion(const QString& ruta) : ruta_(ruta) {}

  // Begins an order in a process of its own.
  void empieza(const QString& orden) {
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("LIBRANO_ORDEN", orden);
    entorno.insert("LIBRANO_FICHERO", ruta_);
    proceso_.setProcessEnvironment(entorno);
    proceso_.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=Orden.*"});
  }
  // Waits for its end: its exit code.
  int acaba() {
    proceso_.waitForFinished(-1);
    return proceso_.exitCode();
  }
  // Kills it some milliseconds after it began to print; the last number that it printed.
  int mata(const QString& orden, int milisegundos) {
    empieza(orden);
    proceso_.waitForReadyRead();
    proceso_.waitForFinished(milisegundos);
    ::kill(static_cast<pid_t>(proceso_.processId()), SIGKILL);
    proceso_.waitForFinished();
    // The last line may have been cut by the kill.
    const QByteArrayList lineas = proceso_.readAllStandardOutput().split('\n');
    return lineas.value(lineas.size() - 2).mid(5).toInt();
  }

 private:
  QString ruta_;
  QProcess proceso_;
};
