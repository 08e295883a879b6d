#include "accounts/widgets/subcuentatecleada.h"

#include <QLineEdit>
#include <QSignalBlocker>

#include "common/funciones.h"
#include "common/sesion.h"
#include "engine/datacontrol.h"

QString nombreDeSubcuenta(QLineEdit& campo, DataControl& subcuentas, const Sesion& sesion) {
  QString codigo = campo.text();
  if (codigo.at(0).isDigit()) codigo = ExpandeCodigo(codigo, sesion.DigitosSubcuenta);
  if (codigo != campo.text()) {
    const QSignalBlocker callado(campo);
    campo.setText(codigo);
  }
  subcuentas.bind(sesion.rutaEmpresa(),
                  QStringLiteral("Select * from Subcuentas where Subcuenta='%1'").arg(codigo));
  return subcuentas.Fields(QStringLiteral("Descripcion")).display();
}
