// Which Librano this is. Both stand in the build's own file and nowhere else.
#pragma once

#include <QString>

QString versionDelPrograma();  // "1.6"
int anoDelPrograma();          // the year it was published
