#include "soporte/libros.h"

#include <stdexcept>

#include "accounts/crearplan.h"
#include "common/ignorar.h"
#include "company/alta.h"
#include "journal/apunte.h"
#include "start/creaini.h"

QList<QStringList> leeCsv(const QString& fichero) {
  QFile csv(QStringLiteral(LIBRANO_DATOS "/") + fichero);
  if (!csv.open(QIODevice::ReadOnly)) throw std::runtime_error(fichero.toStdString());
  QList<QStringList> filas;
  for (const QString& linea : QString::fromUtf8(csv.readAll()).split(u'\n', Qt::SkipEmptyParts))
    filas += linea.trimmed().split(u';');
  filas.removeFirst();
  return filas;
}

Libros::Libros() {
  CrearInicio(motor, dirDatos() + "Inicio.mdb");
  creaEmpresa(datosPorDefecto("Tienda", 3, 8));
}

void Libros::creaEmpresa(const DatosEmpresa& datos) {
  ::creaEmpresa(motor, dirDatos(), datos);
}

DatosEmpresa Libros::datosPorDefecto(const QString& nombre, int digitosCuenta,
                                     int digitosSubcuenta) {
  DatosEmpresa datos;
  datos.NombreEmpresa = nombre;
  datos.Ano = "2024";
  datos.FechaCreacion = "02/01/2024";
  datos.CapitalSocial = "0";
  datos.MayorN01 = QString::number(digitosCuenta);
  datos.SubCuN01 = QString::number(digitosSubcuenta);
  datos.MesInicio = "1";
  datos.Asiento = "1";
  datos.Mascara = "#,##0.00 ;-#,##0.00";
  static_cast<CuentasIVA&>(datos) = CalculaCuentas(digitosCuenta, digitosSubcuenta);
  return datos;
}

QString Libros::dirDatos() const {
  return rutaPrograma(carpeta_.path()) + u'\\';
}

QString Libros::rutaEmpresa(const QString& nombre) const {
  return dirDatos() + nombre + "\\Conta.MDB";
}

std::unique_ptr<Database> Libros::abre(const QString& nombre) {
  return motor.Workspaces(0).OpenDatabase(rutaEmpresa(nombre));
}

QStringList Libros::filas(const QString& fuente, const QString& empresa) {
  const auto base = abre(empresa);
  const auto filas = base->OpenRecordset(fuente);
  QStringList lineas;
  for (; !filas->Eof(); filas->MoveNext()) {
    QStringList textos;
    for (int i = 0; i < filas->FieldCount(); ++i)
      textos += filas->Fields(i).isNull() ? "-" : filas->Fields(i).text();
    lineas += textos.join(u'|');
  }
  return lineas;
}

void altaSubcuentasTrimestre(Database& empresa) {
  siembraPlan(empresa, 3);
  const auto subcuentas = empresa.OpenRecordset("Subcuentas");
  for (const QStringList& fila : leeCsv("trimestre/subcuentas.csv")) {
    subcuentas->AddNew();
    subcuentas->Fields("Subcuenta") = fila[0];
    subcuentas->Fields("Cuenta") = fila[0].left(3);
    subcuentas->Fields("Descripcion") = fila[1];
    // The special ones are there since the company was made.
    if (!ignorando([&] { subcuentas->Update(); })) subcuentas->CancelUpdate();
  }
}

void Libros::asientaTrimestre() {
  altaSubcuentasTrimestre(*abre());
  asientaDiarioTrimestre(motor, rutaEmpresa());
}

void asientaDiarioTrimestre(DBEngine& motor, const QString& rutaEmpresa) {
  DataControl diario(motor), contadores(motor);
  diario.bind(rutaEmpresa, "SqlDiarioPrincipalBlanco");
  contadores.bind(rutaEmpresa, "Select * from Empresa");
  QString enCurso;
  for (const QStringList& fila : leeCsv("trimestre/diario-trimestre.csv")) {
    if (fila[0] != enCurso) tomaAsiento(contadores);
    enCurso = fila[0];
    const bool debe = !fila[4].isEmpty();
    Apunte apunte;
    apunte.NAsiento = fila[0];
    apunte.Fecha = fila[1];
    apunte.Subcuenta = fila[2];
    apunte.Descripcion = fila[3];
    apunte.DH = debe ? "D" : "H";
    apunte.Importe = debe ? fila[4] : u'-' + fila[5];
    grabaApunte(diario, contadores, apunte);
  }
}
