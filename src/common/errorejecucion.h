// Failures with the classic error numbers.
//
// Forms and tools decide by number (3021 no current row, 3022 duplicate key...), so each condition
// keeps its number whatever storage stands behind. The descriptions are Spanish and our own.
#pragma once

#include <exception>
#include <QString>

namespace err {
// Plain run-time failures.
inline constexpr int kLlamadaNoValida = 5;
inline constexpr int kDesbordamiento = 6;
inline constexpr int kDivisionPorCero = 11;
inline constexpr int kTiposNoCoinciden = 13;
inline constexpr int kFicheroNoEncontrado = 53;
inline constexpr int kFicheroYaExiste = 58;
inline constexpr int kFinDeFichero = 62;
inline constexpr int kPermisoDenegado = 70;
inline constexpr int kErrorDeRuta = 75;
inline constexpr int kRutaNoEncontrada = 76;
inline constexpr int kNuloNoValido = 94;
inline constexpr int kArchivoNoSirve = 321;
// Data access.
inline constexpr int kTablaYaExiste = 3010;
inline constexpr int kConsultaYaExiste = 3012;
inline constexpr int kActualizarSinEditar = 3020;
inline constexpr int kSinRegistroActivo = 3021;
inline constexpr int kClaveDuplicada = 3022;
inline constexpr int kBaseNoEncontrada = 3024;
inline constexpr int kSinEspacio = 3026;
inline constexpr int kSoloLectura = 3027;
inline constexpr int kErrorDeDisco = 3043;
inline constexpr int kClaveNula = 3058;
inline constexpr int kOperacionCancelada = 3059;  // by the user, who needn't be told
inline constexpr int kNombreDesconocido = 3061;
inline constexpr int kErrorDeSintaxis = 3075;
inline constexpr int kOrigenDesconocido = 3078;
inline constexpr int kTextoDemasiadoLargo = 3163;
inline constexpr int kRegistroEliminado = 3167;
inline constexpr int kNoSePuedeGuardar = 3186;
inline constexpr int kFicheroSustituido = 3197;
inline constexpr int kBaseYaExiste = 3204;
inline constexpr int kRegistroBloqueado = 3260;
inline constexpr int kElementoNoEncontrado = 3265;
inline constexpr int kTextoVacio = 3315;
inline constexpr int kReglaIncumplida = 3317;  // one that another tool put into the file
inline constexpr int kFormatoNoReconocido = 3343;
inline constexpr int kConversionDeDatos = 3421;
inline constexpr int kTiposEnCriterio = 3464;
}  // namespace err

class ErrorEjecucion : public std::exception {
 public:
  // `detalle` is joined to the standard text of the number (a name, a path, the other engine's
  // words) and may be empty.
  explicit ErrorEjecucion(int numero, const QString& detalle = {});
  ErrorEjecucion(const ErrorEjecucion&) = default;
  ErrorEjecucion& operator=(const ErrorEjecucion&) = default;
  ~ErrorEjecucion() override = default;

  // The same, telling where it happened: "... (Diario.dbf, registro 12)".
  ErrorEjecucion en(const QString& lugar) const;

  int numero() const noexcept { return numero_; }
  QString descripcion() const { return descripcion_; }
  const char* what() const noexcept override { return what_.constData(); }

 private:
  int numero_;
  QString descripcion_;
  QByteArray what_;
};

// The standard Spanish text of a number; a general one for numbers without a text of their own.
QString descripcionDeError(int numero);
