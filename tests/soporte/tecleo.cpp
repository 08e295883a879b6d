#include "soporte/tecleo.h"

#include <QTimer>

#include "foundation/sesion.h"
#include "foundation/toolkit/contexto.h"
#include "foundation/toolkit/formulario.h"
#include "foundation/toolkit/registro.h"
#include "soporte/guion.h"
#include "soporte/libros.h"
#include "soporte/teclado.h"

std::vector<LineaDiario> diarioTrimestre() {
  std::vector<LineaDiario> lineas;
  for (const QStringList& f : leeCsv(QStringLiteral("trimestre/diario-trimestre.csv"))) {
    lineas.push_back({f[0], f[1], f[2], f[3], f[4], f[5]});
  }
  return lineas;
}

void tecleaLinea(Teclado& teclado, Guion& guion, const Sesion& sesion, const LineaDiario& linea,
                 bool nuevoAsiento) {
  if (nuevoAsiento) {
    const QString antes = teclado.textoDe("TxtSubcuenta");
    teclado.atras();
    teclado.atras();
    teclado.teclea(QStringLiteral("*"));
    const std::pair<QString, const char*> deIVA[] = {{sesion.CuentaIVA1, "Soportado"},
                                                     {sesion.CuentaIVA2, "Repercutido"}};
    for (const auto& [codigo, clase] : deIVA) {
      if (antes != codigo) continue;
      guion.esperaPregunta(QStringLiteral("La partida que introduce corresponde a un apunte de IVA "
                                          "¿desea crear un asiento de Iva %1 en este momento?")
                               .arg(QLatin1String(clase)),
                           false, QStringLiteral("IVA"));
    }
    teclado.intro();
    teclado.teclea(linea.Fecha.left(2) + linea.Fecha.mid(3, 2));
    teclado.intro();
  }
  teclado.teclea(linea.Subcuenta);
  teclado.intro();
  teclado.teclea(linea.Concepto);
  teclado.intro();
  // The decimal key of the keypad is a point.
  const bool debe = !linea.Debe.isEmpty();
  teclado.teclea(QString(debe ? linea.Debe : linea.Haber).replace(u',', u'.'));
  if (debe) {
    teclado.intro();
  } else {
    teclado.teclea(QStringLiteral("+"));
  }
}

Formulario& empiezaEmpresa(Contexto& ctx, Guion& guion, const QString& empresa,
                           const std::function<void(Formulario&)>& mirar) {
  const auto abierta = [&](const char* nombre) -> Formulario& {
    Formulario* forma = ctx.formularios->abierto(QString::fromLatin1(nombre));
    if (!forma) qFatal("%s isn't open", nombre);
    activar(*forma);
    if (mirar) mirar(*forma);
    return *forma;
  };
  ctx.formularios->cambiarA(QStringLiteral("FrmPresentacion"));
  abierta("FrmPresentacion").findChild<QTimer*>(QStringLiteral("TMR"))->setInterval(0);
  while (!ctx.formularios->abierto(QStringLiteral("FrmInicioSoftware"))) reposar();
  Teclado(abierta("FrmInicioSoftware")).pulsa("CmdAceptar");

  Teclado seleccion(abierta("FrmSeleccion"));
  guion.esperaDialogo(QStringLiteral("FrmEmpresas"), [&](Teclado& alta) {
    alta.escribe("TxtNombreEmpresa", empresa);
    alta.intro();
    alta.pulsa("CmdAceptar");
  });
  seleccion.pulsa("CmdEmpresaAlta");
  seleccion.pulsa("CmdAceptar");
  return abierta("FrmMenu");
}

void tecleaTrimestre(Contexto& ctx, Guion& guion, Formulario& menu,
                     const std::function<void(const LineaDiario&)>& tras) {
  Teclado teclado(menu);
  QString asiento;
  for (const LineaDiario& linea : diarioTrimestre()) {
    tecleaLinea(teclado, guion, ctx.sesion, linea, linea.Asiento != asiento);
    asiento = linea.Asiento;
    if (tras) tras(linea);
  }
}
