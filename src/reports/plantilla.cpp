#include "reports/plantilla.h"

#include <cmath>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "reports/errores.h"

namespace reports {
namespace {
constexpr double kMmPorPulgada = 25.4;
constexpr double kMaximoMm = 2000;
constexpr int kMaximoIncluidos = 8;
constexpr int kMaximoTexto = 1 << 20;

const QHash<QString, Formato>& formatos() {
  static const QHash<QString, Formato> todos{
      {"texto", Formato::Texto},     {"entero", Formato::Entero}, {"fecha", Formato::Fecha},
      {"importe", Formato::Importe}, {"negado", Formato::Negado}, {"debe", Formato::Debe},
      {"haber", Formato::Haber},     {"deudor", Formato::Deudor}, {"acreedor", Formato::Acreedor}};
  return todos;
}

// What a field may show beside columns and sums.
bool esDato(const QString& nombre) {
  static const QSet<QString> datos{"pagina",    "paginas", "empresa",  "nif",       "año",
                                   "hoy",       "libro",   "continua", "direccion", "cp",
                                   "limites",   "nota",    "codigos",  "poblacion", "resto",
                                   "provincia", "moneda"};
  return datos.contains(nombre);
}

struct Linea {
  QString texto;
  QString donde;  // "línea 12", "línea 3 de encabezado.inc"
};

class Lector {
 public:
  explicit Lector(const LeeIncluido& incluido) : incluido_(incluido) {}

  Plantilla lee(const QString& texto) {
    reparte(texto, {});
    for (const Linea& l : lineas_) {
      donde_ = l.donde;
      linea(l.texto);
    }
    donde_ = QStringLiteral("fin de la plantilla");
    papelFinal();
    comprueba();
    return std::move(p_);
  }

 private:
  enum class Seccion { Ninguna, Informe, Origen, Grupo, Resumen, Banda, Hoja };

  [[noreturn]] void falla(const QString& motivo) const {
    throw ErrorEjecucion(err::kPlantillaDefectuosa, donde_ + QStringLiteral(", ") + motivo);
  }

  void reparte(const QString& texto, const QString& fichero) {
    if (texto.size() > kMaximoTexto) falla(QStringLiteral("demasiado larga"));
    int n = 0;
    for (const QString& l : texto.split(u'\n')) {
      donde_ = QStringLiteral("línea %1").arg(++n);
      if (!fichero.isEmpty()) donde_ += QStringLiteral(" de ") + fichero;
      const QString limpia = l.trimmed();
      if (limpia.isEmpty() || limpia.startsWith(u'#')) continue;
      static const QRegularExpression incluye(QStringLiteral("^incluye\\s*=\\s*(\\S+)$"));
      const auto m = incluye.match(limpia);
      if (!m.hasMatch()) {
        lineas_.push_back({QString(l).remove(u'\r'), donde_});
        continue;
      }
      if (++incluidos_ > kMaximoIncluidos) falla(QStringLiteral("demasiados incluidos"));
      const QString nombre = m.captured(1);
      if (nombre.contains(u'/') || nombre.contains(u'\\')) falla(QStringLiteral("ruta en incluye"));
      reparte(incluido_(nombre), nombre);
    }
  }

  void linea(const QString& texto) {
    const QString limpia = texto.trimmed();
    if (texto[0].isSpace() && continuada_) {
      *continuada_ += (continuada_->isEmpty() ? QString() : QStringLiteral(" ")) + limpia;
      return;
    }
    if (limpia.startsWith(u'[')) {
      if (!limpia.endsWith(u']')) falla(QStringLiteral("falta ]"));
      abreSeccion(limpia.mid(1, limpia.size() - 2).simplified());
      return;
    }
    switch (seccion_) {
      case Seccion::Ninguna:
        falla(QStringLiteral("fuera de toda sección"));
      case Seccion::Banda:
        return lineaDeBanda(limpia);
      case Seccion::Hoja:
        return lineaDeHoja(limpia);
      default:
        break;
    }
    const qsizetype igual = limpia.indexOf(u'=');
    continuada_ = nullptr;
    if (igual < 1) falla(QStringLiteral("falta ="));
    const QString clave = limpia.left(igual).trimmed();
    const QString valor = limpia.mid(igual + 1).trimmed();
    if (seccion_ == Seccion::Informe) return claveDeInforme(clave.toLower(), valor);
    if (seccion_ == Seccion::Grupo) return claveDeGrupo(clave.toLower(), valor);
    if (seccion_ == Seccion::Resumen) return claveDeResumen(clave.toLower(), valor);
    claveDeOrigen(clave, valor);
  }

  void abreSeccion(const QString& cabecera) {
    continuada_ = nullptr;
    const QString tipo = cabecera.section(u' ', 0, 0).toLower();
    const QString resto = cabecera.section(u' ', 1);
    if (tipo == u"informe" && resto.isEmpty()) {
      seccion_ = Seccion::Informe;
    } else if (tipo == u"origen" && !resto.isEmpty()) {
      seccion_ = Seccion::Origen;
      p_.origenes.emplace_back();
      for (const QString& t : resto.split(u',')) p_.origenes.back().tablas << t.trimmed();
    } else if (tipo == u"grupo" && !resto.isEmpty()) {
      exigeNuevo(resto);
      seccion_ = Seccion::Grupo;
      p_.grupos.emplace_back();
      p_.grupos.back().nombre = resto;
      p_.grupos.back().columna = resto;
    } else if (tipo == u"resumen" && !resto.isEmpty()) {
      exigeNuevo(resto);
      seccion_ = Seccion::Resumen;
      p_.resumenes.emplace_back();
      p_.resumenes.back().nombre = resto;
      p_.resumenes.back().columna = resto;
    } else if (tipo == u"hoja" && resto.isEmpty()) {
      seccion_ = Seccion::Hoja;
    } else {
      seccion_ = Seccion::Banda;
      banda_ = bandaDe(tipo, resto);
      if (!banda_) falla(QStringLiteral("sección desconocida [%1]").arg(cabecera));
    }
  }

  template <class T>
  static T* busca(std::vector<T>& todos, const QString& nombre) {
    for (T& uno : todos) {
      if (uno.nombre.compare(nombre, Qt::CaseInsensitive) == 0) return &uno;
    }
    return nullptr;
  }
  Grupo* buscaGrupo(const QString& nombre) { return busca(p_.grupos, nombre); }
  void exigeNuevo(const QString& nombre) {
    if (buscaGrupo(nombre) || busca(p_.resumenes, nombre)) falla(QStringLiteral("grupo repetido"));
  }

  Banda* bandaDeResumen(const QString& tipo, Resumen& r) {
    ambito_ = r.de;
    if (tipo == u"linea") {
      ambito_ = kAmbitoResumen - int(&r - p_.resumenes.data());
      return &r.linea;
    }
    return tipo == u"cabecera" ? &r.cabecera : tipo == u"pie" ? &r.pie : nullptr;
  }

  Banda* bandaDe(const QString& tipo, const QString& resto) {
    const QString de = resto.toLower();
    if (Resumen* const r = busca(p_.resumenes, resto)) return bandaDeResumen(tipo, *r);
    Grupo* const g = buscaGrupo(resto);
    ambito_ = g ? int(g - p_.grupos.data()) : kAmbitoInforme;
    if (tipo == u"detalle")
      return de.isEmpty() ? &p_.detalle : de == u"largo" ? &p_.detalleLargo : nullptr;
    if (tipo == u"vacio") return de.isEmpty() ? &p_.vacio : nullptr;
    if (tipo == u"cabecera") {
      if (de == u"pagina") return &p_.cabeceraPagina;
      return de == u"informe" ? &p_.cabeceraInforme : g ? &g->cabecera : nullptr;
    }
    if (tipo == u"pie") {
      if (de == u"pagina") {
        ambito_ = kAmbitoPagina;
        return &p_.piePagina;
      }
      return de == u"informe" ? &p_.pieInforme : g ? &g->pie : nullptr;
    }
    if (tipo == u"sigue") return de == u"informe" ? &p_.sigueInforme : g ? &g->sigue : nullptr;
    if (tipo == u"anterior")
      return de == u"informe" ? &p_.anteriorInforme : g ? &g->anterior : nullptr;
    return nullptr;
  }

  double numero(const QString& texto, double minimo = 0, double maximo = kMaximoMm) const {
    bool vale = false;
    const double n = QString(texto).replace(u',', u'.').toDouble(&vale);
    if (!vale || !(n >= minimo) || n > maximo) falla(QStringLiteral("número «%1»").arg(texto));
    return n;
  }
  int mm(const QString& texto) const { return unidadesDeMm(numero(texto)); }
  bool siNo(const QString& texto) const {
    const QString t = texto.toLower();
    if (t != u"si" && t != u"sí" && t != u"no")
      falla(QStringLiteral("sí o no, no «%1»").arg(texto));
    return t != u"no";
  }

  void claveDeInforme(const QString& clave, const QString& valor) {
    if (clave == u"titulo") {
      p_.titulo = valor;
    } else if (clave == u"papel") {
      papel(valor);
    } else if (clave == u"orientacion") {
      const QString v = valor.toLower();
      if (v != u"vertical" && v != u"apaisado")
        falla(QStringLiteral("orientación «%1»").arg(valor));
      apaisado_ = v == u"apaisado";
    } else if (clave == u"margenes") {
      const QStringList m = valor.split(u' ', Qt::SkipEmptyParts);
      if (m.size() != 4) falla(QStringLiteral("cuatro márgenes"));
      p_.izquierda = mm(m[0]);
      p_.arriba = mm(m[1]);
      p_.derecha = mm(m[2]);
      p_.abajo = mm(m[3]);
    } else if (clave == u"ancho") {
      p_.ancho = mm(valor);
    } else if (clave == u"letra") {
      letra_.familia = valor;
    } else if (clave == u"tamaño") {
      letra_.puntos = numero(valor, 2, 72);
    } else if (clave == u"parametro") {
      p_.parametros << valor;
    } else {
      falla(QStringLiteral("clave desconocida «%1»").arg(clave));
    }
  }

  void papel(const QString& valor) {
    static const QHash<QString, QPair<double, double>> papeles{
        {"a3", {297, 420}}, {"a4", {210, 297}}, {"a5", {148, 210}}, {"carta", {215.9, 279.4}}};
    QPair<double, double> medida = papeles.value(valor.toLower());
    if (medida.first == 0) {
      const QStringList partes = valor.toLower().split(u'x');
      if (partes.size() != 2) falla(QStringLiteral("papel «%1»").arg(valor));
      medida = {numero(partes[0].trimmed(), 20), numero(partes[1].trimmed(), 20)};
    }
    p_.anchoPapel = unidadesDeMm(medida.first);
    p_.altoPapel = unidadesDeMm(medida.second);
  }

  void claveDeGrupo(const QString& clave, const QString& valor) {
    Grupo& g = p_.grupos.back();
    if (clave == u"por") {
      g.columna = valor;
    } else if (clave == u"repite") {
      g.repite = siNo(valor);
    } else if (clave == u"salto") {
      g.salto = siNo(valor);
    } else if (clave == u"junto") {
      g.junto = int(numero(valor, 1, 100));
    } else {
      falla(QStringLiteral("clave desconocida «%1»").arg(clave));
    }
  }

  void claveDeResumen(const QString& clave, const QString& valor) {
    Resumen& r = p_.resumenes.back();
    if (clave == u"por") {
      r.columna = valor;
    } else if (clave == u"de") {
      r.de = ambitoDe(valor);
      if (r.de == kAmbitoPagina) falla(QStringLiteral("no hay grupo «%1»").arg(valor));
    } else {
      falla(QStringLiteral("clave desconocida «%1»").arg(clave));
    }
  }

  void claveDeOrigen(const QString& clave, const QString& valor) {
    Origen& o = p_.origenes.back();
    const QString palabra = clave.section(u' ', 0, 0).toLower();
    const QString resto = clave.section(u' ', 1).trimmed();
    const QHash<QString, QString*> clausulas{{"columnas", &o.columnas}, {"desde", &o.desde},
                                             {"donde", &o.donde},       {"agrupado", &o.agrupado},
                                             {"orden", &o.orden},       {"nota", &o.nota}};
    if (QString* clausula = resto.isEmpty() ? clausulas.value(palabra) : nullptr) {
      *clausula = valor;
      continuada_ = clausula;
    } else if ((palabra == u"campo" || palabra == u"formula") && !resto.isEmpty()) {
      (palabra == u"campo" ? o.campos : o.formulas).push_back({resto, valor});
    } else if (palabra == u"busca" && !resto.isEmpty()) {
      static const QRegularExpression forma(
          QStringLiteral("^(.+)\\s+de\\s+(\\w+)\\s+por\\s+(\\w+)\\s*=\\s*(\\w+)$"),
          QRegularExpression::UseUnicodePropertiesOption);
      const auto m = forma.match(valor);
      if (!m.hasMatch()) falla(QStringLiteral("busca: dato de Tabla por Clave = columna"));
      o.buscas.push_back({resto, m.captured(4), m.captured(2), m.captured(3), m.captured(1)});
    } else {
      falla(QStringLiteral("clave desconocida «%1»").arg(clave));
    }
  }

  // --- bands ------------------------------------------------------------------------------------
  void lineaDeBanda(const QString& texto) {
    static const QRegularExpression clave(QStringLiteral("^(alto|si|pasa)\\s*=\\s*(\\S+)$"));
    if (const auto m = clave.match(texto); m.hasMatch()) {
      if (m.captured(1) == u"alto") {
        banda_->alto = mm(m.captured(2));
      } else if (m.captured(1) == u"si") {
        banda_->si = m.captured(2);
      } else {
        banda_->pasa = int(numero(m.captured(2), 1));
      }
      return;
    }
    const qsizetype comilla = texto.indexOf(u'"');
    QStringList palabras =
        texto.left(comilla < 0 ? texto.size() : comilla).split(u' ', Qt::SkipEmptyParts);
    if (comilla < 0) return mancha(palabras);
    if (texto.size() < comilla + 2 || !texto.endsWith(u'"')) falla(QStringLiteral("falta \""));
    if (palabras.size() < 3) falla(QStringLiteral("x, ancho, alineación y \"texto\""));
    Campo c;
    c.x = mm(palabras[0]);
    c.ancho = mm(palabras[1]);
    c.alineacion = alineacion(palabras[2].toLower());
    Letra letra = letra_;
    for (const QString& p : palabras.mid(3)) {
      if (p == u"negrita") {
        letra.negrita = true;
      } else if (p == u"cursiva") {
        letra.cursiva = true;
      } else if (p == u"parte") {
        c.parte = true;
      } else if (p.startsWith(u"tamaño=")) {
        letra.puntos = numero(p.mid(7), 2, 72);
      } else if (p.startsWith(u"y=")) {
        c.y = mm(p.mid(2));
      } else {
        falla(QStringLiteral("«%1»").arg(p));
      }
    }
    c.letra = indice(p_.letras, letra);
    c.piezas = piezas(texto.mid(comilla + 1, texto.size() - comilla - 2));
    banda_->campos.push_back(std::move(c));
  }

  Alineacion alineacion(const QString& p) const {
    if (p == u"izq") return Alineacion::Izquierda;
    if (p == u"cen") return Alineacion::Centro;
    if (p == u"der") return Alineacion::Derecha;
    falla(QStringLiteral("alineación «%1»").arg(p));
  }

  template <class T>
  static int indice(std::vector<T>& todos, const T& uno) {
    const auto sitio = std::find(todos.begin(), todos.end(), uno);
    if (sitio != todos.end()) return int(sitio - todos.begin());
    todos.push_back(uno);
    return int(todos.size()) - 1;
  }

  void mancha(const QStringList& palabras) {
    const bool linea = palabras[0] == u"linea";
    if ((!linea && palabras[0] != u"fondo") || palabras.size() < 3) {
      falla(QStringLiteral("se espera un campo, linea o fondo"));
    }
    Mancha m;
    m.x = mm(palabras[1]);
    m.ancho = mm(palabras[2]);
    m.alto = unidadesDeMm(linea ? 0.15 : 4);
    m.gris = linea ? 0 : 90;
    for (const QString& p : palabras.mid(3)) {
      if (p.startsWith(u"y=")) {
        m.y = mm(p.mid(2));
      } else if (linea && p.startsWith(u"grosor=")) {
        m.alto = mm(p.mid(7));
      } else if (!linea && p.startsWith(u"alto=")) {
        m.alto = mm(p.mid(5));
      } else if (p.startsWith(u"gris=")) {
        m.gris = int(numero(p.mid(5), 0, 100));
      } else {
        falla(QStringLiteral("«%1»").arg(p));
      }
    }
    banda_->manchas.push_back(m);
  }

  std::vector<Pieza> piezas(const QString& texto) {
    std::vector<Pieza> todas;
    qsizetype pos = 0;
    while (pos < texto.size()) {
      const qsizetype abre = texto.indexOf(u'{', pos);
      const QString literal = texto.mid(pos, abre < 0 ? -1 : abre - pos);
      if (!literal.isEmpty()) todas.push_back({Pieza::Clase::Literal, literal});
      if (abre < 0) break;
      const qsizetype cierra = texto.indexOf(u'}', abre);
      if (cierra < 0) falla(QStringLiteral("falta }"));
      todas.push_back(pieza(texto.mid(abre + 1, cierra - abre - 1).trimmed()));
      pos = cierra + 1;
    }
    return todas;
  }

  Formato formato(const QString& nombre) const {
    const auto f = formatos().constFind(nombre.trimmed().toLower());
    if (f == formatos().constEnd()) falla(QStringLiteral("formato «%1»").arg(nombre));
    return *f;
  }

  Pieza pieza(const QString& dentro) {
    Pieza p;
    QString nombre = dentro;
    const qsizetype dos = dentro.lastIndexOf(u':');
    if (dos >= 0) {
      p.formato = formato(dentro.mid(dos + 1));
      nombre = dentro.left(dos).trimmed();
    }
    static const QRegularExpression suma(QStringLiteral("^suma\\(([^,()]+)(?:,([^,()]+))?\\)$"));
    if (const auto m = suma.match(nombre); m.hasMatch()) {
      p.clase = Pieza::Clase::Suma;
      if (p.formato == Formato::Natural) p.formato = Formato::Importe;
      const int ambito = m.captured(2).isEmpty() ? ambito_ : ambitoDe(m.captured(2).trimmed());
      p.acumulador = indice(p_.acumuladores, {m.captured(1).trimmed(), ambito});
    } else if (esDato(nombre.toLower())) {
      p.clase = Pieza::Clase::Dato;
      p.texto = nombre.toLower();
    } else {
      if (nombre.isEmpty()) falla(QStringLiteral("{} sin nombre"));
      p.clase = Pieza::Clase::Columna;
      p.texto = nombre;
    }
    return p;
  }

  int ambitoDe(const QString& nombre) {
    if (nombre == u"informe") return kAmbitoInforme;
    if (nombre == u"pagina") return kAmbitoPagina;
    if (const Grupo* g = buscaGrupo(nombre)) return int(g - p_.grupos.data());
    falla(QStringLiteral("no hay grupo «%1»").arg(nombre));
  }

  void lineaDeHoja(const QString& texto) {
    static const QRegularExpression forma(
        QStringLiteral("^\"([^\"]*)\"\\s+(\\d+)\\s+\\{([^{}:]+)(?::([^{}:]+))?\\}$"));
    const auto m = forma.match(texto);
    if (!m.hasMatch()) falla(QStringLiteral("columna de hoja: \"Título\" ancho {Columna:formato}"));
    ColumnaHoja c{m.captured(1), m.captured(3).trimmed(), Formato::Natural,
                  numero(m.captured(2), 1, 200), -1};
    if (!m.captured(4).isEmpty()) c.formato = formato(m.captured(4));
    p_.hoja.push_back(c);
  }

  // --- the whole --------------------------------------------------------------------------------
  // What is drawn for one width fits any paper: on a wider one the columns grow, on a narrower one
  // all of it shrinks, as a photocopy does.
  void papelFinal() {
    if (p_.anchoPapel == 0) papel(QStringLiteral("A4"));
    if (apaisado_) std::swap(p_.anchoPapel, p_.altoPapel);
    const double sitio = p_.anchoPapel - p_.izquierda - p_.derecha;
    if (p_.ancho == 0 || sitio <= 0) return;
    const double cuanto = sitio / p_.ancho, menos = std::min(cuanto, 1.0);
    const auto por = [](int& medida, double veces) { medida = int(std::lround(medida * veces)); };
    for (Letra& l : p_.letras) l.puntos *= menos;
    cadaBanda(p_, [&](Banda& b) {
      por(b.alto, menos);
      // Letters that shrink with their columns leave room for as many.
      por(b.pasa, std::max(cuanto, 1.0));
      for (Campo& c : b.campos) {
        por(c.x, cuanto);
        por(c.ancho, cuanto);
        por(c.y, menos);
      }
      for (Mancha& m : b.manchas) {
        por(m.x, cuanto);
        por(m.ancho, cuanto);
        por(m.y, menos);
        por(m.alto, menos);
      }
    });
  }

  void comprueba() {
    if (p_.letras.empty()) p_.letras.push_back(letra_);
    if (p_.origenes.empty()) falla(QStringLiteral("falta [origen ...]"));
    for (const Origen& o : p_.origenes) {
      if (o.columnas.isEmpty() || o.desde.isEmpty())
        falla(QStringLiteral("faltan columnas o desde"));
    }
    if (p_.detalle.alto <= 0 && p_.grupos.empty()) falla(QStringLiteral("falta [detalle]"));
    int alto = p_.arriba + p_.abajo + p_.cabeceraPagina.alto + p_.piePagina.alto;
    alto += p_.sigueInforme.alto + p_.anteriorInforme.alto + p_.cabeceraInforme.alto;
    alto += p_.detalle.alto + p_.detalleLargo.alto;
    int mayorPie = p_.pieInforme.alto;
    for (const Grupo& g : p_.grupos) {
      alto += g.cabecera.alto + g.sigue.alto + g.anterior.alto;
      mayorPie = std::max(mayorPie, g.pie.alto);
    }
    if (alto + mayorPie > p_.altoPapel) falla(QStringLiteral("las bandas no caben en la página"));
    cadaBanda(p_, [this](const Banda& b) { compruebaBanda(b); });
  }

  void compruebaBanda(const Banda& b) {
    const int ancho = p_.anchoPapel - p_.izquierda - p_.derecha + unidadesDeMm(0.5);
    const auto sale = [ancho](const auto& x) { return x.x + x.ancho > ancho; };
    if (std::any_of(b.campos.begin(), b.campos.end(), sale) ||
        std::any_of(b.manchas.begin(), b.manchas.end(), sale)) {
      falla(QStringLiteral("un campo se sale de la página"));
    }
    if (b.alto == 0 && !b.campos.empty()) falla(QStringLiteral("falta el alto de una banda"));
    if (!b.si.isEmpty() && !condicional(b)) falla(QStringLiteral("si no vale en esa banda"));
  }

  // Whether a band is put with the row that it stands for as the current one.
  bool condicional(const Banda& b) const {
    const auto deGrupo = [&](const Grupo& g) { return &b == &g.cabecera && !g.repite; };
    return &b == &p_.detalle || &b == &p_.detalleLargo ||
           std::any_of(p_.grupos.begin(), p_.grupos.end(), deGrupo);
  }

  const LeeIncluido& incluido_;
  std::vector<Linea> lineas_;
  int incluidos_ = 0;
  QString donde_;
  Plantilla p_;
  Seccion seccion_ = Seccion::Ninguna;
  Banda* banda_ = nullptr;
  int ambito_ = kAmbitoInforme;  // of sums in the band being read
  QString* continuada_ = nullptr;
  bool apaisado_ = false;
  Letra letra_{QStringLiteral("DejaVu Sans Condensed"), 8, false, false};
};

QString leeFichero(const QString& ruta) {
  QFile f(ruta);
  if (!QFileInfo(ruta).isFile())
    throw ErrorEjecucion(err::kFicheroNoEncontrado, rutaPrograma(ruta));
  if (!f.open(QIODevice::ReadOnly)) throw ErrorEjecucion(err::kErrorDeRuta, rutaPrograma(ruta));
  return QString::fromUtf8(f.readAll());
}
}  // namespace

int unidadesDeMm(double mm) {
  return static_cast<int>(std::lround(mm * kUnidadesPorPulgada / kMmPorPulgada));
}

bool esDeImporte(Formato f) {
  return f == Formato::Importe || f == Formato::Negado || f == Formato::Debe ||
         f == Formato::Haber || f == Formato::Deudor || f == Formato::Acreedor;
}

std::optional<double> importeMostrado(double valor, Formato f) {
  const bool blanco =
      f == Formato::Debe || f == Formato::Haber || f == Formato::Deudor || f == Formato::Acreedor;
  if (blanco && valor == 0) return {};
  if (f == Formato::Deudor && valor < 0) return {};
  if (f == Formato::Acreedor && valor > 0) return {};
  const bool credito = f == Formato::Negado || f == Formato::Haber || f == Formato::Acreedor;
  return credito ? -valor : valor;
}

Plantilla leePlantilla(const QString& texto, const LeeIncluido& incluido) {
  return Lector(incluido).lee(texto);
}

Plantilla abrePlantilla(const QString& ruta) {
  const QString sistema = rutaSistema(ruta);
  return leePlantilla(leeFichero(sistema), [&](const QString& nombre) {
    return leeFichero(rutaSistema(rutaPrograma(QFileInfo(sistema).path()) + u'\\' + nombre));
  });
}

}  // namespace reports
