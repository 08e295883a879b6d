// A workbook that the program has written, read back.
#pragma once

#include <QXmlStreamReader>

#include "soporte/prueba.h"

// What stands in a workbook: the cells of each sheet by their names, as its XML tells them.
class Cuaderno {
 public:
  explicit Cuaderno(const QString& ruta) : ruta_(ruta) {
    QXmlStreamReader xml(entrada("xl/sharedStrings.xml"));
    while (!xml.atEnd())
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"t")
        textos_ += xml.readElementText();
  }
  QStringList hojas() const {
    QStringList nombres;
    QXmlStreamReader xml(entrada("xl/workbook.xml"));
    while (!xml.atEnd())
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"sheet")
        nombres += xml.attributes().value("name").toString();
    return nombres;
  }
  // Texts between quotes, numbers as they stand.
  QHash<QString, QString> celdas(int hoja) const {
    QHash<QString, QString> lista;
    QXmlStreamReader xml(entrada(QStringLiteral("xl/worksheets/sheet%1.xml").arg(hoja)));
    QString nombre;
    bool texto = false;
    while (!xml.atEnd()) {
      if (xml.readNext() != QXmlStreamReader::StartElement) continue;
      if (xml.name() == u"c") {
        nombre = xml.attributes().value("r").toString();
        texto = xml.attributes().value("t") == u"s";
      } else if (xml.name() == u"t") {
        lista.insert(nombre, '\'' + xml.readElementText() + '\'');
      } else if (xml.name() == u"v") {
        const QString valor = xml.readElementText();
        lista.insert(nombre, texto ? '\'' + textos_.value(valor.toInt()) + '\'' : valor);
      }
    }
    return lista;
  }

 private:
  QByteArray entrada(const QString& nombre) const {
    QProcess p;
    p.start("unzip", {"-p", ruta_, nombre});
    p.waitForFinished();
    return p.readAllStandardOutput();
  }
  const QString ruta_;
  QStringList textos_;
};
