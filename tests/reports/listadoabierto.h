// The main window over "Prueba" of 2003 with the templates in its data folder and some lines:
//   asiento 1 of 10/01: 57200001 debe 100.004, 43000001 haber 100.004
//   asiento 2 of 10/01: 57200001 debe 100.004, 43000001 haber 100.004
//   asiento 3 of 05/01: 57200001 debe 30, 57000001 haber 30
//   asiento 4 of 20/02: 57000001 debe 50, 57200001 haber 50
#pragma once

#include "accounts/crearplan.h"
#include "journal/menuabierto.h"
#include "soporte/libroimpreso.h"

class ListadoAbierto : public MenuAbierto {
 protected:
  ListadoAbierto() {
    registraFormularios(*formularios);
    ponPlantillas(ctx);
    siembraPlan(*ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa()), 3);
    asiento(1, QDate(2003, 1, 10), "57200001", "43000001", 100.004);
    asiento(2, QDate(2003, 1, 10), "57200001", "43000001", 100.004);
    asiento(3, QDate(2003, 1, 5), "57200001", "57000001", 30);
    asiento(4, QDate(2003, 2, 20), "57000001", "57200001", 50);
    abreMenu();
  }

  void asiento(int numero, QDate fecha, const char* debe, const char* haber, double importe) {
    for (const bool esDebe : {true, false}) {
      inserta("Diario", lineaDe(numero * 2 - (esDebe ? 1 : 0), numero, fecha, esDebe ? debe : haber,
                                esDebe ? importe : -importe,
                                {{"Descripcion", QString("Apunte %1").arg(numero)}}));
    }
  }
  void elige(const char* subcuenta) {
    t->escribe("TxtSubcuenta", subcuenta);
    t->enfoca("TxtDebeHaber");
  }
  void menu(const char* entrada) {
    t->forma().findChild<QAction*>(entrada)->trigger();
    reposar();
  }
  // Opens a dialog by its entry of the menu and drives it.
  void dialogo(const char* entrada, const QString& nombre, std::function<void(Teclado&)> paso) {
    guion.esperaDialogo(nombre, std::move(paso));
    menu(entrada);
  }
  // "Saldo" as stored, in the order of the ledger.
  QStringList saldos(const char* subcuenta) const {
    QStringList todos;
    for (const QStringList& fila : filas(QString("Select Saldo from Diario where Subcuenta='%1' "
                                                 "order by Fecha, NAsiento, NLinea")
                                             .arg(subcuenta)))
      todos << fila[0];
    return todos;
  }
  // The book that a dialog launches by its button, and the dialog in front again.
  LibroImpreso lanza(Teclado& dialogo) {
    dialogo.pulsa("CmdAceptar");
    LibroImpreso libro = leeVista(guion);
    activar(dialogo.forma());
    return libro;
  }
};
