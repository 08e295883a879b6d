#include "soporte/guion.h"

#include "soporte/escenario.h"

QString Guion::nombre(Clase clase, const QString& texto) {
  static const char* const nombres[] = {"mensaje", "pregunta", "entrada",
                                        "fichero", "diálogo",  "elección"};
  return QString("%1 \"%2\"").arg(nombres[static_cast<int>(clase)], texto);
}

Guion::~Guion() {
  for (const auto& nivel : pendientes_) {
    for (const auto& paso : nivel)
      ADD_FAILURE_AT(paso.sitio.file_name(), int(paso.sitio.line()))
          << "Anunciado y no llegado: " << qPrintable(nombre(paso.clase, paso.texto));
  }
}

void Guion::esperaMensaje(const QString& texto, const QString& titulo, std::function<void()> paso,
                          Sitio sitio) {
  pendientes_.back().push_back(
      {Clase::Mensaje, texto, titulo, false, {}, {}, std::move(paso), sitio});
}

void Guion::esperaPregunta(const QString& texto, bool respuesta, const QString& titulo,
                           std::function<void()> paso, Sitio sitio) {
  pendientes_.back().push_back(
      {Clase::Pregunta, texto, titulo, respuesta, {}, {}, std::move(paso), sitio});
}

void Guion::esperaEntrada(const QString& texto, std::optional<QString> respuesta, Sitio sitio) {
  pendientes_.back().push_back(
      {Clase::Entrada, texto, {}, false, std::move(respuesta), {}, {}, sitio});
}

void Guion::esperaFichero(std::optional<QString> respuesta, Sitio sitio) {
  pendientes_.back().push_back(
      {Clase::Fichero, {}, {}, false, std::move(respuesta), {}, {}, sitio});
}

void Guion::esperaDialogo(const QString& nombre, std::function<void(Teclado&)> paso, Sitio sitio) {
  pendientes_.back().push_back({Clase::Dialogo, nombre, {}, false, {}, std::move(paso), {}, sitio});
}

void Guion::esperaEleccion(bool reintentar, std::function<void()> paso, Sitio sitio) {
  pendientes_.back().push_back(
      {Clase::Eleccion, {}, {}, reintentar, {}, {}, std::move(paso), sitio});
}

bool Guion::agotado() const {
  return std::all_of(pendientes_.begin(), pendientes_.end(),
                     [](const auto& nivel) { return nivel.empty(); });
}

std::optional<Guion::Paso> Guion::siguiente(Clase clase, const QString& texto,
                                            const QString& titulo) {
  for (auto nivel = pendientes_.rbegin(); nivel != pendientes_.rend(); ++nivel) {
    if (nivel->empty()) continue;
    const Paso paso = nivel->front();
    const bool mismoTexto =
        clase == Clase::Fichero || clase == Clase::Eleccion || paso.texto == texto;
    if (paso.clase != clase || !mismoTexto) {
      ADD_FAILURE_AT(paso.sitio.file_name(), int(paso.sitio.line()))
          << "Se esperaba " << qPrintable(nombre(paso.clase, paso.texto)) << " y llega "
          << qPrintable(nombre(clase, texto));
      return std::nullopt;
    }
    if (!paso.titulo.isNull() && paso.titulo != titulo)
      ADD_FAILURE_AT(paso.sitio.file_name(), int(paso.sitio.line()))
          << "Título de \"" << qPrintable(texto) << "\": " << qPrintable(titulo);
    nivel->pop_front();
    return paso;
  }
  ADD_FAILURE() << "Sin anunciar: " << qPrintable(nombre(clase, texto));
  return std::nullopt;
}

// A window of its own comes forward and goes, so that the form behind feels what it feels in use.
void Guion::ensenar(QWidget* padre) {
  const QPointer<QWidget> anterior = QApplication::activeWindow();
  {
    QDialog caja(padre && padre->isVisible() ? padre : nullptr);
    caja.setModal(true);
    caja.show();
    activar(caja);
  }
  if (anterior && anterior->isVisible()) activar(*anterior);
}

// What was announced, empty if nothing was, once it has been on the screen.
Guion::Paso Guion::llega(QWidget* padre, Clase clase, const QString& texto, const QString& titulo) {
  const auto paso = siguiente(clase, texto, titulo);
  if (paso && paso->entretanto) paso->entretanto();
  ensenar(padre);
  return paso.value_or(Paso());
}

void Guion::ensenaMensaje(QWidget* padre, const QString& texto, const QString& titulo, Icono) {
  llega(padre, Clase::Mensaje, texto, titulo);
}

bool Guion::ensenaPregunta(QWidget* padre, const QString& texto, const QString& titulo, Icono) {
  return llega(padre, Clase::Pregunta, texto, titulo).si;
}

std::optional<QString> Guion::ensenaEntrada(QWidget* padre, const QString& texto,
                                            const QString& titulo, const QString&) {
  return llega(padre, Clase::Entrada, texto, titulo).respuesta;
}

std::optional<QString> Guion::ensenaAbrir(QWidget* padre, const QString& titulo, const QString&,
                                          const QString&) {
  return llega(padre, Clase::Fichero, titulo, titulo).respuesta;
}

std::optional<QString> Guion::ensenaGuardar(QWidget* padre, const QString& titulo,
                                            const QString& nombre, const QString&) {
  propuesto = nombre;
  return ensenaAbrir(padre, titulo, {}, {});
}

void Guion::ensenaModal(QDialog& dialogo) {
  const auto paso = siguiente(Clase::Dialogo, dialogo.objectName(), dialogo.windowTitle());
  if (!paso) return;
  const QPointer<QWidget> anterior = QApplication::activeWindow();
  const QPointer<QDialog> vivo(&dialogo);
  pendientes_.emplace_back();
  dialogo.setWindowModality(Qt::ApplicationModal);
  dialogo.show();
  if (dialogo.isVisible()) {
    activar(dialogo);
    Teclado teclado(dialogo);
    paso->conducir(teclado);
    if (vivo) mirar(*vivo);
  }
  if (vivo && vivo->isVisible()) {
    ADD_FAILURE_AT(paso->sitio.file_name(), int(paso->sitio.line()))
        << "Sigue abierto: " << qPrintable(vivo->objectName());
    vivo->done(0);
  }
  for (const auto& resto : pendientes_.back()) {
    ADD_FAILURE_AT(resto.sitio.file_name(), int(resto.sitio.line()))
        << "Anunciado dentro de " << qPrintable(paso->texto)
        << " y no llegado: " << qPrintable(resto.texto);
  }
  pendientes_.pop_back();
  if (anterior && anterior->isVisible()) activar(*anterior);
}

Cajas::Eleccion Guion::ensenaEleccion(QWidget* padre, const QString& texto) {
  const auto paso = siguiente(Clase::Eleccion, texto, {});
  if (!paso) return Eleccion::Descartar;
  bool resuelto = false;
  QObject testigo;
  for (const auto senal : {&DBEngine::saved, &DBEngine::undone})
    QObject::connect(&motor(), senal, &testigo, [&] { resuelto = !motor().pending(); });
  ensenar(padre);
  if (paso->entretanto) paso->entretanto();
  return paso->si || resuelto ? Eleccion::Reintentar : Eleccion::Descartar;
}
