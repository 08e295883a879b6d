#include "oficial/norma43.h"

#include <algorithm>
#include <map>
#include <QFile>
#include <QStringDecoder>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "oficial/identificadores.h"
#include "oficial/registrofijo.h"

namespace {

constexpr int kAncho = 80;
constexpr int kMaximoDeErrores = 200;
constexpr qint64 kMaximoDeFichero = 256 << 20;

// The upper half of code page 850.
const QString& pagina850() {
  static const QString tabla = QStringLiteral(
      "ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒáíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥┐└┴┬├─┼ãÃ╚╔╩╦╠═╬¤ðÐÊËÈıÍÎÏ┘┌█"
      "▄¦Ì▀"
      "ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00AD±‗¾¶§÷¸°¨·¹³²■\u00A0");
  return tabla;
}

QString de850(const QByteArray& bytes) {
  QString texto;
  texto.reserve(bytes.size());
  for (const char c : bytes) {
    const auto codigo = static_cast<unsigned char>(c);
    texto += codigo < 0x80 ? QChar(codigo) : pagina850()[codigo - 0x80];
  }
  return texto;
}

bool esLetra(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || static_cast<unsigned char>(c) >= 0x80;
}

// A yen between letters is an Ñ of the old page.
bool es850(const QByteArray& bytes) {
  for (qsizetype i = 1; i + 1 < bytes.size(); ++i)
    if (bytes[i] == '\xA5' && esLetra(bytes[i - 1]) && esLetra(bytes[i + 1])) return true;
  return false;
}

// YYMMDD: years up to 79 are of this century.
QDate fechaDe(const QString& cifras) {
  if (cifras.size() != 6) return {};
  constexpr int kSiglo = 80;
  const int ano = QStringView(cifras).left(2).toInt();
  return {ano + (ano < kSiglo ? 2000 : 1900), QStringView(cifras).mid(2, 2).toInt(),
          QStringView(cifras).mid(4, 2).toInt()};
}

QString importeDe(qint64 centimos) {
  const QString cifras = QString::number(std::llabs(centimos)).rightJustified(3, u'0');
  return (centimos < 0 ? QStringLiteral("-") : QString()) + cifras.chopped(2) + u',' +
         cifras.right(2);
}

class Lector {
 public:
  LecturaNorma43 lee(const QString& texto);

 private:
  using Campos = QHash<QString, QString>;

  void registro(const QString& linea);
  bool enteros(const QString& tipo, const Campos& campos);
  void cabecera(const Campos& c);
  void movimiento(const Campos& c);
  void nota(const Campos& c);
  void fin(const Campos& c);
  void finDeFichero(const Campos& c);
  void cierraMovimiento();
  void numera(CuentaBanco& cuenta) const;
  void error(const QString& texto) {
    if (leido_.errores.size() < kMaximoDeErrores) leido_.errores.append({linea_, texto});
  }
  void avisa(const QString& texto) { leido_.avisos.append({linea_, texto}); }
  QDate fecha(const Campos& c, const char* campo);
  qint64 conSigno(const Campos& c, const char* campo) const {
    const qint64 importe = c.value(QLatin1String(campo)).toLongLong();
    return c.value(QStringLiteral("Clave")) == QLatin1String("1") ? -importe : importe;
  }

  const DisenoFijo diseno_{QStringLiteral("norma43.csv"), QStringLiteral("43")};
  LecturaNorma43 leido_;
  int linea_ = 0;
  int registros_ = 0;
  bool abierta_ = false;  // an account without its end yet
  bool perdida_ = false;  // one whose header couldn't be read: its records say nothing
  bool terminado_ = false;
  QString divisa_;
  QString suelto_;  // entity, office and account as they stand in the header
  QList<QPair<QString, QString>> notas_;
  struct {
    qint64 apuntes = 0, total = 0;
  } debe_, haber_;
};

// The figures of a record: what isn't a number where one must stand leaves it out.
bool Lector::enteros(const QString& tipo, const Campos& campos) {
  for (const CampoFijo& campo : diseno_.campos(tipo)) {
    if (campo.tipo != TipoFijo::Numero) continue;
    const QString valor = campos.value(campo.clave());
    const bool cifras = valor.size() == campo.longitud &&
                        std::ranges::all_of(valor, [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (cifras && (campo.fijo.isEmpty() || campo.fijo == valor)) continue;
    error(QStringLiteral("en las posiciones %1 a %2 (%3) no vale «%4»")
              .arg(campo.desde)
              .arg(campo.desde + campo.longitud - 1)
              .arg(campo.nombre, valor));
    return false;
  }
  const QString clave = campos.value(QStringLiteral("Clave"), QStringLiteral("1"));
  if (clave == QLatin1String("1") || clave == QLatin1String("2")) return true;
  error(QStringLiteral("la clave de debe o haber es «%1» y sólo puede ser 1 ó 2").arg(clave));
  return false;
}

QDate Lector::fecha(const Campos& c, const char* campo) {
  const QString cifras = c.value(QLatin1String(campo));
  const QDate dia = fechaDe(cifras);
  if (!dia.isValid()) error(QStringLiteral("«%1» no es una fecha (año, mes y día)").arg(cifras));
  return dia;
}

void Lector::cabecera(const Campos& c) {
  if (abierta_) error(QStringLiteral("empieza una cuenta sin que acabe la anterior (falta el 33)"));
  abierta_ = true;
  divisa_ = c.value(QStringLiteral("Divisa"));
  if (divisa_ != QLatin1String("978"))
    error(QStringLiteral("la cuenta está en la divisa %1 y la contabilidad en euros (978)")
              .arg(divisa_));
  const QString entidad = c.value(QStringLiteral("Entidad")),
                oficina = c.value(QStringLiteral("Oficina")),
                numero = c.value(QStringLiteral("Cuenta"));
  suelto_ = entidad + oficina + numero;
  debe_ = haber_ = {};
  CuentaBanco cuenta;
  cuenta.linea = linea_;
  cuenta.ccc = cccDe(entidad, oficina, numero);
  cuenta.nombre = c.value(QStringLiteral("Nombre"));
  cuenta.desde = fecha(c, "Desde");
  cuenta.hasta = fecha(c, "Hasta");
  if (cuenta.desde.isValid() && cuenta.hasta.isValid() && cuenta.hasta < cuenta.desde)
    error(QStringLiteral("el periodo acaba antes de empezar"));
  cuenta.inicial = conSigno(c, "Saldo");
  leido_.cuentas.push_back(cuenta);
}

void Lector::movimiento(const Campos& c) {
  MovimientoBanco m;
  m.linea = linea_;
  m.operacion = fecha(c, "Operacion");
  m.valor = fecha(c, "Valor");
  m.comun = c.value(QStringLiteral("Comun"));
  m.propio = c.value(QStringLiteral("Propio"));
  m.centimos = conSigno(c, "Importe");
  m.documento = c.value(QStringLiteral("Documento"));
  m.referencia1 = c.value(QStringLiteral("Referencia1"));
  m.referencia2 = c.value(QStringLiteral("Referencia2"));
  auto& lado = c.value(QStringLiteral("Clave")) == QLatin1String("1") ? debe_ : haber_;
  ++lado.apuntes;
  lado.total += std::llabs(m.centimos);
  leido_.cuentas.back().movimientos.push_back(m);
}

void Lector::nota(const Campos& c) {
  if (leido_.cuentas.back().movimientos.empty())
    return error(QStringLiteral("un concepto (23) sin movimiento delante"));
  notas_.append({c.value(QStringLiteral("Dato")), c.value(QStringLiteral("Concepto"))});
}

// The notes may come in any order.
void Lector::cierraMovimiento() {
  if (notas_.isEmpty()) return;
  std::ranges::stable_sort(notas_, {}, &QPair<QString, QString>::first);
  QStringList textos;
  for (const auto& nota : notas_) textos += nota.second.simplified();
  textos.removeAll(QString());
  leido_.cuentas.back().movimientos.back().concepto = textos.join(u' ');
  notas_.clear();
}

void Lector::fin(const Campos& c) {
  abierta_ = false;
  CuentaBanco& cuenta = leido_.cuentas.back();
  if (c.value(QStringLiteral("Entidad")) + c.value(QStringLiteral("Oficina")) +
          c.value(QStringLiteral("Cuenta")) !=
      suelto_)
    error(QStringLiteral("el final es de otra cuenta que la cabecera"));
  if (c.value(QStringLiteral("Divisa")) != divisa_)
    error(QStringLiteral("el final está en otra divisa que la cabecera"));
  const auto compara = [&](const char* lado, const auto& suma, const char* apuntes,
                           const char* total) {
    const qint64 otros = c.value(QLatin1String(apuntes)).toLongLong(),
                 importe = c.value(QLatin1String(total)).toLongLong();
    if (otros != suma.apuntes)
      error(QStringLiteral("dice %1 apuntes al %2 y hay %3")
                .arg(otros)
                .arg(QLatin1String(lado))
                .arg(suma.apuntes));
    if (importe != suma.total)
      error(QStringLiteral("dice un total al %1 de %2 y suman %3")
                .arg(QLatin1String(lado), importeDe(importe), importeDe(suma.total)));
  };
  compara("debe", debe_, "ApuntesDebe", "TotalDebe");
  compara("haber", haber_, "ApuntesHaber", "TotalHaber");
  cuenta.final = conSigno(c, "Saldo");
  const qint64 debia = cuenta.inicial - debe_.total + haber_.total;
  const bool sinSaldos = cuenta.inicial == 0 && cuenta.final == 0;
  if (cuenta.final != debia && !sinSaldos)
    avisa(QStringLiteral("el saldo final es %1 y con los movimientos sale %2")
              .arg(importeDe(cuenta.final), importeDe(debia)));
  numera(cuenta);
}

void Lector::numera(CuentaBanco& cuenta) const {
  std::map<QString, int> iguales;
  for (MovimientoBanco& m : cuenta.movimientos) m.ordinal = iguales[m.senas()]++;
}

// Some banks count this record too.
void Lector::finDeFichero(const Campos& c) {
  terminado_ = true;
  const int dice = c.value(QStringLiteral("Registros")).toInt();
  if (dice == registros_ + 1)
    avisa(QStringLiteral("el final del fichero se cuenta a sí mismo"));
  else if (dice != registros_)
    error(QStringLiteral("dice %1 registros y hay %2").arg(dice).arg(registros_));
}

void Lector::registro(const QString& linea) {
  if (terminado_) return error(QStringLiteral("hay datos después del final del fichero (88)"));
  if (linea.size() > kAncho)
    return error(QStringLiteral("tiene %1 caracteres y caben %2").arg(linea.size()).arg(kAncho));
  const QString tipo = linea.left(2);
  if (tipo != QLatin1String("88")) ++registros_;
  if (!diseno_.tiene(tipo)) return error(QStringLiteral("«%1» no es un registro").arg(tipo));
  const Campos campos = leeRegistro(diseno_, tipo, linea);
  if (tipo != QLatin1String("23")) cierraMovimiento();
  const bool bien = enteros(tipo, campos);
  if (tipo == QLatin1String("11")) {
    perdida_ = !bien;
    return bien ? cabecera(campos) : void(abierta_ = false);
  }
  if (tipo == QLatin1String("88")) {
    if (abierta_) error(QStringLiteral("falta el final de la cuenta (33)"));
    return bien ? finDeFichero(campos) : void(terminado_ = true);
  }
  if (perdida_ || !bien) return;
  if (!abierta_)
    return error(QStringLiteral("un registro %1 fuera de toda cuenta (falta el 11)").arg(tipo));
  if (tipo == QLatin1String("22")) return movimiento(campos);
  if (tipo == QLatin1String("23")) return nota(campos);
  if (tipo == QLatin1String("33")) return fin(campos);
  if (leido_.cuentas.back().movimientos.empty())
    error(QStringLiteral("un importe en divisa (24) sin movimiento delante"));
}

LecturaNorma43 Lector::lee(const QString& texto) {
  for (QStringView linea : QStringView(texto).split(u'\n')) {
    ++linea_;
    while (!linea.isEmpty() && linea.back().isSpace()) linea.chop(1);
    if (!linea.isEmpty()) registro(linea.toString());
  }
  cierraMovimiento();
  if (registros_ == 0 && leido_.errores.isEmpty())
    error(QStringLiteral("el fichero está vacío"));
  else if (!terminado_ && abierta_)
    error(QStringLiteral("el fichero acaba sin el final de la cuenta (33)"));
  else if (!terminado_)
    avisa(QStringLiteral("falta el final del fichero (88)"));
  return std::move(leido_);
}

}  // namespace

QString textoNorma43(const QByteArray& fichero) {
  QByteArray bytes = fichero;
  if (const qsizetype fin = bytes.indexOf('\x1A'); fin >= 0) bytes.truncate(fin);
  QStringDecoder utf8(QStringDecoder::Utf8);
  QString texto = utf8(bytes);
  if (utf8.hasError()) texto = es850(bytes) ? de850(bytes) : QString::fromLatin1(bytes);
  if (texto.startsWith(QChar(QChar::ByteOrderMark))) texto.remove(0, 1);
  texto.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return texto.replace(u'\r', u'\n');
}

QString MovimientoBanco::senas() const {
  return QStringList{operacion.toString(Qt::ISODate),
                     valor.toString(Qt::ISODate),
                     comun,
                     propio,
                     QString::number(centimos),
                     documento,
                     referencia1,
                     referencia2}
      .join(u'|');
}

LecturaNorma43 leeNorma43(const QByteArray& fichero) {
  return Lector().lee(textoNorma43(fichero));
}

LecturaNorma43 leeFicheroNorma43(const QString& ruta) {
  QFile fichero(ruta);
  if (!fichero.exists()) throw ErrorEjecucion(err::kFicheroNoEncontrado, rutaPrograma(ruta));
  if (!fichero.open(QIODevice::ReadOnly) || fichero.size() > kMaximoDeFichero)
    throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
  return leeNorma43(fichero.readAll());
}
