#include "reports/paginador.h"

#include "common/errorejecucion.h"
#include "reports/errores.h"

namespace reports {

Paginador::Paginador(const Plantilla& plantilla, const Muestra& muestra, Cursor& cursor)
    : plantilla_(plantilla), muestra_(muestra), cursor_(cursor) {
  reserva_ = plantilla_.sigueInforme.alto;
  for (const Grupo& g : plantilla_.grupos) reserva_ += g.sigue.alto;
  for (size_t i = 0; i < plantilla_.acumuladores.size(); ++i) {
    const Acumulador& a = plantilla_.acumuladores[i];
    auto s = std::find_if(sumandos_.begin(), sumandos_.end(),
                          [&](const Sumando& x) { return x.ordinal == a.ordinal; });
    if (s == sumandos_.end()) s = sumandos_.insert(s, {a.ordinal, {}, {}});
    (a.ambito <= kAmbitoResumen ? s->deResumen : s->acumuladores).push_back(i);
  }
  for (const Resumen& r : plantilla_.resumenes) {
    auto& columnas = columnasDeResumen_.emplace_back();
    for (const Campo& c : r.linea.campos) {
      for (const Pieza& p : c.piezas) {
        if (p.clase == Pieza::Clase::Columna) columnas.push_back(p.ordinal);
      }
    }
  }
  sumas_.assign(plantilla_.acumuladores.size(), 0);
  claves_.resize(plantilla_.grupos.size());
  resumidos_.resize(plantilla_.resumenes.size());
}

void Paginador::situa(const Marca& marca, int numeroDePagina) {
  fila_ = marca.fila;
  sumadas_ = marca.sumadas;
  paso_ = marca.paso;
  sumas_ = marca.sumas;
  sumas_.resize(plantilla_.acumuladores.size());
  resumidos_ = marca.resumidos;
  resumidos_.resize(plantilla_.resumenes.size());
  numero_ = numeroDePagina - 1;
  cargada_ = false;
  if (fila_ == 0) return;
  cursor_.situa(fila_ - 1);
  for (size_t g = 0; g < claves_.size(); ++g) {
    claves_[g] = clave(plantilla_.grupos[g].ordinal, plantilla_.grupos[g].numerica);
  }
}

bool Paginador::pagina(Lienzo* lienzo) {
  lienzo_ = lienzo;
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
      paso_ = 0;
      cargada_ = false;
    }
  }
}

Clave Paginador::clave(int ordinal, bool numerica) const {
  if (numerica) return cursor_.numero(ordinal);
  return cursor_.texto(ordinal);
}

// Makes the due row the current one and tells which groups it closes and opens.
void Paginador::carga() {
  hayFila_ = cursor_.situa(fila_);
  cargada_ = true;
  largo_ = false;
  cambio_ = 0;
  if (!hayFila_) return;
  largo_ = plantilla_.detalleLargo.alto > 0 && cumple(plantilla_.detalleLargo);
  bool igual = fila_ > 0;
  for (int g = 0; g < grupos(); ++g) {
    const Grupo& grupo = plantilla_.grupos[size_t(g)];
    Clave c = clave(grupo.ordinal, grupo.numerica);
    igual = igual && c == claves_[size_t(g)];
    if (igual) {
      cambio_ = g + 1;
    } else {
      claves_[size_t(g)] = std::move(c);
    }
  }
}

// The bands of a row, in order: summaries and footers from the innermost group out, headings from
// the outermost in, the line. After the last row, the footers and that of the book.
Paginador::Accion Paginador::accion() const {
  int paso = paso_;
  for (int g = grupos() - 1; fila_ > 0 && g >= cambio_; --g) {
    const int lineas = lineasDeResumen(g);
    if (paso < lineas) return {Accion::Tipo::Resumen, g, paso};
    if (paso == lineas) return {Accion::Tipo::Pie, g};
    paso -= lineas + 1;
  }
  if (!hayFila_) {
    if (paso < lineasDeResumen(kAmbitoInforme))
      return {Accion::Tipo::Resumen, kAmbitoInforme, paso};
    return {Accion::Tipo::PieInforme, kAmbitoInforme};
  }
  if (cambio_ + paso < grupos()) return {Accion::Tipo::Cabecera, cambio_ + paso};
  return {Accion::Tipo::Detalle, 0};
}

// Groups of the rows already put whose footers aren't there yet.
int Paginador::abiertos() const {
  if (fila_ == 0) return 0;
  int paso = paso_;
  for (int g = grupos() - 1; g >= cambio_; --g) {
    paso -= lineasDeResumen(g) + 1;
    if (paso < 0) return g + 1;
  }
  return cambio_;
}

// A summary of nothing has no lines; the others have one for each value, and their heading and
// footer.
int Paginador::lineasDeResumen(int grupo) const {
  int lineas = 0;
  for (size_t r = 0; r < resumidos_.size(); ++r) {
    if (plantilla_.resumenes[r].de != grupo || resumidos_[r].empty()) continue;
    lineas += static_cast<int>(resumidos_[r].size()) + 2;
  }
  return lineas;
}

int Paginador::altoDetalle() const {
  return plantilla_.detalle.alto + (largo_ ? plantilla_.detalleLargo.alto : 0);
}

// How far down a line may reach. Any may be its group's last, and its total must not stand alone on
// the next page.
int Paginador::limiteDetalle() const {
  const int pie = grupos() > 0 ? plantilla_.grupos.back().pie.alto : 0;
  return plantilla_.altoPapel - plantilla_.abajo - plantilla_.piePagina.alto - reserva_ - pie;
}

// The due row, and how many of its run fit under it.
qint64 Paginador::seguidas() const {
  const qint64 iguales = cursor_.iguales();
  const int alto = altoDetalle();
  if (iguales == 1 || alto == 0) return iguales;
  return 1 + std::clamp<qint64>((limiteDetalle() - y_) / alto - 1, 0, iguales - 1);
}

bool Paginador::cabe(const Accion& a) const {
  if (!puesto_) return true;
  if (a.tipo == Accion::Tipo::Detalle) return y_ + altoDetalle() <= limiteDetalle();
  int limite = plantilla_.altoPapel - plantilla_.abajo - plantilla_.piePagina.alto;
  if (a.tipo == Accion::Tipo::PieInforme) return y_ + plantilla_.pieInforme.alto <= limite;
  limite -= reserva_;
  if (a.tipo == Accion::Tipo::Resumen) {
    int alto = 0;
    for (const Resumen& r : plantilla_.resumenes) {
      if (r.de != a.grupo) continue;
      // A heading takes a line with it.
      alto =
          std::max(alto, r.linea.alto + std::max(a.linea == 0 ? r.cabecera.alto : 0, r.pie.alto));
    }
    return y_ + alto <= limite;
  }
  const Grupo& grupo = plantilla_.grupos[size_t(a.grupo)];
  if (a.tipo == Accion::Tipo::Pie) return y_ + grupo.pie.alto <= limite;
  if (grupo.salto && fila_ > 0) return false;
  int alto = altoDetalle() + (grupo.junto - 1) * plantilla_.detalle.alto +
             plantilla_.grupos.back().pie.alto;
  for (int g = a.grupo; g < grupos(); ++g) alto += plantilla_.grupos[size_t(g)].cabecera.alto;
  return y_ + alto <= limite;
}

void Paginador::ejecuta(const Accion& a) {
  switch (a.tipo) {
    case Accion::Tipo::Resumen:
      ponResumen(a.grupo, a.linea);
      break;
    case Accion::Tipo::Pie:
      pon(plantilla_.grupos[size_t(a.grupo)].pie, Fila::Anterior);
      break;
    case Accion::Tipo::Cabecera:
      reinicia(a.grupo);
      pon(plantilla_.grupos[size_t(a.grupo)].cabecera, Fila::Actual);
      break;
    case Accion::Tipo::Detalle: {
      const qint64 filas = seguidas();
      suma(filas);
      pon(plantilla_.detalle, Fila::Actual);
      if (largo_) pon(plantilla_.detalleLargo, Fila::Actual);
      y_ += static_cast<int>(filas - 1) * altoDetalle();
      fila_ += filas;
      break;
    }
    case Accion::Tipo::PieInforme:
      if (fila_ == 0) pon(plantilla_.vacio, Fila::Ninguna);
      pon(plantilla_.pieInforme, fila_ == 0 ? Fila::Ninguna : Fila::Anterior);
      break;
  }
}

void Paginador::ponResumen(int grupo, int linea) {
  for (size_t r = 0; r < resumidos_.size(); ++r) {
    const Resumen& resumen = plantilla_.resumenes[r];
    const int lineas = static_cast<int>(resumidos_[r].size()) + 2;
    if (resumen.de != grupo || resumidos_[r].empty()) continue;
    if (linea >= lineas) {
      linea -= lineas;
      continue;
    }
    if (linea == 0) return pon(resumen.cabecera, Fila::Anterior);
    if (linea == lineas - 1) return pon(resumen.pie, Fila::Anterior);
    return pon(resumen.linea, Fila::Anterior, &std::next(resumidos_[r].begin(), linea - 1)->second);
  }
}

void Paginador::reinicia(int ambito) {
  for (size_t i = 0; i < sumas_.size(); ++i) {
    if (plantilla_.acumuladores[i].ambito == ambito) sumas_[i] = 0;
  }
  for (size_t r = 0; r < resumidos_.size(); ++r) {
    if (plantilla_.resumenes[r].de == ambito) resumidos_[r].clear();
  }
}

// What a run adds up to is known of the whole of it only.
void Paginador::suma(qint64 filas) {
  if (filas < cursor_.iguales()) return;
  sumadas_ = fila_ + filas;
  std::vector<Resumido*> lineas;
  for (size_t r = 0; r < resumidos_.size(); ++r) {
    const Resumen& resumen = plantilla_.resumenes[r];
    Resumido& linea = resumidos_[r][clave(resumen.ordinal, resumen.numerica)];
    linea.sumas.resize(sumas_.size());
    for (const int c : columnasDeResumen_[r]) linea.valores[c] = cursor_.valor(c);
    lineas.push_back(&linea);
  }
  for (const Sumando& s : sumandos_) {
    const qint64 x = millonesimas(cursor_.numero(s.ordinal));
    if (x == 0) continue;
    for (const size_t i : s.acumuladores) sumas_[i] = sumado(sumas_[i], x);
    for (const size_t i : s.deResumen) {
      qint64& suma = lineas[size_t(kAmbitoResumen - plantilla_.acumuladores[i].ambito)]->sumas[i];
      suma = sumado(suma, x);
    }
  }
}

void Paginador::abrePagina() {
  ++numero_;
  puesto_ = false;
  y_ = plantilla_.arriba;
  reinicia(kAmbitoPagina);
  if (!cargada_) carga();
  const Fila fila = hayFila_ ? Fila::Actual : fila_ > 0 ? Fila::Anterior : Fila::Ninguna;
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

void Paginador::cierraPagina(bool sigue) {
  const int pie = plantilla_.altoPapel - plantilla_.abajo - plantilla_.piePagina.alto;
  if (sigue && fila_ > 0) {
    y_ = pie - plantilla_.sigueInforme.alto;
    for (int g = 0; g < abiertos(); ++g) y_ -= plantilla_.grupos[size_t(g)].sigue.alto;
    for (int g = abiertos() - 1; g >= 0; --g) {
      pon(plantilla_.grupos[size_t(g)].sigue, Fila::Anterior);
    }
    pon(plantilla_.sigueInforme, Fila::Anterior);
  }
  ponEn(plantilla_.piePagina, pie, fila_ > 0 ? Fila::Anterior : Fila::Ninguna);
}

bool Paginador::cumple(const Banda& banda) const {
  if (banda.si.isEmpty()) return true;
  if (!banda.siNumerica) return !cursor_.texto(banda.ordinalSi).isEmpty();
  const double numero = cursor_.numero(banda.ordinalSi);
  return banda.pasa > 0 ? numero > banda.pasa : !muestra_.esCero(numero);
}

void Paginador::pon(const Banda& banda, Fila fila, const Resumido* resumido) {
  if (fila == Fila::Actual && !cumple(banda)) return;
  ponEn(banda, y_, fila, resumido);
  y_ += banda.alto;
}

void Paginador::ponEn(const Banda& banda, int y, Fila fila, const Resumido* resumido) {
  if (!lienzo_) return;
  const auto& sumas = resumido ? resumido->sumas : sumas_;
  lienzo_->pon(banda, y, {cursor_, fila, sumas, resumido, numero_, continua_, largo_});
}

namespace {
int columnaDe(const Fuente& fuente, const QString& nombre) {
  const int c = fuente.columna(nombre);
  if (c < 0) {
    throw ErrorEjecucion(err::kPlantillaDefectuosa, QStringLiteral("no hay columna ") + nombre);
  }
  return c;
}

bool esNumerica(FieldType tipo) {
  return tipo == FieldType::Long || tipo == FieldType::Double;
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

template <class F>
void cadaColumna(const Banda& banda, F haz) {
  for (const Campo& c : banda.campos) {
    for (const Pieza& p : c.piezas) {
      if (p.clase == Pieza::Clase::Columna) haz(p.ordinal);
    }
  }
}

void resuelveBanda(Banda& banda, const Fuente& fuente) {
  for (Campo& c : banda.campos) {
    for (Pieza& p : c.piezas) {
      if (p.clase != Pieza::Clase::Columna) continue;
      p.ordinal = columnaDe(fuente, p.texto);
      if (p.formato == Formato::Natural) p.formato = formatoDe(fuente.tipo(p.ordinal));
    }
  }
  if (banda.si.isEmpty()) return;
  banda.ordinalSi = columnaDe(fuente, banda.si);
  banda.siNumerica = esNumerica(fuente.tipo(banda.ordinalSi));
}
}  // namespace

void resuelve(Plantilla& plantilla, const Fuente& fuente) {
  cadaBanda(plantilla, [&](Banda& b) { resuelveBanda(b, fuente); });
  const auto porColumna = [&](auto& g) {
    g.ordinal = columnaDe(fuente, g.columna);
    g.numerica = esNumerica(fuente.tipo(g.ordinal));
  };
  for (Grupo& g : plantilla.grupos) porColumna(g);
  for (Resumen& r : plantilla.resumenes) porColumna(r);
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
  const auto anade = [&](int c) { todas.push_back(c < fuente.propias() ? c : fuente.codigoDe(c)); };
  for (const Grupo& g : plantilla.grupos) anade(g.ordinal);
  for (const Acumulador& a : plantilla.acumuladores) anade(a.ordinal);
  for (const Resumen& r : plantilla.resumenes) {
    anade(r.ordinal);
    cadaColumna(r.linea, anade);
  }
  cadaBanda(plantilla, [&](const Banda& b) {
    if (b.ordinalSi >= 0) anade(b.ordinalSi);
  });
  return todas;
}

std::vector<int> columnasRetenidas(const Plantilla& plantilla) {
  std::vector<int> todas;
  cadaBanda(plantilla, [&](const Banda& b) {
    if (&b == &plantilla.detalle || &b == &plantilla.detalleLargo ||
        &b == &plantilla.cabeceraInforme)
      return;
    cadaColumna(b, [&](int ordinal) {
      if (std::find(todas.begin(), todas.end(), ordinal) == todas.end()) todas.push_back(ordinal);
    });
  });
  return todas;
}

}  // namespace reports
