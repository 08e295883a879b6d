#include "oficial/registrofijo.h"

#include <cmath>
#include <QSaveFile>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "common/rutas.h"
#include "oficial/tablafija.h"

namespace {

const QHash<QString, TipoFijo>& tipos() {
  static const QHash<QString, TipoFijo> mapa = {
      {QStringLiteral("A"), TipoFijo::Letras},        {QStringLiteral("An"), TipoFijo::Letras},
      {QStringLiteral("Num"), TipoFijo::Numero},      {QStringLiteral("N"), TipoFijo::ConSigno},
      {QStringLiteral("Importe"), TipoFijo::Importe}, {QStringLiteral("Nif"), TipoFijo::Nif}};
  return mapa;
}

// diseno;registro;desde;longitud;tipo;casilla;fijo;formula;defecto;campo
CampoFijo campoDe(const QStringList& f) {
  return {f[1], f[2].toInt(), f[3].toInt(), tipos().value(f[4]), f[5], f[6], f[7], f[8], f[9]};
}

[[noreturn]] void noCabe(const CampoFijo& campo, const QString& valor) {
  const QString nombre = campo.casilla.isEmpty()
                             ? campo.nombre
                             : QStringLiteral("casilla %1, %2").arg(campo.casilla, campo.nombre);
  throw ErrorEjecucion(err::kLlamadaNoValida,
                       QStringLiteral("«%1» no puede llevar «%2»").arg(nombre, valor.trimmed()));
}

// The digits of a number and whether it is negative, from cents or from a text of digits.
struct Cifras {
  QString digitos;
  bool negativo = false;
};
Cifras cifrasDe(const CampoFijo& campo, const Variant& valor) {
  if (valor.isNull()) return {};
  QString texto = valor.isInteger() ? QString::number(valor.integer()) : valor.display().trimmed();
  const bool negativo = texto.startsWith(u'-');
  if (negativo) texto.remove(0, 1);
  for (const QChar c : texto)
    if (c < u'0' || c > u'9') noCabe(campo, valor.display());
  return {texto, negativo};
}

QString numero(const CampoFijo& campo, const Variant& valor) {
  const Cifras cifras = cifrasDe(campo, valor);
  const bool signo = campo.tipo != TipoFijo::Numero;
  if (cifras.negativo && !signo) noCabe(campo, valor.display());
  const bool lugar = campo.tipo == TipoFijo::Importe || cifras.negativo;
  const qsizetype ancho = campo.longitud - (lugar ? 1 : 0);
  if (cifras.digitos.size() > ancho) noCabe(campo, valor.display());
  const QString relleno = cifras.digitos.rightJustified(ancho, u'0');
  if (!lugar) return relleno;
  return (cifras.negativo ? u'N' : u' ') + relleno;
}

QString contenido(const CampoFijo& campo, const ValoresFijos& valores) {
  if (!campo.fijo.isEmpty()) return campo.fijo.leftJustified(campo.longitud);
  Variant valor = valores.value(campo.clave());
  if (valor.isNull() && !campo.defecto.isEmpty()) valor = campo.defecto;
  if (campo.tipo == TipoFijo::Letras)
    return textoOficial(valor.display()).leftJustified(campo.longitud, u' ', true);
  if (campo.tipo != TipoFijo::Nif) return numero(campo, valor);
  const QString nif = textoOficial(valor.display());
  if (nif.size() > campo.longitud) noCabe(campo, nif);
  return nif.rightJustified(campo.longitud, nif.isEmpty() ? u' ' : u'0');
}

}  // namespace

DisenoFijo::DisenoFijo(const QString& tabla, const QString& diseno) : nombre_(diseno) {
  for (const QStringList& fila : leeTablaFija(tabla)) {
    if (fila[0] != diseno) continue;
    std::vector<CampoFijo>& campos = registros_[fila[1]];
    const CampoFijo campo = campoDe(fila);
    const int siguiente = campos.empty() ? 1 : campos.back().desde + campos.back().longitud;
    if (campo.desde != siguiente)
      throw ErrorEjecucion(err::kElementoNoEncontrado, diseno + u' ' + campo.nombre);
    campos.push_back(campo);
  }
  if (registros_.isEmpty()) throw ErrorEjecucion(err::kElementoNoEncontrado, diseno);
}

const std::vector<CampoFijo>& DisenoFijo::campos(const QString& registro) const {
  const auto it = registros_.constFind(registro);
  if (it == registros_.constEnd()) throw ErrorEjecucion(err::kElementoNoEncontrado, registro);
  return *it;
}

int DisenoFijo::longitud(const QString& registro) const {
  const CampoFijo& ultimo = campos(registro).back();
  return ultimo.desde + ultimo.longitud - 1;
}

QByteArray escribeRegistro(const DisenoFijo& diseno, const QString& registro,
                           const ValoresFijos& valores) {
  QString linea;
  for (const CampoFijo& campo : diseno.campos(registro)) linea += contenido(campo, valores);
  return linea.toLatin1();
}

QHash<QString, QString> leeRegistro(const DisenoFijo& diseno, const QString& registro,
                                    const QString& texto) {
  QHash<QString, QString> campos;
  for (const CampoFijo& campo : diseno.campos(registro))
    campos.insert(campo.clave(), texto.mid(campo.desde - 1, campo.longitud).trimmed());
  return campos;
}

QString textoOficial(const QString& texto) {
  static const QString kSignos = QStringLiteral(".,-_&'\\:;/()");
  QString limpio;
  for (const QChar c : texto.toUpper()) {
    // What Latin-1 can hold without loss: the letters of Spanish, accents on vowels taken off.
    const QChar llana =
        c == u'Ñ' || c == u'Ç' ? c : QString(c).normalized(QString::NormalizationForm_D)[0];
    const bool letra = (llana >= u'A' && llana <= u'Z') || llana == u'Ñ' || llana == u'Ç';
    const bool cifra = llana >= u'0' && llana <= u'9';
    limpio += letra || cifra || kSignos.contains(llana) ? llana : QChar(u' ');
  }
  return limpio.simplified();
}

qint64 centimosDe(double importe) {
  constexpr double kMasGrande = 1e13;
  if (!(std::abs(importe) < kMasGrande)) throw ErrorEjecucion(err::kDesbordamiento);
  const double centimos = importe * 100;
  const double resto = std::abs(centimos - std::trunc(centimos));
  if (std::abs(resto - 0.5) > 0.001) return std::llround(centimos);
  // Near a half, 15 digits drop what the binary form added: 1,005 is one and goes up.
  return std::llround(QString::number(centimos, 'g', 15).toDouble());
}

QString textoDeCentimos(qint64 centimos, const QString& mascara) {
  return Format(double(centimos) / 100, mascara);
}

void escribeFichero(const QString& ruta, const QByteArray& contenido) {
  QSaveFile fichero(ruta);
  if (!fichero.open(QIODevice::WriteOnly) || fichero.write(contenido) != contenido.size() ||
      !fichero.commit())
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
}
