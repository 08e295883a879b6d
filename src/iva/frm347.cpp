#include "iva/frm347.h"

#include "common/formato.h"
#include "ui_frm347.h"

Frm347::Frm347(Contexto& contexto) : FrmListado(contexto), ui_(std::make_unique<Ui::Frm347>()) {
  ui_->setupUi(this);
  importe(ui_->TxtImporte);
  alPulsar(ui_->CmdAceptar, [this] { lanza([this] { return listado(); }); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

Frm347::~Frm347() = default;

void Frm347::Form_Load() {
  ponMeses(ui_->TxtDesde, ui_->TxtHasta);
}

// The registers keep sales with their sign turned, so a customer is above the limit when its sum is
// below its opposite.
Listado Frm347::listado() {
  const bool clientes = opcion("OptDe") == 1;
  const double cantidad = ImporteDe(ui_->TxtImporte->text(), sesion().MascaraImporte).value_or(0);
  const QString limite = QString::number(cantidad, 'f', 2);
  const QString suma = QStringLiteral("Sum ({Sql347.SumaDeBase}, {Sql347.CliPro})");
  Listado l =
      listadoMensual("Acumulados de IVA", "347N" + QString::number(opcion("OptTipo")),
                     "Sql347.MiFecha", ui_->TxtDesde->currentText(), ui_->TxtHasta->currentText());
  l.seleccion += QStringLiteral(" and left({Sql347.CliPro},2)='") + (clientes ? "43'" : "40'");
  l.seleccionGrupos = clientes ? '(' + suma + ")<=-" + limite + " and " + suma + "<0"
                               : suma + ">=" + limite + " and " + suma + ">0";
  return l;
}
