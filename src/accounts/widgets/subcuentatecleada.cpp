#include "accounts/widgets/subcuentatecleada.h"

#include <QLineEdit>
#include <QSignalBlocker>

#include "common/comillas.h"
#include "common/funciones.h"
#include "common/sesion.h"
#include "engine/datacontrol.h"

QString nombreDeSubcuenta(QLineEdit& campo, DataControl& subcuentas, const Sesion& sesion) {
  QString codigo = campo.text();
  const bool esCodigo = codigo.at(0).isDigit();
  if (esCodigo) codigo = ExpandeCodigo(codigo, sesion.DigitosSubcuenta);
  if (codigo != campo.text()) {
    const QSignalBlocker callado(campo);
    campo.setText(codigo);
  }
  // A name to look for may hold an apostrophe; in a code it is a slip.
  subcuentas.bind(sesion.rutaEmpresa(),
                  QStringLiteral("Select * from Subcuentas where Subcuenta=") +
                      (esCodigo ? entreComillas(codigo) : nombreEntreComillas(codigo)));
  return subcuentas.Fields(QStringLiteral("Descripcion")).display();
}
