// Qt's texts as the test reports show them.
#pragma once

#include <ostream>
#include <QString>

inline void PrintTo(const QString& texto, std::ostream* salida) {
  *salida << '"' << texto.toStdString() << '"';
}
