#include "oficial/identificadores.h"

#include <array>

namespace {

const QString kLetrasDni = QStringLiteral("TRWAGMYFPDXBNJZSQVHLCKE");

bool sonCifras(QStringView texto) {
  for (const QChar c : texto)
    if (c < u'0' || c > u'9') return false;
  return !texto.isEmpty();
}

Comprobacion siCoincide(bool coincide) {
  return coincide ? Comprobacion::Bueno : Comprobacion::Malo;
}

Comprobacion letraDeDni(const QString& cifras, QChar letra) {
  return siCoincide(sonCifras(cifras) && letra == kLetrasDni[cifras.toLongLong() % 23]);
}

Comprobacion compruebaEntidad(const QString& nif) {
  const QString cifras = nif.mid(1, 7);
  if (!sonCifras(cifras)) return Comprobacion::Malo;
  int suma = 0;
  for (int i = 0; i < 7; ++i) {
    const int cifra = cifras[i].digitValue() * (i % 2 == 0 ? 2 : 1);
    suma += cifra / 10 + cifra % 10;
  }
  const int control = (10 - suma % 10) % 10;
  const bool porCifra = nif[8] == QChar(u'0' + control);
  const bool porLetra = nif[8] == QStringLiteral("JABCDEFGHI")[control];
  if (!porCifra && !porLetra) return Comprobacion::Malo;
  const bool rara = QStringLiteral("ABEH").contains(nif[0])     ? porLetra
                    : QStringLiteral("PQRSNW").contains(nif[0]) ? porCifra
                                                                : false;
  return rara ? Comprobacion::Dudoso : Comprobacion::Bueno;
}

int modulo97(const QString& texto) {
  int resto = 0;
  for (const QChar c : texto) {
    if (c.isDigit()) {
      resto = (resto * 10 + c.digitValue()) % 97;
    } else {
      resto = (resto * 100 + c.unicode() - u'A' + 10) % 97;
    }
  }
  return resto;
}

QChar controlDeCuenta(const QString& diezCifras) {
  constexpr std::array kPesos = {1, 2, 4, 8, 5, 10, 9, 7, 3, 6};
  int suma = 0;
  for (int i = 0; i < 10; ++i) suma += diezCifras[i].digitValue() * kPesos[size_t(i)];
  const int control = 11 - suma % 11;
  return QChar(u'0' + (control == 10 ? 1 : control == 11 ? 0 : control));
}

}  // namespace

QString normalizaIdentificador(const QString& texto) {
  QString limpio;
  for (const QChar c : texto.toUpper())
    if (!c.isSpace() && c != u'-' && c != u'.' && c != u'/') limpio += c;
  return limpio;
}

QString nifDeNueve(const QString& texto) {
  const QString nif = normalizaIdentificador(texto);
  const bool esDni = nif.size() > 1 && nif.size() < 9 && sonCifras(QStringView(nif).chopped(1)) &&
                     nif.back().isLetter();
  return esDni ? nif.rightJustified(9, u'0') : nif;
}

Comprobacion compruebaNif(const QString& texto) {
  const QString nif = nifDeNueve(texto);
  if (nif.isEmpty()) return Comprobacion::Vacio;
  if (nif.size() != 9) return Comprobacion::Malo;
  const QChar primera = nif[0], ultima = nif[8];
  if (primera.isDigit()) return letraDeDni(nif.left(8), ultima);
  if (const qsizetype nie = QStringLiteral("XYZ").indexOf(primera); nie >= 0)
    return letraDeDni(QString::number(nie) + nif.mid(1, 7), ultima);
  if (QStringLiteral("KLM").contains(primera)) {
    // How their letter is made isn't published: one that doesn't fit is only doubtful.
    if (!sonCifras(nif.mid(1, 7)) || !ultima.isLetter()) return Comprobacion::Malo;
    return letraDeDni(nif.mid(1, 7), ultima) == Comprobacion::Bueno ? Comprobacion::Bueno
                                                                    : Comprobacion::Dudoso;
  }
  if (QStringLiteral("ABCDEFGHJNPQRSUVW").contains(primera)) return compruebaEntidad(nif);
  return Comprobacion::Malo;
}

QString cccDe(const QString& entidad, const QString& oficina, const QString& cuenta) {
  if (entidad.size() != 4 || oficina.size() != 4 || cuenta.size() != 10) return {};
  if (!sonCifras(entidad + oficina + cuenta)) return {};
  return entidad + oficina + controlDeCuenta(QStringLiteral("00") + entidad + oficina) +
         controlDeCuenta(cuenta) + cuenta;
}

Comprobacion compruebaCCC(const QString& texto) {
  const QString ccc = normalizaIdentificador(texto);
  if (ccc.isEmpty()) return Comprobacion::Vacio;
  if (ccc.size() != 20 || !sonCifras(ccc)) return Comprobacion::Malo;
  if (ccc != cccDe(ccc.left(4), ccc.mid(4, 4), ccc.mid(10))) return Comprobacion::Malo;
  return ccc.count(u'0') == 20 ? Comprobacion::Dudoso : Comprobacion::Bueno;
}

Comprobacion compruebaIBAN(const QString& texto) {
  const QString iban = normalizaIdentificador(texto);
  if (iban.isEmpty()) return Comprobacion::Vacio;
  if (iban.size() < 15 || iban.size() > 34) return Comprobacion::Malo;
  for (qsizetype i = 0; i < iban.size(); ++i) {
    const bool letra = iban[i] >= u'A' && iban[i] <= u'Z', cifra = sonCifras(iban.mid(i, 1));
    if (i < 2 ? !letra : i < 4 ? !cifra : !letra && !cifra) return Comprobacion::Malo;
  }
  if (modulo97(iban.mid(4) + iban.left(4)) != 1) return Comprobacion::Malo;
  if (!iban.startsWith(QLatin1String("ES"))) return Comprobacion::Bueno;
  return iban.size() == 24 ? compruebaCCC(iban.mid(4)) : Comprobacion::Malo;
}

QString ibanDe(const QString& ccc) {
  const int control = 98 - modulo97(ccc + QStringLiteral("142800"));
  return QStringLiteral("ES") + QString::number(control).rightJustified(2, u'0') + ccc;
}
