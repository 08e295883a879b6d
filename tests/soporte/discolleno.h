// A full disk under the whole process.
#pragma once

#include <signal.h>
#include <sys/resource.h>

#include "soporte/prueba.h"

// While it lives no file grows beyond so many bytes: with none the library can't even note what it
// is going to do.
class DiscoLleno {
 public:
  explicit DiscoLleno(rlim_t bytes = 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &antes_), 0);
    const rlimit ahora{bytes, antes_.rlim_max};
    EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &ahora), 0);
  }
  ~DiscoLleno() { vacia(); }
  DiscoLleno(const DiscoLleno&) = delete;
  DiscoLleno& operator=(const DiscoLleno&) = delete;
  void vacia() { ::setrlimit(RLIMIT_FSIZE, &antes_); }

 private:
  rlimit antes_;
};
