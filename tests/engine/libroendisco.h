// A small book of accounts on a real file in a folder of its own, for the tests of the engine, and
// the other programs and stations that share it.
#pragma once

#include "engine/datacontrol.h"
#include "engine/dbengine.h"
#include "soporte/otropuesto.h"
#include "soporte/prueba.h"

inline const QString kLocale = QStringLiteral(";LANGID=0x0409;CP=1252;COUNTRY=0");

// A place for a file, and a tool that reads it.
struct FicheroEnDisco {
  QString herramienta(const QString& sql, const QStringList& opciones = {},
                      const QString& otroFichero = {}) const {
    return preguntaFuera(otroFichero.isEmpty() ? ruta : otroFichero, sql, opciones);
  }

  QTemporaryDir carpeta;
  QString ruta = carpeta.filePath("Conta.MDB");
  DBEngine engine;
};

// A file without tables.
struct BaseEnDisco : FicheroEnDisco {
  std::unique_ptr<Database> db = engine.Workspaces(0).CreateDatabase(ruta, kLocale);
};

class LibroEnDisco : public testing::Test, protected BaseEnDisco {
 public:
  // One line through an open recordset; the fields not named stay as the table has them.
  static void anota(Recordset& rs, int linea, int asiento, const QString& subcuenta,
                    const QString& dh, const Variant& importe) {
    anade(rs, {{"NLinea", linea},
               {"NAsiento", asiento},
               {"Fecha", QDate(2003, 1 + linea % 12, 15)},
               {"Subcuenta", subcuenta},
               {"DH", dh},
               {"Importe", importe}});
  }

 protected:
  LibroEnDisco() {
    db->appendTable({"Empresa",
                     {{"IdCodigo", FieldType::Long, 0, "1", false},
                      {"Año", FieldType::Long, 0, {}, false},
                      {"NLinDiario", FieldType::Long, 0, "0", false}},
                     {{"IdCodigo", true, true, {"IdCodigo"}}}});
    db->appendTable({"Diario",
                     {{"NLinea", FieldType::Long, 0, {}, false},
                      {"NAsiento", FieldType::Long, 0, {}, false},
                      {"Fecha", FieldType::Date, 0, {}, false},
                      {"Subcuenta", FieldType::Text, 9, {}, true},
                      {"DH", FieldType::Text, 1, {}, true},
                      {"Importe", FieldType::Double, 0, {}, false},
                      {"TipoDiario", FieldType::Text, 1, "\"1\"", true}},
                     {{"NLinea", true, true, {"NLinea"}}}});
    engine.flush();
  }

  void anotaLineas(int cuantas) {
    const auto rs = db->OpenRecordset("Diario");
    for (int i = 1; i <= cuantas; ++i)
      anota(*rs, i, i / 2, "43000000" + QString::number(i % 5), "D", i);
    engine.flush();
  }
};
