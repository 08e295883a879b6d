#include "transfer/frmcopias.h"

#include <QDir>
#include <QFileInfo>

#include "common/errorejecucion.h"
#include "common/rutas.h"
#include "toolkit/cajas.h"
#include "toolkit/fallo.h"
#include "toolkit/progreso.h"
#include "toolkit/protocolo.h"
#include "transfer/copiaseguridad.h"
#include "transfer/widgets/vuelta.h"
#include "ui_frmcopias.h"

FrmCopias::FrmCopias(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmCopias>()) {
  ui_->setupUi(this);
  ui_->PanelRestaura->hide();
  alCambiar(ui_->BtonRestauraCopias,
            [this] { ui_->PanelRestaura->setVisible(ui_->BtonRestauraCopias->isChecked()); });
  alCambiar(ui_->BtonUnidad, [this] { BtonUnidad_Click(); });
  alPulsar(ui_->BtonSelecciona,
           [this] { mostrar(QStringLiteral("FrmSelDirectorios"), llamada::kCarpetaCopias); });
  alPulsar(ui_->CmdBuscaRestaura, [this] { CmdBuscaRestaura_Click(); });
  alPulsar(ui_->BtonAceptar, [this] { BtonAceptar_Click(); });
  alPulsar(ui_->BtonCancelar, [this] { vuelveAlMenu(ctx); });
}

FrmCopias::~FrmCopias() = default;

void FrmCopias::Form_Load() {
  QSizePolicy sitio = ui_->PanelRestaura->sizePolicy();
  sitio.setRetainSizeWhenHidden(true);
  ui_->PanelRestaura->setSizePolicy(sitio);
  ui_->TxtEmpresa->setText(sesion().EmpresaActual);
}

void FrmCopias::Form_Activate() {
  disquete_ = QStringLiteral("A:\\");
}

void FrmCopias::BtonUnidad_Click() {
  const bool disquete = ui_->BtonUnidad->isChecked();
  if (disquete) ui_->TxtDirCopias->setText(disquete_);
  ui_->TxtDirCopias->setEnabled(!disquete);
  ui_->BtonSelecciona->setEnabled(!disquete);
}

void FrmCopias::CmdBuscaRestaura_Click() {
  const QString carpeta = rutaSistema(ui_->TxtDirCopias->text());
  const auto elegido =
      ctx.cajas->abrirFichero(this, QStringLiteral("Localizar copia de seguridad"),
                              QFileInfo(carpeta).isDir() ? carpeta : QDir::homePath(),
                              QStringLiteral("Copias Almirel (*.zip *.Zip *.ZIP)"));
  if (elegido) ui_->TxtDirRestaura->setText(rutaPrograma(*elegido));
}

void FrmCopias::BtonAceptar_Click() {
  ctx.cajas->guardaPendiente(this);
  constexpr int kPasos = 6;
  {
    Progreso progreso(ctx, *ui_->Bar, kPasos);
    progreso.avanza(1);
    // The told steps of the bar, with what lies between two of them.
    const auto desde = [&progreso](int paso) -> Advance {
      return [avance = progreso.avance(), paso](int hecho, int total) {
        constexpr int kPartes = 100;
        avance(kPartes * paso + (kPasos - paso) * kPartes * hecho / qMax(1, total),
               kPartes * kPasos);
      };
    };
    if (ui_->BtonCopiaSeguridad->isChecked()) {
      guarda(desde(2));
    } else if (ui_->BtonRestauraCopias->isChecked()) {
      restaura(desde(4));
    } else {
      return;
    }
  }
  ui_->Bar->hide();
  vuelveAlMenu(ctx);
}

// A path that doesn't begin at a root is one of the program's folder.
//
// Kept: without its final backslash the folder's last part begins the archive's name.
void FrmCopias::guarda(const Advance& avance) {
  const QString escrita = ui_->TxtDirCopias->text() + sesion().EmpresaActual + ".Zip";
  const bool entera = QDir::isAbsolutePath(rutaSistema(escrita));
  try {
    guardaCopia(ctx.motor, sesion().rutaEmpresa(), entera ? escrita : ctx.carpetaPrograma + escrita,
                avance);
  } catch (const ErrorEjecucion& e) {
    avisa(ctx, this, {e, QStringLiteral("BtonAceptar_Click - FrmCopias")},
          QStringLiteral("No se ha hecho la copia de seguridad. ") + e.descripcion(),
          QStringLiteral("Error"));
  }
}

void FrmCopias::restaura(const Advance& avance) {
  const QString escrita = ui_->TxtDirRestaura->text();
  const bool entera = QDir::isAbsolutePath(rutaSistema(escrita));
  try {
    restauraCopia(ctx.motor, entera ? escrita : ctx.carpetaPrograma + escrita,
                  sesion().rutaEmpresa(), sesion().EmpresaActual, avance);
  } catch (const ErrorEjecucion& e) {
    anota(e, QStringLiteral("BtonAceptar_Click - FrmCopias"));
    mensaje(QStringLiteral("Unzip: ") + e.descripcion(), QStringLiteral("Librano"), Icono::Aviso);
  }
}
