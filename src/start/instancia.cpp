#include "start/instancia.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>

// A local address without a file: two users of the machine share it, no clean-up of temporary
// folders takes it away, and the system releases it with the process.
Instancia::Instancia(const QString& nombre) {
  const QByteArray clave = nombre.toUtf8();
  sockaddr_un direccion{};
  direccion.sun_family = AF_UNIX;
  const auto largo = std::min<std::size_t>(clave.size(), sizeof direccion.sun_path - 1);
  std::memcpy(direccion.sun_path + 1, clave.constData(), largo);

  marca_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (marca_ < 0) return;
  const auto bytes = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + largo);
  if (::bind(marca_, reinterpret_cast<const sockaddr*>(&direccion), bytes) != 0)
    unica_ = errno != EADDRINUSE;
}

Instancia::~Instancia() {
  if (marca_ >= 0) ::close(marca_);
}
