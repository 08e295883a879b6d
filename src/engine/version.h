// What keeps the books beneath the engine.
#pragma once

#include <QString>

// The version of the library that runs, which may be newer than the one it was built with.
QString versionDelMotor();
