// Another station that runs our own engine: this same test program, started again with an order.
#pragma once

#include <signal.h>
#include <QCoreApplication>
#include <QProcess>

class Estacion {
 public:
  explicit Estacion(const QString& ruta) : ruta_(ruta) {}

  // Runs an order to its end; what it prints after its mark.
  QString corre(const QString& orden) {
    arranca(orden);
    proceso_.waitForFinished();
    return dicho();
  }
  // Kills it some milliseconds after it began to print; the last number that it printed.
  int mata(const QString& orden, int milisegundos) {
    arranca(orden);
    proceso_.waitForReadyRead();
    proceso_.waitForFinished(milisegundos);
    ::kill(static_cast<pid_t>(proceso_.processId()), SIGKILL);
    proceso_.waitForFinished();
    return dicho().section(' ', -1).toInt();
  }

 private:
  void arranca(const QString& orden) {
    QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
    entorno.insert("LIBRANO_ORDEN", orden);
    entorno.insert("LIBRANO_FICHERO", ruta_);
    proceso_.setProcessEnvironment(entorno);
    proceso_.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=Orden.*"});
  }
  QString dicho() {
    QStringList todo;
    const QList<QByteArray> lineas = proceso_.readAllStandardOutput().split('\n');
    // The last line may have been cut by the kill.
    for (qsizetype i = 0; i + 1 < lineas.size(); ++i)
      if (lineas[i].startsWith("dice ")) todo += QString::fromUtf8(lineas[i].mid(5));
    return todo.join(' ');
  }

  QString ruta_;
  QProcess proceso_;
};
