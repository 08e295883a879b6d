#include "escenarios/librosimpresos.h"

Saldo suma(const Saldos& saldos, const QString& comienzos) {
  Saldo total;
  for (const auto& [codigo, uno] : saldos) {
    for (const QString& comienzo : comienzos.split(' ')) {
      if (!codigo.startsWith(comienzo)) continue;
      total.debe += uno.debe;
      total.haber += uno.haber;
      total.saldo += uno.saldo;
    }
  }
  return total;
}

Saldos saldosDe(const std::vector<Linea>& lineas) {
  std::map<QString, std::pair<qint64, qint64>> centimos;
  for (const Linea& l : lineas) {
    auto& [debe, haber] = centimos[l.subcuenta];
    (l.alHaber() ? haber : debe) += qRound64(l.importe * 100);
  }
  Saldos saldos;
  for (const auto& [subcuenta, uno] : centimos) {
    const auto [debe, haber] = uno;
    saldos[subcuenta] = {{}, debe / 100.0, -haber / 100.0, (debe + haber) / 100.0};
  }
  return saldos;
}

void LibrosImpresos::dialogo(const char* entrada, const QString& titulo,
                             const std::function<void(Teclado&)>& paso) {
  herramienta(entrada, [&](Teclado& d) {
    EXPECT_EQ(d.forma().windowTitle(), titulo);
    paso(d);
  });
}

LibroImpreso LibrosImpresos::lanza(Teclado& d, const QString& titulo, const QString& limites) {
  d.pulsa("CmdAceptar");
  LibroImpreso libro = leeVista(guion);
  activar(d.forma());
  EXPECT_EQ(libro.titulo, titulo);
  const auto total = libro.paginas.size();
  EXPECT_GT(total, 0);
  for (int n = 1; n <= total; ++n) {
    const QString pagina = libro.paginas[n - 1].join('|');
    EXPECT_TRUE(pagina.startsWith(ctx.sesion.EmpresaActual)) << qPrintable(pagina.left(80));
    for (const QString& parte : {limites, "Ejercicio " + ejercicio, QString("N.I.F. 12345678"),
                                 QString("02/04/2024 Página %1 de %2").arg(n).arg(total)})
      EXPECT_TRUE(pagina.contains(parte)) << qPrintable(parte);
  }
  return libro;
}

int LibrosImpresos::miraSumaYSigue(const LibroImpreso& libro) {
  int llevadas = 0;
  for (int n = 2; n <= libro.paginas.size(); ++n) {
    const QString sigue = libro.linea("Suma y sigue", n - 1);
    EXPECT_EQ(libro.linea("Suma anterior", n).section(' ', 2), sigue.section(' ', 3)) << n;
    llevadas += !sigue.isEmpty();
  }
  return llevadas;
}

void LibrosImpresos::miraDiario(const LibroImpreso& libro, const std::vector<Linea>& lineas) {
  EXPECT_EQ(miraSumaYSigue(libro), libro.paginas.size() - 1);
  auto l = lineas.begin();
  Saldo hasta;
  QString encabezado;  // of the asiento
  for (int n = 1; n <= libro.paginas.size(); ++n) {
    for (const QString& impresa : libro.paginas[n - 1]) {
      if (impresa.startsWith("Asiento ")) encabezado = impresa;
      if (l == lineas.end() ||
          !encabezado.startsWith(QString("Asiento %1 ").arg(l->asiento) + l->fecha) ||
          !impresa.startsWith(l->subcuenta + ' '))
        continue;
      // A long one goes on in the next line.
      EXPECT_TRUE(impresa.contains(' ' + l->concepto.left(24))) << qPrintable(impresa);
      const double importe = l->alHaber() ? -l->importe : l->importe;
      EXPECT_TRUE(impresa.endsWith(' ' + impreso(importe))) << qPrintable(impresa);
      (l->alHaber() ? hasta.haber : hasta.debe) += importe;
      ++l;
    }
    const QString total = n == libro.paginas.size() ? "Total diario" : "Suma y sigue";
    EXPECT_EQ(libro.linea(total, n), total + ' ' + hasta.sumas());
  }
  EXPECT_TRUE(l == lineas.end()) << "falta el asiento " << l->asiento;
  EXPECT_TRUE(libro.lineas().filter("Descuadrado").isEmpty());
}

void LibrosImpresos::miraSumas(const LibroImpreso& libro, const Saldos& saldos, int digitos,
                               const QString& desde) {
  Saldos grupos;
  for (const auto& [codigo, uno] : saldos) grupos[codigo.left(digitos)] = {};
  Saldo total;
  double deudor = 0, acreedor = 0;
  for (auto& [grupo, s] : grupos) {
    const QString linea = libro.linea(grupo + ' ');
    EXPECT_EQ(linea.isEmpty(), grupo < desde) << qPrintable(grupo + ": " + linea);
    if (grupo < desde) continue;
    s = suma(saldos, grupo);
    EXPECT_TRUE(linea.endsWith(' ' + s.partes())) << qPrintable(linea);
    total.debe += s.debe;
    total.haber += s.haber;
    (s.saldo > 0 ? deudor : acreedor) += std::abs(s.saldo);
  }
  EXPECT_EQ(libro.linea("Totales"),
            "Totales " + total.sumas() + ' ' + impreso(deudor) + ' ' + impreso(acreedor));
}

void LibrosImpresos::miraTotales(const LibroImpreso& libro, const Saldos& saldos, bool balance) {
  const auto saldo = [&](const char* grupos) { return suma(saldos, grupos).saldo; };
  const QStringList totales =
      balance ? QStringList{"Total Activo " + impreso(saldo("2 3")),
                            "Total Pasivo " + impreso(-saldo("1 4 5")),
                            "Diferencia entre activo y pasivo " + impreso(saldo("1 2 3 4 5"))}
              : QStringList{"Totales " + impreso(saldo("6")) + ' ' + impreso(-saldo("7")),
                            "Resultado (ingresos menos gastos) " + impreso(-saldo("6 7"))};
  for (const QString& linea : totales)
    EXPECT_TRUE(libro.lineas().contains(linea)) << qPrintable(linea);
}

void LibrosImpresos::miraSubcuentas(const LibroImpreso& libro, const Saldos& saldos,
                                    const char* grupos) {
  for (const auto& [codigo, s] : saldos) {
    if (!QString(grupos).contains(codigo[0])) continue;
    const bool deudor = QString("236").contains(codigo[0]);
    EXPECT_EQ(libro.linea(codigo),
              codigo + ' ' + s.titulo + ' ' + impreso(deudor ? s.saldo : -s.saldo));
  }
}

void LibrosImpresos::miraMayor(const LibroImpreso& libro, const Saldos& saldos) {
  EXPECT_TRUE(libro.lineas().filter("Saldo anterior").isEmpty());
  QStringList sumas;
  for (const auto& [codigo, s] : saldos) {
    EXPECT_FALSE(libro.linea(codigo + ' ' + s.titulo).isEmpty()) << qPrintable(codigo);
    sumas << "Sumas y saldo " + s.sumas() + ' ' + impreso(s.saldo);
  }
  EXPECT_EQ(libro.lineas().filter("Sumas y saldo"), sumas);
}
