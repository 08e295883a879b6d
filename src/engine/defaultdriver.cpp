// The one place above the border that names what keeps the books.
#include "engine/sqlite/driver.h"
#include "engine/store.h"

std::unique_ptr<Driver> defaultDriver() {
  return fileDriver();
}
