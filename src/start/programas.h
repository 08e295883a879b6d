// Where the program lives and which others it starts.
#pragma once

#include <optional>
#include <QString>
#include <QStringList>

// The folder where the running program keeps its settings, its log and, unless told otherwise, its
// data: its own folder `instalada` or, where that can't be written because the machine's
// administrator installed it for all, the user's `propia`. A folder of the user's own is made at
// the first start and given the report templates and the documents that came with the program.
// Both are system paths; the result is as the program writes paths, with its final backslash.
QString carpetaDelPrograma(const QString& instalada, const QString& propia);

// Gives a data folder the report templates that lie beside the program and that it hasn't got yet:
// all of them at first, those of a newer version later. One that is there is renewed as long as
// nobody has edited it; an edited one stays. Both are text paths with their final backslash; a data
// folder that isn't there stays so.
void completaImpresos(const QString& carpetaPrograma, const QString& dirDatos);

// Starts another program as a process of its own, in its folder, and doesn't wait for it.
// `programa` is a text path; one written without its ending is also looked for with ".exe". 53 when
// it isn't there or can't be started.
void ejecutaPrograma(const QString& programa, const QStringList& argumentos);

// The spreadsheet program of this machine, with the arguments that open a workbook out of sight;
// nothing when there is none.
struct HojaDeCalculo {
  QString programa;  // text path
  QStringList argumentos;
};
std::optional<HojaDeCalculo> hojaDeCalculoOculta(const QString& libro);
