#include "common/errorejecucion.h"
#include "common/formato.h"
#include "journal/frmmenu.h"
#include "ui_frmmenu.h"

// The Ayudante: a small calculator that feeds the amount of the entry line.

void FrmMenu::conectaAyudante() {
  alPulsarMatriz(QStringLiteral("CmdNumeros"), [this](int indice) { CmdNumeros_Click(indice); });
  alPulsar(ui_->CmdC, [this] { CmdC_Click(); });
  alPulsar(ui_->CmdCE, [this] { CmdCE_Click(); });
  alPulsar(ui_->CmdSuma, [this] { opera(u'+'); });
  alPulsar(ui_->CmdResta, [this] { opera(u'-'); });
  alPulsar(ui_->CmdMultiplica, [this] { opera(u'*'); });
  alPulsar(ui_->CmdDivide, [this] { opera(u'/'); });
}

void FrmMenu::CmdNumeros_Click(int indice) {
  const auto* tecla = findChild<QAbstractButton*>(QStringLiteral("CmdNumeros_%1").arg(indice));
  const QString antes = ui_->TxtCalImp->text();
  ui_->TxtCalImp->setText((antes == u"0" ? QString() : antes) + tecla->text());
  enfocar(ui_->TxtSubcuenta);
}

void FrmMenu::CmdC_Click() {
  enfocar(ui_->TxtSubcuenta);
  ui_->TxtCalImp->setText(QStringLiteral("0"));
}

void FrmMenu::CmdCE_Click() {
  CmdC_Click();
  ui_->TxtDebeHaber->setText(cero());
}

// The amount of the line operated with that of the Ayudante. Multiplying or dividing a zero amount
// takes the Ayudante's as the first operand.
void FrmMenu::opera(QChar operacion) {
  if (ui_->TxtDebeHaber->text().isEmpty()) ui_->TxtDebeHaber->setText(cero());
  const double ayudante = Variant(ui_->TxtCalImp->text()).number();
  const auto leido = ImporteDe(ui_->TxtDebeHaber->text(), sesion().MascaraImporte);
  if (!leido) throw ErrorEjecucion(err::kTiposNoCoinciden);
  double importe = *leido;
  const bool primero = ui_->TxtDebeHaber->text() == cero();
  if (operacion == u'+') {
    importe += ayudante;
  } else if (operacion == u'-') {
    importe -= ayudante;
  } else if (primero) {
    importe = ayudante;
  } else if (operacion == u'*') {
    importe *= ayudante;
  } else {
    if (ayudante == 0) throw ErrorEjecucion(err::kDivisionPorCero);
    importe /= ayudante;
  }
  ui_->TxtDebeHaber->setText(Variant(importe).text());
  CmdC_Click();
}
