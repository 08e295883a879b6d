#include "soporte/libros.h"

#include "accounts/crearplan.h"
#include "common/ignorar.h"
#include "company/alta.h"
#include "start/creaini.h"

QList<QStringList> leeCsv(const QString& fichero) {
  QList<QStringList> filas;
  for (const QString& linea : lineasDeDatos(fichero)) filas += linea.split(u';');
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

void Libros::inserta(const QString& tabla, const Valores& valores, const QString& empresa) {
  anade(*abre(empresa)->OpenRecordset(tabla), valores);
}

void Libros::cambia(const QString& fuente, const QString& campo, const Variant& valor) {
  const auto base = abre();
  const auto filas = base->OpenRecordset(fuente);
  corrige(*filas, {{campo, valor}});
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

Apunte apunteDe(const Variant& asiento, const Variant& fecha, const QString& subcuenta,
                const QString& descripcion, const Variant& importe) {
  Apunte apunte;
  apunte.NAsiento = asiento;
  apunte.Fecha = fecha;
  apunte.Subcuenta = subcuenta;
  apunte.Descripcion = descripcion;
  apunte.DH = importe.display().startsWith(u'-') ? "H" : "D";
  apunte.Importe = importe;
  return apunte;
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
    grabaApunte(
        diario, contadores,
        apunteDe(fila[0], fila[1], fila[2], fila[3], fila[4].isEmpty() ? u'-' + fila[5] : fila[4]));
  }
}
