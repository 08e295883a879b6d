// The demonstration: a shop's first quarter, from an empty folder to printed books, by the
// keyboard.
//
//   demo CARPETA
//
// leaves in the folder the program's data, the screens met on the way and the books as PDF.
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <QApplication>
#include <QDir>

#include "accounts/registro.h"
#include "company/registro.h"
#include "foundation/registro.h"
#include "foundation/rutas.h"
#include "foundation/toolkit/formulario.h"
#include "foundation/toolkit/registro.h"
#include "foundation/toolkit/tema.h"
#include "journal/registro.h"
#include "reports/extracto.h"
#include "reports/informe.h"
#include "reports/listado.h"
#include "reports/pintor.h"
#include "reports/registro.h"
#include "soporte/guion.h"
#include "soporte/libros.h"
#include "soporte/teclado.h"
#include "soporte/tecleo.h"

namespace {

const QString kEmpresa = QStringLiteral("Comercial Ejemplo");

struct DosDeEnero : Reloj {
  QDate hoy() const override { return QDate(2024, 1, 2); }
};

// The books of the quarter, as their dialogs would ask for them.
QList<Listado> libros() {
  const QString limites = textoLimites("01/01/2024", "31/12/2024");
  const QString fechas = seleccionFechas("SqlDiarioPrincipal.Fecha", "01/01/2024", "31/12/2024");
  const QString subcuentas =
      seleccionCodigos("SqlSubcuentas con saldo.Subcuenta", "00000000", "99999999");
  return {
      {"Diario", "Impresos\\Diario.rpt", fechas, {}, limites},
      {"Mayor", "Impresos\\May1.rpt", fechas, {}, limites},
      {"Sumas y saldos",
       "Impresos\\SumSalN4.rpt",
       "{Diario.Subcuenta} >= '00000000' and {Diario.Subcuenta} <= '99999999' and {@mes} >= 01 "
       "and {@Mes} <= 12",
       {},
       limites},
      {"Plan con saldos", "Impresos\\SubCtaSal.rpt", subcuentas},
      listadoMensual("Balance", "BalSitN3", "SqlBalance.Mes", "01-Enero", "12-Diciembre"),
      listadoMensual("Resultados", "PerdGanN3", "SqlPerdidasyGanancias.Mes", "01-Enero",
                     "12-Diciembre"),
  };
}

void imprime(Contexto& ctx, const QString& carpeta) {
  const auto empresa = ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa());
  const auto subcuentas = empresa->OpenRecordset("Select * from Subcuentas order by Subcuenta");
  for (; !subcuentas->Eof(); subcuentas->MoveNext())
    escribeSaldos(*empresa, subcuentas->Fields(0).text(), {});
  ctx.motor.flush();
  for (const Listado& libro : libros()) {
    Informe informe(ctx.motor, *ctx.reloj,
                    {.impresoras = [] { return QStringList{"PDF"}; },
                     .muestra =
                         [&](std::shared_ptr<reports::Documento> documento, const QString& titulo) {
                           reports::TareaPdf tarea(std::move(documento), carpeta + titulo + ".pdf",
                                                   titulo, 1, INT_MAX);
                           while (tarea.paso()) continue;
                         }});
    informe.WindowTitle = libro.titulo;
    informe.ReportFileName = ctx.sesion.DirDatos + libro.plantilla;
    informe.DataFiles(0) = ctx.sesion.rutaEmpresa();
    informe.SelectionFormula = libro.seleccion;
    if (libro.limites) informe.ParameterFields(0) = "Limites;" + *libro.limites + ";True";
    informe.PrintReport();
  }
}

void copiaPlantillas(const QString& destino) {
  QDir().mkpath(destino);
  const QDir origen(LIBRANO_FUENTES "/impresos");
  for (const QString& nombre : origen.entryList(QDir::Files))
    QFile::copy(origen.filePath(nombre), destino + nombre);
}

// The screens that the quarter itself doesn't go through, each over the books as they stand.
void recorrePantallas(Contexto& ctx, Guion& guion, const std::function<void(Formulario&)>& mirar) {
  const struct {
    const char* nombre;
    int codigoLlamada;
    const char* valorElegido;
  } pantallas[] = {
      {"FrmConfiguracion", 0, ""},
      {"FrmEmpresas", 2, ""},
      {"FrmVisualizaPlan", 0, "43"},
      {"FrmSubCuentas", 1, "43000008"},
      {"FrmCuentasLista", 0, ""},
      {"FrmCuentas", 2, "430"},
      {"FrmCrearPlan", 0, ""},
      {"FrmConceptos", 0, ""},
      {"FrmNivel2", 0, ""},
      {"FrmPartida", 0, ""},
      {"FrmBusApu", 0, ""},
      {"FrmBusSub", 0, ""},
      {"FrmBusFec", 0, ""},
      {"FrmBusImp", 0, ""},
      {"FrmCalendario", 20, ""},
      {"FrmDuplicarAsiento", 0, ""},
      {"FrmCambiadatos", 0, ""},
      {"FrmEliminaAsiento", 0, "120"},
      {"FrmCuadrarAsientos", 0, ""},
      {"FrmCompruebaFechasAsientos", 0, ""},
      {"FrmRenumera", 0, ""},
      {"FrmExtractosPantalla", 0, "57200001"},
      {"FrmAsiento", 0, "3"},
      {"FrmExtractos", 0, "57200001"},
      {"FrmExtractoEntraCtas", 0, ""},
      {"FrmAcumulados", 0, ""},
      {"FrmDiarioImprimir", 0, ""},
      {"FrmSumasSaldosImpresos", 0, ""},
      {"FrmSubcuentasImpresos", 0, ""},
      {"FrmPerdidasYGananciasImpresos", 0, ""},
      {"FrmBalanceImpresos", 0, ""},
  };
  for (const auto& p : pantallas) {
    guion.esperaDialogo(p.nombre, [&](Teclado& t) {
      auto& forma = static_cast<Formulario&>(t.forma());
      mirar(forma);
      forma.descargar();
    });
    ctx.sesion.CodigoLlamada = p.codigoLlamada;
    ctx.sesion.ValorElegido = p.valorElegido;
    ctx.formularios->mostrar(p.nombre);
    ctx.sesion.CodigoLlamada = 0;
    ctx.sesion.ValorElegido.clear();
  }
}

void demostracion(const QString& carpeta) {
  QDir(carpeta).mkpath("Librano");
  QDir(carpeta).mkpath("pantallas");
  QDir(carpeta).mkpath("libros");
  copiaPlantillas(carpeta + "Librano/Impresos/");

  const DosDeEnero reloj;
  Contexto ctx;
  Guion guion(ctx.motor);
  Registro registro(ctx);
  ctx.reloj = &reloj;
  ctx.cajas = &guion;
  ctx.formularios = &registro;
  ctx.carpetaPrograma = rutaPrograma(carpeta + "Librano") + '\\';
  ctx.ejecutar = [](const QString&, const QStringList&) {};
  ctx.terminar = [] {};
  ctx.copiaUnica = [] { return true; };
  registraFoundation(registro);
  registraCompany(registro);
  registraAccounts(registro);
  registraJournal(registro);
  registraReports(registro);

  int vistas = 0;
  const auto mirar = [&](Formulario& forma) {
    captura(forma, carpeta + QString("pantallas/%1-%2")
                                 .arg(++vistas, 2, 10, QLatin1Char('0'))
                                 .arg(forma.objectName()));
  };
  printf("Un usuario nuevo crea su empresa...\n");
  Formulario& menu = empiezaEmpresa(ctx, guion, kEmpresa, mirar);
  altaSubcuentasTrimestre(*ctx.motor.Workspaces(0).OpenDatabase(ctx.sesion.rutaEmpresa()));
  printf("...teclea su primer trimestre...\n");
  int lineas = 0;
  tecleaTrimestre(ctx, guion, menu, [&](const LineaDiario&) { ++lineas; });
  mirar(menu);
  printf("...%d partidas; mira las demás pantallas e imprime sus libros.\n", lineas);
  recorrePantallas(ctx, guion, mirar);
  imprime(ctx, carpeta + "libros/");
  registro.abierto("FrmMenu")->descargar();
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  if (argc != 2) {
    fprintf(stderr, "Uso: demo CARPETA\n");
    return 2;
  }
  aplicarTema(app);
  demostracion(QDir(QString::fromLocal8Bit(argv[1])).absolutePath() + '/');
  return testing::UnitTest::GetInstance()->Failed() ? 1 : 0;
}
