#include "common/errorejecucion.h"

namespace {

struct Texto {
  int numero;
  const char* descripcion;
};

constexpr Texto kTextos[] = {
    {err::kLlamadaNoValida, "El valor dado no sirve para esta operación"},
    {err::kDesbordamiento, "El número es demasiado grande"},
    {err::kDivisionPorCero, "No se puede dividir por cero"},
    {err::kTiposNoCoinciden, "El valor no es del tipo que se necesita"},
    {err::kFicheroNoEncontrado, "No se encuentra el fichero"},
    {err::kFicheroYaExiste, "El fichero ya existe"},
    {err::kFinDeFichero, "No hay más datos en el fichero"},
    {err::kPermisoDenegado, "No hay permiso para hacerlo"},
    {err::kErrorDeRuta, "No se puede usar la ruta o el fichero"},
    {err::kRutaNoEncontrada, "No se encuentra la ruta"},
    {err::kNuloNoValido, "Falta un dato: el valor es nulo"},
    {err::kArchivoNoSirve, "El archivo no sirve"},
    {err::kTablaYaExiste, "Ya hay una tabla con ese nombre"},
    {err::kConsultaYaExiste, "Ya hay una consulta con ese nombre"},
    {err::kActualizarSinEditar, "El registro no se está añadiendo ni modificando"},
    {err::kSinRegistroActivo, "No hay ningún registro en curso"},
    {err::kClaveDuplicada, "Ya existe un registro con esa clave; no se han guardado los cambios"},
    {err::kBaseNoEncontrada, "No se encuentra la base de datos"},
    {err::kSinEspacio, "No queda espacio en el disco"},
    {err::kSoloLectura, "La base de datos o el origen son de sólo lectura"},
    {err::kErrorDeDisco, "Error al leer o escribir en el disco"},
    {err::kClaveNula, "La clave del registro no puede quedar sin valor"},
    {err::kOperacionCancelada, "Operación cancelada"},
    {err::kNombreDesconocido, "Un nombre de la consulta no es de ningún campo"},
    {err::kErrorDeSintaxis, "La consulta no está bien escrita"},
    {err::kOrigenDesconocido, "No existe la tabla o consulta"},
    {err::kTextoDemasiadoLargo, "El texto es demasiado largo para el campo"},
    {err::kRegistroEliminado, "El registro ha sido eliminado"},
    {err::kNoSePuedeGuardar, "No se puede guardar: otro puesto está usando los datos"},
    {err::kFicheroSustituido,
     "Otro programa ha cambiado el fichero por otro; compruebe los datos y repita la operación"},
    {err::kBaseYaExiste, "La base de datos ya existe"},
    {err::kRegistroBloqueado, "Los datos están bloqueados por otro puesto; inténtelo de nuevo"},
    {err::kElementoNoEncontrado, "No se encuentra el elemento con ese nombre o número"},
    {err::kTextoVacio, "El campo no admite un texto vacío"},
    {err::kReglaIncumplida, "El fichero no admite esos valores"},
    {err::kFormatoNoReconocido, "El fichero no es una base de datos reconocida"},
    {err::kConversionDeDatos, "El dato no se puede convertir al tipo del campo"},
    {err::kTiposEnCriterio, "Los tipos de datos comparados en la consulta no coinciden"},
    {28601, "La plantilla del libro tiene un error"},
    {28602, "La selección del libro no está bien escrita"},
    {28663, "No hay ninguna impresora instalada"},
};

}  // namespace

QString descripcionDeError(int numero) {
  for (const Texto& t : kTextos)
    if (t.numero == numero) return QString::fromUtf8(t.descripcion);
  return QStringLiteral("Se ha producido el error %1").arg(numero);
}

ErrorEjecucion::ErrorEjecucion(int numero, const QString& detalle)
    : numero_(numero), descripcion_(descripcionDeError(numero)) {
  descripcion_ += detalle.isEmpty() ? QStringLiteral(".") : QStringLiteral(": ") + detalle;
  what_ = descripcion_.toUtf8();
}

ErrorEjecucion ErrorEjecucion::en(const QString& lugar) const {
  ErrorEjecucion otro(*this);
  otro.descripcion_ += QStringLiteral(" (") + lugar + u')';
  otro.what_ = otro.descripcion_.toUtf8();
  return otro;
}
