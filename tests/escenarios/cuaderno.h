// A workbook that the program has written, read back.
#pragma once

#include <gtest/gtest.h>
#include <zip.h>

#include <QFile>
#include <QHash>
#include <QXmlStreamReader>

// What stands in a workbook: the cells of each sheet by their names, as its XML tells them.
class Cuaderno {
 public:
  explicit Cuaderno(const QString& ruta) {
    int fallo = 0;
    zip_ = zip_open(QFile::encodeName(ruta).constData(), ZIP_RDONLY, &fallo);
    EXPECT_NE(zip_, nullptr);
    QXmlStreamReader xml(entrada("xl/sharedStrings.xml"));
    while (!xml.atEnd())
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"t")
        textos_ += xml.readElementText();
  }
  ~Cuaderno() { zip_close(zip_); }
  QStringList hojas() {
    QStringList nombres;
    QXmlStreamReader xml(entrada("xl/workbook.xml"));
    while (!xml.atEnd())
      if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"sheet")
        nombres += xml.attributes().value("name").toString();
    return nombres;
  }
  // Texts between quotes, numbers as they stand.
  QHash<QString, QString> celdas(int hoja) {
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
  QByteArray entrada(const QString& nombre) {
    zip_file_t* const f = zip_fopen(zip_, nombre.toUtf8().constData(), 0);
    QByteArray todo(1 << 20, 0);
    todo.resize(f ? qsizetype(zip_fread(f, todo.data(), zip_uint64_t(todo.size()))) : 0);
    if (f) zip_fclose(f);
    return todo;
  }
  zip_t* zip_ = nullptr;
  QStringList textos_;
};
