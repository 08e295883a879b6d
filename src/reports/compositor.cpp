#include "reports/compositor.h"

#include <cmath>

#include "common/errorejecucion.h"
#include "common/formato.h"
#include "reports/errores.h"

namespace reports {
namespace {
constexpr long double kMillon = 1e6L;

// dd/mm/yyyy without going through a mask: there is one on each line of a book.
QString fechaCorta(QDate d) {
  const auto cifra = [](int n) { return QChar(u'0' + n % 10); };
  const int a = d.year();
  const QChar letras[] = {cifra(d.day() / 10),
                          cifra(d.day()),
                          u'/',
                          cifra(d.month() / 10),
                          cifra(d.month()),
                          u'/',
                          cifra(a / 1000),
                          cifra(a / 100),
                          cifra(a / 10),
                          cifra(a)};
  return QString(letras, std::size(letras));
}
}  // namespace

Compositor::Compositor(const Plantilla& plantilla, const DatosInforme& datos,
                       const Tipografia& tipografia, Cursor& cursor)
    : plantilla_(plantilla), datos_(datos), tipografia_(tipografia), cursor_(cursor) {
  cero_ = Format(0.0, datos_.mascara);
  reserva_ = plantilla_.sigueInforme.alto;
  for (const Grupo& g : plantilla_.grupos) reserva_ += g.sigue.alto;
  for (size_t i = 0; i < plantilla_.acumuladores.size(); ++i) {
    const int ordinal = plantilla_.acumuladores[i].ordinal;
    auto s = std::find_if(sumandos_.begin(), sumandos_.end(),
                          [&](const Sumando& x) { return x.ordinal == ordinal; });
    if (s == sumandos_.end()) s = sumandos_.insert(s, {ordinal, {}});
    s->acumuladores.push_back(i);
  }
  sumas_.assign(plantilla_.acumuladores.size(), 0);
  claves_.resize(plantilla_.grupos.size());
}

void Compositor::situa(const Marca& marca, int numeroDePagina) {
  fila_ = marca.fila;
  paso_ = marca.paso;
  sumas_ = marca.sumas;
  sumas_.resize(plantilla_.acumuladores.size());
  numero_ = numeroDePagina - 1;
  cargada_ = false;
  if (fila_ == 0) return;
  cursor_.situa(fila_ - 1);
  for (int g = 0; g < grupos(); ++g) claves_[size_t(g)] = clave(g);
}

bool Compositor::pagina(Pagina* destino, int paginas) {
  destino_ = destino;
  paginas_ = paginas;
  abrePagina();
  for (;;) {
    if (!cargada_) carga();
    const Accion a = accion();
    if (!cabe(a)) {
      cierraPagina(true);
      return true;
    }
    ejecuta(a);
    puesto_ = true;
    ++paso_;
    if (a.tipo == Accion::Tipo::PieInforme) {
      cierraPagina(false);
      return false;
    }
    if (a.tipo == Accion::Tipo::Detalle) {
      ++fila_;
      paso_ = 0;
      cargada_ = false;
    }
  }
}

Compositor::Clave Compositor::clave(int grupo) const {
  const Grupo& g = plantilla_.grupos[size_t(grupo)];
  if (g.numerica) return cursor_.numero(g.ordinal);
  return cursor_.texto(g.ordinal);
}

// Makes the due row the current one and tells which groups it closes and opens.
void Compositor::carga() {
  hayFila_ = cursor_.situa(fila_);
  cargada_ = true;
  cambio_ = 0;
  if (!hayFila_) return;
  bool igual = fila_ > 0;
  for (int g = 0; g < grupos(); ++g) {
    Clave c = clave(g);
    igual = igual && c == claves_[size_t(g)];
    if (igual) {
      cambio_ = g + 1;
    } else {
      claves_[size_t(g)] = std::move(c);
    }
  }
}

// The bands of a row, in order: footers from the innermost group out, headings from the outermost
// in, the line. After the last row, the footers and that of the book.
Compositor::Accion Compositor::accion() const {
  const int pies = fila_ > 0 ? grupos() - cambio_ : 0;
  if (paso_ < pies) return {Accion::Tipo::Pie, grupos() - 1 - paso_};
  if (!hayFila_) return {Accion::Tipo::PieInforme, 0};
  const int cabecera = cambio_ + paso_ - pies;
  if (cabecera < grupos()) return {Accion::Tipo::Cabecera, cabecera};
  return {Accion::Tipo::Detalle, 0};
}

// Groups of the rows already put whose footers aren't there yet.
int Compositor::abiertos() const {
  if (fila_ == 0) return 0;
  return std::max(cambio_, grupos() - paso_);
}

bool Compositor::cabe(const Accion& a) const {
  if (!puesto_) return true;
  int limite = plantilla_.altoPapel - plantilla_.abajo - plantilla_.piePagina.alto;
  if (a.tipo == Accion::Tipo::PieInforme) return y_ + plantilla_.pieInforme.alto <= limite;
  limite -= reserva_;
  if (a.tipo == Accion::Tipo::Detalle) {
    // Any line may be its group's last, and its total must not stand alone on the next page.
    const int pie = grupos() > 0 ? plantilla_.grupos.back().pie.alto : 0;
    return y_ + plantilla_.detalle.alto + pie <= limite;
  }
  const Grupo& grupo = plantilla_.grupos[size_t(a.grupo)];
  if (a.tipo == Accion::Tipo::Pie) return y_ + grupo.pie.alto <= limite;
  if (grupo.salto && fila_ > 0) return false;
  int alto = grupo.junto * plantilla_.detalle.alto + plantilla_.grupos.back().pie.alto;
  for (int g = a.grupo; g < grupos(); ++g) alto += plantilla_.grupos[size_t(g)].cabecera.alto;
  return y_ + alto <= limite;
}

void Compositor::ejecuta(const Accion& a) {
  switch (a.tipo) {
    case Accion::Tipo::Pie:
      pon(plantilla_.grupos[size_t(a.grupo)].pie, Fila::Anterior);
      break;
    case Accion::Tipo::Cabecera:
      reinicia(a.grupo);
      pon(plantilla_.grupos[size_t(a.grupo)].cabecera, Fila::Actual);
      break;
    case Accion::Tipo::Detalle:
      suma();
      pon(plantilla_.detalle, Fila::Actual);
      break;
    case Accion::Tipo::PieInforme:
      pon(plantilla_.pieInforme, Fila::Anterior);
      break;
  }
}

void Compositor::reinicia(int ambito) {
  for (size_t i = 0; i < sumas_.size(); ++i) {
    if (plantilla_.acumuladores[i].ambito == ambito) sumas_[i] = 0;
  }
}

void Compositor::suma() {
  for (const Sumando& s : sumandos_) {
    const long double x = std::round(static_cast<long double>(cursor_.numero(s.ordinal)) * kMillon);
    if (x == 0) continue;
    for (const size_t i : s.acumuladores) sumas_[i] += x;
  }
}

void Compositor::abrePagina() {
  ++numero_;
  puesto_ = false;
  y_ = plantilla_.arriba;
  reinicia(kAmbitoPagina);
  if (!cargada_) carga();
  if (destino_) {
    // A page used again keeps its room: asking for it anew costs more than filling it.
    destino_->numero = numero_;
    destino_->manchas.clear();
    destino_->textos.clear();
    destino_->tramos.resize(tipografia_.cuantas());
    for (Tramo& t : destino_->tramos) {
      t.glifos.clear();
      t.sitios.clear();
    }
  }
  const Fila fila = hayFila_ ? Fila::Actual : Fila::Anterior;
  if (numero_ == 1) pon(plantilla_.cabeceraInforme, fila);
  pon(plantilla_.cabeceraPagina, fila);
  if (fila_ == 0) return;
  pon(plantilla_.anteriorInforme, Fila::Anterior);
  continua_ = true;
  for (int g = 0; g < abiertos(); ++g) {
    const Grupo& grupo = plantilla_.grupos[size_t(g)];
    if (grupo.repite) pon(grupo.cabecera, Fila::Anterior);
    pon(grupo.anterior, Fila::Anterior);
  }
  continua_ = false;
}

void Compositor::cierraPagina(bool sigue) {
  const int pie = plantilla_.altoPapel - plantilla_.abajo - plantilla_.piePagina.alto;
  if (sigue && fila_ > 0) {
    y_ = pie - plantilla_.sigueInforme.alto;
    for (int g = 0; g < abiertos(); ++g) y_ -= plantilla_.grupos[size_t(g)].sigue.alto;
    for (int g = abiertos() - 1; g >= 0; --g) {
      pon(plantilla_.grupos[size_t(g)].sigue, Fila::Anterior);
    }
    pon(plantilla_.sigueInforme, Fila::Anterior);
  }
  ponEn(plantilla_.piePagina, pie, Fila::Anterior);
}

void Compositor::pon(const Banda& banda, Fila fila) {
  ponEn(banda, y_, fila);
  y_ += banda.alto;
}

void Compositor::ponEn(const Banda& banda, int y, Fila fila) {
  if (!destino_) return;
  for (Mancha m : banda.manchas) {
    m.x += plantilla_.izquierda;
    m.y += y;
    destino_->manchas.push_back(m);
  }
  for (const Campo& c : banda.campos) ponCampo(c, y + c.y, fila);
}

void Compositor::ponCampo(const Campo& campo, int y, Fila fila) {
  QString texto;
  if (campo.piezas.size() == 1) {
    texto = contenido(campo.piezas[0], fila);
  } else {
    // A label without what it labels is left out.
    bool datos = false, vacio = true;
    for (const Pieza& p : campo.piezas) {
      const QString parte = contenido(p, fila);
      if (p.clase != Pieza::Clase::Literal) {
        datos = true;
        vacio = vacio && parte.isEmpty();
      }
      texto += parte;
    }
    if (datos && vacio) return;
  }
  // Masks may end in a blank for one sign only; figures must stand under each other.
  if (campo.alineacion == Alineacion::Derecha) {
    while (texto.endsWith(u' ')) texto.chop(1);
  }
  if (texto.isEmpty()) return;
  double ancho = tipografia_.ancho(campo.letra, texto);
  if (ancho > campo.ancho) {
    // An amount with some of its digits gone would be another amount.
    if (campo.piezas.size() == 1 && esDeImporte(campo.piezas[0].formato)) {
      const double cada = std::max(1., tipografia_.ancho(campo.letra, u"#"));
      texto.fill(u'#', std::max(1, static_cast<int>(campo.ancho / cada)));
    } else {
      texto = tipografia_.cabe(campo.letra, texto, campo.ancho);
    }
    ancho = tipografia_.ancho(campo.letra, texto);
  }
  double x = plantilla_.izquierda + campo.x;
  if (campo.alineacion == Alineacion::Derecha) x += campo.ancho - ancho;
  if (campo.alineacion == Alineacion::Centro) x += (campo.ancho - ancho) / 2;
  tipografia_.coloca(campo.letra, texto, x, y + tipografia_.subida(campo.letra),
                     destino_->tramos[size_t(campo.letra)]);
  destino_->textos.push_back({texto, static_cast<int>(x), y, static_cast<int>(std::ceil(ancho)),
                              tipografia_.alto(campo.letra)});
}

QString Compositor::contenido(const Pieza& pieza, Fila fila) const {
  switch (pieza.clase) {
    case Pieza::Clase::Literal:
      return pieza.texto;
    case Pieza::Clase::Suma:
      return importe(static_cast<double>(sumas_[size_t(pieza.acumulador)] / kMillon),
                     pieza.formato);
    case Pieza::Clase::Dato:
      if (pieza.texto == u"pagina") return QString::number(numero_);
      if (pieza.texto == u"paginas")
        return paginas_ ? QString::number(paginas_) : QStringLiteral("…");
      if (pieza.texto == u"continua")
        return continua_ ? QStringLiteral("(continuación)") : QString();
      return datos_.textos.value(pieza.texto);
    case Pieza::Clase::Columna:
      break;
  }
  if (fila == Fila::Actual) {
    if (pieza.formato == Formato::Texto) return cursor_.texto(pieza.ordinal);
    if (esDeImporte(pieza.formato)) return importe(cursor_.numero(pieza.ordinal), pieza.formato);
    return formatea(cursor_.valor(pieza.ordinal), pieza.formato);
  }
  if (fila_ == 0) return {};
  return formatea(cursor_.valorAnterior(pieza.ordinal), pieza.formato);
}

QString Compositor::formatea(const Variant& valor, Formato formato) const {
  if (valor.isNull()) return {};
  switch (formato) {
    case Formato::Fecha:
      return valor.isDate() ? fechaCorta(valor.date()) : valor.display();
    case Formato::Entero:
      return valor.isNumber() ? QString::number(std::llround(valor.number())) : valor.display();
    case Formato::Natural:
    case Formato::Texto:
      return valor.display();
    default:
      return importe(valor.number(), formato);
  }
}

QString Compositor::importe(double valor, Formato formato) const {
  const auto mostrado = importeMostrado(valor, formato);
  if (!mostrado) return {};
  const QString texto = Format(*mostrado, datos_.mascara);
  const bool siempre = formato == Formato::Importe || formato == Formato::Negado;
  return !siempre && texto == cero_ ? QString() : texto;
}

namespace {
int columnaDe(const Fuente& fuente, const QString& nombre) {
  const int c = fuente.columna(nombre);
  if (c < 0) {
    throw ErrorEjecucion(err::kPlantillaDefectuosa, QStringLiteral("no hay columna ") + nombre);
  }
  return c;
}

Formato formatoDe(FieldType tipo) {
  switch (tipo) {
    case FieldType::Double:
      return Formato::Importe;
    case FieldType::Long:
      return Formato::Entero;
    case FieldType::Date:
      return Formato::Fecha;
    default:
      return Formato::Texto;
  }
}
}  // namespace

void resuelve(Plantilla& plantilla, const Fuente& fuente) {
  cadaBanda(plantilla, [&](Banda& b) {
    for (Campo& c : b.campos) {
      for (Pieza& p : c.piezas) {
        if (p.clase != Pieza::Clase::Columna) continue;
        p.ordinal = columnaDe(fuente, p.texto);
        if (p.formato == Formato::Natural) p.formato = formatoDe(fuente.tipo(p.ordinal));
      }
    }
  });
  for (Grupo& g : plantilla.grupos) {
    g.ordinal = columnaDe(fuente, g.columna);
    const FieldType tipo = fuente.tipo(g.ordinal);
    g.numerica = tipo == FieldType::Long || tipo == FieldType::Double;
  }
  for (Acumulador& a : plantilla.acumuladores) {
    a.ordinal = columnaDe(fuente, a.columna);
    if (a.ordinal >= fuente.propias() || fuente.tipo(a.ordinal) == FieldType::Text) {
      throw ErrorEjecucion(err::kPlantillaDefectuosa, a.columna + QStringLiteral(" no se suma"));
    }
  }
  for (ColumnaHoja& c : plantilla.hoja) {
    c.ordinal = columnaDe(fuente, c.columna);
    if (c.formato == Formato::Natural) c.formato = formatoDe(fuente.tipo(c.ordinal));
  }
}

std::vector<int> columnasDeCuenta(const Plantilla& plantilla, const Fuente& fuente) {
  std::vector<int> todas;
  for (const Grupo& g : plantilla.grupos) {
    todas.push_back(g.ordinal < fuente.propias() ? g.ordinal : fuente.codigoDe(g.ordinal));
  }
  for (const Acumulador& a : plantilla.acumuladores) todas.push_back(a.ordinal);
  return todas;
}

std::vector<int> columnasRetenidas(const Plantilla& plantilla) {
  std::vector<int> todas;
  cadaBanda(plantilla, [&](const Banda& b) {
    if (&b == &plantilla.detalle || &b == &plantilla.cabeceraInforme) return;
    for (const Campo& c : b.campos) {
      for (const Pieza& p : c.piezas) {
        if (p.clase != Pieza::Clase::Columna) continue;
        if (std::find(todas.begin(), todas.end(), p.ordinal) == todas.end())
          todas.push_back(p.ordinal);
      }
    }
  });
  return todas;
}

}  // namespace reports
