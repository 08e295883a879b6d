// The tables of facts that come with the program, as texts in its resources.
#pragma once

#include <QList>
#include <QStringList>

// The rows of a text of semicolons, without its first line, which names the columns. Raises 53 when
// there is no such file or resource.
QList<QStringList> leeTablaCsv(const QString& fichero);
