#include "soporte/escenario.h"

#include "common/cini.h"
#include "common/version.h"
#include "company/alta.h"
#include "company/sesionempresa.h"
#include "start/creaini.h"
#include "start/leeconfiguracion.h"

namespace {
const QString kAjustes = QStringLiteral("Config.ini");

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
  CrearInicio(motor, ruta + "Inicio.mdb");
  creaEmpresa(motor, ruta, datos);
  motor.flush();
  hechas.emplace_back(datos, std::move(carpeta));
  return hechas.back().second->path();
}
}  // namespace

void registraFormularios(Registro& formularios) {
  registraStart(formularios);
  registraCompany(formularios);
  registraAccounts(formularios);
  registraJournal(formularios);
  registraReports(formularios);
  registraIVA(formularios);
  registraCartera(formularios);
  registraPayroll(formularios);
  registraYearend(formularios);
  registraTransfer(formularios);
  registraOficial(formularios);
  registraCommercial(formularios);
}

Escenario::Escenario(Hasta hasta, const DatosEmpresa& datos, const QString& carpeta)
    : formularios(std::make_unique<Registro>(ctx)),
      carpeta_(carpeta.isEmpty() ? temporal_.path() : QDir::cleanPath(carpeta)) {
  ctx.reloj = &reloj;
  ctx.cajas = &guion;
  ctx.formularios = formularios.get();
  ctx.ejecutar = [this](const QString& programa, const QStringList& argumentos) {
    ejecutados << (QStringList(programa) + argumentos).join(' ');
  };
  ctx.terminar = [this] { ++finales; };

  QDir().mkpath(carpetaPrograma());
  Sesion& sesion = ctx.sesion;
  sesion.VersionPrograma = versionDelPrograma();
  ctx.carpetaPrograma = rutaPrograma(carpetaPrograma()) + '\\';
  // The settings name another folder, so that whoever writes into the wrong one is caught.
  sesion.DirPrograma = rutaPrograma(carpeta_ + "/Programa de los ajustes") + '\\';
  sesion.DirDatos = rutaPrograma(carpetaDatos()) + '\\';
  if (hasta < Ajustes) return;

  QDir().mkpath(carpetaDatos());
  const QString valores[][3] = {
      {"Directorios", "Programa", sesion.DirPrograma},
      {"Directorios", "Datos", sesion.DirDatos},
      {"Usuarios", "Permitir", "No"},
      {"Otros", "Decimal Origen", "."},
      {"Otros", "Decimal Destino", ","},
      {"Version", "Version", sesion.VersionPrograma},
  };
  for (const auto& [seccion, clave, valor] : valores) ponAjuste(seccion, clave, valor);
  LeeConfiguracion(ctx.carpetaPrograma + kAjustes, sesion);
  if (hasta == Catalogo) CrearInicio(ctx.motor, sesion.rutaCatalogo());
  if (hasta < Empresa) return;
  copiaCarpeta(plantilla(datos), carpetaDatos());
  abreEmpresa(datos.NombreEmpresa);
}

Escenario::~Escenario() {
  cierra();
  formularios.reset();
}

DatosEmpresa Escenario::empresaDePrueba() {
  DatosEmpresa d = Libros::datosPorDefecto("Prueba", 3, 8);
  d.Ano = "2003";
  d.FechaCreacion = "01/01/2003";
  d.Simbolo = "€";
  return d;
}

void Escenario::creaEmpresa(const DatosEmpresa& datos) {
  ::creaEmpresa(ctx.motor, ctx.sesion.DirDatos, datos);
  ctx.motor.flush();
}

void Escenario::abreEmpresa(const QString& nombre) {
  ctx.sesion.EmpresaActual = nombre;
  const auto base = abreBase();
  const auto empresa = base->OpenRecordset("Select * from Empresa");
  leeEmpresa(*empresa, ctx.sesion);
  motor.setYear(ctx.sesion.AnoActual);
}

Formulario& Escenario::abre(const QString& nombre) {
  if (!formularios->cambiarA(nombre)) qFatal("%s isn't registered", qPrintable(nombre));
  Formulario* forma = formularios->abierto(nombre);
  if (!forma) qFatal("%s closed itself while coming up", qPrintable(nombre));
  activar(*forma);
  return *forma;
}

Teclado Escenario::abreCon(const QString& nombre, int codigoLlamada, const QString& valorElegido) {
  ctx.sesion.CodigoLlamada = codigoLlamada;
  ctx.sesion.ValorElegido = valorElegido;
  return Teclado(abre(nombre));
}

void Escenario::cierra() {
  const auto abiertos = QApplication::topLevelWidgets();
  for (auto* ventana : abiertos) {
    if (auto* forma = qobject_cast<Formulario*>(ventana)) forma->descargar();
  }
  reposar();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::unique_ptr<Database> Escenario::abreBase(const QString& empresa) const {
  const Sesion& sesion = ctx.sesion;
  return ctx.motor.Workspaces(0).OpenDatabase(empresa.isEmpty() ? sesion.rutaEmpresa()
                                                                : sesion.rutaEmpresa(empresa));
}

std::vector<QStringList> Escenario::filas(const QString& fuente) const {
  ctx.motor.flush();
  const auto base = abreBase();
  const auto registros = base->OpenRecordset(fuente);
  std::vector<QStringList> todas;
  for (; !registros->Eof(); registros->MoveNext()) {
    QStringList fila;
    for (int i = 0; i < registros->FieldCount(); ++i) fila << registros->Fields(i).display();
    todas.push_back(fila);
  }
  return todas;
}

QString Escenario::fila(const QString& fuente) const {
  const auto todas = filas(fuente);
  return todas.empty() ? QString() : todas.front().join('|');
}

QString Escenario::valor(const QString& fuente) const {
  const auto todas = filas(fuente);
  return todas.empty() ? QString() : todas.front().value(0);
}

void Escenario::inserta(const QString& tabla, const Valores& valores) {
  anade(*abreBase()->OpenRecordset(tabla), valores);
  ctx.motor.flush();
}

void Escenario::cambia(const QString& fuente, const QString& campo, const Variant& valor) {
  const auto base = abreBase();
  corrige(*base->OpenRecordset(fuente), {{campo, valor}});
  ctx.motor.flush();
}

QStringList Escenario::errores() const {
  const QString todos = QString::fromUtf8(contenidoDe(carpetaPrograma() + "/Errores.txt"));
  return todos.split("\r\n", Qt::SkipEmptyParts);
}

QString Escenario::ajuste(const QString& seccion, const QString& clave) const {
  QString valor;
  CIni().Leer(ctx.carpetaPrograma + kAjustes, seccion, clave, valor);
  return valor;
}

void Escenario::ponAjuste(const QString& seccion, const QString& clave,
                          const QString& valor) const {
  CIni().Grabar(ctx.carpetaPrograma + kAjustes, seccion, clave, valor);
}
