// The boxes that the user sees: Qt's own, with "Aceptar", "Cancelar", "Sí" and "No".
#pragma once

#include "toolkit/cajas.h"

class CajasQt : public Cajas {
 public:
  explicit CajasQt(DBEngine& motor);

 protected:
  void ensenaMensaje(QWidget* padre, const QString& texto, const QString& titulo,
                     Icono icono) override;
  bool ensenaPregunta(QWidget* padre, const QString& texto, const QString& titulo,
                      Icono icono) override;
  std::optional<QString> ensenaEntrada(QWidget* padre, const QString& texto, const QString& titulo,
                                       const QString& inicial) override;
  std::optional<QString> ensenaAbrir(QWidget* padre, const QString& titulo, const QString& carpeta,
                                     const QString& filtro) override;
  std::optional<QString> ensenaGuardar(QWidget* padre, const QString& titulo,
                                       const QString& propuesto, const QString& filtro) override;
  void ensenaModal(QDialog& dialogo) override;
  Eleccion ensenaEleccion(QWidget* padre, const QString& texto) override;

 private:
  QString carpeta_;  // where the last file was written; at first the user's documents
};
