// The boxes that the user sees: Qt's own, with "Aceptar", "Cancelar", "Sí" and "No".
#pragma once

#include "toolkit/cajas.h"

class DBEngine;

class CajasQt : public Cajas {
 public:
  // What is pending in `motor` is written before anything is shown.
  explicit CajasQt(DBEngine& motor);

  void mensaje(QWidget* padre, const QString& texto, const QString& titulo,
               Icono icono = Icono::Ninguno) override;
  bool pregunta(QWidget* padre, const QString& texto, const QString& titulo,
                Icono icono = Icono::Ninguno) override;
  std::optional<QString> entrada(QWidget* padre, const QString& texto, const QString& titulo,
                                 const QString& inicial) override;
  std::optional<QString> abrirFichero(QWidget* padre, const QString& titulo, const QString& carpeta,
                                      const QString& filtro) override;
  std::optional<QString> guardarFichero(QWidget* padre, const QString& titulo,
                                        const QString& propuesto, const QString& filtro) override;
  void modal(QDialog& dialogo) override;

 private:
  DBEngine& motor_;
  QString carpeta_;  // where the last file was written; at first the user's documents
};
