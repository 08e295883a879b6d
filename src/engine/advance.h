// How work on whole books tells how far it is.
#pragma once

#include <functional>

// `done` of `total` parts, every few milliseconds. The engine refuses everything with 3260
// meanwhile, and nothing may be thrown out of it.
using Advance = std::function<void(int done, int total)>;
