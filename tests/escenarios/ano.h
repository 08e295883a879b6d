// A shop's year by keys, from an empty folder to the next year's opening: its first quarter typed
// line by line, invoices, receipts, payrolls, stocks and result regularised, its books printed,
// closed, reopened by its date and closed again. After each step the journal, the trial balance and
// the main window are what the test reckons.
#pragma once

#include "escenarios/librosimpresos.h"

class UnAno : public LibrosImpresos {
 protected:
  // In a folder that is empty.
  explicit UnAno(const QString& carpeta = {}) : LibrosImpresos(carpeta) {}
  void recorre();

  // What each subcuenta comes to, with its name.
  Saldos saldos() const {
    std::vector<Linea> lineas;
    for (const auto& [numero, linea] : libro) lineas.push_back(linea);
    Saldos todos = saldosDe(lineas);
    for (auto& [codigo, uno] : todos) uno.titulo = nombres.at(codigo);
    return todos;
  }
  QString limite() const { return valor("Select NoModificar from Empresa"); }
  bool cerrada() const {
    const bool si = t->visible("ImpEmp1");
    EXPECT_EQ(t->visible("ImpEmp2") && t->visible("ImpEmp3"), si);
    EXPECT_EQ(t->forma().findChild<QAction*>("MnuInvertirCierre")->isVisible(), si);
    return si;
  }
  // The lock and its marks come with the opening of a company.
  void pasaA(const QString& nombre) {
    t->elige("TxtEmpresa", nombre);
    EXPECT_EQ(ctx.sesion.EmpresaActual, nombre);
  }
  // In the order of the year.
  void creaLaEmpresa();
  void tecleaElTrimestre();
  void factura(const char* entrada, const QStringList& textos);
  void facturas();
  void recibo(Teclado& lista, const QStringList& textos);
  void recibos();
  void nomina(int asiento, const QString& fecha);
  void regularizaExistencias();
  void imprimeResultados();
  void regularizaResultadoDesdeElBalance();
  void imprimeDiario();
  void cierraElAno();
  void creaElSiguiente();
  void reabreYVuelveACerrar();
  void abreElSiguiente();

  // Shown the screens on the way to the main window.
  std::function<void(QWidget&)> mirar;
  std::map<QString, QString> nombres;  // of the subcuentas
  Saldos antesDelCierre;
  const QString kAno = "Ejemplo 2024";
  const QString kSiguiente = "Ejemplo 2025";
  const QString kFin = "31/12/2024";
};
