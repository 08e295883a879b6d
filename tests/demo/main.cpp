// The demonstration: a shop's year as its scenario types it, and the screens that it doesn't go
// through. In the folder LIBRANO_DEMO it leaves the program's data, the screens met on the way and
// the books as PDF.
#include "escenarios/ano.h"
#include "soporte/gestion.h"

namespace {

// What a screen that prints is asked for.
void pide(Teclado& t, const QString& nombre) {
  if (nombre == "FrmSubcuentasImpresos") {
    t.marca("OptPlan_1");
    t.marca("OptOpciones_2");
    t.entra("TxtSubcuentasDesde", "10000001");
    t.teclea("70000001");
  }
  if (nombre == "FrmIVASRLibros") t.pulsa("OptLibro_2");
  if (nombre == "FrmExtractoEntraCtas") {
    t.escribe("TxtSubcuentaDesde", "10000001");
    t.escribe("TxtSubcuentaHasta", "79999999");
  }
  if (nombre == "Frm347") t.escribe("TxtImporte", "100");
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
  void muestra(const QStringList& p) {
    guion.esperaDialogo(p[0], [&](Teclado& d) {
      pide(d, p[0]);
      if (!p[3].isEmpty()) {
        d.pulsa("CmdAceptar");
        leeVista(guion);
      }
      static_cast<Formulario&>(d.forma()).descargar();
    });
    ctx.sesion.CodigoLlamada = p[1].toInt();
    ctx.sesion.ValorElegido = p[2];
    formularios->mostrar(p[0]);
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
  creaGestion(rutaSistema(ctx.sesion.DirDatos));
  for (const QStringList& p : leeCsv("pantallas.csv")) muestra(p);
}

}  // namespace
