// The demonstration: a shop's year as its scenario types it, and the screens that it doesn't go
// through. In the folder LIBRANO_DEMO it leaves the program's data, the screens met on the way and
// the books as PDF.
#include "escenarios/ano.h"
#include "soporte/gestion.h"

namespace {

// A screen that the year itself doesn't go through.
struct Pantalla {
  const char* nombre;
  int codigoLlamada = 0;
  const char* valorElegido = "";
  bool libro = false;  // it prints one
  std::function<void(Teclado&)> rellena = [](Teclado&) {};
};

std::vector<Pantalla> pantallas() {
  return {{"FrmConfiguracion"},
          {"FrmEmpresas", 2},
          {"FrmVisualizaPlan", 0, "43"},
          {"FrmSubCuentas", 1, "43000008"},
          {"FrmCuentasLista"},
          {"FrmCuentas", 2, "430"},
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
          {"FrmAsiento", 0, "3"},
          {"FrmAcumulados"},
          {"FrmSubcuentasImpresos", 0, "", true,
           [](Teclado& t) {
             t.marca("OptPlan_1");
             t.marca("OptOpciones_2");
             t.entra("TxtSubcuentasDesde", "10000001");
             t.teclea("70000001");
           }},
          {"FrmIVAIntercomunitario"},
          {"FrmTiposIVA"},
          {"FrmIVAAcumulados", 0, "", true},
          {"FrmIVASRLibros", 0, "", true, [](Teclado& t) { t.pulsa("OptLibro_2"); }},
          {"FrmSumasSaldosImpresos", 0, "", true},
          {"FrmExtractoEntraCtas", 0, "", true,
           [](Teclado& t) {
             t.escribe("TxtSubcuentaDesde", "10000001");
             t.escribe("TxtSubcuentaHasta", "79999999");
           }},
          {"Frm347", 0, "", true, [](Teclado& t) { t.escribe("TxtImporte", "100"); }},
          {"FrmIVARenumera"},
          {"FrmEliminaAsientosIVA"},
          {"FrmIVARevisarBases"},
          {"FrmImportarContaplus"},
          {"FrmImportarContanet"},
          {"FrmCompruebaEmpresa"},
          {"FrmArticulos"},
          {"FrmGesFacCli"}};
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

class Demostracion : public UnAno {
 protected:
  Demostracion() : UnAno(qEnvironmentVariable("LIBRANO_DEMO")) {
    const QString carpeta = qEnvironmentVariable("LIBRANO_DEMO");
    guion.libros = carpeta + "/libros";
    for (const char* parte : {"/pantallas", "/libros"}) QDir().mkpath(carpeta + parte);
    mirar = [this, carpeta](QWidget& forma) {
      if (std::exchange(ultima, forma.objectName()) == forma.objectName()) return;
      captura(forma, QString("%1/pantallas/%2-%3")
                         .arg(carpeta)
                         .arg(++vistas, 2, 10, QLatin1Char('0'))
                         .arg(forma.objectName()));
    };
    guion.mirar = mirar;
  }
  void muestra(const Pantalla& p) {
    guion.esperaDialogo(p.nombre, [&](Teclado& d) {
      p.rellena(d);
      if (p.libro) {
        d.pulsa("CmdAceptar");
        leeVista(guion);
      }
      static_cast<Formulario&>(d.forma()).descargar();
    });
    ctx.sesion.CodigoLlamada = p.codigoLlamada;
    ctx.sesion.ValorElegido = p.valorElegido;
    formularios->mostrar(p.nombre);
    ctx.sesion.CodigoLlamada = 0;
    ctx.sesion.ValorElegido.clear();
  }

  int vistas = 0;
  QString ultima;  // of a run of the same one only the first is kept
};

TEST_F(Demostracion, UnAnoYLasDemasPantallas) {
  recorre();
  pasaA(kAno);
  mirar(t->forma());
  creaGestion(motor, ctx.sesion.DirDatos);
  for (const Pantalla& p : pantallas()) muestra(p);
}

}  // namespace
