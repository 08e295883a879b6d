// Who declares: the data that official files ask of a company and its own row doesn't hold.
#pragma once

#include <QHash>
#include <QString>
#include <span>

class Database;

struct DatoDeclarante {
  const char* dato;
  const char* titulo;
  int largo;
};
std::span<const DatoDeclarante> datosDeclarante();

class Declarante {
 public:
  // What was typed; the name is the company's until another is.
  explicit Declarante(Database& empresa);

  QString operator[](const char* dato) const { return datos_.value(QLatin1String(dato)); }
  void pon(const QString& dato, const QString& valor) { datos_.insert(dato, valor); }
  void graba(Database& empresa) const;

  // What keeps a file from being right, in sentences: no NIF, a wrong one, no name.
  QStringList faltas() const;

 private:
  QHash<QString, QString> datos_;
};
