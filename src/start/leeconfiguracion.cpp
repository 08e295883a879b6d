#include "start/leeconfiguracion.h"

#include "common/cini.h"

void LeeConfiguracion(const QString& archivo, Sesion& sesion) {
  static constexpr struct {
    const char* seccion;
    const char* clave;
    QString Sesion::*variable;
  } kClaves[] = {
      {"Directorios", "Programa", &Sesion::DirPrograma},
      {"Directorios", "Datos", &Sesion::DirDatos},
      {"Usuarios", "Permitir", &Sesion::UsuariosPermitir},
      {"Entrada", "UltimoUsuario", &Sesion::UltimoUsuario},
      {"Entrada", "UltimaEmpresa", &Sesion::UltimaEmpresa},
      {"Otros", "Decimal Origen", &Sesion::DecimalOrigen},
      {"Otros", "Decimal Destino", &Sesion::DecimalDestino},
      {"Version", "Version", &Sesion::VersionConfig},
  };
  for (const auto& clave : kClaves) {
    CIni().Leer(archivo, QLatin1String(clave.seccion), QLatin1String(clave.clave),
                sesion.*clave.variable);
  }
}
