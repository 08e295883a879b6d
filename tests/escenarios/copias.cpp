// A company saved, destroyed, restored, cloned, taken out, rebuilt and repaired, by keys: each
// leaves the main window for its dialog and comes back to it with every figure as it was.
#include "accounts/plan2007.h"
#include "escenarios/herramientas.h"
#include "oficial/tablasoficiales.h"

namespace {

class Copias : public DiarioDelTrimestre {
 protected:
  // The dialog that takes the main window's place.
  Teclado sale(const char* nombre) {
    // Archivo shares its letter with Ayuda, so Alt takes them by turns.
    if (entradaMenu(QString::fromLatin1(nombre))->padre == u"MnuArchivo") {
      t->forma().findChild<QAction*>(nombre)->trigger();
    } else {
      entrada(nombre);
    }
    return forma(entradaMenu(QString::fromLatin1(nombre))->destino.toString());
  }
  Teclado forma(const QString& nombre) {
    reposar();
    Formulario* f = formularios->abierto(nombre);
    if (!f) qFatal("%s isn't open", qPrintable(nombre));
    activar(*f);
    return Teclado(*f);
  }
  // Back in the main window, on the open company's books.
  void vuelve() {
    t = std::make_unique<Teclado>(forma("FrmMenu").forma());
    EXPECT_EQ(t->textoDe("TxtEmpresa"), ctx.sesion.EmpresaActual);
    comprueba();
  }
  QString fichero(const QString& empresa = "Comercial Ejemplo", const char* nombre = "Conta.MDB") {
    return carpetaDatos() + '/' + empresa + '/' + nombre;
  }
  // The file's own library, in another process.
  QString sqlite(const QString& ruta, const QString& sql) {
    motor.flush();
    return preguntaFuera(ruta, sql);
  }
  int orden(const QString& programa, const QStringList& argumentos) {
    QProcess p;
    p.setWorkingDirectory(usb.path());
    p.start(programa, argumentos);
    p.waitForFinished();
    return p.exitCode();
  }
  static bool hay(const QString& ruta) { return QFileInfo::exists(ruta); }
  void guardaEn(const QString& carpeta, const QString& queja = {}) {
    Teclado d = sale("MnuCopiasSeguridad");
    alterna(d, "BtonCopiaSeguridad");
    d.llega("BtonUnidad");
    d.tecla(Qt::Key_Down);
    rellena(d, {{"TxtDirCopias", carpeta}});
    if (!queja.isEmpty()) guion.esperaMensaje(queja, "Error");
    d.mnemonico('A');
  }
  // With a box, if it can't.
  void restauraDe(const QString& archivo, const QString& queja = {}) {
    Teclado d = sale("MnuCopiasSeguridad");
    EXPECT_FALSE(d.visible("PanelRestaura"));
    d.marca("BtonRestauraCopias");
    EXPECT_TRUE(d.visible("PanelRestaura"));
    EXPECT_EQ(d.textoDe("TxtEmpresa"), ctx.sesion.EmpresaActual);
    guion.esperaFichero(archivo);
    alterna(d, "CmdBuscaRestaura");
    if (!queja.isEmpty()) guion.esperaMensaje("Unzip: " + queja);
    d.mnemonico('A');
  }
  void destruye() {
    t.reset();
    cierra();
    QFile::remove(fichero());
  }
  void abreMenu() { t = std::make_unique<Teclado>(abre("FrmMenu")); }

  QTemporaryDir usb;
  const QString zip = usb.filePath("Comercial Ejemplo.Zip");
};

TEST_F(Copias, LaEmpresaDestruidaVuelveEnteraDeSuCopia) {
  guardaEn(rutaPrograma(usb.path()) + '\\');
  vuelve();
  ASSERT_EQ(orden("unzip", {"-tq", zip}), 0);
  EXPECT_EQ(QDir(usb.path()).entryList(QDir::Files), QStringList("Comercial Ejemplo.Zip"));

  // What was done after the copy goes; a damaged file, and none, are made anew.
  cambiaLinea(0, "Descripcion", "Después de la copia");
  const std::function<void()> danos[] = {
      [] {}, [&] { QFile(fichero()).resize(0); },
      [&] { haceFichero(fichero(), QByteArray(50000, 'x')); },
      [&] { QDir(carpetaDatos() + "/Comercial Ejemplo").removeRecursively(); }};
  for (const auto& dano : danos) {
    destruye();
    dano();
    guion.esperaMensaje(errorEnCaja(hay(fichero()) ? 3343 : 3024, ctx.sesion.rutaEmpresa()));
    abreMenu();
    restauraDe(zip);
    vuelve();
  }
}

TEST_F(Copias, DeOtroProgramaODeOtraEmpresaTomaElNombreDeLaAbierta) {
  motor.flush();
  creaEmpresa(empresa("Otra"));
  t.reset();
  cierra();
  // As another tool packs it: with its folder, in other letters, among other files.
  QDir(usb.path()).mkdir("Libros");
  QFile::copy(fichero(), usb.filePath("Libros/CONTA.MDB"));
  // With something in it that would go on for ever as soon as its name is changed, and with more
  // that passes for the engine's own.
  const QString propios = "SELECT name FROM sqlite_schema WHERE type = 'trigger' ORDER BY name";
  const QString antes = sqlite(fichero(), propios);
  sqlite(usb.filePath("Libros/CONTA.MDB"),
         "CREATE TRIGGER \"sin \"\"fin\" AFTER UPDATE ON Empresa BEGIN UPDATE Diario SET Saldo = "
         "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT max(i) FROM n); "
         "END; CREATE TRIGGER librano_guarda_UPDATE_Empresa AFTER UPDATE ON Empresa BEGIN DELETE "
         "FROM Diario; END; DROP TRIGGER librano_guarda_UPDATE_Diario; CREATE TRIGGER "
         "librano_guarda_UPDATE_Diario AFTER UPDATE ON Diario BEGIN DELETE FROM Diario; END");
  QFile::copy(fichero("Otra"), usb.filePath("leeme.txt"));
  ASSERT_EQ(orden("zip", {"-rq", "info.zip", "Libros", "leeme.txt"}), 0);
  abreEmpresa("Otra");
  abreMenu();
  restauraDe(usb.filePath("info.zip"));
  vuelve();
  EXPECT_EQ(valor("Select NombreEmpresa from Empresa"), "Otra");
  EXPECT_EQ(sqlite(fichero("Otra"), propios), antes);
  EXPECT_NE(valor("Select Count(*) from Diario"), "0");
  EXPECT_EQ(sqlite(fichero(), "SELECT NombreEmpresa FROM Empresa"), "Comercial Ejemplo");
}

// Whatever is wrong is told, and the books are as they were.
TEST_F(Copias, LoQueNoSePuedeNoTocaNada) {
  const auto noSirve = [&](const QString& archivo, const QString& texto) {
    restauraDe(archivo, texto);
    vuelve();
  };
  noSirve(usb.filePath("falta.zip"),
          "No se encuentra el fichero: " + rutaPrograma(usb.filePath("falta.zip")));
  haceFichero(usb.filePath("x"), {});
  orden("zip", {"-q", "otro.zip", "x"});
  noSirve(usb.filePath("otro.zip"), "El archivo no sirve: no contiene el fichero Conta.Mdb");
  QFile::copy(carpetaDatos() + "/Inicio.mdb", usb.filePath("Conta.Mdb"));
  orden("zip", {"-q", "catalogo.zip", "Conta.Mdb"});
  noSirve(usb.filePath("catalogo.zip"), "El archivo no sirve: no contiene una empresa");
  orden("zip", {"-qP", "clave", "clave.zip", "Conta.Mdb"});
  noSirve(usb.filePath("clave.zip"), "El archivo no sirve: está protegido con una contraseña");

  const auto noGuarda = [&](const QString& carpeta, const QString& falta) {
    guardaEn(carpeta, "No se ha hecho la copia de seguridad. No se encuentra la ruta: " + falta);
    vuelve();
  };
  noGuarda(rutaPrograma(usb.filePath("no hay")) + '\\', rutaPrograma(usb.filePath("no hay")));
  noGuarda("A:\\", ctx.carpetaPrograma + "A:");

  // Without its backslash the folder begins the archive's name.
  guardaEn(rutaPrograma(usb.filePath("Lunes ")));
  vuelve();
  EXPECT_TRUE(hay(usb.filePath("Lunes Comercial Ejemplo.Zip")));

  Teclado d = sale("MnuCopiasSeguridad");
  d.mnemonico('A');
  EXPECT_TRUE(d.visible("Bar"));
  EXPECT_EQ(d.control<QProgressBar>("Bar").value(), 1);
  EXPECT_EQ(formularios->abierto("FrmCopias"), &d.forma());
  d.marca("BtonUnidad");
  EXPECT_FALSE(d.control("TxtDirCopias").isEnabled() || d.control("BtonSelecciona").isEnabled());
  d.marca("BtonOtraUnidad");
  guion.esperaDialogo("FrmSelDirectorios", [](Teclado& s) { s.pulsa("CmdAceptar"); });
  d.pulsa("BtonSelecciona");
  EXPECT_TRUE(d.textoDe("TxtDirCopias").endsWith('\\'));
  EXPECT_EQ(ctx.sesion.CodigoLlamada, 0);
  d.escape();
  vuelve();
}

TEST_F(Copias, GuardarComoHaceOtraEmpresaConLosMismosLibros) {
  Teclado d = sale("MnuGuardarCopiaComo");
  acepta(d);
  EXPECT_EQ(formularios->abierto("FrmGuardarEmpresa"), &d.forma());
  rellena(d, {{"TxtEmpresa", "a:b"}});
  guion.esperaMensaje(
      "El nombre de la empresa es también el de su carpeta: no puede llevar \\ / : * ? \" < > | ni "
      "empezar por un punto",
      "Error");
  acepta(d);
  rellena(d, {{"TxtEmpresa", "comercial ejemplo"}});
  guion.esperaMensaje(errorEnCaja(3022));
  acepta(d);
  rellena(d, {{"TxtEmpresa", "Ejemplo bis"}});
  acepta(d);
  vuelve();
  EXPECT_EQ(ctx.sesion.EmpresaActual, "Comercial Ejemplo");
  EXPECT_EQ(sqlite(carpetaDatos() + "/Inicio.mdb", "SELECT NombreEmpresa FROM Empresas"),
            "Comercial Ejemplo\nEjemplo bis");

  d = sale("MnuGuardarCopiaComo");
  rellena(d, {{"TxtEmpresa", "Ejemplo ter"}});
  alterna(d, "ChkAbrir");
  acepta(d);
  EXPECT_EQ(ctx.sesion.EmpresaActual, "Ejemplo ter");
  vuelve();
  EXPECT_EQ(valor("Select NombreEmpresa from Empresa"), "Ejemplo ter");
  sale("MnuGuardarCopiaComo").escape();
  vuelve();
}

TEST_F(Copias, ExportarDejaSoloLasTablasElegidas) {
  const QString salida = usb.filePath("Salida.mdb");
  const QString quedan =
      "SELECT group_concat(name) FROM (SELECT name FROM sqlite_schema WHERE type IN "
      "('table','view') AND name NOT LIKE 'librano%' AND name NOT LIKE 'sqlite%' ORDER BY name)";
  // What the bank and the tax office are told is in the file too.
  aseguraTablaOficial(*abreBase(), "Declarante");
  Teclado d = sale("MnuExportar");
  const auto exporta = [&](const QString& fichero, const QString& dice,
                           std::function<void()> entretanto = {}) {
    guion.esperaFichero(fichero);
    guion.esperaMensaje(dice, {}, std::move(entretanto));
    d.llega("CmdExportar");
    d.intro();
  };
  guion.esperaFichero(std::nullopt);
  d.llega("CmdExportar");
  d.intro();
  EXPECT_EQ(guion.propuesto, "Comercial Ejemplo.mdb");
  for (const QString& propio : {fichero(), carpetaDatos() + "/Inicio.mdb"}) {
    exporta(propio,
            "Ese fichero es de los datos de Librano y se perdería lo que contiene, elija otro");
  }
  EXPECT_EQ(formularios->abierto("FrmExportaEmpresa"), &d.forma());
  exporta(salida, "Archivo exportado a " + salida, [&] {
    // It is told before anything goes.
    EXPECT_TRUE(sqlite(salida, quedan).contains(QRegularExpression("Declarante.*SqlBalance")));
  });
  vuelve();
  EXPECT_EQ(sqlite(salida, quedan), "");
  EXPECT_FALSE(contenidoDe(salida).contains("57200001")) << "what went can still be read in it";

  // Over the older one, with two of the tables.
  d = sale("MnuExportar");
  d.marca("ChkPlan");
  d.marca("ChkDiario");
  exporta(salida, "Archivo exportado a " + salida);
  vuelve();
  EXPECT_EQ(sqlite(salida, quedan), "Diario,Subcuentas");
  EXPECT_EQ(sqlite(salida, "SELECT count(*) FROM Diario").toULongLong(), libro.size());
  sale("MnuExportar").escape();
  vuelve();
}

class Reindexado : public Copias {
 protected:
  Teclado abreReindexa() {
    guion.esperaMensaje(
        "Atención el proceso que va a efectuar puede ser lento dependiendo de la velocidad de su "
        "ordenador",
        "Atención");
    Teclado d = sale("MnuReindexar");
    EXPECT_EQ(d.forma().windowTitle(), "Reindexado de -" + ctx.sesion.EmpresaActual + "-");
    return d;
  }
  // What not every company has: the plan of 2007, and who declares.
  void estrena2007() {
    const auto libro = abreBase();
    ponNivelesDe2007(*libro, Modelo2007::Pymes);
    anotaPlan2007(*libro, Modelo2007::Pymes, QDate(2024, 1, 1));
    aseguraTablaOficial(*libro, "Declarante");
    inserta("Declarante", {{"Dato", "NIF"}, {"Valor", "B12345674"}});
  }
  void acabaEn(const char* nombre, const QString& texto) {
    Teclado d = forma(nombre);
    EXPECT_EQ(d.textoDe("LblEmpresa"), texto);
    d.intro();
    vuelve();
    EXPECT_FALSE(hay(fichero("Comercial Ejemplo", "Conta2.MDB")));
  }
  void preguntaQue(bool sigue, std::function<void()> entretanto = {}) {
    guion.esperaPregunta(
        "Atención se ha producido un error en el reindexado de datos ¿desea seguir reindexando y "
        "omitir este error?",
        sigue, "Error", std::move(entretanto));
  }
  const QString hecho = "La empresa -Comercial Ejemplo- , ha sido reindexada.";
  const QString igual = "La empresa -Comercial Ejemplo- queda como estaba.";
  const QString usada =
      "La empresa -Comercial Ejemplo- ,no ha sido reindexada. porque alguien esta accediendo a "
      "ella desde otro terminal.";
};

TEST_F(Reindexado, RehaceElFicheroConLoMismo) {
  abreReindexa().escape();
  vuelve();
  factura("S0000000001", 3);
  cambia("Select * from TipoRecibos", "Tipo", "Letra");
  estrena2007();
  const QString todo =
      ".dump Empresa RSIVA Subcuentas Cuentas Nivel01 Nivel02 PlanOficial Declarante";
  const QString antes = sqlite(fichero(), todo);
  EXPECT_TRUE(antes.contains("B12345674"));
  Teclado d = abreReindexa();
  acepta(d);
  acabaEn("FrmReindexa2", hecho);
  EXPECT_EQ(sqlite(fichero(), todo), antes);
  EXPECT_EQ(sqlite(fichero(), "PRAGMA integrity_check"), "ok");
  // The kinds of receipt come as a company is made with them.
  EXPECT_EQ(sqlite(fichero(), "SELECT count(*), count(Tipo) FROM TipoRecibos"), "99|0");
  // And it is as quick as a new one.
  const QString indices =
      "SELECT group_concat(name) FROM (SELECT name FROM sqlite_schema WHERE name LIKE 'librano%' "
      "ORDER BY name)";
  creaEmpresa(empresa("Nueva"));
  EXPECT_EQ(sqlite(fichero(), indices), sqlite(fichero("Nueva"), indices));
}

TEST_F(Reindexado, UnaFilaQueNoCabeSeOmiteOSeDeja) {
  // As a foreign tool writes a code that is too long for its column.
  sqlite(fichero(), "INSERT INTO Conceptos(NConcepto, Descripcion) VALUES ('777', 'Largo')");
  const QString conceptos = "SELECT count(*) FROM Conceptos";
  const int habia = sqlite(fichero(), conceptos).toInt();
  Teclado d = abreReindexa();
  preguntaQue(false);
  acepta(d);
  acabaEn("FrmReindexa3", igual);
  EXPECT_EQ(sqlite(fichero(), conceptos).toInt(), habia);
  // The code that doesn't fit, and then the row that has none.
  d = abreReindexa();
  preguntaQue(true);
  preguntaQue(true);
  acepta(d);
  acabaEn("FrmReindexa2", hecho);
  EXPECT_EQ(sqlite(fichero(), conceptos).toInt(), habia - 1);
}

TEST_F(Reindexado, OtroPuestoNoPierdeNada) {
  // It posts while the rows are being taken over.
  const QString nota = "UPDATE Empresa SET Gerente='De otro puesto'";
  sqlite(fichero(), "INSERT INTO Conceptos(NConcepto, Descripcion) VALUES ('777', 'Largo')");
  Teclado d = abreReindexa();
  preguntaQue(true, [&] { sqlite(fichero(), nota); });
  preguntaQue(true);
  acepta(d);
  EXPECT_FALSE(forma("FrmReindexa2").visible("LblProceso"));
  acabaEn("FrmReindexa2", usada);
  EXPECT_EQ(valor("Select Gerente from Empresa"), "De otro puesto");
  sqlite(fichero(), "DELETE FROM Conceptos WHERE NConcepto='777'");
  // And it is in the middle of a posting when the new file should take its place.
  motor.setLockTimeout(50);
  QProcess otro;
  otro.start("sqlite3", {fichero()});
  otro.write("BEGIN IMMEDIATE; SELECT 'listo';\n");
  ASSERT_TRUE(otro.waitForReadyRead());
  d = abreReindexa();
  acepta(d);
  EXPECT_EQ(forma("FrmReindexa2").textoDe("LblEmpresa"), usada);
  otro.closeWriteChannel();
  otro.waitForFinished();
  acabaEn("FrmReindexa2", usada);
}

// What a program that died has left is told, and gone afterwards.
TEST_F(Reindexado, UnRestoSeDiceYSeQuita) {
  QFile::copy(fichero(), fichero("Comercial Ejemplo", "Conta2.MDB"));
  Teclado d = abreReindexa();
  guion.esperaMensaje(errorEnCaja(3204, ctx.sesion.DirDatos + "Comercial Ejemplo\\Conta2.MDB"));
  acepta(d);
  acabaEn("FrmReindexa3", igual);
  d = abreReindexa();
  acepta(d);
  acabaEn("FrmReindexa2", hecho);
}

TEST_F(Copias, RepararCompactaYDejaLosLibrosIguales) {
  sale("MnuRepararEmpresa").escape();
  vuelve();
  sqlite(fichero(),
         "CREATE TABLE relleno(x); WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 "
         "FROM n WHERE i<20000) INSERT INTO relleno SELECT hex(randomblob(20)) FROM n; "
         "DROP TABLE relleno; UPDATE librano_sumas_1 SET SumaDebe=7");
  const qint64 tamano = QFileInfo(fichero()).size();
  QFile::copy(fichero(), fichero("Comercial Ejemplo", "Conta2.MDB"));  // of a repair broken off
  guion.esperaMensaje("Empresa reparada y compactada con exíto", "Librano");
  Teclado d = sale("MnuRepararEmpresa");
  acepta(d);
  vuelve();
  EXPECT_LT(QFileInfo(fichero()).size(), tamano / 2);
  EXPECT_FALSE(hay(fichero("Comercial Ejemplo", "Conta2.MDB")));
  EXPECT_EQ(sqlite(fichero(), "PRAGMA integrity_check"), "ok");

  // What can't be repaired is told, and stays.
  const int pagina =
      sqlite(fichero(), "SELECT rootpage FROM sqlite_schema WHERE name='Recibos'").toInt();
  t.reset();
  cierra();
  QFile f(fichero());
  ASSERT_TRUE(f.open(QIODevice::ReadWrite));
  f.seek((pagina - 1) * 4096LL);
  f.write(QByteArray(4096, '\xee'));
  f.close();
  abreMenu();
  d = sale("MnuRepararEmpresa");
  const QString queja = ctx.sesion.rutaEmpresa() +
                        QString(
                            " *** in database main ***\nPage %1: btreeInitPage() returns error "
                            "code 11")
                            .arg(pagina);
  guion.esperaMensaje(errorEnCaja(3343, queja), "Librano");
  acepta(d);
  EXPECT_EQ(formularios->abierto("FrmReparaEmpresa"), &d.forma());
  d.escape();
  vuelve();
  // A copy of it doesn't take the place of the last good one.
  haceFichero(zip, "de antes");
  guardaEn(rutaPrograma(usb.path()) + '\\',
           "No se ha hecho la copia de seguridad. " + ErrorEjecucion(3343, queja).descripcion());
  EXPECT_EQ(QFileInfo(zip).size(), 8);
  EXPECT_EQ(QDir(usb.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(Copias, ComprobarRedondeaLosImportesALaMascara) {
  cambiaLinea(5, "Importe", libro[5].importe + 0.0004);
  cambiaLinea(6, "Importe", libro[6].importe - 0.0004);
  inserta("Diario", lineaDe(5000, 4000, "01/02/2024", {}, {}));
  const auto comprueba = [&](Teclado& d) {
    guion.esperaMensaje("Proceso terminado con exito", "Fín",
                        [&] { EXPECT_TRUE(d.visible("Bar")); });
    acepta(d);
  };
  herramienta("CmdCompruebaEmpresa", comprueba);
  EXPECT_EQ(filas("Select Importe from Diario where NLinea=5000")[0][0], "");
  sqlite(fichero(), "DELETE FROM Diario WHERE NLinea=5000");
  EXPECT_EQ(lee(), libro);

  cambia("Select * from Empresa", "Mascara", "#,##0;-#,##0");
  t->elige("TxtEmpresa", "Comercial Ejemplo");
  herramienta("CmdCompruebaEmpresa", [](Teclado& d) { d.escape(); });
  EXPECT_NE(sqlite(fichero(), "SELECT count(*) FROM Diario WHERE Importe<>round(Importe)"), "0");
  herramienta("CmdCompruebaEmpresa", comprueba);
  EXPECT_EQ(sqlite(fichero(), "SELECT count(*) FROM Diario WHERE Importe<>round(Importe)"), "0");

  sqlite(fichero(), "DELETE FROM Diario");
  herramienta("CmdCompruebaEmpresa", [&](Teclado& d) {
    guion.esperaMensaje(errorEnCaja(3021));
    acepta(d);
    EXPECT_FALSE(d.visible("Bar"));
    d.escape();
  });
}

}  // namespace
