#include "soporte/tecleo.h"

#include "common/sesion.h"
#include "soporte/escenario.h"

void tecleaLinea(Teclado& teclado, Guion& guion, const Sesion& sesion, const LineaDiario& linea,
                 bool nuevoAsiento) {
  if (nuevoAsiento) {
    const QString antes = teclado.textoDe("TxtSubcuenta");
    teclado.atras();
    teclado.atras();
    teclado.teclea("*");
    const char* const clase = antes == sesion.CuentaIVA1   ? "Soportado"
                              : antes == sesion.CuentaIVA2 ? "Repercutido"
                                                           : nullptr;
    if (clase)
      guion.esperaPregunta(QString("La partida que introduce corresponde a un apunte de IVA ¿desea "
                                   "crear un asiento de Iva %1 en este momento?")
                               .arg(clase),
                           false, "IVA");
    teclado.intro();
    teclado.entra(linea.Fecha.left(2) + linea.Fecha.mid(3, 2));
  }
  teclado.entra(linea.Subcuenta);
  teclado.entra(linea.Concepto);
  // The decimal key of the keypad is a point.
  const bool debe = !linea.Debe.isEmpty();
  teclado.teclea(QString(debe ? linea.Debe : linea.Haber).replace(u',', u'.'));
  if (debe)
    teclado.intro();
  else
    teclado.teclea("+");
}

void tecleaEmpresa(Teclado& alta, Guion& guion, const QString& empresa,
                   const std::function<void(Teclado&)>& plan) {
  alta.llega("TxtNombreEmpresa");
  alta.teclea(empresa);
  alta.llega("OptCreaPlan");
  alta.tecla(Qt::Key_Space);
  guion.esperaDialogo("FrmCrearPlan", plan);
  alta.mnemonico(u'a');
}

void tecleaNombre(Teclado& alta, const QString& nombre) {
  alta.llega("TxtDescripcion");
  alta.teclea(nombre);
  alta.mnemonico(u'a');
}

void tecleaSubcuenta(Teclado& menu, Guion& guion, const QString& codigo, const QString& nombre) {
  static const QRegularExpression kCeros("^(.+?)0+([1-9]+)$");
  menu.teclea(QString(codigo).replace(kCeros, "\\1.\\2"));
  guion.esperaPregunta("El código de la subcuenta introducido no existe, ¿ Desea darlo de alta ? ",
                       true, "Error");
  guion.esperaDialogo("FrmSubCuentas", [&](Teclado& alta) { tecleaNombre(alta, nombre); });
  menu.intro();
  menu.atras();
}

Formulario& empiezaEmpresa(Contexto& ctx, Guion& guion, const QString& empresa,
                           const std::function<void(Formulario&)>& mirar, const QString& plan) {
  const auto abierta = [&](const char* nombre) -> Formulario& {
    Formulario* forma = ctx.formularios->abierto(QString::fromLatin1(nombre));
    if (!forma) qFatal("%s isn't open", nombre);
    activar(*forma);
    if (mirar) mirar(*forma);
    return *forma;
  };
  registraFormularios(*ctx.formularios);
  ctx.formularios->cambiarA("FrmPresentacion");
  abierta("FrmPresentacion").findChild<QTimer*>("TMR")->setInterval(0);
  while (!ctx.formularios->abierto("FrmInicioSoftware")) reposar();
  Teclado(abierta("FrmInicioSoftware")).mnemonico(u'a');

  Teclado seleccion(abierta("FrmSeleccion"));
  guion.esperaDialogo("FrmEmpresas", [&](Teclado& alta) {
    abierta("FrmEmpresas");
    tecleaEmpresa(alta, guion, empresa, [&](Teclado& crear) {
      abierta("FrmCrearPlan");
      for (const QChar letra : plan) crear.mnemonico(letra);
      crear.mnemonico(u'a');
    });
  });
  seleccion.mnemonico(u'n');
  seleccion.mnemonico(u'a');
  return abierta("FrmMenu");
}

void tecleaTrimestre(Contexto& ctx, Guion& guion, Formulario& menu,
                     const std::function<void(const LineaDiario&)>& tras) {
  Teclado teclado(menu);
  QString asiento;
  for (const QStringList& f : leeCsv("trimestre/diario-trimestre.csv")) {
    const LineaDiario linea{f[0], f[1], f[2], f[3], f[4], f[5]};
    tecleaLinea(teclado, guion, ctx.sesion, linea, linea.Asiento != asiento);
    asiento = linea.Asiento;
    if (tras) tras(linea);
  }
}
