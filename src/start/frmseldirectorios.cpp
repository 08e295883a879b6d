#include "start/frmseldirectorios.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QStorageInfo>
#include <QTimer>

#include "common/funciones.h"
#include "common/rutas.h"
#include "toolkit/consulta.h"
#include "toolkit/protocolo.h"
#include "ui_frmseldirectorios.h"

namespace {

constexpr DestinoConsulta kDestinos[] = {
    {llamada::kCarpetaPrograma, "FrmConfiguracion", "TxtRutPrograma"},
    {llamada::kCarpetaDatos, "FrmConfiguracion", "TxtRutAcesoDatos"},
    {llamada::kCarpetaCopias, "FrmCopias", "TxtDirCopias"},
};

// Disks, sticks and shared folders; not the file systems that the system makes for itself.
QStringList unidades() {
  QStringList raices;
  for (const QFileInfo& unidad : QDir::drives()) raices << unidad.absoluteFilePath();
  static const QSet<QByteArray> kCompartidas = {"cifs", "smb3", "nfs", "nfs4", "fuse.sshfs"};
  for (const QStorageInfo& volumen : QStorageInfo::mountedVolumes()) {
    const bool propia =
        volumen.device().startsWith("/dev/") || kCompartidas.contains(volumen.fileSystemType());
    if (propia && QFileInfo(volumen.rootPath()).isDir() && !raices.contains(volumen.rootPath()))
      raices << volumen.rootPath();
  }
  return raices;
}

}  // namespace

FrmSelDirectorios::FrmSelDirectorios(Contexto& contexto)
    : Formulario(contexto), ui_(std::make_unique<Ui::FrmSelDirectorios>()) {
  ui_->setupUi(this);
  carpetas_.setFilter(QDir::Dirs | QDir::Drives | QDir::NoDotAndDotDot);
  carpetas_.setRootPath(QString());
  ui_->Carpetas->setModel(&carpetas_);
  for (int columna = 1; columna < carpetas_.columnCount(); ++columna)
    ui_->Carpetas->hideColumn(columna);

  // Folders are read and sorted in the background: the one of the field stays in sight as those
  // around it come, until another one is gone to.
  const auto muestra = [this] { QTimer::singleShot(0, this, [this] { enSuSitio(); }); };
  connect(&carpetas_, &QFileSystemModel::directoryLoaded, this, muestra);
  connect(&carpetas_, &QFileSystemModel::rowsInserted, this, muestra);
  connect(&carpetas_, &QFileSystemModel::layoutChanged, this, muestra);
  alElegir(ui_->Unidad, [this](int indice) { Unidad_Change(indice); });
  alPulsar(ui_->CmdAceptar, [this] { CmdAceptar_Click(); });
  alPulsar(ui_->CmdCancelar, [this] { descargar(); });
}

FrmSelDirectorios::~FrmSelDirectorios() = default;

// Opens on the folder that the field already holds.
void FrmSelDirectorios::Form_Load() {
  const QLineEdit* campo = destino();
  QString actual = campo ? rutaSistema(campo->text()) : QString();
  if (actual.isEmpty() || !QFileInfo(actual).isDir()) actual = QDir::homePath();
  actual = QDir::cleanPath(actual);

  int suya = 0;
  for (const QString& raiz : unidades()) {
    ui_->Unidad->addItem(QDir::toNativeSeparators(raiz), raiz);
    const QString elegida = ui_->Unidad->itemData(suya).toString();
    if (actual.startsWith(raiz) && raiz.size() > elegida.size()) suya = ui_->Unidad->count() - 1;
  }
  ui_->Unidad->setCurrentIndex(suya);
  Unidad_Change(suya);
  inicial_ = carpetas_.index(actual);
  ui_->Carpetas->setCurrentIndex(inicial_);
  ui_->Carpetas->expand(inicial_);
}

void FrmSelDirectorios::Form_Activate() {
  enSuSitio();
}

void FrmSelDirectorios::enSuSitio() {
  if (inicial_.isValid() && ui_->Carpetas->currentIndex() == inicial_)
    ui_->Carpetas->scrollTo(inicial_, QAbstractItemView::PositionAtCenter);
}

// A drive without media leaves the tree where it was.
void FrmSelDirectorios::Unidad_Change(int indice) {
  const QString raiz = ui_->Unidad->itemData(indice).toString();
  if (!QStorageInfo(raiz).isReady()) return;
  ui_->Carpetas->setRootIndex(carpetas_.index(raiz));
  ui_->Carpetas->setCurrentIndex(ui_->Carpetas->rootIndex());
}

void FrmSelDirectorios::CmdAceptar_Click() {
  const QModelIndex actual = ui_->Carpetas->currentIndex();
  const QString carpeta =
      carpetas_.filePath(actual.isValid() ? actual : ui_->Carpetas->rootIndex());
  if (QLineEdit* campo = destino()) campo->setText(AjustaBarra(rutaPrograma(carpeta)));
  descargar();
}

QLineEdit* FrmSelDirectorios::destino() const {
  return qobject_cast<QLineEdit*>(campoDestino(ctx, kDestinos, ctx.sesion.CodigoLlamada));
}
