// What every test stands on.
#pragma once

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QtCore>
#include <QTest>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/rutas.h"
#include "engine/recordset.h"
#include "soporte/errores.h"
#include "soporte/ficheros.h"
#include "soporte/textos.h"

// Adds a row, and changes the current one: the names of its fields with their values.
using Valores = std::vector<std::pair<QString, Variant>>;
template <class F>
void anade(F& filas, const Valores& valores) {
  filas.AddNew();
  for (const auto& [campo, valor] : valores) filas.Fields(campo) = valor;
  filas.Update();
}
template <class F>
void corrige(F& filas, const Valores& valores) {
  filas.Edit();
  for (const auto& [campo, valor] : valores) filas.Fields(campo) = valor;
  filas.Update();
}

// A line of the journal, the sign of its amount its side, with what else it has.
inline Valores lineaDe(int numero, int asiento, const Variant& fecha, const QString& subcuenta,
                       const Variant& importe, const Valores& mas = {}) {
  Valores valores = {{"NLinea", numero},   {"NAsiento", asiento},
                     {"Fecha", fecha},     {"Subcuenta", subcuenta},
                     {"Importe", importe}, {"DH", importe.display().startsWith('-') ? "H" : "D"}};
  valores.insert(valores.end(), mas.begin(), mas.end());
  return valores;
}

// A subcuenta of a cuenta of three digits.
inline Valores subcuentaDe(const QString& codigo, const QString& nombre, const Valores& mas = {}) {
  Valores valores = {{"Subcuenta", codigo}, {"Cuenta", codigo.left(3)}, {"Descripcion", nombre}};
  valores.insert(valores.end(), mas.begin(), mas.end());
  return valores;
}
