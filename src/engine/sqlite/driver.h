// Books as files of the library: made, opened, copied, repaired and removed.
#pragma once

#include "engine/store.h"

std::unique_ptr<Driver> fileDriver();
