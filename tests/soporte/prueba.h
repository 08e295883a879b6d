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
#include "soporte/textos.h"

// Adds a row: the names of its fields with their values.
using Valores = std::vector<std::pair<QString, Variant>>;
inline void anade(Recordset& filas, const Valores& valores) {
  filas.AddNew();
  for (const auto& [campo, valor] : valores) filas.Fields(campo) = valor;
  filas.Update();
}
