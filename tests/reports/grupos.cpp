// Books counted by their groups against the same books counted row by row.
#include "reports/grupos.h"

#include <random>

#include "reports/impreso.h"
#include "soporte/libros.h"

using namespace reports;

namespace {

const QString kDesdeElDiez = "{SqlDiarioPrincipal.NAsiento}>=10";
const QString kTodoElAno =
    "{SqlDiarioPrincipal.Fecha} >= date(2024,1,1) and {SqlDiarioPrincipal.Fecha} <= "
    "date(2024,12,31)";

const QString kDesdeMarzo = "{SqlDiarioPrincipal.Fecha} >= date(2024,3,1)";

class PorGrupos : public testing::Test {
 protected:
  int azar(int menos, int mas) { return std::uniform_int_distribution(menos, mas)(azar_); }

  void vacia() {
    auto filas = libros.abre()->OpenRecordset("Diario");
    for (; !filas->Eof(); filas->MoveNext()) filas->Delete();
  }
  void apunta(int asiento, QDate fecha, const QString& subcuenta, int letras) {
    const bool debe = azar(0, 1) == 0;
    const double importe = azar(0, 9) == 0 ? 0 : azar(-20'000, 900'000) / 100.0;
    const QString concepto = QString("Letra a letra ").repeated(4).left(letras);
    anade(diario->Recordset(),
          lineaDe(++lineas, asiento, fecha, subcuenta, debe ? importe : -importe,
                  {{"Descripcion", concepto},
                   {"DH", debe ? "D" : "H"},
                   {"Saldo", azar(0, 2) == 0 ? Variant() : Variant(azar(-2, 2) * importe)}}));
  }
  // Asientos of one line to sixty, some of several days or with long concepts.
  void llena(int asientos, int subcuentas) {
    vacia();
    diario = std::make_unique<DataControl>(libros.motor);
    diario->bind(libros.rutaEmpresa(), "Diario");
    lineas = 0;
    for (int a = 1; a <= asientos; ++a) {
      const int cuantas = azar(0, 3) == 0 ? azar(1, 60) : azar(1, 5);
      const QDate dia = QDate(2024, 1, 1).addDays(azar(0, 365));
      const bool partido = azar(0, 7) == 0, largo = azar(0, 11) == 0;
      for (int i = 0; i < cuantas; ++i)
        apunta(a, partido && azar(0, 2) == 0 ? dia.addDays(azar(-1, 1)) : dia,
               QString::number(43000000 + azar(1, subcuentas)),
               largo && i % 9 == 0 ? 50 : azar(0, 42));
    }
    libros.motor.flush();
  }

  // A delivered template on a paper of another height.
  std::shared_ptr<Documento> abre(const QString& nombre, int alto, const QString& seleccion) {
    const auto lee = [](const QString& fichero) {
      return QString::fromUtf8(contenidoDe(rutaFuente("impresos/" + fichero)));
    };
    const QString ruta = libros.dirDatos() + "prueba.rpt";
    haceFichero(rutaSistema(ruta),
                lee(nombre).replace("incluye = encabezado.inc", lee("encabezado.inc")).toUtf8() +
                    QString("\n[informe]\npapel = 210x%1\n").arg(alto).toUtf8());
    return abreLibro(libros.motor, libros.rutaEmpresa(), ruta, seleccion);
  }

  // Sums of the page begin with it, whatever stands in its mark.
  static QString escrita(const Documento& libro, const Marca& marca) {
    QString todo = QString("%1/%2").arg(marca.fila).arg(marca.paso);
    for (size_t i = 0; i < marca.sumas.size(); ++i)
      if (libro.plantilla().acumuladores[i].ambito != kAmbitoPagina)
        todo += QString(" %1").arg(marca.sumas[i]);
    return todo;
  }
  static QStringList escrita(const Pagina& pagina) {
    QStringList todo;
    for (const Texto& t : pagina.textos)
      todo << QString("%1,%2 %3").arg(t.x).arg(t.y).arg(t.entero);
    return todo;
  }

  // Every page's mark and texts, by either way; false if it is counted by its rows anyway.
  bool compara(Documento& libro) {
    const auto grupos = Grupos::de(libro.plantilla(), libro.fuente());
    libro.cuenta();
    if (!grupos) return false;
    const auto columnas = columnasDeCuenta(libro.plantilla(), libro.fuente());
    CursorAvance filas(libro.fuente(), {}, columnas);
    CursorDeGrupos tandas(libro.fuente(), grupos, columnas);
    CursorPorGrupos sueltas(libro.fuente(), grupos);
    Paginador una(libro.plantilla(), libro.muestra(), filas);
    Paginador otra(libro.plantilla(), libro.muestra(), tandas);
    Recorrido seguido(libro);
    Pagina pagina;
    for (int n = 1; n <= libro.paginas(); ++n) {
      EXPECT_TRUE(seguido.siguiente(&pagina));
      EXPECT_EQ(escrita(*libro.pagina(n)), escrita(pagina)) << "página " << n;
      const bool sigue = una.pagina(nullptr);
      EXPECT_EQ(otra.pagina(nullptr), sigue);
      EXPECT_EQ(sigue, n < libro.paginas());
      Marca marca = otra.marca();
      if (sigue) grupos->completa(libro.plantilla(), sueltas, marca);
      EXPECT_EQ(escrita(libro, marca), escrita(libro, una.marca())) << "tras la página " << n;
    }
    // The pages from the last one back, as End shows them.
    for (int n = libro.paginas(); n > 1; n -= 3) EXPECT_NE(libro.pagina(n), nullptr);
    return true;
  }

  Libros libros;
  std::unique_ptr<DataControl> diario;
  int lineas = 0;
  std::mt19937 azar_{7};
};

TEST_F(PorGrupos, LasPaginasSonLasMismas) {
  int contados = 0;
  for (int libro = 0; libro < 15 && !HasFailure(); ++libro) {
    const bool mayor = libro % 3 == 2;
    llena(libro == 0 ? 0 : libro == 1 ? 1 : azar(20, 60), mayor ? azar(1, 3) : 40);
    for (const QString& seleccion : {kTodoElAno, kDesdeMarzo, kDesdeElDiez}) {
      const int alto = azar(110, 300);
      SCOPED_TRACE(QString("%1, %2 mm: %3").arg(libro).arg(alto).arg(seleccion).toStdString());
      contados += compara(*abre(mayor ? "May1.rpt" : "Diario.rpt", alto, seleccion)) ? 1 : 0;
    }
  }
  EXPECT_GT(contados, 25);
}

// Only what the sums don't tell is read.
TEST_F(PorGrupos, SeLeenPocasFilas) {
  llena(0, 1);
  for (int a = 1; a <= 200; ++a)
    for (int i = 0; i < 3; ++i)
      apunta(a, QDate(2024, 1, a == 50 ? 1 + i : 9), QString::number(43000001 + i),
             a == 90 && i == 0 ? 50 : 20);
  libros.motor.flush();
  const auto leidas = [&](const char* plantilla, const QString& seleccion) {
    const auto libro = abre(plantilla, 297, seleccion);
    libro->cuenta();
    EXPECT_GT(libro->paginas(), 9);
    return libro->filasLeidas();
  };
  EXPECT_EQ(leidas("Diario.rpt", kTodoElAno), 6);  // of two asientos
  EXPECT_EQ(leidas("Diario.rpt", kDesdeElDiez), 6);
  EXPECT_EQ(leidas("May1.rpt", kTodoElAno), 3);  // the first of each subcuenta
  // Days have no sums of their own.
  EXPECT_EQ(leidas("May1.rpt", "{SqlDiarioPrincipal.Fecha} > date(2024,1,8)"), 597);
}

// What is posted while it is counted.
TEST_F(PorGrupos, ElLibroSigueAlFichero) {
  llena(30, 2);
  const auto libro = abre("Diario.rpt", 297, kTodoElAno);
  libro->cuenta(1);
  for (int i = 0; i < 100; ++i) apunta(31 + i, QDate(2024, 12, 31), "43000001", 10);
  libros.motor.flush();
  libro->cuenta();
  EXPECT_TRUE(compara(*libro));
  EXPECT_TRUE(escrita(*libro->pagina(libro->paginas())).join('\n').contains("Total asiento 130"));
}

}  // namespace
