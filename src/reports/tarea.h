// Long output in small steps: between two of them the program answers its keys, and the user may
// stop it.
//
// A task that is destroyed before its end leaves no file behind.
#pragma once

#include "reports/documento.h"

namespace reports {

class Tarea {
 public:
  virtual ~Tarea() = default;
  // Works for some hundredths of a second; false when all is done. Raises 75 for a file that can't
  // be written, and what reading the rows raises.
  virtual bool paso() = 0;
  virtual int hecho() const = 0;
  virtual int total() const = 0;  // 0 while it isn't known
};

// Gives the pages from `desde` to `hasta`, in order, after counting them all for their headings.
class TareaPaginas : public Tarea {
 public:
  TareaPaginas(std::shared_ptr<Documento> documento, int desde, int hasta);
  bool paso() final;
  int hecho() const final { return std::max(0, pagina_.numero - desde_ + 1); }
  int total() const final;

 protected:
  virtual void pon(const Pagina& pagina, bool primera) = 0;
  virtual void acaba() = 0;
  const Documento& documento() const { return *documento_; }

 private:
  std::shared_ptr<Documento> documento_;
  int desde_, hasta_;
  std::unique_ptr<Recorrido> recorrido_;
  Pagina pagina_;
  int numero_ = 0;
};

// Looks for a text, without regard to case and accents, from a place on and then from the first
// page up to it.
class TareaBusqueda : public Tarea {
 public:
  struct Sitio {
    int pagina = 1;
    int texto = -1;  // index in Pagina::textos; the search begins after it
  };
  TareaBusqueda(std::shared_ptr<Documento> documento, const QString& buscado, Sitio desde);
  bool paso() override;
  int hecho() const override { return vistas_; }
  int total() const override { return documento_->contado() ? documento_->paginas() : 0; }
  const std::optional<Sitio>& hallado() const { return hallado_; }

 private:
  bool busca(int pagina, int desde, int hasta);

  std::shared_ptr<Documento> documento_;
  QString buscado_;
  Sitio desde_;
  int pagina_;
  int vistas_ = 0;
  bool vuelta_ = false;
  std::optional<Sitio> hallado_;
};

// As searches compare: without case and accents.
QString llano(const QString& texto);

}  // namespace reports
