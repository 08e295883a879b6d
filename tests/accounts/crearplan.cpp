#include "accounts/crearplan.h"

#include <gtest/gtest.h>

#include "accounts/borrado.h"
#include "accounts/plangeneral.h"
#include "foundation/data/datacontrol.h"
#include "soporte/libros.h"

namespace {

TEST(PlanGeneral, FilasDeCadaGrupoEnOrden) {
  QMap<char, int> filas;
  QString anterior;
  for (const CuentaDelPlan& cuenta : planGeneral()) {
    const QString codigo = QLatin1String(cuenta.codigo);
    EXPECT_EQ(codigo.size(), 3);
    EXPECT_LT(anterior, codigo);
    EXPECT_LE(QString::fromUtf8(cuenta.nombre).size(), 75);
    anterior = codigo;
    ++filas[cuenta.codigo[0]];
  }
  EXPECT_EQ(filas,
            (QMap<char, int>{
                {'1', 50}, {'2', 61}, {'3', 30}, {'4', 37}, {'5', 64}, {'6', 63}, {'7', 51}}));
}

TEST(SiembraPlan, AnadeLoQueFaltaYNoCambiaLoQueHay) {
  Libros libros(4, 9);
  const auto base = libros.abre();
  siembraPlan(*base, 4);
  EXPECT_EQ(libros.filas(QStringLiteral("Cuentas")).size(), 356);
  EXPECT_EQ(libros.filas(QStringLiteral("Cuentas")).first(),
            QStringLiteral("1000|Capital social|1|10|Falso"));

  const auto cuentas = base->OpenRecordset(QStringLiteral("Cuentas"));
  cuentas->Edit();
  cuentas->Fields(QStringLiteral("Descripcion")) = "Capital escriturado";
  cuentas->Update();
  cuentas->MoveNext();
  cuentas->Delete();
  siembraPlan(*base, 4);
  EXPECT_EQ(libros.filas(QStringLiteral("Cuentas")).size(), 356);
  EXPECT_EQ(libros.filas(QStringLiteral("Select Descripcion from Cuentas where Cuenta='1000'")),
            QStringList{QStringLiteral("Capital escriturado")});
}

class CopiaPlanTest : public testing::Test {
 protected:
  void SetUp() override {
    libros_.creaEmpresa(Libros::datosPorDefecto(QStringLiteral("Nueva"), 3, 8));
    origen_ = libros_.abre();
    destino_ = libros_.abre(QStringLiteral("Nueva"));
    siembraPlan(*origen_, 3);
  }
  QStringList nueva(const char* fuente) {
    return libros_.filas(QString::fromUtf8(fuente), QStringLiteral("Nueva"));
  }
  // Adds a row with these texts from the first field on.
  static void anade(Database& base, const char* tabla, const QStringList& textos) {
    const auto filas = base.OpenRecordset(QLatin1String(tabla));
    filas->AddNew();
    for (int i = 0; i < textos.size(); ++i) filas->Fields(i) = textos[i];
    filas->Update();
  }
  Libros libros_;
  std::unique_ptr<Database> origen_, destino_;
};

TEST_F(CopiaPlanTest, SoloLasCuentas) {
  copiaPlan(*origen_, *destino_, {});
  EXPECT_EQ(nueva("Cuentas"), libros_.filas(QStringLiteral("Cuentas")));
  EXPECT_EQ(nueva("Subcuentas").size(), 7);
  // A second copy meets the first one's rows.
  EXPECT_THROW(copiaPlan(*origen_, *destino_, {}), ErrorEjecucion);
}

TEST_F(CopiaPlanTest, LoQueLaAcompana) {
  anade(*origen_, "Subcuentas",
        {QStringLiteral("43000001"), QStringLiteral("430"), QStringLiteral("Ana")});
  anade(*origen_, "Recibos",
        {QStringLiteral("01/03/2024"), QStringLiteral("43000001"), QStringLiteral("Recibo")});
  const auto tipos = origen_->OpenRecordset(QStringLiteral("TiposIVA"));
  tipos->Edit();
  tipos->Fields(QStringLiteral("IVA")) = 21;
  tipos->Update();
  const auto clases = origen_->OpenRecordset(QStringLiteral("TipoRecibos"));
  clases->MoveLast();
  clases->Edit();
  clases->Fields(QStringLiteral("Tipo")) = "Pagaré";
  clases->Update();

  const QStringList antes = nueva("TiposIVA");
  copiaPlan(*origen_, *destino_,
            {.Subcuentas = true, .TiposIva = true, .TiposCartera = true, .RestoCartera = true});
  EXPECT_EQ(nueva("Subcuentas").size(), 8);
  EXPECT_EQ(nueva("Select Descripcion from Subcuentas where Subcuenta='43000001'"),
            QStringList{QStringLiteral("Ana")});
  EXPECT_EQ(nueva("Select Subcuenta from Recibos"), QStringList{QStringLiteral("43000001")});
  // The rates go over the first row alone, where only the one with its own code fits.
  QStringList tiposNuevos = nueva("TiposIVA");
  EXPECT_EQ(tiposNuevos.takeFirst(), QStringLiteral("01|Super reducido S/R|21|0"));
  EXPECT_EQ(tiposNuevos, antes.mid(1));
  // The kinds of receipt have no key, so the last one stays.
  EXPECT_EQ(nueva("TipoRecibos").first(), QStringLiteral("99|Pagaré"));
  EXPECT_EQ(nueva("TipoRecibos").size(), 198);
}

TEST_F(CopiaPlanTest, SoloSeNiegaLaQueDifiereEnLasDosAnchuras) {
  EXPECT_TRUE(anchurasCopiables(*origen_, 3, 8));
  EXPECT_TRUE(anchurasCopiables(*origen_, 4, 8));
  EXPECT_TRUE(anchurasCopiables(*origen_, 3, 9));
  EXPECT_FALSE(anchurasCopiables(*origen_, 4, 9));
}

TEST(Borrado, LoQueTieneAlgoDebajoSeQueda) {
  Libros libros;
  libros.asientaTrimestre();
  DataControl datos(libros.motor);
  const QString ruta = libros.rutaEmpresa();
  EXPECT_TRUE(tieneApuntes(datos, ruta, QStringLiteral("57000001")));
  EXPECT_FALSE(tieneApuntes(datos, ruta, QStringLiteral("43000007")));
  EXPECT_TRUE(tieneSubcuentas(datos, ruta, QStringLiteral("430")));
  EXPECT_FALSE(tieneSubcuentas(datos, ruta, QStringLiteral("431")));
}

}  // namespace
