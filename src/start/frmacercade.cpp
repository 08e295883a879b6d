#include "start/frmacercade.h"

#include <QHeaderView>

#include "common/version.h"
#include "start/bibliotecas.h"
#include "ui_frmacercade.h"

FrmAcercaDe::FrmAcercaDe(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmAcercaDe>()) {
  ui_->setupUi(this);
  QFont grande = font();
  grande.setPointSizeF(grande.pointSizeF() * 2);
  grande.setBold(true);
  ui_->LblTitulo->setFont(grande);
  alPulsar(ui_->CmdSalir, [this] { descargar(); });
}

FrmAcercaDe::~FrmAcercaDe() = default;

void FrmAcercaDe::Form_Load() {
  ui_->LblVersion->setText(
      QStringLiteral("Versión %1 · %2").arg(versionDelPrograma()).arg(anoDelPrograma()));
  auto& tabla = *ui_->LstBibliotecas;
  for (const Biblioteca& b : bibliotecas()) {
    const int fila = tabla.rowCount();
    tabla.insertRow(fila);
    int columna = 0;
    for (const QString& texto : {b.nombre, b.version, b.uso, b.licencia})
      tabla.setItem(fila, columna++, new QTableWidgetItem(texto));
  }
  tabla.resizeColumnsToContents();
  // All of it is seen at once, whatever the size of the letters.
  tabla.setMinimumSize(tabla.horizontalHeader()->length() + 2 * tabla.frameWidth(),
                       tabla.horizontalHeader()->sizeHint().height() +
                           tabla.verticalHeader()->length() + 2 * tabla.frameWidth());
  ui_->CmdSalir->setFocus();
}
