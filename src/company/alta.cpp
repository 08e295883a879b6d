#include "company/alta.h"

#include <algorithm>
#include <limits>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include "common/ignorar.h"
#include "common/rutas.h"
#include "company/crearbase.h"
#include "engine/dbengine.h"

namespace {

constexpr int kEmpresaNueva = 1;

// The company is built in a folder of its own beside the others and takes its name when it is
// whole: so a folder that bears a company's name is never half of one, and one that bears this is
// always what a killed creation left. No company's name begins with a point.
QString carpetaDeObra(const QString& dirDatos, const QString& nombre) {
  return dirDatos + QStringLiteral(".alta-") + nombre;
}

bool hayObra(const QString& dirDatos, const QString& nombre) {
  return QFileInfo(rutaSistema(carpetaDeObra(dirDatos, nombre))).isDir();
}

bool hayCarpeta(const QString& dirDatos, const QString& nombre) {
  return QFileInfo::exists(rutaSistema(dirDatos + nombre));
}

void borraObra(const QString& dirDatos, const QString& nombre) {
  QDir(rutaSistema(carpetaDeObra(dirDatos, nombre))).removeRecursively();
}

// Data folders are shared among systems: the strictest of them rules.
bool sirveDeCarpeta(const QString& nombre) {
  static const QRegularExpression prohibido(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]|^\\."));
  static const QRegularExpression reservado(
      QStringLiteral("^(CON|PRN|AUX|NUL|COM[1-9]|LPT[1-9])(\\.|$)"),
      QRegularExpression::CaseInsensitiveOption);
  return !prohibido.match(nombre).hasMatch() && !reservado.match(nombre).hasMatch();
}

struct CodigoEspecial {
  QString DatosEmpresa::*campo;
  bool esSubcuenta;
};
constexpr CodigoEspecial kCodigos[] = {
    {&DatosEmpresa::IVASSub, true}, {&DatosEmpresa::IVASPro, false}, {&DatosEmpresa::IVASCom, true},
    {&DatosEmpresa::IVARSub, true}, {&DatosEmpresa::IVARCli, false}, {&DatosEmpresa::IVARVen, true},
    {&DatosEmpresa::IVASRE, true},  {&DatosEmpresa::IVARRE, true},
};

std::optional<Reparo> reparoDeCodigos(const DatosEmpresa& datos) {
  const int mayores = datos.MayorN01.toInt();
  const int subcuentas = datos.SubCuN01.toInt();
  if (mayores <= 0 || subcuentas <= mayores)
    return Reparo{QStringLiteral("El nivel de la subcuenta tiene que ser un número más que las "
                                 "cuentas, como mínimo"),
                  mayores <= 0 ? &DatosEmpresa::MayorN01 : &DatosEmpresa::SubCuN01};
  QSet<QString> vistos;
  for (const CodigoEspecial& codigo : kCodigos) {
    const QString texto = datos.*codigo.campo;
    if (texto.size() > (codigo.esSubcuenta ? subcuentas : mayores))
      return Reparo{QStringLiteral("El código %1 tiene más dígitos que los de su nivel").arg(texto),
                    codigo.campo};
    if (!codigo.esSubcuenta) continue;
    if (vistos.contains(texto))
      return Reparo{texto.isEmpty()
                        ? QStringLiteral("Falta el código de una subcuenta")
                        : QStringLiteral("Hay dos subcuentas con el código %1").arg(texto),
                    codigo.campo};
    vistos.insert(texto);
  }
  return std::nullopt;
}

// The year can't be changed afterwards, and no date would be one of another year than these.
std::optional<Reparo> reparoDeEjercicio(const DatosEmpresa& datos) {
  const struct {
    QString DatosEmpresa::*campo;
    int desde, hasta;
    QString texto;
  } limites[] = {
      {&DatosEmpresa::Ano, 1900, 2099, QStringLiteral("El año contable lleva cuatro cifras")},
      {&DatosEmpresa::MesInicio, 1, 12,
       QStringLiteral("El mes de comienzo de ejercicio va de 1 a 12")},
      {&DatosEmpresa::Asiento, 1, std::numeric_limits<int>::max(),
       QStringLiteral("El contador del numero de asiento empieza en 1 o después")}};
  for (const auto& limite : limites) {
    const int valor = (datos.*limite.campo).toInt();
    if (valor < limite.desde || valor > limite.hasta) return Reparo{limite.texto, limite.campo};
  }
  return std::nullopt;
}

class Catalogo {
 public:
  Catalogo(DBEngine& motor, const QString& dirDatos)
      : base_(motor.Workspaces(0).OpenDatabase(dirDatos + QStringLiteral("Inicio.mdb"))) {}

  bool tiene(const QString& nombre) const { return !fila(nombre)->Eof(); }
  void anade(const QString& nombre) {
    const auto filas = base_->OpenRecordset(QStringLiteral("Empresas"));
    filas->AddNew();
    filas->Fields(0) = nombre;
    filas->Update();
  }
  void quita(const QString& nombre) {
    const auto filas = fila(nombre);
    if (!filas->Eof()) filas->Delete();
  }

 private:
  // The rows from that of a name on; past the end when there is none.
  std::unique_ptr<Recordset> fila(const QString& nombre) const {
    auto filas = base_->OpenRecordset(QStringLiteral("Empresas"));
    while (!filas->Eof() && filas->Fields(0).text().compare(nombre, Qt::CaseInsensitive) != 0)
      filas->MoveNext();
    return filas;
  }

  std::unique_ptr<Database> base_;
};

void levanta(const QString& dirDatos, const QString& nombre, const ConstruyeEmpresa& construye) {
  const QString obra = carpetaDeObra(dirDatos, nombre);
  borraObra(dirDatos, nombre);
  if (!QDir().mkdir(rutaSistema(obra))) throw ErrorEjecucion(err::kErrorDeRuta, obra);
  construye(obra + QStringLiteral("/Conta.MDB"));
  const QString carpeta = rutaSistema(dirDatos) + nombre;
  if (hayCarpeta(dirDatos, nombre) || !QDir().rename(rutaSistema(obra), carpeta))
    throw ErrorEjecucion(err::kErrorDeRuta, carpeta);
}

}  // namespace

QString reparoDelNombre(DBEngine& motor, const QString& dirDatos, const QString& nombre) {
  if (!sirveDeCarpeta(nombre))
    return QStringLiteral(
        "El nombre de la empresa es también el de su carpeta: no puede llevar "
        "\\ / : * ? \" < > | ni empezar por un punto");
  if (hayCarpeta(dirDatos, nombre) && !Catalogo(motor, dirDatos).tiene(nombre))
    return QStringLiteral(
               "Ya hay una carpeta con el nombre '%1' entre los datos, cree la empresa "
               "con otro nombre")
        .arg(nombre);
  return {};
}

std::optional<Reparo> reparoDelAlta(DBEngine& motor, const QString& dirDatos,
                                    const DatosEmpresa& datos) {
  const QString reparo = reparoDelNombre(motor, dirDatos, datos.NombreEmpresa);
  if (!reparo.isEmpty()) return Reparo{reparo, &DatosEmpresa::NombreEmpresa};
  if (auto ejercicio = reparoDeEjercicio(datos)) return ejercicio;
  return reparoDeCodigos(datos);
}

void creaEmpresa(DBEngine& motor, const QString& dirDatos, const DatosEmpresa& datos) {
  creaEmpresa(motor, dirDatos, datos.NombreEmpresa, [&](const QString& fichero) {
    CrearBase(motor, fichero, static_cast<int>(Variant(datos.MayorN01).toLong()),
              static_cast<int>(Variant(datos.SubCuN01).toLong()), kEmpresaNueva, datos);
  });
}

void creaEmpresa(DBEngine& motor, const QString& dirDatos, const QString& nombre,
                 const ConstruyeEmpresa& construye) {
  Catalogo catalogo(motor, dirDatos);
  const bool recogida = hayObra(dirDatos, nombre) && !hayCarpeta(dirDatos, nombre);
  // The row goes first: while it waits to be written no other station can take the name.
  if (!recogida || !catalogo.tiene(nombre)) catalogo.anade(nombre);
  try {
    levanta(dirDatos, nombre, construye);
  } catch (const ErrorEjecucion&) {
    ignorando([&] { catalogo.quita(nombre); });
    borraObra(dirDatos, nombre);
    ignorando([&] { motor.flush(); });
    throw;
  }
}
