#include "accounts/widgets/teclasdebusqueda.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include "common/ignorar.h"
#include "engine/datacontrol.h"

bool llevaABusqueda(QLineEdit& busqueda, QKeyEvent& tecla) {
  const QString texto = tecla.text();
  const bool orden = tecla.modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (orden || texto.isEmpty() || !texto.at(0).isPrint() || texto == u"+" || texto == u" ")
    return false;
  busqueda.setFocus(Qt::TabFocusReason);
  busqueda.selectAll();
  QCoreApplication::sendEvent(&busqueda, &tecla);
  return true;
}

bool mueveConFlechas(DataControl& datos, const QKeyEvent& tecla) {
  const bool baja = tecla.key() == Qt::Key_Down;
  if (!baja && tecla.key() != Qt::Key_Up) return false;
  ignorando([&] {  // an empty list has nowhere to go
    if (baja)
      datos.MoveNext();
    else
      datos.MovePrevious();
    // Past either end the list would stand on no row.
    if (datos.Eof()) datos.MoveLast();
    if (datos.Recordset().Bof()) datos.MoveFirst();
  });
  return true;
}
