// The printed books of a company, each launched from its dialog by keys, and what must stand in
// them, reckoned from lines and balances that the test keeps for itself.
#pragma once

#include "escenarios/herramientas.h"
#include "soporte/libroimpreso.h"

// What a cell of the data holds, nothing being zero.
inline double numero(const QString& texto) {
  return texto.isEmpty() ? 0 : Variant(texto).number();
}
// An amount as the books print it.
inline QString impreso(double importe) {
  return Format(importe, "#,##0.00");
}

struct Saldo {
  QString titulo;
  double debe = 0, haber = 0, saldo = 0;  // debe and haber both positive

  QString sumas() const { return impreso(debe) + ' ' + impreso(haber); }
  QString partes() const { return saldo == 0 ? sumas() : sumas() + ' ' + impreso(std::abs(saldo)); }
};
using Saldos = std::map<QString, Saldo>;  // by subcuenta

// Of the subcuentas that begin with any of some codes.
Saldo suma(const Saldos& saldos, const QString& comienzos);
// Of the lines of a journal, added in cents.
Saldos saldosDe(const std::vector<Linea>& lineas);

class LibrosImpresos : public DiarioDelTrimestre {
 protected:
  LibrosImpresos() { ponPlantillas(ctx); }
  explicit LibrosImpresos(const QString& carpeta) : DiarioDelTrimestre(carpeta) {}

  void dialogo(const char* entrada, const QString& titulo,
               const std::function<void(Teclado&)>& paso);
  // The book that a dialog gives, with what stands on each page of any: whose it is, of when, and
  // which page.
  LibroImpreso lanza(Teclado& t, const QString& titulo, const QString& limites);

  // What a page hands on is what the next begins with; how often it does.
  static int miraSumaYSigue(const LibroImpreso& libro);
  // The diary of these lines, in the order of their asientos: each line, and on each page the sum
  // of what has been printed so far.
  static void miraDiario(const LibroImpreso& libro, const std::vector<Linea>& lineas);
  // The trial balance by codes of so many digits, from a code on.
  static void miraSumas(const LibroImpreso& libro, const Saldos& saldos, int digitos,
                        const QString& desde = {});
  // The last lines of a balance or of a results account.
  static void miraTotales(const LibroImpreso& libro, const Saldos& saldos, bool balance);
  // The subcuentas of some groups in either of them.
  static void miraSubcuentas(const LibroImpreso& libro, const Saldos& saldos, const char* grupos);
  // The mayor of all subcuentas.
  static void miraMayor(const LibroImpreso& libro, const Saldos& saldos);

  QString ejercicio = "2024";
  QString ano() const { return QString("Desde : 01/01/%1 ~ Hasta : 31/12/%1").arg(ejercicio); }
  const QString meses = "Desde : 01-Enero ~ Hasta : 12-Diciembre";
};
