// Where today comes from, so that a test can work on any day.
#pragma once

#include <QDate>

class Reloj {
 public:
  virtual ~Reloj() = default;
  virtual QDate hoy() const { return QDate::currentDate(); }
};
