// The quarter's books with faults planted, of each kind that the revision looks for.
#pragma once

#include "engine/dbengine.h"
#include "oficial/declarante.h"
#include "soporte/prueba.h"

class Faltas {
 public:
  explicit Faltas(Database& empresa) : empresa_(empresa) {
    for (const auto& [subcuenta, campo, valor] :
         {std::tuple("40000001", "Nif", "B46554433"),
          {"57200001", "Descripcion", "Banco Duero ES81 9991 0025 1100 0012 3456"},
          {"57200002", "Descripcion", "Caja Rural es08-9992-0007-5902-0005-4322"},
          {"40000002", "Direccion", "Ronda 2, paga en 9991 0025 00 0000123456"}})
      enPlan(subcuenta, campo, valor);
    Declarante declarante(empresa);
    declarante.pon("Nif", "B46554432");
    declarante.pon("Iban", "ES8199910025110000123457");
    declarante.graba(empresa);
    factura("S0000000001", "40000003", "A-7", 201, 21, 21);
    factura("S0000000002", "40000003", "a 7", 202, 10, 10);
    factura("S0000000003", "40000002", "A-7", 203, 4, 4.5);
    factura("R0000000001", "43000005", "24/001", 204, -21, -21);
    factura("R0000000002", "43000005", "24/004", 205, -21, -21);
    registro("R0000000003", "43000005", "24/005", 0, -9);
    asiento(301, {{"57000001", -90000}, {"10000001", 0}, {"60000001", 90000}});
    asiento(302, {{"62999999", 5}, {"60000001", -5}});
    asiento(303, {{"60000001", 3}});
    linea(304, "60000001", 1, QDate(2023, 12, 31));
    asiento(304, {{"70000001", -1}});
    inserta("Subcuentas", subcuentaDe("99000001", "De orden"));
    asiento(305, {{"99000001", 2}, {"60000001", -2}});
  }

  void enPlan(const QString& subcuenta, const QString& campo, const QString& valor) {
    const auto fila =
        empresa_.OpenRecordset("Select * from Subcuentas where Subcuenta='" + subcuenta + "'");
    fila->Edit();
    fila->Fields(campo) = valor;
    fila->Update();
  }

 private:
  void inserta(const QString& tabla, const Valores& valores) {
    anade(*empresa_.OpenRecordset(tabla), valores);
  }
  void linea(int asiento, const QString& subcuenta, double importe, QDate dia = {2024, 3, 31},
             const QString& registro = {}) {
    inserta("Diario",
            lineaDe(++ultima_, asiento, dia, subcuenta, importe, {{"ApunteIVA", registro}}));
  }
  void asiento(int numero, const std::vector<std::pair<const char*, double>>& lineas) {
    for (const auto& [subcuenta, importe] : lineas) linea(numero, subcuenta, importe);
  }
  void registro(const QString& codigo, const QString& quien, const QString& factura, int asiento,
                double iva) {
    const bool compra = codigo.startsWith('S');
    inserta("RSIVA", {{"Codigo", codigo},
                      {"CliPro", quien},
                      {"Factura", factura},
                      {"Asiento", asiento},
                      {"Base", iva * 5},
                      {"TipoIVA", "03"},
                      {"Fecha", QDate(2024, 3, 31)},
                      {"FechaC", QDate(2024, 3, 31)},
                      {"IVA", iva},
                      {"Recargo", 0},
                      {"CtaIVA", compra ? "47200001" : "47700001"},
                      {"CtaRE", compra ? "47500001" : "47300001"},
                      {"CtaCon", compra ? "60000001" : "70000001"}});
  }
  // A register row whose quota its lines bear out, or not.
  void factura(const QString& codigo, const QString& quien, const QString& numero, int asiento,
               double iva, double enDiario) {
    registro(codigo, quien, numero, asiento, iva);
    linea(asiento, iva < 0 ? "47700001" : "47200001", enDiario, {2024, 3, 31}, codigo);
    linea(asiento, quien, -enDiario, {2024, 3, 31}, codigo);
  }

  Database& empresa_;
  int ultima_ = 90000;
};
