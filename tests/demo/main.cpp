// The demonstration: a shop's books from an empty folder, its first quarter typed and printed, to
// the end of its year and the opening of the next, by the keyboard.
//
//   demo CARPETA
//
// leaves in the folder the program's data, the screens met on the way and the books as PDF.
#include <gtest/gtest.h>

#include <cstdio>
#include <QAction>
#include <QApplication>
#include <QDir>

#include "common/rutas.h"
#include "engine/dbengine.h"
#include "soporte/escenario.h"
#include "soporte/libroimpreso.h"
#include "soporte/libros.h"
#include "soporte/tecleo.h"
#include "toolkit/rejilla.h"
#include "toolkit/tema.h"

namespace {

// A screen that the quarter itself doesn't go through.
struct Pantalla {
  const char* nombre;
  int codigoLlamada = 0;
  const char* valorElegido = "";
  const char* libro = nullptr;  // that it prints, by its file's name
  std::function<void(Teclado&)> rellena = [](Teclado&) {};
};

std::vector<Pantalla> pantallas() {
  return {
      {"FrmConfiguracion"},
      {"FrmEmpresas", 2},
      {"FrmVisualizaPlan", 0, "43"},
      {"FrmSubCuentas", 1, "43000008"},
      {"FrmCuentasLista"},
      {"FrmCuentas", 2, "430"},
      {"FrmCrearPlan"},
      {"FrmConceptos"},
      {"FrmNivel2"},
      {"FrmPartida"},
      {"FrmBusApu"},
      {"FrmBusSub"},
      {"FrmBusFec"},
      {"FrmBusImp"},
      {"FrmCalendario", 20},
      {"FrmDuplicarAsiento"},
      {"FrmCambiadatos"},
      {"FrmEliminaAsiento", 0, "120"},
      {"FrmCuadrarAsientos"},
      {"FrmCompruebaFechasAsientos"},
      {"FrmRenumera"},
      {"FrmExtractosPantalla", 0, "57200001"},
      {"FrmAsiento", 0, "3"},
      {"FrmExtractos", 0, "57200001"},
      {"FrmExtractoEntraCtas", 0, "", "Mayor",
       [](Teclado& t) {
         t.escribe("TxtSubcuentaDesde", "10000001");
         t.escribe("TxtSubcuentaHasta", "79999999");
       }},
      {"FrmAcumulados"},
      {"FrmDiarioImprimir", 0, "", "Diario"},
      {"FrmSumasSaldosImpresos", 0, "", "Sumas y saldos"},
      {"FrmSubcuentasImpresos", 0, "", "Plan con saldos",
       [](Teclado& t) {
         t.marca("OptPlan_1");
         t.marca("OptOpciones_2");
         t.escribe("TxtSubcuentasDesde", "10000001");
         t.intro();
         t.teclea("70000001");
       }},
      {"FrmPerdidasYGananciasImpresos", 0, "", "Resultados"},
      {"FrmBalanceImpresos", 0, "", "Balance"},
      {"FrmTiposIVA"},
      {"FrmIVASRLibros", 0, "", "Libros de IVA", [](Teclado& t) { t.marca("OptLibro_2"); }},
      {"FrmIVAAcumulados", 0, "", "Acumulados de IVA"},
      {"Frm347", 0, "", "Modelo 347", [](Teclado& t) { t.escribe("TxtImporte", "100"); }},
      {"FrmIVARenumera"},
      {"FrmEliminaAsientosIVA"},
      {"FrmIVARevisarBases"},
  };
}

// Goes through them over the books as they stand. Those that print a book leave it as PDF.
void recorrePantallas(Escenario& e, const QString& carpeta,
                      const std::function<void(Formulario&)>& mirar) {
  for (const Pantalla& p : pantallas()) {
    e.guion.esperaDialogo(p.nombre, [&](Teclado& t) {
      auto& forma = static_cast<Formulario&>(t.forma());
      p.rellena(t);
      mirar(forma);
      if (p.libro) {
        t.pulsa("CmdAceptar");
        guardaVista(e.guion, carpeta + p.libro + ".pdf");
      }
      forma.descargar();
    });
    e.ctx.sesion.CodigoLlamada = p.codigoLlamada;
    e.ctx.sesion.ValorElegido = p.valorElegido;
    e.formularios->mostrar(p.nombre);
    e.ctx.sesion.CodigoLlamada = 0;
    e.ctx.sesion.ValorElegido.clear();
  }
}

// Invoices of both registers and one from a member state, keyed as a bookkeeper does.
void tecleaFacturas(Escenario& e, const std::function<void(Formulario&)>& mirar) {
  const struct {
    int codigoLlamada;
    const char *tercero, *numero, *base, *tipo;
  } facturas[] = {{6, "40000003", "A-118", "1250", "03"},
                  {6, "40000002", "77/24", "310,50", "07"},
                  {7, "43000001", "R-4", "-50", "03"},
                  {7, "43000001", "2024-091", "840", "03"},
                  {7, "43000002", "2024-092", "2100", "02"}};
  for (const auto& f : facturas) {
    e.guion.esperaDialogo("FrmIVASR", [&](Teclado& t) {
      for (const auto& [campo, texto] :
           std::initializer_list<std::pair<const char*, QString>>{{"TxtCodigoProveedor", f.tercero},
                                                                  {"TxtNumFactura", f.numero},
                                                                  {"TxtFecha", "2803"},
                                                                  {"TxtBase", f.base},
                                                                  {"TxtIva", f.tipo}})
        t.escribe(campo, texto);
      t.enfoca("TxtCuentaIva");
      mirar(static_cast<Formulario&>(t.forma()));
      t.pulsa("CmdAceptar");
    });
    e.ctx.sesion.CodigoLlamada = f.codigoLlamada;
    e.formularios->mostrar("FrmIVASR");
    e.ctx.sesion.CodigoLlamada = 0;
  }
  e.guion.esperaDialogo("FrmIVAIntercomunitario", [&](Teclado& t) {
    for (const auto& [campo, texto] : std::initializer_list<std::pair<const char*, QString>>{
             {"TxtFecha", "2903"}, {"TxtIva", "03"}, {"TxtImporteIva", "160"}})
      t.escribe(campo, texto);
    t.enfoca("TxtIVASoportado");
    mirar(static_cast<Formulario&>(t.forma()));
    t.pulsa("CmdAceptar");
  });
  e.formularios->mostrar("FrmIVAIntercomunitario");
}

// --- the end of the year ------------------------------------------------------------------------

using Campos = std::vector<std::pair<const char*, const char*>>;
using Mirar = std::function<void(Formulario&)>;

void escribe(Teclado& t, const Campos& campos) {
  for (const auto& [campo, texto] : campos) t.escribe(campo, QString::fromUtf8(texto));
}

// A dialog that is filled, looked at and accepted.
void acepta(Escenario& e, const char* nombre, const Mirar& mirar,
            const std::function<void(Teclado&)>& rellena) {
  e.guion.esperaDialogo(nombre, [&](Teclado& t) {
    rellena(t);
    mirar(static_cast<Formulario&>(t.forma()));
    t.pulsa("CmdAceptar");
  });
  e.formularios->mostrar(nombre);
}

// What is due is written down, printed, and one of it paid.
void llevaLaCartera(Escenario& e, const QString& libros, const Mirar& mirar) {
  const Campos recibos[] = {{{"TxtFechaVencimiento", "3006"},
                             {"TxtCuenta", "40000003"},
                             {"TxtFactura", "A-118"},
                             {"TxtTipo", "Letra"},
                             {"TxtTitulo", "Letra de la factura A-118"},
                             {"TxtContrapartida", "57200001"},
                             {"TxtImporte", "1450"}},
                            {{"TxtFechaVencimiento", "150125"},
                             {"TxtCuenta", "43000001"},
                             {"TxtFactura", "2024-091"},
                             {"TxtTipo", "Pagaré"},
                             {"TxtTitulo", "Cobro de la factura 2024-091, a nueve meses"},
                             {"TxtContrapartida", "57200002"},
                             {"TxtImporte", "1008"}}};
  e.guion.esperaDialogo("FrmRecibosLista", [&](Teclado& lista) {
    for (const Campos& recibo : recibos) {
      e.guion.esperaDialogo("FrmRecibos", [&](Teclado& t) {
        escribe(t, recibo);
        t.enfoca("TxtCA");
        mirar(static_cast<Formulario&>(t.forma()));
        t.pulsa("CmdAceptar");
      });
      lista.pulsa("CmdAltas");
    }
    mirar(static_cast<Formulario&>(lista.forma()));
    e.guion.esperaDialogo("FrmRecibosImpresos", [&](Teclado& t) {
      t.escribe("TxtHasta", "31/12/2025");
      t.enfoca("CmdAceptar");
      mirar(static_cast<Formulario&>(t.forma()));
      t.pulsa("CmdAceptar");
      guardaVista(e.guion, libros + "Recibos.pdf");
      activar(t.forma());
      t.escape();
    });
    lista.pulsa("CmdImpresos");
    lista.control<Rejilla>("Grid").mover(Rejilla::Primera);
    e.guion.esperaDialogo("FrmRecibos", [&](Teclado& t) {
      mirar(static_cast<Formulario&>(t.forma()));
      t.pulsa("CmdAceptar");
    });
    lista.pulsa("CmdContabiliza");
    lista.escape();
  });
  e.formularios->mostrar("FrmRecibosLista");
}

void pagaLaNomina(Teclado& t) {
  escribe(
      t,
      {{"TxtFecha", "3112"}, {"TxtSubSueldoBruto", "64000001"}, {"TxtImpSueldoBruto", "3450.75"}});
  for (const auto& [casilla, campos] : std::initializer_list<std::pair<const char*, Campos>>{
           {"ChkSSCargoEmpresa",
            {{"TxtSubSSCargoEmpresa", "64200001"},
             {"TxtImpSScargoEmpresa", "1055.93"},
             {"TxtSSCargoTrabajador", "219.12"}}},
           {"ChkOrganismosSSACreedora", {{"TxtSubOrganismosSSAcreedora", "47600001"}}},
           {"ChkRetenciones", {{"TxtSubRetenciones", "47510001"}, {"TxtImpImportes", "414.09"}}}}) {
    t.pulsa(casilla);
    escribe(t, campos);
  }
  t.escribe("TxtsubCaja", "57200001");
  t.enfoca("TxtImpCaja");
}

// A book that a dialog prints at the level of subcuentas.
void imprime(Escenario& e, const char* nombre, const QString& pdf) {
  e.guion.esperaDialogo(nombre, [&](Teclado& t) {
    t.marca("OptTipo_3");
    t.pulsa("CmdAceptar");
    guardaVista(e.guion, pdf);
    activar(t.forma());
    t.escape();
  });
  e.formularios->mostrar(nombre);
}

// From the payroll of December to the opening of the next year with what this one was closed with.
void terminaElAno(Escenario& e, Teclado& menu, const QString& libros, const Mirar& mirar) {
  const QString ano = e.ctx.sesion.EmpresaActual, siguiente = ano + " 2025";
  e.reloj.ponEn(QDate(2024, 12, 31));
  activar(menu.forma());
  menu.enfoca("TxtSubcuenta");
  menu.tecla(Qt::Key_A, Qt::ControlModifier);
  tecleaSubcuenta(menu, e.guion, "61000001", "Variación de existencias");
  tecleaSubcuenta(menu, e.guion, "12900000", "Resultado del ejercicio");
  llevaLaCartera(e, libros, mirar);
  acepta(e, "FrmNomina", mirar, pagaLaNomina);
  e.guion.esperaDialogo("FrmRegularizaStocks", [&](Teclado& t) {
    t.escribe("TxtExistenciasFinales", "4250");
    t.llega("GridExtracto");
    t.tecla(Qt::Key_End);
    mirar(static_cast<Formulario&>(t.forma()));
    e.guion.esperaMensaje("Proceso realizado con exito");
    t.pulsa("CmdAceptar");
  });
  e.formularios->mostrar("FrmRegularizaStocks");
  imprime(e, "FrmPerdidasYGananciasImpresos", libros + "Resultados del año.pdf");
  acepta(e, "FrmPerdidasyGanacias", mirar, [](Teclado&) {});
  imprime(e, "FrmBalanceImpresos", libros + "Balance del año.pdf");
  acepta(e, "FrmCierre", mirar, [](Teclado&) {});
  e.guion.esperaDialogo("FrmEmpresas", [&](Teclado& alta) {
    alta.escribe("TxtAñoContable", "2025");
    tecleaEmpresa(alta, e.guion, siguiente, [&](Teclado& plan) {
      plan.mnemonico('e');
      plan.elige("TxtEmpresa", ano);
      plan.marca("ChkSubcuentas");
      plan.marca("ChkRestoCartera");
      mirar(static_cast<Formulario&>(plan.forma()));
      plan.mnemonico('a');
    });
  });
  menu.forma().findChild<QAction*>("MnuNuevaEmpresa")->trigger();
  menu.elige("TxtEmpresa", siguiente);
  menu.elige("TxtEmpresa", ano);
  mirar(static_cast<Formulario&>(menu.forma()));  // closed
  acepta(e, "FrmInvertirCierre", mirar, [](Teclado&) {});
  menu.elige("TxtEmpresa", siguiente);
  acepta(e, "FrmApertura", mirar, [&](Teclado& t) { t.elige("TxtEmpresaCerrada", ano); });
  mirar(static_cast<Formulario&>(menu.forma()));
  imprime(e, "FrmBalanceImpresos", libros + "Balance de apertura.pdf");
}

// Saves the company to an archive, loses its file and has it back.
void guardaYRestaura(Escenario& e, const QString& copias, const Mirar& mirar) {
  const QString diario = "Select * from Diario order by NLinea";
  const auto antes = e.filas(diario);
  const auto copia = [&](const char* opcion, const char* campo, const QString& ruta) {
    Teclado t(e.abre("FrmCopias"));
    t.marca(opcion);
    t.marca("BtonOtraUnidad");
    t.escribe(campo, rutaPrograma(ruta));
    mirar(static_cast<Formulario&>(t.forma()));
    t.pulsa("BtonAceptar");
    reposar();
  };
  copia("BtonCopiaSeguridad", "TxtDirCopias", copias);
  e.cierra();
  EXPECT_TRUE(QFile::remove(rutaSistema(e.ctx.sesion.rutaEmpresa())));
  copia("BtonRestauraCopias", "TxtDirRestaura", copias + e.ctx.sesion.EmpresaActual + ".Zip");
  EXPECT_EQ(e.filas(diario), antes);
}

// Keeps the form as pictures, at the usual size of letters and dots and at twice as many dots.
void captura(QWidget& forma, const QString& ruta) {
  for (const int puntos : {1, 2}) {
    QPixmap imagen(forma.size() * puntos);
    imagen.setDevicePixelRatio(puntos);
    forma.render(&imagen);
    EXPECT_TRUE(imagen.save(QString("%1-%2x.png").arg(ruta).arg(puntos))) << qPrintable(ruta);
  }
}

void demostracion(const QString& carpeta) {
  QDir(carpeta).mkpath("pantallas");
  QDir(carpeta).mkpath("libros");
  QDir(carpeta).mkpath("copias");
  Escenario e(Escenario::Carpetas, {}, carpeta);
  e.reloj.ponEn(QDate(2024, 1, 2));
  int vistas = 0;
  const auto mirar = [&](Formulario& forma) {
    captura(forma, carpeta + QString("pantallas/%1-%2")
                                 .arg(++vistas, 2, 10, QLatin1Char('0'))
                                 .arg(forma.objectName()));
  };
  printf("Un usuario nuevo crea su empresa...\n");
  Formulario& menu = empiezaEmpresa(e.ctx, e.guion, "Comercial Ejemplo", mirar);
  altaSubcuentasTrimestre(*e.ctx.motor.Workspaces(0).OpenDatabase(e.ctx.sesion.rutaEmpresa()));
  printf("...teclea su primer trimestre...\n");
  int lineas = 0;
  tecleaTrimestre(e.ctx, e.guion, menu, [&](const LineaDiario&) { ++lineas; });
  mirar(menu);
  printf("...y unas facturas...\n");
  tecleaFacturas(e, mirar);
  printf("...%d partidas; mira las demás pantallas e imprime sus libros.\n", lineas);
  ponPlantillas(e.ctx);
  recorrePantallas(e, carpeta + "libros/", mirar);
  printf("...y cierra el año y abre el siguiente.\n");
  Teclado teclado(menu);
  terminaElAno(e, teclado, carpeta + "libros/", mirar);
  printf("Guarda la empresa, la pierde y la recupera de su copia.\n");
  guardaYRestaura(e, carpeta + "copias/", mirar);
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
