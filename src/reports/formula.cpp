#include "reports/formula.h"

#include <QHash>

#include "common/errorejecucion.h"
#include "common/variant.h"
#include "reports/errores.h"

namespace {
// Selections nest a few levels; a text that nests without end must not exhaust the stack.
constexpr int kHondura = 60;

[[noreturn]] void rechaza(const QString& motivo) {
  throw ErrorEjecucion(err::kFormulaRechazada, motivo);
}

enum class Ficha { Fin, Campo, Texto, Numero, Palabra, Operador, Abre, Cierra, Coma };

struct Lexema {
  Ficha ficha = Ficha::Fin;
  QString texto;
  bool pegado = false;  // no blank before it
};

class Lector {
 public:
  explicit Lector(const QString& texto) : texto_(texto) {}

  Lexema siguiente() {
    const qsizetype antes = pos_;
    while (pos_ < texto_.size() && texto_[pos_].isSpace()) ++pos_;
    const bool pegado = pos_ == antes;
    if (pos_ == texto_.size()) return {Ficha::Fin, {}, pegado};
    const QChar c = texto_[pos_];
    if (c == u'{') return {Ficha::Campo, hasta(u'}'), pegado};
    if (c == u'\'') return {Ficha::Texto, hasta(u'\''), pegado};
    if (c == u'(' || c == u')' || c == u',') {
      ++pos_;
      const Ficha f = c == u'(' ? Ficha::Abre : c == u')' ? Ficha::Cierra : Ficha::Coma;
      return {f, c, pegado};
    }
    if (esCifra(c)) return {Ficha::Numero, numero(), pegado};
    if (c.isLetter())
      return {Ficha::Palabra, mientras([](QChar x) { return x.isLetter(); }), pegado};
    return {Ficha::Operador, operador(), pegado};
  }

 private:
  static bool esCifra(QChar c) { return c >= u'0' && c <= u'9'; }

  template <class F>
  QString mientras(F vale) {
    const qsizetype desde = pos_;
    while (pos_ < texto_.size() && vale(texto_[pos_])) ++pos_;
    return texto_.mid(desde, pos_ - desde);
  }

  QString hasta(QChar cierre) {
    const qsizetype fin = texto_.indexOf(cierre, pos_ + 1);
    if (fin < 0) rechaza(QStringLiteral("falta %1").arg(cierre));
    QString dentro = texto_.mid(pos_ + 1, fin - pos_ - 1);
    pos_ = fin + 1;
    return dentro;
  }

  QString numero() {
    QString n = mientras(esCifra);
    if (pos_ + 1 < texto_.size() && texto_[pos_] == u'.' && esCifra(texto_[pos_ + 1])) {
      ++pos_;
      n += u'.' + mientras(esCifra);
    }
    return n;
  }

  QString operador() {
    static const QStringList todos{"<=", ">=", "<>", "<", ">", "=", "-"};
    for (const QString& o : todos) {
      if (!QStringView(texto_).mid(pos_).startsWith(o)) continue;
      pos_ += o.size();
      return o;
    }
    rechaza(QStringLiteral("signo inesperado %1").arg(texto_[pos_]));
  }

  const QString& texto_;
  qsizetype pos_ = 0;
};

bool igual(const QString& a, const char* b) {
  return a.compare(QLatin1String(b), Qt::CaseInsensitive) == 0;
}

Formula::Referencia referenciaDe(const QString& dentro) {
  static const QString prohibidos = QStringLiteral("[]{}'\"`;#\\");
  for (const QChar c : dentro) {
    if (prohibidos.contains(c) || c.category() == QChar::Other_Control) {
      rechaza(QStringLiteral("campo {%1}").arg(dentro));
    }
  }
  const QString nombre = dentro.trimmed();
  if (nombre.startsWith(u'@') && nombre.size() > 1) return {{}, nombre.mid(1)};
  const qsizetype punto = nombre.indexOf(u'.');
  if (punto < 1 || punto == nombre.size() - 1) rechaza(QStringLiteral("campo {%1}").arg(dentro));
  return {nombre.left(punto), nombre.mid(punto + 1)};
}
}  // namespace

struct Formula::Nodo {
  enum class Clase { Logica, No, Comparacion, Campo, Texto, Numero, Fecha, Izquierda, Suma };
  using Puntero = std::unique_ptr<Nodo>;

  Clase clase;
  QString texto;  // operator, literal ready for the statement, or a count of characters
  Referencia campo;
  std::vector<Puntero> hijos;

  bool condicion() const {
    return clase == Clase::Logica || clase == Clase::No || clase == Clase::Comparacion;
  }
  bool constante() const {
    return clase == Clase::Texto || clase == Clase::Numero || clase == Clase::Fecha ||
           (clase == Clase::Izquierda && hijos[0]->constante());
  }
  static Puntero hoja(Clase clase, const QString& texto) {
    auto n = std::make_unique<Nodo>();
    n->clase = clase;
    n->texto = texto;
    return n;
  }
  static Puntero rama(Clase clase, const QString& texto, Puntero a, Puntero b = nullptr) {
    Puntero n = hoja(clase, texto);
    n->hijos.push_back(std::move(a));
    if (b) n->hijos.push_back(std::move(b));
    return n;
  }
};

namespace {
using Nodo = Formula::Nodo;
using Puntero = Nodo::Puntero;

class Analizador {
 public:
  Analizador(const QString& texto, Formula::Clase clase) : lector_(texto), clase_(clase) {
    avanza();
  }

  Puntero analiza() {
    if (ficha_.ficha == Ficha::Fin) return nullptr;
    Puntero raiz = disyuncion();
    if (ficha_.ficha != Ficha::Fin) rechaza(QStringLiteral("sobra «%1»").arg(ficha_.texto));
    exigeCondicion(*raiz);
    return raiz;
  }

 private:
  struct Nivel {
    explicit Nivel(int& hondura) : hondura_(hondura) {
      if (++hondura_ > kHondura) rechaza(QStringLiteral("demasiados paréntesis"));
    }
    ~Nivel() { --hondura_; }
    int& hondura_;
  };

  static void exigeCondicion(const Nodo& n) {
    if (!n.condicion()) rechaza(QStringLiteral("falta una comparación"));
  }
  static void exigeValor(const Nodo& n) {
    if (n.condicion()) rechaza(QStringLiteral("una condición no se compara"));
  }

  void avanza() { ficha_ = lector_.siguiente(); }
  bool palabra(const char* p) const {
    return ficha_.ficha == Ficha::Palabra && igual(ficha_.texto, p);
  }
  void pide(Ficha f, const char* que) {
    if (ficha_.ficha != f) rechaza(QStringLiteral("falta %1").arg(QString::fromUtf8(que)));
    avanza();
  }

  Puntero disyuncion() {
    return cadena("or", [this] { return conjuncion(); });
  }
  Puntero conjuncion() {
    return cadena("and", [this] { return negacion(); });
  }

  template <class F>
  Puntero cadena(const char* enlace, F parte) {
    Puntero izquierda = parte();
    while (palabra(enlace)) {
      avanza();
      Puntero derecha = parte();
      exigeCondicion(*izquierda);
      exigeCondicion(*derecha);
      if (izquierda->texto == QLatin1String(enlace) && izquierda->clase == Nodo::Clase::Logica) {
        izquierda->hijos.push_back(std::move(derecha));
      } else {
        izquierda = Nodo::rama(Nodo::Clase::Logica, QString::fromLatin1(enlace),
                               std::move(izquierda), std::move(derecha));
      }
    }
    return izquierda;
  }

  Puntero negacion() {
    if (!palabra("not")) return comparacion();
    const Nivel nivel(hondura_);
    avanza();
    Puntero dentro = negacion();
    exigeCondicion(*dentro);
    return Nodo::rama(Nodo::Clase::No, {}, std::move(dentro));
  }

  Puntero comparacion() {
    Puntero izquierda = operando();
    if (ficha_.ficha != Ficha::Operador || ficha_.texto == u"-") return izquierda;
    const QString signo = ficha_.texto;
    avanza();
    Puntero derecha = operando();
    exigeValor(*izquierda);
    exigeValor(*derecha);
    if (izquierda->constante() && derecha->constante()) {
      rechaza(QStringLiteral("se comparan dos constantes"));
    }
    return Nodo::rama(Nodo::Clase::Comparacion, signo, std::move(izquierda), std::move(derecha));
  }

  Puntero operando() {
    switch (ficha_.ficha) {
      case Ficha::Campo:
        return campo();
      case Ficha::Texto: {
        Puntero n = Nodo::hoja(Nodo::Clase::Texto, u'\'' + ficha_.texto + u'\'');
        avanza();
        return n;
      }
      case Ficha::Numero:
        return numero({});
      case Ficha::Operador:
        if (ficha_.texto != u"-") break;
        avanza();
        if (ficha_.ficha == Ficha::Numero) return numero(QStringLiteral("-"));
        break;
      case Ficha::Abre: {
        const Nivel nivel(hondura_);
        const int guardado = std::exchange(argumentos_, 0);
        avanza();
        Puntero n = disyuncion();
        argumentos_ = guardado;
        pide(Ficha::Cierra, "un paréntesis");
        return n;
      }
      case Ficha::Palabra:
        return funcion();
      default:
        break;
    }
    rechaza(QStringLiteral("falta un valor"));
  }

  Puntero campo() {
    Puntero n = Nodo::hoja(Nodo::Clase::Campo, {});
    n->campo = referenciaDe(ficha_.texto);
    avanza();
    return n;
  }

  // An amount typed with the decimal comma is one number where a comma can't part arguments.
  Puntero numero(const QString& signo) {
    QString n = ficha_.texto;
    avanza();
    if (argumentos_ == 0 && ficha_.ficha == Ficha::Coma && ficha_.pegado && !n.contains(u'.')) {
      avanza();
      if (ficha_.ficha != Ficha::Numero || !ficha_.pegado || ficha_.texto.contains(u'.')) {
        rechaza(QStringLiteral("coma inesperada"));
      }
      n += u'.' + ficha_.texto;
      avanza();
    }
    while (n.size() > 1 && n[0] == u'0' && n[1] != u'.') n.remove(0, 1);
    return Nodo::hoja(Nodo::Clase::Numero, signo + n);
  }

  Puntero funcion() {
    const QString nombre = ficha_.texto;
    avanza();
    const Nivel nivel(hondura_);
    ++argumentos_;
    Puntero n;
    pide(Ficha::Abre, "un paréntesis");
    if (igual(nombre, "date")) {
      n = fecha();
    } else if (igual(nombre, "left")) {
      n = izquierda();
    } else if (igual(nombre, "sum") && clase_ == Formula::Clase::Grupos) {
      n = suma();
    } else {
      rechaza(QStringLiteral("función %1").arg(nombre));
    }
    --argumentos_;
    pide(Ficha::Cierra, "un paréntesis");
    return n;
  }

  int entero() {
    bool vale = false;
    const int n = ficha_.texto.toInt(&vale);
    if (ficha_.ficha != Ficha::Numero || !vale) rechaza(QStringLiteral("falta un número entero"));
    avanza();
    return n;
  }

  Puntero fecha() {
    const int ano = entero();
    pide(Ficha::Coma, "una coma");
    const int mes = entero();
    pide(Ficha::Coma, "una coma");
    const QDate dia(ano, mes, entero());
    if (!dia.isValid() || ano < 100 || ano > 9999) throw ErrorEjecucion(err::kTiposNoCoinciden);
    return Nodo::hoja(Nodo::Clase::Fecha, dia.toString(QStringLiteral("'#'M/d/yyyy'#'")));
  }

  Puntero izquierda() {
    Puntero valor = operando();
    exigeValor(*valor);
    pide(Ficha::Coma, "una coma");
    return Nodo::rama(Nodo::Clase::Izquierda, QString::number(entero()), std::move(valor));
  }

  Puntero suma() {
    if (ficha_.ficha != Ficha::Campo) rechaza(QStringLiteral("Sum suma un campo"));
    Puntero sumado = campo();
    pide(Ficha::Coma, "una coma");
    if (ficha_.ficha != Ficha::Campo) rechaza(QStringLiteral("Sum agrupa por un campo"));
    return Nodo::rama(Nodo::Clase::Suma, {}, std::move(sumado), campo());
  }

  Lector lector_;
  Formula::Clase clase_;
  Lexema ficha_;
  int hondura_ = 0;
  int argumentos_ = 0;
};

QString emite(const Nodo& n, const Formula::Traduce& traduce) {
  const auto hijo = [&](size_t i) { return emite(*n.hijos[i], traduce); };
  switch (n.clase) {
    case Nodo::Clase::Logica: {
      QStringList partes;
      for (size_t i = 0; i < n.hijos.size(); ++i) partes << hijo(i);
      return u'(' + partes.join(u' ' + n.texto + u' ') + u')';
    }
    case Nodo::Clase::No:
      return QStringLiteral("(not ") + hijo(0) + u')';
    case Nodo::Clase::Comparacion:
      return u'(' + hijo(0) + u' ' + n.texto + u' ' + hijo(1) + u')';
    case Nodo::Clase::Campo:
      return traduce(n.campo, false);
    case Nodo::Clase::Izquierda:
      return QStringLiteral("Left(") + hijo(0) + u',' + n.texto + u')';
    case Nodo::Clase::Suma:
      traduce(n.hijos[1]->campo, true);
      return QStringLiteral("Sum(") + hijo(0) + u')';
    default:
      return n.texto;
  }
}

// What the rows meet that a comparison leaves out: its contrary, or one side that is Null.
QStringList fueraDe(const Nodo& n, const Formula::Traduce& traduce) {
  static const QHash<QString, QString> contrarios{{QStringLiteral("<"), QStringLiteral(">=")},
                                                  {QStringLiteral("<="), QStringLiteral(">")},
                                                  {QStringLiteral(">"), QStringLiteral("<=")},
                                                  {QStringLiteral(">="), QStringLiteral("<")}};
  if (n.clase != Nodo::Clase::Comparacion || !contrarios.contains(n.texto)) return {};
  const QString izquierda = emite(*n.hijos[0], traduce), derecha = emite(*n.hijos[1], traduce);
  QStringList todas{u'(' + izquierda + u' ' + contrarios[n.texto] + u' ' + derecha + u')'};
  for (const QString& lado : {izquierda, derecha}) {
    const bool constante = n.hijos[lado == izquierda ? 0 : 1]->constante();
    if (!constante) todas << u'(' + lado + QStringLiteral(" Is Null)");
  }
  return todas;
}

void reparte(const Nodo& n, const Formula::Traduce& traduce, std::vector<Formula::Parte>& partes) {
  if (n.clase == Nodo::Clase::Logica && n.texto == u"and") {
    for (const Puntero& h : n.hijos) reparte(*h, traduce, partes);
  } else {
    partes.push_back({emite(n, traduce), fueraDe(n, traduce)});
  }
}

void reune(const Nodo& n, QStringList& tablas) {
  if (n.clase == Nodo::Clase::Campo && !n.campo.tabla.isEmpty() &&
      !tablas.contains(n.campo.tabla, Qt::CaseInsensitive)) {
    tablas << n.campo.tabla;
  }
  for (const Puntero& h : n.hijos) reune(*h, tablas);
}

// The text that the first comparison by a sign holds against a field; empty without one.
QString textoComparado(const Nodo& n, QStringView signo) {
  if (n.clase == Nodo::Clase::Comparacion) {
    const Nodo& valor = *n.hijos[1];
    if (n.texto != signo || valor.clase != Nodo::Clase::Texto) return {};
    return valor.texto.mid(1, valor.texto.size() - 2);
  }
  for (const Puntero& h : n.hijos) {
    if (const QString t = textoComparado(*h, signo); !t.isEmpty()) return t;
  }
  return {};
}
}  // namespace

Formula::Formula(const QString& texto, Clase clase) : raiz_(Analizador(texto, clase).analiza()) {}
Formula::~Formula() = default;
Formula::Formula(Formula&&) noexcept = default;

QStringList Formula::tablas() const {
  QStringList todas;
  if (raiz_) reune(*raiz_, todas);
  return todas;
}

QString Formula::codigos() const {
  if (!raiz_) return {};
  const QString desde = textoComparado(*raiz_, u">="), hasta = textoComparado(*raiz_, u"<=");
  if (!desde.isEmpty() && !hasta.isEmpty()) return desde + QStringLiteral(" a ") + hasta;
  // Other texts that a book is chosen by are no codes: the letter of a register.
  const QString igual = textoComparado(*raiz_, u"=");
  return !igual.isEmpty() && igual.front().isDigit() ? igual : QString();
}

QString Formula::condicion(const Traduce& traduce) const {
  return raiz_ ? emite(*raiz_, traduce) : QString();
}

std::vector<Formula::Parte> Formula::partes(const Traduce& traduce) const {
  std::vector<Parte> todas;
  if (raiz_) reparte(*raiz_, traduce, todas);
  return todas;
}

QString fechaDeFormula(const QString& texto) {
  const QDate dia = Variant(texto).date();
  return QStringLiteral("date(%1,%2,%3)").arg(dia.year()).arg(dia.month()).arg(dia.day());
}
