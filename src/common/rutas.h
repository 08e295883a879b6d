// Paths as the program writes them, with backslashes, and the system's own.
//
// Nothing else knows about separators: texts, Config.ini and the session hold backslashes.
#pragma once

#include <QString>

// The system's path of a text path. Each part is looked for as written and then without regard to
// case (Conta.MDB, Conta.Mdb); what doesn't exist keeps its spelling. Both separators are taken.
QString rutaSistema(const QString& ruta);

// A system path as the program writes it, with backslashes.
QString rutaPrograma(const QString& rutaDelSistema);
