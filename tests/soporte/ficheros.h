// Where the tests find what lies in the checkout, and files read and written whole.
#pragma once

#include <QByteArray>
#include <QStringList>

// A path relative to the checkout, and one relative to tests/datos.
QString rutaFuente(const QString& ruta);
QString rutaDato(const QString& ruta);

// The lines of a file of tests/datos, without the empty ones and those that begin with "#".
QStringList lineasDeDatos(const QString& fichero);
// The cases of a kind, which begins their lines: what stands between « and » in each.
QList<QStringList> casosDeDatos(const QString& fichero, const QString& clase);
// What a file holds; nothing where it can't be opened.
QByteArray contenidoDe(const QString& ruta);
// Makes a file, and the folders that it needs; its path again.
QString haceFichero(const QString& ruta, const QByteArray& bytes);
