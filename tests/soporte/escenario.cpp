#include "soporte/escenario.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>

#include "company/crearbase.h"
#include "company/sesionempresa.h"
#include "foundation/cini.h"
#include "foundation/creaini.h"
#include "foundation/leeconfiguracion.h"
#include "foundation/rutas.h"
#include "soporte/libros.h"

namespace {
void copiaCarpeta(const QString& origen, const QString& destino) {
  QDirIterator it(origen, QDir::Files, QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString fichero = it.next();
    const QString copia = destino + fichero.mid(origen.size());
    QDir().mkpath(QFileInfo(copia).path());
    QFile::copy(fichero, copia);
  }
}

// A data folder with that company, built once in a test program: the building takes longer than
// most of the tests.
QString plantilla(const DatosEmpresa& datos) {
  static std::vector<std::pair<DatosEmpresa, std::unique_ptr<QTemporaryDir>>> hechas;
  for (const auto& [deCual, carpeta] : hechas) {
    if (deCual == datos) return carpeta->path();
  }
  auto carpeta = std::make_unique<QTemporaryDir>();
  const QString ruta = rutaPrograma(carpeta->path()) + QLatin1Char('\\');
  DBEngine motor;
  CrearInicio(motor, ruta + QStringLiteral("Inicio.mdb"));
  creaEmpresa(motor, ruta, datos);
  motor.flush();
  hechas.emplace_back(datos, std::move(carpeta));
  return hechas.back().second->path();
}
}  // namespace

Escenario::Escenario(Hasta hasta, const DatosEmpresa& datos)
    : formularios(std::make_unique<Registro>(ctx)) {
  ctx.reloj = &reloj;
  ctx.cajas = &guion;
  ctx.formularios = formularios.get();
  ctx.ejecutar = [this](const QString& programa, const QStringList& argumentos) {
    ejecutados << (QStringList(programa) + argumentos).join(QLatin1Char(' '));
  };
  ctx.terminar = [this] { ++finales; };

  QDir().mkpath(carpetaPrograma());
  QDir().mkpath(carpetaDatos());
  Sesion& sesion = ctx.sesion;
  sesion.VersionPrograma = QStringLiteral("1.6");
  sesion.DirPrograma = rutaPrograma(carpetaPrograma()) + QLatin1Char('\\');
  ctx.carpetaPrograma = sesion.DirPrograma;
  sesion.DirDatos = rutaPrograma(carpetaDatos()) + QLatin1Char('\\');
  if (hasta < Ajustes) return;

  const QString ajustes = sesion.DirPrograma + QStringLiteral("Config.ini");
  const struct {
    const char* seccion;
    const char* clave;
    QString valor;
  } valores[] = {
      {"Directorios", "Programa", sesion.DirPrograma},
      {"Directorios", "Datos", sesion.DirDatos},
      {"Usuarios", "Permitir", QStringLiteral("No")},
      {"Otros", "Decimal Origen", QStringLiteral(".")},
      {"Otros", "Decimal Destino", QStringLiteral(",")},
      {"Version", "Version", sesion.VersionPrograma},
  };
  for (const auto& v : valores) {
    CIni().Grabar(ajustes, QString::fromLatin1(v.seccion), QString::fromLatin1(v.clave), v.valor);
  }
  LeeConfiguracion(ajustes, sesion);
  if (hasta < Catalogo) return;

  if (hasta < Empresa) {
    CrearInicio(ctx.motor, sesion.rutaCatalogo());
    return;
  }

  copiaCarpeta(plantilla(datos), carpetaDatos());
  abreEmpresa(datos.NombreEmpresa);
}

Escenario::~Escenario() {
  cierra();
  formularios.reset();
}

DatosEmpresa Escenario::empresaDePrueba() {
  DatosEmpresa d = Libros::datosPorDefecto(QStringLiteral("Prueba"), 3, 8);
  d.Ano = QStringLiteral("2003");
  d.FechaCreacion = QStringLiteral("01/01/2003");
  d.Simbolo = QStringLiteral("€");
  return d;
}

void Escenario::creaEmpresa(const DatosEmpresa& datos) {
  ::creaEmpresa(ctx.motor, ctx.sesion.DirDatos, datos);
  ctx.motor.flush();
}

void Escenario::abreEmpresa(const QString& nombre) {
  ctx.sesion.EmpresaActual = nombre;
  const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
  const auto empresa = base->OpenRecordset(QStringLiteral("Select * from Empresa"));
  leeEmpresa(*empresa, ctx.sesion);
}

Formulario& Escenario::abre(const QString& nombre) {
  if (!formularios->cambiarA(nombre)) qFatal("%s isn't registered", qPrintable(nombre));
  Formulario* forma = formularios->abierto(nombre);
  if (!forma) qFatal("%s closed itself while coming up", qPrintable(nombre));
  activar(*forma);
  return *forma;
}

void Escenario::cierra() {
  const auto abiertos = QApplication::topLevelWidgets();
  for (auto* ventana : abiertos) {
    if (auto* forma = qobject_cast<Formulario*>(ventana)) forma->descargar();
  }
  reposar();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::vector<QStringList> Escenario::filas(const QString& fuente) const {
  auto& motor = const_cast<DBEngine&>(ctx.motor);
  motor.flush();
  const auto base = motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
  const auto registros = base->OpenRecordset(fuente);
  std::vector<QStringList> todas;
  for (; !registros->Eof(); registros->MoveNext()) {
    QStringList fila;
    for (int i = 0; i < registros->FieldCount(); ++i) fila << registros->Fields(i).display();
    todas.push_back(fila);
  }
  return todas;
}

QString Escenario::valor(const QString& fuente) const {
  const auto todas = filas(fuente);
  return todas.empty() ? QString() : todas.front().value(0);
}

void Escenario::inserta(const QString& tabla,
                        const std::vector<std::pair<QString, Variant>>& valores) {
  const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
  const auto registros = base->OpenRecordset(tabla);
  registros->AddNew();
  for (const auto& [campo, valor] : valores) registros->Fields(campo) = valor;
  registros->Update();
  ctx.motor.flush();
}

void Escenario::cambia(const QString& fuente, const QString& campo, const Variant& valor) {
  const auto base = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
  const auto registros = base->OpenRecordset(fuente);
  registros->Edit();
  registros->Fields(campo) = valor;
  registros->Update();
  ctx.motor.flush();
}

QStringList Escenario::errores() const {
  QFile fichero(carpetaPrograma() + QStringLiteral("/Errores.txt"));
  if (!fichero.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(fichero.readAll())
      .remove(QLatin1Char('\r'))
      .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
