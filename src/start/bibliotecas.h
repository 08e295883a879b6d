// What the program stands on, for whoever asks what runs here and under which licences.
#pragma once

#include <QList>
#include <QString>

struct Biblioteca {
  QString nombre;
  QString version;  // empty for what has none at hand
  QString uso;      // what it does here
  QString licencia;
};

QList<Biblioteca> bibliotecas();
