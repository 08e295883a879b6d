// How a tool that goes through many lines tells how far it is.
#pragma once

#include <functional>

// `posicion` counts from 0 and stays below `total`. Called for each row: what it does must be
// cheap most of the time (the progress bar of the screens sees to that).
using Avance = std::function<void(int posicion, int total)>;
