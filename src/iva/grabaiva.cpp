#include "iva/grabaiva.h"

#include "common/comillas.h"
#include "common/errorejecucion.h"
#include "common/formato.h"
#include "engine/datacontrol.h"
#include "engine/filas.h"
#include "engine/rowreader.h"
#include "journal/apunte.h"

namespace {

void graba(const Apunte& apunte, const TablasIVA& tablas, GrabadoIVA& grabado) {
  grabado.apunta(grabaApunte(tablas.diario, tablas.empresa, apunte));
}

// The register as one row will be added to it: a long one need not be read for that.
void abreRegistro(DataControl& registro) {
  registro.setRecordSource(QStringLiteral("Select * from RSIVA where Codigo=''"));
  registro.Refresh();
}

void ponContador(const TablasIVA& tablas, LibroIVA libro, const QString& orden) {
  tablas.empresa.Edit();
  completa(tablas.empresa, [&] { tablas.empresa.Fields(contadorDe(libro)) = orden; });
}

// --- an invoice ---------------------------------------------------------------------------------

// The amounts of the row, and all that is known before the asiento has its number.
FilaRSIVA principioDeFila(const FacturaIVA& f, LibroIVA libro, const QString& codigo,
                          const QString& mascara) {
  const auto importe = [&](const QString& texto) {
    const bool vuelve = libro == LibroIVA::Repercutido;
    return importeEscrito(vuelve ? opuestoSegunBase(texto, f.Base, mascara) : texto, mascara);
  };
  FilaRSIVA fila;
  fila.Codigo = codigo;
  fila.Base = importe(f.Base);
  fila.IVA = importe(f.ImporteIva);
  fila.Recargo = importe(f.Recargo);
  fila.PorcenIVA = f.PorcenIVA;
  fila.PorcenREC = f.PorcenREC;
  fila.Neto = importe(f.Total);
  fila.CliPro = f.CodigoProveedor;
  fila.Factura = f.NumFactura;
  fila.TipoIVA = f.Iva;
  return fila;
}

FilaRSIVA finDeFila(const FacturaIVA& f, const QString& asiento) {
  FilaRSIVA fila;
  fila.Asiento = asiento;
  fila.CtaIVA = f.CuentaIva;
  fila.FechaC = f.FechaContable;
  fila.CtaRE = f.CuentaRecargo;
  fila.CtaCon = f.Contrapartida;
  fila.Fecha = f.Fecha;
  return fila;
}

void grabaFila(const FacturaIVA& f, const ClaseDeFactura& clase, const QString& mascara,
               const TablasIVA& tablas, GrabadoIVA& grabado) {
  if (clase.modificacion) {
    tablas.registro.Edit();
  } else {
    tablas.registro.AddNew();
  }
  completa(tablas.registro, [&] {
    grabado.codigo = codigoRegistro(letraDe(clase.libro), f.NOrden);
    escribe(tablas.registro, principioDeFila(f, clase.libro, grabado.codigo, mascara));
    grabado.asiento = EsNumerico(f.AsientoContable) ? f.AsientoContable
                                                    : QString::number(tomaAsiento(tablas.empresa));
    escribe(tablas.registro, finDeFila(f, grabado.asiento));
  });
  grabado.fila = true;
}

// A rectifying invoice keeps the sides of an ordinary one, with negative amounts.
void grabaLineas(const FacturaIVA& f, const ClaseDeFactura& clase, const QString& mascara,
                 const TablasIVA& tablas, GrabadoIVA& grabado) {
  const bool soportado = clase.libro == LibroIVA::Soportado;
  Apunte apunte;
  apunte.NAsiento = grabado.asiento;
  apunte.Fecha = f.FechaContable;
  // Kept: "su" is written for sales too, so that all the lines of invoices are found by one text.
  apunte.Descripcion = (QStringLiteral("De su fra.") + f.NumFactura + u' ' + f.NombreProveedor)
                           .left(kLargoDeDescripcion);
  apunte.FacturaZuri = f.FacturaZuri;
  apunte.EmpresaZuri = f.EmpresaZuri;
  apunte.ApunteIVA = grabado.codigo;

  const struct {
    const QString& subcuenta;
    const QString& importe;
    bool siempre;
  } partes[] = {{f.Contrapartida, f.Base, true},
                {f.CuentaIva, f.ImporteIva, false},
                {f.CuentaRecargo, f.Recargo, false}};
  for (const auto& parte : partes) {
    if (!parte.siempre && esCero(parte.importe, mascara)) continue;
    apunte.Subcuenta = parte.subcuenta;
    apunte.DH = soportado ? "D" : "H";
    apunte.Importe =
        importeEscrito(soportado ? parte.importe : opuesto(parte.importe, mascara), mascara);
    graba(apunte, tablas, grabado);
  }
  const Variant total = importeEscrito(f.Total, mascara);
  apunte.Subcuenta = f.CodigoProveedor;
  apunte.DH = soportado ? "H" : "D";
  apunte.Importe = soportado ? Variant(0 - total.number()) : total;
  graba(apunte, tablas, grabado);
}

// --- an acquisition -----------------------------------------------------------------------------

// One side of it: its register, its accounts and the amounts that it writes.
struct Parte {
  LibroIVA libro;
  const QString& cuentaIva;
  const QString& cuentaRecargo;
  const QString& cuentaOtra;
  QString importeIva;
  QString recargo;
};

// Kept: both rows take their number from the counter of repercutido, so that the two of one
// acquisition stand next to each other.
QString tomaCodigo(LibroIVA libro, const TablasIVA& tablas) {
  const int orden = tomaContador(tablas.empresa, contadorDe(LibroIVA::Repercutido)) + 1;
  return codigoRegistro(letraDe(libro), QString::number(orden));
}

void grabaParte(const FacturaIntracomunitaria& f, const Parte& parte, const QString& mascara,
                const TablasIVA& tablas, GrabadoIVA& grabado) {
  Apunte apunte;
  apunte.NAsiento = grabado.asiento;
  apunte.Fecha = f.Fecha;
  apunte.Descripcion =
      (QStringLiteral("Intra.De su fra.") + f.NumFactura).left(kLargoDeDescripcion);
  apunte.DH = parte.libro == LibroIVA::Soportado ? "D" : "H";
  apunte.ApunteIVA = grabado.codigo;
  apunte.TipoFactura = "I";  // these lines can't be changed
  apunte.Subcuenta = parte.cuentaIva;
  apunte.Importe = importeEscrito(parte.importeIva, mascara);
  graba(apunte, tablas, grabado);
  if (!esCero(f.Recargo, mascara)) {
    apunte.Subcuenta = parte.cuentaRecargo;
    apunte.Importe = importeEscrito(parte.recargo, mascara);
    graba(apunte, tablas, grabado);
  }

  FilaRSIVA fila;
  fila.Codigo = grabado.codigo;
  fila.Fecha = f.Fecha;
  fila.FechaC = f.Fecha;
  fila.Factura = f.NumFactura;
  fila.TipoIVA = f.Iva;
  fila.Asiento = grabado.asiento;
  fila.Base = 0;
  fila.IVA = importeEscrito(parte.importeIva, mascara);
  fila.Recargo = importeEscrito(parte.recargo, mascara);
  fila.CliPro = parte.cuentaIva;
  fila.CtaIVA = parte.cuentaIva;
  fila.CtaRE = parte.cuentaRecargo;
  fila.CtaCon = parte.cuentaOtra;
  fila.PorcenIVA = f.PorcenIVA;
  fila.PorcenREC = f.PorcenREC;
  fila.Neto = 0;
  tablas.registro.AddNew();
  completa(tablas.registro, [&] { escribe(tablas.registro, fila); });
}

bool quedaAlgoDe(Database& empresa, const GrabadoIVA& grabado) {
  const auto hay = [&](const QString& filas) {
    return RowReader(empresa, QStringLiteral("Select * from ") + filas).next();
  };
  if (quedanApuntes(empresa, grabado)) return true;
  if (grabado.borrada) return !hay(QStringLiteral("Diario where NLinea=%1").arg(*grabado.borrada));
  return grabado.fila && hay(QStringLiteral("RSIVA where Codigo=") + entreComillas(grabado.codigo));
}

}  // namespace

void grabaFactura(const FacturaIVA& factura, const ClaseDeFactura& clase, const QString& mascara,
                  const TablasIVA& tablas, GrabadoIVA& grabado) {
  if (clase.modificacion) {
    grabado.asiento = factura.AsientoContable;
    for (; !tablas.diario.Eof(); tablas.diario.MoveNext()) {
      const auto linea = static_cast<int>(tablas.diario.Fields(QStringLiteral("NLinea")).toLong());
      tablas.diario.Delete();
      grabado.borrada = linea;
    }
  } else {
    abreRegistro(tablas.registro);
    ponContador(tablas, clase.libro, factura.NOrden);
  }
  grabaFila(factura, clase, mascara, tablas, grabado);
  grabaLineas(factura, clase, mascara, tablas, grabado);
}

void grabaIntracomunitaria(const FacturaIntracomunitaria& factura, const QString& mascara,
                           const TablasIVA& tablas, GrabadoIVA& grabado) {
  abreRegistro(tablas.registro);
  grabado.codigo = tomaCodigo(LibroIVA::Soportado, tablas);
  grabado.asiento = QString::number(tomaAsiento(tablas.empresa));
  grabaParte(factura,
             {LibroIVA::Soportado, factura.IVASoportado, factura.RESoportado,
              factura.IVARepercutido, factura.ImporteIva, factura.Recargo},
             mascara, tablas, grabado);
  grabado.fila = true;
  grabado.codigo = tomaCodigo(LibroIVA::Repercutido, tablas);
  grabaParte(
      factura,
      {LibroIVA::Repercutido, factura.IVARepercutido, factura.RERepercutido, factura.IVASoportado,
       opuesto(factura.ImporteIva, mascara), opuesto(factura.Recargo, mascara)},
      mascara, tablas, grabado);
}

QString textoDeFallo(const ErrorEjecucion& error, Database& empresa, const GrabadoIVA& grabado) {
  QString texto = error.descripcion();
  if (error.numero() == err::kClaveDuplicada && !grabado.fila) {
    const bool soportado = grabado.codigo.startsWith(letraDe(LibroIVA::Soportado));
    texto = QStringLiteral("Ya hay una factura de IVA %1 con el número de orden %2.")
                .arg(soportado ? QStringLiteral("Soportado") : QStringLiteral("Repercutido"))
                .arg(grabado.codigo.mid(1).toLongLong());
  }
  if (!quedaAlgo(error, [&] { return quedaAlgoDe(empresa, grabado); })) return texto;
  return texto + QStringLiteral(" La factura no está entera en el diario: revise el asiento %1.")
                     .arg(grabado.asiento);
}
