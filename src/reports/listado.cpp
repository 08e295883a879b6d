#include "reports/listado.h"

#include "common/formato.h"
#include "reports/formula.h"

QString textoLimites(const QString& desde, const QString& hasta) {
  return "Desde : " + desde + "   ~   Hasta : " + hasta;
}

const QStringList& listaMeses() {
  static const QStringList meses = {"01-Enero",      "02-Febrero", "03-Marzo",     "04-Abril",
                                    "05-Mayo",       "06-Junio",   "07-Julio",     "08-Agosto",
                                    "09-Septiembre", "10-Octubre", "11-Noviembre", "12-Diciembre"};
  return meses;
}

QString numeroDeMes(const QString& item) {
  return QString::number(static_cast<int>(Val(item.left(2))));
}

QString seleccionFechas(const QString& campo, const QString& desde, const QString& hasta) {
  return '{' + campo + "} >= " + fechaDeFormula(desde) + " and {" + campo +
         "} <= " + fechaDeFormula(hasta);
}

QString seleccionCodigos(const QString& campo, const QString& desde, const QString& hasta) {
  return '{' + campo + "}>='" + desde + "' and {" + campo + "}<='" + hasta + '\'';
}

Listado listadoMensual(const QString& titulo, const QString& plantilla, const QString& campoMes,
                       const QString& desde, const QString& hasta) {
  return {.titulo = titulo,
          .plantilla = "Impresos\\" + plantilla + ".rpt",
          .seleccion = '{' + campoMes + "}>=" + numeroDeMes(desde) + " and {" + campoMes +
                       "}<=" + numeroDeMes(hasta),
          .limites = textoLimites(desde, hasta)};
}
