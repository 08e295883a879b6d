#include "common/funciones.h"

#include <QFile>

#include "common/conversion.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/rutas.h"

std::optional<QDate> FechaTecleada(const QString& tecleado, int anoActual, QDate hoy) {
  const QString ano = QString::number(anoActual);
  QString completa = tecleado;
  switch (tecleado.size()) {
    case 2:
      completa = tecleado + Format(hoy, QStringLiteral("/mm/")) + ano;
      break;
    case 3:
      completa = tecleado + u'/' + ano;
      break;
    case 4:
    case 5:
      completa = tecleado.left(2) + u'/' + tecleado.right(2) + u'/' + ano;
      break;
    case 6:
      completa =
          tecleado.left(2) + u'/' + tecleado.mid(2, 2) + u'/' + ano.left(2) + tecleado.right(2);
      break;
    default:
      break;
  }
  const auto fecha = parseDate(completa);
  return fecha ? std::optional(fecha->date()) : std::nullopt;
}

QString NormalizaFecha(const QString& tecleado, int anoActual, QDate hoy) {
  return Format(FechaTecleada(tecleado, anoActual, hoy).value_or(hoy),
                QStringLiteral("dd/mm/yyyy"));
}

QString AjustaBarra(const QString& ruta) {
  return ruta.endsWith(u'\\') ? ruta : ruta + u'\\';
}

QString ExpandeCodigo(const QString& texto, int digitos) {
  const qsizetype punto = texto.indexOf(u'.');
  if (punto < 0) return texto;
  const qsizetype ceros = digitos - (texto.size() - 1);
  if (ceros < 0) throw ErrorEjecucion(err::kLlamadaNoValida, texto);
  return texto.left(punto) + QString(ceros, u'0') + texto.mid(punto + 1);
}

QString ComaAPunto(QString texto) {
  return texto.replace(u',', u'.');
}

QString PuntoAComa(QString texto) {
  return texto.replace(u'.', u',');
}

void RegistraError(const QString& dirPrograma, int numero, const QString& descripcion,
                   const QString& lugar) {
  QString linea = QStringLiteral("Error n - %1 - ").arg(numero) + descripcion +
                  QStringLiteral(" - Producido en ") + lugar;
  // One line an error, whatever a description holds.
  linea.replace(u'\r', u' ').replace(u'\n', u' ');
  QFile registro(rutaSistema(AjustaBarra(dirPrograma) + QStringLiteral("Errores.txt")));
  if (!registro.open(QIODevice::WriteOnly | QIODevice::Append) ||
      registro.write((linea + QStringLiteral("\r\n")).toUtf8()) < 0 || !registro.flush())
    throw ErrorEjecucion(err::kErrorDeRuta, registro.fileName());
}
