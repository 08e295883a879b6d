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

// What reads a whole book: it puts the rows aside first, so that all of it shows one state of the
// file.
class TareaFija : public Tarea {
 public:
  explicit TareaFija(std::shared_ptr<Documento> documento)
      : documento_(documento), fijacion_(std::move(documento)) {}
  bool paso() final { return fijacion_.paso() || pasoFijo(); }

 protected:
  // A step over the rows put aside.
  virtual bool pasoFijo() = 0;
  bool fija() const { return fijacion_.fijo() != nullptr; }
  // The book as it stays; until the rows are put aside, the one it is made from.
  Documento& documento() const { return fija() ? *fijacion_.fijo() : *documento_; }

 private:
  std::shared_ptr<Documento> documento_;
  Fijacion fijacion_;
};

// Gives the pages from `desde` to `hasta`, in order, after counting them all for their headings.
class TareaPaginas : public TareaFija {
 public:
  TareaPaginas(std::shared_ptr<Documento> documento, int desde, int hasta);
  int hecho() const final { return std::max(0, pagina_.numero - desde_ + 1); }
  int total() const final;

 protected:
  bool pasoFijo() final;
  virtual void pon(const Pagina& pagina, bool primera) = 0;
  virtual void acaba() = 0;

 private:
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
